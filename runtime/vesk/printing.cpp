// SPDX-License-Identifier: Apache-2.0
#include "printing.hpp"

#include <vesk/anyvalue.hpp>

#include <array>
#include <charconv>
#include <ostream>

namespace vesk
{
namespace
{
void print(std::ostream& out, const AnyConstReference& value, int depth);

void printText(std::ostream& out, const std::string& text)
{
  out << '"';
  for (const char c : detail::withEscapedControls(text))
  {
    out << (c == '"' ? "\\" : "") << c;
  }
  out << '"';
}

void printList(std::ostream& out, const AnyConstReference& list, int depth)
{
  const char* before = "[";
  for (const AnyConstReference& element : list.elements())
  {
    out << before;
    print(out, element, depth);
    before = ", ";
  }
  out << (list.size() == 0 ? "[]" : "]");
}

void printMap(std::ostream& out, const AnyConstReference& map, int depth)
{
  const char* before = "";
  out << '{';
  for (const auto& [key, value] : map.entries())
  {
    out << before;
    print(out, key, depth);
    out << ": ";
    print(out, value, depth);
    before = ", ";
  }
  out << '}';
}

void printStruct(std::ostream& out, const AnyConstReference& value, int depth)
{
  const char* before = "";
  out << value.typeName() << '{';
  for (const std::string& name : value.memberNames())
  {
    out << before << name << ": ";
    print(out, value.member(name), depth);
    before = ", ";
  }
  out << '}';
}

void print(std::ostream& out, const AnyConstReference& value, int depth)
{
  if (!value.isValid())
  {
    out << "nothing";
    return;
  }
  if (depth > detail::deepestNesting)
  {
    out << "...";
    return;
  }
  switch (value.type()->kind())
  {
  case TypeKind::Bool:
    out << (value.as<bool>() ? "true" : "false");
    break;
  case TypeKind::Integer:
  case TypeKind::Float:
    out << detail::printed(
        static_cast<const NumberTypeInterface&>(*value.type()).number(value.address()));
    break;
  case TypeKind::String:
    printText(out, value.as<std::string>());
    break;
  case TypeKind::List:
    printList(out, value, depth + 1);
    break;
  case TypeKind::Map:
    printMap(out, value, depth + 1);
    break;
  case TypeKind::Struct:
    printStruct(out, value, depth + 1);
    break;
  case TypeKind::Dynamic:
    print(out, value.as<AnyValue>(), depth + 1);
    break;
  case TypeKind::Unknown:
    out << '<' << value.typeName() << '>';
    break;
  }
}
} // namespace

std::string detail::printed(const Number& number)
{
  std::array<char, 32> text{};
  auto* const end =
      std::visit([&text](auto value)
                 { return std::to_chars(text.data(), text.data() + text.size(), value).ptr; },
                 number);
  return {text.data(), end};
}

std::string detail::withEscapedControls(std::string_view text)
{
  constexpr std::string_view digits = "0123456789abcdef";
  std::string escaped;
  for (const char c : text)
  {
    const auto code = static_cast<unsigned char>(c);
    if (code >= 0x20 && code != 0x7F)
    {
      escaped += c;
      continue;
    }
    escaped += "\\x";
    escaped += digits[code >> 4U];
    escaped += digits[code & 0xFU];
  }
  return escaped;
}

std::ostream& operator<<(std::ostream& out, const AnyConstReference& value)
{
  print(out, value, 0);
  return out;
}

} // namespace vesk
