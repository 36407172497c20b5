// SPDX-License-Identifier: Apache-2.0
#ifndef FUZZ_SUPPORT_HPP
#define FUZZ_SUPPORT_HPP

#include <package/packageinfo.hpp>
#include <vesk/anyvalue.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <tools/veskpackage/memoryfile.hpp>
#include <vector>

/// What the fuzz targets have in common. Each holds one function:
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

inline std::string textOf(const std::uint8_t* data, std::size_t size)
{
  return {reinterpret_cast<const char*>(data), size};
}

/// Ends the process, which the fuzzer takes for a fault, unless something is so.
void require(bool isSo, const std::string& what);

/// The same unless two values are equal in all of their parts.
void requireEqual(const vesk::AnyConstReference& expected, const vesk::AnyConstReference& actual,
                  const std::string& what);

/// What was logged since the last call; nothing is printed.
std::vector<std::string> takeLogged();

/// Loads a manifest as a file with these bytes.
bool loadFile(vesk::PackageInfo& package, const std::string& bytes);

/// A package in which nothing is empty.
const vesk::PackageInfo& examplePackage();

#endif
