// SPDX-License-Identifier: Apache-2.0
#include "output/findingwriter.hpp"

#include <nlohmann/json.hpp>

namespace tool
{

using Json = nlohmann::ordered_json;
using vesk::check::Finding;
using vesk::check::Mend;
using vesk::check::Position;

namespace
{
Json rangeOf(const Position& begin, const Position& end)
{
  return {{"line", begin.line},
          {"column", begin.column},
          {"endLine", end.line},
          {"endColumn", end.column}};
}

Json jsonOf(const CheckedFile& file, const Mend& mend)
{
  Json edits = Json::array();
  for (const vesk::source::Edit& edit : mend.edits)
  {
    Json json = rangeOf(file.positionOf(edit.range.begin), file.positionOf(edit.range.end));
    json["text"] = file.inFile(edit.text);
    edits.push_back(std::move(json));
  }
  return {{"title", mend.title}, {"edits", std::move(edits)}};
}

Json jsonOf(const CheckedFile& file, const Finding& finding)
{
  Json json{{"severity", nameOf(finding.severity)},
            {"tag", finding.rule->tag},
            {"message", finding.message}};
  json.update(rangeOf(finding.begin, finding.end));
  json["place"] = finding.place;
  if (finding.mend)
  {
    json["mend"] = jsonOf(file, *finding.mend);
  }
  return json;
}

class JsonWriter : public FindingWriter
{
public:
  void write(const CheckedFile& file, std::ostream& out) override
  {
    Json list = Json::array();
    for (const Finding& finding : file.findings)
    {
      list.push_back(jsonOf(file, finding));
    }
    Json json{{"file", file.name}, {"findings", std::move(list)}};
    if (file.mended > 0)
    {
      json["mended"] = file.mended;
    }
    out << json.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
  }
};
} // namespace

std::unique_ptr<FindingWriter> jsonWriter(const WriterOptions&)
{
  return std::make_unique<JsonWriter>();
}

} // namespace tool
