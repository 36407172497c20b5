// SPDX-License-Identifier: Apache-2.0
#include <xovalue/xovalue.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <utility>
#include <vector>

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

void XOValue::copyOrPostpone(const XOValue& other, XOValue*& postponed)
{
  if (other.isArray())
  {
    content.vacancy.source = &other.content.array;
    content.vacancy.next = std::exchange(postponed, this);
    return; // empty until its turn comes
  }
  if (other.isString())
  {
    new (&content.text) std::string(other.content.text);
  }
  else if (other.isBool()) // an empty value keeps what is nearby
  {
    content.flag = other.toBool();
  }
  kind = other.kind;
}

// Without recursion, since strangers decide how deep arrays are nested.
void XOValue::copyFrom(const XOValue& other)
{
  XOValue* postponed = nullptr;
  copyOrPostpone(other, postponed);
  while (postponed != nullptr)
  {
    XOValue& value = *postponed;
    const Vacancy vacancy = value.content.vacancy;
    const detail::Array& source = *vacancy.source;
    postponed = vacancy.next;
    new (&value.content.array) detail::Array(source.size(), source.roomForCopy(), vacancy.nearby);
    value.kind = Kind::Array;
    for (int i = source.size() - 1; i >= 0; --i) // so that the first array is the next
    {
      value.content.array[i].copyOrPostpone(source[i], postponed);
    }
  }
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
  detail::Block* const nearby = content.vacancy.nearby;
  try
  {
    new (&content.array) detail::Array(size, nearby);
  }
  catch (...)
  {
    content.vacancy.nearby = nearby; // its place has been written over
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

// Arrays wait in a list until they are compared: strangers decide how deep they are nested.
bool operator==(const XOValue& left, const XOValue& right)
{
  std::vector<std::pair<const XOValue*, const XOValue*>> waiting;
  const auto mayBeEqual = [&waiting](const XOValue& one, const XOValue& other)
  {
    if (one.isArray() && other.isArray())
    {
      waiting.emplace_back(&one, &other);
      return one.getSize() == other.getSize();
    }
    return one.kind == other.kind && one.toBool() == other.toBool() &&
           one.toString() == other.toString();
  };
  bool areEqual = mayBeEqual(left, right);
  while (areEqual && !waiting.empty())
  {
    const detail::Array& one = waiting.back().first->content.array;
    const detail::Array& other = waiting.back().second->content.array;
    waiting.pop_back();
    areEqual = std::equal(&one[0], &one[one.size()], &other[0], mayBeEqual);
  }
  return areEqual;
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

/// Prints a value without recursion, since strangers decide how deep arrays are nested.
class Printer
{
public:
  explicit Printer(std::ostream& stream) : out(stream) {}

  void print(const XOValue& value)
  {
    begin(value);
    while (!arrays.empty())
    {
      Printed& last = arrays.back();
      if (last.count == last.array->getSize())
      {
        const bool isNested = last.isNested;
        arrays.pop_back();
        breakLine(isNested);
        out << ']';
        continue;
      }
      out << (last.count == 0 ? "" : last.isNested ? "," : ", ");
      breakLine(last.isNested);
      begin(std::as_const(*last.array)[last.count++]);
    }
  }

private:
  /// An array of which so many values are printed.
  struct Printed
  {
    const XOValue* array;
    bool isNested; // arrays are in it
    int count = 0;
  };

  void begin(const XOValue& value)
  {
    if (value.isArray())
    {
      bool isNested = false;
      for (int i = 0; i < value.getSize(); ++i)
      {
        isNested = isNested || value[i].isArray();
      }
      out << '[';
      arrays.push_back({&value, isNested});
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

  void breakLine(bool isNested)
  {
    // Further in, lines of nothing but blanks would make the text grow with the square of the depth.
    constexpr std::size_t deepest = 50;
    if (isNested)
    {
      out << '\n' << std::string(2 * std::min(arrays.size(), deepest), ' ');
    }
  }

  std::ostream& out;
  std::vector<Printed> arrays; // each in the one before
};
} // namespace

std::ostream& operator<<(std::ostream& out, const XOValue& value)
{
  Printer(out).print(value);
  return out;
}

} // namespace XO
