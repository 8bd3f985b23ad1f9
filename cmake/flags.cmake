# The one place for warnings, sanitizers and language flags. Every target links brenvik_flags.
include(${CMAKE_CURRENT_LIST_DIR}/precompiled.cmake)

add_library(brenvik_flags INTERFACE)
target_compile_options(brenvik_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast
  -Wimplicit-fallthrough -Werror)
# GCC 12 sees an overlap that is none wherever a literal is put before a temporary string.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(brenvik_flags INTERFACE -Wno-restrict)
  # Out of precompiled headers it takes the library's own copying for ours, and warns of copies of half the
  # address space. The builds without them keep these warnings.
  if(BRENVIK_PCH)
    target_compile_options(brenvik_flags INTERFACE -Wno-stringop-overflow -Wno-stringop-overread -Wno-array-bounds)
  endif()
endif()
# Sizes in part data and layer names are compared for equality after rounding; a contracted
# multiply-add would round differently on other machines.
target_compile_options(brenvik_flags INTERFACE -ffp-contract=off)
if(BRENVIK_SANITIZE)
  target_compile_options(brenvik_flags INTERFACE -fsanitize=address,undefined -fno-omit-frame-pointer
    -fno-sanitize-recover=undefined)
  target_link_options(brenvik_flags INTERFACE -fsanitize=address,undefined)
  # Between the sanitizers' own checks GCC 12 loses sight of what its library's regular expressions have set.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(brenvik_flags INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()
if(BRENVIK_FUZZ)
  target_compile_options(brenvik_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
target_compile_definitions(brenvik_flags INTERFACE BRENVIK_VERSION="${PROJECT_VERSION}")

# A static library of one folder: brenvik_library(NAME [PRECOMPILED]); folder-relative sources are found.
# PRECOMPILED names the set of precompiled headers, `standard` by default.
function(brenvik_library name)
  set(precompiled standard)
  if(ARGN)
    set(precompiled ${ARGN})
  endif()
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  if(NOT sources)
    file(TOUCH ${CMAKE_CURRENT_BINARY_DIR}/empty.cpp)
    set(sources ${CMAKE_CURRENT_BINARY_DIR}/empty.cpp)
  endif()
  add_library(${name} STATIC ${sources})
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
  target_link_libraries(${name} PRIVATE brenvik_flags)
  brenvik_precompile(${name} ${precompiled})
endfunction()

# A test program of one folder, its cases known to CTest one by one.
function(brenvik_tests name)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  if(NOT sources)
    return()
  endif()
  add_executable(${name} ${sources})
  target_link_libraries(${name} PRIVATE brenvik_flags ${ARGN} GTest::gtest_main)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests ${CMAKE_BINARY_DIR}/generated)
  brenvik_precompile(${name} tests)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300)
endfunction()
