// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_PLATFORMVARIANT_XOVALUE_XOVALUE_HPP
#define TESTS_PLATFORMVARIANT_XOVALUE_XOVALUE_HPP

#include <string>
#include <vector>

namespace XO
{

/// The variant value as a robot may have it: only the operations on which packages may rely. The
/// size of a text is its length; asking for elements of anything but an array ends the program.
class XOValue
{
public:
  XOValue() = default;
  XOValue(const std::string& value) : kind(Kind::Text), text(value) {}
  XOValue(bool value) : kind(Kind::Flag), flag(value) {}
  XOValue& operator=(const char* value) { return *this = std::string(value); }
  XOValue& operator=(bool value) { return *this = XOValue(value); }

  void arraySetSize(int size)
  {
    *this = XOValue();
    kind = Kind::Array;
    values.resize(static_cast<std::size_t>(size));
  }
  XOValue& operator[](int index) noexcept { return values.at(static_cast<std::size_t>(index)); }
  const XOValue& operator[](int index) const noexcept
  {
    return values.at(static_cast<std::size_t>(index));
  }
  int getSize() const { return static_cast<int>(isArray() ? values.size() : text.size()); }
  bool isArray() const { return kind == Kind::Array; }
  bool isValid() const { return kind != Kind::Empty; }
  operator const std::string&() const { return text; }
  operator bool() const { return flag; }

private:
  enum class Kind
  {
    Empty,
    Text,
    Flag,
    Array
  };
  Kind kind = Kind::Empty;
  std::string text;
  bool flag = false;
  std::vector<XOValue> values;
};

} // namespace XO

#endif
