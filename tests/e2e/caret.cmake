# The bubble at the caret in LibreOffice Writer, Firefox, GNOME Text Editor and KWrite, and in
# both browsers and KWrite on a screen scaled by 1.5, measured on the screen; the screenshots of the bubble
# are left in the build folder.
add_executable(test_e2e_caret ${CMAKE_CURRENT_LIST_DIR}/caret_test.cpp)
target_link_libraries(test_e2e_caret PRIVATE
  glimmo_desktopsupport glimmo_standin glimmo_engine glimmo_linux Qt6::Network)
target_compile_definitions(test_e2e_caret PRIVATE GLIMMO_SHOT_DIR="${CMAKE_BINARY_DIR}")
glimmo_desktop_test(e2e_writer test_e2e_caret --gtest_filter=*.LibreOfficeWriter*)
glimmo_desktop_test(e2e_firefox test_e2e_caret --gtest_filter=*.FirefoxTextarea)
glimmo_desktop_test(e2e_gtk4 test_e2e_caret --gtest_filter=*.GnomeTextEditor)
glimmo_desktop_test(e2e_kwrite test_e2e_caret --gtest_filter=*.KWrite)
glimmo_desktop_test(e2e_kwrite_first test_e2e_caret --gtest_filter=*.KWriteInFrontFirst*)
# Applications at 1.5, and Glimmo at the same scale.
glimmo_desktop_test(e2e_scaled_apps test_e2e_caret --gtest_filter=*At150)
set_property(TEST e2e_scaled_apps APPEND PROPERTY ENVIRONMENT QT_SCALE_FACTOR=1.5)
# A machine without the application reports its test as skipped, never as passed.
set_tests_properties(e2e_writer e2e_firefox e2e_gtk4 e2e_kwrite e2e_kwrite_first
  e2e_scaled_apps PROPERTIES TIMEOUT 150
  SKIP_REGULAR_EXPRESSION "APP TEST SKIPPED")
