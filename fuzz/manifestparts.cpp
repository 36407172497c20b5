// SPDX-License-Identifier: Apache-2.0
#include "manifestparts.hpp"

#include <edit/fieldvalue.hpp>
#include <edit/membername.hpp>
#include <source/document.hpp>

using namespace vesk::edit;
using vesk::AnyConstReference;
using vesk::TypeKind;
using vesk::source::Document;
using vesk::source::Kind;
using vesk::source::Node;

namespace
{
void collect(const AnyConstReference& value, const FieldPath& path, std::vector<FieldPath>& parts)
{
  const auto add = [&](const FieldStep& step, const AnyConstReference& part)
  {
    parts.push_back(path);
    parts.back().push_back(step);
    collect(part, FieldPath(parts.back()), parts);
  };
  switch (value.isValid() ? value.type()->kind() : TypeKind::Unknown)
  {
  case TypeKind::Struct:
    for (const std::string& name : value.memberNames())
    {
      add(friendlyName(*value.type(), name), value.member(name));
    }
    break;
  case TypeKind::List:
    for (std::size_t i = 0; i < value.size(); ++i)
    {
      add(i, value.element(i));
    }
    break;
  case TypeKind::Map:
    for (const auto& [key, entry] : value.entries())
    {
      add(key.as<std::string>(), entry);
    }
    break;
  case TypeKind::Dynamic:
    collect(value.as<vesk::AnyValue>(), path, parts);
    break;
  default:
    break;
  }
}

void collectAsides(const Document& document, const Node& node, std::multiset<std::string>& asides)
{
  const bool isOther = node.kind() != Kind::Element && node.kind() != Kind::Text &&
                       node.kind() != Kind::CData && node.kind() != Kind::Reference;
  if (isOther || node.name().find(':') != std::string_view::npos)
  {
    asides.emplace(document.text(node.range()));
  }
  for (const Node& child : node.children())
  {
    if (child.attribute("lang") == nullptr)
    {
      collectAsides(document, child, asides);
    }
  }
}
} // namespace

std::vector<FieldPath> partsOf(const Manifest& manifest)
{
  std::vector<FieldPath> parts;
  collect(AnyConstReference(manifest), {}, parts);
  return parts;
}

vesk::AnyReference partAt(Manifest& manifest, const FieldPath& path)
{
  const AnyConstReference part = valueAt(AnyConstReference(manifest), path);
  return {*part.type(), const_cast<void*>(part.address())};
}

std::multiset<std::string> asidesIn(const std::string& bytes)
{
  const Document document = Document::parse(bytes);
  std::multiset<std::string> asides;
  for (const Node& node : document.nodes())
  {
    collectAsides(document, node, asides);
  }
  if (const Node* const root = document.root()) // the package, whatever its name
  {
    asides.erase(std::string(document.text(root->range())));
  }
  return asides;
}
