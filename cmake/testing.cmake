# GoogleTest from the system's source package, built with the flags of each preset.
enable_testing()
set(BUILD_GMOCK OFF CACHE INTERNAL "")
set(INSTALL_GTEST OFF CACHE INTERNAL "")
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)

# add_project_test(NAME SOURCES... LIBRARIES... [TIMEOUT seconds])
# One program, one ctest entry; what ran in it is counted from the file it leaves in results/.
function(add_project_test name)
  cmake_parse_arguments(T "" "TIMEOUT" "SOURCES;LIBRARIES;ARGUMENTS" ${ARGN})
  if(NOT T_TIMEOUT)
    set(T_TIMEOUT 300)
  endif()
  add_executable(${name} ${T_SOURCES})
  target_link_libraries(${name} PRIVATE ${T_LIBRARIES} project_options gtest_main)
  # Most of a test's compile time goes into the headers that all of them have, and into optimising
  # what runs once. (A compiler cache is quicker still, and does not go with a precompiled header.)
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    # GCC 12 sees overruns that are none in its own library's string concatenation.
    target_compile_options(${name} PRIVATE
      -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
  endif()
  if(NOT WIN32)
    # Not for Windows: there GCC 12 takes its own copy of a shared inline function for the one that
    # the linker keeps, and counts on the registers that this copy leaves alone, so two levels of
    # optimisation in one program do not go together.
    target_compile_options(${name} PRIVATE -O1)
  endif()
  if(NOT CMAKE_CXX_COMPILER_LAUNCHER)
    target_precompile_headers(${name} PRIVATE
      <gtest/gtest.h> <algorithm> <cstring> <filesystem> <functional> <random> <string> <vector>)
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
