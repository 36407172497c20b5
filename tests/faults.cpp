// SPDX-License-Identifier: Apache-2.0
// Preloaded into a program, causes FAULT at one of its file operations, the one with the number
// FAULT_AT from where it first opens a manifest: for "signal N" the program gets that signal before
// the operation, for "error N" the operation fails with that error, and anything else is a folder
// that is renamed before the operation to end in ".gone". The operation's name goes into the file
// FAULT_LOG. Where FAULT_NAMED is set, files without a name are refused, as by some file systems.
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <fstream>
#include <string>
#include <unistd.h>

namespace
{
bool isManifestOpen = false;

std::string environment(const char* name)
{
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

/// The error with which the operation is to fail, or 0.
int beginOperation(const char* name)
{
  static int operations = 0;
  if (!isManifestOpen || std::to_string(++operations) != environment("FAULT_AT"))
  {
    return 0;
  }
  std::ofstream(environment("FAULT_LOG")) << name << '\n';
  const std::string fault = environment("FAULT");
  if (fault.find(' ') == std::string::npos)
  {
    renameat(AT_FDCWD, fault.c_str(), AT_FDCWD, (fault + ".gone").c_str());
    return 0;
  }
  const int number = std::stoi(fault.substr(fault.find(' ')));
  if (fault.compare(0, 6, "error ") == 0)
  {
    return number;
  }
  static_cast<void>(std::raise(number));
  return 0;
}

/// Calls the operation that is replaced here, unless it is to fail.
template <typename Operation, typename... Arguments>
auto pass(const char* name, Arguments... arguments)
{
  auto* const operation = reinterpret_cast<Operation*>(dlsym(RTLD_NEXT, name));
  if (const int error = beginOperation(name))
  {
    errno = error;
    return decltype(operation(arguments...)){-1};
  }
  return operation(arguments...);
}
} // namespace

// The declarations have names of their own for parameters.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {
int open64(const char* path, int flags, ...) // NOLINT(cert-dcl50-cpp): so it is declared
{
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = va_arg(arguments, mode_t);
  va_end(arguments);
  isManifestOpen = isManifestOpen || std::string(path).find(".xml") != std::string::npos;
  if ((flags & O_TMPFILE) == O_TMPFILE && !environment("FAULT_NAMED").empty())
  {
    errno = EOPNOTSUPP;
    return -1;
  }
  return pass<decltype(open64)>("open64", path, flags, mode);
}

ssize_t read(int file, void* to, std::size_t size)
{
  return pass<decltype(read)>("read", file, to, size);
}
ssize_t write(int file, const void* from, std::size_t size)
{
  return pass<decltype(write)>("write", file, from, size);
}
int fchmod(int file, mode_t mode) { return pass<decltype(fchmod)>("fchmod", file, mode); }
int fdatasync(int file) { return pass<decltype(fdatasync)>("fdatasync", file); }
int linkat(int from, const char* path, int to, const char* newPath, int flags)
{
  return pass<decltype(linkat)>("linkat", from, path, to, newPath, flags);
}
int rename(const char* path, const char* newPath)
{
  return pass<decltype(rename)>("rename", path, newPath);
}
int close(int file) { return pass<decltype(close)>("close", file); }
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
