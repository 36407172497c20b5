// SPDX-License-Identifier: Apache-2.0
#include "complaint.hpp"

#include <QRegularExpression>
#include <QString>

void complain(std::ostream& complaints, const std::string& file, const std::string& message)
{
  complaints << file << ": error: " << message << '\n';
}

void complainAsLogged(std::ostream& complaints, const std::string& file, const std::string& logged)
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
      complain(complaints, file + at.toStdString(), rest.mid(found.capturedLength()).toStdString());
      return;
    }
  }
  complain(complaints, file, logged);
}
