# SPDX-License-Identifier: Apache-2.0
# What every target of this project is compiled with.

set(VESKPACKAGE_SANITIZE "" CACHE STRING "Sanitizers to build with, comma-separated")
option(VESKPACKAGE_COVERAGE "Instrument for line coverage" OFF)

include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

# Makes a memory error end the process instead of being exploitable. Sanitizers do that themselves.
set(hardening_compile_options "")
set(hardening_link_options "")
if(NOT VESKPACKAGE_SANITIZE)
  foreach(flag IN ITEMS -fstack-protector-strong -fstack-clash-protection -fcf-protection)
    string(MAKE_C_IDENTIFIER has${flag} has_flag)
    check_cxx_compiler_flag(${flag} ${has_flag})
    if(${has_flag})
      list(APPEND hardening_compile_options ${flag})
    endif()
  endforeach()
  # Needs optimisation. A compiler or the builder may have set another level.
  list(APPEND hardening_compile_options
       $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3>)
  set(hardening_link_options LINKER:-z,relro,-z,now,-z,noexecstack,-z,defs)
endif()

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
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
                                            ${hardening_compile_options})
  target_compile_definitions(${target} PRIVATE _GLIBCXX_ASSERTIONS)
  target_link_options(${target} PRIVATE ${hardening_link_options})
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
