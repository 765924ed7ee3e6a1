# Run by CPack before it collects the files: both Windows builds, brought up to date.
get_filename_component(root ${CMAKE_CURRENT_LIST_DIR}/.. ABSOLUTE)
foreach(preset win32 win64)
  if(NOT EXISTS ${root}/build/${preset}/build.ninja)
    execute_process(COMMAND ${CMAKE_COMMAND} --preset ${preset} WORKING_DIRECTORY ${root}
                    COMMAND_ERROR_IS_FATAL ANY)
  endif()
  execute_process(COMMAND ${CMAKE_COMMAND} --build ${root}/build/${preset}
                  WORKING_DIRECTORY ${root} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
