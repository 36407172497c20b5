// SPDX-License-Identifier: Apache-2.0
// Every field of every record is set, read, copied and shown by the operations that are meant for it.
#include "filledpackage.hpp"
#include "merged.hpp"
#include "support.hpp"

#include <set>

using namespace vesk;

namespace
{
/// How a program sets a field to "x", and what it gets of it then.
template <typename Handle>
struct Accessor
{
  std::string member; ///< as it is registered
  std::function<void(Handle&)> set;
  std::function<std::string(const Handle&)> get;
};

std::string first(const std::string& text) { return text; }
std::string first(const std::list<std::string>& texts)
{
  return texts.empty() ? "" : texts.front();
}

/// Operations that take the value first, and behind it \p key where there is one.
template <auto set, auto get, typename Handle, typename... Key>
Accessor<Handle> field(const std::string& member, Key... key)
{
  return {member, [key...](Handle& handle) { (handle.*set)("x", key...); },
          [key...](const Handle& handle) { return first((handle.*get)(key...)); }};
}

/// Operations on a list of items.
template <auto add, auto get, typename Handle, typename Item>
Accessor<Handle> items(const std::string& member, const Item& item)
{
  const auto all = [](const Handle& handle) { return contentIn((handle.*get)()); };
  return {member, [item](Handle& handle) { (handle.*add)(item); },
          [item, all](const Handle& handle)
          { return all(handle) == contentIn(std::list<Item>{item}) ? "x" : ""; }};
}

const std::set<std::string> readingAddsAKey{"langToTriggerSentences", "langToLoadingResponses",
                                            "purposeToCondition"};
const std::set<std::string> hasNoDuplicates{"supportedLanguages", "descriptionLanguages",
                                            "permissions"};

/// Checks that every operation does what it says to its field, and nothing to others, to copies and
/// to what is copied.
template <typename Handle>
void expectAccess(const std::vector<Accessor<Handle>>& accessors,
                  const std::set<std::string>& withoutAccess = {})
{
  static_assert(std::is_nothrow_move_constructible_v<Handle>);
  const auto original = filled<Handle>();
  const Json before = heldIn(original);
  std::set<std::string> unknown(withoutAccess);
  for (const auto& [member, set, get] : accessors)
  {
    SCOPED_TRACE(member);
    unknown.insert(member);
    Handle handle;
    Json nothing = heldIn(handle);
    if (readingAddsAKey.count(member) > 0)
    {
      nothing[member]["de"] = Json::array();
    }
    get(handle);
    EXPECT_EQ(heldIn(handle), nothing);
    set(handle);
    EXPECT_EQ(get(handle), "x");

    const Json added = heldIn(handle)[member];
    Json once = before;
    once[member] = merged(before[member], added);
    Json twice = once;
    twice[member] = hasNoDuplicates.count(member) > 0 ? once[member] : merged(once[member], added);
    Handle copy(original);
    set(copy);
    EXPECT_EQ(heldIn(copy), once);
    EXPECT_EQ(heldIn(original), before);
    Handle returned = (handle = copy);
    set(handle);
    EXPECT_EQ(heldIn(handle), twice);
    EXPECT_EQ(heldIn(copy), once);
    EXPECT_EQ(heldIn(returned), once);
    handle = *&handle;
    const Handle moved(std::move(handle));
    EXPECT_EQ(heldIn(moved), twice);
    handle = copy; // NOLINT(bugprone-use-after-move): assigning is allowed
    EXPECT_EQ(heldIn(handle), once);
  }
  const std::vector<std::string>& members = AnyConstReference(original).memberNames();
  EXPECT_EQ(unknown, std::set<std::string>(members.begin(), members.end()));
}

/// Checks that a report shows every text, but for those of members that it leaves out.
template <typename Handle>
void expectInReport(const std::set<std::string>& leftOut = {})
{
  const auto handle = filled<Handle>(DistinctValues(1000)); // so that no text begins with another
  const std::string report = printed(handle);
  const Json texts = heldIn(handle).flatten();
  for (const auto& [place, text] : texts.items())
  {
    const bool isLeftOut = std::any_of(leftOut.begin(), leftOut.end(),
                                       [&place = place](const std::string& member)
                                       { return place.find('/' + member) != std::string::npos; });
    EXPECT_EQ(text.is_boolean() || report.find(text) != std::string::npos,
              !isLeftOut || text.is_boolean())
        << place;
  }
}
} // namespace

