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
  RootName,
  MissingIdentity,
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
  AutorunValue,
  AutorunOne,
  DescriptionLanguages,
  WebContent,
  UnsupportedPermission,
  RepeatedPermission,
  RepeatedLanguage,
  EmptyLanguage,
  MixedLanguageCodes,
  UnlistedLanguage,
  UnnamedLanguage,
  EmptyText,
  EmptyTopic,
  UnwrittenTopic,
  EmptyPath,
  PathOutsidePackage,
  MissingFile,
  ReversedVersions,
  RepeatedUuid,
  NotKept,
  Count
};

const Rule& ruleOf(RuleId id);

} // namespace vesk::check

#endif
