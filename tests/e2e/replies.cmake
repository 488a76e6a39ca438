# Reply drafting end to end: the engine, the GTK Slack look-alike and the claude stand-in.
add_executable(test_e2e_replies ${CMAKE_CURRENT_LIST_DIR}/replies_test.cpp)
target_link_libraries(test_e2e_replies PRIVATE
  glimmo_desktopsupport glimmo_standin glimmo_engine glimmo_linux)
if(TARGET glimmo-gtk-slack)
  add_dependencies(test_e2e_replies glimmo-gtk-slack)
endif()
glimmo_desktop_test(e2e_replies test_e2e_replies)
set_property(TEST e2e_replies APPEND PROPERTY
  ENVIRONMENT GLIMMO_GTK_SLACK=${CMAKE_BINARY_DIR}/glimmo-gtk-slack)
set_property(TEST e2e_replies PROPERTY TIMEOUT 120)
