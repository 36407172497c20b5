// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_ELEMENTS_HPP
#define CHECK_ELEMENTS_HPP

#include <check/node.hpp>
#include <format/format.hpp>

#include <string>
#include <utility>
#include <vector>

namespace vesk::check
{

class Checker;

/// Finds the faults that only one element of the format can have.
using OwnCheck = void (*)(Checker& checker, const Node& element);

struct CheckedAttribute
{
  const format::Attribute& format;
  XmlName name;
};

/// An element of the format, in its place, with names as nodes are asked for them.
struct CheckedElement
{
  const format::Element& format;
  XmlName name;
  std::string path; ///< from the root: "/package/names"
  std::vector<CheckedAttribute> attributes = {};
  std::vector<CheckedElement> children = {};
  /// Of an entry of a list: which of its texts stay when the package is trimmed.
  format::Keeps keeps = format::Keeps::All;
  OwnCheck ownCheck = nullptr; ///< null where there is none

  /// What an element or instruction in it is; null where the format has none of its name.
  const CheckedElement* childNamed(const Node& node) const;
  const CheckedElement* childNamed(const QString& childName) const;
  /// Whether it may hold several elements of this name.
  bool repeats(const QString& childName) const;
};

/// Of another vocabulary, which may be meant so.
inline bool isPrefixed(const QString& name) { return name.contains(':'); }

/// The root of the format. Lives to the end of the program.
const CheckedElement& checkedPackage();

/// The elements that have checks of their own, by their path as "/package/services/service".
const std::vector<std::pair<std::string, OwnCheck>>& ownChecks();

} // namespace vesk::check

#endif
