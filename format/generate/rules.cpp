// SPDX-License-Identifier: Apache-2.0
#include "files.hpp"

#include <check/manifestcheck.hpp>

QString rulesDocument()
{
  QString document = QStringLiteral("# The rules of the checker\n\n"
                                    "What `veskpackage check`, the language server and the library "
                                    "look for in a manifest, and how grave "
                                    "it is unless a policy says otherwise. `veskpackage check "
                                    "--explain RULE` prints the same.\n");
  for (const vesk::check::Rule& rule : vesk::check::rules())
  {
    document +=
        QStringLiteral("\n## %1\n\nSeverity: %2%3.\n\n%4\n")
            .arg(QString::fromUtf8(rule.tag), QString::fromUtf8(vesk::check::nameOf(rule.severity)),
                 rule.isLost ? QStringLiteral("; what it finds is lost when a program "
                                              "writes the manifest")
                             : QString(),
                 QString::fromUtf8(rule.explanation));
  }
  return document;
}
