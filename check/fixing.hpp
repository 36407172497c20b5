// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_FIXING_HPP
#define CHECK_FIXING_HPP

#include <check/export.hpp>
#include <check/manifestcheck.hpp>

#include <string>
#include <vector>

namespace vesk::check
{

/// A manifest after its faults have been mended.
struct Fixed
{
  /// The bytes of the file; those that were given where there was nothing to mend.
  std::string bytes;
  std::size_t count = 0; ///< of the faults that were mended
  /// The first of these, up to Options::mostOfARule. The places are those in the text as it was then:
  /// mending one fault can bring others to light, as when a misspelt element comes to be read.
  std::vector<Finding> mended;
};

/// Mends every fault in the bytes of a file for which a finding has a mend, until there is none left;
/// rules that the options switch off find none. What is not edited keeps every byte, and readers make
/// the same of the file but for what the findings say. Mending the result again changes nothing.
///
/// A manifest that is no strict XML, or that no reader takes, stays as it is. Nothing is thrown for a
/// bad manifest; but where the encoding of a file does not give back its bytes (see source::apply()),
/// std::runtime_error is. The manifest is checked and edited again as long as that brings more to
/// light, or some 100,000 faults of a rule are left: a few times for what people write, at the very most a
/// thousand times. May be called from any thread at any time.
VESKPACKAGE_CHECK_EXPORT Fixed fix(const std::string& bytes, const Options& options = {});

/// Of the mends of some findings those that can be made at once: as many as possible from the first on,
/// without those whose edits overlap the edits of an earlier one. The findings are those of one check.
VESKPACKAGE_CHECK_EXPORT std::vector<const Finding*>
mendableAtOnce(const std::vector<Finding>& findings);

} // namespace vesk::check

#endif
