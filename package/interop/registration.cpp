// SPDX-License-Identifier: Apache-2.0
#include <package/behaviorinfo_p.hpp>
#include <package/dialoginfo_p.hpp>
#include <package/interop/registration.hpp>
#include <package/languageinfo_p.hpp>
#include <package/packageinfo_p.hpp>
#include <package/recordaccess.hpp>
#include <package/registrar.hpp>
#include <vesk/typesystem.hpp>

#include <algorithm>
#include <array>

namespace vesk
{

/// Registers a public class and the record behind it.
template <typename Public, typename Record>
bool registerRecord()
{
  auto* const record = new StructType<Record>; // like all descriptions, never freed
  const bool isKnown = registerStruct(record);
  const bool isBound = registerType(typeid(Record), record);
  auto* const bouncer = new StructTypeInterfaceBouncer<Public, Record>(
      StructDescription<Record>::publicName, *record, &recordOf<Public>);
  return registerType(typeid(Public), bouncer) && isBound && isKnown;
}

Registrar::Registrar()
{
  // All of them, in this order, also when one fails.
  const std::array areRegistered{registerRecord<DialogInfo, DialogInfoPrivate>(),
                                 registerRecord<BehaviorInfo, BehaviorInfoPrivate>(),
                                 registerRecord<LanguageInfo, LanguageInfoPrivate>(),
                                 registerRecord<PackageInfo, PackageInfoPrivate>()};
  isComplete = std::find(areRegistered.begin(), areRegistered.end(), false) == areRegistered.end();
}

bool arePackageTypesRegistered() { return registrar.isComplete; }

// Constructed before a program's own static objects, even when it is linked statically.
__attribute__((init_priority(101))) const Registrar registrar;

} // namespace vesk
