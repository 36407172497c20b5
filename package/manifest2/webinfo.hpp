// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_MANIFEST2_WEBINFO_HPP
#define PACKAGE_MANIFEST2_WEBINFO_HPP

#include <vesk/structdescription.hpp>

#include <string>
#include <tuple>

namespace vesk
{

/// The web content of a package.
struct WebInfo
{
  std::string path; ///< relative to the package
};

/// How the type system publishes it.
template <>
struct StructDescription<WebInfo>
{
  static constexpr auto name = "::vesk::WebInfo";
  static constexpr auto members = std::make_tuple(member("path", &WebInfo::path));
};

} // namespace vesk

#endif
