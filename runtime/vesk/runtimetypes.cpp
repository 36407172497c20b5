// SPDX-License-Identifier: Apache-2.0
#include <vesk/anyvalue.hpp>
#include <vesk/runtimetypes.hpp>
#include <vesk/structversioning.hpp>

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <stdexcept>
#include <tuple>

namespace vesk
{
namespace
{
/// The members of a struct or the elements of a list, each holding a value of its type.
using Parts = std::vector<AnyValue>;

bool isNan(const Number& number)
{
  const auto* const floating = std::get_if<double>(&number);
  return floating != nullptr && std::isnan(*floating);
}

/// Orders keys of one type. NaN comes before all other numbers.
struct KeyOrder
{
  using is_transparent = void;

  bool operator()(const AnyConstReference& left, const AnyConstReference& right) const
  {
    switch (left.type()->kind())
    {
    case TypeKind::String:
      return left.as<std::string>() < right.as<std::string>();
    case TypeKind::Bool:
      return !left.as<bool>() && right.as<bool>();
    default:
      const auto& type = static_cast<const NumberTypeInterface&>(*left.type());
      const Number ours = type.number(left.address());
      const Number theirs = type.number(right.address());
      return isNan(ours) ? !isNan(theirs) : ours < theirs;
    }
  }
};

/// The keys and values of a map, each holding a value of its type.
using Entries = std::map<AnyValue, AnyValue, KeyOrder>;

/// How deep types are within each other, and how many values a default value consists of. Both are
/// bounded, since a peer's description must use up neither stack nor memory.
struct Extent
{
  int depth = 1;
  std::size_t values = 1;
};

constexpr std::size_t mostValues = 65536;

/// The extent of \p outer with one more part, \p inner. Throws std::invalid_argument when it
/// exceeds the bounds.
Extent around(const Extent& outer, const Extent& inner)
{
  const Extent extent{std::max(outer.depth, inner.depth + 1), outer.values + inner.values};
  if (extent.depth > detail::deepestNesting || extent.values > mostValues)
  {
    throw std::invalid_argument("a type with too many types within it");
  }
  return extent;
}

class HasExtent
{
public:
  HasExtent() = default;
  HasExtent(const HasExtent&) = delete;
  HasExtent& operator=(const HasExtent&) = delete;
  virtual ~HasExtent() = default;

  Extent extent;
};

/// A type that was not described at run time counts as one value, whatever it contains.
Extent extentOf(const TypeInterface* type)
{
  const auto* const runtimeType = dynamic_cast<const HasExtent*>(type);
  return runtimeType == nullptr ? Extent() : runtimeType->extent;
}

template <typename Value, typename Interface>
class RuntimeType : public NativeType<Value, Interface>, public HasExtent
{
public:
  const std::type_info& info() const override { return typeid(void); }
};

class RuntimeStruct : public RuntimeType<Parts, StructTypeInterface>
{
public:
  RuntimeStruct(std::string structName, const std::vector<RuntimeMember>& members,
                const std::vector<std::string>& addedFields)
      : typeName(std::move(structName)), versioning(addedFields)
  {
    for (const RuntimeMember& member : members)
    {
      names.push_back(member.name);
      types.push_back(member.type);
      extent = around(extent, extentOf(member.type));
    }
  }

  std::string name() const override { return typeName; }
  const std::vector<std::string>& memberNames() const override { return names; }
  const std::vector<const TypeInterface*>& memberTypes() const override { return types; }

  void* create() const override
  {
    auto parts = std::make_unique<Parts>();
    parts->reserve(types.size());
    for (const TypeInterface* type : types)
    {
      parts->emplace_back(*type);
    }
    return parts.release();
  }

  void* member(void* value, std::size_t index) const override
  {
    detail::requireIndex("member", index, types.size());
    return of(value)[index].reference().address();
  }

  bool convertFrom(void* value, const MemberDifference& difference) const override
  {
    return versioning.convertFrom(*this, value, difference);
  }

  bool convertTo(const MemberDifference& difference) const override
  {
    return versioning.convertTo(difference);
  }

private:
  std::string typeName;
  std::vector<std::string> names;
  std::vector<const TypeInterface*> types;
  StructVersioningDelegateAddFields versioning;
};

class RuntimeList : public RuntimeType<Parts, ListTypeInterface>
{
public:
  explicit RuntimeList(const TypeInterface* elementType) : type(elementType)
  {
    extent.depth = around(extent, extentOf(elementType)).depth; // a default list has no values
  }

  const TypeInterface* elementType() const override { return type; }
  std::size_t size(const void* list) const override { return of(list).size(); }

  std::vector<void*> elements(void* list) const override
  {
    std::vector<void*> addresses;
    addresses.reserve(size(list));
    for (AnyValue& part : of(list))
    {
      addresses.push_back(part.reference().address());
    }
    return addresses;
  }

  void* element(void* list, std::size_t index) const override
  {
    detail::requireIndex("element", index, size(list));
    return of(list)[index].reference().address();
  }

  void* append(void* list) const override
  {
    return of(list).emplace_back(*type).reference().address();
  }

  void* insertCopy(void* list, std::size_t index, const void* element) const override
  {
    detail::requireIndex("place", index, size(list) + 1);
    AnyValue copy(AnyConstReference(*type, element));
    return of(list).insert(at(list, index), std::move(copy))->reference().address();
  }