TEST(Accessors, ReachEveryFieldOfAPackage)
{
  using P = PackageInfo;
  expectAccess<P>(
      {field<&P::setUuid, &P::uuid, P>("uuid"),
       field<&P::setVersion, &P::version, P>("version"),
       field<&P::setAuthor, &P::author, P>("author"),
       field<&P::setOrganization, &P::organization, P>("organization"),
       field<&P::setDate, &P::date, P>("date"),
       field<&P::setTypeVersion, &P::typeVersion, P>("typeVersion"),
       field<&P::setChannel, &P::channel, P>("channel"),
       field<&P::setInstaller, &P::installer, P>("installer"),
       field<&P::setPath, &P::path, P>("path"),
       field<&P::setName, &P::name, P>("langToName", "de"),
       field<&P::setDescription, &P::description, P>("langToDesc", "de"),
       field<&P::addSupportedLanguage, &P::supportedLanguages, P>("supportedLanguages"),
       field<&P::addDescriptionLanguage, &P::descriptionLanguages, P>("descriptionLanguages"),
       field<&P::addExecutableFile, &P::executableFiles, P>("executableFiles"),
       items<&P::addService, &P::services, P, PackageService>("services", {"a", "b", true}),
       items<&P::addRobotRequirement, &P::robotRequirements, P, RobotRequirement>(
           "robotRequirements", {}),
       items<&P::addMirelRequirement, &P::mirelRequirements, P, MirelRequirement>(
           "mirelRequirements", {}),
       items<&P::addBehavior,
             static_cast<const std::list<BehaviorInfo>& (P::*)() const>(&P::behaviors), P,
             BehaviorInfo>("behaviors", {}),
       items<&P::addDialog, &P::dialogs, P, DialogInfo>("dialogs", {}),
       items<&P::addLanguage, &P::languages, P, LanguageInfo>("languages", {})});
}

TEST(Accessors, ReachEveryFieldOfADescriptor)
{
  using B = BehaviorInfo;
  expectAccess<B>(
      {field<&B::setPath, &B::path, B>("path"),
       field<&B::setNature, &B::nature, B>("nature"),
       field<&B::setName, &B::name, B>("langToName", "de"),
       field<&B::setDescription, &B::description, B>("langToDesc", "de"),
       field<&B::addTag, &B::tags, B>("langToTags", "de"),
       field<&B::addTriggerSentence, &B::triggerSentences, B>("langToTriggerSentences", "de"),
       field<&B::addLoadingResponse, &B::loadingResponses, B>("langToLoadingResponses", "de"),
       field<&B::addCondition, &B::conditions, B>("purposeToCondition", "de"),
       {"permissions", [](B& b) { b.addPermission("canStandUp"); },
        [](const B& b) { return b.hasPermission("canStandUp") ? "x" : ""; }},
       {"userRequestable", [](B& b) { b.setUserRequestable(true); },
        [](const B& b) { return b.isUserRequestable() ? "x" : ""; }}},
      {"categories"});
  using D = DialogInfo;
  expectAccess<D>({field<&D::setTopicName, &D::topicName, D>("topicName"),
                   field<&D::setTypeVersion, &D::typeVersion, D>("typeVersion"),
                   {"topics", [](D& d) { d.setTopic("de", "x"); }, // the language first
                    [](const D& d) { return d.topic("de"); }}});
  using L = LanguageInfo;
  expectAccess<L>({field<&L::setPath, &L::path, L>("path"),
                   field<&L::setLocale, &L::locale, L>("locale"),
                   field<&L::setEngineName, &L::engineName, L>("engineName"),
                   field<&L::setEngineVersion, &L::engineVersion, L>("engineVersion"),
                   field<&L::setName, &L::name, L>("langToName", "de")});

  const auto behavior = filled<B>();
  const Json all = heldIn(behavior);
  EXPECT_EQ(heldIn(behavior.names()), all["langToName"]);
  EXPECT_EQ(heldIn(behavior.descriptions()), all["langToDesc"]);
  EXPECT_EQ(heldIn(behavior.languagesToTags()), all["langToTags"]);
  EXPECT_EQ(heldIn(behavior.languagesToTriggerSentences()), all["langToTriggerSentences"]);
  EXPECT_EQ(heldIn(behavior.languagesToLoadingResponses()), all["langToLoadingResponses"]);
  EXPECT_EQ(heldIn(behavior.purposesToConditions()), all["purposeToCondition"]);
  const auto language = filled<L>();
  EXPECT_EQ(heldIn(language.names()), heldIn(language)["langToName"]);
}

TEST(Accessors, ReportsShowEveryField)
{
  expectInReport<PackageInfo>(
      {"installer", "descriptionLanguages", "services", "executableFiles", "categories"});
  expectInReport<BehaviorInfo>({"categories"});
  expectInReport<DialogInfo>();
  expectInReport<LanguageInfo>();
}
