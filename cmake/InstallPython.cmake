# SPDX-License-Identifier: Apache-2.0
# Installs a Python package (component python) into VESKPACKAGE_PYTHON_DIR:
#
#   vesk_install_python(NAME MODULE target)
#
# Called in the folder that holds the folder NAME of the package. The module, which becomes part of the
# package, finds the libraries wherever the tree stands.

# Where the interpreter looks in the prefix, or would if it were one of its own. In /usr, Debian's looks in
# a folder that all versions share.
if(NOT DEFINED VESKPACKAGE_PYTHON_DIR)
  execute_process(
    COMMAND
      ${Python_EXECUTABLE} -c [[
import os, site, sys
folders = site.getsitepackages()
prefix = sys.argv[1]
own = f"lib/python{sys.version_info[0]}.{sys.version_info[1]}/{os.path.basename(folders[0])}"
inside = [os.path.relpath(folder, prefix) for folder in folders if folder.startswith(f"{prefix}/lib")]
print([*inside, own][0], end="")
]] ${CMAKE_INSTALL_PREFIX}
    OUTPUT_VARIABLE folder COMMAND_ERROR_IS_FATAL ANY)
  set(VESKPACKAGE_PYTHON_DIR ${folder}
      CACHE STRING "Where the Python package is installed, relative to the prefix")
endif()

function(vesk_install_python name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "MODULE" "")

  cmake_path(
    RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR BASE_DIRECTORY
    ${CMAKE_INSTALL_PREFIX}/${VESKPACKAGE_PYTHON_DIR}/${name} OUTPUT_VARIABLE to_libraries)
  set(rpath "")
  if(BUILD_SHARED_LIBS)
    set(rpath "$ORIGIN/${to_libraries}")
  endif()
  set_target_properties(${ARG_MODULE} PROPERTIES INSTALL_RPATH "${rpath}")
  install(TARGETS ${ARG_MODULE} DESTINATION ${VESKPACKAGE_PYTHON_DIR}/${name} COMPONENT python)
  install(
    DIRECTORY ${name}
    DESTINATION ${VESKPACKAGE_PYTHON_DIR}
    COMPONENT python
    PATTERN __pycache__ EXCLUDE
    PATTERN "*.so" EXCLUDE)

  # By which Python's tools know of the package. pip writes its own.
  if(NOT SKBUILD)
    set(info ${CMAKE_CURRENT_BINARY_DIR}/${name}-${PROJECT_VERSION}.dist-info)
    file(CONFIGURE OUTPUT ${info}/METADATA CONTENT "Metadata-Version: 2.1
Name: @name@
Version: @PROJECT_VERSION@
Summary: @PROJECT_DESCRIPTION@
License: Apache-2.0
Requires-Python: >=3.11
" @ONLY)
    file(CONFIGURE OUTPUT ${info}/INSTALLER CONTENT "cmake\n")
    install(DIRECTORY ${info} DESTINATION ${VESKPACKAGE_PYTHON_DIR} COMPONENT python)
  endif()
endfunction()
