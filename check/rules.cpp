// SPDX-License-Identifier: Apache-2.0
#include <check/rules.hpp>

#include <algorithm>
#include <array>
#include <string_view>

namespace vesk::check
{
namespace
{
struct Entry
{
  RuleId id;
  Rule rule;
};

constexpr bool lost = true;
constexpr bool kept = false;

constexpr std::array table{
    Entry{RuleId::Unreadable,
          {"unreadable", Severity::Error, kept,
           "The file cannot be opened or read, so no reader gets anything of it. Mend its path "
           "or its rights."}},
    Entry{RuleId::NotWellFormed,
          {"not-well-formed", Severity::Error, kept,
           "The text is no XML, and every reader refuses it. The message is that of the parser, "
           "and the place is where it gave up; the fault can be before that, as an element that "
           "is not closed."}},
    Entry{RuleId::BeyondLimits,
          {"beyond-limits", Severity::Error, kept,
           "The text nests deeper, or its document type, entities, attributes or namespace "
           "prefixes are more than any manifest needs. Every reader refuses it as if it were no "
           "XML, since the parser could run out of stack, memory or time. Take out what is too "
           "much."}},
    Entry{
        RuleId::NotStrict,
        {"not-strict", Severity::Warning, kept,
         "The readers take the text, but it is no strict XML: an attribute that comes twice, a "
         "blank that is missing, or bytes that are no text in the file's encoding. Other programs "
         "refuse it, and no tool changes it. What is found behind that place has no exact place. "
         "Correct it where the message says."}},
    Entry{
        RuleId::UnknownEncoding,
        {"unknown-encoding", Severity::Warning, kept,
         "The XML declaration names an encoding that nobody knows. The readers guess, other "
         "programs refuse the file, and no tool changes it. Name the encoding that the text is in, "
         "or save it in UTF-8 and name that."}},
    Entry{RuleId::RootName,
          {"root-name", Severity::Warning, kept,
           "The root element is not called \"package\". The readers take it all the same, and "
           "the writer calls it \"package\"; other programs may not take the file for a "
           "manifest. Rename it."}},
    Entry{
        RuleId::DefaultNamespace,
        {"default-namespace", Severity::Hint, lost,
         "An element declares a default namespace. The readers do not look at namespaces; but for "
         "programs that do, and for the schemas, a manifest is in none, so that they find nothing "
         "of it. The writer leaves it out. Remove the attribute \"xmlns\"."}},
    Entry{
        RuleId::MissingIdentity,
        {"missing-identity", Severity::Warning, kept,
         "The package has no uuid or no version, or one of blanks. The readers give empty texts; a "
         "package without uuid has no variant form, so that no module of the robot is told of it. "
         "Add the attributes to the root."}},
    Entry{
        RuleId::MissingAttribute,
        {"missing-attribute", Severity::Warning, kept,
         "An attribute that the element needs is missing or empty, such as the name or the command "
         "line of a service, or the purpose of a condition. The readers give an empty text, with "
         "which programs can do nothing. Add the attribute."}},
    Entry{
        RuleId::MissingElement,
        {"missing-element", Severity::Warning, kept,
         "An element that is needed is missing or empty, such as the locale of a language pack. "
         "The readers give an empty text, with which programs can do nothing. Add the element, or "
         "fill it."}},
    Entry{
        RuleId::UnknownElement,
        {"unknown-element", Severity::Warning, lost,
         "No reader knows the element here, so it is skipped with all that it holds. Names are "
         "case-sensitive. Correct the name or remove the element. The message has the name that is "
         "probably meant, if there is one that the place lacks."}},
    Entry{RuleId::MisplacedElement,
          {"misplaced-element", Severity::Warning, lost,
           "The format has the element, but in another place; here it is skipped with all that it "
           "holds. Move it into the element that the message names."}},
    Entry{RuleId::UnknownAttribute,
          {"unknown-attribute", Severity::Warning, lost,
           "No reader knows the attribute on this element, so it is skipped. Names are "
           "case-sensitive. Correct the name or remove the attribute. The message has the name "
           "that is "
           "probably meant, if there is one that the element lacks. Declarations of namespaces are "
           "no fault, nor is the place of a schema on the root, as in xsi:schemaLocation."}},
    Entry{RuleId::SkippedText,
          {"skipped-text", Severity::Warning, lost,
           "There is text where only elements are read, so it is skipped. Often it belongs into "
           "the element before or after it."}},
    Entry{RuleId::EmptyEntry,
          {"empty-entry", Severity::Warning, lost,
           "Among names, texts and languages every child counts, also a comment, a processing "
           "instruction or a stray text: the readers take it for an entry with an empty text and "
           "an empty language. Move it outside of the list, or into an entry."}},
    Entry{RuleId::InstructionAsElement,
          {"instruction-as-element", Severity::Warning, lost,
           "A processing instruction that is called like an element of this place is read as "
           "that element, without attributes and text. Rename or remove it."}},
    Entry{RuleId::UnusualName,
          {"unusual-name", Severity::Hint, kept,
           "Where names, texts and languages are listed, the readers do not look at the names of "
           "the elements. The writer uses the usual name. Rename the element, since other "
           "programs may look."}},
    Entry{
        RuleId::MarkupInText,
        {"markup-in-text", Severity::Hint, lost,
         "A text, or an element that says something by its presence, has elements within. The "
         "readers take all text in it together and drop the markup. Write &lt; where a text is to "
         "hold the character."}},
    Entry{RuleId::UnwritableCharacter,
          {"unwritable-character", Severity::Warning, lost,
           "A text or an attribute holds U+FFFD, which the readers put where bytes are no text "
           "in the file's encoding, or a character that XML cannot carry. What the file holds "
           "there is lost when it is written. Correct the bytes, or the encoding that the XML "
           "declaration names."}},
    Entry{RuleId::PresenceCounts,
          {"presence-counts", Severity::Warning, lost,
           "The element says yes by its presence, whatever it holds, also the text \"false\". "
           "Remove the element to say no, and its text to say yes."}},
    Entry{RuleId::RepeatedSection,
          {"repeated-section", Severity::Warning, kept,
           "A section comes several times. For PackageInfo the sections add up; for loadManifest "
           "the last one counts alone. Merge them into one."}},
    Entry{RuleId::RepeatedElement,
          {"repeated-element", Severity::Warning, lost,
           "An element that gives one value comes several times. What the later one gives replaces "
           "what the earlier gave. Keep one."}},
    Entry{
        RuleId::NeedlessRepeat,
        {"needless-repeat", Severity::Hint, kept,
         "An element that is meant to come once comes several times, such as the tags of a "
         "behavior, or an executable file is listed again. The readers take all of them, but other "
         "programs may take one, and the schemas refuse it of elements that are meant to come "
         "once. Merge them into one, or remove the file that is listed already."}},
    Entry{
        RuleId::SurroundingBlanks,
        {"surrounding-blanks", Severity::Warning, kept,
         "There are blanks around a language, a path, a version or one of a few known values. The "
         "readers keep them, so that it equals none without them: no program finds the language, "
         "the file or the value. Remove the blanks."}},
    Entry{RuleId::UnknownNature,
          {"unknown-nature", Severity::Warning, kept,
           "A value is none of those that programs know, such as a behavior's nature, which is "
           "\"interactive\" or \"solitary\". The readers keep it as it is. Correct it."}},
    Entry{RuleId::AutorunValue,
          {"autorun-value", Severity::Warning, lost,
           "\"autorun\" is yes for \"true\" only; any other value is no, also with other letters "
           "or with blanks, as in \"TRUE\". Write \"true\" or \"false\"."}},
    Entry{RuleId::AutorunOne,
          {"autorun-one", Severity::Warning, lost,
           "\"autorun\" is \"1\": loadManifest takes it for yes, PackageInfo for no. Write "
           "\"true\" or \"false\"."}},
    Entry{RuleId::DescriptionLanguages,
          {"description-languages", Severity::Off, kept,
           "Description languages are read by PackageInfo; loadManifest skips them. That is no "
           "fault, so it is reported on request only."}},
    Entry{RuleId::WebContent,
          {"web-content", Severity::Off, lost,
           "Web content is read by loadManifest, of several the last one; PackageInfo skips it "
           "and does not write it. That is no fault, so it is reported on request only, and by "
           "what rewrites a manifest."}},
    Entry{RuleId::UnsupportedPermission,
          {"unsupported-permission", Severity::Warning, lost,
           "A behavior can only have the permissions that the message lists; any other is "
           "skipped. Correct or remove it."}},
    Entry{RuleId::RepeatedPermission,
          {"repeated-permission", Severity::Warning, lost,
           "A behavior has each permission once; the repeated one is skipped. Remove it."}},
    Entry{RuleId::RepeatedLanguage,
          {"repeated-language", Severity::Warning, lost,
           "A language comes twice in one list. Of texts, the later replaces the earlier; of "
           "listed languages, PackageInfo keeps the first. Remove one or correct its language."}},
    Entry{
        RuleId::EmptyLanguage,
        {"empty-language", Severity::Warning, kept,
         "An entry has no language, an empty one or one of blanks. It is kept under that, where no "
         "program looks for it; of a dialog's topics it is not written. Give it a language."}},
    Entry{
        RuleId::LanguageForm,
        {"language-form", Severity::Warning, kept,
         "A language is given in another form than codes have, as \"English\" instead of \"en\". "
         "The readers keep it as it is, and no program that looks for a language's code finds it. "
         "Write two or three letters and, where it matters, the script or country, as in \"en_US\" "
         "or \"zh-Hant-TW\"; \"x-\" begins a code of one's own."}},
    Entry{RuleId::MixedLanguageCodes,
          {"mixed-language-codes", Severity::Warning, kept,
           "Some language codes are written with \"-\" and others with \"_\". Codes are compared "
           "byte for byte, so that \"en-US\" and \"en_US\" are two languages. Use one form."}},
    Entry{RuleId::UnlistedLanguage,
          {"unlisted-language", Severity::Warning, kept,
           "A name or description is in a language that begins with none of the description "
           "languages, or a tag, trigger sentence or loading response in one that begins with "
           "none of the supported languages. It is dropped when the package is trimmed. List the "
           "language or remove the text."}},
    Entry{RuleId::UnnamedLanguage,
          {"unnamed-language", Severity::Warning, kept,
           "A description language has no name of the package. Programs show an empty name in "
           "this language. Add a name or remove the language."}},
    Entry{RuleId::EmptyText,
          {"empty-text", Severity::Hint, lost,
           "A text is empty or of blanks only. It is read as an empty text, and not written "
           "back. Fill or remove it."}},
    Entry{RuleId::EmptyTopic,
          {"empty-topic", Severity::Warning, kept,
           "A dialog has no topic name. It is read with an empty one, by which nothing finds it. "
           "Add the attribute topicName."}},
    Entry{
        RuleId::DialogWithoutTopics,
        {"dialog-without-topics", Severity::Warning, kept,
         "A dialog has no topics. It is read and written, but there is nothing to say in it in any "
         "language. Add a topic for each language, or remove the dialog."}},
    Entry{RuleId::UnwrittenTopic,
          {"unwritten-topic", Severity::Hint, lost,
           "A dialog's topic has no language or no path. It is read, but not written back. Give "
           "it both."}},
    Entry{
        RuleId::RepeatedBehavior,
        {"repeated-behavior", Severity::Warning, kept,
         "Two behaviors have one path. The readers keep both; programs that find a behavior by its "
         "path find one of them. Correct a path, or remove a behavior."}},
    Entry{RuleId::RepeatedTopic,
          {"repeated-topic", Severity::Warning, kept,
           "Two dialogs have one topic name. The readers keep both; programs that find a dialog by "
           "its topic find one of them. Correct a name, or make one dialog of them."}},
    Entry{
        RuleId::RepeatedService,
        {"repeated-service", Severity::Warning, kept,
         "Two services have one name. The readers keep both; programs that start a service by its "
         "name find one of them. Correct a name, or remove a service."}},
    Entry{RuleId::EmptyPath,
          {"empty-path", Severity::Warning, kept,
           "A path is missing, empty or of blanks only. It is read so; of a dialog's topics it is "
           "not written when it is empty. Say where in the package the file or folder is."}},
    Entry{RuleId::PathOutsidePackage,
          {"path-outside-package", Severity::Warning, kept,
           "A path is absolute, leaves the package with \"..\", or has backslashes or the letter "
           "of a "
           "drive, as no robot has. The readers keep it as it is; programs that follow it reach "
           "files "
           "of somebody else, or none. Make it relative to the package's "
           "folder. Where symbolic links lead is not looked at."}},
    Entry{
        RuleId::MissingFile,
        {"missing-file", Severity::Warning, kept,
         "The package's folder has no file or folder of this path, or no program that a service's "
         "command line begins with. The readers do not look. Correct the path or add the file. A "
         "topic's path may lack the file's extension. Symbolic links are followed, wherever they "
         "lead."}},
    Entry{RuleId::ReversedVersions,
          {"reversed-versions", Severity::Warning, kept,
           "A minimum version is above its maximum, so that nothing meets the requirement. The "
           "readers do not compare them. Versions are compared number by number; others than "
           "numbers are not looked at."}},
    Entry{
        RuleId::RepeatedUuid,
        {"repeated-uuid", Severity::Warning, kept,
         "Another package in the same folder has this uuid. Each manifest reads well alone, but a "
         "robot tells packages apart by their uuids, so that one hides the other. Give the copy a "
         "uuid of its own. Only whoever checks a whole folder can find this."}},
    Entry{RuleId::NotKept,
          {"not-kept", Severity::Off, lost,
           "Comments, processing instructions, the document type and declarations of namespaces "
           "and schemas are not kept when a manifest is read and written. That is no fault, so "
           "it is reported on request only, and by what rewrites a manifest."}},
};

constexpr std::size_t count = table.size();

constexpr bool isInOrder()
{
  for (std::size_t i = 0; i < count; ++i)
  {
    if (static_cast<std::size_t>(table[i].id) != i)
    {
      return false;
    }
  }
  return count == static_cast<std::size_t>(RuleId::Count);
}
static_assert(isInOrder(), "the table has the rules in the order of their names");
} // namespace

const std::vector<Rule>& rules()
{
  static const std::vector<Rule> all = []
  {
    std::vector<Rule> list;
    list.reserve(count);
    for (const Entry& entry : table)
    {
      list.push_back(entry.rule);
    }
    return list;
  }();
  return all;
}

const Rule* findRule(const std::string& tag)
{
  const auto found = std::find_if(rules().begin(), rules().end(),
                                  [&tag](const Rule& rule) { return rule.tag == tag; });
  return found == rules().end() ? nullptr : &*found;
}

const Rule& ruleOf(RuleId id) { return rules()[static_cast<std::size_t>(id)]; }

Severity askedFor(const Rule& rule, const Options& options)
{
  const auto asked = options.severities.find(rule.tag);
  return asked == options.severities.end() ? rule.severity : asked->second;
}

const char* nameOf(Severity severity)
{
  switch (severity)
  {
  case Severity::Off:
    return "off";
  case Severity::Hint:
    return "hint";
  case Severity::Warning:
    return "warning";
  case Severity::Error:
    break;
  }
  return "error";
}

} // namespace vesk::check
