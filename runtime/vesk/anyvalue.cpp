// SPDX-License-Identifier: Apache-2.0
#include <vesk/anyvalue.hpp>

namespace vesk
{
namespace
{
/// The state of copying and destroying nested AnyValues on one thread. It has no destructor, so
/// that it can still be used while the thread ends.
struct Nesting
{
  using Values = std::vector<std::pair<const TypeInterface*, void*>>;

  int copied = 0;            // how many nested values are being copied
  int destroyed = 0;         // how many nested values are being destroyed
  Values* waiting = nullptr; // values to destroy, once they are nested too deep for recursion
};
thread_local Nesting nesting;

/// Counts one level more as long as it lives.
class Level
{
public:
  explicit Level(int& counted) : levels(++counted) {}
  Level(const Level&) = delete;
  Level& operator=(const Level&) = delete;
  ~Level() { --levels; }

private:
  int& levels;
};

void* copyOf(const TypeInterface& type, const void* value)
{
  const Level level(nesting.copied);
  if (nesting.copied > detail::deepestNesting)
  {
    throw ConversionError("cannot copy values nested more than " +
                          std::to_string(detail::deepestNesting) + " deep");
  }
  return type.copy(value);
}

void destroy(const TypeInterface& type, void* value) noexcept
{
  if (nesting.waiting != nullptr)
  {
    try
    {
      nesting.waiting->emplace_back(&type, value);
      return;
    }
    catch (...) // NOLINT(bugprone-empty-catch): no memory for the list, so recurse
    {}
  }
  const Level level(nesting.destroyed);
  if (nesting.waiting != nullptr || nesting.destroyed <= detail::deepestNesting)
  {
    type.destroy(value);
    return;
  }
  // Too deep for recursion: values within this one are added to the list and destroyed in turn.
  Nesting::Values values;
  nesting.waiting = &values;
  type.destroy(value);
  while (!values.empty())
  {
    const auto [itsType, itself] = values.back();
    values.pop_back();
    itsType->destroy(itself);
  }
  nesting.waiting = nullptr;
}
} // namespace

AnyValue::AnyValue(const TypeInterface& type) : held(&type), content(type.create()) {}

AnyValue::AnyValue(const AnyConstReference& value) : held(value.type())
{
  if (held != nullptr)
  {
    content = copyOf(*held, value.address());
  }
}

AnyValue::AnyValue(const AnyValue& other) : AnyValue(other.reference()) {}

AnyValue::AnyValue(AnyValue&& other) noexcept
    : held(std::exchange(other.held, nullptr)), content(std::exchange(other.content, nullptr))
{}

AnyValue& AnyValue::operator=(const AnyValue& other) { return *this = AnyValue(other); }

AnyValue& AnyValue::operator=(AnyValue&& other) noexcept
{
  // Taken out first: what is assigned may be a part of this value.
  AnyValue taken(std::move(other));
  std::swap(held, taken.held);
  std::swap(content, taken.content);
  return *this;
}

AnyValue::~AnyValue()
{
  if (held != nullptr)
  {
    destroy(*held, content);
  }
}

template <>
TypeInterface* typeOf<AnyValue>()
{
  static TypeInterface* const type = detail::getTypeOrDescribe(
      typeid(AnyValue),
      []() -> std::unique_ptr<TypeInterface>
      { return std::make_unique<PlainType<AnyValue, TypeKind::Dynamic>>("dynamic"); });
  return type;
}

} // namespace vesk
