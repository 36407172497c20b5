// SPDX-License-Identifier: Apache-2.0
#include <package/sections.hpp>

namespace vesk
{

PackageService serviceFrom(const XmlNode& element)
{
  const ManifestNames& names = manifestNames();
  PackageService service;
  service.execStart = element.attribute(names.execStart);
  service.name = element.attribute(names.name);
  service.autoRun = element.attribute(names.autorun) == "true";
  return service;
}

RobotRequirement robotRequirementFrom(const XmlNode& element)
{
  const ManifestNames& names = manifestNames();
  RobotRequirement robot;
  robot.model = element.attribute(names.model);
  robot.minHeadVersion = element.attribute(names.minHeadVersion);
  robot.maxHeadVersion = element.attribute(names.maxHeadVersion);
  robot.minBodyVersion = element.attribute(names.minBodyVersion);
  robot.maxBodyVersion = element.attribute(names.maxBodyVersion);
  return robot;
}

MirelRequirement mirelRequirementFrom(const XmlNode& element)
{
  const ManifestNames& names = manifestNames();
  MirelRequirement software;
  software.minVersion = element.attribute(names.minVersion);
  software.maxVersion = element.attribute(names.maxVersion);
  return software;
}

std::string executableFileFrom(const XmlNode& element)
{
  return element.attribute(manifestNames().path);
}

} // namespace vesk
