# GoogleTest from the system's source package.
enable_testing()
set(BUILD_GMOCK OFF CACHE INTERNAL "")
set(INSTALL_GTEST OFF CACHE INTERNAL "")
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)

# A test runs a few times and is compiled as often: to optimise it takes longer than it saves.
target_compile_options(gtest PRIVATE -O0)
target_compile_options(gtest_main PRIVATE -O0)
# What tests are compiled with in place of what the product is. Since the sources of a folder are
# compiled as one (see below), a local variable may have the name of another source's global one, and
# the compiler takes a class that stands in an anonymous namespace for one that several sources see.
add_library(test_options INTERFACE)
target_compile_options(test_options INTERFACE -O0 -Wno-shadow -Wshadow=local -Wno-subobject-linkage)
target_link_libraries(test_options INTERFACE gtest)
if(ZANDERMOLITE_SANITIZE)
  # What a test reads and writes is watched; how it calculates takes a quarter longer to compile.
  target_compile_options(test_options INTERFACE -fno-sanitize=undefined,fuzzer-no-link)
endif()

add_shared_headers(test_headers FOR_ALL_COMPILERS HEADERS
  <gtest/gtest.h> <algorithm> <array> <cstdint> <cstring> <filesystem> <fstream> <functional>
  <limits> <map> <memory> <new> <optional> <random> <set> <stdexcept> <string> <string_view>
  <utility> <vector>
  OPTIONS test_options)

# compile_as_test(TARGET): for programs of tests and for what supports them.
#
# The sources of one folder are compiled as one, in a fifth of the time, in every build alike: then
# names in their anonymous namespaces that clash are seen by who adds one, not later by ./test alone.
# A folder is the group, not every few sources, so that a new source clashes with nothing but what
# stands beside it and moves no other from one group to the next. For Windows a group has 8 sources at
# most: there the time of the 32-bit assembler and of the linker grows with the square of a source's
# functions; for tests/host as one they take as long as the compiler.
function(compile_as_test target)
  target_link_libraries(${target} PRIVATE project_options test_options)
  share_headers(${target} test_headers)
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
  get_target_property(sources ${target} SOURCES)
  get_target_property(folder ${target} SOURCE_DIR)
  set(count 0)
  foreach(source ${sources})
    cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${folder} OUTPUT_VARIABLE path)
    cmake_path(GET path PARENT_PATH group)
    file(RELATIVE_PATH group ${PROJECT_SOURCE_DIR} ${group})
    string(MAKE_C_IDENTIFIER ${group} group)
    if(WIN32)
      math(EXPR part "${count} / 8")
      math(EXPR count "${count} + 1")
      string(APPEND group _${part})
    endif()
    set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${group})
  endforeach()
endfunction()

# add_project_test(NAME SOURCES... LIBRARIES... [TIMEOUT seconds] [SHARDS n] [ALONE filter] [COST seconds]
#                  [NO_DISPLAY] [RESOLUTIONS filter])
# One program, one ctest entry, or n that share its tests between them; those that `filter` names have
# the system to themselves. What ran is counted from the files that the entries leave in results/.
# The costliest begin first, so that none is left to run alone. NO_DISPLAY keeps a program that sends
# input to a desktop in memory: on a display, all programs would share its one pointer. Those tests that
# the filter RESOLUTIONS names run on screens of other resolutions as well; in the 32-bit build alone.
function(add_project_test name)
  cmake_parse_arguments(T "NO_DISPLAY" "TIMEOUT;SHARDS;ALONE;COST;RESOLUTIONS" "SOURCES;LIBRARIES;ARGUMENTS" ${ARGN})
  if(NOT T_TIMEOUT)
    set(T_TIMEOUT 300)
  endif()
  if(NOT T_COST)
    set(T_COST 1)
  endif()
  add_executable(${name} ${T_SOURCES})
  target_link_libraries(${name} PRIVATE ${T_LIBRARIES} gtest_main)
  compile_as_test(${name})
  # Relative to the working directory: a Windows program takes a path that begins with a slash for
  # one without a drive.
  file(RELATIVE_PATH results ${PROJECT_SOURCE_DIR} ${CMAKE_BINARY_DIR}/results)
  if(T_ALONE)
    add_test_entry(${name} ${name}-alone "--gtest_filter=${T_ALONE}")
    run_by_itself(${name}-alone)
    set(others "--gtest_filter=-${T_ALONE}")
  endif()
  if(T_RESOLUTIONS AND MINGW_TRIPLE MATCHES "^i686")
    foreach(resolution 144 192)
      add_test_entry(${name} ${name}-${resolution} "--gtest_filter=${T_RESOLUTIONS}")
      set_property(TEST ${name}-${resolution} APPEND PROPERTY ENVIRONMENT "RESOLUTION=${resolution}")
    endforeach()
  endif()
  if(NOT T_SHARDS)
    add_test_entry(${name} ${name} ${others})
    return()
  endif()
  math(EXPR last "${T_SHARDS} - 1")
  foreach(shard RANGE ${last})
    add_test_entry(${name} ${name}-${shard})
    set_property(TEST ${name}-${shard} APPEND PROPERTY
      ENVIRONMENT "GTEST_TOTAL_SHARDS=${T_SHARDS};GTEST_SHARD_INDEX=${shard}")
  endforeach()
endfunction()

# run_by_itself(ENTRY): for tests that count what the session holds, so that no other program may open
# or close anything meanwhile. Wine gives those of a build a session of their own, in which one entry runs
# at a time: they begin first, so that they do not follow each other when all else has ended.
function(run_by_itself entry)
  set_property(TEST ${entry} APPEND PROPERTY ENVIRONMENT "WINE_SESSION=alone-${CMAKE_SYSTEM_PROCESSOR}")
  set_tests_properties(${entry} PROPERTIES RESOURCE_LOCK session COST 100)
endfunction()

# For add_project_test, whose variables it reads: an entry of `program` with further arguments.
macro(add_test_entry program entry)
  add_test(NAME ${entry}
    COMMAND ${program} --gtest_brief=1 --gtest_output=xml:${results}/${entry}.xml ${T_ARGUMENTS} ${ARGN}
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
  set_tests_properties(${entry} PROPERTIES TIMEOUT ${T_TIMEOUT} COST ${T_COST})
  if(T_NO_DISPLAY)
    set_property(TEST ${entry} APPEND PROPERTY ENVIRONMENT "DISPLAY=")
  endif()
endmacro()
