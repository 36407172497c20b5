// SPDX-License-Identifier: Apache-2.0
// A behavior's element of the manifest, both ways, and its report.
#include <package/behaviorinfo.hpp>
#include <package/behaviorinfo_p.hpp>
#include <package/recordaccess.hpp>
#include <package/reporting.hpp>
#include <package/xml/names.hpp>
#include <package/xml/reading.hpp>
#include <package/xml/text.hpp>
#include <package/xml/writing.hpp>

#include <QDomElement>

#include <ostream>

namespace vesk
{

bool BehaviorInfoPrivate::loadFromManifest(QDomNode& node)
{
  return loadFromManifest(XmlNode(node));
}

bool BehaviorInfoPrivate::loadFromManifest(const XmlNode& node)
{
  const ManifestNames& names = manifestNames();
  BehaviorInfoPrivate& record = recordOf(*owner);
  record.path = node.attribute(names.path);
  for (const XmlNode& child : Children(node))
  {
    if (child.isNamed(names.userRequestable))
    {
      record.userRequestable = true; // by its presence, whatever it holds
    }
    else if (child.isNamed(names.names))
    {
      readLocalizedTexts(child, record.langToName);
    }
    else if (child.isNamed(names.descriptions))
    {
      readLocalizedTexts(child, record.langToDesc);
    }
    else if (child.isNamed(names.tags))
    {
      readTextLists(child, names.lang, record.langToTags);
    }
    else if (child.isNamed(names.nature))
    {
      record.nature = child.text();
    }
    else if (child.isNamed(names.triggerSentences))
    {
      readTextLists(child, names.lang, record.langToTriggerSentences);
    }
    else if (child.isNamed(names.loadingResponses))
    {
      readTextLists(child, names.lang, record.langToLoadingResponses);
    }
    else if (child.isNamed(names.autonomous))
    {
      readTextLists(child, names.purpose, record.purposeToCondition);
    }
    else if (child.isNamed(names.permissions))
    {
      for (const XmlNode& permission : Children(child))
      {
        owner->addPermission(permission.name());
      }
    }
  }
  return true;
}

void BehaviorInfoPrivate::saveToManifest(QDomDocument& doc, QDomNode& parent) const
{
  const ManifestNames& names = manifestNames();
  QDomElement behavior = appendElement(doc, parent, names.behaviorContent);
  setAttribute(behavior, names.path, path);
  if (userRequestable)
  {
    appendElement(doc, behavior, names.userRequestable);
  }
  QDomElement natureElement = appendElement(doc, behavior, names.nature);
  addTextNode(doc, natureElement, nature);
  addLocalizedDataElement(doc, behavior, langToName, names.names, names.name, names.lang);
  addLocalizedDataElement(doc, behavior, langToDesc, names.descriptions, names.description,
                          names.lang);
  addDataListElementWithAttribute(doc, behavior, langToTags, names.tags, names.tag, names.lang,
                                  false);
  addDataListElementWithAttribute(doc, behavior, langToTriggerSentences, names.triggerSentences,
                                  names.sentence, names.lang, false);
  addDataListElementWithAttribute(doc, behavior, langToLoadingResponses, names.loadingResponses,
                                  names.sentence, names.lang, false);
  addDataListElementWithAttribute(doc, behavior, purposeToCondition, names.autonomous,
                                  names.condition, names.purpose, true);
  QDomElement permissionsElement = appendElement(doc, behavior, names.permissions);
  for (const std::string& permission : permissions)
  {
    // A manifest brings only supported ones; a record filled by other means may hold any text.
    if (isXmlName(toQString(permission)))
    {
      appendElement(doc, permissionsElement, permission);
    }
  }
}

namespace
{
void printTags(std::ostream& out, const std::map<std::string, std::list<std::string>>& langToTags)
{
  // Set once for the whole block: the first tag of every further line has a separator, too.
  const char* separator = "";
  for (const auto& [lang, tags] : langToTags)
  {
    out << "  " << lang << " -> ";
    for (const std::string& tag : tags)
    {
      out << separator << tag;
      separator = ", ";
    }
    out << std::endl;
  }
}

void printQuotedLists(std::ostream& out,
                      const std::map<std::string, std::list<std::string>>& keyToTexts)
{
  for (const auto& [key, texts] : keyToTexts)
  {
    out << "  " << key << " -> ";
    const char* separator = "";
    for (const std::string& text : texts)
    {
      out << separator << '"' << text << '"';
      separator = ", ";
    }
    out << std::endl;
  }
}
} // namespace

std::ostream& operator<<(std::ostream& out, const BehaviorInfo& behavior)
{
  out << "Path: " << behavior.path() << std::endl;
  out << "Nature: " << behavior.nature() << std::endl;
  out << "UserRequestable" << behavior.isUserRequestable() << std::endl;
  out << "Names: " << std::endl;
  printTexts(out, behavior.names());
  out << "Descriptions:" << std::endl;
  printTexts(out, behavior.descriptions());
  out << "Tags:" << std::endl;
  printTags(out, behavior.languagesToTags());
  out << "Trigger sentences:" << std::endl;
  printQuotedLists(out, behavior.languagesToTriggerSentences());
  out << "Loading responses:" << std::endl;
  printQuotedLists(out, behavior.languagesToLoadingResponses());
  out << "Conditions:" << std::endl;
  printQuotedLists(out, behavior.purposesToConditions());
  out << "Permissions:" << std::endl;
  const char* separator = "";
  for (const std::string& permission : behavior.permissions())
  {
    out << separator << permission;
    separator = ", ";
  }
  out << std::endl;
  return out;
}

} // namespace vesk
