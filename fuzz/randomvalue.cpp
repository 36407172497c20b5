// SPDX-License-Identifier: Apache-2.0
#include "randomvalue.hpp"

using vesk::AnyReference;
using vesk::AnyValue;
using vesk::TypeKind;

namespace
{
constexpr std::size_t longestText = 16;
constexpr int mostElements = 3;
constexpr int mostWithin = 4; // AnyValues in AnyValues

class Filler
{
public:
  Filler(FuzzedDataProvider& source, const std::vector<const vesk::TypeInterface*>& dynamicTypes)
      : data(source), types(dynamicTypes)
  {}

  void fill(const AnyReference& value)
  {
    switch (value.type()->kind())
    {
    case TypeKind::Bool:
      value.as<bool>() = data.ConsumeBool();
      break;
    case TypeKind::Integer:
    case TypeKind::Float:
      fillNumber(value);
      break;
    case TypeKind::String:
      value.as<std::string>() = randomText(data);
      break;
    case TypeKind::List:
      fillList(value);
      break;
    case TypeKind::Map:
      fillMap(value);
      break;
    case TypeKind::Struct:
      for (std::size_t index = 0; index < value.memberNames().size(); ++index)
      {
        fill(value.member(index));
      }
      break;
    case TypeKind::Dynamic:
      fillDynamic(value);
      break;
    case TypeKind::Unknown:
      break;
    }
  }

private:
  int count() { return data.ConsumeIntegralInRange(0, mostElements); }

  void fillNumber(const AnyReference& value)
  {
    const auto& type = static_cast<const vesk::NumberTypeInterface&>(*value.type());
    const bool isFloat = type.kind() == TypeKind::Float;
    const vesk::Number number = isFloat ? vesk::Number(data.ConsumeFloatingPoint<double>())
                                        : vesk::Number(data.ConsumeIntegral<std::int64_t>());
    if (!type.setNumber(value.address(), number)) // then one that fits anywhere
    {
      type.setNumber(value.address(), data.ConsumeIntegralInRange<std::int64_t>(0, 127));
    }
  }

  void fillList(const AnyReference& list)
  {
    for (int left = count(); left > 0; --left)
    {
      fill(list.append());
    }
  }

  void fillMap(const AnyReference& map)
  {
    const auto& type = static_cast<const vesk::MapTypeInterface&>(*map.type());
    for (int left = count(); left > 0; --left)
    {
      AnyValue key(*type.keyType());
      fill(key);
      AnyValue value(*type.valueType());
      fill(value);
      map.insert(key, value);
    }
  }

  void fillDynamic(const AnyReference& value)
  {
    if (types.empty() || depth == mostWithin || data.ConsumeBool())
    {
      return;
    }
    AnyValue held(*types[data.ConsumeIntegralInRange<std::size_t>(0, types.size() - 1)]);
    ++depth;
    fill(held);
    --depth;
    value.as<AnyValue>() = std::move(held);
  }

  FuzzedDataProvider& data;
  const std::vector<const vesk::TypeInterface*>& types;
  int depth = 0;
};
} // namespace

std::string randomText(FuzzedDataProvider& data)
{
  return data.ConsumeRandomLengthString(longestText);
}

void fillRandomly(const AnyReference& value, FuzzedDataProvider& data,
                  const std::vector<const vesk::TypeInterface*>& types)
{
  Filler(data, types).fill(value);
}
