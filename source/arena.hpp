// SPDX-License-Identifier: Apache-2.0
#ifndef SOURCE_ARENA_HPP
#define SOURCE_ARENA_HPP

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <type_traits>
#include <vector>

namespace vesk::source
{

/// Memory for many small objects that live and die together.
class Arena
{
public:
  template <typename Object>
  Object* make(std::size_t count = 1)
  {
    static_assert(std::is_trivially_destructible_v<Object>, "nothing is destroyed one by one");
    auto* const first = static_cast<Object*>(allocate(count * sizeof(Object), alignof(Object)));
    std::uninitialized_value_construct_n(first, count);
    return first;
  }

  std::string_view copy(std::string_view text)
  {
    auto* const copied = static_cast<char*>(allocate(text.size(), 1));
    std::copy(text.begin(), text.end(), copied);
    return {copied, text.size()};
  }

private:
  void* allocate(std::size_t size, std::size_t alignment)
  {
    void* place = next;
    if (std::align(alignment, size, place, left) == nullptr)
    {
      // Larger with every block, so that small texts cost little and large ones few blocks.
      blockSize = std::min<std::size_t>(2 * blockSize, std::size_t(1) << 20U);
      left = std::max(blockSize, size + alignment);
      blocks.push_back(std::make_unique<std::byte[]>(left)); // NOLINT(modernize-avoid-c-arrays)
      place = blocks.back().get();
      std::align(alignment, size, place, left);
    }
    next = static_cast<std::byte*>(place) + size;
    left -= size;
    return place;
  }

  std::vector<std::unique_ptr<std::byte[]>> blocks; // NOLINT(modernize-avoid-c-arrays)
  void* next = nullptr;
  std::size_t left = 0;
  std::size_t blockSize = 2048;
};

} // namespace vesk::source

#endif
