# SPDX-License-Identifier: Apache-2.0
# Builds and runs examples against the library that is installed in PREFIX, as a CMake project and with
# pkg-config; the runtime libraries may be installed elsewhere, in RUNTIME. With a PYTHON, also uses the
# Python package that is installed in PYTHON_DIR. Without a PREFIX the build is installed into a folder first.
if(SANITIZE)
  set(flags "-fsanitize=${SANITIZE}")
endif()

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY OUTPUT_VARIABLE out)
  set(out "${out}" PARENT_SCOPE)
endfunction()

function(expect_edits program)
  run(${program} ${EXAMPLES_DIR}/manifests/greeting.xml ${WORK_DIR}/edited.xml)
  file(READ ${WORK_DIR}/edited.xml edited)
  if(NOT edited MATCHES "version=\"1.2.0.1\".*Bonjour.*>edited<.*greeting/goodbye")
    message(FATAL_ERROR "${program} wrote ${edited}")
  endif()
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
if(NOT DEFINED PREFIX)
  set(PREFIX ${WORK_DIR}/prefix)
  run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${PREFIX})
endif()

if(RUNTIME)
  set(ENV{LD_LIBRARY_PATH} ${RUNTIME}/${LIB_DIR})
endif()
run(${CMAKE_COMMAND} -G ${GENERATOR} -S ${EXAMPLES_DIR} -B ${WORK_DIR}/build
    -Dveskpackage_DIR=${PREFIX}/${LIB_DIR}/cmake/veskpackage
    -DCMAKE_PREFIX_PATH=${RUNTIME} -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_CXX_FLAGS=${flags})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
expect_edits(${WORK_DIR}/build/edit)
run(${WORK_DIR}/build/sections ${EXAMPLES_DIR}/manifests/office-assistant.xml)
if(NOT out MATCHES "contents: map.*web content: web/tablet\nbehavior: reception/welcome_visitor\n")
  message(FATAL_ERROR "sections printed ${out}")
endif()

set(ENV{PKG_CONFIG_PATH} ${PREFIX}/${LIB_DIR}/pkgconfig:${RUNTIME}/${LIB_DIR}/pkgconfig)
run(pkg-config --cflags --libs veskpackage)
separate_arguments(options UNIX_COMMAND "${flags} ${out}")
run(${CXX} -std=c++17 -fPIC ${EXAMPLES_DIR}/edit.cpp -o ${WORK_DIR}/edit ${options}
    -Wl,-rpath,${PREFIX}/${LIB_DIR})
expect_edits(${WORK_DIR}/edit)

# The types can be looked up by their names only, also by a linker that drops what is not called.
file(WRITE ${WORK_DIR}/names.cpp [[
#include <package/interop/registration.hpp>
#include <vesk/typesystem.hpp>
int main() { return vesk::arePackageTypesRegistered() && vesk::getStruct("::vesk::PackageInfoPrivate") ? 0 : 1; }
]])
run(${CXX} -std=c++17 -fPIC ${WORK_DIR}/names.cpp -o ${WORK_DIR}/names -Wl,--as-needed ${options}
    -Wl,-rpath,${PREFIX}/${LIB_DIR})
run(${WORK_DIR}/names)

if(PYTHON)
  set(ENV{PYTHONPATH} ${PREFIX}/${PYTHON_DIR})
  run(${PYTHON} -B ${CMAKE_CURRENT_LIST_DIR}/installed_package.py ${EXAMPLES_DIR}/manifests ${PREFIX})
endif()
