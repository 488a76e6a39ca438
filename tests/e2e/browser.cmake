# Browsers end to end: the engine against Chromium showing a local page.
find_package(Qt6 REQUIRED COMPONENTS Network)
add_executable(test_e2e_browser ${CMAKE_CURRENT_LIST_DIR}/browser_test.cpp)
target_link_libraries(test_e2e_browser PRIVATE
  glimmo_desktopsupport glimmo_standin glimmo_engine glimmo_linux Qt6::Network)
glimmo_desktop_test(e2e_browser test_e2e_browser)
# A machine without Chromium reports the test as skipped, never as passed.
set_tests_properties(e2e_browser PROPERTIES TIMEOUT 150
  SKIP_REGULAR_EXPRESSION "BROWSER TEST SKIPPED")
# Reply drafting in a Gmail-like thread in Chromium, under the Gmail host over HTTPS.
add_executable(test_e2e_gmail ${CMAKE_CURRENT_LIST_DIR}/gmail_test.cpp)
target_link_libraries(test_e2e_gmail PRIVATE
  glimmo_desktopsupport glimmo_standin glimmo_engine glimmo_linux Qt6::Network)
glimmo_desktop_test(e2e_gmail test_e2e_gmail)
set_tests_properties(e2e_gmail PROPERTIES TIMEOUT 150
  SKIP_REGULAR_EXPRESSION "BROWSER TEST SKIPPED")
# Reply drafting in a Slack-like channel in Chromium's application window, classed as Slack.
add_executable(test_e2e_chat ${CMAKE_CURRENT_LIST_DIR}/chat_test.cpp)
target_link_libraries(test_e2e_chat PRIVATE
  glimmo_desktopsupport glimmo_standin glimmo_engine glimmo_linux Qt6::Network)
glimmo_desktop_test(e2e_chat test_e2e_chat)
set_tests_properties(e2e_chat PROPERTIES TIMEOUT 150
  SKIP_REGULAR_EXPRESSION "BROWSER TEST SKIPPED")
