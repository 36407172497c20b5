// SPDX-License-Identifier: Apache-2.0
#include <package/sections.hpp>

namespace vesk
{

PackageService serviceFrom(const QDomElement& element)
{
  const ManifestNames& names = manifestNames();
  PackageService service;
  service.execStart = attributeOf(element, names.execStart);
  service.name = attributeOf(element, names.name);
  service.autoRun = attributeOf(element, names.autorun) == "true";
  return service;
}

RobotRequirement robotRequirementFrom(const QDomElement& element)
{
  const ManifestNames& names = manifestNames();
  RobotRequirement robot;
  robot.model = attributeOf(element, names.model);
  robot.minHeadVersion = attributeOf(element, names.minHeadVersion);
  robot.maxHeadVersion = attributeOf(element, names.maxHeadVersion);
  robot.minBodyVersion = attributeOf(element, names.minBodyVersion);
  robot.maxBodyVersion = attributeOf(element, names.maxBodyVersion);
  return robot;
}

MirelRequirement mirelRequirementFrom(const QDomElement& element)
{
  const ManifestNames& names = manifestNames();
  MirelRequirement software;
  software.minVersion = attributeOf(element, names.minVersion);
  software.maxVersion = attributeOf(element, names.maxVersion);
  return software;
}

std::string executableFileFrom(const QDomElement& element)
{
  return attributeOf(element, manifestNames().path);
}

} // namespace vesk
