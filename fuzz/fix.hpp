// SPDX-License-Identifier: Apache-2.0
#ifndef FUZZ_FIX_HPP
#define FUZZ_FIX_HPP

#include <string>

/// Mends each fault of a manifest alone, and all of them. Requires that readers make the same of it but
/// for what the finding says, and that what was mended is not found again. Gives how many findings
/// have a mend.
std::size_t requireMendsHold(const std::string& bytes);

#endif
