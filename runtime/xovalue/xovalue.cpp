// SPDX-License-Identifier: Apache-2.0
#include <xovalue/xovalue.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <ostream>
#include <stdexcept>

namespace XO
{
namespace
{
/// A value that is never destroyed, for functions that may be called at the program's end.
template <typename Value>
union Undying
{
  Undying() : value() {}
  ~Undying() {} // NOLINT(modernize-use-equals-default): that would destroy it
  Value value;
};
} // namespace

void XOValue::copyFrom(const XOValue& other)
{
  if (other.isString())
  {
    new (&content.text) std::string(other.content.text);
  }
  else if (other.isArray())
  {
    new (&content.array) detail::Array(other.content.array, content.nearby);
  }
  else if (other.isBool()) // an empty value keeps what is nearby
  {
    content.flag = other.toBool();
  }
  kind = other.kind;
}

void XOValue::takeFrom(XOValue& other) noexcept
{
  if (other.isString())
  {
    new (&content.text) std::string(std::move(other.content.text));
  }
  else if (other.isArray())
  {
    new (&content.array) detail::Array(std::move(other.content.array));
  }
  else if (other.isBool())
  {
    content.flag = other.toBool();
  }
  kind = other.kind;
  other.clear();
}

void XOValue::assignText(std::string_view text)
{
  if (isString())
  {
    content.text = text;
    return;
  }
  if (kind == Kind::Empty)
  {
    std::string copied(text);
    new (&content.text) std::string(std::move(copied));
    kind = Kind::String;
    return;
  }
  *this = XOValue(std::string(text)); // copied first, since it may be a part of this value
}

void XOValue::destroyContent() noexcept
{
  if (kind == Kind::String)
  {
    std::destroy_at(&content.text);
  }
  else
  {
    std::destroy_at(&content.array);
  }
}

const std::string& XOValue::toString() const noexcept
{
  static const Undying<std::string> empty;
  return isString() ? content.text : empty.value;
}

void XOValue::arraySetSize(int size)
{
  if (size < 0)
  {
    throw std::out_of_range("an array of negative size: " + std::to_string(size));
  }
  if (kind != Kind::Empty)
  {
    XOValue array;
    array.arraySetSize(size);
    *this = std::move(array);
    return;
  }
  detail::Block* const nearby = content.nearby;
  try
  {
    new (&content.array) detail::Array(size, nearby);
  }
  catch (...)
  {
    content.nearby = nearby; // its place has been written over
    throw;
  }
  kind = Kind::Array;
}

const XOValue& XOValue::none() noexcept
{
  static const Undying<XOValue> empty;
  return empty.value;
}

XOValue& XOValue::throwOutOfRange(int index) const
{
  throw std::out_of_range("no value at " + std::to_string(index) + " of an array of " +
                          std::to_string(getSize()));
}

namespace
{
bool equal(const detail::Array& left, const detail::Array& right)
{
  return std::equal(&left[0], &left[left.size()], &right[0], &right[right.size()]);
}
} // namespace

bool operator==(const XOValue& left, const XOValue& right)
{
  if (left.kind != right.kind)
  {
    return false;
  }
  switch (left.kind)
  {
  case XOValue::Kind::Bool:
    return left.content.flag == right.content.flag;
  case XOValue::Kind::String:
    return left.content.text == right.content.text;
  case XOValue::Kind::Array:
    return equal(left.content.array, right.content.array);
  default:
    return true;
  }
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
  const auto breakLine = [&](int spaces) {
    out << '\n' << std::string(static_cast<std::size_t>(spaces), ' ');
  };
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
