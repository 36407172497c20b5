// SPDX-License-Identifier: Apache-2.0
#include "files/manifestfile.hpp"

#include "files/memoryfile.hpp"
#include "output/complaint.hpp"
#include "output/finding.hpp"

#include <check/manifestcheck.hpp>

#include <QBuffer>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstdio>
#include <unistd.h>

namespace tool
{
namespace
{
bool writeTo(QFileDevice& file, const std::string& content)
{
  if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
  {
    return false;
  }
  const char* left = content.data();
  const char* const end = left + content.size();
  while (left < end) // a disk that is nearly full takes a part
  {
    const qint64 written = file.write(left, end - left);
    if (written <= 0)
    {
      return false;
    }
    left += written;
  }
  return true;
}

/// Returns why it failed, or an empty text. Some write errors appear only when the data reaches the
/// disk, and the toolkit does not wait for that.
QString replaceFile(const QString& path, const std::string& content)
{
  QSaveFile file(path);
  if (!writeTo(file, content))
  {
    return file.errorString();
  }
  if (fdatasync(file.handle()) != 0 && errno != EINVAL) // EINVAL: there is nothing to sync
  {
    return qt_error_string(errno);
  }
  return file.commit() ? QString() : file.errorString();
}

/// Whether \p target is the file that the manifest was read from.
bool isInPlace(const Target& target, const Manifest& manifest)
{
  return manifest.file != "-" &&
         (target.isInPlace || QFileInfo(QString::fromStdString(target.output)) ==
                                  QFileInfo(QString::fromStdString(manifest.file)));
}
} // namespace

bool refuseToLose(const Manifest& manifest, std::ostream& complaints)
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
  if (!losses.empty())
  {
    complain(complaints, manifest.name,
             "not rewritten: what is listed above would be lost; --force rewrites it all the same");
  }
  return !losses.empty();
}

std::optional<std::string> readBytes(const std::string& file, std::string& trouble)
{
  constexpr int mebibyte = 1 << 20;
  QFile input(QString::fromStdString(file));
  const bool isOpen = file == "-" ? input.open(fileno(stdin), QIODevice::ReadOnly)
                                  : input.open(QIODevice::ReadOnly);
  std::string bytes;
  for (QByteArray piece; isOpen && !(piece = input.read(mebibyte)).isEmpty();)
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
  const QString path = QString::fromStdString(file);
  QString error;
  const QFileInfo existing(path);
  if (existing.exists() && !existing.isFile()) // a device or pipe, which must not be replaced
  {
    QFile device(path);
    error = writeTo(device, content) ? QString() : device.errorString();
  }
  else
  {
    error = replaceFile(path, content);
  }
  if (!error.isEmpty())
  {
    complain(complaints, file, "Could not write: " + error.toStdString());
  }
  return error.isEmpty();
}

ExitCode writeContent(const std::string& content, const Manifest& manifest, const Target& target,
                      std::ostream& out, std::ostream& complaints)
{
  const bool staysAsItIs = isInPlace(target, manifest) && content == manifest.bytes;
  const std::string& file = target.isInPlace ? manifest.file : target.output;
  return staysAsItIs || writeFile(content, file, out, complaints) ? Done : FileTrouble;
}

ExitCode writeManifest(const Manifest& manifest, const Target& target, std::ostream& out,
                       std::ostream& complaints)
{
  const std::string content = manifestOf(manifest.fields.package);
  const bool loses = isInPlace(target, manifest) && content != manifest.bytes;
  return loses && !target.isForced && refuseToLose(manifest, complaints)
             ? NegativeResult
             : writeContent(content, manifest, target, out, complaints);
}

} // namespace tool
