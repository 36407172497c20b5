// SPDX-License-Identifier: Apache-2.0
// The tool as it is used: each file in golden/tool is a test. Lines after "$ " are commands, those
// after "> " continue them, and the others are what is then printed.
#include "support.hpp"

namespace
{
/// What a shell's command prints in a folder with manifests in it, and its exit code unless 0.
std::string said(const TemporaryFolder& folder, const std::string& command)
{
  const QString script =
      R"(cd "$0"; [ -e minimal.xml ] || cp -r "$1"/*.xml "$2"/check/*.xml "$2"/messy .
                            PATH=${3%/*}:$PATH; exec 2>&1
                            %1)";
  const ProgramRun run =
      runProgram("sh",
                 {"-c", script.arg(QString::fromStdString(command)),
                  QString::fromStdString(folder.path("")), EXAMPLE_MANIFESTS, GOLDEN_FILES, TOOL},
                 {}, {"FAULTS=" FAULTS, "MANUAL=" MANUAL, "DOCS=" PROJECT_FOLDER "docs"});
  return run.out + (run.exitCode == 0 ? "" : "[exit code " + std::to_string(run.exitCode) + "]\n");
}

std::vector<std::string> transcripts()
{
  std::vector<std::string> names;
  for (const QFileInfo& file : QDir(GOLDEN_FILES "/tool").entryInfoList({"*.txt"}))
  {
    names.push_back(file.baseName().toStdString());
  }
  return names;
}

class Transcript : public testing::TestWithParam<std::string>
{};
} // namespace

TEST_P(Transcript, Holds)
{
  const TemporaryFolder folder;
  const std::string expected = contentOf(GOLDEN_FILES "/tool/" + GetParam() + ".txt");
  std::istringstream lines(expected);
  std::string seen;
  for (std::string line; std::getline(lines, line);)
  {
    if (line.compare(0, 2, "$ ") == 0)
    {
      std::string command = line.substr(2);
      seen += line + '\n';
      while (lines.peek() == '>' && std::getline(lines, line))
      {
        seen += line + '\n';
        command += '\n' + line.erase(0, 2);
      }
      seen += said(folder, command);
    }
  }
  EXPECT_EQ(seen, expected);
}

INSTANTIATE_TEST_SUITE_P(Tool, Transcript, testing::ValuesIn(transcripts()),
                         [](const auto& transcript) { return transcript.param; });
