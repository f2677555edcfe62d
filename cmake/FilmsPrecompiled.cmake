# Precompiled headers, each made once a build folder and shared by all targets that ask for it:
#
#   films_precompile(<target> Standard | Windows | Tests | WindowTests)
#
# A header in cmake/pch/ each. All of ours is position independent in the one way of libraries (-fPIC), programs
# too, since the compiler takes a precompiled header only with the flags that it was made with.
option(FILMS_PCH "Precompile what nearly every source includes" ON)

function(films_precompile target kind)
  if(NOT FILMS_PCH)
    return()
  endif()
  set(owner films_pch_${kind})
  if(NOT TARGET ${owner})
    add_library(${owner} OBJECT ${PROJECT_SOURCE_DIR}/cmake/pch/Owner.cpp)
    target_include_directories(${owner} PRIVATE ${PROJECT_SOURCE_DIR})
    if(kind MATCHES "Window")
      find_package(Qt6 6.4 REQUIRED COMPONENTS Widgets)
      target_link_libraries(${owner} PRIVATE Qt6::Widgets)
    endif()
    if(kind STREQUAL "WindowTests")
      target_link_libraries(${owner} PRIVATE Qt6::Test)
    endif()
    if(kind MATCHES "Tests")
      target_link_libraries(${owner} PRIVATE GTest::gtest GTest::gmock)
      films_compile_as_test(${owner})
    endif()
    target_precompile_headers(${owner} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/pch/${kind}.h)
  endif()
  target_compile_options(${target} PRIVATE -fPIC)
  target_precompile_headers(${target} REUSE_FROM ${owner})
endfunction()

# Code of tests is not optimised under the sanitizers: that would take longer than running it does.
function(films_compile_as_test target)
  if(FILMS_SANITIZE)
    target_compile_options(${target} PRIVATE -O0)
  endif()
endfunction()
