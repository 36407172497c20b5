// SPDX-License-Identifier: Apache-2.0
#include <format/describe.hpp>
#include <package/manifest2/webinfo.hpp>
#include <package/packageinfo_p.hpp>

namespace vesk::format
{
namespace
{
using Package = PackageInfoPrivate;

Description<Attribute> version(const std::string& name, const char* meaning)
{
  return attribute(name, meaning).of(Type::Version).ifAbsent("empty: no bound");
}

Description<Element> languages(const std::string& name, const char* meaning)
{
  return list(name, meaning,
              text(n().language, "The code of a language.")
                  .of(Type::Language)
                  .ifSeveral(Several::CountOnce)
                  .whenWritten(Written::Always)
                  .like("en_US")
                  .needed());
}

Element contents()
{
  return element(n().contents, "What the package holds, in any order.")
      .ifSeveral(Several::CountForOneReader)
      .whenWritten(Written::Always)
      .with(describeBehavior())
      .with(describeDialog())
      .with(describeLanguagePack())
      .with(
          element(n().webContent, "Web content, such as pages for a screen.")
              .heldBy({"::vesk::PackageInfo2", "web", "web"})
              .ifSeveral(Several::LastCounts)
              .readBy(Readers::LoadManifest)
              .whenWritten(Written::Never)
              .with(path().heldBy(&WebInfo::path).whenWritten(Written::Never).like("web/tablet")));
}

Element requirements()
{
  using Robot = RobotRequirement;
  using Software = MirelRequirement;
  return element(n().requirements, "What the package runs on, in any order.")
      .ifSeveral(Several::CountForOneReader)
      .with(element(n().mirelRequirement,
                    "Versions of Mirel, the robot's system software, that the package runs on.")
                .heldBy(&Package::mirelRequirements)
                .repeatable()
                .whenWritten(Written::Always)
                .with(version(n().minVersion, "The lowest version of the system software.")
                          .heldBy(&Software::minVersion)
                          .like("2.4"))
                .with(version(n().maxVersion, "The highest version of the system software.")
                          .heldBy(&Software::maxVersion)
                          .like("3.9")))
      .with(element(n().robotRequirement, "A robot that the package runs on.")
                .heldBy(&Package::robotRequirements)
                .repeatable()
                .whenWritten(Written::Always)
                .with(attribute(n().model, "The model of the robot.")
                          .heldBy(&Robot::model)
                          .ifAbsent("empty: any model")
                          .like("lobby-tall"))
                .with(version(n().minHeadVersion, "The lowest version of the robot's head.")
                          .heldBy(&Robot::minHeadVersion)
                          .like("2.0"))
                .with(version(n().maxHeadVersion, "The highest version of the robot's head.")
                          .heldBy(&Robot::maxHeadVersion)
                          .like("4.9"))
                .with(version(n().minBodyVersion, "The lowest version of the robot's body.")
                          .heldBy(&Robot::minBodyVersion)
                          .like("1.0"))
                .with(version(n().maxBodyVersion, "The highest version of the robot's body.")
                          .heldBy(&Robot::maxBodyVersion)
                          .like("1.9")));
}

Element services()
{
  return element(n().services, "The services that the package provides.")
      .ifSeveral(Several::CountForOneReader)
      .with(element(n().service, "A service.")
                .heldBy(&Package::services)
                .repeatable()
                .whenWritten(Written::Always)
                .with(attribute(n().name, "The name of the service.")
                          .heldBy(&PackageService::name)
                          .like("Calendar")
                          .needed())
                .with(attribute(n().execStart, "The command line that starts the service.")
                          .heldBy(&PackageService::execStart)
                          .like("bin/calendar --interval 300")
                          .needed())
                .with(attribute(n().autorun,
                                "Whether the service is started by itself: \"true\" means yes.")
                          .heldBy(&PackageService::autoRun)
                          .of(Type::Flag)
                          .usually({"true", "false"})
                          .like("true")
                          .ifAbsent("not started by itself")
                          .whenWritten(Written::Always)));
}

Element executableFiles()
{
  return element(n().executableFiles, "The files of the package that can be executed.")
      .ifSeveral(Several::CountForOneReader)
      .with(element(n().file, "An executable file.")
                .heldBy(&Package::executableFiles)
                .repeatable()
                .whenWritten(Written::Always)
                .with(path().as(Role::Value).like("bin/calendar")));
}
} // namespace

Element describePackage()
{
  return element(n().package, "The manifest of a package. Its sections stand in any order.")
      .whenWritten(Written::Always)
      .with(attribute(n().uuid, "The package's identifier, which no other package has.")
                .heldBy(&Package::uuid)
                .like("org.example.guide")
                .ifAbsent("empty, and the robot's modules are not told of the package")
                .needed())
      .with(attribute(n().version, "The version of the package.")
                .heldBy(&Package::version)
                .of(Type::Version)
                .like("2.0.3")
                .needed())
      .with(attribute(n().author, "Who made the package.")
                .heldBy(&Package::author)
                .like("Visitor team"))
      .with(attribute(n().organization, "The organization that the package comes from.")
                .heldBy(&Package::organization)
                .like("Museum of Tides"))
      .with(attribute(n().date, "The date of this version of the package, in any form.")
                .heldBy(&Package::date)
                .like("2024-06-28"))
      .with(attribute(n().typeVersion, "The version of the manifest's format.")
                .heldBy(&Package::typeVersion)
                .of(Type::Version)
                .like("1.0"))
      .with(attribute(n().channel, "The channel through which the package is distributed.")
                .heldBy(&Package::channel)
                .like("stable"))
      .with(names("What the package is called in each language.", "Museum guide")
                .heldBy(&Package::langToName)
                .ifSeveral(Several::CountForOneReader))
      .with(descriptions("What the package is for, in each language.",
                         "Welcomes visitors & tells them about the galleries.")
                .heldBy(&Package::langToDesc)
                .ifSeveral(Several::CountForOneReader))
      .with(languages(n().supportedLanguages, "The languages of the package's content.")
                .heldBy(&Package::supportedLanguages)
                .ifSeveral(Several::CountForOneReader))
      .with(languages(n().descriptionLanguages,
                      "The languages of the package's names and descriptions.")
                .heldBy(&Package::descriptionLanguages)
                .readBy(Readers::PackageInfo))
      .with(contents())
      .with(requirements())
      .with(services())
      .with(executableFiles());
}

} // namespace vesk::format
