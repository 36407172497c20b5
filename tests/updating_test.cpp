// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <tools/veskpackage/files/updating.hpp>

#include <iterator>
#include <set>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace tool;

namespace
{
/// What an update that adds "new" says, when \p meanwhile comes between its reading and writing.
std::string saidOf(const std::string& file, const std::function<void()>& meanwhile)
{
  std::ostringstream complaints;
  const auto work = [&](const std::string& bytes)
  {
    meanwhile();
    return bytes + "new";
  };
  const ExitCode code = updateFile(file, complaints, work, std::chrono::milliseconds(20));
  EXPECT_EQ(code, complaints.str().empty() ? Done : FileTrouble);
  return complaints.str();
}
} // namespace

TEST(Update, IsDoneByFortyProcessesAtOnce)
{
  const TemporaryFolder folder;
  const std::string file = folder.file("file", "");
  std::set<std::string> expected;
  for (int i = 0; i < 40; ++i)
  {
    const std::string line = std::to_string(i) + '\n';
    expected.insert(std::to_string(i));
    if (fork() == 0)
    {
      _exit(updateFile(file, std::cerr, [&](const std::string& bytes) { return bytes + line; }));
    }
  }
  for (int status = 0; wait(&status) > 0;)
  {
    EXPECT_EQ(status, 0);
  }
  std::istringstream lines(contentOf(file));
  const std::set<std::string> seen{std::istream_iterator<std::string>(lines), {}};
  EXPECT_EQ(seen, expected);
}

TEST(Update, LeavesAFileThatOthersChange)
{
  const TemporaryFolder folder;
  const std::string file = folder.file("file", "old");
  const std::string refused = file + ": error: changed since it was read; nothing written\n";
  const auto edit = [&] { folder.file("file", "odd"); };
  const auto replace = [&](const std::string& content)
  { EXPECT_EQ(rename(folder.file("other", content).c_str(), file.c_str()), 0); };
  EXPECT_EQ(saidOf(file, edit), refused);
  EXPECT_EQ(contentOf(file), "odd");
  EXPECT_EQ(saidOf(file, [&] { replace("else"); }), refused);
  EXPECT_EQ(contentOf(file), "else");
  EXPECT_EQ(saidOf(file, [&] { replace("else"); }), ""); // the same again
  EXPECT_EQ(contentOf(file), "elsenew");
  EXPECT_EQ(saidOf(file, [&] { unlink(file.c_str()); }), refused);
  EXPECT_FALSE(QFile::exists(QString::fromStdString(file)));
}

TEST(Update, KeepsModeAndLinkAndWaitsForALock)
{
  const TemporaryFolder folder;
  const std::string file = folder.file("file", "old");
  const std::string link = folder.path("link");
  const std::string pipe = folder.path("pipe");
  ASSERT_EQ(chmod(file.c_str(), 0751) + symlink("file", link.c_str()) + mkfifo(pipe.c_str(), 0600),
            0);
  QFile other(QString::fromStdString(file));
  ASSERT_TRUE(other.open(QIODevice::ReadOnly) && flock(other.handle(), LOCK_EX) == 0);
  const auto nothing = [] {};
  EXPECT_EQ(saidOf(link, nothing),
            link + ": error: another program keeps it locked; nothing written\n");
  other.close();
  EXPECT_EQ(saidOf(link, nothing), "");
  EXPECT_EQ(contentOf(file), "oldnew");
  struct stat status = {};
  EXPECT_EQ(lstat(link.c_str(), &status), 0);
  EXPECT_TRUE(S_ISLNK(status.st_mode));
  EXPECT_EQ(stat(file.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0751);
  EXPECT_EQ(saidOf(pipe, nothing), pipe + ": error: no plain file, which could be replaced\n");
}
