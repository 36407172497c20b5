// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_RULES_HPP
#define CHECK_RULES_HPP

#include <check/manifestcheck.hpp>

namespace vesk::check
{

/// Names the entries of the table in rules.cpp, in its order.
enum class RuleId
{
  Unreadable,
  NotWellFormed,
  BeyondLimits,
  NotStrict,
  UnknownEncoding,
  RootName,
  DefaultNamespace,
  MissingIdentity,
  MissingAttribute,
  MissingElement,
  UnknownElement,
  MisplacedElement,
  UnknownAttribute,
  SkippedText,
  EmptyEntry,
  InstructionAsElement,
  UnusualName,
  MarkupInText,
  UnwritableCharacter,
  PresenceCounts,
  RepeatedSection,
  RepeatedElement,
  NeedlessRepeat,
  SurroundingBlanks,
  UnknownNature,
  AutorunValue,
  AutorunOne,
  DescriptionLanguages,
  WebContent,
  UnsupportedPermission,
  RepeatedPermission,
  RepeatedLanguage,
  EmptyLanguage,
  LanguageForm,
  MixedLanguageCodes,
  UnlistedLanguage,
  UnnamedLanguage,
  EmptyText,
  EmptyTopic,
  DialogWithoutTopics,
  UnwrittenTopic,
  RepeatedBehavior,
  RepeatedTopic,
  RepeatedService,
  EmptyPath,
  PathOutsidePackage,
  MissingFile,
  ReversedVersions,
  RepeatedUuid,
  NotKept,
  Count
};

const Rule& ruleOf(RuleId id);

/// The severity that the options ask for.
Severity askedFor(const Rule& rule, const Options& options);

} // namespace vesk::check

#endif
