// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <QJsonArray>
#include <QJsonDocument>

using testing::HasSubstr;
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
  EXPECT_EQ(noFolder.err,
            "/nowhere/m.xml: error: Could not open for writing: No such file or directory\n");
  const ProgramRun full = tool({"fmt", greeting, "-o", "/dev/full"});
  EXPECT_EQ(full.exitCode, 3);
  EXPECT_EQ(full.err, "/dev/full: error: Could not write: No space left on device\n");
  const ProgramRun report =
      runProgram("sh", {"-c", R"("$0" show "$1" > /dev/full)", TOOL, greeting});
  EXPECT_EQ(report.exitCode, 3);
  EXPECT_THAT(report.err, HasSubstr("<stdout>: error: Could not write"));
}

TEST(Tool, RejectsWrongUsageAndExplainsItself)
{
  for (const QStringList& arguments :
       {QStringList{}, {"show"}, {"fmt"}, {"fmt", greeting, greeting}, {"dance"}, {"--dance"}})
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
