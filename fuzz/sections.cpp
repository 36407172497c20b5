// SPDX-License-Identifier: Apache-2.0
// The second reader beside the first: they accept the same, and read the same but where stated.
#include "support.hpp"

#include <package/manifest2/loadmanifest.hpp>

#include <QBuffer>
#include <QDomDocument>

#include <set>
#include <sys/mman.h>
#include <unistd.h>

namespace
{
/// A file in memory that has a path.
std::string pathOfFileWith(const std::string& bytes)
{
  static const int descriptor = memfd_create("manifest", 0);
  const bool isWritten =
      ftruncate(descriptor, 0) == 0 &&
      pwrite(descriptor, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size());
  require(isWritten, "no memory for a file");
  return "/proc/self/fd/" + std::to_string(descriptor);
}

/// The first reader merges repeated sections; the second one takes only the last.
bool hasRepeatedSections(const QDomDocument& document)
{
  std::set<QString> names;
  for (QDomNode node = document.documentElement().firstChild(); !node.isNull();
       node = node.nextSibling())
  {
    if (!names.insert(node.nodeName()).second)
    {
      return true;
    }
  }
  return false;
}

void requireSameButForServices(vesk::PackageInfo& first, vesk::PackageInfo& second)
{
  auto service = second.services().begin();
  for (const vesk::PackageService& expected : first.services())
  {
    require(service != second.services().end() && expected.name == service->name &&
                expected.execStart == service->execStart && (service->autoRun || !expected.autoRun),
            "the readers differ in a service");
    ++service;
  }
  require(service == second.services().end(), "the second reader has more services");
  first.clearServices();
  second.clearServices();
  requireEqual(vesk::AnyConstReference(first), vesk::AnyConstReference(second),
               "the second reader differs");
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  const std::string path = pathOfFileWith(textOf(data, size));
  vesk::PackageInfo package;
  const bool isLoaded = package.loadFromManifestFile(path);
  require(takeLogged().size() == (isLoaded ? 0 : 1), "the first reader logs what it refuses");
  try
  {
    vesk::PackageInfo2 info = vesk::loadManifest(path);
    require(isLoaded, "only the second reader accepts");
    vesk::PackageInfo converted(info);
    QDomDocument document;
    QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    if (document.setContent(&device) && !hasRepeatedSections(document))
    {
      package.clearDescriptionLanguages();
      requireSameButForServices(package, converted);
    }
    info.contents();
    info.behaviors();
    info.dialogs();
    info.languages();
  }
  catch (const std::runtime_error& error)
  {
    require(!isLoaded, error.what());
    require(takeLogged() == std::vector<std::string>{error.what()}, "what is thrown is logged");
  }
  return 0;
}
