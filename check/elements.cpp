// SPDX-License-Identifier: Apache-2.0
#include <check/elements.hpp>

namespace vesk::check
{
namespace
{
CheckedElement checkedElement(const format::Element& element, const std::string& parentPath)
{
  const std::string path = parentPath + '/' + element.name;
  CheckedElement checked{element, QString::fromStdString(element.name), ownCheckOf(path), {}, {}};
  for (const format::Attribute& attribute : element.attributes)
  {
    checked.attributes.push_back({attribute, QString::fromStdString(attribute.name)});
  }
  for (const format::Element& child : element.children)
  {
    checked.children.push_back(checkedElement(child, path));
  }
  return checked;
}
} // namespace

const CheckedElement& checkedPackage()
{
  static const CheckedElement root = checkedElement(format::package(), {});
  return root;
}

} // namespace vesk::check
