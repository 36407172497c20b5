// SPDX-License-Identifier: Apache-2.0
// What loading the library costs a program that has loaded all it stands on: mapping it, binding
// all its symbols, and its registrations.
#include <vesk/typesystem.hpp>
#include <xovalue/xovalue.hpp>

#include <QDomDocument>

#include <chrono>
#include <cstdio>
#include <dlfcn.h>

int main()
{
  // Used, so that the libraries that they come from are loaded.
  const QDomDocument toolkit;
  const XO::XOValue variant("loaded");
  const std::size_t known = vesk::registeredNames().size();

  const auto start = std::chrono::steady_clock::now();
  const void* const library = dlopen(LIBRARY, RTLD_NOW);
  const std::chrono::duration<double, std::micro> elapsed =
      std::chrono::steady_clock::now() - start;

  const std::size_t registered = vesk::registeredNames().size() - known;
  std::printf("%s: %.0f us, %zu types registered\n", library != nullptr ? LIBRARY : dlerror(),
              elapsed.count(), registered);
  return registered == 8 && toolkit.isNull() && variant.isString() ? 0 : 1;
}
