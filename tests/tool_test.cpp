// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{
ProgramRun tool(const QStringList& arguments, const std::string& input = {},
                const QStringList& environment = {})
{
  return runProgram(TOOL, arguments, input, environment);
}

/// Runs a shell's command with the tool and copies of manifests at hand.
ProgramRun inFolder(const TemporaryFolder& folder, const std::string& command)
{
  const QString faulty = GOLDEN_FILES "/check";
  const QString script = R"(cd "$0"; [ -e minimal.xml ] || cp "$1"/*.xml "$2"/*.xml .
                            PATH=${3%/*}:$PATH; exec 2>&1
                            %1)";
  return runProgram("sh",
                    {"-c", script.arg(QString::fromStdString(command)),
                     QString::fromStdString(folder.path("")), EXAMPLE_MANIFESTS, faulty, TOOL});
}

const QString greeting = EXAMPLE_MANIFESTS "/greeting.xml";
const QString office = EXAMPLE_MANIFESTS "/office-assistant.xml";
} // namespace

// In tests/golden/tool: what is said and done, each verb in each of its formats, with the exit codes.
TEST(Tool, DoesAsInItsTranscripts)
{
  const QFileInfoList transcripts = QDir(GOLDEN_FILES "/tool").entryInfoList({"*.txt"});
  EXPECT_EQ(transcripts.size(), 9);
  for (const QFileInfo& transcript : transcripts)
  {
    const TemporaryFolder folder;
    const std::string expected = contentOf(transcript.filePath().toStdString());
    std::istringstream lines(expected);
    std::string seen;
    for (std::string line; std::getline(lines, line);)
    {
      if (line.compare(0, 2, "$ ") == 0)
      {
        const ProgramRun run = inFolder(folder, line.substr(2));
        seen += line + '\n' + run.out;
        seen += run.exitCode == 0 ? "" : "[exit code " + std::to_string(run.exitCode) + "]\n";
      }
    }
    EXPECT_EQ(seen, expected) << transcript.fileName().toStdString();
  }
}

// The order in which the toolkit writes attributes depends on a seed that differs by process.
TEST(Tool, WritesTheSameBytesInEveryProcess)
{
  const std::string first = tool({"fmt", office}).out;
  for (int seed = 0; seed < 10; ++seed)
  {
    EXPECT_EQ(tool({"fmt", office}, {}, {QStringLiteral("QT_HASH_SEED=%1").arg(seed)}).out, first);
  }
}

TEST(Tool, GivesTheSameWhateverTheNumberOfJobs)
{
  const TemporaryFolder folder;
  for (int i = 0; i < 200; ++i)
  {
    folder.file(std::to_string(i) + ".xml", i % 3 == 0 ? "<no" : "<package uuid='u'/>");
  }
  const QString path = QString::fromStdString(folder.path(""));
  const ProgramRun one = tool({"check", path});
  EXPECT_EQ(one.exitCode, 3);
  EXPECT_THAT(one.out, EndsWith("\n200 files: 67 errors, 133 warnings, 0 hints\n"));
  EXPECT_EQ(tool({"check", "--jobs", "8", path}).out, one.out);
}

TEST(Tool, SetsFieldsAndSaysWhatWouldBeLost)
{
  const TemporaryFolder folder;
  const std::string file = folder.file(
      "m.xml", "<package uuid='u'><!-- c --><x/><contents><webContent path='w'/></contents>"
               "<names><name lang='de'/></names></package>");
  const QString path = QString::fromStdString(file);
  const std::string before = contentOf(file);
  ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
  const ProgramRun refused = tool({"set", path, "version=2"});
  EXPECT_EQ(refused.exitCode, 1);
  for (const std::string tag : {"[not-kept]", "[unknown-element]", "[web-content]", "[empty-text]",
                                "--force rewrites it all the same"})
  {
    EXPECT_THAT(refused.err, HasSubstr(tag));
  }
  EXPECT_EQ(tool({"set", "--force", path, "version=2", "nonsense=3"}).exitCode, 1);
  EXPECT_THAT(tool({"set", "--force", path, "version=2", "installer=store"}).err,
              HasSubstr("installer: a manifest cannot hold this value"));
  EXPECT_EQ(tool({"fmt", path, "-o", path}).exitCode, 1);
  EXPECT_EQ(contentOf(file), before);

  const ProgramRun done =
      tool({"set", "--force", path, "version=2", "names.en=A=B", "services=[{}]"});
  EXPECT_EQ(done.exitCode, 0);
  EXPECT_EQ(done.out + done.err, "");
  EXPECT_EQ(contentOf(file), "<?xml version='1.0' encoding='UTF-8'?>\n"
                             "<package uuid=\"u\" version=\"2\">\n"
                             "  <names>\n"
                             "    <name lang=\"en\">A=B</name>\n"
                             "  </names>\n"
                             "  <contents/>\n"
                             "  <services>\n"
                             "    <service autorun=\"false\"/>\n"
                             "  </services>\n"
                             "</package>\n");
  EXPECT_EQ(QFile::permissions(path) & (QFile::ReadOther | QFile::WriteGroup | QFile::ReadGroup),
            QFile::ReadGroup);
  EXPECT_EQ(tool({"set", path, "version=3"}).exitCode, 0);
  EXPECT_EQ(tool({"get", path, "version"}).out, "3\n");
  EXPECT_THAT(tool({"set", "-", "version=4"}, "<p/>").out, HasSubstr("<package version=\"4\">"));
}

// A limit on a file's size simulates a full disk; without the trap, a signal ends the tool there.
TEST(Tool, LeavesTheOldFileWholeWhenItCannotWrite)
{
  const TemporaryFolder folder;
  const std::string file = folder.file("m.xml", "<package author='" + std::string(3000, 'x') +
                                                    "'><services/></package>");
  const std::string before = contentOf(file);
  for (const QString& trap : {QStringLiteral("trap '' XFSZ;"), QString()})
  {
    const ProgramRun run =
        runProgram("sh", {"-c", trap + R"(ulimit -f 1; exec "$0" set --force "$1" version=2)", TOOL,
                          QString::fromStdString(file)});
    EXPECT_NE(run.exitCode, 0);
    EXPECT_TRUE(trap.isEmpty() || run.exitCode == 3);
    EXPECT_EQ(run.err.find("Unknown"), std::string::npos) << run.err;
    EXPECT_EQ(contentOf(file), before);
  }
}

// At each of its file operations in turn the tool is killed, loses the folder, or finds the disk full.
TEST(Tool, LeavesTheOldFileOrTheNewOneWhateverHappensMeanwhile)
{
  for (const QString fault : {"signal 9", "signal 15", "error 28", "gone"})
  {
    int failures = 0;
    for (int at = 1; at < 40; ++at)
    {
      SCOPED_TRACE(fault.toStdString() + " at " + std::to_string(at));
      const TemporaryFolder around;
      const QString folder = QString::fromStdString(around.path("folder"));
      ASSERT_TRUE(QDir().mkdir(folder));
      around.file("folder/m.xml", "<package version='1'/>");
      const ProgramRun run =
          tool({"set", folder + "/m.xml", "version=2"}, {},
               {"LD_PRELOAD=" FAULTS, "FAULT=" + (fault == "gone" ? folder : fault),
                QStringLiteral("FAULT_AT=%1").arg(at)});
      failures += run.exitCode != 0 ? 1 : 0;
      const bool isKilled = run.exitCode == -1;
      EXPECT_TRUE(isKilled ? fault.startsWith("signal") : run.exitCode == 0 || run.exitCode == 3);
      EXPECT_EQ(run.exitCode == 3, run.err.find("error: Could not") != std::string::npos);
      EXPECT_TRUE(fault == "gone" || run.err.find("Unknown") == std::string::npos) << run.err;
      const bool isGone = !QDir(folder).exists();
      const std::string content =
          contentOf(around.path(isGone ? "folder.gone/m.xml" : "folder/m.xml"));
      const bool isOld = content == "<package version='1'/>";
      EXPECT_TRUE(isOld ? run.exitCode != 0
                        : content == "<?xml version='1.0' encoding='UTF-8'?>\n"
                                     "<package version=\"2\">\n"
                                     "  <contents/>\n"
                                     "</package>\n");
    }
    EXPECT_GT(failures, 3) << fault.toStdString();
    EXPECT_LT(failures, 30) << fault.toStdString();
  }
}

TEST(Tool, DocumentsEveryVerb)
{
  for (const char* verb : {"show", "check", "get", "set", "fmt", "trim", "diff"})
  {
    const std::string help = tool({verb, "--help"}).out;
    EXPECT_THAT(help, HasSubstr(std::string("Example:\n  veskpackage ") + verb));
    const std::string page = contentOf(std::string(MANUAL "/veskpackage-") + verb + ".1");
    EXPECT_THAT(page, AllOf(HasSubstr(".SH EXAMPLE\n"), HasSubstr("\\-\\-help")));
    const ProgramRun man =
        runProgram("sh", {"-c",
                          "command -v man >/dev/null || exit 0; man --warnings -l \"$0\" "
                          "2>&1 >/dev/null",
                          QStringLiteral(MANUAL "/veskpackage-%1.1").arg(verb)});
    EXPECT_EQ(man.out, "");
  }
  const ProgramRun completed =
      runProgram("bash", {"-c",
                          ". \"$0\"; COMP_WORDS=(veskpackage check --format j); COMP_CWORD=3; "
                          "_veskpackage; echo \"${COMPREPLY[@]}\"; COMP_WORDS=(veskpackage tr); "
                          "COMP_CWORD=1; _veskpackage; echo \"${COMPREPLY[@]}\"",
                          MANUAL "/veskpackage.bash"});
  EXPECT_EQ(completed.out, "json\ntrim\n");
}

TEST(Tool, RejectsWrongUsageAndExplainsItself)
{
  for (const QStringList& arguments : {QStringList{},
                                       {"show"},
                                       {"fmt"},
                                       {"fmt", greeting, greeting},
                                       {"dance"},
                                       {"set", greeting},
                                       {"get"},
                                       {"diff", greeting},
                                       {"check", "--explain", "x"},
                                       {"check", "--override", "x=off", greeting},
                                       {"check", "--override", "not-well-formed=off", greeting},
                                       {"fmt", "-i", "-o", "x", greeting},
                                       {"--dance"}})
  {
    const ProgramRun run = tool(arguments);
    EXPECT_EQ(run.exitCode, 2) << arguments.join(' ').toStdString();
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err, "");
  }
  const ProgramRun help = tool({"--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_THAT(help.out,
              testing::AllOf(HasSubstr("show"), HasSubstr("fmt"), HasSubstr("3  a file")));
  EXPECT_THAT(tool({"--version"}).out, StartsWith("veskpackage "));
}
