// SPDX-License-Identifier: Apache-2.0
#include <edit/fieldvalue.hpp>
#include <edit/manifest.hpp>
#include <package/manifest2/loadmanifest.hpp>

#include <QBuffer>

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
} // namespace

std::optional<Manifest> readManifest(const std::string& bytes, LoadError& error)
{
  QBuffer device;
  device.setData(QByteArray::fromRawData(bytes.data(), static_cast<int>(bytes.size())));
  device.open(QIODevice::ReadOnly);
  std::optional<Manifest> manifest(std::in_place);
  PackageInfo2 sections;
  if (!readManifestDevice(device, manifest->package, sections, error))
  {
    return std::nullopt;
  }
  manifest->web = std::move(sections.contents()["web"]);
  return manifest;
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

void unsetField(Manifest& manifest, const FieldPath& path)
{
  const std::vector<FieldPath> parts = expanded(AnyConstReference(manifest), path);
  for (auto part = parts.rbegin(); part != parts.rend(); ++part) // indexes stay as they are so
  {
    if (!unsetAt(AnyReference(manifest), *part) && *part == path)
    {
      valueAt(AnyConstReference(manifest), path); // says what there is instead
    }
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
