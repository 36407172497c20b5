// SPDX-License-Identifier: Apache-2.0
#include "samplepackage.hpp"

#include <QCoreApplication>
#include <QDir>

#include <stdexcept>

vesk::PackageInfo samplePackage(int behaviors)
{
  vesk::PackageInfo package;
  package.setUuid("6f1c2f0e-8f3f-4f6e-9b38-9a2f5d1f7c11");
  package.setVersion("1.4.2");
  package.setAuthor("Robot team");
  package.setName("Reception", "en_US");
  package.setName("Réception", "fr_FR");
  package.addSupportedLanguage("en_US");
  package.addSupportedLanguage("fr_FR");
  package.addDescriptionLanguage("en_US");
  package.addDescriptionLanguage("fr_FR");
  for (int i = 0; i < behaviors; ++i)
  {
    const std::string number = std::to_string(i);
    vesk::BehaviorInfo behavior;
    behavior.setPath("reception/greet_" + number);
    behavior.setNature(vesk::BehaviorInfo::natureInteractive());
    behavior.setUserRequestable(true);
    behavior.setName("Greet visitor " + number, "en_US");
    behavior.setName("Accueillir le visiteur " + number, "fr_FR");
    behavior.setDescription("Greets a visitor & asks for the host's name.", "en_US");
    behavior.setDescription("Accueille un visiteur et demande le nom de l'hôte.", "fr_FR");
    behavior.addTag("reception", "en_US");
    behavior.addTag("visitor", "en_US");
    behavior.addTag("accueil", "fr_FR");
    behavior.addTriggerSentence("I have an appointment", "en_US");
    behavior.addTriggerSentence("j'ai un rendez-vous", "fr_FR");
    behavior.addLoadingResponse("Welcome! One moment, please.", "en_US");
    behavior.addLoadingResponse("Bienvenue ! Un instant, s'il vous plaît.", "fr_FR");
    behavior.addCondition("people.nearest.distance < 2.0 && zone == " + number, "start");
    behavior.addPermission(vesk::BehaviorInfo::k_permCanStandUp);
    package.addBehavior(behavior);
  }
  return package;
}

QString sampleManifestPath(int behaviors)
{
  return QDir::temp().filePath(QStringLiteral("manifest_bench_%1_%2.xml")
                                   .arg(QCoreApplication::applicationPid())
                                   .arg(behaviors));
}

void writeSampleManifest(const QString& path, int behaviors)
{
  if (!samplePackage(behaviors).saveToManifestFile(path.toStdString()))
  {
    throw std::runtime_error("cannot write " + path.toStdString());
  }
}
