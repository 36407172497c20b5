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

/// The runtime's, and the same for all that is built against it.
inline constexpr int interfaceMarkerLength = 11;

/// What the process knows of types. Descriptions given to it belong to it and live to the end of the
/// process. All functions may be called from any thread, and while libraries are being loaded. A
/// library that uses the type system must stay loaded, since descriptions may stand in it: link it
/// with `-z nodelete`, as the CMake target vesk::vesk and pkg-config do.
/// \{

/// Makes a struct's description known by its name. False when \p type is null or no struct's, or
/// when another has the name, which keeps it.
VESK_EXPORT bool registerStruct(TypeInterface* type);

/// Binds a native type to its description; to be done before typeOf() is first asked for it. False
/// when \p type is null or describes another type, or when the native type has a description, which
/// stays: others may hold it by now.
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
/// The description bound to a native type; when there is none yet, what \p describe makes, which
/// is called once per type in the process and must not ask for types itself.
VESK_EXPORT TypeInterface* getTypeOrDescribe(const std::type_info& info,
                                             std::unique_ptr<TypeInterface> (*describe)());
} // namespace detail

} // namespace vesk

#endif
