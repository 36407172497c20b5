// SPDX-License-Identifier: Apache-2.0
// Conversions between structs that are described at run time, as peers of other versions bring them.
#include "randomvalue.hpp"
#include "support.hpp"

#include <edit/json.hpp>
#include <vesk/runtimetypes.hpp>

#include <algorithm>
#include <array>
#include <random>
#include <set>

using vesk::AnyReference;
using vesk::AnyValue;
using vesk::TypeInterface;

namespace
{
/// A type, and the type of which it is a later version.
struct Version
{
  const TypeInterface* type;
  const TypeInterface* earlier;
};

/// Descriptions live to the end of the process, so the types are made once, always the same ones.
class TypePool
{
public:
  TypePool()
  {
    addNativeTypes<bool, std::int8_t, std::uint16_t, std::int32_t, std::int64_t, std::uint64_t,
                   float, double, std::string, AnyValue, std::vector<std::int32_t>,
                   std::list<double>, std::vector<AnyValue>, std::map<std::string, std::string>,
                   std::map<std::string, AnyValue>, std::map<std::int32_t, std::string>,
                   std::map<double, bool>, std::pair<std::string, float>, vesk::BehaviorInfo,
                   vesk::DialogInfo, vesk::MirelRequirement, vesk::PackageInfo>();
    while (versions.size() < mostTypes)
    {
      addType();
    }
  }

  std::vector<const TypeInterface*> all() const
  {
    std::vector<const TypeInterface*> types;
    for (const Version& version : versions)
    {
      types.push_back(version.type);
    }
    return types;
  }

  std::vector<Version> versions;

private:
  static constexpr std::size_t mostTypes = 400;
  static constexpr int mostParts = 60; // of a default value

  template <typename... Types>
  void addNativeTypes()
  {
    (add(vesk::typeOf<Types>(), vesk::typeOf<AnyValue>(), 1), ...);
  }

  void add(const TypeInterface* type, const TypeInterface* earlier, int parts)
  {
    versions.push_back({type, earlier});
    partsOf[type] = parts;
  }

  const TypeInterface* anyType() { return versions[random() % versions.size()].type; }

  void addType()
  {
    const TypeInterface* const type = anyType();
    if (random() % 4 == 0)
    {
      add(vesk::describeList(type), type, 1);
    }
    else if (random() % 8 == 0)
    {
      add(vesk::describeMap(vesk::typeOf<std::string>(), type), type, 1);
    }
    else if (type->kind() == vesk::TypeKind::Struct)
    {
      addVersionOf(*static_cast<const vesk::StructTypeInterface*>(type));
    }
    else
    {
      addStruct({{"first", type}, {"second", anyType()}}, {}, vesk::typeOf<AnyValue>());
    }
  }

  void addVersionOf(const vesk::StructTypeInterface& type)
  {
    std::vector<vesk::RuntimeMember> members;
    for (std::size_t i = 0; i < type.memberNames().size(); ++i)
    {
      members.push_back({type.memberNames()[i], type.memberTypes()[i]});
    }
    std::vector<std::string> added;
    switch (random() % 4)
    {
    case 0:
      members[random() % members.size()].type = anyType();
      break;
    case 1:
      std::swap(members.front(), members.back());
      added.push_back(members.front().name);
      break;
    case 2:
      members.erase(members.begin() + static_cast<std::ptrdiff_t>(random() % members.size()));
      break;
    default:
      members.push_back({"member" + std::to_string(random() % 8), anyType()});
      added.push_back(members.back().name);
    }
    addStruct(members, added, &type);
  }

  void addStruct(const std::vector<vesk::RuntimeMember>& members,
                 const std::vector<std::string>& added, const TypeInterface* earlier)
  {
    int parts = 1;
    std::set<std::string> names;
    for (const vesk::RuntimeMember& member : members)
    {
      parts += partsOf.count(member.type) != 0 ? partsOf[member.type] : 1;
      names.insert(member.name);
    }
    if (parts <= mostParts && !members.empty() && names.size() == members.size())
    {
      add(vesk::describeStruct("Peer" + std::to_string(versions.size()), members, added), earlier,
          parts);
    }
  }

  std::mt19937 random{1}; // NOLINT(cert-msc51-cpp): always the same types
  std::map<const TypeInterface*, int> partsOf;
};

const TypePool& pool()
{
  static const TypePool& types = *new TypePool;
  return types;
}

std::string shown(const AnyValue& value) { return vesk::edit::toJson(value.reference(), -1); }

/// Whether the value was converted; when it was not, nothing has changed.
bool tryConvert(const AnyValue& source, AnyValue& target)
{
  const std::string before = shown(target);
  try
  {
    vesk::convert(source, target);
    return true;
  }
  catch (const vesk::ConversionError& error)
  {
    require(shown(target) == before, std::string("changed in spite of: ") + error.what());
    return false;
  }
}

template <typename Value>
void tryTo(const AnyValue& source)
{
  try
  {
    source.to<Value>();
  }
  catch (const vesk::ConversionError&)
  {}
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  static const std::vector<const TypeInterface*>& types = *new std::vector(pool().all());
  FuzzedDataProvider provider(data, size);
  const auto some = [&provider]() -> const Version&
  { return pool().versions[provider.ConsumeIntegralInRange<std::size_t>(0, types.size() - 1)]; };
  const Version& version = some();
  std::array<const TypeInterface*, 2> pair{version.type,
                                           provider.ConsumeBool() ? version.earlier : some().type};
  if (provider.ConsumeBool())
  {
    std::swap(pair[0], pair[1]);
  }
  AnyValue source(*pair[0]);
  fillRandomly(source, provider, types);
  AnyValue converted(*pair[1]);
  fillRandomly(converted, provider, types);

  const std::string before = shown(source);
  const bool isDone = tryConvert(source, converted);
  require(shown(source) == before, "the source has changed");
  AnyValue back(*pair[0]);
  if (isDone && tryConvert(converted, back))
  {
    AnyValue again(*pair[1]);
    require(tryConvert(back, again) && shown(again) == shown(converted),
            "not the same there and back and there: " + before + " to " + shown(converted));
  }
  tryTo<vesk::PackageInfo>(source);
  tryTo<std::map<std::string, AnyValue>>(source);
  tryTo<std::vector<AnyValue>>(source);
  tryTo<std::string>(source);
  return 0;
}
