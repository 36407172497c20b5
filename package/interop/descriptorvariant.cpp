// SPDX-License-Identifier: Apache-2.0
#include <package/behaviorinfo_p.hpp>
#include <package/dialoginfo_p.hpp>
#include <package/interop/variantmembers.hpp>
#include <package/languageinfo_p.hpp>
#include <package/recordaccess.hpp>

namespace vesk
{

BehaviorInfo::BehaviorInfo(const XO::XOValue& value) : BehaviorInfo()
{
  const int size = isArray(value) ? value.getSize() : 0;
  for (int i = 0; i < size; ++i)
  {
    const std::string& name = value[i][0];
    forEachMember<BehaviorInfoPrivate>(
        [&](const auto& member, int)
        {
          if (member.inVariant == InVariant::Value && name == member.variantName)
          {
            readValue((*record).*member.pointer, value[i][1]);
          }
        });
  }
  record->permissions.unique();
}

void BehaviorInfo::toXOValue(XO::XOValue& out) const { writePairs(*record, out); }

DialogInfo::DialogInfo(const XO::XOValue& value) : DialogInfo()
{
  if (isArray(value) && value.getSize() == static_cast<int>(describedMembers<DialogInfoPrivate>))
  {
    readPairs(*record, value);
  }
}

XO::XOValue DialogInfo::toXOValue() const
{
  XO::XOValue value;
  writePairs(*record, value);
  return value;
}

LanguageInfo::LanguageInfo(const XO::XOValue& value) : LanguageInfo() { readPairs(*record, value); }

void LanguageInfo::toXOValue(XO::XOValue& out) const { writePairs(*record, out); }

} // namespace vesk
