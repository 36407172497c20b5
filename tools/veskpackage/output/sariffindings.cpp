// SPDX-License-Identifier: Apache-2.0
#include "output/filelocation.hpp"
#include "output/findingwriter.hpp"

#include <QCryptographicHash>
#include <nlohmann/json.hpp>

#include <map>
#include <string_view>

namespace tool
{

using Json = nlohmann::ordered_json;
using vesk::check::Finding;
using vesk::check::Mend;
using vesk::check::Position;
using vesk::check::Rule;
using vesk::check::Severity;

namespace
{
/// What root the relative paths have is up to who takes the results in.
constexpr const char* root = "%SRCROOT%";
/// Of what was found, so that no whole section is repeated.
constexpr std::size_t mostOfSnippet = 1000;

std::string dumped(const Json& json)
{
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

const char* levelOf(Severity severity)
{
  return severity == Severity::Error ? "error" : severity == Severity::Warning ? "warning" : "note";
}

/// A message has placeholders in braces, and links as in [text](target).
Json messageOf(const std::string& text)
{
  const bool canHoldLink = text.find("](") != std::string::npos;
  std::string escaped;
  for (const char c : text)
  {
    const bool isBrace = c == '{' || c == '}';
    const bool isOfLink = canHoldLink && (c == '\\' || c == '[' || c == ']');
    escaped += isBrace ? std::string(1, c) : isOfLink ? "\\" : "";
    escaped += c;
  }
  return {{"text", escaped}};
}

/// The text as it is, without what looks like markup.
std::string inMarkdown(const std::string& text)
{
  std::string result;
  for (const char c : text)
  {
    result += std::string_view("\\`*_{}[]<>#|&").find(c) == std::string_view::npos ? "" : "\\";
    result += c;
  }
  return result;
}

Json ruleOf(const Rule& rule)
{
  const std::string explanation = rule.explanation;
  const Json text{{"text", explanation}};
  Json tags{"manifest"};
  if (rule.isLost)
  {
    tags.push_back("lost-when-written");
  }
  const char* const problem =
      rule.severity >= Severity::Warning ? levelOf(rule.severity) : "recommendation";
  Json configuration{{"level", levelOf(rule.severity)}};
  if (rule.severity == Severity::Off)
  {
    configuration["enabled"] = false;
  }
  return {{"id", rule.tag},
          {"shortDescription", {{"text", explanation.substr(0, explanation.find(". ")) + '.'}}},
          {"fullDescription", text},
          {"help", {{"text", explanation}, {"markdown", inMarkdown(explanation)}}},
          {"defaultConfiguration", configuration},
          {"properties", {{"tags", tags}, {"problem.severity", problem}}}};
}

Json toolComponent()
{
  Json rules = Json::array();
  for (const Rule& rule : vesk::check::rules())
  {
    rules.push_back(ruleOf(rule));
  }
  return {{"driver",
           {{"name", "veskpackage"},
            {"version", VESKPACKAGE_VERSION},
            {"semanticVersion", VESKPACKAGE_VERSION},
            {"rules", std::move(rules)}}}};
}

Json regionOf(const Position& begin, const Position& end)
{
  return {{"startLine", begin.line},
          {"startColumn", begin.utf16Column},
          {"endLine", end.line},
          {"endColumn", end.utf16Column}};
}

/// What kind of a node a place leads to.
const char* kindOf(const std::string& place)
{
  const std::string last = place.substr(place.rfind('/') + 1);
  const auto begins = [&last](std::string_view with) { return last.rfind(with, 0) == 0; };
  return begins("@")                        ? "attribute"
         : begins("comment()")              ? "comment"
         : begins("text()")                 ? "text"
         : begins("processing-instruction") ? "processingInstruction"
                                            : "element";
}

/// The findings of one file.
class Results
{
public:
  Results(const CheckedFile& checked, const std::string& folder) : file(checked)
  {
    const std::string path = pathBelow(folder, file.name);
    if (path.front() == '/')
    {
      artifact = {{"uri", "file://" + uriOf(path)}};
    }
    else
    {
      artifact = {{"uri", uriOf(path)}, {"uriBaseId", root}};
    }
  }

  Json of(const Finding& finding)
  {
    const auto index = finding.rule - vesk::check::rules().data();
    Json result{{"ruleId", finding.rule->tag},
                {"ruleIndex", index},
                {"level", levelOf(finding.severity)},
                {"message", messageOf(finding.message)},
                {"locations", Json::array({locationOf(finding)})},
                {"partialFingerprints", {{"finding/v1", fingerprintOf(finding)}}}};
    if (finding.mend)
    {
      result["fixes"] = Json::array({fixFor(*finding.mend)});
    }
    return result;
  }

private:
  Json locationOf(const Finding& finding) const
  {
    Json physical{{"artifactLocation", artifact}};
    if (hasPlace(finding))
    {
      physical["region"] = regionOf(finding.begin, finding.end);
      const std::string_view found = file.text(finding);
      if (!found.empty() && found.size() <= mostOfSnippet)
      {
        physical["region"]["snippet"]["text"] = found;
      }
    }
    Json location{{"physicalLocation", std::move(physical)}};
    if (!finding.place.empty())
    {
      location["logicalLocations"] =
          Json::array({{{"fullyQualifiedName", finding.place}, {"kind", kindOf(finding.place)}}});
    }
    return location;
  }

  /// The same where the file has changed elsewhere: of no line, but of what was found there. Where
  /// several findings of a file are alike, they are counted.
  std::string fingerprintOf(const Finding& finding)
  {
    constexpr std::size_t mostOfLine = 100;
    std::string_view found = file.text(finding);
    if (found.empty() && hasExactPlace(finding) && finding.begin.offset < file.text().size())
    {
      found = file.text().substr(finding.begin.offset, mostOfLine);
      found = found.substr(0, found.find_first_of("\r\n"));
    }
    const std::string place = withoutNumbers(finding.place);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const std::string_view part :
         {std::string_view(finding.rule->tag), std::string_view(place), found})
    {
      hash.addData(part.data(), static_cast<int>(part.size()));
      hash.addData("\n", 1);
    }
    const std::string digest = hash.result().toHex().left(32).toStdString();
    return digest + ':' + std::to_string(++alike[digest]);
  }

  Json fixFor(const Mend& mend) const
  {
    Json replacements = Json::array();
    for (const vesk::source::Edit& edit : mend.edits)
    {
      replacements.push_back({{"deletedRegion", regionOf(file.positionOf(edit.range.begin),
                                                         file.positionOf(edit.range.end))},
                              {"insertedContent", {{"text", file.inFile(edit.text)}}}});
    }
    Json change{{"artifactLocation", artifact}, {"replacements", std::move(replacements)}};
    return {{"description", messageOf(mend.title)},
            {"artifactChanges", Json::array({std::move(change)})}};
  }

  const CheckedFile& file;
  Json artifact;
  std::map<std::string, int> alike;
};

class SarifWriter : public FindingWriter
{
public:
  explicit SarifWriter(const WriterOptions& options) : folder(options.root) {}

  void begin(std::ostream& out) override
  {
    const Json bases{
        {root, {{"description", {{"text", "The folder to which paths are relative."}}}}}};
    out << R"({"$schema":"https://json.schemastore.org/sarif-2.1.0.json","version":"2.1.0","runs":[{)"
        << R"("tool":)" << dumped(toolComponent()) << R"(,"columnKind":"utf16CodeUnits")"
        << R"(,"originalUriBaseIds":)" << dumped(bases) << ",\"results\":[";
  }

  void write(const CheckedFile& file, std::ostream& out) override
  {
    Results results(file, folder);
    for (const Finding& finding : file.findings)
    {
      const std::string result = dumped(results.of(finding)); // whole, if memory runs out
      out << separator << result;
      separator = ",\n";
    }
  }

  void end(std::ostream& out) override { out << "\n]}]}\n"; }

private:
  const std::string folder;
  const char* separator = "\n";
};
} // namespace

std::unique_ptr<FindingWriter> sarifWriter(const WriterOptions& options)
{
  return std::make_unique<SarifWriter>(options);
}

} // namespace tool
