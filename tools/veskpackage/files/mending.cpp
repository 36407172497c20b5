// SPDX-License-Identifier: Apache-2.0
#include "files/mending.hpp"

#include "files/updating.hpp"
#include "output/complaint.hpp"

#include <check/fixing.hpp>

#include <algorithm>
#include <stdexcept>

namespace tool
{

ExitCode mendFile(const std::string& file, const vesk::check::Options& options, std::size_t& count,
                  std::ostream& complaints)
{
  ExitCode code = Done;
  std::size_t mends = 0;
  const auto work = [&](const std::string& bytes)
  {
    std::optional<std::string> result = mended(file, bytes, options, mends, complaints);
    code = result ? Done : NegativeResult;
    return result;
  };
  const ExitCode written = updateFile(file, complaints, work);
  count += written == Done ? mends : 0;
  return std::max(code, written);
}

std::optional<std::string> mended(const std::string& name, const std::string& bytes,
                                  const vesk::check::Options& options, std::size_t& count,
                                  std::ostream& complaints)
{
  try
  {
    vesk::check::Fixed fixed = vesk::check::fix(bytes, options);
    count += fixed.count;
    return std::move(fixed.bytes);
  }
  catch (const std::runtime_error& error)
  {
    complain(complaints, name, error.what());
    return std::nullopt;
  }
}

} // namespace tool
