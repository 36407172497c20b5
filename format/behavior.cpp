// SPDX-License-Identifier: Apache-2.0
#include <format/describe.hpp>
#include <package/behaviorinfo.hpp>
#include <package/behaviorinfo_p.hpp>
#include <package/packageinfo_p.hpp>

#include <map>
#include <string>

namespace vesk::format
{
namespace
{
using Behavior = BehaviorInfoPrivate;

Element permissions()
{
  static const std::map<std::string, const char*> meanings{
      {BehaviorInfo::k_permCanRunInSleep, "The behavior may run while the robot sleeps."},
      {BehaviorInfo::k_permCanRunOnPod, "The behavior may run while the robot is on its pod."},
      {BehaviorInfo::k_permCanStandUp, "The behavior may make the robot stand up."},
      {BehaviorInfo::k_permCanSitDown, "The behavior may make the robot sit down."}};
  auto permissions = element(n().permissions, "What the behavior claims to be allowed.")
                         .heldBy(&Behavior::permissions)
                         .holding(Holds::Names)
                         .whenWritten(Written::Always);
  for (const std::string& name : BehaviorInfo::supportedPermissions())
  {
    permissions.with(describe<Element>(name, meanings.at(name), "it may not")
                         .ifSeveral(Several::CountOnce)
                         .whenWritten(Written::IfTrue));
  }
  return permissions;
}

Element sentence(const char* example)
{
  return localizedText(n().sentence, "A sentence in one language.").like(example);
}
} // namespace

Element describeBehavior()
{
  return element(n().behaviorContent, "A behavior. Its elements stand in any order.")
      .heldBy(&PackageInfoPrivate::behaviors)
      .repeatable()
      .whenWritten(Written::Always)
      .with(path().heldBy(&Behavior::path).whenWritten(Written::Always).like("guide/start"))
      .with(describe<Element>(n().userRequestable,
                              "Says by being there that a user may request the behavior, whatever "
                              "it holds.",
                              "a user may not")
                .heldBy(&Behavior::userRequestable)
                .holding(Holds::Presence)
                .whenWritten(Written::IfTrue))
      .with(text(n().nature, "The nature of the behavior.")
                .heldBy(&Behavior::nature)
                .usually({BehaviorInfo::natureInteractive(), BehaviorInfo::natureSolitary()})
                .like("interactive")
                .ifSeveral(Several::LastCounts)
                .whenWritten(Written::Always))
      .with(names("What the behavior is called in each language.", "Start the tour")
                .heldBy(&Behavior::langToName))
      .with(descriptions("What the behavior does, in each language.",
                         "Leads visitors through the galleries.")
                .heldBy(&Behavior::langToDesc))
      .with(list(n().tags, "Words that the behavior is found by, any number in each language.",
                 localizedText(n().tag, "A tag in one language.").like("museum"))
                .heldBy(&Behavior::langToTags))
      .with(list(n().triggerSentences,
                 "What a user may say to start the behavior, any number in each language.",
                 sentence("start the tour"))
                .heldBy(&Behavior::langToTriggerSentences))
      .with(list(n().loadingResponses,
                 "What the robot may say while the behavior loads, any number in each language.",
                 sentence("One moment, please."))
                .heldBy(&Behavior::langToLoadingResponses))
      .with(
          list(n().autonomous, "When the robot launches the behavior by itself.",
               text(n().condition,
                    R"(A condition, best in a CDATA section: there "<" and "&" stand as they are.)")
                   .inCdata()
                   .like("people.nearest < 2.0 && !robot.charging")
                   .with(attribute(n().purpose,
                                   R"(What the condition is for, for example "start" or "stop".)")
                             .as(Role::Key)
                             .like("start")
                             .ifAbsent("the empty purpose")
                             .needed()))
              .heldBy(&Behavior::purposeToCondition))
      .with(permissions());
}

} // namespace vesk::format
