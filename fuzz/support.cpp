// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <edit/difference.hpp>
#include <edit/json.hpp>
#include <format/format.hpp>
#include <vesk/log.hpp>

#include <cstdlib>
#include <iostream>

namespace
{
std::vector<std::string>& logged()
{
  static auto& messages = *new std::vector<std::string>;
  return messages;
}

[[maybe_unused]] const vesk::log::HandlerId collecting = []
{
  vesk::log::removeHandler(vesk::log::defaultHandler);
  return vesk::log::addHandler([](const vesk::log::Message& message)
                               { logged().push_back(message.text); });
}();

std::string shown(const vesk::AnyConstReference& value)
{
  return value.isValid() ? vesk::edit::toJson(value, -1) : "nothing";
}
} // namespace

void require(bool isSo, const std::string& what)
{
  if (!isSo)
  {
    std::cerr << "FAULT: " << what << std::endl;
    std::abort();
  }
}

void requireEqual(const vesk::AnyConstReference& expected, const vesk::AnyConstReference& actual,
                  const std::string& what)
{
  for (const vesk::edit::Difference& difference : vesk::edit::differences(expected, actual))
  {
    require(false, what + ": " + vesk::edit::toText(difference.path()) + " is " +
                       shown(difference.after.value) + " instead of " +
                       shown(difference.before.value));
  }
}

std::vector<std::string> takeLogged() { return std::exchange(logged(), {}); }

bool loadFile(vesk::PackageInfo& package, const std::string& bytes)
{
  vesk::edit::MemoryFile file(QByteArray::fromStdString(bytes));
  const bool isLoaded = package.loadFromManifestFile(file);
  require(!file.isOpen(), "the file is left open");
  return isLoaded;
}

std::optional<vesk::PackageInfo>
readBothWays(const std::function<bool(vesk::PackageInfo&)>& load,
             const std::function<bool(vesk::PackageInfo&, vesk::LoadError&)>& read,
             const std::string& nameInLog)
{
  vesk::PackageInfo loaded(examplePackage());
  vesk::PackageInfo package(examplePackage());
  vesk::LoadError error;
  const bool isLoaded = load(loaded);
  const std::vector<std::string> messages = takeLogged();
  require(read(package, error) == isLoaded, "of two ways to read one refuses");
  require(takeLogged().empty(), "the way without the log logs");
  requireEqual(vesk::AnyConstReference(isLoaded ? loaded : examplePackage()),
               vesk::AnyConstReference(package), "what is read without the log");
  if (isLoaded)
  {
    require(messages.empty() && error.line == 0, "what is not refused has an error");
    return package;
  }
  requireEqual(vesk::AnyConstReference(examplePackage()), vesk::AnyConstReference(loaded),
               "a refused manifest has changed the package");
  const std::string message = "Syntax error in " + nameInLog + " at line " +
                              std::to_string(error.line) + ", column " +
                              std::to_string(error.column) + ": " + error.message;
  require(error.line > 0 && messages == std::vector{message}, "an error is not as logged");
  return std::nullopt;
}

const vesk::PackageInfo& examplePackage()
{
  static const auto& package = *[]
  {
    auto* const example = new vesk::PackageInfo;
    require(loadFile(*example, vesk::format::exampleOf(vesk::format::package())),
            "the example is no manifest");
    example->setInstaller("i");
    example->setPath("p");
    return example;
  }();
  return package;
}
