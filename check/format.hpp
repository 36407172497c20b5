// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_FORMAT_HPP
#define CHECK_FORMAT_HPP

#include <QString>

#include <vector>

namespace vesk::check
{

/// What the readers take from an element.
enum class Holds
{
  Nothing,  ///< its attributes only
  Presence, ///< that it is there
  Text,     ///< all text in it
  Elements, ///< the children that the format names
  Entries,  ///< every child, whatever its name: an entry of a list
};

/// Which faults of its own an element can have, beside those of any element.
enum class Kind
{
  Plain,
  Package,
  Texts,      ///< names and descriptions: one text a language
  TextLists,  ///< several texts a language
  Conditions, ///< several texts a purpose
  Supported,  ///< languages of the contents
  Described,  ///< languages of the texts
  Service,
  Robot,
  Software,
  Path, ///< a path in the package
  Permissions,
  Dialog,
  Topic,
  Web,
};

/// How often an element counts among its siblings.
enum class Counts
{
  Each,
  AddsUp, ///< for one reader; for the other the last alone
  Last
};

/// An element of the format, in its place.
struct Element
{
  QString name;
  std::vector<QString> attributes;
  Holds holds = Holds::Elements;
  std::vector<Element> children = {}; ///< of entries, the usual one
  Kind kind = Kind::Plain;
  Counts counts = Counts::Each;
};

/// The root of the format.
const Element& packageElement();

/// The names of the elements that may hold one of this name; empty when none may.
std::vector<QString> homesOf(const QString& name);

} // namespace vesk::check

#endif
