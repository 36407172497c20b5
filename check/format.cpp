// SPDX-License-Identifier: Apache-2.0
#include <package/behaviorinfo.hpp>
#include <package/xml/names.hpp>

#include <algorithm>
#include <check/format.hpp>

namespace vesk::check
{
namespace
{
const ManifestNames& n() { return manifestNames(); }

Element entries(const QString& name, const QString& entry, const std::vector<QString>& attributes,
                Kind kind, Counts counts = Counts::Each)
{
  return {name, {}, Holds::Entries, {{entry, attributes, Holds::Text}}, kind, counts};
}

Element permissions()
{
  Element element{n().permissions, {}, Holds::Elements, {}, Kind::Permissions};
  for (const std::string& permission : BehaviorInfo::supportedPermissions())
  {
    element.children.push_back({QString::fromStdString(permission), {}, Holds::Nothing});
  }
  return element;
}

Element behavior()
{
  return {n().behaviorContent,
          {n().path},
          Holds::Elements,
          {{n().userRequestable, {}, Holds::Presence},
           {n().nature, {}, Holds::Text, {}, Kind::Plain, Counts::Last},
           entries(n().names, n().name, {n().lang}, Kind::Texts),
           entries(n().descriptions, n().description, {n().lang}, Kind::Texts),
           entries(n().tags, n().tag, {n().lang}, Kind::TextLists),
           entries(n().triggerSentences, n().sentence, {n().lang}, Kind::TextLists),
           entries(n().loadingResponses, n().sentence, {n().lang}, Kind::TextLists),
           entries(n().autonomous, n().condition, {n().purpose}, Kind::Conditions),
           permissions()},
          Kind::Path};
}

Element dialog()
{
  return {n().dialogContent,
          {n().topicName, n().typeVersion},
          Holds::Elements,
          {{n().topic, {n().language, n().path}, Holds::Nothing, {}, Kind::Topic}},
          Kind::Dialog};
}

Element languagePack()
{
  return {n().languageContent,
          {n().path},
          Holds::Elements,
          {{n().engine, {n().name, n().version}, Holds::Nothing, {}, Kind::Plain, Counts::Last},
           {n().locale, {}, Holds::Text, {}, Kind::Plain, Counts::Last},
           entries(n().names, n().name, {n().lang}, Kind::Texts)},
          Kind::Path};
}

Element requirements()
{
  return {
      n().requirements,
      {},
      Holds::Elements,
      {{n().robotRequirement,
        {n().model, n().minHeadVersion, n().maxHeadVersion, n().minBodyVersion, n().maxBodyVersion},
        Holds::Nothing,
        {},
        Kind::Robot},
       {n().mirelRequirement,
        {n().minVersion, n().maxVersion},
        Holds::Nothing,
        {},
        Kind::Software}},
      Kind::Plain,
      Counts::AddsUp};
}

Element section(const QString& name, const std::vector<Element>& children)
{
  return {name, {}, Holds::Elements, children, Kind::Plain, Counts::AddsUp};
}

Element package()
{
  return {
      n().package,
      {n().uuid, n().version, n().author, n().organization, n().date, n().typeVersion, n().channel},
      Holds::Elements,
      {entries(n().names, n().name, {n().lang}, Kind::Texts, Counts::AddsUp),
       entries(n().descriptions, n().description, {n().lang}, Kind::Texts, Counts::AddsUp),
       entries(n().supportedLanguages, n().language, {}, Kind::Supported, Counts::AddsUp),
       entries(n().descriptionLanguages, n().language, {}, Kind::Described),
       section(n().contents,
               {behavior(),
                dialog(),
                languagePack(),
                {n().webContent, {n().path}, Holds::Nothing, {}, Kind::Web, Counts::Last}}),
       requirements(),
       section(n().services, {{n().service,
                               {n().execStart, n().name, n().autorun},
                               Holds::Nothing,
                               {},
                               Kind::Service}}),
       section(n().executableFiles, {{n().file, {n().path}, Holds::Nothing, {}, Kind::Path}})},
      Kind::Package};
}

void findHomes(const Element& element, const QString& name, std::vector<QString>& homes)
{
  for (const Element& child : element.children)
  {
    if (child.name == name && std::find(homes.begin(), homes.end(), element.name) == homes.end())
    {
      homes.push_back(element.name);
    }
    findHomes(child, name, homes);
  }
}
} // namespace

const Element& packageElement()
{
  static const Element root = package();
  return root;
}

std::vector<QString> homesOf(const QString& name)
{
  std::vector<QString> homes;
  findHomes(packageElement(), name, homes);
  return homes;
}

} // namespace vesk::check
