// SPDX-License-Identifier: Apache-2.0
#ifndef FUZZ_READBACK_HPP
#define FUZZ_READBACK_HPP

#include <package/packageinfo.hpp>

/// What a package is when it has been written and read: the same but for what the documents say
/// that writing and reading lose.
vesk::PackageInfo readBackOf(const vesk::PackageInfo& package);

/// Writes the package and reads it, as a file and as a text, and requires that both give what they
/// should.
vesk::PackageInfo writeAndRead(const vesk::PackageInfo& package);

#endif
