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
# Mail replies in real mail clients, each with a throwaway home and no account.
function(glimmo_mail_test name)
  add_executable(test_e2e_${name} ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/${name}_test.cpp)
  target_link_libraries(test_e2e_${name} PRIVATE
    glimmo_desktopsupport glimmo_standin glimmo_engine glimmo_linux)
  target_compile_definitions(test_e2e_${name} PRIVATE GLIMMO_SHOT_DIR="${CMAKE_BINARY_DIR}")
  glimmo_desktop_test(e2e_${name} test_e2e_${name})
  set_tests_properties(e2e_${name} PROPERTIES TIMEOUT 150
    SKIP_REGULAR_EXPRESSION "MAIL TEST SKIPPED")
endfunction()
glimmo_mail_test(thunderbird)
glimmo_mail_test(evolution)
