# Browsers end to end: the engine against Chromium showing a local page.
find_package(Qt6 REQUIRED COMPONENTS Network)
add_executable(test_e2e_browser ${CMAKE_CURRENT_LIST_DIR}/browser_test.cpp)
target_link_libraries(test_e2e_browser PRIVATE
  glimmo_desktopsupport glimmo_standin glimmo_engine glimmo_linux Qt6::Network)
glimmo_desktop_test(e2e_browser test_e2e_browser)
# A machine without Chromium reports the test as skipped, never as passed.
set_tests_properties(e2e_browser PROPERTIES TIMEOUT 150
  SKIP_REGULAR_EXPRESSION "BROWSER TEST SKIPPED")
# Reply drafting in Chromium: a Gmail-like thread under the Gmail host over HTTPS, and a
# Slack-like channel in an application window classed as Slack.
add_executable(test_e2e_replies_chromium ${CMAKE_CURRENT_LIST_DIR}/replies_chromium_test.cpp)
target_link_libraries(test_e2e_replies_chromium PRIVATE
  glimmo_desktopsupport glimmo_standin glimmo_engine glimmo_linux Qt6::Network)
glimmo_desktop_test(e2e_gmail test_e2e_replies_chromium --gtest_filter=*.Gmail)
glimmo_desktop_test(e2e_chat test_e2e_replies_chromium --gtest_filter=*.SlackApp)
set_tests_properties(e2e_gmail e2e_chat PROPERTIES TIMEOUT 150
  SKIP_REGULAR_EXPRESSION "BROWSER TEST SKIPPED")
