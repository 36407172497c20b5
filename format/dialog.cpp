// SPDX-License-Identifier: Apache-2.0
#include <format/describe.hpp>
#include <package/dialoginfo_p.hpp>
#include <package/packageinfo_p.hpp>

namespace vesk::format
{

Element describeDialog()
{
  using Dialog = DialogInfoPrivate;
  return element(n().dialogContent, "A dialog.")
      .heldBy(&PackageInfoPrivate::dialogs)
      .repeatable()
      .whenWritten(Written::Always)
      .with(attribute(n().topicName, "The name of the dialog's topic.")
                .heldBy(&Dialog::topicName)
                .whenWritten(Written::Always)
                .like("galleries")
                .needed())
      .with(attribute(n().typeVersion, "The version of the topic's type.")
                .heldBy(&Dialog::typeVersion)
                .of(Type::Version)
                .whenWritten(Written::Always)
                .like("1.0")
                .ifAbsent("empty (not \"1.0\", which dialogs made by programs have)"))
      .with(element(n().topic, "The dialog's topic file in one language.")
                .heldBy(&Dialog::topics)
                .repeatable()
                .ifSeveral(Several::LastOfKeyCounts)
                .whenWritten(Written::UnlessIncomplete)
                .with(attribute(n().language, "The language of the topic file.")
                          .of(Type::Language)
                          .as(Role::Key)
                          .whenWritten(Written::Always)
                          .like("en_US")
                          .ifAbsent("the empty language")
                          .needed())
                .with(path()
                          .of(Type::PathStem)
                          .as(Role::Value)
                          .whenWritten(Written::Always)
                          .like("dialogs/galleries_en")));
}

} // namespace vesk::format
