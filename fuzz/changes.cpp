// SPDX-License-Identifier: Apache-2.0
// Changes of manifests as edits of their text. What is changed in a manifest, and how, follows from
// its bytes.
#include "manifestparts.hpp"
#include "support.hpp"

#include <edit/changes.hpp>
#include <source/document.hpp>

#include <algorithm>
#include <numeric>

using namespace vesk::edit;
using vesk::AnyConstReference;
using vesk::AnyReference;

namespace
{
/// Numbers that differ when a manifest differs.
class Choice
{
public:
  explicit Choice(const std::string& bytes)
      : state(std::accumulate(bytes.begin(), bytes.end(), std::uint64_t{1},
                              [](std::uint64_t sum, char byte)
                              { return sum * 31 + static_cast<unsigned char>(byte); }))
  {}

  std::size_t below(std::size_t limit)
  {
    state = state * 6364136223846793005U + 1442695040888963407U;
    return static_cast<std::size_t>(state >> 33U) % limit;
  }

private:
  std::uint64_t state;
};

void changePart(Manifest& manifest, const FieldPath& path, Choice& choice)
{
  static const std::vector<std::string> texts{
      "x",      "",           " ",       "a\nb",
      "a\r\nb", "]]>",        "<&>\"'",  "\xC3\xA9\xF0\x9F\xA4\x96",
      "en_US",  "canSitDown", "\t x \n", "\x01"};
  if (choice.below(3) == 0)
  {
    unsetFields(manifest, {path});
    return;
  }
  const AnyReference part = partAt(manifest, path);
  const vesk::TypeKind kind = part.type()->kind();
  if (part.is<std::string>())
  {
    part.set(texts[choice.below(texts.size())]);
  }
  else if (part.is<bool>())
  {
    part.set(!part.as<bool>());
  }
  else if (kind == vesk::TypeKind::List)
  {
    const vesk::AnyValue element(part.append());
    part.insert(choice.below(part.size()), element);
  }
  else if (kind == vesk::TypeKind::Map && part.size() > 0)
  {
    const vesk::AnyValue entry(part.entries().front().second);
    part.insert(texts[choice.below(texts.size())], entry);
  }
}

/// Whether an element of a list has become like another one was. Then that may have been moved there, and
/// what is no field has gone with the one that stood there.
bool mayHaveMoved(const Manifest& before, const Manifest& after)
{
  const AnyConstReference fields(before);
  for (std::size_t member = 0; member < fields.memberNames().size(); ++member)
  {
    const AnyConstReference was = fields.member(member);
    const AnyConstReference is = AnyConstReference(after).member(member);
    const bool isList = was.type()->kind() == vesk::TypeKind::List;
    for (std::size_t i = 0; isList && i < std::min(was.size(), is.size()); ++i)
    {
      const std::vector<AnyConstReference> all = was.elements();
      if (is.element(i) != was.element(i) &&
          std::find(all.begin(), all.end(), is.element(i)) != all.end())
      {
        return true;
      }
    }
  }
  return false;
}

/// Nothing where the change is refused, with a reason.
std::optional<std::string> changedText(const std::string& bytes, const Manifest& before,
                                       const Manifest& after)
{
  try
  {
    return changed(bytes, before, after);
  }
  catch (const Refusal& refusal)
  {
    require(std::string(refusal.what()).size() > 10, "a refusal says why");
    return std::nullopt;
  }
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  const std::string bytes = textOf(data, size);
  vesk::LoadError error;
  const std::optional<Manifest> before = readManifest(bytes, error);
  if (!before)
  {
    return 0;
  }
  require(changed(bytes, *before, *before) == bytes, "no change changes nothing");
  Choice choice(bytes);
  Manifest after = *before;
  bool isWithinTexts = true; // else what is in the element of a removed record or flag goes with it
  for (std::size_t count = choice.below(4) + 1; count > 0; --count)
  {
    const std::vector<FieldPath> parts = partsOf(after);
    const FieldPath& path = parts[choice.below(parts.size())];
    isWithinTexts = isWithinTexts && partAt(after, path).is<std::string>();
    changePart(after, path, choice);
  }
  const std::optional<std::string> result = changedText(bytes, *before, after);
  if (!result || *result == bytes)
  {
    return 0;
  }
  require(!vesk::source::Document::parse(*result).error(), "well-formed after a change");
  require(!isWithinTexts || mayHaveMoved(*before, after) || asidesIn(*result) == asidesIn(bytes),
          "comments and the like stay");
  changedText(*result, readManifest(*result, error).value(), *before);
  return 0;
}
