// SPDX-License-Identifier: Apache-2.0
#include <package/interop/variantmembers.hpp>
#include <package/languagecodes.hpp>
#include <package/packageinfo_p.hpp>
#include <package/recordaccess.hpp>

#include <boost/bind/bind.hpp>

using namespace vesk;

namespace
{
// Dialogs and later description languages were added to the first 18 pairs; modules send all forms.
constexpr int pairsBeforeDialogs = 18;
constexpr int pairsWithDialogs = 19;
constexpr int pairsWithDescriptionLanguages = 20;

// Operations of a package that are called with each element of an array.
using AddText = boost::function<void(const std::string&)>;
using AddLocalizedText = boost::function<void(const std::string&, const std::string&)>;
template <typename Item>
using Add = boost::function<void(const Item&)>;

/// As addSupportedLanguage() and addDescriptionLanguage() for each text, but in a time that does not
/// grow with the square of their number.
void readLanguages(std::list<std::string>& languages, const XO::XOValue& value)
{
  LanguageAppender appender(languages);
  fromXOValue(AddText(boost::bind(&LanguageAppender::append, &appender, boost::placeholders::_1)),
              value);
}

/// Like addBehavior() and the like for each element, but constructs the descriptor in the list.
template <typename Item>
void readDescriptors(std::list<Item>& items, const XO::XOValue& value)
{
  for (int i = 0; i < value.getSize(); ++i)
  {
    items.emplace_back(value[i]);
  }
}
} // namespace

void toXOValue(const PackageInfo& package, XO::XOValue& out)
{
  if (package.uuid().empty())
  {
    out.arraySetSize(0);
    return;
  }
  writePairs(recordOf(package), out);
}

void fromXOValue(PackageInfo& package, const XO::XOValue& value)
{
  using boost::placeholders::_1;
  using boost::placeholders::_2;
  PackageInfoPrivate& record = recordOf(package);
  package.setUuid(value[0][1]);
  package.setPath(value[1][1]);
  package.setVersion(value[2][1]);
  package.setChannel(value[3][1]);
  package.setAuthor(value[4][1]);
  package.setOrganization(value[5][1]);
  package.setDate(value[6][1]);
  package.setTypeVersion(value[7][1]);
  fromXOValue(AddLocalizedText(boost::bind(&PackageInfo::setName, &package, _1, _2)), value[8][1]);
  fromXOValue(AddLocalizedText(boost::bind(&PackageInfo::setDescription, &package, _1, _2)),
              value[9][1]);
  readLanguages(record.supportedLanguages, value[10][1]);
  readDescriptors(record.behaviors, value[11][1]);
  readDescriptors(record.languages, value[12][1]);
  package.setInstaller(value[13][1]);
  fromXOValue(Add<RobotRequirement>(boost::bind(&PackageInfo::addRobotRequirement, &package, _1)),
              value[14][1]);
  fromXOValue(Add<MirelRequirement>(boost::bind(&PackageInfo::addMirelRequirement, &package, _1)),
              value[15][1]);
  fromXOValue(Add<PackageService>(boost::bind(&PackageInfo::addService, &package, _1)),
              value[16][1]);
  fromXOValue(AddText(boost::bind(&PackageInfo::addExecutableFile, &package, _1)), value[17][1]);
  // One guard is "at least" and the other "exactly": they have always differed.
  if (value.getSize() >= pairsWithDialogs)
  {
    readDescriptors(record.dialogs, value[18][1]);
  }
  if (value.getSize() == pairsWithDescriptionLanguages)
  {
    readLanguages(record.descriptionLanguages, value[19][1]);
  }
}

namespace vesk
{

PackageInfo::PackageInfo(const XO::XOValue& value) : PackageInfo()
{
  if (isArray(value) && value.getSize() >= pairsBeforeDialogs &&
      value.getSize() <= pairsWithDescriptionLanguages)
  {
    fromXOValue(*this, value);
  }
}

void PackageInfo::toXOValue(XO::XOValue& out) { ::toXOValue(*this, out); }

} // namespace vesk
