// SPDX-License-Identifier: Apache-2.0
#ifndef CHECK_PACKAGEFILES_HPP
#define CHECK_PACKAGEFILES_HPP

#include <QHash>
#include <QSet>
#include <QString>

namespace vesk::check
{

/// Whether a path is absolute, or leads out of the folder that it is relative to. Links are not
/// looked at.
bool leavesPackage(const QString& path);

/// Whether a path is written as other systems do, with backslashes or the letter of a drive.
bool isForeign(const QString& path);

/// A path without what does not change where it leads, such as the "./" of "./a" and the "/" of "a/".
QString plain(const QString& path);

/// The program that a command line starts, as far as that is a path in the package: its first word
/// if that is relative and has a "/". Empty for any other, and where a shell would have to tell.
QString programIn(const QString& commandLine);

/// What lies in the folder of a package. Asks the file system once for each path.
class PackageFiles
{
public:
  /// \p packageFolder is empty where nothing is to be looked up.
  explicit PackageFiles(const QString& packageFolder) : root(packageFolder) {}

  bool areKnown() const { return !root.isEmpty(); }
  /// Whether there is a file or folder at this path or, unless \p isWhole, a file whose path is this
  /// one with an extension added. Symbolic links are followed, wherever they lead.
  bool has(const QString& path, bool isWhole);

private:
  bool lookUp(const QString& path, bool isWhole);

  QString root;
  QHash<QString, bool> lookedUp;                       ///< by path; of whole ones, with "/" behind
  QHash<QString, QSet<QString>> filesWithoutExtension; ///< by folder
};

} // namespace vesk::check

#endif
