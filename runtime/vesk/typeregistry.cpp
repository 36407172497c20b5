// SPDX-License-Identifier: Apache-2.0
#include <vesk/typeregistry.hpp>

#include <algorithm>
#include <map>
#include <mutex>
#include <shared_mutex>
#include <typeindex>
#include <unordered_map>

namespace vesk
{
namespace
{
struct Registry
{
  std::shared_mutex mutex;
  std::map<std::string, TypeInterface*> structs;
  // By index, not by address: each library has its own type_info of a type with hidden visibility.
  std::unordered_map<std::type_index, TypeInterface*> types;
  std::vector<TypeInterface*> registered;

  /// Allocates in advance, so that nothing is half registered when memory runs out.
  void makeRoom()
  {
    if (registered.size() == registered.capacity())
    {
      registered.reserve(2 * registered.size() + 1);
    }
  }

  void noteRegistered(TypeInterface* type)
  {
    if (std::find(registered.begin(), registered.end(), type) == registered.end())
    {
      registered.push_back(type);
    }
  }
};

// Never destroyed, nor are the descriptions: values may outlive everything else.
Registry& theRegistry()
{
  static Registry& registry = *new Registry;
  return registry;
}

template <typename Key, typename Map>
TypeInterface* lookUp(Registry& registry, const Map& map, const Key& key)
{
  const std::shared_lock lock(registry.mutex);
  const auto found = map.find(key);
  return found == map.end() ? nullptr : found->second;
}
} // namespace

bool registerStruct(TypeInterface* type)
{
  if (type == nullptr || type->kind() != TypeKind::Struct)
  {
    return false;
  }
  const std::string name = type->name();
  Registry& registry = theRegistry();
  const std::unique_lock lock(registry.mutex);
  registry.makeRoom();
  if (!registry.structs.try_emplace(name, type).second)
  {
    return false;
  }
  registry.noteRegistered(type);
  return true;
}

bool registerType(const std::type_info& info, TypeInterface* type)
{
  if (type == nullptr || type->info() != info || info == typeid(void))
  {
    return false;
  }
  Registry& registry = theRegistry();
  const std::unique_lock lock(registry.mutex);
  registry.makeRoom();
  if (!registry.types.try_emplace(info, type).second)
  {
    return false;
  }
  registry.noteRegistered(type);
  return true;
}

TypeInterface* getType(const std::type_info& info)
{
  Registry& registry = theRegistry();
  return lookUp(registry, registry.types, std::type_index(info));
}

TypeInterface* getStruct(const std::string& name)
{
  Registry& registry = theRegistry();
  return lookUp(registry, registry.structs, name);
}

std::vector<std::string> registeredNames()
{
  std::vector<TypeInterface*> types;
  {
    Registry& registry = theRegistry();
    const std::shared_lock lock(registry.mutex);
    types = registry.registered;
  }
  // Without the lock, since naming a list may add a description of its elements to the registry.
  std::vector<std::string> names;
  names.reserve(types.size());
  for (const TypeInterface* type : types)
  {
    names.push_back(type->name());
  }
  return names;
}

TypeInterface* detail::getTypeOrDescribe(const std::type_info& info,
                                         std::unique_ptr<TypeInterface> (*describe)())
{
  if (TypeInterface* type = getType(info))
  {
    return type;
  }
  Registry& registry = theRegistry();
  const std::unique_lock lock(registry.mutex);
  const auto found = registry.types.find(info);
  if (found != registry.types.end())
  {
    return found->second;
  }
  std::unique_ptr<TypeInterface> type = describe();
  registry.types.emplace(info, type.get());
  return type.release();
}

} // namespace vesk
