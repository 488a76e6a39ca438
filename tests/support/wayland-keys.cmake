# glimmo-wayland-keys, the keyboard of the headless mutter and KWin desktops (tests/e2e/),
# at the build folder's top level where that script finds it.
add_executable(glimmo-wayland-keys
  ${CMAKE_CURRENT_LIST_DIR}/wayland-keys/main.cpp ${CMAKE_CURRENT_LIST_DIR}/wayland-keys/KeyPlan.cpp)
target_link_libraries(glimmo-wayland-keys PRIVATE Qt6::DBus glimmo_linux_kwin)
set_target_properties(glimmo-wayland-keys PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
