// SPDX-License-Identifier: Apache-2.0
#ifndef VESK_STRUCTTYPES_HPP
#define VESK_STRUCTTYPES_HPP

#include <vesk/nativetypes.hpp>
#include <vesk/structdescription.hpp>
#include <vesk/structversioning.hpp>

#include <array>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace vesk
{

/// A pair is named with its types, as in "pair<string, int32>".
template <typename First, typename Second>
struct StructDescription<std::pair<First, Second>>
{
  static std::string name()
  {
    return "pair<" + typeOf<First>()->name() + ", " + typeOf<Second>()->name() + '>';
  }
  static constexpr auto members =
      std::make_tuple(member("first", &std::pair<First, Second>::first),
                      member("second", &std::pair<First, Second>::second));
};

namespace detail
{
template <typename Description, typename = void>
struct AddedFields
{
  static std::vector<std::string> names() { return {}; }
};

template <typename Description>
struct AddedFields<Description, std::void_t<decltype(Description::addedFields)>>
{
  static std::vector<std::string> names()
  {
    return {Description::addedFields.begin(), Description::addedFields.end()};
  }
};

template <typename... Members>
constexpr bool haveDifferentNames(const std::tuple<Members...>& members)
{
  const auto names = std::apply(
      [](const auto&... member) { return std::array{std::string_view(member.name)...}; }, members);
  for (std::size_t i = 0; i < names.size(); ++i)
  {
    for (std::size_t j = 0; j < i; ++j)
    {
      if (names[i] == names[j])
      {
        return false;
      }
    }
  }
  return true;
}
} // namespace detail

/// Implements the type system's interface for a struct from its StructDescription.
template <typename Struct>
class StructType : public NativeType<Struct, StructTypeInterface>
{
  using Description = StructDescription<Struct>;
  using Indexes =
      std::make_index_sequence<std::tuple_size_v<std::decay_t<decltype(Description::members)>>>;

  static_assert(detail::haveDifferentNames(Description::members), "two members have one name");

public:
  StructType() : versioning(detail::AddedFields<Description>::names()) {}

  std::string name() const override
  {
    if constexpr (std::is_function_v<decltype(Description::name)>)
    {
      return Description::name();
    }
    else
    {
      return Description::name;
    }
  }

  // The tables are never destroyed: values of static lifetime may be used at the program's end.

  const std::vector<std::string>& memberNames() const override
  {
    static const auto& names = *new auto(
        std::apply([](const auto&... members) { return std::vector<std::string>{members.name...}; },
                   Description::members));
    return names;
  }

  const std::vector<const TypeInterface*>& memberTypes() const override
  {
    static const auto& types = *new auto(std::apply(
        [](const auto&... members)
        {
          return std::vector<const TypeInterface*>{
              typeOf<std::decay_t<decltype(std::declval<Struct&>().*members.pointer)>>()...};
        },
        Description::members));
    return types;
  }

  void* member(void* value, std::size_t index) const override
  {
    static constexpr auto accesses = makeAccesses(Indexes());
    detail::requireIndex("member", index, accesses.size());
    return accesses[index](this->of(value));
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
  using Access = void* (*)(Struct&);

  template <std::size_t... Index>
  static constexpr auto makeAccesses(std::index_sequence<Index...>)
  {
    return std::array<Access, sizeof...(Index)>{[](Struct& value) -> void* {
      return &(value.*(std::get<Index>(Description::members).pointer));
    }...};
  }

  StructVersioningDelegateAddFields versioning;
};

/// Describes a public class whose members are those of a private record: values are created, copied
/// and destroyed as the public class; everything else is forwarded to the record's description and
/// applied to the value's record.
template <typename Public, typename Record>
class StructTypeInterfaceBouncer : public NativeType<Public, StructTypeInterface>
{
public:
  /// \p recordType describes Record; \p recordOf gives the record that a value owns.
  StructTypeInterfaceBouncer(std::string publicName, const StructTypeInterface& recordType,
                             Record& (*recordOf)(Public&))
      : typeName(std::move(publicName)), record(recordType), access(recordOf)
  {}

  std::string name() const override { return typeName; }

  const std::vector<std::string>& memberNames() const override { return record.memberNames(); }

  const std::vector<const TypeInterface*>& memberTypes() const override
  {
    return record.memberTypes();
  }

  void* member(void* value, std::size_t index) const override
  {
    return record.member(&access(this->of(value)), index);
  }

  bool convertFrom(void* value, const MemberDifference& difference) const override
  {
    return record.convertFrom(&access(this->of(value)), difference);
  }

  bool convertTo(const MemberDifference& difference) const override
  {
    return record.convertTo(difference);
  }

private:
  std::string typeName;
  const StructTypeInterface& record;
  Record& (*access)(Public&);
};

} // namespace vesk

#endif
