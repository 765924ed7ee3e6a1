# cmake -DVERSION=3.0.0 [-DHELP=DIR] [-DOUTPUT=FILE] -P cmake/installer.cmake
#
# Makes the installer for Windows of the two builds of the plug-in as they are, the help pages in HELP
# (docs/help) and the licences.
get_filename_component(root ${CMAKE_CURRENT_LIST_DIR}/.. ABSOLUTE)
if(NOT HELP)
  set(HELP ${root}/docs/help)
endif()
if(NOT OUTPUT)
  set(OUTPUT ${root}/out/Zandermolite-${VERSION}-setup.exe)
endif()
get_filename_component(HELP ${HELP} ABSOLUTE)
get_filename_component(OUTPUT ${OUTPUT} ABSOLUTE)
get_filename_component(output_folder ${OUTPUT} DIRECTORY)
file(MAKE_DIRECTORY ${output_folder})

set(install_commands "")
set(remove_commands "")

# Appends the commands that install and remove what stands in `source`/`below`, to and from the macro's
# parameter: the files by name, so that only what was installed is removed, and the folders after them.
function(add_folder source below)
  string(REPLACE "/" "\\" target "\${TARGET}${below}")
  string(APPEND install_commands "  SetOutPath \"${target}\"\n")
  file(GLOB entries ${source}${below}/*)
  foreach(entry ${entries})
    get_filename_component(name ${entry} NAME)
    if(IS_DIRECTORY ${entry})
      add_folder(${source} ${below}/${name})
    else()
      # Set again, since a folder may have come before.
      string(APPEND install_commands "  SetOutPath \"${target}\"\n  File \"${entry}\"\n")
      string(APPEND remove_commands "  Delete \"${target}\\${name}\"\n")
    endif()
  endforeach()
  string(APPEND remove_commands "  RMDir \"${target}\"\n")
  set(install_commands "${install_commands}" PARENT_SCOPE)
  set(remove_commands "${remove_commands}" PARENT_SCOPE)
endfunction()

set(macros "; Made by cmake/installer.cmake.\n")
function(add_tree name source)
  set(install_commands "")
  set(remove_commands "")
  add_folder(${source} "")
  string(APPEND macros
    "!macro Install${name} TARGET\n${install_commands}!macroend\n"
    "!macro Remove${name} TARGET\n${remove_commands}!macroend\n")
  set(macros "${macros}" PARENT_SCOPE)
endfunction()
add_tree(Help ${HELP})
add_tree(Licences ${root}/licences)
set(files ${OUTPUT}.files.nsh)
file(WRITE ${files} "${macros}")

set(plugin_32 ${root}/build/win32/shell/Zandermolite.8bf)
set(plugin_64 ${root}/build/win64/shell/Zandermolite.8bf)
# One build and its help for each bitness stand in the program's folder.
file(GLOB_RECURSE help_files ${HELP}/*)
set(copies 0)
foreach(file ${plugin_32} ${plugin_64} ${help_files} ${help_files})
  file(SIZE ${file} bytes)
  math(EXPR copies "${copies} + (${bytes} + 1023) / 1024")
endforeach()

find_program(makensis makensis REQUIRED)
execute_process(
  COMMAND ${makensis} -V2 -WX -DVERSION=${VERSION} -DROOT=${root} -DFILES=${files} -DOUTPUT=${OUTPUT}
    -DPLUGIN_32=${plugin_32} -DPLUGIN_64=${plugin_64} -DCOPIES_KB=${copies}
    ${root}/installer/Zandermolite.nsi
  COMMAND_ERROR_IS_FATAL ANY)
file(REMOVE ${files})
