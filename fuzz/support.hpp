// SPDX-License-Identifier: Apache-2.0
#ifndef FUZZ_SUPPORT_HPP
#define FUZZ_SUPPORT_HPP

#include <edit/memoryfile.hpp>
#include <package/packageinfo.hpp>
#include <vesk/anyvalue.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// What the fuzz targets have in common. Each holds one function:
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

inline std::string textOf(const std::uint8_t* data, std::size_t size)
{
  return {reinterpret_cast<const char*>(data), size};
}

/// Aborts the process, which the fuzzer reports as a fault, unless \p isSo.
void require(bool isSo, const std::string& what);

/// The same unless two values are equal in all of their parts.
void requireEqual(const vesk::AnyConstReference& expected, const vesk::AnyConstReference& actual,
                  const std::string& what);

/// What was logged since the last call; nothing is printed.
std::vector<std::string> takeLogged();

/// Loads a manifest as a file with these bytes.
bool loadFile(vesk::PackageInfo& package, const std::string& bytes);

/// Reads a manifest into the example package with \p load, which logs errors of \p nameInLog, and
/// with \p read, which fills a LoadError. Returns the package, or none when the manifest is
/// refused. Requires that both do the same, and that a refused manifest changes nothing.
std::optional<vesk::PackageInfo>
readBothWays(const std::function<bool(vesk::PackageInfo&)>& load,
             const std::function<bool(vesk::PackageInfo&, vesk::LoadError&)>& read,
             const std::string& nameInLog);

/// A package in which nothing is empty.
const vesk::PackageInfo& examplePackage();

#endif
