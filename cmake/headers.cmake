# Precompiled headers. Most of what the compiler reads in a source is the standard library and, in a
# test, GoogleTest: the same each time. Two headers hold that, one for the product and one for the
# tests, which are optimised otherwise; all targets share them, for to make one takes as long as to
# compile ten sources. Headers of the project are not in them: a change of one compiles what includes
# it, nothing else.
#
# The sanitizer build, by Clang, compiles the neutral sources of the product without them: there one
# that forgets to name a header of the system does not compile.

# add_shared_headers(NAME [FOR_ALL_COMPILERS] HEADERS... [OPTIONS LIBRARY...])
# The target that makes the precompiled header, with the flags of those that will share it: the
# project's own and those of the libraries. Clang has it only where it is for all compilers.
function(add_shared_headers name)
  cmake_parse_arguments(H FOR_ALL_COMPILERS "" "HEADERS;OPTIONS" ${ARGN})
  if(NOT H_FOR_ALL_COMPILERS AND NOT CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    return()
  endif()
  set(source ${CMAKE_BINARY_DIR}/${name}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "// Only the header beside it is used.\n")
  add_library(${name} OBJECT ${source})
  target_link_libraries(${name} PRIVATE project_options ${H_OPTIONS})
  target_precompile_headers(${name} PRIVATE ${H_HEADERS})
  keep_time_out_of_headers(${name})
endfunction()

# keep_time_out_of_headers(TARGET): Clang notes the time in a precompiled header unless told not to, so
# that a compiler cache takes each for a new one.
function(keep_time_out_of_headers target)
  if(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
    target_compile_options(${target} PRIVATE "SHELL:-Xclang -fno-pch-timestamp")
  endif()
endfunction()

# share_headers(TARGET NAME)
function(share_headers target name)
  if(TARGET ${name})
    target_precompile_headers(${target} REUSE_FROM ${name})
    keep_time_out_of_headers(${target})
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL GNU)
      return()
    endif()
    # GCC 12 sees overruns that are none in its own library's strings, and reports them once the
    # header is precompiled. A compiler cache asks for the last option.
    target_compile_options(${target} PRIVATE
      -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread -fpch-preprocess)
  endif()
endfunction()

add_shared_headers(product_headers HEADERS
  <algorithm> <array> <cmath> <cstdint> <cstring> <filesystem> <functional> <limits> <map>
  <memory> <new> <optional> <stdexcept> <string> <string_view> <utility> <vector>)

# share_product_headers(FOLDER)
# Gives the header to all targets of the folder and of those below it that are compiled as the product
# is and have none yet.
function(share_product_headers folder)
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target ${targets})
    get_target_property(type ${target} TYPE)
    get_target_property(libraries ${target} LINK_LIBRARIES)
    get_target_property(own ${target} PRECOMPILE_HEADERS)
    get_target_property(shared ${target} PRECOMPILE_HEADERS_REUSE_FROM)
    if(NOT type MATCHES "INTERFACE|UTILITY" AND "project_options" IN_LIST libraries
       AND NOT own AND NOT shared)
      share_headers(${target} product_headers)
    endif()
  endforeach()
  get_property(folders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(below ${folders})
    share_product_headers(${below})
  endforeach()
endfunction()
