// SPDX-License-Identifier: Apache-2.0
#include <xovalue/xovalue.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <new>
#include <ostream>
#include <stdexcept>
#include <utility>
#include <vector>

namespace XO
{
namespace
{
/// An empty value that is never destroyed, for functions that may be called at the program's end.
template <typename Value>
const Value& undying() noexcept
{
  alignas(Value) static std::array<unsigned char, sizeof(Value)> memory;
  static const Value& value = *new (memory.data()) Value;
  return value;
}
} // namespace

// Keeps a list of arrays to copy instead of recursing: untrusted input decides how deep they nest.
XOValue::XOValue(const XOValue& other) : XOValue() // delegates, so that ~XOValue() runs on a throw
{
  std::vector<std::pair<const XOValue*, XOValue*>> waiting;
  const auto copyOrPostpone = [&waiting](const XOValue& source, XOValue& copy)
  {
    if (source.isArray())
    {
      waiting.emplace_back(&source, &copy);
    }
    else if (source.isString())
    {
      copy.assignText(source.content.text);
    }
    else
    {
      copy.content.flag = source.toBool();
      copy.kind = source.kind;
    }
  };
  copyOrPostpone(other, *this);
  while (!waiting.empty())
  {
    const auto [source, copy] = waiting.back();
    waiting.pop_back();
    copy->arraySetSize(source->getSize());
    for (int i = source->getSize() - 1; i >= 0; --i) // so that the first array is copied next
    {
      copyOrPostpone((*source)[i], (*copy)[i]);
    }
  }
}

void XOValue::assignText(std::string_view text)
{
  if (isValid())
  {
    *this = XOValue(text); // copied first, since it may be a part of this value
    return;
  }
  new (&content.text) std::string(text);
  kind = Kind::String;
}

void XOValue::takeFrom(XOValue& other) noexcept
{
  if (other.isString())
  {
    new (&content.text) std::string(std::move(other.content.text));
    std::destroy_at(&other.content.text);
  }
  else if (other.isArray())
  {
    content.array = other.content.array;
  }
  else
  {
    content.flag = other.toBool();
  }
  kind = std::exchange(other.kind, Kind::Empty);
}

// Keeps a list of arrays to destroy instead of recursing: untrusted input decides how deep they
// nest. The list is linked through the arrays, since there may be no memory for it. An array is
// freed before the arrays in it, and these in the order of their usual allocation: fastest for the
// allocator.
void XOValue::destroyContent() noexcept
{
  if (isString())
  {
    std::destroy_at(&content.text);
    return;
  }
  Array* waiting = content.array;
  while (waiting != nullptr)
  {
    Array* const array = std::exchange(waiting, waiting->next);
    XOValue* const first = valuesOf(array);
    for (XOValue* value = first + array->size; value-- != first;)
    {
      if (value->isArray())
      {
        value->content.array->next = std::exchange(waiting, value->content.array);
      }
      else if (value->isString())
      {
        std::destroy_at(&value->content.text);
      }
    }
    ::operator delete(array);
  }
}

const std::string& XOValue::toString() const noexcept
{
  return isString() ? content.text : undying<std::string>();
}

void XOValue::arraySetSize(int size)
{
  if (size < 0)
  {
    throw std::out_of_range("an array of negative size: " + std::to_string(size));
  }
  const auto count = static_cast<std::size_t>(size);
  if (count > (SIZE_MAX - sizeof(Array)) / sizeof(XOValue))
  {
    throw std::bad_array_new_length();
  }
  static_assert(sizeof(Array) % alignof(XOValue) == 0);
  void* const memory = ::operator new(sizeof(Array) + count * sizeof(XOValue));
  clear();
  content.array = new (memory) Array{size, nullptr};
  kind = Kind::Array;
  std::uninitialized_default_construct_n(begin(), size);
}

const XOValue& XOValue::none() noexcept { return undying<XOValue>(); }

XOValue& XOValue::throwOutOfRange(int index) const
{
  throw std::out_of_range("no value at " + std::to_string(index) + " of an array of " +
                          std::to_string(getSize()));
}

// Keeps a list of arrays to compare instead of recursing: untrusted input decides how deep they
// nest.
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
    const auto [one, other] = waiting.back();
    waiting.pop_back();
    areEqual = std::equal(one->begin(), one->end(), other->begin(), mayBeEqual);
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

/// An array of which the values up to \p next have been printed.
struct Printed
{
  const XOValue* array;
  const XOValue* next;
  bool isNested; ///< it contains arrays
};

void breakLine(std::ostream& out, bool isNested, std::size_t depth)
{
  // Without this bound, the blanks would make the output grow with the square of the depth.
  constexpr std::size_t deepest = 50;
  if (isNested)
  {
    out << '\n' << std::string(2 * std::min(depth, deepest), ' ');
  }
}
} // namespace

// Keeps a list of half-printed arrays instead of recursing: untrusted input decides how deep they
// nest.
std::ostream& operator<<(std::ostream& out, const XOValue& value)
{
  std::vector<Printed> waiting;
  const auto printOrBegin = [&](const XOValue& toPrint)
  {
    if (toPrint.isArray())
    {
      const bool isNested = std::any_of(toPrint.begin(), toPrint.end(),
                                        [](const XOValue& inner) { return inner.isArray(); });
      out << '[';
      waiting.push_back({&toPrint, toPrint.begin(), isNested});
    }
    else if (toPrint.isString())
    {
      printText(out, toPrint.toString());
    }
    else
    {
      out << (!toPrint.isValid() ? "null" : toPrint.toBool() ? "true" : "false");
    }
  };
  printOrBegin(value);
  while (!waiting.empty())
  {
    const auto [array, next, isNested] = waiting.back();
    if (next == array->end())
    {
      waiting.pop_back();
      breakLine(out, isNested, waiting.size());
      out << ']';
    }
    else
    {
      out << (next == array->begin() ? "" : isNested ? "," : ", ");
      breakLine(out, isNested, waiting.size());
      ++waiting.back().next;
      printOrBegin(*next);
    }
  }
  return out;
}

} // namespace XO
