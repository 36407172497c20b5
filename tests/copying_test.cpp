// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <package/packageinfo.hpp>

using namespace vesk;

namespace
{
/// Checks that copies of \p source share nothing with it, and that moves keep all.
template <typename Handle, typename Change>
void checkCopies(const Handle& source, Change change)
{
  const std::string before = printed(source);
  Handle copy(source);
  change(copy);
  ASSERT_NE(printed(copy), before);
  EXPECT_EQ(printed(source), before);

  Handle target;
  Handle returned = (target = source);
  change(returned);
  EXPECT_EQ(printed(returned), printed(copy));
  EXPECT_EQ(printed(target), before);
  target = *&target;
  EXPECT_EQ(printed(target), before);

  static_assert(std::is_nothrow_move_constructible_v<Handle>);
  Handle moved(std::move(target));
  EXPECT_EQ(printed(moved), before);
  target = copy; // NOLINT(bugprone-use-after-move): assigning is allowed
  EXPECT_EQ(printed(target), printed(copy));
}
} // namespace

TEST(Copying, IsDeepForEveryHandle)
{
  PackageInfo package;
  ASSERT_TRUE(package.loadFromManifestFile(GOLDEN_FILES "/oddities.xml"));
  checkCopies(package, [](PackageInfo& copy) { copy.behaviors().front().setPath("changed"); });
  checkCopies(package.behaviors().front(), [](BehaviorInfo& copy) { copy.addTag("t", "en"); });
  checkCopies(package.dialogs().front(), [](DialogInfo& copy) { copy.removeTopic("en"); });
  checkCopies(package.languages().front(), [](LanguageInfo& copy) { copy.setName("n", "en"); });
}

TEST(Copying, KeepsReferencesIntoAPackageThatIsAssignedTo)
{
  PackageInfo package;
  const std::string& uuid = package.uuid();
  PackageInfo other;
  other.setUuid("u");
  package = other;
  EXPECT_EQ(uuid, "u");
}
