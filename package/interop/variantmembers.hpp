// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_INTEROP_VARIANTMEMBERS_HPP
#define PACKAGE_INTEROP_VARIANTMEMBERS_HPP

#include <package/interop/xovalue.hpp>
#include <package/recordmember.hpp>

#include <string>

/// Records to variant values and back, by the tables of their members. On a robot the variant library is
/// the robot's own, so this folder uses only what that has, too: no loops over values, and texts are
/// assigned NUL-terminated or as values.
namespace vesk
{

/// Whether the value has a size that counts values: other libraries may count a text's characters.
inline bool isArray(const XO::XOValue& value) { return value.isValid() && value.isArray(); }

inline void writeValue(const std::string& text, XO::XOValue& out) { out = text; }

inline void writeValue(bool flag, XO::XOValue& out) { out = flag; }

template <typename Container>
void writeValue(const Container& container, XO::XOValue& out)
{
  ::toXOValue(container, out);
}

inline void readValue(std::string& text, const XO::XOValue& value)
{
  text = static_cast<const std::string&>(value);
}

inline void readValue(bool& flag, const XO::XOValue& value) { flag = value; }

template <typename Container>
void readValue(Container& container, const XO::XOValue& value)
{
  ::fromXOValue(container, value);
}

/// An array of pairs [name, value].
template <typename Record>
void writePairs(const Record& record, XO::XOValue& out)
{
  out.arraySetSize(static_cast<int>(describedMembers<Record>));
  forEachMember<Record>(
      [&](const auto& member, int position)
      {
        XO::XOValue& pair = out[position];
        pair.arraySetSize(2);
        pair[0] = member.variantName.data();
        if (member.inVariant == InVariant::Value)
        {
          writeValue(record.*member.pointer, pair[1]);
        }
      });
}

/// From an array of pairs [name, value], by position, whatever the names.
template <typename Record>
void readPairs(Record& record, const XO::XOValue& value)
{
  forEachMember<Record>([&](const auto& member, int position)
                        { readValue(record.*member.pointer, value[position][1]); });
}

/// An array of values.
template <typename Record>
void writeValues(const Record& record, XO::XOValue& out)
{
  out.arraySetSize(static_cast<int>(describedMembers<Record>));
  forEachMember<Record>([&](const auto& member, int position)
                        { writeValue(record.*member.pointer, out[position]); });
}

/// From an array of values.
template <typename Record>
Record readValues(const XO::XOValue& value)
{
  Record record;
  forEachMember<Record>([&](const auto& member, int position)
                        { readValue(record.*member.pointer, value[position]); });
  return record;
}

} // namespace vesk

#endif
