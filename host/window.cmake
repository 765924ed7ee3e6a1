# The window: what it decides and draws is neutral, how it appears is not.
add_library(hostview STATIC
  Document.cpp FilterCatalog.cpp SelectionDrag.cpp ViewImage.cpp Viewport.cpp WindowText.cpp)
target_link_libraries(hostview PUBLIC hostcore PRIVATE project_options)
