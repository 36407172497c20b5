// SPDX-License-Identifier: Apache-2.0
// Errors as values, beside what is logged and thrown of the same manifests.
#include "filledpackage.hpp"
#include "manifestpattern.hpp"
#include "support.hpp"

#include <edit/memoryfile.hpp>
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

/// One of the operations that log nothing.
struct Operation
{
  std::string path; ///< in errors
  std::function<bool(PackageInfo&, PackageInfo2&, LoadError&)> read;
  std::string package; ///< the uuids that it reads
  std::string sections;
};
} // namespace

TEST(LoadErrors, AreTheSameOfEveryOperation)
{
  const std::string nested = expanded("{257*<p>\n}");
  const std::string uuid = "not read";
  const std::string before = described({"p", "m", 1, 2, true});
  for (const auto& [text, expected] :
       {std::pair(std::string("<p xmlns:x='urn:x' x:uuid='u' version='1'/>"), std::string()),
        std::pair(std::string(), std::string("|unexpected end of file|1:1")),
        std::pair(std::string("<package uuid='x'>\n <names></package>"),
                  std::string("|tag mismatch|2:18")),
        std::pair(nested,
                  std::string("|more than 256 elements within each other|257:2|beyond limits")),
        std::pair("<!DOCTYPE p [<!ELEMENT p " + std::string(300, '(') + ">]><p/>",
                  std::string("|more than 256 parentheses within each other|1:282|beyond limits"))})
  {
    const std::string& manifest = text;
    SCOPED_TRACE(manifest.substr(0, 20));
    const TemporaryFolder folder;
    const std::string path = folder.file("é.xml", manifest);
    vesk::edit::MemoryFile file(QByteArray::fromStdString(manifest));
    file.setFileName(QString::fromStdString(path));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QBuffer device;
    device.setData(QByteArray::fromStdString(manifest));
    device.open(QIODevice::ReadOnly);
    EXPECT_FALSE(file.rename(file.fileName())); // an error, which is of no concern
    const CapturedLog captured;
    std::optional<WebInfo> web;
    for (const auto& [pathInError, read, uuidOfPackage, uuidOfSections] :
         std::vector<Operation>{
             {path, [&](auto&p, auto&, auto&e) { return p.readManifestFile(path, e); }, "", uuid},
             {path, [&](auto&, auto&i, auto&e) { return readManifestFile(path, i, e); }, uuid, ""},
             {"", [&](auto&p, auto&, auto&e) { return p.readManifestText(manifest, e); }, "u",
              uuid},
             {"", [&](auto&, auto&i, auto&e) { return readManifestText(manifest, i, e); }, uuid,
              "u"},
             {"", [&](auto&p, auto&, auto&e) { return p.readManifestDevice(device, e); }, "", uuid},
             {"",
              [&](auto&, auto&i, auto&e)
              { return device.seek(0) && readManifestDevice(device, i, e); },
              uuid, ""},
             {path, [&](auto&p, auto&i, auto&e) { return readManifestDevice(file, p, i, e); }, "",
              ""},
             {"",
              [&](auto&p, auto&, auto&e)
              { return device.seek(0) && readManifestDevice(device, p, web, e); },
              "", uuid},
             {"", [&](auto&p, auto&, auto&e) { return readManifestText(manifest, p, web, e); }, "u",
              uuid}})
    {
      auto package = filled<PackageInfo>();
      package.setUuid(uuid);
      const std::string content = contentIn(package);
      PackageInfo2 info;
      info.uuid = uuid;
      LoadError error{"p", "m", 1, 2, true};
      EXPECT_EQ(read(package, info, error), expected.empty());
      EXPECT_EQ(described(error), expected.empty() ? before : pathInError + expected);
      EXPECT_EQ(package.uuid(), expected.empty() ? uuidOfPackage : uuid);
      EXPECT_EQ(info.uuid, expected.empty() ? uuidOfSections : uuid);
      if (package.uuid() == uuid)
      {
        EXPECT_EQ(contentIn(package), content);
      }
    }
    EXPECT_TRUE(captured.messages.empty());
  }
}

TEST(LoadErrors, TellWhyAFileCannotBeRead)
{
  const TemporaryFolder folder;
  PackageInfo package;
  PackageInfo2 info;
  std::vector<LoadError> errors(5);
  QBuffer written;
  written.open(QIODevice::WriteOnly);
  EXPECT_FALSE(package.readManifestDevice(written, errors[0]));
  EXPECT_EQ(described(errors[0]), described({"", "is not open for reading"}));
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
