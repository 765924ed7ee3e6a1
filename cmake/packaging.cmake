# What a user gets. `cmake --install build/<preset> --prefix DIR` installs one build; of both Windows
# builds the target `package` makes one zip, the target `installer` an installer of the plug-in.
if(WIN32)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(destination win64)
  else()
    set(destination win32)
  endif()
  install(TARGETS plugin LIBRARY DESTINATION ${destination})
  install(TARGETS sharedlibrary LIBRARY DESTINATION ${destination})
  install(TARGETS zandermolite-run RUNTIME DESTINATION ${destination})
  if(TARGET zandermolite-host)
    install(TARGETS zandermolite-host RUNTIME DESTINATION ${destination})
  endif()
  # The Help menu's pages are looked for beside the plug-in.
  install(DIRECTORY docs/help/ DESTINATION "${destination}/Brenvalder Help")
else()
  set(destination bin)
endif()
install(TARGETS recipe_tool RUNTIME DESTINATION ${destination})
install(FILES README.md LICENSE DESTINATION .)
install(DIRECTORY licences DESTINATION .)
install(DIRECTORY samples/ DESTINATION samples FILES_MATCHING PATTERN "*.jpg" PATTERN "*.png"
        PATTERN "README.md")
install(DIRECTORY recipe/examples/ DESTINATION recipes)

if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_NAME Zandermolite)
  set(CPACK_PACKAGE_FILE_NAME Zandermolite-${PROJECT_VERSION}-windows)
  set(CPACK_PACKAGE_DIRECTORY ${PROJECT_SOURCE_DIR}/out)
  # Both builds go into one archive; the script brings them up to date first.
  set(CPACK_PROJECT_CONFIG_FILE "")
  set(CPACK_INSTALL_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/build-for-package.cmake)
  set(CPACK_INSTALL_CMAKE_PROJECTS
    "${PROJECT_SOURCE_DIR}/build/win32;Zandermolite;ALL;/"
    "${PROJECT_SOURCE_DIR}/build/win64;Zandermolite;ALL;/")
  include(CPack)

  # makensis reads the plug-ins of both builds, so the other one's is brought up to date too.
  if(destination STREQUAL win32)
    set(other win64)
  else()
    set(other win32)
  endif()
  add_custom_target(installer
    COMMAND ${CMAKE_COMMAND} -DPRESETS=${other} -DBUILD_TARGET=plugin
      -P ${PROJECT_SOURCE_DIR}/cmake/build-for-package.cmake
    COMMAND ${CMAKE_COMMAND} -DVERSION=${PROJECT_VERSION}
      -P ${PROJECT_SOURCE_DIR}/cmake/installer.cmake
    DEPENDS plugin USES_TERMINAL VERBATIM)
endif()
