// SPDX-License-Identifier: Apache-2.0
#ifndef TOOLS_VESKPACKAGE_FILES_INPUTFILES_HPP
#define TOOLS_VESKPACKAGE_FILES_INPUTFILES_HPP

#include "files/batch.hpp"

#include <fstream>
#include <optional>
#include <string>
#include <vector>

namespace tool
{

bool isFolder(const std::string& path);

/// Gives the files to work on one after the other, those of folders in the order of their names and
/// without hidden ones.
class InputFiles
{
public:
  /// Throws std::runtime_error when the list of files cannot be read.
  explicit InputFiles(const Inputs& inputs, LeftOut leftOut = {});

  /// Throws std::runtime_error when the list is of another kind, and what LeftOut throws.
  std::optional<InputFile> next();

  bool haveGivenNone() const { return hasGivenNone; }
  /// Says where no manifest was found, once there is no next one.
  std::string searched() const;

private:
  std::optional<InputFile> nextOfAll();
  std::optional<std::string> nextNamed();
  std::optional<std::string> nextInFolders();
  /// Continues with the files in a folder; false when \p path is not a readable folder.
  bool enter(const std::string& path);

  const Inputs& named;
  const LeftOut isLeftOut;
  std::size_t given = 0;
  std::size_t argument = 0; ///< from which the files come now, counted from 1; 0 for the list
  std::ifstream list;
  /// The folders that are being searched, from the outermost in; each with what is left of it, the
  /// next at the end.
  std::vector<std::vector<std::string>> folders;
  bool hasGivenNone = true;
  bool hasLeftOut = false;
};

} // namespace tool

#endif
