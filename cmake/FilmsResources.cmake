# Compiles a resource script and embeds it into a target.
#
#   films_add_resources(<target> <script.rc> NAME <Name> [DEPENDS <file>...])
#
# The target gets a header <Name>.h with one function, HINSTANCE <Name>(), which hands out the resource module.
# DEPENDS names what the script includes (headers, bitmaps), so that a change compiles it anew.
find_program(FILMS_WINDRES NAMES x86_64-w64-mingw32-windres windres REQUIRED)

function(films_add_resources target script)
  cmake_parse_arguments(R "" "NAME" "DEPENDS" ${ARGN})
  get_filename_component(script ${script} ABSOLUTE)
  get_filename_component(folder ${script} DIRECTORY)
  set(out ${CMAKE_CURRENT_BINARY_DIR}/${target}_resources)
  set(compiled ${out}/${R_NAME}.res)
  add_custom_command(OUTPUT ${compiled}
    COMMAND ${FILMS_WINDRES} --input-format=rc --output-format=res --codepage=65001
            --include-dir ${folder} --include-dir ${PROJECT_SOURCE_DIR} -o ${compiled} ${script}
    WORKING_DIRECTORY ${folder}
    DEPENDS ${script} ${R_DEPENDS} VERBATIM)
  file(CONFIGURE OUTPUT ${out}/${R_NAME}.h @ONLY CONTENT [=[#pragma once

#include "framework/Resource.h"

HINSTANCE @R_NAME@();
]=])
  file(CONFIGURE OUTPUT ${out}/${R_NAME}.cpp @ONLY CONTENT [=[#include "@R_NAME@.h"

asm(".section .rodata\n"
    ".balign 8\n"
    ".hidden @R_NAME@Begin\n.globl @R_NAME@Begin\n@R_NAME@Begin:\n"
    ".incbin \"@compiled@\"\n"
    ".hidden @R_NAME@End\n.globl @R_NAME@End\n@R_NAME@End:\n"
    ".byte 0\n"
    ".text\n");

extern "C" __attribute__((visibility("hidden"))) const std::byte @R_NAME@Begin[];
extern "C" __attribute__((visibility("hidden"))) const std::byte @R_NAME@End[];

HINSTANCE @R_NAME@() {
    static const ResourceModule module(std::span<const std::byte>(@R_NAME@Begin, @R_NAME@End));
    return &module;
}
]=])
  set_source_files_properties(${out}/${R_NAME}.cpp PROPERTIES OBJECT_DEPENDS ${compiled})
  target_sources(${target} PRIVATE ${out}/${R_NAME}.cpp)
  target_include_directories(${target} PRIVATE ${out})
endfunction()
