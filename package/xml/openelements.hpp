// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_XML_OPENELEMENTS_HPP
#define PACKAGE_XML_OPENELEMENTS_HPP

#include <source/limits.hpp>

#include <vector>

namespace vesk
{

/// Whether a parser looks at namespaces, which alone makes it slow for many prefixes.
enum class Namespaces
{
  Ignored,
  Processed
};

/// The elements that are open at a place of a document, as far as the limits concern them.
/// Functions that add something return the limit that this exceeds, or null.
class OpenElements
{
public:
  // Reserved here, since the toolkit's parser leaks if an allocation throws while it runs.
  explicit OpenElements(Namespaces processing) : namespaces(processing)
  {
    prefixesOfOpen.reserve(limits::depth.most + 1);
  }

  const Limit* enter()
  {
    prefixesOfOpen.push_back(0);
    attributes = 0;
    return passed(prefixesOfOpen.size(), limits::depth);
  }

  /// An attribute of the element entered last.
  const Limit* addAttribute() { return passed(++attributes, limits::attributes); }

  /// A namespace prefix that the element entered last declares.
  const Limit* addPrefix()
  {
    if (namespaces == Namespaces::Ignored)
    {
      return nullptr;
    }
    ++prefixesOfOpen.back();
    return passed(++prefixes, limits::prefixes);
  }

  void leave()
  {
    if (!prefixesOfOpen.empty()) // a malformed document can have too many end tags
    {
      prefixes -= prefixesOfOpen.back();
      prefixesOfOpen.pop_back();
    }
  }

private:
  static const Limit* passed(std::size_t count, const Limit& limit)
  {
    return count > static_cast<std::size_t>(limit.most) ? &limit : nullptr;
  }

  Namespaces namespaces;
  std::vector<std::size_t> prefixesOfOpen; // from the root on, how many each declares
  std::size_t prefixes = 0;                // all of them
  std::size_t attributes = 0;              // of the element entered last
};

} // namespace vesk

#endif
