# What every target of the project is compiled and linked with.
option(ZANDERMOLITE_SANITIZE
  "Build with the address and undefined-behaviour sanitizers, and the fuzz targets; needs Clang" OFF)

add_library(project_options INTERFACE)
target_include_directories(project_options INTERFACE ${PROJECT_SOURCE_DIR})
# Doubles are IEEE doubles: a contracted a*b+c would give other pixels on some processors.
# The prefix map keeps the builder's folders out of the binaries.
target_compile_options(project_options INTERFACE
  -ffp-contract=off -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=)
# Clang, which builds with the sanitizers, has ideas of its own about some of these.
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  target_compile_options(project_options INTERFACE
    -Wall -Wextra -Wpedantic -Werror -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast
    -Wcast-qual -Wcast-align -Wnon-virtual-dtor -Woverloaded-virtual
    -Wduplicated-cond -Wlogical-op -Wformat=2 -Wextra-semi
    # GCC 12 sees overlaps in its own library's string concatenation.
    -Wno-restrict)
else()
  add_compile_options(-Wno-unknown-warning-option)
endif()
if(WIN32)
  # For Windows GCC 12 takes its own copy of a shared inline function for the one that the linker
  # keeps, and would count on the registers that this copy leaves alone. Tests, which are not
  # optimised, may bring the one that is kept.
  target_compile_options(project_options INTERFACE -fno-ipa-ra)
  # Functions with arrays look after their return address. The other half is our own: the compiler's
  # loads libraries while the system loads ours.
  target_compile_options(project_options INTERFACE -fstack-protector-strong)
  add_library(stackguard STATIC ${PROJECT_SOURCE_DIR}/shell/StackGuard.Win.cpp)
  target_link_libraries(project_options INTERFACE stackguard)
  target_compile_definitions(project_options INTERFACE
    WIN32_LEAN_AND_MEAN NOMINMAX WINVER=0x0501 _WIN32_WINNT=0x0501 __USE_MINGW_ANSI_STDIO=1)
  # The same file from the same source; addresses randomised, data not executable.
  target_link_options(project_options INTERFACE
    -Wl,--no-insert-timestamp -Wl,--dynamicbase -Wl,--nxcompat)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    # GCC puts wide vectors on the stack as if it were aligned for them, which it is not here.
    target_compile_options(project_options INTERFACE -Wa,-muse-unaligned-vector-move)
    target_link_options(project_options INTERFACE -Wl,--high-entropy-va)
  endif()
endif()
if(ZANDERMOLITE_SANITIZE)
  # Not the alignment check: the host's record is packed to 4 bytes, so in a 64-bit process its
  # pointers stand where the interface puts them, not where the check wants them.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize=alignment
                      -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
  # Clang has a word of its own for what GCC says so.
  add_compile_definitions(__SANITIZE_ADDRESS__)
  # The fuzz targets are led by the branches that an input takes in the product.
  target_compile_options(project_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# Header-only libraries of the system, reached without /usr/include itself: a cross compiler must
# never see that.
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/include)
foreach(library CLI nlohmann)
  file(CREATE_LINK /usr/include/${library} ${CMAKE_BINARY_DIR}/include/${library} SYMBOLIC)
endforeach()
add_library(system_headers INTERFACE)
target_include_directories(system_headers SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/include
                           /usr/include/stb)

# compile_quickly(TARGET): for code that runs once in a program, with large libraries of templates. The
# sanitizers double the optimiser's time; in the other builds the shared precompiled headers ask for some
# optimisation.
function(compile_quickly target)
  if(ZANDERMOLITE_SANITIZE)
    target_compile_options(${target} PRIVATE -O0)
  else()
    target_compile_options(${target} PRIVATE -O1)
  endif()
endfunction()

# compile_together(TARGET SOURCES...): compiles these sources of the target eight at a time, as one. Most of a
# small source's time goes into headers and into templates that its neighbours use as well. Names in their
# anonymous namespaces differ. Not for what runs over pixels, nor for the sanitizers: that build sees whether
# each source names the headers that it needs.
function(compile_together target)
  if(ZANDERMOLITE_SANITIZE)
    return()
  endif()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
  # To the compiler a class in an anonymous namespace is now one that several sources see.
  target_compile_options(${target} PRIVATE -Wno-subobject-linkage)
  set(count 0)
  foreach(source ${ARGN})
    math(EXPR part "${count} / 8")
    math(EXPR count "${count} + 1")
    set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${target}_${part})
  endforeach()
endfunction()

# runs_on_windows_only(TARGET): for neutral code that only programs with windows link. Natively the sanitizer
# build alone compiles it, to see that it is neutral; the code that comes of it runs nowhere.
add_library(not_run_options INTERFACE)
if(ZANDERMOLITE_SANITIZE)
  target_compile_options(not_run_options INTERFACE -O0 -fno-sanitize=all)
endif()
function(runs_on_windows_only target)
  target_link_libraries(${target} PRIVATE not_run_options)
  if(NOT WIN32 AND NOT ZANDERMOLITE_SANITIZE)
    set_target_properties(${target} PROPERTIES EXCLUDE_FROM_ALL ON)
  endif()
endfunction()
