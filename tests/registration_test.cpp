// SPDX-License-Identifier: Apache-2.0
#include "filledpackage.hpp"
#include "support.hpp"

#include <package/behaviorinfo_p.hpp>
#include <package/dialoginfo_p.hpp>
#include <package/interop/registration.hpp>
#include <package/languageinfo_p.hpp>
#include <package/manifest2/webinfo.hpp>
#include <package/packageinfo_p.hpp>
#include <vesk/runtimetypes.hpp>

using namespace vesk;
using testing::ElementsAre;
using testing::HasSubstr;

namespace
{
const StructTypeInterface& structOf(const TypeInterface* type)
{
  return dynamic_cast<const StructTypeInterface&>(*type);
}

/// A description of a record with the members of \p type, but for the one named, and with a further
/// one when that is given.
const TypeInterface* peerOf(const TypeInterface* type, const std::string& without,
                            const std::string& with = {})
{
  std::vector<RuntimeMember> members;
  for (std::size_t i = 0; i < structOf(type).memberNames().size(); ++i)
  {
    if (structOf(type).memberNames()[i] != without)
    {
      members.push_back({structOf(type).memberNames()[i], structOf(type).memberTypes()[i]});
    }
  }
  if (!with.empty())
  {
    members.push_back({with, typeOf<std::string>()});
  }
  return describeStruct("::peer::Record", members);
}

/// The message with which a conversion fails; empty when it does not.
std::string failure(const AnyConstReference& source, const AnyReference& target)
{
  return thrown<ConversionError>([&] { convert(source, target); });
}
} // namespace

TEST(Registration, KnowsTheRecordsByNameInOrder)
{
  EXPECT_TRUE(arePackageTypesRegistered());
  const std::vector<std::string> names = registeredNames();
  ASSERT_GE(names.size(), 8U);
  EXPECT_THAT(std::vector<std::string>(names.begin(), names.begin() + 8),
              ElementsAre("::vesk::DialogInfoPrivate", "::vesk::DialogInfo",
                          "::vesk::BehaviorInfoPrivate", "::vesk::BehaviorInfo",
                          "vesk::LanguageInfoPrivate", "::vesk::LanguageInfo",
                          "::vesk::PackageInfoPrivate", "::vesk::PackageInfo"));
  EXPECT_EQ(getStruct("vesk::LanguageInfoPrivate"), getType(typeid(LanguageInfoPrivate)));
  EXPECT_EQ(getStruct("::vesk::PackageInfo"), nullptr); // known by its native type only
  EXPECT_EQ(typeOf<PackageInfo>()->name(), "::vesk::PackageInfo");
}

TEST(Registration, PublishesMembersInOrder)
{
  EXPECT_EQ(contentIn(filled<PackageInfo>()) + '\n', contentOf(GOLDEN_FILES "/filled.json"));
  EXPECT_EQ(vesk::edit::toJson(AnyConstReference(WebInfo{"html"}), -1), R"({"path":"html"})");
  EXPECT_THAT((std::vector{typeOf<RobotRequirement>()->name(), typeOf<MirelRequirement>()->name(),
                           typeOf<PackageService>()->name(), typeOf<WebInfo>()->name()}),
              ElementsAre("::vesk::RobotRequirement", "::vesk::MirelRequirement",
                          "::vesk::PackageService", "::vesk::WebInfo"));
  EXPECT_EQ(structOf(typeOf<PackageInfo>()).memberTypes(),
            structOf(typeOf<PackageInfoPrivate>()).memberTypes());
  EXPECT_EQ(structOf(typeOf<PackageInfo>()).memberTypes().at(15),
            typeOf<std::list<MirelRequirement>>());
}

TEST(Registration, ReachesTheRecordOfAPackage)
{
  PackageInfo package;
  package.setInstaller("store");
  const AnyReference view(package);
  EXPECT_EQ(view.member(13).as<std::string>(), "store");
  view.member(0).set("u");
  EXPECT_EQ(package.uuid(), "u");
  view.member("behaviors").set(std::vector<BehaviorInfo>(2));
  EXPECT_EQ(package.behaviors().size(), 2U);
  EXPECT_EQ(view.member("behaviors").address(), &package.behaviors());
}

TEST(Registration, PackagesMakeTheRoundTripThroughGenericValues)
{
  const auto package = filled<PackageInfo>();
  const std::string content = contentIn(package);
  const AnyValue value(package);
  EXPECT_EQ(contentIn(value.to<PackageInfo>()), content);
  EXPECT_EQ(contentIn(value.to<PackageInfoPrivate>()), content);

  auto members = value.to<std::map<std::string, AnyValue>>();
  EXPECT_EQ(members.size(), 20U);
  EXPECT_EQ(contentIn(AnyValue(members).to<PackageInfo>()), content);
  members.erase("uuid");
  AnyValue target(package);
  EXPECT_THAT(failure(AnyValue(members), target), HasSubstr("without \"uuid\""));
}

TEST(Registration, ExchangesBehaviorsWithPeersThatLackTheAddedField)
{
  const auto behavior = filled<BehaviorInfo>();
  const TypeInterface* const peerBehavior = peerOf(typeOf<BehaviorInfo>(), "userRequestable");
  AnyValue peer(*peerBehavior);
  peer.set(behavior);
  const auto read = peer.to<BehaviorInfo>();
  EXPECT_EQ(read.path(), behavior.path());
  EXPECT_EQ(read.tags("de"), behavior.tags("de"));
  EXPECT_TRUE(behavior.isUserRequestable() && !read.isUserRequestable());
  const auto map = peer.to<std::map<std::string, AnyValue>>();
  EXPECT_EQ(AnyConstReference(map).to<BehaviorInfo>().path(), behavior.path());
}

TEST(Registration, RefusesOtherDifferencesOfRecords)
{
  const auto check =
      [](const AnyValue& record, const std::string& without, const std::string& with, bool converts)
  {
    const std::string differing = '"' + (with.empty() ? without : with) + '"';
    AnyValue peer(*peerOf(record.type(), without, with));
    AnyValue target(record);
    const std::string in = failure(peer, target);
    const std::string out = failure(record, peer);
    EXPECT_TRUE(converts ? in.empty() : in.find(differing) != std::string::npos) << in;
    EXPECT_TRUE(converts ? out.empty() : out.find(differing) != std::string::npos) << out;
  };
  const AnyValue behavior(filled<BehaviorInfo>());
  check(behavior, "", "", true);
  check(behavior, "userRequestable", "", true);
  check(behavior, "nature", "", false);
  check(behavior, "", "mood", false);
  check(behavior, "userRequestable", "mood", false);
  check(AnyValue(BehaviorInfoPrivate()), "userRequestable", "", true);
  check(AnyValue(filled<PackageInfo>()), "descriptionLanguages", "", false);
  check(AnyValue(filled<DialogInfo>()), "topics", "", false);
  check(AnyValue(filled<LanguageInfo>()), "", "mood", false);
  check(AnyValue(PackageService()), "autoRun", "", false);
}
