// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_INTEROP_REGISTRATION_HPP
#define PACKAGE_INTEROP_REGISTRATION_HPP

#include <package/export.hpp>

namespace vesk
{

/// Whether the types of packages and descriptors are known to the type system: they are registered
/// when the library is loaded. False when one of their names or native types had a description
/// already, which stays; then packages cannot be exchanged with peers.
///
/// A program that uses the types by their names only should call this: linkers that drop libraries
/// to which nothing refers (`--as-needed`) keep the library for it. May be called from any thread.
VESKPACKAGE_EXPORT bool arePackageTypesRegistered();

} // namespace vesk

#endif
