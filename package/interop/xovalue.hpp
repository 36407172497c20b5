// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_INTEROP_XOVALUE_HPP
#define PACKAGE_INTEROP_XOVALUE_HPP

#include <package/export.hpp>
#include <package/packageinfo.hpp>
#include <xovalue/xovalue.hpp>

#include <boost/function.hpp>

#include <list>
#include <map>
#include <string>

/// \file
/// Converts packages to variant values and back, for modules that do not know the classes.
///
/// The forms of the parts:
/// | Part                        | Form                                                           |
/// |-----------------------------|----------------------------------------------------------------|
/// | package, descriptors        | array of pairs [name, value]; see their toXOValue()            |
/// | RobotRequirement, …         | array of the members' values, in the order of their description |
/// | map of texts                | array of pairs [key, text], by ascending key                   |
/// | map of lists                | array of pairs [key, array of texts], by ascending key         |
/// | list                        | array                                                          |
///
/// Reading takes values of any shape and reports nothing: what is missing or of another kind reads
/// as an empty value, text or array, or as false. Nothing is cleared before reading: lists and lists
/// in maps grow, texts in maps are replaced by key. When memory runs out, std::bad_alloc is thrown,
/// and a part may have been read or written.

/// Writing: makes \p out the form of the first argument.
/// \{
/// A package with an empty uuid gives an array of size 0.
VESKPACKAGE_EXPORT void toXOValue(const vesk::PackageInfo& package, XO::XOValue& out);
VESKPACKAGE_EXPORT void toXOValue(const std::map<std::string, std::string>& texts,
                                  XO::XOValue& out);
VESKPACKAGE_EXPORT void toXOValue(const std::map<std::string, std::list<std::string>>& lists,
                                  XO::XOValue& out);
VESKPACKAGE_EXPORT void toXOValue(const std::list<std::string>& texts, XO::XOValue& out);
VESKPACKAGE_EXPORT void toXOValue(const std::list<vesk::BehaviorInfo>& behaviors, XO::XOValue& out);
VESKPACKAGE_EXPORT void toXOValue(const std::list<vesk::LanguageInfo>& languages, XO::XOValue& out);
VESKPACKAGE_EXPORT void toXOValue(const std::list<vesk::DialogInfo>& dialogs, XO::XOValue& out);
VESKPACKAGE_EXPORT void toXOValue(const std::list<vesk::RobotRequirement>& requirements,
                                  XO::XOValue& out);
VESKPACKAGE_EXPORT void toXOValue(const std::list<vesk::MirelRequirement>& requirements,
                                  XO::XOValue& out);
VESKPACKAGE_EXPORT void toXOValue(const std::list<vesk::PackageService>& services,
                                  XO::XOValue& out);
/// \}

/// Adds to \p package what the variant form of a package contains. Pairs are identified by
/// position; their names are ignored. The texts of the package are replaced, by empty ones where
/// \p value lacks them. Dialogs are read when there are at least 19 pairs, description languages
/// when there are exactly 20.
VESKPACKAGE_EXPORT void fromXOValue(vesk::PackageInfo& package, const XO::XOValue& value);

/// Reading into containers: adds what \p value holds.
/// \{
VESKPACKAGE_EXPORT void fromXOValue(std::map<std::string, std::string>& texts,
                                    const XO::XOValue& value);
VESKPACKAGE_EXPORT void fromXOValue(std::map<std::string, std::list<std::string>>& lists,
                                    const XO::XOValue& value);
VESKPACKAGE_EXPORT void fromXOValue(std::list<std::string>& texts, const XO::XOValue& value);
/// \}

/// Reading through an adder, which is called for each element in order; what it throws passes
/// through. For a map of texts it is given the text first and then its key, as setters take them.
/// Convert a bound function to the right type explicitly, since it converts to all of these:
/// \code
/// fromXOValue(boost::function<void(const std::string&)>(
///                 boost::bind(&vesk::PackageInfo::addExecutableFile, &package,
///                             boost::placeholders::_1)), // of <boost/bind/bind.hpp>
///             value);
/// \endcode
/// \{
VESKPACKAGE_EXPORT void
fromXOValue(boost::function<void(const std::string&, const std::string&)> add,
            const XO::XOValue& value);
VESKPACKAGE_EXPORT void fromXOValue(boost::function<void(const std::string&)> add,
                                    const XO::XOValue& value);
VESKPACKAGE_EXPORT void fromXOValue(boost::function<void(const vesk::RobotRequirement&)> add,
                                    const XO::XOValue& value);
VESKPACKAGE_EXPORT void fromXOValue(boost::function<void(const vesk::MirelRequirement&)> add,
                                    const XO::XOValue& value);
VESKPACKAGE_EXPORT void fromXOValue(boost::function<void(const vesk::PackageService&)> add,
                                    const XO::XOValue& value);

/// For types with a constructor from a variant value: BehaviorInfo, LanguageInfo, DialogInfo.
template <typename Item>
void fromXOValue(boost::function<void(const Item&)> add, const XO::XOValue& value)
{
  for (int i = 0; i < value.getSize(); ++i)
  {
    add(Item(value[i]));
  }
}
/// \}

#endif
