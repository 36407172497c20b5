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

bool readManifest(const std::string& bytes, Manifest& manifest, LoadError& error)
{
  QBuffer device;
  device.setData(QByteArray::fromRawData(bytes.data(), static_cast<int>(bytes.size())));
  device.open(QIODevice::ReadOnly);
  Manifest read;
  PackageInfo2 sections;
  if (!readManifestDevice(device, read.package, sections, error))
  {
    return false;
  }
  read.web = sections.contents()["web"];
  manifest = std::move(read);
  return true;
}

void setField(Manifest& manifest, const FieldPath& path, const std::string& text)
{
  Manifest changed = manifest;
  if (path.front() == FieldStep("web") && !changed.web.isValid())
  {
    changed.web = WebInfo();
  }
  for (const FieldPath& part : expanded(AnyConstReference(changed), path))
  {
    setAt(AnyReference(changed), part, text);
  }
  manifest = std::move(changed);
}

void unsetField(Manifest& manifest, const FieldPath& path)
{
  Manifest changed = manifest;
  std::vector<FieldPath> parts = expanded(AnyConstReference(changed), path);
  for (auto part = parts.rbegin(); part != parts.rend(); ++part) // indexes stay as they are so
  {
    if (!unsetAt(AnyReference(changed), *part) && *part == path)
    {
      valueAt(AnyConstReference(changed), path); // says what there is instead
    }
  }
  manifest = std::move(changed);
}

} // namespace edit

template <>
TypeInterface* typeOf<edit::Manifest>()
{
  static auto* const type = new edit::ManifestType; // never destroyed
  return type;
}

} // namespace vesk
