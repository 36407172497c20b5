// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_ELEMENTS_HPP
#define CHECK_ELEMENTS_HPP

#include <format/format.hpp>

#include <QString>

#include <string>
#include <utility>
#include <vector>

class QDomElement;

namespace vesk::check
{

class Checker;

/// Finds the faults that only one element of the format can have.
using OwnCheck = void (*)(Checker& checker, const QDomElement& element);

struct CheckedAttribute
{
  const format::Attribute& format;
  QString name;
};

/// An element of the format, in its place, with names in the toolkit's form.
struct CheckedElement
{
  const format::Element& format;
  QString name;
  std::vector<CheckedAttribute> attributes = {};
  std::vector<CheckedElement> children = {};
  /// Of an entry of a list: which of its texts stay when the package is trimmed.
  format::Keeps keeps = format::Keeps::All;
  OwnCheck ownCheck = nullptr; ///< null where there is none
};

/// The root of the format. Lives to the end of the program.
const CheckedElement& checkedPackage();

/// The elements that have checks of their own, by their path as "/package/services/service".
const std::vector<std::pair<std::string, OwnCheck>>& ownChecks();

} // namespace vesk::check

#endif
