// SPDX-License-Identifier: Apache-2.0
#ifndef VESK_ANYVALUE_HPP
#define VESK_ANYVALUE_HPP

#include <vesk/anyreference.hpp>
#include <vesk/export.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace vesk
{

/// Owns a value of any type, or none.
///
/// \code
/// vesk::AnyValue value(package);                    // a copy
/// value.member("uuid").set("org.example.greeting");
/// auto behaviors = value.member("behaviors").to<std::vector<vesk::BehaviorInfo>>();
/// value.as<vesk::PackageInfo>().setVersion("1.1");  // the value itself
/// \endcode
///
/// Copying copies the value; moving moves it and leaves this object without a value. A view of the
/// whole value is valid until the AnyValue that holds it is assigned to or destroyed; moving it on
/// to another AnyValue does not invalidate the view. A view of a part is also invalid after set()
/// has replaced the value or a part around the viewed one, or the value's own operations have moved
/// it. Do not take views of a temporary. Threads may read one value at once as far as its type
/// allows that (a BehaviorInfo does not); a thread that changes it must be the only one that uses
/// it.
///
/// Nested AnyValues are destroyed safely at any depth. Copying them throws ConversionError if they
/// are nested more than 128 deep. If assigning throws that, or std::bad_alloc, the value is
/// unchanged.
class VESK_EXPORT AnyValue
{
public:
  /// No value.
  AnyValue() noexcept = default;
  /// A default value of a type.
  explicit AnyValue(const TypeInterface& type);
  /// A copy of the viewed value; no value when \p value is a view of nothing.
  explicit AnyValue(const AnyConstReference& value);
  /// Holds \p value, moved if it is an rvalue, else copied. A C string (not null) or string view
  /// becomes a std::string.
  template <typename Value,
            std::enable_if_t<!std::is_base_of_v<AnyConstReference, std::decay_t<Value>> &&
                                 !std::is_base_of_v<TypeInterface, std::decay_t<Value>> &&
                                 !std::is_same_v<AnyValue, std::decay_t<Value>>,
                             int> = 0>
  AnyValue(Value&& value)
  {
    using Decayed = std::decay_t<Value>;
    constexpr bool isText = std::is_same_v<Decayed, const char*> ||
                            std::is_same_v<Decayed, char*> ||
                            std::is_same_v<Decayed, std::string_view>;
    using Held = std::conditional_t<isText, std::string, Decayed>;
    static_assert(!std::is_null_pointer_v<Held>, "nullptr is no value; AnyValue() holds none");
    static_assert(!std::is_pointer_v<Held>, "a pointer does not own what an AnyValue would hold");
    static_assert(std::is_copy_constructible_v<Held>, "an AnyValue holds only what can be copied");
    held = typeOf<Held>();
    content = new Held(std::forward<Value>(value));
  }
  AnyValue(const AnyValue& other);
  AnyValue(AnyValue&& other) noexcept;
  AnyValue& operator=(const AnyValue& other);
  AnyValue& operator=(AnyValue&& other) noexcept;
  ~AnyValue();

  /// Destroys the value; there is none afterwards.
  void reset() noexcept { *this = AnyValue(); }

  /// A view of the value; a view of nothing when there is none.
  /// \{
  AnyReference reference()
  {
    return held != nullptr ? AnyReference(*held, content) : AnyReference();
  }
  AnyConstReference reference() const
  {
    return held != nullptr ? AnyConstReference(*held, content) : AnyConstReference();
  }
  /// \}

  /// Shortcuts for the functions of reference(), which AnyConstReference and AnyReference describe.
  /// Their operators == and != compare AnyValues, and << prints them.
  /// \{
  bool isValid() const { return held != nullptr; }
  const TypeInterface* type() const { return held; }
  template <typename Value>
  bool is() const
  {
    return reference().is<Value>();
  }
  template <typename Value>
  Value& as()
  {
    return reference().as<Value>();
  }
  template <typename Value>
  const Value& as() const
  {
    return reference().as<Value>();
  }
  template <typename Value>
  Value to() const
  {
    return reference().to<Value>();
  }
  void set(const AnyArgument& value) { reference().set(value); }
  const std::vector<std::string>& memberNames() const { return reference().memberNames(); }
  AnyReference member(std::size_t index) { return reference().member(index); }
  AnyConstReference member(std::size_t index) const { return reference().member(index); }
  AnyReference member(const std::string& name) { return reference().member(name); }
  AnyConstReference member(const std::string& name) const { return reference().member(name); }
  std::size_t size() const { return reference().size(); }
  std::vector<AnyReference> elements() { return reference().elements(); }
  std::vector<AnyConstReference> elements() const { return reference().elements(); }
  AnyReference element(std::size_t index) { return reference().element(index); }
  AnyConstReference element(std::size_t index) const { return reference().element(index); }
  std::vector<std::pair<AnyConstReference, AnyReference>> entries()
  {
    return reference().entries();
  }
  std::vector<std::pair<AnyConstReference, AnyConstReference>> entries() const
  {
    return reference().entries();
  }
  AnyReference find(const AnyArgument& key) { return reference().find(key); }
  AnyConstReference find(const AnyArgument& key) const { return reference().find(key); }
  AnyReference append() { return reference().append(); }
  AnyReference append(const AnyArgument& element) { return reference().append(element); }
  AnyReference insert(const AnyArgument& place, const AnyArgument& value)
  {
    return reference().insert(place, value);
  }
  bool erase(const AnyArgument& place) { return reference().erase(place); }
  void clear() { reference().clear(); }
  /// \}

private:
  const TypeInterface* held = nullptr;
  void* content = nullptr;
};

} // namespace vesk

#endif
