// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace
{
ProgramRun tool(const QStringList& arguments, const std::string& input = {},
                const QStringList& environment = {})
{
  return runProgram(TOOL, arguments, input, environment);
}

const QString greeting = EXAMPLE_MANIFESTS "/greeting.xml";
const QString office = EXAMPLE_MANIFESTS "/office-assistant.xml";
} // namespace

TEST(Tool, ShowsReports)
{
  const ProgramRun large = tool({"show", office});
  EXPECT_EQ(large.out, contentOf(GOLDEN_FILES "/office-assistant.report.txt") +
                           "Web content\n***********\nPath: web/tablet\n");
  const ProgramRun one = tool({"show", greeting});
  EXPECT_EQ(one.exitCode, 0);
  EXPECT_EQ(one.err, "");
  EXPECT_EQ(one.out, contentOf(GOLDEN_FILES "/greeting.report.txt"));
  EXPECT_EQ(tool({"show", "-"}, contentOf(office.toStdString())).out, large.out);
  EXPECT_EQ(tool({"show", greeting, greeting}).out, one.out + one.out);
}

TEST(Tool, ShowsAllFieldsAsJsonAndTheVariantForm)
{
  const std::string json = contentOf(GOLDEN_FILES "/greeting.json");
  EXPECT_EQ(tool({"show", "--format", "json", greeting}).out, json);
  EXPECT_EQ(tool({"show", greeting, "--format=text"}).out, tool({"show", greeting}).out);
  const QByteArray lines =
      QByteArray::fromStdString(tool({"show", "--format", "json", greeting, office}).out);
  EXPECT_EQ(lines.count('\n'), 2);
  EXPECT_EQ(QJsonDocument::fromJson(lines.split('\n').front()),
            QJsonDocument::fromJson(QByteArray::fromStdString(json)));
  EXPECT_EQ(QJsonDocument::fromJson(lines.split('\n').at(1))["web"]["path"], "web/tablet");
  const ProgramRun variant = tool({"show", "--format", "variant", greeting});
  const auto pairs = QJsonDocument::fromJson(QByteArray::fromStdString(variant.out)).array();
  EXPECT_EQ(pairs.size(), 20);
  EXPECT_EQ(pairs.at(2).toArray(), (QJsonArray{"version", "1.2.0"}));
  EXPECT_EQ(tool({"show", "--format", "variant", "-"}, "<package/>").out, "[]\n");
  EXPECT_EQ(tool({"show", "--format", "yaml", greeting}).exitCode, 2);
}

TEST(Tool, FormatsToStandardOutputOrAFile)
{
  const TemporaryFolder folder;
  const ProgramRun run = tool({"fmt", greeting});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.out, contentOf(GOLDEN_FILES "/greeting.written.xml"));
  EXPECT_EQ(tool({"fmt", "-"}, contentOf(greeting.toStdString())).out, run.out);
  const std::string path = folder.file("out.xml", std::string(10000, 'x'));
  const ProgramRun toFile = tool({"fmt", greeting, "-o", QString::fromStdString(path)});
  EXPECT_EQ(toFile.exitCode, 0);
  EXPECT_EQ(toFile.out + toFile.err, "");
  EXPECT_EQ(contentOf(path), run.out);
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

TEST(Tool, GoesOnBehindAFileThatCannotBeShown)
{
  const TemporaryFolder folder;
  const std::string malformed = folder.file("m.xml", "<p>\n <a></p>");
  const std::string missing = folder.path("missing.xml");
  const ProgramRun run =
      tool({"show", QString::fromStdString(missing), QString::fromStdString(malformed), greeting});
  EXPECT_EQ(run.exitCode, 3);
  EXPECT_EQ(run.err, missing + ": error: Could not open for reading: No such file or directory\n" +
                         malformed + ":2:8: error: tag mismatch\n");
  EXPECT_THAT(run.out, StartsWith("UUID: e4a7b0c8"));
  EXPECT_EQ(tool({"fmt", "-"}, "<p").err, "<stdin>:1:3: error: unexpected end of file\n");
}

