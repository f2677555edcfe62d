# Settings that every target of the tree shares: language level, warnings, sanitizers, output folders.
option(FILMS_TESTS "Build the tests" ON)
option(FILMS_BENCHMARKS "Build the benchmarks" OFF)
option(FILMS_FUZZERS "Build the libFuzzer targets (clang only)" OFF)
option(FILMS_WERROR "Treat warnings as errors" OFF)
option(FILMS_COVERAGE "Instrument for gcov" OFF)
set(FILMS_SANITIZE "" CACHE STRING "Sanitizers for the whole tree, e.g. address,undefined")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_BUILD_RPATH "$ORIGIN/../lib;$ORIGIN")

# Paths are cached as relative ones, so that a fresh clone beside this tree finds its objects; the other two settings
# let it cache what uses a precompiled header.
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(launcher ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1
    CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE_PROGRAM})
  set(CMAKE_C_COMPILER_LAUNCHER ${launcher})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  add_compile_options(-fpch-preprocess)
endif()

# Linked by every target of our own; never by third-party code.
add_library(films_warnings INTERFACE)
target_compile_options(films_warnings INTERFACE -Wall -Wextra -Wshadow -Wnon-virtual-dtor -Wcast-qual
  -Woverloaded-virtual -Wundef $<$<BOOL:${FILMS_WERROR}>:-Werror>)

if(FILMS_SANITIZE)
  add_compile_options(-fsanitize=${FILMS_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${FILMS_SANITIZE})
endif()
if(FILMS_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()
