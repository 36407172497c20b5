// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_FILES_REPLACING_HPP
#define TOOLS_VESKPACKAGE_FILES_REPLACING_HPP

#include <QFileDevice>

#include <functional>
#include <memory>
#include <string>

namespace tool
{

/// Asked at the last moment: why a file must not be replaced; empty when it may be.
using Objection = std::function<std::string()>;

/// A file that is written piece by piece, and is there when it is finished: as a whole, or not at all.
/// One that is replaced keeps its mode, and a symbolic link to it stays one. What is there already and
/// is no plain file, such as a device or pipe, is written into.
class GrowingFile
{
public:
  explicit GrowingFile(const std::string& filePath);

  void append(const std::string& content);
  /// Returns why something failed since the beginning; empty when nothing did. Without this, the file
  /// stays as it was.
  std::string finish(const Objection& objection = {});

private:
  std::string path;
  std::unique_ptr<QFileDevice> file;
  std::string trouble;
};

/// Writes a file at once; returns as GrowingFile::finish().
std::string replaceFile(const std::string& path, const std::string& content,
                        const Objection& objection = {});

} // namespace tool

#endif
