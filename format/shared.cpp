// SPDX-License-Identifier: Apache-2.0
// What several parts of the format have.
#include <format/describe.hpp>

namespace vesk::format
{

Description<Attribute> path()
{
  return attribute(n().path, "Where it lies, relative to the package.").of(Type::Path).needed();
}

Description<Element> localizedText(const std::string& name, const char* meaning)
{
  return text(name, meaning)
      .with(attribute(n().lang, "The language of the text.")
                .of(Type::Language)
                .as(Role::Key)
                .like("en_US")
                .ifAbsent("the empty language")
                .needed());
}

Description<Element> names(const char* meaning, const char* example)
{
  return list(n().names, meaning,
              localizedText(n().name, "The name in one language.")
                  .ifSeveral(Several::LastOfKeyCounts)
                  .like(example));
}

Description<Element> descriptions(const char* meaning, const char* example)
{
  return list(n().descriptions, meaning,
              localizedText(n().description, "The description in one language.")
                  .ifSeveral(Several::LastOfKeyCounts)
                  .like(example));
}

} // namespace vesk::format
