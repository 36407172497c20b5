// SPDX-License-Identifier: Apache-2.0
// What a schema refuses, the checker finds something in: manifests of this project, broken at random.
// And what it says how to mend is gone then.
// Set BROKEN_COUNT for more than a few of these, and BROKEN_SEED for others.
#include "support.hpp"
#include "xmllint.hpp"

#include <check/manifestcheck.hpp>
#include <format/format.hpp>
#include <source/edits.hpp>

#include <QDomDocument>

#include <iostream>
#include <random>

namespace
{
unsigned numberIn(const char* variable, unsigned otherwise)
{
  const char* const given = std::getenv(variable);
  return given != nullptr ? static_cast<unsigned>(std::stoul(given)) : otherwise;
}

class BrokenManifests
{
public:
  explicit BrokenManifests(unsigned seed) : random(seed)
  {
    collectNames(vesk::format::package());
    for (const char* folder :
         {EXAMPLE_MANIFESTS, GOLDEN_FILES "/check", GOLDEN_FILES "/messy", GOLDEN_FILES "/schema"})
    {
      originals.push_back({});
      for (const QFileInfo& file : QDir(folder).entryInfoList({"*.xml"}))
      {
        QDomDocument document;
        const QByteArray bytes =
            QByteArray::fromStdString(contentOf(file.filePath().toStdString()));
        if (document.setContent(bytes) && document.doctype().name().isEmpty())
        {
          originals.back() += document;
        }
      }
    }
  }

  std::string next()
  {
    QDomDocument document = oneOf(oneOf(originals)).cloneNode().toDocument();
    document.removeChild(document.firstChild().toProcessingInstruction()); // of the encoding
    for (int count = below(2) + 1; count > 0; --count)
    {
      change(document);
    }
    return document.toString(-1).toStdString();
  }

private:
  void collectNames(const vesk::format::Element& element)
  {
    names += QString::fromStdString(element.name);
    for (const vesk::format::Attribute& attribute : element.attributes)
    {
      names += QString::fromStdString(attribute.name);
    }
    for (const vesk::format::Element& child : element.children)
    {
      collectNames(child);
    }
  }

  int below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }
  template <typename Value>
  Value oneOf(const QList<Value>& list)
  {
    return list[below(list.size())];
  }
  QString name() { return below(4) == 0 ? oneOf(oddNames) : oneOf(names); }

  void change(QDomDocument& document)
  {
    QList<QDomElement> all{document.documentElement()};
    for (int i = 0; i < all.size(); ++i)
    {
      for (QDomElement child = all[i].firstChildElement(); !child.isNull();
           child = child.nextSiblingElement())
      {
        all += child;
      }
    }
    const auto any = [&] { return oneOf(all); };
    QDomElement element = any();
    QDomNode parent = element.parentNode();
    const QDomNamedNodeMap attributes = element.attributes();
    const QString attribute =
        attributes.isEmpty() ? name() : attributes.item(below(attributes.size())).nodeName();
    const bool isRoot = parent.isDocument();
    switch (below(12))
    {
    case 0:
    case 1: // stands again, beside it or elsewhere
      any().appendChild(element.cloneNode());
      break;
    case 2:
      isRoot ? QDomNode() : parent.insertAfter(element.cloneNode(), element);
      break;
    case 3:
      isRoot ? QDomNode() : parent.removeChild(element);
      break;
    case 4:
      element.setTagName(name());
      break;
    case 5:
      any().insertBefore(document.createElement(name()), QDomNode());
      break;
    case 6:
      element.setAttribute(name(), oneOf(values));
      break;
    case 7:
      element.setAttribute(name(), element.attribute(attribute));
      element.removeAttribute(attribute);
      break;
    case 8:
      element.removeAttribute(attribute);
      break;
    case 9:
      element.setAttribute(attribute, oneOf(values));
      break;
    case 10:
      element.appendChild(document.createTextNode(oneOf(values)));
      break;
    default: // what it holds
      while (!element.firstChild().isNull())
      {
        element.removeChild(element.firstChild());
      }
      element.appendChild(below(2) == 0 ? QDomNode(document.createCDATASection(oneOf(values)))
                                        : QDomNode(document.createComment("x")));
      break;
    }
  }

  const QList<QString> oddNames{"x:name",  "xml:lang", "xml:space",         "xmlns", "xmlns:x",
                                "xsi:nil", "xsi:type", "xmlns:xsi",         "Name",  "title",
                                "x",       "canFly",   "xsi:schemaLocation"};
  const QList<QString> values{"",
                              " ",
                              "\t",
                              "en",
                              "English",
                              "true",
                              "TRUE",
                              "1",
                              " true ",
                              "\n x",
                              "http://www.w3.org/2001/XMLSchema-instance",
                              "urn:x",
                              "interactive",
                              "a/b",
                              "3.1"};
  QList<QString> names;
  QList<QList<QDomDocument>> originals; ///< by folder: half of them have no faults of their own
  std::mt19937 random;                  // the same in every run
};
} // namespace

TEST(BrokenManifests, HaveFindingsWhereSchemasRefuseThem)
{
  constexpr unsigned atOnce = 500;
  BrokenManifests manifests(numberIn("BROKEN_SEED", 1));
  unsigned left = numberIn("BROKEN_COUNT", 300);
  std::size_t refusals = 0;
  while (left > 0)
  {
    const TemporaryFolder folder;
    std::set<std::string> paths;
    for (; left > 0 && paths.size() < atOnce; --left)
    {
      paths.insert(folder.file(std::to_string(left) + ".xml", manifests.next()));
    }
    for (const Schema& schema : schemas)
    {
      for (const auto& [path, messages] : refusedBy(schema, paths))
      {
        ++refusals;
        EXPECT_FALSE(vesk::check::checkFile(path).empty()) << messages << contentOf(path);
      }
    }
  }
  std::cout << "schemas refuse them " << refusals << " times\n";
}

TEST(BrokenManifests, HaveAFaultLessOnceItIsMended)
{
  using vesk::check::Finding;
  const auto findingsIn = [](const std::string& text)
  { return vesk::check::checkBytes(text).findings; };
  BrokenManifests manifests(numberIn("BROKEN_SEED", 1));
  std::map<std::string, int> mended;
  for (unsigned left = numberIn("BROKEN_COUNT", 300); left > 0; --left)
  {
    const std::string manifest = manifests.next();
    const auto document = vesk::source::Document::parse(manifest);
    const std::vector<Finding> before = findingsIn(manifest);
    for (const Finding& finding : before)
    {
      if (!finding.mend)
      {
        continue;
      }
      ++mended[finding.rule->tag];
      const auto isAlike = [&finding](const Finding& other)
      { return other.rule == finding.rule && other.message == finding.message; };
      const std::string result = vesk::source::apply(document, finding.mend->edits);
      const std::vector<Finding> after = findingsIn(result);
      EXPECT_LT(std::count_if(after.begin(), after.end(), isAlike),
                std::count_if(before.begin(), before.end(), isAlike))
          << finding.rule->tag << " in\n"
          << manifest << "\n"
          << result;
    }
  }
  EXPECT_GT(mended.size(), 10U); // rules
}
