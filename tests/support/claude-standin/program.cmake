# The claude-standin program alone (the demo needs nothing else of the test support).
add_executable(claude-standin ${CMAKE_CURRENT_LIST_DIR}/main.cpp)
set_target_properties(claude-standin PROPERTIES
  RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests/support)

# Linked statically so that it starts in a fraction of a millisecond: the tests start it a
# thousand times, and the benchmarks must not measure the dynamic loader.
include(CheckCXXSourceCompiles)
set(CMAKE_REQUIRED_LINK_OPTIONS -static)
check_cxx_source_compiles("int main() { return 0; }" GLIMMO_CAN_LINK_STATIC)
unset(CMAKE_REQUIRED_LINK_OPTIONS)
if(GLIMMO_CAN_LINK_STATIC)
  target_link_options(claude-standin PRIVATE -static)
endif()
