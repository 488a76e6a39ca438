# The GTK 4 test editor (tests of native Wayland applications), at the build folder's top level
# beside the GTK 3 one.
pkg_check_modules(GTK4 IMPORTED_TARGET gtk4)
if(GTK4_FOUND)
  add_executable(glimmo-gtk4-editor ${CMAKE_CURRENT_LIST_DIR}/gtk4-editor/main.c)
  target_link_libraries(glimmo-gtk4-editor PRIVATE PkgConfig::GTK4)
  target_compile_options(glimmo-gtk4-editor PRIVATE -Wno-pedantic)
  set_target_properties(glimmo-gtk4-editor PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
else()
  message(STATUS "GTK 4 not found: glimmo-gtk4-editor not built")
endif()
