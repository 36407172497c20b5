// SPDX-License-Identifier: Apache-2.0
#include <check/confusions.hpp>
#include <check/elementtext.hpp>
#include <check/fitting.hpp>
#include <check/languageform.hpp>

#include <algorithm>

namespace vesk::check
{
namespace
{
template <typename Known>
bool isKnownAmong(const QString& written, const std::vector<Known>& known)
{
  return std::any_of(known.begin(), known.end(),
                     [&written](const Known& one)
                     { return isSurelyMeant(written, QString(one.name)); });
}

bool isTextOf(const QString& text, const format::Entry& entry)
{
  return text.isEmpty() ||
         (entry.type == format::Type::Language
              ? isLanguageForm(text)
              : entry.usual.empty() ||
                    std::any_of(entry.usual.begin(), entry.usual.end(),
                                [&text](const std::string& usual)
                                { return isSurelyMeant(text, QString::fromStdString(usual)); }));
}

/// Whether what stands beside the elements in it would be taken for nothing that it is not.
bool readsWell(const Node& element, const CheckedElement& meant)
{
  switch (meant.format.holds)
  {
  case format::Holds::Text:
    return isTextOf(element.text().trimmed(), meant.format);
  case format::Holds::Presence:
    return isBlank(element.text()) || saysYes(element.text());
  case format::Holds::Nothing:
  case format::Holds::Elements:
  case format::Holds::Entries:
  case format::Holds::Names:
    break;
  }
  const bool isList = meant.format.holds == format::Holds::Entries;
  bool areAll = true;
  for (const Node& child : Children(element))
  {
    areAll = areAll && (child.isElement() || (child.isText() ? isBlank(child.text()) : !isList));
  }
  return areAll;
}

bool isWhollyKnown(const Node& element, const CheckedElement& meant)
{
  const std::vector<QString> attributes = element.attributeNames();
  bool areAll =
      std::all_of(attributes.begin(), attributes.end(),
                  [&meant](const QString& name) { return isKnownAmong(name, meant.attributes); });
  for (const Node& child : Children(element))
  {
    areAll =
        areAll && (!child.isElement() || (meant.format.holds == format::Holds::Entries
                                              ? readsWell(child, meant.children.front()) &&
                                                    isWhollyKnown(child, meant.children.front())
                                              : isKnownAmong(child.name(), meant.children)));
  }
  return areAll;
}
} // namespace

bool isSurely(const Node& element, const CheckedElement& meant)
{
  const QString name = element.name();
  return isSurelyMeant(name, meant.name) && readsWell(element, meant) &&
         (isOtherCase(name, meant.name) || isWhollyKnown(element, meant));
}

} // namespace vesk::check
