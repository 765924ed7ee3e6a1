# Run by CPack before it collects the files, and before an installer is made: brings both Windows builds
# up to date, or PRESETS alone, or BUILD_TARGET alone of each.
get_filename_component(root ${CMAKE_CURRENT_LIST_DIR}/.. ABSOLUTE)
if(NOT BUILD_TARGET)
  set(BUILD_TARGET all)
endif()
if(NOT PRESETS)
  set(PRESETS win32 win64)
endif()
foreach(preset ${PRESETS})
  if(NOT EXISTS ${root}/build/${preset}/build.ninja)
    execute_process(COMMAND ${CMAKE_COMMAND} --preset ${preset} WORKING_DIRECTORY ${root}
                    COMMAND_ERROR_IS_FATAL ANY)
  endif()
  execute_process(COMMAND ${CMAKE_COMMAND} --build ${root}/build/${preset} --target ${BUILD_TARGET}
                  WORKING_DIRECTORY ${root} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
