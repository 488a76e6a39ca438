# GTK 3 test applications for the tests on the virtual desktop. Built into the build folder's
# top level so scripts find them at a fixed place: glimmo_gtk_app(<name> <sources...>).
pkg_check_modules(GTK3 IMPORTED_TARGET gtk+-3.0)

function(glimmo_gtk_app name)
  if(NOT GTK3_FOUND)
    message(STATUS "GTK 3 not found: ${name} not built")
    return()
  endif()
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE PkgConfig::GTK3)
  target_compile_options(${name} PRIVATE -Wno-pedantic)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
endfunction()

glimmo_gtk_app(glimmo-gtk-editor ${CMAKE_CURRENT_LIST_DIR}/gtk-editor/main.c)
