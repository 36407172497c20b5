// SPDX-License-Identifier: Apache-2.0
#ifndef FUZZ_READALIKE_HPP
#define FUZZ_READALIKE_HPP

#include <string>

/// Requires that the readers make of a manifest, as a file and as a text, what they make of the
/// toolkit's tree of it. Gives whether they read the file without the toolkit.
bool requireReadAlike(const std::string& bytes);

#endif
