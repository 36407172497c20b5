// SPDX-License-Identifier: Apache-2.0
#include <edit/changes.hpp>
#include <edit/newelements.hpp>
#include <edit/textchange.hpp>
#include <edit/unheld.hpp>
#include <source/document.hpp>

#include <algorithm>

namespace vesk::edit
{
namespace
{
/// Whether it makes no difference: no text holds that there is nothing under a key.
bool isNothing(const Difference& difference)
{
  const AnyConstReference& wanted = difference.before.value;
  return wanted.isValid() && !difference.after.value.isValid() &&
         wanted.type()->kind() == TypeKind::List && wanted.size() == 0;
}

/// Whether more was read than was wanted, but only an empty entry.
bool isEmptyEntry(const Difference& difference)
{
  const auto isEmpty = [](const AnyConstReference& text)
  { return text.is<std::string>() && text.as<std::string>().empty(); };
  const AnyConstReference& read = difference.after.value;
  if (difference.before.value.isValid() || !read.isValid())
  {
    return false;
  }
  if (read.type()->kind() == TypeKind::List)
  {
    const auto elements = read.elements();
    return std::all_of(elements.begin(), elements.end(), isEmpty);
  }
  return isEmpty(read);
}

[[noreturn]] void refuseStaying(const TextChange::StayingEntry& entry,
                                const source::Document& document)
{
  using source::Kind;
  const Kind kind = entry.node->kind();
  const std::string what = kind == Kind::Comment       ? "comment"
                           : kind == Kind::Instruction ? "instruction"
                                                       : "text";
  throw Refusal(entry.field + ": readers take this " + what +
                    " for an empty entry; keep that entry, or remove the " + what + " by hand",
                source::Lines(document.text()).placeOf(entry.node->range().begin));
}

std::string applied(TextChange& change)
{
  try
  {
    return change.apply();
  }
  catch (const std::runtime_error& error) // of an encoding that does not give back its bytes
  {
    throw Refusal(error.what());
  }
}

/// Throws unless the text is read as wanted.
void prove(const std::string& bytes, const Manifest& wanted, bool mayHaveEmptyEntries)
{
  LoadError error;
  const std::optional<Manifest> read = readManifest(bytes, error);
  if (!read)
  {
    throw Refusal("the changed text would not be read: " + error.message);
  }
  if (AnyConstReference(*read) == AnyConstReference(wanted))
  {
    return;
  }
  for (const Difference& difference :
       differences(AnyConstReference(wanted), AnyConstReference(*read)))
  {
    if (!isNothing(difference) && !(mayHaveEmptyEntries && isEmptyEntry(difference)))
    {
      throw Refusal(whyUnheld(wanted, difference));
    }
  }
}
} // namespace

std::string changed(const std::string& bytes, const Manifest& before, const Manifest& after,
                    CommentEntries comments)
{
  if (AnyConstReference(before) == AnyConstReference(after))
  {
    return bytes;
  }
  const source::Document document = source::Document::parse(bytes);
  if (const auto& error = document.error())
  {
    throw Refusal(error->message, source::Lines(document.text()).placeOf(error->range.begin));
  }
  TextChange change(document);
  try
  {
    change.change(before, after);
    const auto& staying = change.stayingEntries();
    if (!staying.empty() && comments == CommentEntries::Refuse)
    {
      refuseStaying(staying.front(), document);
    }
    std::string result = applied(change);
    prove(result, after, !staying.empty());
    return result;
  }
  catch (const UnwritableText& fault)
  {
    throw Refusal(toText(pathTo(fault.text, before, after)) + ": " + fault.what());
  }
}

} // namespace vesk::edit
