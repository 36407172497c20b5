// SPDX-License-Identifier: Apache-2.0
#include <check/confusions.hpp>
#include <format/nearest.hpp>

#include <algorithm>
#include <array>
#include <string_view>

namespace vesk::check
{
namespace
{
struct Confusion
{
  std::string_view written; ///< in lower case
  std::string_view meant;   ///< an attribute or an element
};

constexpr std::array confusions{
    // languages
    Confusion{"language", "lang"},
    Confusion{"locale", "lang"},
    Confusion{"xml:lang", "lang"},
    Confusion{"lang", "language"},
    Confusion{"locale", "language"},
    Confusion{"xml:lang", "language"},
    Confusion{"lang", "locale"},
    Confusion{"language", "locale"},
    // attributes of the root
    Confusion{"id", "uuid"},
    Confusion{"identifier", "uuid"},
    Confusion{"guid", "uuid"},
    Confusion{"creator", "author"},
    Confusion{"maker", "author"},
    Confusion{"company", "organization"},
    Confusion{"vendor", "organization"},
    Confusion{"created", "date"},
    Confusion{"released", "date"},
    Confusion{"formatversion", "typeVersion"},
    Confusion{"schemaversion", "typeVersion"},
    // other attributes
    Confusion{"src", "path"},
    Confusion{"file", "path"},
    Confusion{"filename", "path"},
    Confusion{"folder", "path"},
    Confusion{"dir", "path"},
    Confusion{"directory", "path"},
    Confusion{"href", "path"},
    Confusion{"url", "path"},
    Confusion{"location", "path"},
    Confusion{"name", "topicName"},
    Confusion{"topic", "topicName"},
    Confusion{"title", "name"},
    Confusion{"id", "name"},
    Confusion{"command", "execStart"},
    Confusion{"commandline", "execStart"},
    Confusion{"cmd", "execStart"},
    Confusion{"exec", "execStart"},
    Confusion{"executable", "execStart"},
    Confusion{"run", "execStart"},
    Confusion{"auto", "autorun"},
    Confusion{"autostart", "autorun"},
    Confusion{"for", "purpose"},
    Confusion{"type", "purpose"},
    Confusion{"name", "model"},
    Confusion{"robot", "model"},
    Confusion{"type", "model"},
    Confusion{"from", "minVersion"},
    Confusion{"min", "minVersion"},
    Confusion{"minimum", "minVersion"},
    Confusion{"minimumversion", "minVersion"},
    Confusion{"max", "maxVersion"},
    Confusion{"maximum", "maxVersion"},
    Confusion{"maximumversion", "maxVersion"},
    Confusion{"to", "maxVersion"},
    Confusion{"min", "minHeadVersion"},
    Confusion{"min", "minBodyVersion"},
    Confusion{"minversion", "minHeadVersion"},
    Confusion{"minversion", "minBodyVersion"},
    Confusion{"max", "maxHeadVersion"},
    Confusion{"max", "maxBodyVersion"},
    Confusion{"maxversion", "maxHeadVersion"},
    Confusion{"maxversion", "maxBodyVersion"},
    // elements
    Confusion{"languages", "supportedLanguages"},
    Confusion{"dependencies", "requirements"},
    Confusion{"requires", "requirements"},
    Confusion{"binaries", "executableFiles"},
    Confusion{"executables", "executableFiles"},
    Confusion{"files", "executableFiles"},
    Confusion{"executable", "file"},
    Confusion{"behavior", "behaviorContent"},
    Confusion{"behaviors", "behaviorContent"},
    Confusion{"behaviour", "behaviorContent"},
    Confusion{"behaviours", "behaviorContent"},
    Confusion{"dialog", "dialogContent"},
    Confusion{"dialogs", "dialogContent"},
    Confusion{"dialogue", "dialogContent"},
    Confusion{"languagepack", "languageContent"},
    Confusion{"web", "webContent"},
    Confusion{"requestable", "userRequestable"},
    Confusion{"kind", "nature"},
    Confusion{"type", "nature"},
    Confusion{"keywords", "tags"},
    Confusion{"sentences", "triggerSentences"},
    Confusion{"triggers", "triggerSentences"},
    Confusion{"responses", "loadingResponses"},
    Confusion{"conditions", "autonomous"},
    Confusion{"mirel", "mirelRequirement"},
    Confusion{"robot", "robotRequirement"},
};

/// Whether one name becomes the other, in lower case both, where two letters beside each other are
/// swapped or, in names that are not so short that this makes another word, one letter is added,
/// dropped or replaced.
bool isSlip(const QString& left, const QString& right)
{
  constexpr int longestShort = 5;
  const auto [first, other] = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
  const auto most = static_cast<int>(std::min(left.end() - first, right.end() - other));
  int behind = 0; // so many letters at the end are the same
  while (behind < most && *(left.end() - 1 - behind) == *(right.end() - 1 - behind))
  {
    ++behind;
  }
  const auto leftSize = left.end() - behind - first;
  const auto rightSize = right.end() - behind - other;
  const bool isSwap =
      leftSize == 2 && rightSize == 2 && first[0] == other[1] && first[1] == other[0];
  return isSwap ||
         (leftSize <= 1 && rightSize <= 1 && std::max(left.size(), right.size()) > longestShort);
}

QLatin1String inQt(std::string_view name)
{
  return QLatin1String(name.data(), static_cast<int>(name.size()));
}

std::vector<QString> nearestOf(const QString& written, const std::vector<QString>& known)
{
  std::vector<std::string> names(known.size());
  std::transform(known.begin(), known.end(), names.begin(),
                 [](const QString& name) { return name.toStdString(); });
  std::vector<QString> found;
  for (const std::string& name : format::nearest(written.toStdString(), names))
  {
    found.push_back(QString::fromStdString(name));
  }
  return found;
}

/// What is usually written for some names.
std::vector<QString> usuallyWrittenFor(const std::vector<QString>& known)
{
  std::vector<QString> written;
  for (const Confusion& confusion : confusions)
  {
    if (std::find(known.begin(), known.end(), inQt(confusion.meant)) != known.end())
    {
      written.emplace_back(inQt(confusion.written));
    }
  }
  return written;
}
} // namespace

std::vector<QString> usuallyMeant(const QString& written, const std::vector<QString>& known)
{
  const QString lower = written.toLower();
  std::vector<QString> meant;
  for (const Confusion& confusion : confusions)
  {
    const QLatin1String name = inQt(confusion.meant);
    if (lower == inQt(confusion.written) &&
        std::find(known.begin(), known.end(), name) != known.end())
    {
      meant.emplace_back(name);
    }
  }
  return meant;
}

std::vector<QString> probablyMeant(const QString& written, const std::vector<QString>& known)
{
  const auto same =
      std::find_if(known.begin(), known.end(),
                   [&written](const QString& name) { return isOtherCase(written, name); });
  if (same != known.end())
  {
    return {*same};
  }
  std::vector<QString> meant = usuallyMeant(written, known);
  if (!meant.empty() || written.contains(':')) // a name of another vocabulary
  {
    return meant;
  }
  meant = nearestOf(written, known);
  if (!meant.empty())
  {
    return meant;
  }
  const std::vector<QString> usual = nearestOf(written, usuallyWrittenFor(known));
  return usual.empty() ? usual : usuallyMeant(usual.front(), known);
}

bool isSurelyMeant(const QString& written, const QString& name)
{
  return isOtherCase(written, name) || isSlip(written.toLower(), name.toLower()) ||
         !usuallyMeant(written, {name}).empty();
}

} // namespace vesk::check
