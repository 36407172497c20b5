// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_REGISTRAR_HPP
#define PACKAGE_REGISTRAR_HPP

#include <vesk/log.hpp>

namespace vesk
{

/// All that the library does when it is loaded.
struct Registrar
{
  /// Registers the types of the records, in an order that is known to peers.
  Registrar();

  /// Where the second reader logs: programs set its level before anything has been read.
  log::Category manifestCategory = log::addCategory("vesk.package.info");
};

extern const Registrar registrar;

// Every unit that reaches a record refers to it from here, so that it is there as well in a program
// that is linked statically, with what is referred to only.
[[gnu::used]] static const Registrar* const referredToRegistrar = &registrar;

} // namespace vesk

#endif
