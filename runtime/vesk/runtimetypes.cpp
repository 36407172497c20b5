// SPDX-License-Identifier: Apache-2.0
#include <vesk/anyvalue.hpp>
#include <vesk/runtimetypes.hpp>
#include <vesk/structversioning.hpp>

#include <algorithm>
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

template <typename Interface>
class RuntimeType : public NativeType<Parts, Interface>, public HasExtent
{
public:
  const std::type_info& info() const override { return typeid(void); }
};

class RuntimeStruct : public RuntimeType<StructTypeInterface>
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
  const std::vector<TypeInterface*>& memberTypes() const override { return types; }

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
    return of(value).at(index).reference().address();
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
  std::vector<TypeInterface*> types;
  StructVersioningDelegateAddFields versioning;
};

class RuntimeList : public RuntimeType<ListTypeInterface>
{
public:
  explicit RuntimeList(TypeInterface* elementType) : type(elementType)
  {
    extent.depth = around(extent, extentOf(elementType)).depth; // a default list has no values
  }

  TypeInterface* elementType() const override { return type; }
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
    return of(list).at(index).reference().address();
  }

  void* append(void* list) const override
  {
    return of(list).emplace_back(*type).reference().address();
  }

  void appendCopy(void* list, const void* element) const override
  {
    of(list).emplace_back(AnyConstReference(*type, element));
  }

  void clear(void* list) const override { of(list).clear(); }

private:
  TypeInterface* type;
};

struct RuntimeTypes
{
  using Signature = std::tuple<std::string, std::vector<std::pair<std::string, TypeInterface*>>,
                               std::vector<std::string>>;

  std::mutex mutex;
  std::map<Signature, std::unique_ptr<RuntimeStruct>> structs;
  std::map<TypeInterface*, std::unique_ptr<RuntimeList>> lists;

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
  std::vector<std::pair<std::string, TypeInterface*>> signature;
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

ListTypeInterface* describeList(TypeInterface* elementType)
{
  if (elementType == nullptr)
  {
    throw std::invalid_argument("a list of elements without a type");
  }
  RuntimeTypes& types = theRuntimeTypes();
  return types.known(types.lists, elementType,
                     [&] { return std::make_unique<RuntimeList>(elementType); });
}

} // namespace vesk
