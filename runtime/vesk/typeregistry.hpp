// SPDX-License-Identifier: Apache-2.0
#ifndef VESK_TYPEREGISTRY_HPP
#define VESK_TYPEREGISTRY_HPP

#include <vesk/export.hpp>
#include <vesk/typeinterface.hpp>

#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

namespace vesk
{

/// A constant of the runtime; all that is built against it must have the same value.
inline constexpr int interfaceMarkerLength = 11;

/// What the process knows of types. Descriptions given to it belong to it and live to the end of the
/// process. All functions may be called from any thread, and while libraries are being loaded. A
/// library that uses the type system must stay loaded, since descriptions may stand in it: link it
/// with `-z nodelete`, as the CMake target vesk::vesk and pkg-config do.
/// \{

/// Makes a struct's description known by its name. False when \p type is null or does not describe
/// a struct, or when the name is taken already; the earlier description keeps it.
VESK_EXPORT bool registerStruct(TypeInterface* type);

/// Binds a native type to its description; must be called before the first typeOf() for that type.
/// False when \p type is null or describes another type, or when the native type already has a
/// description; that one stays, since others may hold it by now.
VESK_EXPORT bool registerType(const std::type_info& info, TypeInterface* type);

/// The description bound to a native type; null when there is none.
VESK_EXPORT TypeInterface* getType(const std::type_info& info);

/// The struct made known by this name; null when there is none.
VESK_EXPORT TypeInterface* getStruct(const std::string& name);

/// The names of all types registered in either way, each once, in the order of registration.
/// Descriptions made on first use are not among them.
VESK_EXPORT std::vector<std::string> registeredNames();

/// \}

namespace detail
{
/// The description bound to a native type. When there is none yet, binds the one that \p describe
/// makes. It is called once per type in the process, and must not call the registry itself.
VESK_EXPORT TypeInterface* getTypeOrDescribe(const std::type_info& info,
                                             std::unique_ptr<TypeInterface> (*describe)());
} // namespace detail

} // namespace vesk

#endif
