# The scripted stand-in for the claude program, and glimmo_standin for the tests that use it:
# link glimmo_standin and include "Standin.h".
add_executable(claude-standin ${CMAKE_CURRENT_LIST_DIR}/claude-standin/main.cpp)
set_target_properties(claude-standin PROPERTIES
  RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests/support)

add_library(glimmo_standin INTERFACE)
target_include_directories(glimmo_standin INTERFACE ${CMAKE_CURRENT_LIST_DIR}/claude-standin)
target_compile_definitions(glimmo_standin INTERFACE
  GLIMMO_STANDIN_PATH="$<TARGET_FILE:claude-standin>")
target_link_libraries(glimmo_standin INTERFACE glimmo_testsupport glimmo_main)
add_dependencies(glimmo_standin claude-standin)
# Linked statically so that it starts in a fraction of a millisecond: the tests start it a
# thousand times, and the benchmarks must not measure the dynamic loader.
include(CheckCXXSourceCompiles)
set(CMAKE_REQUIRED_LINK_OPTIONS -static)
check_cxx_source_compiles("int main() { return 0; }" GLIMMO_CAN_LINK_STATIC)
unset(CMAKE_REQUIRED_LINK_OPTIONS)
if(GLIMMO_CAN_LINK_STATIC)
  target_link_options(claude-standin PRIVATE -static)
endif()
