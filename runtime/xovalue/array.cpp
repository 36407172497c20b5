// SPDX-License-Identifier: Apache-2.0
#include <xovalue/xovalue.hpp>

#include <atomic>
#include <cstdint>
#include <memory>
#include <new>

namespace XO::detail
{

/// Memory for values, which follows it. Arrays made in one block may be moved apart, also to other
/// threads, so the last that keeps it frees it.
struct alignas(XOValue) Block
{
  std::atomic<int> keepers = 1;
  std::atomic<std::int64_t> room;

  explicit Block(std::int64_t valuesToHold) : room(valuesToHold) {}

  static Block* make(std::int64_t room)
  {
    constexpr std::size_t mostRoom = (SIZE_MAX - sizeof(Block)) / sizeof(XOValue);
    if (static_cast<std::uint64_t>(room) > mostRoom)
    {
      throw std::bad_array_new_length();
    }
    void* const memory =
        ::operator new(sizeof(Block) + static_cast<std::size_t>(room) * sizeof(XOValue));
    return new (memory) Block(room);
  }

  /// The place for so many values; null when there is no room. Values are taken from the end on.
  XOValue* take(std::int64_t count)
  {
    std::int64_t left = room.load(std::memory_order_relaxed);
    while (left >= count)
    {
      // Two threads may be at work on two elements of an array.
      if (room.compare_exchange_weak(left, left - count, std::memory_order_relaxed))
      {
        return reinterpret_cast<XOValue*>(this + 1) + (left - count);
      }
    }
    return nullptr;
  }

  void keep() noexcept { keepers.fetch_add(1, std::memory_order_relaxed); }

  void release() noexcept
  {
    if (keepers.fetch_sub(1, std::memory_order_acq_rel) == 1)
    {
      this->~Block();
      ::operator delete(this);
    }
  }
};

namespace
{
// A part that is moved out keeps the whole block, so only small ones are shared.
constexpr std::int64_t mostShared = 96;

/// Room for the elements, and for them to become pairs.
std::int64_t usualRoom(int size)
{
  const std::int64_t room = 3 * std::int64_t{size};
  return room <= mostShared ? room : size;
}
} // namespace

Array::Array(int size, Block* nearby) : Array(size, usualRoom(size), nearby) {}

Array::Array(int size, std::int64_t room, Block* nearby)
    : values(nearby != nullptr ? nearby->take(size) : nullptr), block(nearby)
{
  if (values == nullptr)
  {
    block = Block::make(room);
    keepsBlock = true;
    values = block->take(size);
  }
  Block* const home = block; // in locals, which the loop cannot write over
  XOValue* const end = values + size;
  for (XOValue* value = values; value != end; ++value)
  {
    new (value) XOValue(home);
  }
  count = size;
}

Array::Array(Array&& other) noexcept
    : values(other.values), block(other.block), count(std::exchange(other.count, 0)),
      keepsBlock(true)
{
  if (!std::exchange(other.keepsBlock, false))
  {
    block->keep();
  }
}

std::int64_t Array::roomForCopy() const noexcept
{
  std::int64_t room = count;
  for (int i = 0; i < count && room <= mostShared; ++i)
  {
    room += values[i].getSize();
  }
  return room <= mostShared ? room : count;
}

// Strangers decide how deep arrays are nested, so there is no recursion here; and no memory for a
// list of what is left, since that may have run out.
Array::~Array()
{
  Array* ending = this;
  while (ending != nullptr)
  {
    if (Array* const inner = ending->destroyUpToArray())
    {
      inner->around = ending;
      ending = inner;
      continue;
    }
    Array* const outer = ending->around;
    if (ending->keepsBlock)
    {
      ending->block->release();
    }
    if (outer != nullptr)
    {
      --outer->count;
    }
    ending = outer;
  }
}

Array* Array::destroyUpToArray() noexcept
{
  for (; count > 0; --count)
  {
    XOValue& last = values[count - 1];
    if (last.isArray())
    {
      return &last.content.array;
    }
    if (last.isString())
    {
      std::destroy_at(&last.content.text);
    }
  }
  return nullptr;
}

} // namespace XO::detail
