// SPDX-License-Identifier: Apache-2.0
#include "output/finding.hpp"
#include "output/findingwriter.hpp"

#include <QString>
#include <QVector>

#include <algorithm>
#include <sstream>

namespace tool
{

using vesk::check::Finding;

namespace
{
bool isXmlCharacter(uint character)
{
  return character == '\t' || character == '\n' || character == '\r' ||
         (character >= 0x20 && character <= 0xD7FF) ||
         (character >= 0xE000 && character <= 0xFFFD) || character >= 0x10000;
}

/// A text as it stands in XML, also in an attribute; what XML cannot hold is U+FFFD.
std::string escaped(const std::string& text)
{
  QString result;
  for (const uint character : QString::fromStdString(text).toUcs4())
  {
    switch (character)
    {
    case '&':
      result += "&amp;";
      break;
    case '<':
      result += "&lt;";
      break;
    case '>':
      result += "&gt;";
      break;
    case '"':
      result += "&quot;";
      break;
    case '\t':
    case '\r':
      result += "&#" + QString::number(character) + ';';
      break;
    default:
      const uint shown = isXmlCharacter(character) ? character : 0xFFFDU;
      result += QString::fromUcs4(&shown, 1);
    }
  }
  return result.toStdString();
}

/// A file fails as a test where it makes the program fail: the same file, the same severities.
class JunitWriter : public FindingWriter
{
public:
  void begin(std::ostream& out) override
  {
    out << R"(<?xml version="1.0" encoding="UTF-8"?>)"
        << "\n<testsuites name=\"veskpackage check\">\n";
  }

  // A suite each, since a suite begins with its numbers, which of all files are known at the end only.
  void write(const CheckedFile& file, std::ostream& out) override
  {
    const std::string name = escaped(file.name);
    const bool isUnread = file.code == FileTrouble;
    const bool isFailure = !isUnread && file.code != Done;
    out << "<testsuite name=\"" << name << R"(" tests="1" failures=")" << (isFailure ? 1 : 0)
        << R"(" errors=")" << (isUnread ? 1 : 0) << R"(" skipped="0">)"
        << R"(<testcase classname="veskpackage.check" name=")" << name << R"(" file=")" << name
        << "\">";
    if (!file.findings.empty())
    {
      std::ostringstream lines;
      for (const Finding& finding : file.findings)
      {
        printFinding(lines, file.name, finding, false);
      }
      const char* const element = isUnread ? "error" : isFailure ? "failure" : "system-out";
      out << "\n<" << element;
      if (isUnread || isFailure)
      {
        const Finding& worst = worstOf(file.findings);
        out << " message=\"" << escaped(worst.message) << "\" type=\"" << worst.rule->tag << '"';
      }
      out << '>' << escaped(lines.str()) << "</" << element << ">\n";
    }
    out << "</testcase></testsuite>\n";
  }

  void end(std::ostream& out) override { out << "</testsuites>\n"; }

private:
  static const Finding& worstOf(const std::vector<Finding>& findings)
  {
    return *std::max_element(findings.begin(), findings.end(),
                             [](const Finding& left, const Finding& right)
                             { return left.severity < right.severity; });
  }
};
} // namespace

std::unique_ptr<FindingWriter> junitWriter(const WriterOptions&)
{
  return std::make_unique<JunitWriter>();
}

} // namespace tool
