// SPDX-License-Identifier: Apache-2.0
#include "files.hpp"

#include <format/format.hpp>

#include <QStringList>

#include <algorithm>
#include <stdexcept>

using namespace vesk::format;

namespace
{
QString toolkits(const std::string& text) { return QString::fromStdString(text); }

QString code(const QString& text) { return '`' + text + '`'; }

/// In a cell of a table, quoted words as code.
QString cell(const std::string& text)
{
  return toolkits(text).replace('"', '`').replace('|', QStringLiteral("\\|"));
}

QString nameOf(Type type)
{
  switch (type)
  {
  case Type::Text:
    return QStringLiteral("text");
  case Type::Language:
    return QStringLiteral("language");
  case Type::Path:
    return QStringLiteral("path");
  case Type::PathStem:
    return QStringLiteral("path, perhaps without extension");
  case Type::Version:
    return QStringLiteral("version");
  case Type::Flag:
    break;
  }
  return {};
}

QString valueOf(const Entry& entry)
{
  QStringList values;
  for (const std::string& value : entry.usual)
  {
    values += code(toolkits(value));
  }
  if (entry.type == Type::Flag)
  {
    return values.join(QStringLiteral(" or "));
  }
  values += (values.isEmpty() ? QString() : QStringLiteral("another ")) + nameOf(entry.type);
  return values.join(QStringLiteral(", ")) +
         (entry.isRequired ? QStringLiteral(", needed") : QString());
}

QString holdsOf(const Element& element)
{
  switch (element.holds)
  {
  case Holds::Text:
    return valueOf(element);
  case Holds::Elements:
  case Holds::Entries:
  case Holds::Names:
    return QStringLiteral("elements");
  case Holds::Nothing:
  case Holds::Presence:
    break;
  }
  return QStringLiteral("nothing");
}

QString severalOf(const Element& element)
{
  const Attribute* const key = attributeFor(element, Role::Key);
  switch (element.several)
  {
  case Several::Count:
    return QStringLiteral("all count");
  case Several::CountForOneReader:
    return QStringLiteral("all count for the first reader, the last for the second");
  case Several::CountOnce:
    return QStringLiteral("equal ones count once");
  case Several::LastCounts:
    return QStringLiteral("the last counts");
  case Several::LastOfKeyCounts:
    break;
  }
  return QStringLiteral("of one %1 the last counts").arg(code(toolkits(key->name)));
}

QString writtenOf(const Entry& entry)
{
  switch (entry.written)
  {
  case Written::Always:
    return QStringLiteral("always");
  case Written::UnlessEmpty:
    return QStringLiteral("unless empty");
  case Written::UnlessIncomplete:
    return QStringLiteral("unless an attribute is empty");
  case Written::IfTrue:
    return QStringLiteral("if it is so");
  case Written::Never:
    break;
  }
  return QStringLiteral("never");
}

QString readersOf(const Entry& entry)
{
  switch (entry.readers)
  {
  case Readers::PackageInfo:
    return QStringLiteral(" Read by the first reader only.");
  case Readers::LoadManifest:
    return QStringLiteral(" Read by the second reader only.");
  case Readers::Both:
    break;
  }
  return {};
}

QString row(const QStringList& cells)
{
  return QStringLiteral("| ") + cells.join(QStringLiteral(" | ")) + QStringLiteral(" |\n");
}

QString rowOf(const Entry& entry, const QString& label, const QString& holds,
              const QString& several)
{
  return row({code(label), holds, cell(entry.meaning) + readersOf(entry), cell(entry.absent),
              several, writtenOf(entry)});
}

/// The attributes and children of an element, and those of the children that have no table.
QString rowsOf(const Element& element, const QString& place, const QStringList& withTable)
{
  QString rows;
  for (const Attribute& attribute : element.attributes)
  {
    rows += rowOf(attribute, place + '@' + toolkits(attribute.name), valueOf(attribute), {});
  }
  for (const Element& child : element.children)
  {
    const QString name = toolkits(child.name);
    rows += rowOf(child, place + name, holdsOf(child), severalOf(child));
    if (!withTable.contains(name))
    {
      rows += rowsOf(child, place + name + '/', withTable);
    }
  }
  return rows;
}

QString table(const QString& path, const QStringList& withTable)
{
  const Element* const element = find(path.toStdString());
  if (element == nullptr)
  {
    throw std::runtime_error("the format has no element " + path.toStdString());
  }
  return '\n' +
         row({{},
              QStringLiteral("Holds"),
              QStringLiteral("Meaning"),
              QStringLiteral("Absent"),
              QStringLiteral("Several"),
              QStringLiteral("Written")}) +
         QStringLiteral("|---|---|---|---|---|---|\n") + rowsOf(*element, {}, withTable) + '\n';
}

/// The element and all below it, a line each; \p before stands before the lines below.
QString branch(const Element& element, const QString& joint, const QString& before)
{
  QStringList parts;
  for (const Attribute& attribute : element.attributes)
  {
    parts += '@' + toolkits(attribute.name);
  }
  QString line = joint + toolkits(element.name) + (element.isRepeatable ? "*" : "");
  line += parts.isEmpty() ? QString() : QStringLiteral("  ") + parts.join(' ');
  line += element.holds == Holds::Text ? QStringLiteral("  text") : QString();
  line += '\n';
  for (const Element& child : element.children)
  {
    const bool isLast = &child == &element.children.back();
    line += branch(child, before + (isLast ? QStringLiteral("└─ ") : QStringLiteral("├─ ")),
                   before + (isLast ? QStringLiteral("   ") : QStringLiteral("│  ")));
  }
  return line;
}
} // namespace

QString reference(const QString& document)
{
  const QString begin = QStringLiteral("<!-- made: ");
  const QString close = QStringLiteral(" -->");
  const QString end = QStringLiteral("<!-- end -->");
  QStringList withTable;
  withParts(document, begin, close, end,
            [&withTable](const QString& path)
            {
              withTable += path.section('/', -1);
              return QString();
            });
  return withParts(document, begin, close, end,
                   [&withTable](const QString& what)
                   {
                     return what == QLatin1String("tree")
                                ? "```text\n" + branch(package(), {}, {}) + "```\n"
                                : table(what, withTable);
                   });
}
