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

  /// The category of the second reader. It exists once the library is loaded, so that programs can
  /// set its level before they read anything.
  log::Category manifestCategory = log::addCategory("vesk.package.info");

  /// Whether every registration succeeded.
  bool isComplete = false;
};

extern const Registrar registrar;

// Makes every unit that uses a record refer to the registrar: a static link includes only what is
// referred to.
[[gnu::used]] static const Registrar* const referredToRegistrar = &registrar;

} // namespace vesk

#endif
