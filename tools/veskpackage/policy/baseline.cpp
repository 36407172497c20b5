// SPDX-License-Identifier: Apache-2.0
#include "policy/baseline.hpp"

#include "files/manifestfile.hpp"
#include "output/checkedfile.hpp"
#include "policy/absolutepath.hpp"
#include "policy/filefault.hpp"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <numeric>
#include <system_error>

namespace tool
{

namespace filesystem = std::filesystem;

using vesk::check::Finding;
using Json = nlohmann::ordered_json;

namespace
{
constexpr int formatVersion = 1;
constexpr int mostBaselineMebibytes = 256;
constexpr const char* standardInput = "<stdin>";
/// What is found by this rule depends on which other files are checked; its message has the path of
/// one, as that was named.
constexpr const char* ruleOfSeveral = "repeated-uuid";

/// Nothing is known of what was not checked for the most part.
bool isUnread(const Finding& finding)
{
  return finding.rule->severity == vesk::check::Severity::Error;
}

/// The folder of a file, wherever links lead to on the way: a baseline holds however it is named.
filesystem::path resolvedFolder(const std::string& path)
{
  const filesystem::path parent = filesystem::path(absolutePath(path)).parent_path();
  std::error_code unknown;
  const filesystem::path resolved = filesystem::canonical(parent, unknown);
  return unknown ? parent : resolved;
}

/// Bytes that are no text in UTF-8 cannot be in a baseline; U+FFFD stands for them.
std::string asText(const std::string& bytes) { return QString::fromStdString(bytes).toStdString(); }

/// Tag, place without numbers, message.
std::tuple<std::string, std::string, std::string> knownAs(const Finding& finding)
{
  const std::string tag = finding.rule->tag;
  return {tag, withoutNumbers(finding.place), tag == ruleOfSeveral ? "" : finding.message};
}

template <typename Map>
std::size_t sum(const Map& counts)
{
  return std::accumulate(counts.begin(), counts.end(), std::size_t{0},
                         [](std::size_t before, const auto& count)
                         { return before + count.second; });
}
} // namespace

Baseline::Baseline(const std::string& fileToRead, const std::string& fileToWrite)
    : file(fileToRead.empty() ? fileToWrite : fileToRead), isWritten(!fileToWrite.empty())
{
  folder = resolvedFolder(file);
  if (!fileToRead.empty())
  {
    read();
  }
}

std::string Baseline::nameOf(const std::string& manifest)
{
  const filesystem::path path(manifest);
  if (isFirst || path.parent_path() != lastFolder)
  {
    isFirst = false;
    lastFolder = path.parent_path();
    lastResolved = resolvedFolder(manifest);
  }
  return asText((lastResolved / path.filename()).lexically_relative(folder).generic_string());
}

void Baseline::read()
{
  std::string trouble;
  const std::optional<std::string> text = readBytes(file, trouble, mostBaselineMebibytes);
  if (!text)
  {
    throw FileFault(file, trouble);
  }
  try
  {
    const Json content = Json::parse(*text);
    const Json& version = content.at("version");
    const Json& findings = content.at("findings");
    if (version != formatVersion)
    {
      throw FileFault(file, "a baseline of version " + version.dump() + "; known is version 1");
    }
    for (const Json& entry : findings.get_ref<const Json::array_t&>())
    {
      all[entry.at("file")][{entry.at("tag"), entry.at("place"), entry.at("message")}] +=
          entry.contains("count") ? entry.at("count").get_ref<const Json::number_unsigned_t&>() : 1;
    }
  }
  catch (const Json::parse_error& error)
  {
    const std::size_t offset = error.byte == 0 ? 0 : error.byte - 1;
    throw FileFault(file, vesk::source::Lines(*text).placeOf(offset), "no JSON");
  }
  catch (const Json::exception&)
  {
    throw FileFault(file, "no baseline as --write-baseline writes it");
  }
}

void Baseline::take(const std::string& manifest, std::vector<Finding>& findings)
{
  if (file.empty() || std::any_of(findings.begin(), findings.end(), isUnread))
  {
    return;
  }
  const std::string name = manifest == "-" ? standardInput : nameOf(manifest);
  if (isWritten)
  {
    Counts counts;
    for (const Finding& finding : findings)
    {
      ++counts[knownAs(finding)];
    }
    countTaken += findings.size();
    all[name] = std::move(counts);
    findings.clear();
    return;
  }
  const auto known = all.find(name);
  Counts counts = known == all.end() ? Counts() : known->second;
  const auto isKnown = [&counts](const Finding& finding)
  {
    const auto count = counts.find(knownAs(finding));
    if (count == counts.end() || count->second == 0)
    {
      return false;
    }
    --count->second;
    return true;
  };
  const std::size_t countFound = findings.size();
  findings.erase(std::remove_if(findings.begin(), findings.end(), isKnown), findings.end());
  countTaken += countFound - findings.size();
  for (auto& [finding, count] : counts)
  {
    count = std::get<0>(finding) == ruleOfSeveral ? 0 : count;
  }
  left[name] = std::move(counts);
}

bool Baseline::save(std::ostream& complaints)
{
  isSaved = writeFile(text(), file, complaints, complaints);
  return isSaved;
}

std::string Baseline::text() const
{
  std::string entries;
  for (const auto& [name, counts] : all)
  {
    for (const auto& [known, count] : counts)
    {
      const auto& [tag, place, message] = known;
      Json entry{{"file", name}, {"tag", tag}, {"place", place}, {"message", message}};
      if (count != 1)
      {
        entry["count"] = count;
      }
      entries.append(entries.empty() ? "\n" : ",\n").append(entry.dump());
    }
  }
  return "{\"version\":" + std::to_string(formatVersion) + ",\"findings\":[" + entries + "\n]}\n";
}

std::string Baseline::summary() const
{
  if (file.empty() || (isWritten && !isSaved))
  {
    return "";
  }
  const std::string taken =
      std::to_string(countTaken) + (countTaken == 1 ? " finding" : " findings");
  if (isWritten)
  {
    return "; " + taken + " written to " + file;
  }
  const std::size_t gone = countGone();
  return "; " + taken + " of " + file + " passed" +
         (gone == 0 ? "" : ", " + std::to_string(gone) + " can be dropped");
}

std::size_t Baseline::countGone() const
{
  std::size_t gone = 0;
  for (const auto& [name, counts] : all)
  {
    const auto checked = left.find(name);
    std::error_code unknown;
    if (checked != left.end())
    {
      gone += sum(checked->second);
    }
    else if (name != standardInput && !filesystem::exists(folder / name, unknown) && !unknown)
    {
      gone += sum(counts);
    }
  }
  return gone;
}

} // namespace tool
