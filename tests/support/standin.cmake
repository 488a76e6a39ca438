# The scripted stand-in for the claude program, and glimmo_standin for the tests that use it:
# link glimmo_standin and include "Standin.h".
include(${CMAKE_CURRENT_LIST_DIR}/claude-standin/program.cmake)

add_library(glimmo_standin INTERFACE)
target_include_directories(glimmo_standin INTERFACE ${CMAKE_CURRENT_LIST_DIR}/claude-standin)
target_compile_definitions(glimmo_standin INTERFACE
  GLIMMO_STANDIN_PATH="$<TARGET_FILE:claude-standin>")
target_link_libraries(glimmo_standin INTERFACE glimmo_testsupport glimmo_main)
add_dependencies(glimmo_standin claude-standin)
