// SPDX-License-Identifier: Apache-2.0
#include <check/elements.hpp>

#include <algorithm>
#include <stdexcept>

namespace vesk::check
{
namespace
{
CheckedElement checkedElement(const format::Element& element, const std::string& path)
{
  CheckedElement checked{element, element.name, path};
  for (const format::Attribute& attribute : element.attributes)
  {
    checked.attributes.push_back({attribute, attribute.name});
  }
  for (const format::Element& child : element.children)
  {
    checked.children.push_back(checkedElement(child, path + '/' + child.name));
    checked.children.back().keeps = element.field.keeps;
  }
  const auto own = std::find_if(ownChecks().begin(), ownChecks().end(),
                                [&path](const auto& check) { return check.first == path; });
  checked.ownCheck = own == ownChecks().end() ? nullptr : own->second;
  return checked;
}

CheckedElement checkedRoot()
{
  for (const auto& [path, check] : ownChecks())
  {
    if (format::find(path) == nullptr)
    {
      throw std::logic_error("a check of an element that the format does not have: " + path);
    }
  }
  return checkedElement(format::package(), '/' + format::package().name);
}
} // namespace

const CheckedElement* CheckedElement::childNamed(const Node& node) const
{
  const auto child =
      std::find_if(children.begin(), children.end(),
                   [&node](const CheckedElement& other) { return node.isNamed(other.name); });
  return child == children.end() ? nullptr : &*child;
}

const CheckedElement* CheckedElement::childNamed(const QString& childName) const
{
  const auto child = std::find_if(children.begin(), children.end(),
                                  [&childName](const CheckedElement& other)
                                  { return QString(other.name) == childName; });
  return child == children.end() ? nullptr : &*child;
}

bool CheckedElement::repeats(const QString& childName) const
{
  const CheckedElement* const child = childNamed(childName);
  return child != nullptr && child->format.isRepeatable;
}

const CheckedElement& checkedPackage()
{
  static const CheckedElement root = checkedRoot();
  return root;
}

} // namespace vesk::check
