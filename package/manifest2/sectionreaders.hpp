// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_MANIFEST2_SECTIONREADERS_HPP
#define PACKAGE_MANIFEST2_SECTIONREADERS_HPP

#include <package/manifest2/webinfo.hpp>
#include <package/packageinfo.hpp>
#include <package/xml/xmlnode.hpp>
#include <vesk/anyvalue.hpp>

#include <map>
#include <string>
#include <utility>
#include <vector>

/// One reader for each section of PackageInfo2. None fails: what is unknown is skipped, what is
/// missing gives empty texts. A node of the toolkit's tree can be given as it is. The comments name the
/// differences from PackageInfo's reader.
namespace vesk
{

/// Language to text, of every child.
std::map<std::string, std::string> translationsFromXmlNode(const XmlNode& node);

/// "autorun" may be "1" as well.
std::vector<PackageService> servicesFromXmlNode(const XmlNode& node);

std::vector<std::string> executableFilesFromXmlNode(const XmlNode& node);

std::pair<std::vector<RobotRequirement>, std::vector<MirelRequirement>>
requirementsFromXmlNode(const XmlNode& node);

/// The text of every child. Languages can come several times.
std::vector<std::string> textFromXmlNode(const XmlNode& node);

/// "behaviors", "dialogs" and "languages" where there are some, and the last "web" content.
std::map<std::string, AnyValue> contentsFromXmlNode(const XmlNode& node);

WebInfo webFromXmlNode(const XmlNode& node);

} // namespace vesk

#endif
