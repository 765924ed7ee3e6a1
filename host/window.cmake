# The window: what it decides and draws is neutral, how it appears is not.
set(neutral
  window/Document.cpp plugin/FilterCatalog.cpp window/SelectionDrag.cpp window/ViewImage.cpp window/Viewport.cpp
  window/WindowText.cpp)
add_library(hostview STATIC ${neutral})
compile_together(hostview ${neutral})
target_include_directories(hostview PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/generated)
target_link_libraries(hostview PUBLIC hostcommand PRIVATE project_options system_headers)

if(WIN32)
  configure_file(window/WindowVersion.h.in ${CMAKE_CURRENT_BINARY_DIR}/generated/host/window/WindowVersion.h @ONLY)

  # Of the family of the plug-in, not of the host: the programs only load it. The name in its table
  # of exports is another than that of its file.
  add_library(sharedlibrary MODULE
    family/SharedLibrary.Win.cpp record/ServiceDirectory.cpp family/SharedLibrary.rc family/SharedLibrary.def)
  set_target_properties(sharedlibrary PROPERTIES PREFIX "" OUTPUT_NAME Hadrowen)
  target_include_directories(sharedlibrary PRIVATE
    ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_BINARY_DIR}/generated)
  target_link_libraries(sharedlibrary PRIVATE hostapi project_options)
  target_link_options(sharedlibrary PRIVATE -s)
  set_source_files_properties(family/SharedLibrary.rc PROPERTIES OBJECT_DEPENDS
    "${CMAKE_CURRENT_SOURCE_DIR}/family/SharedLibraryResources.h;${PROJECT_SOURCE_DIR}/resources/zandermolite.ico")

  add_executable(zandermolite-host WIN32
    plugin/FilterSearch.Win.cpp window/FileDialogs.Win.cpp window/FilterMenu.Win.cpp window/FilterRunner.Win.cpp
    window/HostDialogs.Win.cpp window/HostMenu.Win.cpp window/HostWindow.Win.cpp window/NativeWindow.Win.cpp window/PictureView.Win.cpp
    window/ScrollBars.Win.cpp window/StatusBar.Win.cpp window/StatusLog.Win.cpp window/WindowMain.Win.cpp window/Window.rc)
  add_dependencies(zandermolite-host sharedlibrary)
  target_include_directories(zandermolite-host PRIVATE
    ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_BINARY_DIR}/generated)
  target_link_libraries(zandermolite-host PRIVATE
    hostview project_options comctl32 comdlg32 ole32)
  target_compile_definitions(zandermolite-host PRIVATE UNICODE _UNICODE)
  target_link_options(zandermolite-host PRIVATE -municode -s)
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    # A large picture is in memory several times while a filter runs.
    target_link_options(zandermolite-host PRIVATE -Wl,--large-address-aware)
  endif()
  set_source_files_properties(window/Window.rc PROPERTIES OBJECT_DEPENDS
    "${CMAKE_CURRENT_SOURCE_DIR}/window/WindowResources.h;${CMAKE_CURRENT_SOURCE_DIR}/window/Window.manifest;${PROJECT_SOURCE_DIR}/resources/host.ico")
endif()
