// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_RECORDACCESS_HPP
#define PACKAGE_RECORDACCESS_HPP

#include <package/registrar.hpp> // with every handle

#include <memory>
#include <utility>

namespace vesk
{

/// The one way to a handle's private record from outside the handle.
struct RecordAccess
{
  template <typename Handle>
  static auto& of(Handle& handle)
  {
    return *handle.record;
  }
};

/// The private record of a handle. It can be changed even through a const handle, as it can in the
/// handle's own const operations.
template <typename Handle>
auto& recordOf(Handle& handle)
{
  return RecordAccess::of(handle);
}

/// Copies \p source's fields into \p target's record, or leaves that unchanged when memory runs
/// out. A moved-from handle gets a new record.
template <typename Record>
void assignRecord(std::unique_ptr<Record>& target, const std::unique_ptr<Record>& source)
{
  Record copy(*source);
  if (target)
  {
    *target = std::move(copy);
  }
  else
  {
    target = std::make_unique<Record>(std::move(copy));
  }
}

} // namespace vesk

#endif
