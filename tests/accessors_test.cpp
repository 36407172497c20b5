// SPDX-License-Identifier: Apache-2.0
// Every field of every record is set, read and shown by the operations that are meant for it.
#include "filledpackage.hpp"
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
std::string first(const std::list<std::string>& texts) { return texts.front(); }

/// Operations that take the value first, and behind it \p key where there is one.
template <auto set, auto get, typename Handle, typename... Key>
Accessor<Handle> field(const std::string& member, Key... key)
{
  return {member, [key...](Handle& handle) { (handle.*set)("x", key...); },
          [key...](const Handle& handle) { return first((handle.*get)(key...)); }};
}

template <typename Handle>
void expectAccess(const std::vector<Accessor<Handle>>& accessors,
                  const std::set<std::string>& withoutAccess = {})
{
  std::set<std::string> unknown(withoutAccess);
  for (const Accessor<Handle>& accessor : accessors)
  {
    unknown.insert(accessor.member);
    Handle handle;
    accessor.set(handle);
    EXPECT_EQ(accessor.get(handle), "x") << accessor.member;
    const Handle untouched;
    const AnyConstReference before(untouched);
    const AnyConstReference after(handle);
    for (const std::string& member : after.memberNames())
    {
      EXPECT_EQ(contentIn(after.member(member)) != contentIn(before.member(member)),
                member == accessor.member)
          << accessor.member << " and " << member;
    }
  }
  const std::vector<std::string>& members = AnyConstReference(Handle()).memberNames();
  EXPECT_EQ(unknown, std::set<std::string>(members.begin(), members.end()));
}

/// Checks that a report of a record in which all texts differ has each of them.
template <typename Handle>
void expectInReport(const std::set<std::string>& leftOut = {})
{
  const auto handle = filled<Handle>();
  const std::string report = printed(handle);
  const AnyConstReference record(handle);
  for (const std::string& member : record.memberNames())
  {
    const std::string content = contentIn(record.member(member));
    const std::size_t text = content.find("text ");
    if (text != std::string::npos) // and is no flag
    {
      const std::string quoted = content.substr(text, content.find('"', text) - text);
      EXPECT_EQ(report.find(quoted) != std::string::npos, leftOut.count(member) == 0) << member;
    }
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
       field<&P::setName, &P::name, P>("langToName", "en"),
       field<&P::setDescription, &P::description, P>("langToDesc", "en"),
       field<&P::addSupportedLanguage, &P::supportedLanguages, P>("supportedLanguages"),
       field<&P::addDescriptionLanguage, &P::descriptionLanguages, P>("descriptionLanguages"),
       field<&P::addExecutableFile, &P::executableFiles, P>("executableFiles"),
       {"services",
        [](P& p) {
          p.addService({"", "x", false});
        },
        [](const P& p) { return p.services().front().name; }},
       {"robotRequirements",
        [](P& p) {
          p.addRobotRequirement({"x", "", "", "", ""});
        },
        [](const P& p) { return p.robotRequirements().front().model; }},
       {"mirelRequirements",
        [](P& p) {
          p.addMirelRequirement({"x", ""});
        },
        [](const P& p) { return p.mirelRequirements().front().minVersion; }},
       {"behaviors",
        [](P& p)
        {
          p.addBehavior({});
          p.behaviors().front().setPath("x");
        },
        [](const P& p) { return p.behaviors().front().path(); }},
       {"dialogs",
        [](P& p)
        {
          DialogInfo dialog;
          dialog.setTopicName("x");
          p.addDialog(dialog);
        },
        [](const P& p) { return p.dialogs().front().topicName(); }},
       {"languages",
        [](P& p)
        {
          LanguageInfo language;
          language.setPath("x");
          p.addLanguage(language);
        },
        [](const P& p) { return p.languages().front().path(); }}});
}

TEST(Accessors, ReachEveryFieldOfADescriptor)
{
  using B = BehaviorInfo;
  expectAccess<B>(
      {field<&B::setPath, &B::path, B>("path"),
       field<&B::setNature, &B::nature, B>("nature"),
       field<&B::setName, &B::name, B>("langToName", "en"),
       field<&B::setDescription, &B::description, B>("langToDesc", "en"),
       field<&B::addTag, &B::tags, B>("langToTags", "en"),
       field<&B::addTriggerSentence, &B::triggerSentences, B>("langToTriggerSentences", "en"),
       field<&B::addLoadingResponse, &B::loadingResponses, B>("langToLoadingResponses", "en"),
       field<&B::addCondition, &B::conditions, B>("purposeToCondition", "start"),
       {"permissions", [](B& b) { b.addPermission("canStandUp"); },
        [](const B& b) { return b.hasPermission("canStandUp") ? "x" : ""; }},
       {"userRequestable", [](B& b) { b.setUserRequestable(true); },
        [](const B& b) { return b.isUserRequestable() ? "x" : ""; }}},
      {"categories"});
  using D = DialogInfo;
  expectAccess<D>({field<&D::setTopicName, &D::topicName, D>("topicName"),
                   field<&D::setTypeVersion, &D::typeVersion, D>("typeVersion"),
                   {"topics", [](D& d) { d.setTopic("en", "x"); }, // the language first
                    [](const D& d) { return d.topic("en"); }}});
  using L = LanguageInfo;
  expectAccess<L>({field<&L::setPath, &L::path, L>("path"),
                   field<&L::setLocale, &L::locale, L>("locale"),
                   field<&L::setEngineName, &L::engineName, L>("engineName"),
                   field<&L::setEngineVersion, &L::engineVersion, L>("engineVersion"),
                   field<&L::setName, &L::name, L>("langToName", "en"),
                   {"langToName", [](L& l) { l.setName("x", "en"); },
                    [](const L& l) { return l.names().at("en"); }}});
}

TEST(Accessors, ReportsShowEveryField)
{
  expectInReport<PackageInfo>({"installer", "descriptionLanguages", "services", "executableFiles"});
  expectInReport<BehaviorInfo>({"categories"});
  expectInReport<DialogInfo>();
  expectInReport<LanguageInfo>();
}
