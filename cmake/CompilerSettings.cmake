# SPDX-License-Identifier: Apache-2.0
# What every target of this project is compiled with.

set(VESKPACKAGE_SANITIZE "" CACHE STRING "Sanitizers to build with, comma-separated")
option(VESKPACKAGE_COVERAGE "Instrument for line coverage" OFF)

function(vesk_compiler_settings target)
  set_target_properties(
    ${target}
    PROPERTIES CXX_EXTENSIONS OFF
               CXX_VISIBILITY_PRESET hidden
               VISIBILITY_INLINES_HIDDEN ON
               POSITION_INDEPENDENT_CODE ON
               # An installed library finds its neighbours wherever the tree stands.
               INSTALL_RPATH "$ORIGIN;$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
  target_compile_features(${target} PUBLIC cxx_std_17)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  if(VESKPACKAGE_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(VESKPACKAGE_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${VESKPACKAGE_SANITIZE}
                                             -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${VESKPACKAGE_SANITIZE})
  endif()
  if(VESKPACKAGE_COVERAGE)
    target_compile_options(${target} PRIVATE --coverage)
    target_link_options(${target} PRIVATE --coverage)
  endif()
endfunction()
