// SPDX-License-Identifier: Apache-2.0
#include <package/dialoginfo.hpp>
#include <package/dialoginfo_p.hpp>
#include <package/languagecodes.hpp>
#include <package/recordaccess.hpp>
#include <package/xml/names.hpp>
#include <package/xml/reading.hpp>
#include <package/xml/writing.hpp>

#include <QDomElement>

#include <ostream>

namespace vesk
{

DialogInfo::DialogInfo() : record(std::make_unique<DialogInfoPrivate>()) {}

DialogInfo::DialogInfo(const DialogInfo& other)
    : record(std::make_unique<DialogInfoPrivate>(*other.record))
{}

DialogInfo::DialogInfo(DialogInfo&& other) noexcept = default;

DialogInfo DialogInfo::operator=(const DialogInfo& other)
{
  DialogInfo copy(other); // first: when memory runs out, nothing is assigned
  assignRecord(record, other.record);
  return copy;
}

DialogInfo::~DialogInfo() = default;

std::string DialogInfo::topicName() const { return record->topicName; }

void DialogInfo::setTopicName(const std::string& name) { record->topicName = name; }

std::string DialogInfo::typeVersion() const { return record->typeVersion; }

void DialogInfo::setTypeVersion(const std::string& version) { record->typeVersion = version; }

std::string DialogInfo::topic(const std::string& language) const
{
  return textOrEmpty(record->topics, language);
}

const std::map<std::string, std::string>& DialogInfo::topics() const { return record->topics; }

void DialogInfo::setTopic(const std::string& language, const std::string& path)
{
  record->topics[language] = path;
}

bool DialogInfo::removeTopic(const std::string& language)
{
  return record->topics.erase(language) > 0;
}

bool DialogInfo::loadFromManifest(QDomElement& element)
{
  return record->loadFromManifest(XmlNode(element));
}

bool DialogInfoPrivate::loadFromManifest(const XmlNode& element)
{
  const ManifestNames& names = manifestNames();
  topicName = element.attribute(names.topicName);
  typeVersion = element.attribute(names.typeVersion);
  for (const XmlNode& child : Children(element))
  {
    if (child.isNamed(names.topic))
    {
      topics[child.attribute(names.language)] = child.attribute(names.path);
    }
  }
  return true;
}

void DialogInfo::saveToManifest(QDomDocument& doc, QDomNode& parent) const
{
  const ManifestNames& names = manifestNames();
  QDomElement dialog = appendElement(doc, parent, names.dialogContent);
  setAttribute(dialog, names.topicName, record->topicName);
  setAttribute(dialog, names.typeVersion, record->typeVersion);
  for (const auto& [language, path] : record->topics)
  {
    if (!language.empty() && !path.empty())
    {
      QDomElement topic = appendElement(doc, dialog, names.topic);
      setAttribute(topic, names.language, language);
      setAttribute(topic, names.path, path);
    }
  }
}

bool operator==(const DialogInfo& left, const DialogInfo& right)
{
  return left.topicName() == right.topicName() && left.typeVersion() == right.typeVersion() &&
         left.topics() == right.topics();
}

bool operator!=(const DialogInfo& left, const DialogInfo& right) { return !(left == right); }

std::ostream& operator<<(std::ostream& out, const DialogInfo& dialog)
{
  out << "Topic name: " << dialog.topicName() << std::endl;
  out << "Type version: " << dialog.typeVersion() << std::endl;
  out << "Topic files: " << std::endl;
  for (const auto& [language, path] : dialog.topics())
  {
    out << language << " -> " << path << std::endl;
  }
  return out;
}

} // namespace vesk
