// SPDX-License-Identifier: Apache-2.0
#include "complaint.hpp"

#include <QRegularExpression>
#include <QString>

#include <iostream>

void complain(const std::string& file, const std::string& message)
{
  std::cerr << file << ": error: " << message << '\n';
}

void complainAsLogged(const std::string& file, const std::string& logged)
{
  static const QRegularExpression place(QStringLiteral("^ at line (\\d+), column (\\d+): "));
  const std::string prefix = "Syntax error in " + file;
  if (logged.compare(0, prefix.size(), prefix) == 0)
  {
    const QString rest = QString::fromStdString(logged.substr(prefix.size()));
    const QRegularExpressionMatch found = place.match(rest);
    if (found.hasMatch())
    {
      const QString at = ':' + found.captured(1) + ':' + found.captured(2);
      complain(file + at.toStdString(), rest.mid(found.capturedLength()).toStdString());
      return;
    }
  }
  complain(file, logged);
}
