// SPDX-License-Identifier: Apache-2.0
#include <edit/changes.hpp>
#include <edit/fieldvalue.hpp>
#include <edit/manifest.hpp>
#include <edit/memoryfile.hpp>
#include <package/manifest2/loadmanifest.hpp>

#include <QBuffer>

#include <algorithm>

namespace vesk
{
namespace edit
{
namespace
{
/// Describes a Manifest by the description of its package.
class ManifestType : public NativeType<Manifest, StructTypeInterface>
{
public:
  ManifestType() : names(package.memberNames()), types(package.memberTypes())
  {
    names.emplace_back("web");
    types.push_back(typeOf<AnyValue>());
  }

  std::string name() const override { return "::vesk::edit::Manifest"; }
  const std::vector<std::string>& memberNames() const override { return names; }
  const std::vector<const TypeInterface*>& memberTypes() const override { return types; }

  void* member(void* value, std::size_t index) const override
  {
    detail::requireIndex("member", index, names.size());
    return index == names.size() - 1 ? &of(value).web : package.member(&of(value).package, index);
  }

private:
  const StructTypeInterface& package = *static_cast<StructTypeInterface*>(typeOf<PackageInfo>());
  std::vector<std::string> names;
  std::vector<const TypeInterface*> types;
};

template <typename Read>
std::optional<Manifest> manifestRead(Read read)
{
  std::optional<Manifest> manifest(std::in_place);
  std::optional<WebInfo> web;
  if (!read(manifest->package, web))
  {
    return std::nullopt;
  }
  if (web)
  {
    manifest->web = std::move(*web);
  }
  return manifest;
}

std::string packageWritten(const PackageInfo& package)
{
  MemoryFile file;
  package.saveToManifestFile(file);
  return file.content.toStdString();
}

/// A text without what XML cannot carry, as a package that is written keeps it.
std::string asWritten(const std::string& text)
{
  PackageInfo carrier;
  carrier.setUuid(text);
  LoadError error;
  return readManifest(packageWritten(carrier), error).value().package.uuid();
}
} // namespace

std::optional<Manifest> readManifest(const std::string& bytes, LoadError& error)
{
  QBuffer device;
  device.setData(QByteArray::fromRawData(bytes.data(), static_cast<int>(bytes.size())));
  device.open(QIODevice::ReadOnly);
  return manifestRead([&](PackageInfo& package, std::optional<WebInfo>& web)
                      { return readManifestDevice(device, package, web, error); });
}

std::optional<Manifest> readManifestText(const std::string& text, LoadError& error)
{
  return manifestRead([&](PackageInfo& package, std::optional<WebInfo>& web)
                      { return vesk::readManifestText(text, package, web, error); });
}

std::string writeManifest(const PackageInfo& package, const AnyValue& web)
{
  std::string bytes = packageWritten(package);
  LoadError error; // never set: what a package writes can be read
  std::optional<Manifest> written = web.isValid() ? readManifest(bytes, error) : std::nullopt;
  if (!written)
  {
    return bytes;
  }
  const Manifest wanted{written->package, WebInfo{asWritten(web.as<WebInfo>().path)}};
  return changed(bytes, *written, wanted);
}

std::ostream& operator<<(std::ostream& out, const Manifest& manifest)
{
  out << manifest.package;
  if (manifest.web.isValid())
  {
    out << "Web content\n***********\nPath: " << manifest.web.as<WebInfo>().path << '\n';
  }
  return out;
}

void setField(Manifest& manifest, const FieldPath& path, const std::string& text)
{
  if (path.front() == FieldStep("web") && !manifest.web.isValid())
  {
    manifest.web = WebInfo();
  }
  for (const FieldPath& part : expanded(AnyConstReference(manifest), path))
  {
    setAt(AnyReference(manifest), part, text);
  }
}

void unsetFields(Manifest& manifest, const std::vector<FieldPath>& paths)
{
  std::vector<FieldPath> parts;
  for (const FieldPath& path : paths)
  {
    const bool isOne = std::find(path.begin(), path.end(), FieldStep(EveryElement())) == path.end();
    if (isOne)
    {
      valueAt(AnyConstReference(manifest), path); // or says what there is instead
      parts.push_back(path);
      continue;
    }
    // All elements of a list go at once.
    const bool isWhole = std::holds_alternative<EveryElement>(path.back());
    FieldPath way = path;
    way.resize(path.size() - (isWhole ? 1 : 0));
    for (FieldPath& part : expanded(AnyConstReference(manifest), way))
    {
      parts.push_back(std::move(part));
      if (isWhole)
      {
        parts.back().emplace_back(EveryElement());
      }
    }
  }
  // From the back to the front, so that indexes stay what they are until it is their turn.
  std::sort(parts.rbegin(), parts.rend());
  parts.erase(std::unique(parts.begin(), parts.end()), parts.end());
  for (const FieldPath& part : parts)
  {
    unsetAt(AnyReference(manifest), part);
  }
}

} // namespace edit

template <>
TypeInterface* typeOf<edit::Manifest>()
{
  static auto* const type = new edit::ManifestType; // never destroyed
  return type;
}

} // namespace vesk
