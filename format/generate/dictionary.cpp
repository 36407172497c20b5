// SPDX-License-Identifier: Apache-2.0
#include "files.hpp"

#include <format/format.hpp>

#include <algorithm>
#include <set>

using namespace vesk::format;

namespace
{
/// As libFuzzer reads it.
QString quoted(QString word) { return '"' + word.replace('"', QStringLiteral("\\\"")) + '"'; }

void collect(const Element& element, std::set<QString>& names, std::set<QString>& tags)
{
  const auto collectEntry = [&names](const Entry& entry)
  {
    names.insert(QString::fromStdString(entry.name));
    for (const std::string& value : entry.usual)
    {
      names.insert(QString::fromStdString(value));
    }
  };
  collectEntry(element);
  const QString name = QString::fromStdString(element.name);
  std::for_each(element.attributes.begin(), element.attributes.end(), collectEntry);
  QString tag = '<' + name;
  if (!element.attributes.empty()) // one is enough: libFuzzer takes no words of more than 64 bytes
  {
    tag += ' ' + QString::fromStdString(element.attributes.front().name) + QStringLiteral("=\"1\"");
  }
  const bool isEmpty = element.holds == Holds::Nothing || element.holds == Holds::Presence;
  tags.insert(tag + (isEmpty ? "/>" : ">"));
  if (!isEmpty)
  {
    tags.insert("</" + name + '>');
  }
  for (const Element& child : element.children)
  {
    collect(child, names, tags);
  }
}
} // namespace

QString dictionary(const QString& document)
{
  const auto words = [](const QString&)
  {
    std::set<QString> names;
    std::set<QString> tags;
    collect(package(), names, tags);
    QString lines;
    for (const std::set<QString>& all : {names, tags})
    {
      for (const QString& word : all)
      {
        lines += quoted(word) + '\n';
      }
    }
    return lines;
  };
  return withParts(document, QStringLiteral("# made: "), {}, QStringLiteral("# end"), words);
}
