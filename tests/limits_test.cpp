// SPDX-License-Identifier: Apache-2.0
// Manifests made to use up stack, memory or time.
#include "manifestpattern.hpp"
#include "support.hpp"

#include <package/manifest2/loadmanifest.hpp>
#include <package/packageinfo.hpp>

using vesk::PackageInfo;

namespace
{
/// The places and messages of the four ways to read the manifest, on a small stack, as
/// "line:column: message"; none where it is read.
std::vector<std::string> complaints(const std::string& manifest)
{
  const TemporaryFolder folder;
  const std::string path = folder.file("m.xml", manifest);
  CapturedLog captured;
  onSmallStack(
      [&]
      {
        QFile file(QString::fromStdString(path));
        PackageInfo().loadFromManifestFile(path);
        PackageInfo().loadFromManifestContent(manifest);
        PackageInfo().loadFromManifestFile(file);
        thrown<std::runtime_error>([&] { vesk::loadManifest(path); }); // and it is logged
      });
  static const QRegularExpression end(
      "^Syntax error in .*(?: at line |:)(\\d+)(?:, column |:)(\\d+: [^:]*)$",
      QRegularExpression::DotMatchesEverythingOption);
  std::vector<std::string> texts;
  for (const vesk::log::Message& message : captured.messages)
  {
    const QRegularExpressionMatch match = end.match(QString::fromStdString(message.text));
    texts.push_back((match.captured(1) + ':' + match.captured(2)).toStdString());
  }
  return texts;
}
} // namespace

// A line of golden/limits.txt has a number up to which its N is read; with one more, the manifest is
// refused at the place and for the reason behind it. A "-" stands where that is not counted.
TEST(Limits, AreAsListed)
{
  std::istringstream lines(contentOf(GOLDEN_FILES "/limits.txt"));
  for (std::string line; std::getline(lines, line);)
  {
    SCOPED_TRACE(line);
    const QStringList parts = QString::fromStdString(line).replace("\\n", "\n").split(" => ");
    const int most = parts[0].section(' ', 0, 0).toInt(); // 0 where there is none
    const auto complaintsWith = [&](int count)
    {
      const QString repetition = QString("{%1*").arg(count);
      return complaints(expanded(parts[0].section(' ', 1).replace("{N*", repetition)));
    };
    if (most > 0 || parts.size() == 1)
    {
      EXPECT_THAT(complaintsWith(most), testing::IsEmpty());
    }
    if (parts.size() > 1)
    {
      const bool isOfTexts = parts[1].contains("prefixes"); // others ignore namespaces
      const std::vector<std::string> expected(isOfTexts ? 1 : 4, parts[1].toStdString());
      EXPECT_EQ(complaintsWith(most + 1), expected);
    }
  }
}

TEST(Limits, LanguagesAreListedOnceHoweverMany)
{
  for (const std::size_t count : {1U, 15U, 16U, 17U, 30U})
  {
    PackageInfo package;
    for (const char* const pattern : {"%1*<l>#</l>}{%1*<l>#</l>}", "%1*<l>#</l>}"})
    {
      ASSERT_TRUE(package.loadFromManifestContent(expanded(
          "<p><supportedLanguages>{" + QString(pattern).arg(count) + "</supportedLanguages></p>")));
      EXPECT_EQ(package.supportedLanguages().size(), count);
    }
  }
}
