// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_PLATFORMVARIANT_XOVALUE_XOVALUE_HPP
#define TESTS_PLATFORMVARIANT_XOVALUE_XOVALUE_HPP

#include <string>
#include <variant>
#include <vector>

namespace XO
{

/// The variant value as a robot may have it: only the operations on which packages rely. The size of a
/// text is its length, an empty value claims to be an array, and what is asked for elements must have
/// them.
class XOValue
{
public:
  XOValue() = default;
  XOValue(const std::string& text) : content(text) {}
  XOValue(bool flag) : content(flag) {}
  XOValue& operator=(const char* text) { return *this = XOValue(std::string(text)); }
  XOValue& operator=(bool flag) { return *this = XOValue(flag); }

  void arraySetSize(int size) { content = Values(static_cast<std::size_t>(size)); }
  XOValue& operator[](int index)
  {
    return std::get<Values>(content).at(static_cast<std::size_t>(index));
  }
  const XOValue& operator[](int index) const
  {
    return std::get<Values>(content).at(static_cast<std::size_t>(index));
  }
  int getSize() const
  {
    const auto* const text = std::get_if<std::string>(&content);
    return isValid()
               ? static_cast<int>(text != nullptr ? text->size() : std::get<Values>(content).size())
               : 20;
  }
  bool isArray() const { return !isValid() || std::holds_alternative<Values>(content); }
  bool isValid() const { return !std::holds_alternative<std::monostate>(content); }
  operator const std::string&() const { return std::get<std::string>(content); }
  operator bool() const { return std::get<bool>(content); }

private:
  using Values = std::vector<XOValue>;
  std::variant<std::monostate, std::string, bool, Values> content;
};

} // namespace XO

#endif