TEST(Tool, SaysWhenItCannotWrite)
{
  const ProgramRun noFolder = tool({"fmt", greeting, "-o", "/nowhere/m.xml"});
  EXPECT_EQ(noFolder.exitCode, 3);
  EXPECT_EQ(noFolder.err, "/nowhere/m.xml: error: Could not write: No such file or directory\n");
  const ProgramRun full = tool({"fmt", greeting, "-o", "/dev/full"});
  EXPECT_EQ(full.exitCode, 3);
  EXPECT_EQ(full.err, "/dev/full: error: Could not write: No space left on device\n");
  const ProgramRun report =
      runProgram("sh", {"-c", R"("$0" show "$1" > /dev/full)", TOOL, greeting});
  EXPECT_EQ(report.exitCode, 3);
  EXPECT_THAT(report.err, HasSubstr("<stdout>: error: Could not write"));
  EXPECT_EQ(runProgram("sh", {"-c", R"("$0" check --list-rules > /dev/full)", TOOL}).exitCode, 3);
}

TEST(Tool, ChecksManifestsAndFolders)
{
  const TemporaryFolder folder;
  const QString values = GOLDEN_FILES "/check/values.xml";
  const ProgramRun run = tool({"check", values, greeting});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_THAT(run.out, HasSubstr("values.xml:7:39: warning: the path \"../other/b\" leaves the "
                                 "package [path-outside-package] "
                                 "/package/contents/behaviorContent[2]/@path\n"));
  EXPECT_THAT(run.out, EndsWith("\n2 files: 0 errors, 19 warnings, 0 hints\n"));
  EXPECT_EQ(tool({"check", "--strict", values}).exitCode, 1);
  EXPECT_EQ(tool({"check", values, "--override", "empty-path=error"}).exitCode, 1);
  EXPECT_EQ(tool({"check", greeting, "-q"}).out, "");
  EXPECT_THAT(tool({"check", greeting, "--color=always", "--override", "comment=hint"}).out,
              HasSubstr("\x1b[1;36mhint\x1b[0m: a comment"));
  EXPECT_EQ(tool({"check", "-"}, "<p").exitCode, 3);
  EXPECT_EQ(tool({"check", "/nowhere.xml"}).exitCode, 3);

  folder.file("manifest.xml", "<no");
  folder.file("b.xml", "<package uuid='u' version='1'/>");
  folder.file("a.xml", "<package uuid='u'/>");
  folder.file("other.xml", "<other/>");
  folder.file("text.txt", "<package/>");
  const QString path = QString::fromStdString(folder.path(""));
  for (const char* jobs : {"1", "8"})
  {
    const ProgramRun searched = tool({"check", "--format", "json", "--jobs", jobs, path});
    EXPECT_EQ(searched.exitCode, 3);
    const QList<QByteArray> lines = QByteArray::fromStdString(searched.out).split('\n');
    ASSERT_EQ(lines.size(), 4);
    EXPECT_TRUE(QJsonDocument::fromJson(lines[0])["file"].toString().endsWith("/a.xml"));
    EXPECT_EQ(QJsonDocument::fromJson(lines[0])["findings"][0]["tag"], "missing-identity");
    EXPECT_EQ(QJsonDocument::fromJson(lines[1])["findings"].toArray().size(), 0);
    EXPECT_EQ(QJsonDocument::fromJson(lines[2])["findings"][0]["tag"], "not-well-formed");
  }
}

TEST(Tool, ExplainsItsRules)
{
  const ProgramRun list = tool({"check", "--list-rules"});
  EXPECT_THAT(list.out, StartsWith("unreadable (error)\n"));
  for (const std::string line : {"autorun-one (warning)\n", "comment (off)\n"})
  {
    EXPECT_THAT(list.out, HasSubstr(line));
  }
  EXPECT_THAT(tool({"check", "--explain", "autorun-one"}).out,
              StartsWith("autorun-one (warning)\n\"autorun\" is \"1\": "));
}

