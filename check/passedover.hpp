// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_PASSEDOVER_HPP
#define CHECK_PASSEDOVER_HPP

#include <check/stricttext.hpp>
#include <package/loaderror.hpp>

#include <vector>

namespace vesk::check
{

/// What is wrong with the text of a manifest that no reader takes, in the order of the text.
struct StrictFaults
{
  /// What strict XML does not have, though the readers pass over it.
  std::vector<source::Error> passedOver;
  /// What stops the readers; none where strict XML has nothing against it.
  std::optional<source::Error> stop;
};

/// \p refusal says where the readers stop.
StrictFaults strictFaults(const StrictText& text, const LoadError& refusal);

} // namespace vesk::check

#endif
