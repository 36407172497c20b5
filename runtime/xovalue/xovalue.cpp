// SPDX-License-Identifier: Apache-2.0
#include <xovalue/xovalue.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <ostream>
#include <stdexcept>

namespace XO
{

XOValue::XOValue(const char* text) : content(std::string(text != nullptr ? text : "")) {}

// What is assigned may be a part of this value, so it is taken out before this value goes.

XOValue& XOValue::operator=(const XOValue& other)
{
  Content copy(other.content);
  content = std::move(copy);
  return *this;
}

XOValue& XOValue::operator=(XOValue&& other) noexcept
{
  Content taken = std::exchange(other.content, Content());
  content = std::move(taken);
  return *this;
}

const std::string& XOValue::toString() const noexcept
{
  static const std::string& none = *new std::string;
  const auto* text = std::get_if<std::string>(&content);
  return text != nullptr ? *text : none;
}

bool XOValue::toBool() const noexcept
{
  const auto* flag = std::get_if<bool>(&content);
  return flag != nullptr && *flag;
}

int XOValue::getSize() const noexcept
{
  const auto* array = std::get_if<Array>(&content);
  return array != nullptr ? static_cast<int>(array->size()) : 0;
}

void XOValue::arraySetSize(int size)
{
  if (size < 0)
  {
    throw std::out_of_range("an array of negative size: " + std::to_string(size));
  }
  content = Array(static_cast<std::size_t>(size));
}

const XOValue& XOValue::operator[](int index) const noexcept
{
  static const XOValue& none = *new XOValue;
  const auto* array = std::get_if<Array>(&content);
  const auto place = static_cast<std::size_t>(index); // a negative one is past every end
  return array != nullptr && place < array->size() ? (*array)[place] : none;
}

XOValue& XOValue::operator[](int index)
{
  auto* array = std::get_if<Array>(&content);
  const auto place = static_cast<std::size_t>(index);
  if (array == nullptr || place >= array->size())
  {
    throw std::out_of_range("no value at " + std::to_string(index) + " of an array of " +
                            std::to_string(getSize()));
  }
  return (*array)[place];
}

namespace
{
void printText(std::ostream& out, const std::string& text)
{
  out << '"';
  for (const char c : text)
  {
    if (c == '"' || c == '\\')
    {
      out << '\\' << c;
    }
    else if (static_cast<unsigned char>(c) < 0x20)
    {
      std::array<char, 7> escaped{};
      static_cast<void>(std::snprintf(escaped.data(), escaped.size(), "\\u%04x", c));
      out << escaped.data();
    }
    else
    {
      out << c;
    }
  }
  out << '"';
}

void print(std::ostream& out, const XOValue& value, int indentation);

void printArray(std::ostream& out, const XOValue& array, int indentation)
{
  bool nested = false;
  for (int i = 0; i < array.getSize(); ++i)
  {
    nested = nested || array[i].isArray();
  }
  const auto breakLine = [&](int spaces)
  { out << '\n' << std::string(static_cast<std::size_t>(spaces), ' '); };
  out << '[';
  for (int i = 0; i < array.getSize(); ++i)
  {
    out << (i == 0 ? "" : nested ? "," : ", ");
    if (nested)
    {
      breakLine(indentation + 2);
    }
    print(out, array[i], indentation + 2);
  }
  if (nested)
  {
    breakLine(indentation);
  }
  out << ']';
}

void print(std::ostream& out, const XOValue& value, int indentation)
{
  if (value.isArray())
  {
    printArray(out, value, indentation);
  }
  else if (value.isString())
  {
    printText(out, value.toString());
  }
  else
  {
    out << (!value.isValid() ? "null" : value.toBool() ? "true" : "false");
  }
}
} // namespace

std::ostream& operator<<(std::ostream& out, const XOValue& value)
{
  print(out, value, 0);
  return out;
}

} // namespace XO
