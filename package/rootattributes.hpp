// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_ROOTATTRIBUTES_HPP
#define PACKAGE_ROOTATTRIBUTES_HPP

#include <package/xml/names.hpp>
#include <package/xml/reading.hpp>

#include <array>
#include <string>

namespace vesk
{

/// One attribute of the manifest's root element and the record's member that holds it.
template <typename Record>
struct RootAttribute
{
  XmlName ManifestNames::*name;
  std::string Record::*member;
};

/// All attributes of the root element, for a record that has members of these names.
template <typename Record>
constexpr std::array rootAttributes{
    RootAttribute<Record>{&ManifestNames::uuid, &Record::uuid},
    RootAttribute<Record>{&ManifestNames::version, &Record::version},
    RootAttribute<Record>{&ManifestNames::author, &Record::author},
    RootAttribute<Record>{&ManifestNames::organization, &Record::organization},
    RootAttribute<Record>{&ManifestNames::date, &Record::date},
    RootAttribute<Record>{&ManifestNames::typeVersion, &Record::typeVersion},
    RootAttribute<Record>{&ManifestNames::channel, &Record::channel},
};

/// Sets all of them; to empty where the root element lacks one.
template <typename Record>
void readRootAttributes(const XmlNode& root, Record& record)
{
  for (const auto& attribute : rootAttributes<Record>)
  {
    record.*attribute.member = root.attribute(manifestNames().*attribute.name);
  }
}

} // namespace vesk

#endif
