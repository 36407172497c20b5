// SPDX-License-Identifier: Apache-2.0
#include <format/describe.hpp>
#include <package/languageinfo_p.hpp>
#include <package/packageinfo_p.hpp>

namespace vesk::format
{

Element describeLanguagePack()
{
  using Pack = LanguageInfoPrivate;
  return element(n().languageContent, "A language pack. Its elements stand in any order.")
      .heldBy(&PackageInfoPrivate::languages)
      .repeatable()
      .whenWritten(Written::Always)
      .with(path().heldBy(&Pack::path).whenWritten(Written::Always).like("languages/dutch"))
      .with(element(n().engine, "The engine that the pack is made for.")
                .ifSeveral(Several::LastCounts)
                .whenWritten(Written::Always)
                .with(attribute(n().name, "The name of the engine.")
                          .heldBy(&Pack::engineName)
                          .whenWritten(Written::Always)
                          .like("speech-synthesis"))
                .with(attribute(n().version, "The version of the engine.")
                          .heldBy(&Pack::engineVersion)
                          .of(Type::Version)
                          .whenWritten(Written::Always)
                          .like("4.0.1")))
      .with(text(n().locale, "The language of the pack, an ISO 639 code.")
                .heldBy(&Pack::locale)
                .of(Type::Language)
                .ifSeveral(Several::LastCounts)
                .whenWritten(Written::Always)
                .like("nl")
                .needed())
      .with(names("What the pack is called in each language.", "Dutch").heldBy(&Pack::langToName));
}

} // namespace vesk::format
