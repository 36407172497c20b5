// SPDX-License-Identifier: Apache-2.0
#ifndef FORMAT_DESCRIBE_HPP
#define FORMAT_DESCRIBE_HPP

#include <format/format.hpp>
#include <package/recordmember.hpp>
#include <package/xml/names.hpp>

#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

/// Words in which the format is described.
namespace vesk::format
{

inline const ManifestNames& n() { return manifestNames(); }

inline Keeps keptOf(vesk::Keeps keeps)
{
  switch (keeps)
  {
  case vesk::Keeps::DescriptionLanguages:
    return Keeps::DescriptionLanguages;
  case vesk::Keeps::SupportedLanguages:
    return Keeps::SupportedLanguages;
  case vesk::Keeps::All:
    break;
  }
  return Keeps::All;
}

template <typename Record, typename Value>
Field fieldOf(const RecordMember<Record, Value>& member)
{
  return {StructDescription<Record>::publicName, member.name, std::string(member.variantName),
          keptOf(member.keeps)};
}

template <typename Record, typename Value>
Field fieldOf(const Member<Record, Value>& member)
{
  return {StructDescription<Record>::name, member.name, member.name, Keeps::All};
}

/// The names that the table of a record has for a member.
template <typename Record, typename Value>
Field fieldOf(Value Record::*pointer)
{
  Field field;
  const auto take = [&](const auto& member)
  {
    if constexpr (std::is_same_v<decltype(member.pointer), Value Record::*>)
    {
      field = member.pointer == pointer ? fieldOf(member) : field;
    }
    else
    {
      static_cast<void>(pointer);
    }
  };
  std::apply([&take](const auto&... members) { (take(members), ...); },
             StructDescription<Record>::members);
  return field;
}

/// Builds the description of an element or attribute. Members that are not set keep their defaults.
template <typename Described>
struct Description : Described
{
  template <typename Record, typename Value>
  Description& heldBy(Value Record::*pointer)
  {
    return heldBy(fieldOf(pointer));
  }
  Description& heldBy(Field what) { return set(this->field, std::move(what)); }
  Description& of(Type what) { return set(this->type, what); }
  Description& usually(std::vector<std::string> values)
  {
    return set(this->usual, std::move(values));
  }
  Description& like(const char* value) { return set(this->example, value); }
  Description& ifAbsent(const char* words) { return set(this->absent, words); }
  Description& needed() { return set(this->isRequired, true); }
  Description& readBy(Readers which) { return set(this->readers, which); }
  Description& whenWritten(Written when) { return set(this->written, when); }

  // of attributes
  Description& as(Role what) { return set(this->role, what); }

  // of elements
  Description& repeatable() { return set(this->isRepeatable, true); }
  Description& ifSeveral(Several what) { return set(this->several, what); }
  Description& inCdata() { return set(this->isCdata, true); }
  Description& holding(Holds what) { return set(this->holds, what); }
  Description& with(Attribute attribute) { return add(this->attributes, std::move(attribute)); }
  Description& with(Element child)
  {
    this->holds = this->holds == Holds::Nothing ? Holds::Elements : this->holds;
    return add(this->children, std::move(child));
  }

private:
  template <typename Value, typename Given>
  Description& set(Value& value, Given&& given)
  {
    value = std::forward<Given>(given);
    return *this;
  }

  template <typename Part>
  Description& add(std::vector<Part>& parts, Part part)
  {
    parts.push_back(std::move(part));
    return *this;
  }
};

template <typename Described>
Description<Described> describe(const std::string& name, const char* meaning, const char* absent)
{
  Description<Described> description;
  description.name = name;
  description.meaning = meaning;
  description.absent = absent;
  return description;
}

/// An attribute; where it is absent, it is read as an empty text.
inline Description<Attribute> attribute(const std::string& name, const char* meaning)
{
  return describe<Attribute>(name, meaning, "empty");
}

/// An element that holds a text.
inline Description<Element> text(const std::string& name, const char* meaning)
{
  return describe<Element>(name, meaning, "empty").holding(Holds::Text);
}

/// An element that holds others, or nothing but attributes.
inline Description<Element> element(const std::string& name, const char* meaning)
{
  return describe<Element>(name, meaning, "none");
}

/// An element that is a list: every child, whatever its name, is an entry.
inline Description<Element> list(const std::string& name, const char* meaning, Element entry)
{
  entry.isRepeatable = true;
  entry.absent = "none";
  return describe<Element>(name, meaning, "none").holding(Holds::Entries).with(std::move(entry));
}

// The parts of the format, each in the file of its name.
Element describePackage();
Element describeBehavior();
Element describeDialog();
Element describeLanguagePack();

// What several of them have: shared.cpp.

/// Where something lies.
Description<Attribute> path();
/// A text with its language.
Description<Element> localizedText(const std::string& name, const char* meaning);
/// Texts, one for each language.
Description<Element> names(const char* meaning, const char* example);
Description<Element> descriptions(const char* meaning, const char* example);

} // namespace vesk::format

#endif
