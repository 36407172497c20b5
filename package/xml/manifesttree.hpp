// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_XML_MANIFESTTREE_HPP
#define PACKAGE_XML_MANIFESTTREE_HPP

#include <package/loaderror.hpp>
#include <package/xml/xmlnode.hpp>
#include <source/document.hpp>

#include <QDomDocument>

#include <optional>
#include <string>
#include <variant>

class QIODevice;

namespace vesk
{

/// Which parsers may read a manifest. The readers of manifests find the same in both trees; that of
/// `source/` is the cheaper one.
enum class Parsers
{
  Both,
  Toolkit
};

/// A manifest that has been parsed: by `source/` where it is read alike (readalike.hpp), else by the
/// toolkit, which has the last word on what is no manifest, and why.
class ManifestTree
{
public:
  explicit ManifestTree(source::Document document) : tree(std::move(document)) {}
  explicit ManifestTree(const QDomDocument& document) : tree(document) {}

  XmlNode root() const;

  /// Null when the other one has parsed it.
  /// \{
  const source::Document* inSource() const { return std::get_if<source::Document>(&tree); }
  const QDomDocument* inToolkit() const { return std::get_if<QDomDocument>(&tree); }
  /// \}

private:
  std::variant<source::Document, QDomDocument> tree;
};

/// Parsing of manifests. On failure no tree is returned and \p error is filled; on success \p error
/// is unchanged. Verdict, message and place are those of parseXml() (parsing.hpp). Where \p left is
/// not null, it gets the bytes of what the toolkit has parsed or refused, if that was not too much to
/// be kept.
/// \{

/// Parses all of an open device, in whatever encoding, without namespace processing. A read error
/// is treated as the end of the device.
std::optional<ManifestTree> parseManifest(QIODevice& device, LoadError& error,
                                          Parsers parsers = Parsers::Both,
                                          std::optional<std::string>* left = nullptr);

/// The same with a text in UTF-8, up to the first NUL byte, and with namespace processing.
std::optional<ManifestTree> parseManifest(const std::string& text, LoadError& error,
                                          Parsers parsers = Parsers::Both);

/// As parseManifest(), but a device that is not open, and a file that cannot be read to its end, are
/// errors. A file's errors have its path.
std::optional<ManifestTree> parseDevice(QIODevice& device, LoadError& error,
                                        Parsers parsers = Parsers::Both,
                                        std::optional<std::string>* left = nullptr);

/// The same with the file at \p path.
std::optional<ManifestTree> parseFile(const std::string& path, LoadError& error,
                                      Parsers parsers = Parsers::Both,
                                      std::optional<std::string>* left = nullptr);

/// \}

} // namespace vesk

#endif
