# SPDX-License-Identifier: Apache-2.0
# Settings shared by every target: language level, output folders, visibility, warnings, hardening.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# A build folder can be moved, as an installation can.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

include(CheckPIESupported)
check_pie_supported()

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_C_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

set(ZELK_LIB_DIR ${CMAKE_BINARY_DIR}/lib)
set(ZELK_BIN_DIR ${CMAKE_BINARY_DIR}/bin)
set(ZELK_ENGINE_DIR ${ZELK_LIB_DIR}/zelk/engine)

# Warnings: an interface target, so that third-party headers (SYSTEM) stay out of it.
add_library(zelk_warnings INTERFACE)
target_compile_options(zelk_warnings INTERFACE
  -Wall -Wextra -Wshadow
  $<$<COMPILE_LANGUAGE:CXX>:-Wconversion -Wold-style-cast>
  $<$<COMPILE_LANGUAGE:C>:-Wstrict-prototypes -pedantic>
  # g++ 12 sees overlaps in the standard library's own string concatenation that cannot be.
  $<$<AND:$<COMPILE_LANG_AND_ID:CXX,GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>
  $<$<BOOL:${ZELK_WARNINGS_AS_ERRORS}>:-Werror>)

# Hardening. _FORTIFY_SOURCE needs optimisation and hides faults from the sanitizers.
add_library(zelk_hardening INTERFACE)
target_compile_options(zelk_hardening INTERFACE
  -fstack-protector-strong -fstack-clash-protection -fcf-protection)
target_link_options(zelk_hardening INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack)
if(ZELK_SANITIZE)
  add_compile_options(
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
  if(ZELK_BUILD_FUZZERS)
    # Everything tells the fuzzer which of its edges an input takes.
    add_compile_options(-fsanitize=fuzzer-no-link)
  endif()
else()
  target_compile_options(zelk_hardening INTERFACE
    "$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
endif()
