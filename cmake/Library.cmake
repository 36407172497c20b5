# SPDX-License-Identifier: Apache-2.0
# What the libraries of this project have in common.
#
#   vesk_library(NAME EXPORTS namespaces and functions... HEADERS public headers...)
#
# Called in the folder of the library NAME after add_library: gives it the alias NAME::NAME, its
# version, an export header FOLDER/export.hpp, and its public headers, which are included by the
# folder's name (<package/...>, <vesk/...>).
#
# A shared library exports what its export header marks. Instantiations of other people's templates
# are visible without a mark, so the linker hides what EXPORTS does not name.
include(GenerateExportHeader)

function(vesk_library name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "EXPORTS;HEADERS")
  cmake_path(GET CMAKE_CURRENT_SOURCE_DIR FILENAME folder)
  cmake_path(GET CMAKE_CURRENT_SOURCE_DIR PARENT_PATH base_dir)
  set(generated ${CMAKE_CURRENT_BINARY_DIR}/include)

  add_library(${name}::${name} ALIAS ${name})
  vesk_compiler_settings(${name})
  set_target_properties(${name} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION
                                                                      ${PROJECT_VERSION_MAJOR})
  generate_export_header(${name} EXPORT_FILE_NAME ${generated}/${folder}/export.hpp)
  target_sources(
    ${name}
    PUBLIC FILE_SET
           HEADERS
           BASE_DIRS
           ${base_dir}
           FILES
           ${ARG_HEADERS}
           FILE_SET
           generated_headers
           TYPE
           HEADERS
           BASE_DIRS
           ${generated}
           FILES
           ${generated}/${folder}/export.hpp)

  if(NOT VESKPACKAGE_SANITIZE) # sanitizers compare addresses of type information
    set(patterns "")
    foreach(export IN LISTS ARG_EXPORTS)
      string(APPEND patterns "${export}*; *?for?${export}*; ") # as in "vtable for vesk::AnyValue"
    endforeach()
    set(map ${CMAKE_CURRENT_BINARY_DIR}/exports.map)
    file(CONFIGURE OUTPUT ${map} CONTENT "{ global: extern \"C++\" { ${patterns}}; local: *; };\n")
    target_link_options(${name} PRIVATE LINKER:--version-script=${map})
    set_property(TARGET ${name} APPEND PROPERTY LINK_DEPENDS ${map})
  endif()
endfunction()
