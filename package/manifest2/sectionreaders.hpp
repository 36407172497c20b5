// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_MANIFEST2_SECTIONREADERS_HPP
#define PACKAGE_MANIFEST2_SECTIONREADERS_HPP

#include <package/manifest2/webinfo.hpp>
#include <package/packageinfo.hpp>
#include <vesk/anyvalue.hpp>

#include <map>
#include <string>
#include <utility>
#include <vector>

class QDomNode;

/// One reader for each section of PackageInfo2. None fails: what is unknown is skipped, what is
/// missing gives empty texts. The comments name the differences from PackageInfo's reader.
namespace vesk
{

/// Language to text, of every child.
std::map<std::string, std::string> translationsFromXmlNode(const QDomNode& node);

/// "autorun" may be "1" as well.
std::vector<PackageService> servicesFromXmlNode(const QDomNode& node);

std::vector<std::string> executableFilesFromXmlNode(const QDomNode& node);

std::pair<std::vector<RobotRequirement>, std::vector<MirelRequirement>>
requirementsFromXmlNode(const QDomNode& node);

/// The text of every child. Languages can come several times.
std::vector<std::string> textFromXmlNode(const QDomNode& node);

/// "behaviors", "dialogs" and "languages" where there are some, and the last "web" content.
std::map<std::string, AnyValue> contentsFromXmlNode(const QDomNode& node);

WebInfo webFromXmlNode(const QDomNode& node);

} // namespace vesk

#endif
