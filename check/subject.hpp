// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_SUBJECT_HPP
#define CHECK_SUBJECT_HPP

#include <check/node.hpp>

#include <optional>

namespace vesk::check
{

/// What a finding is about: a node, or a part of one. For the moment of the report.
struct Subject
{
  enum class Part
  {
    Whole,          ///< the node, from its begin to its end
    Name,           ///< of an element or an instruction
    Text,           ///< in an element; of another node, or one without a text, the whole
    AttributeName,  ///< where the element has no such attribute, the element's name
    AttributeValue, ///< the same; of an empty one, the whole attribute
  };

  const Node& node;
  Part part = Part::Whole;
  QString attribute = {};

  /// Where it stands; nothing where that is not known.
  std::optional<source::Range> range() const;
};

inline Subject whole(const Node& node) { return {node}; }
inline Subject nameOf(const Node& node) { return {node, Subject::Part::Name}; }
inline Subject textOf(const Node& node) { return {node, Subject::Part::Text}; }
inline Subject attributeOf(const Node& node, const QString& name)
{
  return {node, Subject::Part::AttributeName, name};
}
inline Subject valueOf(const Node& node, const QString& name)
{
  return {node, Subject::Part::AttributeValue, name};
}

} // namespace vesk::check

#endif
