// SPDX-License-Identifier: Apache-2.0
#include "editing.hpp"

#include "failures.hpp"
#include "unlocked.hpp"

#include <edit/changes.hpp>
#include <edit/fieldlist.hpp>
#include <edit/fieldvalue.hpp>
#include <edit/manifest.hpp>
#include <source/document.hpp>

#include <optional>
#include <pybind11/stl.h>
#include <string>
#include <utility>
#include <vector>

namespace vesk::python
{
namespace
{
/// What a field is to be.
struct Wanted
{
  std::string path;
  std::optional<std::string> text; ///< none: it is to be unset
  bool isJson = false;             ///< whether the text says in JSON what was no str
};

/// A number is not the version that it looks like.
void refuseTexts(const edit::Manifest& manifest, const edit::FieldPath& path)
{
  edit::visitAt(
      AnyConstReference(manifest), path,
      [](const edit::FieldPath& part, const AnyConstReference& value)
      {
        if (value.is<std::string>())
        {
          throw edit::FieldError(edit::toText(part) + ": a str is wanted");
        }
      },
      [](const edit::FieldError&) {});
}

void change(edit::Manifest& manifest, const std::vector<Wanted>& changes)
{
  std::vector<edit::FieldPath> unset;
  for (const Wanted& wanted : changes)
  {
    edit::FieldPath path = edit::parseFieldPath(wanted.path);
    if (!wanted.text)
    {
      unset.push_back(std::move(path));
      continue;
    }
    setField(manifest, path, *wanted.text);
    if (wanted.isJson)
    {
      refuseTexts(manifest, path);
    }
  }
  unsetFields(manifest, unset);
}

std::string editBytes(const std::string& bytes, const std::vector<Wanted>& changes,
                      edit::CommentEntries comments)
{
  LoadError error;
  const std::optional<edit::Manifest> before = edit::readManifest(bytes, error);
  if (!before)
  {
    throw BadManifest(error);
  }
  edit::Manifest after = *before;
  change(after, changes);
  try
  {
    return edit::changed(bytes, *before, after, comments);
  }
  catch (const edit::Refusal& refusal)
  {
    throw BadEdit(refusal.what(), refusal.place);
  }
}

py::bytes edit(const std::string& bytes, const std::vector<Wanted>& changes,
               bool isCommentEntryKept)
{
  const auto comments =
      isCommentEntryKept ? edit::CommentEntries::Stay : edit::CommentEntries::Refuse;
  return unlocked([&] { return editBytes(bytes, changes, comments); });
}

py::list fields()
{
  py::list list;
  for (const edit::ListedField& field : edit::listedFields())
  {
    list.append(py::make_tuple(field.path, field.type, field.place, field.meaning, field.absent));
  }
  return list;
}
} // namespace

void defineEditing(py::module_& module)
{
  py::class_<Wanted>(module, "Wanted")
      .def(py::init<std::string, std::optional<std::string>, bool>(), py::arg("path"),
           py::arg("text"), py::arg("is_json"));
  module.def("edit", &edit, py::arg("data"), py::arg("changes"), py::arg("keep_comments"));
  module.def(
      "is_utf8",
      [](const std::string& bytes)
      { return unlocked([&] { return source::Document::parse(bytes).encoding().isUtf8(); }); },
      py::arg("data"));
  module.def("fields", &fields);
}

} // namespace vesk::python