TEST(Tool, GetsFields)
{
  EXPECT_EQ(tool({"get", greeting, "version"}).out, "1.2.0\n");
  EXPECT_EQ(tool({"get", greeting, "behaviors[0].tags.en_US"}).out, "[\"greeting\",\"welcome\"]\n");
  EXPECT_EQ(tool({"get", "--files-from", "-", "version"}, greeting.toStdString() + '\n').out,
            greeting.toStdString() + ": 1.2.0\n");
  EXPECT_EQ(tool({"get", "--format=json", "-", greeting, "uuid"}, "<p uuid='u'/>").out,
            "{\"file\":\"<stdin>\",\"value\":\"u\"}\n{\"file\":\"" + greeting.toStdString() +
                "\",\"value\":\"e4a7b0c8-51f2-4c39-8d1e-6b97f3a2054d\"}\n");
  const ProgramRun wrong = tool({"get", greeting, "behaviors[7].path"});
  EXPECT_EQ(wrong.exitCode, 1);
  EXPECT_THAT(wrong.err, StartsWith(greeting.toStdString() + ": error: behaviors[7]"));
  EXPECT_EQ(tool({"get", greeting, "names["}).exitCode, 2);
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
  for (const std::string tag : {"[comment]", "[unknown-element]", "[web-content]", "[empty-text]",
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

// The limit on a file's size stands for a full disk; without the trap it ends the tool by a signal.
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
    EXPECT_EQ(contentOf(file), before);
  }
}

TEST(Tool, ShowsWhatFormattingWouldChange)
{
  const TemporaryFolder folder;
  const QString path = QString::fromStdString(folder.file("m.xml", "<package uuid='u'/>"));
  const ProgramRun changed = tool({"fmt", "--check", path});
  EXPECT_EQ(changed.exitCode, 1);
  EXPECT_THAT(changed.out, AllOf(HasSubstr("\n-<package uuid='u'/>\n"), HasSubstr("@@ -1"),
                                 HasSubstr("\n+  <contents/>\n")));
  EXPECT_EQ(tool({"fmt", "--in-place", path}).exitCode, 0);
  const ProgramRun same = tool({"fmt", "--check", path});
  EXPECT_EQ(same.exitCode, 0);
  EXPECT_EQ(same.out, "");
  EXPECT_EQ(tool({"fmt", "--in-place", office}).exitCode, 1); // it has comments
}

TEST(Tool, TrimsToTheDescriptionLanguages)
{
  const std::string manifest = "<p><names><n lang='en_US'>E</n><n lang='de'>D</n></names>"
                               "<descriptionLanguages><l>en</l></descriptionLanguages></p>";
  const ProgramRun run = tool({"trim", "-"}, manifest);
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_THAT(run.out, AllOf(HasSubstr(">E<"), Not(HasSubstr(">D<"))));
  const ProgramRun without = tool({"trim", "-"}, "<p><names><n lang='de'>D</n></names></p>");
  EXPECT_EQ(without.exitCode, 1);
  EXPECT_THAT(without.err, HasSubstr("lacks description or supported languages"));
}

TEST(Tool, ComparesByMeaning)
{
  const QString written = GOLDEN_FILES "/greeting.written.xml";
  EXPECT_EQ(tool({"diff", greeting, written}).exitCode, 0);
  const std::string other = "<p uuid='u' version='1'><names><n lang='en'>E</n></names></p>";
  const std::string changed = "<p uuid='u' version='2'><executableFiles><file path='f'/>"
                              "</executableFiles></p>";
  const TemporaryFolder folder;
  const QString left = QString::fromStdString(folder.file("a.xml", other));
  const QString right = QString::fromStdString(folder.file("b.xml", changed));
  const ProgramRun run = tool({"diff", left, right});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.out, "version: \"1\" -> \"2\"\nnames.en: removed \"E\"\n"
                     "executableFiles[0]: added \"f\"\n");
  EXPECT_EQ(QJsonDocument::fromJson(
                QByteArray::fromStdString(tool({"diff", "--format=json", left, right}).out))[1],
            (QJsonObject{{"field", "names.en"}, {"before", "E"}, {"after", QJsonValue::Null}}));
  EXPECT_EQ(tool({"diff", left, "/nowhere"}).exitCode, 3);
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
  EXPECT_THAT(help.out, testing::AllOf(HasSubstr("show"), HasSubstr("fmt"), HasSubstr("3 a file")));
  EXPECT_THAT(tool({"--version"}).out, StartsWith("veskpackage "));
}
