// SPDX-License-Identifier: Apache-2.0
#include "files/manifestfile.hpp"

#include "files/replacing.hpp"
#include "output/complaint.hpp"

#include <cstdio>

namespace tool
{
namespace
{
std::string nameOf(const std::string& file) { return file == "-" ? "<stdin>" : file; }
} // namespace

std::optional<std::string> readBytes(const std::string& file, std::string& trouble, int mebibytes)
{
  QFile input(QString::fromStdString(file));
  if (file == "-")
  {
    input.open(fileno(stdin), QIODevice::ReadOnly);
  }
  else
  {
    input.open(QIODevice::ReadOnly);
  }
  return readBytes(input, trouble, mebibytes);
}

std::optional<std::string> readBytes(QFile& input, std::string& trouble, int mebibytes)
{
  if (!input.isOpen())
  {
    trouble = "Could not open for reading: " + input.errorString().toStdString();
    return std::nullopt;
  }
  constexpr int mebibyte = 1 << 20;
  std::string bytes;
  for (QByteArray piece; !(piece = input.read(mebibyte)).isEmpty();)
  {
    bytes.append(piece.constData(), static_cast<std::size_t>(piece.size()));
    if (bytes.size() > static_cast<std::size_t>(mebibytes) * mebibyte)
    {
      trouble = "larger than " + std::to_string(mebibytes) + " MiB";
      return std::nullopt;
    }
  }
  if (input.error() != QFile::NoError)
  {
    trouble = "Could not read: " + input.errorString().toStdString();
    return std::nullopt;
  }
  return bytes;
}

std::optional<Manifest> load(const std::string& file, std::ostream& complaints)
{
  std::string trouble;
  std::optional<std::string> bytes = readBytes(file, trouble);
  if (!bytes)
  {
    complain(complaints, nameOf(file), trouble);
    return std::nullopt;
  }
  return parse(file, std::move(*bytes), complaints);
}

std::optional<Manifest> parse(const std::string& file, std::string bytes, std::ostream& complaints)
{
  vesk::LoadError error;
  std::optional<vesk::edit::Manifest> fields = vesk::edit::readManifest(bytes, error);
  if (!fields)
  {
    complain(complaints, nameOf(file), {error.line, error.column}, error.message);
    return std::nullopt;
  }
  return Manifest{file, nameOf(file), std::move(bytes), std::move(*fields)};
}

ExitCode forEachManifest(const Inputs& inputs,
                         const std::function<ExitCode(Manifest& manifest, std::ostream& out,
                                                      std::ostream& complaints)>& work,
                         const std::string& separator)
{
  return forEachFile(
      inputs,
      [&work](const std::string& file, std::ostream& out, std::ostream& complaints)
      {
        std::optional<Manifest> manifest = load(file, complaints);
        return manifest ? work(*manifest, out, complaints) : FileTrouble;
      },
      separator);
}

bool writeFile(const std::string& content, const std::string& file, std::ostream& out,
               std::ostream& complaints)
{
  if (file == "-")
  {
    out << content;
    return true;
  }
  const std::string trouble = replaceFile(file, content);
  if (!trouble.empty())
  {
    complain(complaints, file, trouble);
  }
  return trouble.empty();
}

} // namespace tool
