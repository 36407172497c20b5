// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_XML_NAMES_HPP
#define PACKAGE_XML_NAMES_HPP

#include <QString>

#include <string>
#include <string_view>

namespace vesk
{

/// An element's or attribute's name. Kept in the toolkit's form, too, since the same few names are
/// used again and again; any UTF-8 text converts to one.
class XmlName
{
public:
  XmlName(const char* name) : text(QString::fromUtf8(name)), utf8(name) {}
  XmlName(const std::string& name) : XmlName(name.c_str()) {}

  operator const QString&() const { return text; }
  operator const std::string&() const { return utf8; }
  std::string_view inUtf8() const { return utf8; }

private:
  QString text;
  std::string utf8;
};

/// Every element and attribute name of a manifest. Elements and attributes share a member where
/// they share a name.
struct ManifestNames
{
  // the root and its attributes
  XmlName package = "package";
  XmlName uuid = "uuid";
  XmlName version = "version";
  XmlName author = "author";
  XmlName organization = "organization";
  XmlName date = "date";
  XmlName typeVersion = "typeVersion";
  XmlName channel = "channel";

  // the sections and what they hold
  XmlName names = "names";
  XmlName name = "name";
  XmlName lang = "lang";
  XmlName descriptions = "descriptions";
  XmlName description = "description";
  XmlName supportedLanguages = "supportedLanguages";
  XmlName descriptionLanguages = "descriptionLanguages";
  XmlName language = "language";
  XmlName contents = "contents";
  XmlName requirements = "requirements";
  XmlName robotRequirement = "robotRequirement";
  XmlName model = "model";
  XmlName minHeadVersion = "minHeadVersion";
  XmlName maxHeadVersion = "maxHeadVersion";
  XmlName minBodyVersion = "minBodyVersion";
  XmlName maxBodyVersion = "maxBodyVersion";
  XmlName mirelRequirement = "mirelRequirement";
  XmlName minVersion = "minVersion";
  XmlName maxVersion = "maxVersion";
  XmlName services = "services";
  XmlName service = "service";
  XmlName execStart = "execStart";
  XmlName autorun = "autorun";
  XmlName executableFiles = "executableFiles";
  XmlName file = "file";
  XmlName path = "path";

  // a behavior
  XmlName behaviorContent = "behaviorContent";
  XmlName userRequestable = "userRequestable";
  XmlName nature = "nature";
  XmlName tags = "tags";
  XmlName tag = "tag";
  XmlName triggerSentences = "triggerSentences";
  XmlName loadingResponses = "loadingResponses";
  XmlName sentence = "sentence";
  XmlName autonomous = "autonomous";
  XmlName condition = "condition";
  XmlName purpose = "purpose";
  XmlName permissions = "permissions";

  // a dialog
  XmlName dialogContent = "dialogContent";
  XmlName topicName = "topicName";
  XmlName topic = "topic";

  // a language pack
  XmlName languageContent = "languageContent";
  XmlName engine = "engine";
  XmlName locale = "locale";

  // web content
  XmlName webContent = "webContent";
};

/// The one set of names, built on first use.
inline const ManifestNames& manifestNames()
{
  static const ManifestNames names;
  return names;
}

} // namespace vesk

#endif
