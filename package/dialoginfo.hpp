// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_DIALOGINFO_HPP
#define PACKAGE_DIALOGINFO_HPP

#include <package/export.hpp>

#include <iosfwd>
#include <map>
#include <memory>
#include <string>

class QDomDocument;
class QDomElement;
class QDomNode;

namespace XO
{
class XOValue;
}

namespace vesk
{

struct DialogInfoPrivate;
struct RecordAccess;

/// Describes one dialog of a package: the name of its topic, the version of the topic's type, and
/// for each language the path of the topic file.
///
/// In a manifest it is one element:
/// \code{.xml}
/// <dialogContent topicName="museum" typeVersion="1.0">
///   <topic language="en_US" path="museum/museum_enu"/>
///   <topic language="ja_JP" path="museum/museum_jpj"/>
/// </dialogContent>
/// \endcode
///
/// To the type system a dialog is the struct "::vesk::DialogInfo".
///
/// All text is UTF-8; paths are relative to the package. Nothing is checked and nothing reports an
/// error. A copy shares nothing with its source. A moved-from object may only be destroyed or
/// assigned to. An object must not be changed while another thread uses it.
class VESKPACKAGE_EXPORT DialogInfo
{
public:
  /// An empty dialog of type version "1.0".
  DialogInfo();
  DialogInfo(const DialogInfo& other);
  DialogInfo(DialogInfo&& other) noexcept;
  /// Copies all of \p other. Returns another copy, not a reference to this object.
  DialogInfo operator=(const DialogInfo& other);
  /// A dialog from its variant form: an array of exactly 3 pairs [name, value], identified by
  /// position. Any other value gives a default dialog; a part of the wrong kind is read as an empty
  /// value.
  DialogInfo(const XO::XOValue& value);
  ~DialogInfo();

  std::string topicName() const;
  void setTopicName(const std::string& name);

  std::string typeVersion() const;
  void setTypeVersion(const std::string& version);

  /// The path of the topic file in exactly this language; empty when there is none.
  std::string topic(const std::string& language) const;
  /// Language to path; valid until this object is changed or destroyed.
  const std::map<std::string, std::string>& topics() const;
  /// Mind the order: the language first, unlike the setters of the other descriptors.
  void setTopic(const std::string& language, const std::string& path);
  /// False when there is no topic in this language.
  bool removeTopic(const std::string& language);

  /// Takes over the attributes of a "dialogContent" element, and adds or replaces its topics.
  /// A missing attribute gives an empty text, also for the type version. Always true.
  bool loadFromManifest(QDomElement& element);

  /// Appends a "dialogContent" element to \p parent. Topics without a language or without a path
  /// are left out.
  void saveToManifest(QDomDocument& doc, QDomNode& parent) const;

  /// The dialog's variant form: an array of the 3 pairs [name, value] "topicName", "typeVersion" and
  /// "topics".
  XO::XOValue toXOValue() const;

private:
  friend struct RecordAccess;
  std::unique_ptr<DialogInfoPrivate> record;
};

/// Equal when topic name, type version and all topics are, byte for byte.
/// \{
VESKPACKAGE_EXPORT bool operator==(const DialogInfo& left, const DialogInfo& right);
VESKPACKAGE_EXPORT bool operator!=(const DialogInfo& left, const DialogInfo& right);
/// \}

/// Prints the dialog as a block of labelled lines, each flushed as it is written. It is meant for
/// people and cannot be read back.
VESKPACKAGE_EXPORT std::ostream& operator<<(std::ostream& out, const DialogInfo& dialog);

} // namespace vesk

#endif
