// SPDX-License-Identifier: Apache-2.0
#include "reading.hpp"

#include "batch.hpp"
#include "failures.hpp"
#include "record.hpp"
#include "unlocked.hpp"
#include "values.hpp"

#include <edit/manifest.hpp>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <pybind11/stl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace vesk::python
{
namespace
{
constexpr std::size_t mostBytes = std::size_t(1) << 30;

/// After a failure that is but an interruption by a signal, lets Python handle that, which may throw.
void requireInterruption(const std::string& path)
{
  if (errno != EINTR)
  {
    throw BadFile(errno, path);
  }
  const py::gil_scoped_acquire lock;
  if (PyErr_CheckSignals() != 0)
  {
    throw py::error_already_set();
  }
}

class OpenFile
{
public:
  explicit OpenFile(const std::string& filePath) : path(filePath)
  {
    // The system would open what the part before it names.
    if (path.find('\0') != std::string::npos)
    {
      throw BadFile(ENOENT, path);
    }
    while ((descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC)) < 0)
    {
      requireInterruption(path);
    }
  }
  ~OpenFile() { close(descriptor); }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  /// Of a file that is no pipe or device; else what to begin with.
  std::size_t size() const
  {
    constexpr std::size_t usual = 1 << 16;
    struct stat facts = {};
    const bool isSized = fstat(descriptor, &facts) == 0 && facts.st_size > 0;
    return isSized ? static_cast<std::size_t>(facts.st_size) : usual;
  }

  /// How many bytes have been read; 0 at the end.
  std::size_t read(char* bytes, std::size_t most)
  {
    for (;;)
    {
      const ssize_t count = ::read(descriptor, bytes, most);
      if (count >= 0)
      {
        return static_cast<std::size_t>(count);
      }
      requireInterruption(path);
    }
  }

private:
  const std::string& path;
  int descriptor = -1;
};

void requireSize(std::size_t size, const std::string& path)
{
  if (size > mostBytes)
  {
    LoadError error;
    error.path = path;
    error.message = "larger than " + std::to_string(mostBytes >> 20) + " MiB";
    error.isBeyondLimits = true;
    throw BadManifest(error);
  }
}

Record recordOf(std::optional<edit::Manifest> manifest, LoadError error, const std::string& path)
{
  if (!manifest)
  {
    error.path = path;
    throw BadManifest(std::move(error));
  }
  return Record(AnyValue(std::move(*manifest)));
}

Record recordFromBytes(const std::string& bytes, const std::string& path)
{
  requireSize(bytes.size(), path);
  LoadError error;
  std::optional<edit::Manifest> manifest = edit::readManifest(bytes, error);
  return recordOf(std::move(manifest), error, path);
}

Record recordFromFile(const std::string& path) { return recordFromBytes(fileBytes(path), path); }

Record load(const std::string& path)
{
  return unlocked([&] { return recordFromFile(path); });
}

/// For each path a Record, or the exception that load() would raise.
py::list loadAll(const std::vector<std::string>& paths, const Stop& stop)
{
  return forEachPath(paths, stop, recordFromFile,
                     [](Record record) { return py::cast(std::move(record)); });
}

Record readBytes(const std::string& bytes)
{
  return unlocked([&] { return recordFromBytes(bytes, {}); });
}

Record readText(const py::str& text)
{
  const std::string bytes = fromText(text);
  return unlocked(
      [&]
      {
        requireSize(bytes.size(), {});
        LoadError error;
        std::optional<edit::Manifest> manifest = edit::readManifestText(bytes, error);
        return recordOf(std::move(manifest), error, {});
      });
}

/// No other thread may use the package meanwhile.
py::bytes write(const Record& package)
{
  const auto& manifest = package.value.as<edit::Manifest>();
  return unlocked([&] { return edit::writeManifest(manifest.package, manifest.web); });
}
} // namespace

std::string fileBytes(const std::string& path)
{
  OpenFile file(path);
  std::string bytes;
  std::size_t filled = 0;
  for (std::size_t room = file.size();; room = filled)
  {
    requireSize(filled, path);
    bytes.resize(filled + std::min(room, mostBytes) + 1); // one more, to see the end
    std::size_t count = 0;
    while (filled < bytes.size() && (count = file.read(&bytes[filled], bytes.size() - filled)) != 0)
    {
      filled += count;
    }
    if (filled < bytes.size())
    {
      bytes.resize(filled);
      return bytes;
    }
  }
}

void defineReading(py::module_& module)
{
  module.def("load", &load, py::arg("path"));
  py::class_<Stop>(module, "Stop")
      .def(py::init<>())
      .def("set", [](Stop& stop) { stop.isSet = true; });
  module.def("load_all", &loadAll, py::arg("paths"), py::arg("stop"));
  module.def("read_bytes", &readBytes, py::arg("data"));
  module.def("read_text", &readText, py::arg("text"));
  module.def("write", &write, py::arg("package"));
}

} // namespace vesk::python
