// SPDX-License-Identifier: Apache-2.0
// Preloaded into a program: before its file operation with the number FAULT_AT, the program gets the
// signal FAULT, or, when that is a folder, the folder is renamed to end in ".gone".
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace
{
void beginOperation()
{
  static int operations = 0;
  const char* const at = std::getenv("FAULT_AT");
  const char* const fault = std::getenv("FAULT");
  if (at == nullptr || fault == nullptr || ++operations != std::stoi(at))
  {
    return;
  }
  if (*fault == '/')
  {
    renameat(AT_FDCWD, fault, AT_FDCWD, (std::string(fault) + ".gone").c_str());
  }
  else
  {
    static_cast<void>(std::raise(std::stoi(fault)));
  }
}

/// The operation that is in the place of the one here.
template <typename Operation>
Operation* following(const char* name)
{
  beginOperation();
  return reinterpret_cast<Operation*>(dlsym(RTLD_NEXT, name));
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
  return following<decltype(open64)>("open64")(path, flags, mode);
}

ssize_t read(int file, void* to, std::size_t size)
{
  return following<decltype(read)>("read")(file, to, size);
}
ssize_t write(int file, const void* from, std::size_t size)
{
  return following<decltype(write)>("write")(file, from, size);
}
int fchmod(int file, mode_t mode) { return following<decltype(fchmod)>("fchmod")(file, mode); }
int fdatasync(int file) { return following<decltype(fdatasync)>("fdatasync")(file); }
int linkat(int from, const char* path, int to, const char* newPath, int flags)
{
  return following<decltype(linkat)>("linkat")(from, path, to, newPath, flags);
}
int rename(const char* path, const char* newPath)
{
  return following<decltype(rename)>("rename")(path, newPath);
}
int close(int file) { return following<decltype(close)>("close")(file); }
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