  void erase(void* list, std::size_t index) const override
  {
    detail::requireIndex("element", index, size(list));
    of(list).erase(at(list, index));
  }

  void clear(void* list) const override { of(list).clear(); }

private:
  static Parts::iterator at(void* list, std::size_t index)
  {
    return of(list).begin() + static_cast<std::ptrdiff_t>(index);
  }

  const TypeInterface* type;
};

class RuntimeMap : public RuntimeType<Entries, MapTypeInterface>
{
public:
  RuntimeMap(const TypeInterface* typeOfKeys, const TypeInterface* typeOfValues)
      : keys(typeOfKeys), values(typeOfValues)
  {
    extent.depth = around(extent, extentOf(typeOfValues)).depth; // a default map has no values
  }

  const TypeInterface* keyType() const override { return keys; }
  const TypeInterface* valueType() const override { return values; }
  std::size_t size(const void* map) const override { return of(map).size(); }

  std::vector<std::pair<const void*, void*>> entries(void* map) const override
  {
    std::vector<std::pair<const void*, void*>> addresses;
    addresses.reserve(size(map));
    for (auto& [key, value] : of(map))
    {
      addresses.emplace_back(key.reference().address(), value.reference().address());
    }
    return addresses;
  }

  void* find(void* map, const void* key) const override
  {
    const auto found = of(map).find(viewOf(key));
    return found == of(map).end() ? nullptr : found->second.reference().address();
  }

  void* insert(void* map, const void* key) const override
  {
    void* const found = find(map, key);
    return found != nullptr ? found : put(map, key, AnyValue(*values));
  }

  void* insertCopy(void* map, const void* key, const void* value) const override
  {
    return put(map, key, AnyValue(AnyConstReference(*values, value)));
  }

  bool erase(void* map, const void* key) const override
  {
    const auto found = of(map).find(viewOf(key));
    if (found == of(map).end())
    {
      return false;
    }
    of(map).erase(found);
    return true;
  }

  void clear(void* map) const override { of(map).clear(); }

private:
  AnyConstReference viewOf(const void* key) const { return {*keys, key}; }

  void* put(void* map, const void* key, AnyValue value) const
  {
    return of(map)
        .insert_or_assign(AnyValue(viewOf(key)), std::move(value))
        .first->second.reference()
        .address();
  }

  const TypeInterface* keys;
  const TypeInterface* values;
};

struct RuntimeTypes
{
  using Signature =
      std::tuple<std::string, std::vector<std::pair<std::string, const TypeInterface*>>,
                 std::vector<std::string>>;

  std::mutex mutex;
  std::map<Signature, std::unique_ptr<RuntimeStruct>> structs;
  std::map<const TypeInterface*, std::unique_ptr<RuntimeList>> lists;
  std::map<std::pair<const TypeInterface*, const TypeInterface*>, std::unique_ptr<RuntimeMap>> maps;

  /// The description for a key, made unless there is one already.
  template <typename Type, typename Key, typename Make>
  Type* known(std::map<Key, std::unique_ptr<Type>>& descriptions, const Key& key, const Make& make)
  {
    const std::lock_guard lock(mutex);
    const auto found = descriptions.find(key);
    return (found != descriptions.end() ? found : descriptions.emplace(key, make()).first)
        ->second.get();
  }
};

// Never destroyed: values may outlive everything else.
RuntimeTypes& theRuntimeTypes()
{
  static RuntimeTypes& types = *new RuntimeTypes;
  return types;
}
} // namespace

StructTypeInterface* describeStruct(const std::string& name,
                                    const std::vector<RuntimeMember>& members,
                                    const std::vector<std::string>& addedFields)
{
  std::set<std::string> names;
  std::vector<std::pair<std::string, const TypeInterface*>> signature;
  for (const RuntimeMember& member : members)
  {
    if (member.type == nullptr || !names.insert(member.name).second)
    {
      throw std::invalid_argument("struct " + name + ": the member \"" + member.name +
                                  "\" has no type or stands twice");
    }
    signature.emplace_back(member.name, member.type);
  }
  RuntimeTypes& types = theRuntimeTypes();
  return types.known(types.structs, RuntimeTypes::Signature(name, signature, addedFields),
                     [&] { return std::make_unique<RuntimeStruct>(name, members, addedFields); });
}

ListTypeInterface* describeList(const TypeInterface* elementType)
{
  if (elementType == nullptr)
  {
    throw std::invalid_argument("a list of elements without a type");
  }
  RuntimeTypes& types = theRuntimeTypes();
  return types.known(types.lists, elementType,
                     [&] { return std::make_unique<RuntimeList>(elementType); });
}

MapTypeInterface* describeMap(const TypeInterface* keyType, const TypeInterface* valueType)
{
  if (keyType == nullptr || valueType == nullptr)
  {
    throw std::invalid_argument("a map of keys or values without a type");
  }
  const TypeKind kind = keyType->kind();
  if (kind != TypeKind::String && kind != TypeKind::Bool && kind != TypeKind::Integer &&
      kind != TypeKind::Float)
  {
    throw std::invalid_argument("a map with keys of type " + keyType->name());
  }
  RuntimeTypes& types = theRuntimeTypes();
  return types.known(types.maps, std::pair(keyType, valueType),
                     [&] { return std::make_unique<RuntimeMap>(keyType, valueType); });
}

} // namespace vesk
