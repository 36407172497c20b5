// SPDX-License-Identifier: Apache-2.0
// Errors as values, beside what is logged and thrown of the same manifests.
#include "filledpackage.hpp"
#include "support.hpp"

#include <package/manifest2/loadmanifest.hpp>

#include <QBuffer>

using namespace vesk;

namespace
{
std::string described(const LoadError& error)
{
  return error.path + '|' + error.message + '|' + std::to_string(error.line) + ':' +
         std::to_string(error.column) + (error.isBeyondLimits ? "|beyond limits" : "");
}

/// The operations that read one manifest, and log or not.
struct Operations
{
  std::string path;
  std::string nameInLog;
  std::function<bool(PackageInfo&)> load;
  std::function<bool(PackageInfo&, LoadError&)> read;
  std::function<bool(PackageInfo2&, LoadError&)> readSections;
};

void expectSameOf(const Operations& operations)
{
  CapturedLog captured;
  auto expected = filled<PackageInfo>();
  const bool isLoaded = operations.load(expected);
  const std::vector<log::Message> logged = std::exchange(captured.messages, {});
  auto package = filled<PackageInfo>();
  PackageInfo2 info;
  info.uuid = "before";
  const LoadError before{"p", "m", 1, 2, true};
  LoadError error = before;
  EXPECT_EQ(operations.readSections(info, error), isLoaded);
  EXPECT_EQ(info.uuid, isLoaded ? expected.uuid() : "before");
  const std::string errorOfSections = described(std::exchange(error, before));
  EXPECT_EQ(operations.read(package, error), isLoaded);
  EXPECT_EQ(contentIn(package), contentIn(expected));
  EXPECT_EQ(described(error), errorOfSections);
  EXPECT_TRUE(captured.messages.empty());
  if (isLoaded)
  {
    EXPECT_EQ(described(error), described(before));
    return;
  }
  EXPECT_EQ(error.path, operations.path);
  EXPECT_EQ(logged.at(0).text, "Syntax error in " + operations.nameInLog + " at line " +
                                   std::to_string(error.line) + ", column " +
                                   std::to_string(error.column) + ": " + error.message);
}
} // namespace

TEST(LoadErrors, AreWhatIsLogged)
{
  std::string nested;
  for (int i = 0; i < 257; ++i)
  {
    nested += "<p>\n";
  }
  for (const std::string& manifest :
       {std::string("<p xmlns:x='urn:x' x:uuid='u' version='1'/>"), std::string(),
        std::string("<package uuid='x'>\n <names></package>"), nested,
        "<!DOCTYPE p [<!ELEMENT p " + std::string(300, '(') + ">]><p/>"})
  {
    SCOPED_TRACE(manifest.substr(0, 20));
    const TemporaryFolder folder;
    const std::string path = folder.file("é.xml", manifest);
    QFile file(QString::fromStdString(path));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QBuffer device;
    device.setData(QByteArray::fromStdString(manifest));
    device.open(QIODevice::ReadOnly);
    PackageInfo ignored;
    PackageInfo2 ignoredSections;
    const auto load = [&](PackageInfo& p) { return p.loadFromManifestFile(path); };
    expectSameOf({path, path, load,
                  [&](PackageInfo& p, LoadError& e) { return p.readManifestFile(path, e); },
                  [&](PackageInfo2& p, LoadError& e) { return readManifestFile(path, p, e); }});
    expectSameOf({"", manifest, [&](auto& p) { return p.loadFromManifestContent(manifest); },
                  [&](PackageInfo& p, LoadError& e) { return p.readManifestText(manifest, e); },
                  [&](PackageInfo2& p, LoadError& e) { return readManifestText(manifest, p, e); }});
    expectSameOf({"", path, load,
                  [&](PackageInfo& p, LoadError& e)
                  { return device.seek(0) && p.readManifestDevice(device, e); },
                  [&](PackageInfo2& p, LoadError& e)
                  { return device.seek(0) && readManifestDevice(device, p, e); }});
    expectSameOf({path, path, load,
                  [&](PackageInfo& p, LoadError& e)
                  { return file.seek(0) && readManifestDevice(file, p, ignoredSections, e); },
                  [&](PackageInfo2& p, LoadError& e)
                  { return file.seek(0) && readManifestDevice(file, ignored, p, e); }});
    LoadError error;
    if (!ignored.readManifestFile(path, error))
    {
      EXPECT_EQ(error.isBeyondLimits, manifest.size() > 200);
    }
  }
}

TEST(LoadErrors, TellWhyAFileCannotBeRead)
{
  const TemporaryFolder folder;
  PackageInfo package;
  PackageInfo2 info;
  std::vector<LoadError> errors(5);
  for (const auto& [path, why] :
       {std::pair(folder.path("missing"),
                  "cannot be opened for reading: No such file or directory"),
        std::pair(folder.path(""), "cannot be opened for reading: file to open is a directory"),
        // It opens, but its beginning cannot be read.
        std::pair(std::string("/proc/self/mem"), "cannot be read: Input/output error")})
  {
    EXPECT_FALSE(package.readManifestFile(path, errors[0]));
    EXPECT_FALSE(readManifestFile(path, info, errors[1]));
    QFile file(QString::fromStdString(path));
    const bool isOpen = file.open(QIODevice::ReadOnly);
    EXPECT_FALSE(package.readManifestDevice(file, errors[2]));
    EXPECT_FALSE(readManifestDevice(file, info, errors[3]));
    EXPECT_FALSE(readManifestDevice(file, package, info, errors[4]));
    for (std::size_t i = 0; i < errors.size(); ++i)
    {
      const std::string reason = i < 2 || isOpen ? why : "is not open for reading";
      EXPECT_EQ(described(errors[i]), described({path, reason})) << i;
    }
  }
}
