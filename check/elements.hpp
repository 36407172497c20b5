// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_ELEMENTS_HPP
#define CHECK_ELEMENTS_HPP

#include <format/format.hpp>

#include <QString>

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
  OwnCheck ownCheck; ///< null where there is none
  std::vector<CheckedAttribute> attributes;
  std::vector<CheckedElement> children;
};

/// The root of the format. Lives to the end of the program.
const CheckedElement& checkedPackage();

/// The check of its own that the element at a path has, as "/package/services/service"; null when it
/// has none.
OwnCheck ownCheckOf(const std::string& path);

} // namespace vesk::check

#endif
