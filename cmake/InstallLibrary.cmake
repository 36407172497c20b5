# SPDX-License-Identifier: Apache-2.0
# Installs a library so that find_package(NAME) gives NAME::NAME, and pkg-config knows NAME.
#
#   vesk_install_library(NAME DESCRIPTION text
#                        [DEPENDENCIES find_dependency arguments...] [PKGCONFIG_REQUIRES names...]
#                        [LINK_OPTIONS of programs that use it...])
#
# Or adds the library to the CMake package of another one, as PACKAGE::EXPORT_NAME:
#
#   vesk_install_library(NAME PACKAGE name DESCRIPTION text [PKGCONFIG_REQUIRES names...])
#
# Headers (the target's file sets HEADERS and generated_headers) go below include/veskpackage, so that
# #include <package/...> and #include <vesk/...> hold in the installed tree as in the source tree.
include(CMakePackageConfigHelpers)

function(vesk_install_library name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "DESCRIPTION;PACKAGE" 
                        "DEPENDENCIES;PKGCONFIG_REQUIRES;LINK_OPTIONS")
  set(package ${name})
  if(ARG_PACKAGE)
    set(package ${ARG_PACKAGE})
  endif()

  set(headers ${CMAKE_INSTALL_INCLUDEDIR}/veskpackage)
  install(
    TARGETS ${name}
    EXPORT ${package}-targets
    LIBRARY COMPONENT library NAMELINK_COMPONENT development
    FILE_SET HEADERS DESTINATION ${headers}
    FILE_SET generated_headers DESTINATION ${headers}
    INCLUDES DESTINATION ${headers})
  set_property(GLOBAL APPEND PROPERTY VESKPACKAGE_LIBRARY_DIRS ${CMAKE_CURRENT_BINARY_DIR})
  if(NOT ARG_PACKAGE)
    vesk_install_cmake_package(${name} "${ARG_DEPENDENCIES}")
  endif()

  get_target_property(library ${name} OUTPUT_NAME)
  if(NOT library)
    set(library ${name})
  endif()
  list(JOIN ARG_PKGCONFIG_REQUIRES ", " requires)
  list(JOIN ARG_LINK_OPTIONS " " link_options)
  file(RELATIVE_PATH up_to_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/pkgconfig.pc.in
                 ${CMAKE_CURRENT_BINARY_DIR}/${library}.pc @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${library}.pc
          DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()

function(vesk_install_cmake_package name dependencies)
  set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/${name})
  install(EXPORT ${name}-targets NAMESPACE ${name}:: DESTINATION ${config_dir})

  set(find_dependencies "")
  foreach(dependency IN LISTS dependencies)
    string(APPEND find_dependencies "find_dependency(${dependency})\n")
  endforeach()
  configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/config.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/${name}-config.cmake
    INSTALL_DESTINATION ${config_dir})
  write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/${name}-config-version.cmake
                                   COMPATIBILITY SameMinorVersion)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${name}-config.cmake
                ${CMAKE_CURRENT_BINARY_DIR}/${name}-config-version.cmake
          DESTINATION ${config_dir})
endfunction()
