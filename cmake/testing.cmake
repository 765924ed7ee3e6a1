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

add_shared_headers(test_headers HEADERS
  <gtest/gtest.h> <algorithm> <array> <cstdint> <cstring> <filesystem> <fstream> <functional>
  <limits> <map> <memory> <new> <optional> <random> <set> <stdexcept> <string> <string_view>
  <utility> <vector>
  OPTIONS test_options)

# compile_as_test(TARGET [SEPARATE]): for programs of tests and for what supports them.
#
# The sources of one folder are compiled as one, in a fifth of the time, in every build alike: then
# names in their anonymous namespaces that clash are seen by who adds one, not later by ./test alone.
# A folder is the group, not every eight sources, so that a new source clashes with nothing but what
# stands beside it and moves no other from one group to the next. SEPARATE compiles each source for
# itself: for tests of dialogs, where each says Items for those of its own dialog.
function(compile_as_test target)
  cmake_parse_arguments(C "SEPARATE" "" "" ${ARGN})
  target_link_libraries(${target} PRIVATE project_options test_options)
  share_headers(${target} test_headers)
  if(C_SEPARATE)
    return()
  endif()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
  get_target_property(sources ${target} SOURCES)
  get_target_property(folder ${target} SOURCE_DIR)
  foreach(source ${sources})
    cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${folder} OUTPUT_VARIABLE path)
    cmake_path(GET path PARENT_PATH group)
    file(RELATIVE_PATH group ${PROJECT_SOURCE_DIR} ${group})
    string(MAKE_C_IDENTIFIER ${group} group)
    set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${group})
  endforeach()
endfunction()

# add_project_test(NAME SOURCES... LIBRARIES... [TIMEOUT seconds] [SEPARATE])
# One program, one ctest entry; what ran in it is counted from the file it leaves in results/.
function(add_project_test name)
  cmake_parse_arguments(T "SEPARATE" "TIMEOUT" "SOURCES;LIBRARIES;ARGUMENTS" ${ARGN})
  if(NOT T_TIMEOUT)
    set(T_TIMEOUT 300)
  endif()
  add_executable(${name} ${T_SOURCES})
  target_link_libraries(${name} PRIVATE ${T_LIBRARIES} gtest_main)
  if(T_SEPARATE)
    compile_as_test(${name} SEPARATE)
  else()
    compile_as_test(${name})
  endif()
  # Relative to the working directory: a Windows program takes a path that begins with a slash for
  # one without a drive.
  file(RELATIVE_PATH results ${PROJECT_SOURCE_DIR} ${CMAKE_BINARY_DIR}/results)
  add_test(NAME ${name}
    COMMAND ${name} --gtest_brief=1 --gtest_output=xml:${results}/${name}.xml
            ${T_ARGUMENTS}
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
  set_tests_properties(${name} PROPERTIES TIMEOUT ${T_TIMEOUT})
endfunction()
