// SPDX-License-Identifier: Apache-2.0
#include <package/behaviorinfo_p.hpp>
#include <package/dialoginfo_p.hpp>
#include <package/languageinfo_p.hpp>
#include <package/packageinfo_p.hpp>
#include <package/recordaccess.hpp>
#include <package/registrar.hpp>
#include <vesk/typesystem.hpp>

namespace vesk
{

/// Registers a public class and the record behind it.
template <typename Public, typename Record>
void registerRecord()
{
  auto* const record = new StructType<Record>; // like all descriptions, never freed
  registerStruct(record);
  registerType(typeid(Record), record);
  auto* const bouncer = new StructTypeInterfaceBouncer<Public, Record>(
      StructDescription<Record>::publicName, *record, &recordOf<Public>);
  registerType(typeid(Public), bouncer);
}

Registrar::Registrar()
{
  registerRecord<DialogInfo, DialogInfoPrivate>();
  registerRecord<BehaviorInfo, BehaviorInfoPrivate>();
  registerRecord<LanguageInfo, LanguageInfoPrivate>();
  registerRecord<PackageInfo, PackageInfoPrivate>();
}

// Constructed before a program's own static objects, even when it is linked statically.
__attribute__((init_priority(101))) const Registrar registrar;

} // namespace vesk
