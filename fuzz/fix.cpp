// SPDX-License-Identifier: Apache-2.0
// Mends of faults do what their findings say, and nothing else.
#include "fix.hpp"

#include "support.hpp"

#include <check/fixing.hpp>
#include <edit/difference.hpp>
#include <edit/manifest.hpp>
#include <source/document.hpp>

#include <algorithm>
#include <map>
#include <sstream>

using vesk::AnyConstReference;
using vesk::check::Finding;
using vesk::edit::Difference;
using vesk::edit::Manifest;

namespace
{
/// What mending a fault may do to what is read.
enum class Effect
{
  None,
  Web,    ///< web content is another, which only one reader reads
  Grows,  ///< what was skipped is read
  Changes ///< one value is another
};

Effect effectOf(const std::string& tag)
{
  static const std::map<std::string, Effect> effects{{"unusual-name", Effect::None},
                                                     {"repeated-permission", Effect::None},
                                                     {"presence-counts", Effect::None},
                                                     {"repeated-language", Effect::None},
                                                     {"root-name", Effect::None},
                                                     {"repeated-section", Effect::Web},
                                                     {"unknown-element", Effect::Grows},
                                                     {"unknown-attribute", Effect::Grows},
                                                     {"unsupported-permission", Effect::Grows}};
  const auto known = effects.find(tag);
  return known == effects.end() ? Effect::Changes : known->second;
}

bool isNothing(const AnyConstReference& value)
{
  return !value.isValid() || (value.is<std::string>() && value.as<std::string>().empty()) ||
         (value.is<bool>() && !value.as<bool>());
}

std::string said(const Finding& finding, const std::string& fault, const std::string& bytes)
{
  std::ostringstream text;
  text << finding.rule->tag << " at " << finding.place << ": mended, and " << fault << " in\n"
       << bytes;
  return text.str();
}

void requireEffect(const Finding& finding, const Manifest& before, const Manifest& after,
                   const std::string& bytes)
{
  const std::vector<Difference> differences =
      vesk::edit::differences(AnyConstReference(before), AnyConstReference(after));
  const Effect effect = effectOf(finding.rule->tag);
  for (const Difference& difference : differences)
  {
    const std::string path = toText(difference.path());
    const bool hadNoKey = path.find(R"("")") != std::string::npos; // an entry comes to its language
    const bool isGrowth = isNothing(difference.before.value) || hadNoKey;
    const bool isWeb = path.substr(0, 3) == "web";
    require(effect == Effect::Changes || (effect == Effect::Grows && isGrowth) ||
                (effect == Effect::Web && isWeb),
            said(finding, path + " is another", bytes));
  }
  require(effect != Effect::Changes || differences.size() <= 2,
          said(finding, "more than that is another", bytes));
}

std::ptrdiff_t countOf(const Finding& sought, const std::vector<Finding>& findings)
{
  return std::count_if(findings.begin(), findings.end(),
                       [&sought](const Finding& finding) {
                         return finding.rule == sought.rule && finding.message == sought.message;
                       });
}

std::optional<Manifest> read(const std::string& bytes)
{
  vesk::LoadError error;
  return vesk::edit::readManifest(bytes, error);
}

std::string mendedText(const std::string& bytes, const Finding& finding)
{
  std::string mended =
      vesk::source::apply(vesk::source::Document::parse(bytes), finding.mend->edits);
  require(!vesk::source::Document::parse(mended).error(), "well-formed when mended\n" + mended);
  return mended;
}
} // namespace

std::size_t requireMendsHold(const std::string& bytes)
try
{
  const std::optional<Manifest> before = read(bytes);
  const std::vector<Finding> findings = vesk::check::checkBytes(bytes).findings;
  std::size_t mends = 0;
  for (const Finding& finding : findings)
  {
    if (!finding.mend || ++mends > 20)
    {
      continue;
    }
    const std::string mended = mendedText(bytes, finding);
    requireEffect(finding, before.value(), read(mended).value(), bytes);
    require(countOf(finding, vesk::check::checkBytes(mended).findings) < countOf(finding, findings),
            said(finding, "it is found again", bytes));
  }

  const vesk::check::Fixed fixed = vesk::check::fix(bytes);
  require(fixed.mended.empty() == (mends == 0), "all that can be mended is\n" + bytes);
  require(!fixed.mended.empty() || fixed.bytes == bytes, "changed without a fault\n" + bytes);
  const vesk::check::Fixed again = vesk::check::fix(fixed.bytes);
  require(again.mended.empty() && again.bytes == fixed.bytes,
          "mended again\n" + fixed.bytes + "\nwhich was\n" + bytes);
  return mends;
}
catch (const std::runtime_error&) // an encoding that does not give back the bytes
{
  require(!vesk::source::Document::parse(bytes).encoding().isUtf8(), "can be edited\n" + bytes);
  return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
  requireMendsHold(textOf(data, size));
  return 0;
}
