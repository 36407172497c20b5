// SPDX-License-Identifier: Apache-2.0
// What the descriptors have in common: elements of a manifest are added to what there is, by a copy
// as by any other descriptor.
#include "merged.hpp"

#include <package/behaviorinfo_p.hpp>
#include <package/languageinfo_p.hpp>
#include <package/recordaccess.hpp>

#include <QDomDocument>
#include <gtest/gtest.h>

#include <set>

using namespace vesk;

namespace
{
template <typename Handle>
void load(Handle& handle, QDomNode node)
{
  Handle other;
  recordOf(other).owner = recordOf(handle).owner; // to which a record loads
  EXPECT_TRUE(recordOf(other).loadFromManifest(node));
}
void load(DialogInfo& dialog, const QDomNode& node)
{
  QDomElement element = node.toElement();
  EXPECT_TRUE(dialog.loadFromManifest(element));
}

/// Of an element without content only the attributes count, also where they are missing.
template <typename Handle>
void expectAdds(const QString& name, const std::set<std::string>& attributes)
{
  QDomDocument document;
  document.setContent(
      QString::fromStdString(filled<PackageInfo, KeptValues>().saveToManifestContent()));
  document.documentElement().insertBefore(document.createElement(name), {});
  const QDomNodeList elements = document.elementsByTagName(name);
  ASSERT_EQ(elements.size(), 4);
  const auto original = filled<Handle>(DistinctValues(1000));
  const Json before = heldIn(original);
  for (const int i : {0, 1})
  {
    Handle alone;
    const Json nothing = heldIn(alone);
    load(alone, elements.at(i));
    Json expected = before;
    const Json read = heldIn(alone);
    for (const auto& [member, value] : read.items())
    {
      const bool isThere = attributes.count(member) > 0 || value != nothing[member];
      expected[member] = isThere ? merged(before[member], value) : before[member];
    }
    Handle copy(original);
    Handle assigned;
    Handle returned = (assigned = copy);
    Handle source(copy);
    Handle moved(std::move(source));
    source = copy; // NOLINT(bugprone-use-after-move): assigning is allowed
    for (Handle* const handle : {&copy, &assigned, &returned, &moved, &source})
    {
      load(*handle, elements.at(i));
      EXPECT_EQ(heldIn(*handle), expected);
    }
    EXPECT_EQ(heldIn(original), before);
  }
}
} // namespace

TEST(Descriptors, AddElementsToWhatThereIs)
{
  expectAdds<BehaviorInfo>("behaviorContent", {"path"});
  expectAdds<DialogInfo>("dialogContent", {"topicName", "typeVersion"});
  expectAdds<LanguageInfo>("languageContent", {"path"});
}
