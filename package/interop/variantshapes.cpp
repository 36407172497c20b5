// SPDX-License-Identifier: Apache-2.0
#include <package/interop/variantmembers.hpp>

using namespace vesk;

namespace
{
/// An array with what \p write makes of each item.
template <typename Container, typename Write>
void writeArray(const Container& items, XO::XOValue& out, Write write)
{
  out.arraySetSize(static_cast<int>(items.size()));
  int index = 0;
  for (const auto& item : items)
  {
    write(item, out[index++]);
  }
}

/// An array of pairs [key, value].
template <typename Map>
void writeMap(const Map& map, XO::XOValue& out)
{
  writeArray(map, out,
             [](const auto& entry, XO::XOValue& pair)
             {
               pair.arraySetSize(2);
               pair[0] = entry.first;
               writeValue(entry.second, pair[1]);
             });
}

template <typename Record>
void writeRecords(const std::list<Record>& records, XO::XOValue& out)
{
  writeArray(records, out,
             [](const Record& record, XO::XOValue& value) { writeValues(record, value); });
}

template <typename Record>
void readRecords(const boost::function<void(const Record&)>& add, const XO::XOValue& value)
{
  for (int i = 0; i < value.getSize(); ++i)
  {
    add(readValues<Record>(value[i]));
  }
}
} // namespace

void toXOValue(const std::map<std::string, std::string>& texts, XO::XOValue& out)
{
  writeMap(texts, out);
}

void toXOValue(const std::map<std::string, std::list<std::string>>& lists, XO::XOValue& out)
{
  writeMap(lists, out);
}

void toXOValue(const std::list<std::string>& texts, XO::XOValue& out)
{
  writeArray(texts, out, [](const std::string& text, XO::XOValue& value) { value = text; });
}

void toXOValue(const std::list<BehaviorInfo>& behaviors, XO::XOValue& out)
{
  writeArray(behaviors, out,
             [](const BehaviorInfo& behavior, XO::XOValue& value) { behavior.toXOValue(value); });
}

void toXOValue(const std::list<LanguageInfo>& languages, XO::XOValue& out)
{
  writeArray(languages, out,
             [](const LanguageInfo& language, XO::XOValue& value) { language.toXOValue(value); });
}

void toXOValue(const std::list<DialogInfo>& dialogs, XO::XOValue& out)
{
  writeArray(dialogs, out,
             [](const DialogInfo& dialog, XO::XOValue& value) { value = dialog.toXOValue(); });
}

void toXOValue(const std::list<RobotRequirement>& requirements, XO::XOValue& out)
{
  writeRecords(requirements, out);
}

void toXOValue(const std::list<MirelRequirement>& requirements, XO::XOValue& out)
{
  writeRecords(requirements, out);
}

void toXOValue(const std::list<PackageService>& services, XO::XOValue& out)
{
  writeRecords(services, out);
}

void fromXOValue(std::map<std::string, std::string>& texts, const XO::XOValue& value)
{
  for (int i = 0; i < value.getSize(); ++i)
  {
    texts[value[i][0]] = static_cast<const std::string&>(value[i][1]);
  }
}

void fromXOValue(std::map<std::string, std::list<std::string>>& lists, const XO::XOValue& value)
{
  for (int i = 0; i < value.getSize(); ++i)
  {
    fromXOValue(lists[value[i][0]], value[i][1]);
  }
}

void fromXOValue(std::list<std::string>& texts, const XO::XOValue& value)
{
  for (int i = 0; i < value.getSize(); ++i)
  {
    texts.push_back(value[i]);
  }
}

// Adders are taken by value, as modules pass them.
// NOLINTBEGIN(performance-unnecessary-value-param)

void fromXOValue(boost::function<void(const std::string&, const std::string&)> add,
                 const XO::XOValue& value)
{
  for (int i = 0; i < value.getSize(); ++i)
  {
    add(value[i][1], value[i][0]);
  }
}

void fromXOValue(boost::function<void(const std::string&)> add, const XO::XOValue& value)
{
  for (int i = 0; i < value.getSize(); ++i)
  {
    add(value[i]);
  }
}

void fromXOValue(boost::function<void(const RobotRequirement&)> add, const XO::XOValue& value)
{
  readRecords(add, value);
}

void fromXOValue(boost::function<void(const MirelRequirement&)> add, const XO::XOValue& value)
{
  readRecords(add, value);
}

void fromXOValue(boost::function<void(const PackageService&)> add, const XO::XOValue& value)
{
  readRecords(add, value);
}

// NOLINTEND(performance-unnecessary-value-param)
