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
# Mail replies in a real Thunderbird, offline with a throwaway profile.
add_executable(test_e2e_thunderbird ${CMAKE_CURRENT_LIST_DIR}/thunderbird_test.cpp)
target_link_libraries(test_e2e_thunderbird PRIVATE
  glimmo_desktopsupport glimmo_standin glimmo_engine glimmo_linux)
target_compile_definitions(test_e2e_thunderbird PRIVATE GLIMMO_SHOT_DIR="${CMAKE_BINARY_DIR}")
glimmo_desktop_test(e2e_thunderbird test_e2e_thunderbird)
set_tests_properties(e2e_thunderbird PROPERTIES TIMEOUT 150
  SKIP_REGULAR_EXPRESSION "MAIL TEST SKIPPED")
# Mail replies in a real Evolution, with a throwaway home and no account.
add_executable(test_e2e_evolution ${CMAKE_CURRENT_LIST_DIR}/evolution_test.cpp)
target_link_libraries(test_e2e_evolution PRIVATE
  glimmo_desktopsupport glimmo_standin glimmo_engine glimmo_linux)
target_compile_definitions(test_e2e_evolution PRIVATE GLIMMO_SHOT_DIR="${CMAKE_BINARY_DIR}")
glimmo_desktop_test(e2e_evolution test_e2e_evolution)
set_tests_properties(e2e_evolution PROPERTIES TIMEOUT 150
  SKIP_REGULAR_EXPRESSION "MAIL TEST SKIPPED")
