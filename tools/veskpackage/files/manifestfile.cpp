// SPDX-License-Identifier: Apache-2.0
#include "files/manifestfile.hpp"

#include "files/memoryfile.hpp"
#include "files/replacing.hpp"
#include "output/complaint.hpp"
#include "output/finding.hpp"

#include <check/manifestcheck.hpp>

#include <QBuffer>
#include <QFileInfo>

#include <cstdio>

namespace tool
{
namespace
{
/// Complains of what \p manifest has that would be lost; false when there is nothing.
bool complainOfLosses(const Manifest& manifest, std::ostream& complaints)
{
  vesk::check::Options options;
  for (const vesk::check::Rule& rule : vesk::check::rules())
  {
    options.severities[rule.tag] =
        rule.isLost ? vesk::check::Severity::Warning : vesk::check::Severity::Off;
  }
  QBuffer bytes;
  bytes.setData(QByteArray::fromStdString(manifest.bytes));
  bytes.open(QIODevice::ReadOnly);
  const auto losses = vesk::check::checkDevice(bytes, options);
  for (const vesk::check::Finding& loss : losses)
  {
    printFinding(complaints, manifest.name, loss, false);
  }
  return !losses.empty();
}
} // namespace

std::optional<std::string> readBytes(const std::string& file, std::string& trouble)
{
  QFile input(QString::fromStdString(file));
  file == "-" ? input.open(fileno(stdin), QIODevice::ReadOnly) : input.open(QIODevice::ReadOnly);
  return readBytes(input, trouble);
}

std::optional<std::string> readBytes(QFile& input, std::string& trouble)
{
  constexpr int mebibyte = 1 << 20;
  std::string bytes;
  for (QByteArray piece; input.isOpen() && !(piece = input.read(mebibyte)).isEmpty();)
  {
    bytes.append(piece.constData(), static_cast<std::size_t>(piece.size()));
    if (bytes.size() > std::size_t{mostMebibytes} * mebibyte)
    {
      trouble = "larger than " + std::to_string(mostMebibytes) + " MiB";
      return std::nullopt;
    }
  }
  if (input.error() != QFile::NoError)
  {
    trouble = "Could not open for reading: " + input.errorString().toStdString();
    return std::nullopt;
  }
  return bytes;
}

std::optional<Manifest> load(const std::string& file, std::ostream& complaints)
{
  const std::string name = file == "-" ? "<stdin>" : file;
  std::string trouble;
  const std::optional<std::string> bytes = readBytes(file, trouble);
  if (!bytes)
  {
    complain(complaints, name, trouble);
    return std::nullopt;
  }
  Manifest manifest{file, name, *bytes, {}};
  vesk::LoadError error;
  if (!vesk::edit::readManifest(manifest.bytes, manifest.fields, error))
  {
    const std::string place = std::to_string(error.line) + ':' + std::to_string(error.column);
    complain(complaints, name + ':' + place, error.message);
    return std::nullopt;
  }
  return manifest;
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

vesk::PackageInfo packageIn(const std::string& content)
{
  QBuffer input;
  input.setData(QByteArray::fromStdString(content));
  input.open(QIODevice::ReadOnly);
  vesk::LoadError ignored;
  vesk::PackageInfo package;
  package.readManifestDevice(input, ignored);
  return package;
}

std::string manifestOf(const vesk::PackageInfo& package)
{
  MemoryFile content;
  package.saveToManifestFile(content);
  return content.content.toStdString();
}

bool writeFile(const std::string& content, const std::string& file, std::ostream& out,
               std::ostream& complaints)
{
  if (file == "-")
  {
    out << content;
    return true;
  }
  const QFileInfo existing(QString::fromStdString(file));
  const bool isDevice = existing.exists() && !existing.isFile(); // or a pipe: not to be replaced
  const std::string trouble = isDevice ? writeInto(file, content) : replaceFile(file, content);
  if (!trouble.empty())
  {
    complain(complaints, file, trouble);
  }
  return trouble.empty();
}

ExitCode writeManifest(const Manifest& manifest, const Target& target, std::ostream& out,
                       std::ostream& complaints)
{
  const std::string content = manifestOf(manifest.fields.package);
  const bool isSameFile = target.isInPlace || QFileInfo(QString::fromStdString(target.output)) ==
                                                  QFileInfo(QString::fromStdString(manifest.file));
  if (!isSameFile || manifest.file == "-")
  {
    return writeFile(content, target.output, out, complaints) ? Done : FileTrouble;
  }
  if (content == manifest.bytes)
  {
    return Done;
  }
  if (!target.isForced && complainOfLosses(manifest, complaints))
  {
    complain(complaints, manifest.name,
             "not rewritten: what is listed above would be lost; --force rewrites it all the same");
    return NegativeResult;
  }
  return writeFile(content, manifest.file, out, complaints) ? Done : FileTrouble;
}

} // namespace tool
