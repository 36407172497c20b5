// SPDX-License-Identifier: Apache-2.0
#include <vesk/nativetypes.hpp>

#include <cstdlib>
#include <cxxabi.h>

namespace vesk::detail
{
namespace
{
template <typename Wide>
std::optional<Wide> toWhole(const Number& number)
{
  using Limits = std::numeric_limits<Wide>;
  if (const auto* floating = std::get_if<double>(&number))
  {
    // Both bounds, the minimum and the maximum plus 1, are exact as a double.
    const bool isWhole = std::trunc(*floating) == *floating;
    const bool isInRange = *floating >= static_cast<double>(Limits::min()) &&
                           *floating < std::ldexp(1.0, Limits::digits);
    return isWhole && isInRange ? std::optional(static_cast<Wide>(*floating)) : std::nullopt;
  }
  if (const auto* positive = std::get_if<std::uint64_t>(&number))
  {
    return *positive <= static_cast<std::uint64_t>(Limits::max())
               ? std::optional(static_cast<Wide>(*positive))
               : std::nullopt;
  }
  const auto integer = std::get<std::int64_t>(number);
  return integer >= 0 || std::is_signed_v<Wide> ? std::optional(static_cast<Wide>(integer))
                                                : std::nullopt;
}
} // namespace

std::optional<std::int64_t> toSigned(const Number& number) { return toWhole<std::int64_t>(number); }

std::optional<std::uint64_t> toUnsigned(const Number& number)
{
  return toWhole<std::uint64_t>(number);
}

double toDouble(const Number& number)
{
  return std::visit([](auto value) { return static_cast<double>(value); }, number);
}

std::string nameOf(const std::type_info& info)
{
  const std::unique_ptr<char, decltype(&std::free)> demangled(
      abi::__cxa_demangle(info.name(), nullptr, nullptr, nullptr), &std::free);
  return demangled ? demangled.get() : info.name();
}

} // namespace vesk::detail
