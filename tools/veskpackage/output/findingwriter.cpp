// SPDX-License-Identifier: Apache-2.0
#include "output/findingwriter.hpp"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

namespace tool
{
namespace
{
using Make = std::unique_ptr<FindingWriter> (*)(const WriterOptions& options);

constexpr std::array<std::pair<const char*, Make>, 5> writers{{{"text", textWriter},
                                                               {"json", jsonWriter},
                                                               {"sarif", sarifWriter},
                                                               {"github", githubWriter},
                                                               {"junit", junitWriter}}};
} // namespace

std::vector<std::string> findingFormats()
{
  std::vector<std::string> names(writers.size());
  std::transform(writers.begin(), writers.end(), names.begin(),
                 [](const auto& writer) { return writer.first; });
  return names;
}

std::unique_ptr<FindingWriter> findingWriter(const std::string& format,
                                             const WriterOptions& options)
{
  for (const auto& [name, make] : writers)
  {
    if (format == name)
    {
      return make(options);
    }
  }
  throw std::out_of_range("there is no format " + format);
}

} // namespace tool
