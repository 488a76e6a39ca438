# glimmo-screenshot, the demo's camera, at the build folder's top level beside the editor.
add_executable(glimmo-screenshot ${CMAKE_CURRENT_LIST_DIR}/screenshot/main.cpp)
target_link_libraries(glimmo-screenshot PRIVATE Qt6::Gui)
set_target_properties(glimmo-screenshot PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
