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
/// Copying copies the value; moving moves it and leaves none behind. A view of the whole value is
/// valid until this object is assigned to or destroyed, also after it has been moved. Views of its
/// parts end as well when set() replaces the value or a part around them, and when the value's own
/// operations move them; take none from a temporary. Threads may read one value at once as far as its
/// type allows that (a BehaviorInfo does not); who changes it must be alone.
///
/// Values in values in values are destroyed however deep they are nested; deeper than 128, copying
/// throws ConversionError. When that throws, or memory runs out (std::bad_alloc), assigning leaves the
/// value as it was.
class VESK_EXPORT AnyValue
{
public:
  /// No value.
  AnyValue() noexcept = default;
  /// A default value of a type.
  explicit AnyValue(const TypeInterface& type);
  /// A copy of what is viewed, none when nothing is.
  explicit AnyValue(const AnyConstReference& value);
  /// Holds \p value, moved in where it can be. A C string (not null) or string view
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
    static_assert(!std::is_pointer_v<Held>, "a value owns what it holds");
    held = typeOf<Held>();
    content = new Held(std::forward<Value>(value));
  }
  AnyValue(const AnyValue& other);
  AnyValue(AnyValue&& other) noexcept;
  AnyValue& operator=(const AnyValue& other);
  AnyValue& operator=(AnyValue&& other) noexcept;
  ~AnyValue();

  /// Views of the value; of nothing when there is none. Copied as freely as they are.
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

  /// What the views give: see AnyConstReference for each. What is not here is reached by reference().
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
  AnyReference member(std::size_t index) { return reference().member(index); }
  AnyConstReference member(std::size_t index) const { return reference().member(index); }
  AnyReference member(const std::string& name) { return reference().member(name); }
  AnyConstReference member(const std::string& name) const { return reference().member(name); }
  std::size_t size() const { return reference().size(); }
  std::vector<AnyReference> elements() { return reference().elements(); }
  std::vector<AnyConstReference> elements() const { return reference().elements(); }
  AnyReference element(std::size_t index) { return reference().element(index); }
  AnyConstReference element(std::size_t index) const { return reference().element(index); }
  AnyReference find(const std::string& key) { return reference().find(key); }
  AnyConstReference find(const std::string& key) const { return reference().find(key); }
  /// \}

private:
  const TypeInterface* held = nullptr;
  void* content = nullptr;
};

} // namespace vesk

#endif
