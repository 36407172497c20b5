// SPDX-License-Identifier: Apache-2.0
#include "checking.hpp"

#include "batch.hpp"
#include "reading.hpp"
#include "unlocked.hpp"
#include "values.hpp"

#include <check/fixing.hpp>
#include <check/manifestcheck.hpp>

#include <filesystem>
#include <map>
#include <pybind11/stl.h>
#include <string>
#include <utility>
#include <vector>

namespace vesk::python
{
namespace
{
// Findings are tuples here, in the order of the members of the dataclasses in veskpackage.checking.

py::tuple toPython(const check::Position& position)
{
  return py::make_tuple(position.line, position.column, position.utf16Column, position.offset);
}

py::object toPython(const std::optional<check::Mend>& mend)
{
  if (!mend)
  {
    return py::none();
  }
  py::list edits;
  for (const source::Edit& edit : mend->edits)
  {
    edits.append(py::make_tuple(edit.range.begin, edit.range.end, toText(edit.text)));
  }
  return py::make_tuple(toText(mend->title), edits);
}

py::list toPython(const std::vector<check::Finding>& findings)
{
  py::list list;
  for (const check::Finding& finding : findings)
  {
    list.append(py::make_tuple(finding.rule->tag, check::nameOf(finding.severity),
                               toText(finding.message), toPython(finding.begin),
                               toPython(finding.end), toText(finding.place),
                               toPython(finding.mend)));
  }
  return list;
}

py::tuple toPython(const check::Checked& checked)
{
  return py::make_tuple(toPython(checked.findings), toText(checked.uuid));
}

check::Severity severityNamed(const std::string& name)
{
  using check::Severity;
  for (const Severity severity :
       {Severity::Off, Severity::Hint, Severity::Warning, Severity::Error})
  {
    if (name == check::nameOf(severity))
    {
      return severity;
    }
  }
  throw py::value_error("no severity: " + name + "; there are error, warning, hint and off");
}

check::Options optionsFrom(const std::map<std::string, std::string>& severities,
                           const std::string& packageFolder, std::size_t mostOfARule)
{
  check::Options options;
  for (const auto& [tag, severity] : severities)
  {
    if (check::findRule(tag) == nullptr)
    {
      throw py::value_error("no rule: " + tag);
    }
    options.severities[tag] = severityNamed(severity);
  }
  options.packageFolder = packageFolder;
  options.mostOfARule = mostOfARule;
  return options;
}

py::bytes bytesOfFile(const std::string& path)
{
  return unlocked([&] { return fileBytes(path); });
}

py::tuple checkBytes(const std::string& bytes, const check::Options& options)
{
  return toPython(unlocked([&] { return check::checkBytes(bytes, options); }));
}

std::string folderOf(const std::string& path)
{
  const std::string folder = std::filesystem::path(path).parent_path().string();
  return folder.empty() ? "." : folder;
}

/// For each path what was found, or the exception for a file that cannot be read. With \p looksUpFiles,
/// the folder of each is that of its package.
py::list checkAll(const std::vector<std::string>& paths, const check::Options& options,
                  bool looksUpFiles, const Stop& stop)
{
  return forEachPath(
      paths, stop,
      [&options, looksUpFiles](const std::string& path)
      {
        check::Options own = options;
        own.packageFolder = looksUpFiles ? folderOf(path) : std::string();
        return check::checkBytes(fileBytes(path), own);
      },
      [](const check::Checked& checked) -> py::object { return toPython(checked); });
}

py::tuple fixBytes(const std::string& bytes, const check::Options& options)
{
  const check::Fixed fixed = unlocked([&] { return check::fix(bytes, options); });
  return py::make_tuple(py::bytes(fixed.bytes), fixed.count, toPython(fixed.mended));
}

py::list rules()
{
  py::list list;
  for (const check::Rule& rule : check::rules())
  {
    list.append(py::make_tuple(rule.tag, check::nameOf(rule.severity), rule.isLost,
                               toText(rule.explanation)));
  }
  return list;
}
} // namespace

void defineChecking(py::module_& module)
{
  py::class_<check::Options>(module, "Options")
      .def(py::init(&optionsFrom), py::arg("severities"), py::arg("package_folder"),
           py::arg("most_of_a_rule"));
  module.def("check_bytes", &checkBytes, py::arg("data"), py::arg("options"));
  module.def("check_all", &checkAll, py::arg("paths"), py::arg("options"), py::arg("look_up_files"),
             py::arg("stop"));
  module.def("fix_bytes", &fixBytes, py::arg("data"), py::arg("options"));
  module.def("file_bytes", &bytesOfFile, py::arg("path"));
  module.def("rules", &rules);
}

} // namespace vesk::python
