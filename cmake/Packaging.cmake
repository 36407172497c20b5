# SPDX-License-Identifier: Apache-2.0
# Debian packages, one a component of the installation: `cpack` in a build of the preset "packages".

get_target_property(soversion veskpackage SOVERSION)

set(CPACK_GENERATOR DEB)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
# The folder of the libraries was chosen for this prefix.
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PACKAGE_CONTACT "The veskpackage developers <developers@veskpackage.invalid>")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE ${PROJECT_NAME})
set(CPACK_DEBIAN_PACKAGE_RELEASE 0upstream1) # older than any package that Debian makes of the version
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
get_property(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS GLOBAL PROPERTY VESKPACKAGE_LIBRARY_DIRS)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/debian/ldconfigtrigger.cmake)

# Each description starts with a synopsis of its own. CPack has no setting for Multi-Arch before 3.31,
# but writes the text of a field as it is.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libveskpackage${soversion})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION "libs\nMulti-Arch: same")
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION
    "manifests of robot application packages, shared libraries
libveskpackage reads, edits, writes and reports the manifest of a robot's
application package: the XML file that says what the package is called, which
languages it speaks, what it needs, and which behaviors, dialogs, language
packs, services and executables it holds.

This package holds the shared libraries, and what they need of the robot's
runtime.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libveskpackage-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION "libdevel\nMulti-Arch: same")
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS library)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libboost-dev, qtbase5-dev")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
    "manifests of robot application packages, development files
libveskpackage reads, edits, writes and reports the manifest of a robot's
application package.

This package holds what programs that use the library are built with: its
headers, CMake and pkg-config files, and the schema of manifests.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME veskpackage)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION "utils\nMulti-Arch: foreign")
set(CPACK_COMPONENT_TOOL_DEPENDS library)
set(CPACK_DEBIAN_TOOL_DESCRIPTION
    "manifests of robot application packages, command-line tool
veskpackage handles the manifest of a robot's application package from a shell:
the XML file that says what the package is called, which languages it speaks,
what it needs, and what it holds.")

# The module is made for one version of Python, whose own tools compile the Python code where it is
# installed.
math(EXPR next_minor "${Python_VERSION_MINOR} + 1")
set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-veskpackage)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS python3-jinja2)
set(CPACK_COMPONENT_PYTHON_DEPENDS library)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
    "python3 (>= 3.${Python_VERSION_MINOR}~), python3 (<< 3.${next_minor})")
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/python/postinst
                                              ${PROJECT_SOURCE_DIR}/cmake/debian/python/prerm)
set(CPACK_DEBIAN_PYTHON_DESCRIPTION
    "manifests of robot application packages, Python 3 package
veskpackage reads, edits, checks, mends and writes the manifest of a robot's
application package: the XML file that says what the package is called, which
languages it speaks, what it needs, and what it holds.

This package is for programs in Python. It is typed.")

# What Debian keeps beside every package; installed with a package only.
set(debian ${PROJECT_BINARY_DIR}/debian)
set(version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(${PROJECT_SOURCE_DIR}/cmake/debian/changelog.in ${debian}/changelog.Debian @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${debian}/changelog COPYONLY)
execute_process(COMMAND gzip -9 --no-name --keep --force changelog changelog.Debian
                WORKING_DIRECTORY ${debian})
# Header-only libraries want their terms to go with the programs that they are built into.
set(terms "")
foreach(package IN ITEMS libcli11-dev libtomlplusplus-dev nlohmann-json3-dev pybind11-dev)
  if(EXISTS /usr/share/doc/${package}/copyright)
    file(READ /usr/share/doc/${package}/copyright text)
    string(APPEND terms "Of ${package}:\n\n${text}\n")
  endif()
endforeach()
file(WRITE ${debian}/copyright.built-in "${terms}")
set(components LIBRARY DEVELOPMENT TOOL)
if(VESKPACKAGE_PYTHON)
  list(APPEND components PYTHON)
endif()
foreach(component IN LISTS components)
  string(TOLOWER ${component} component_name)
  install(
    FILES ${PROJECT_SOURCE_DIR}/cmake/debian/copyright ${debian}/copyright.built-in
          ${debian}/changelog.gz ${debian}/changelog.Debian.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${component}_PACKAGE_NAME}
    COMPONENT ${component_name} EXCLUDE_FROM_ALL)
endforeach()

include(CPack)
