// SPDX-License-Identifier: Apache-2.0
#include <package/packageinfo.hpp>
#include <package/reporting.hpp>

#include <ostream>

namespace vesk
{

std::ostream& operator<<(std::ostream& out, const PackageInfo& package)
{
  out << "UUID: " << package.uuid() << std::endl;
  out << "Version: " << package.version() << std::endl;
  out << "Type Version: " << package.typeVersion() << std::endl;
  out << "Author: " << package.author() << std::endl;
  out << "Organization: " << package.organization() << std::endl;
  out << "Date: " << package.date() << std::endl;
  out << "Channel: " << package.channel() << std::endl;
  out << "Path: " << package.path() << std::endl;
  out << "Names: " << std::endl;
  printTexts(out, package.names());
  out << "Descriptions:" << std::endl;
  printTexts(out, package.descriptions());
  out << "Supported Languages:" << std::endl;
  for (const std::string& language : package.supportedLanguages())
  {
    out << "  " << language << std::endl;
  }
  out << "Robotic requirements:" << std::endl;
  for (const RobotRequirement& robot : package.robotRequirements())
  {
    out << "Model:" << robot.model << "; "
        << "Head: " << robot.minHeadVersion << " ~ " << robot.maxHeadVersion << "; "
        << "Body: " << robot.minBodyVersion << " ~ " << robot.maxBodyVersion << std::endl;
  }
  out << "Software requirements:" << std::endl;
  for (const MirelRequirement& software : package.mirelRequirements())
  {
    out << software.minVersion << " ~ " << software.maxVersion << std::endl;
  }
  out << "Languages" << std::endl << "*********" << std::endl;
  for (const LanguageInfo& language : package.languages())
  {
    out << language;
  }
  out << "Behaviors" << std::endl << "*********" << std::endl;
  for (const BehaviorInfo& behavior : package.behaviors())
  {
    out << behavior;
  }
  out << "Dialogs" << std::endl << "*******" << std::endl;
  for (const DialogInfo& dialog : package.dialogs())
  {
    out << dialog;
  }
  return out;
}

} // namespace vesk
