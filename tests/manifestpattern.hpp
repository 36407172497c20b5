// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_MANIFESTPATTERN_HPP
#define TESTS_MANIFESTPATTERN_HPP

#include <QRegularExpression>

#include <string>

/// Repeats what stands in braces: "{3*a#}" is "a0a1a2", and a "@" is one more than a "#". Inner
/// braces are expanded before outer ones.
inline std::string expanded(QString pattern)
{
  static const QRegularExpression repetition(QStringLiteral(R"(\{(\d+)\*([^{}]*)\})"));
  for (QRegularExpressionMatch match = repetition.match(pattern); match.hasMatch();
       match = repetition.match(pattern))
  {
    QString repeated;
    for (int i = 0; i < match.captured(1).toInt(); ++i)
    {
      QString text = match.captured(2);
      repeated += text.replace('#', QString::number(i)).replace('@', QString::number(i + 1));
    }
    pattern.replace(match.capturedStart(), match.capturedLength(), repeated);
  }
  return pattern.toStdString();
}

#endif
