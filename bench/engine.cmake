# Engine benchmarks: cmake --build <dir> --target bench_engine_tick bench_engine_stream
add_executable(bench_engine_tick EXCLUDE_FROM_ALL ${CMAKE_CURRENT_LIST_DIR}/engine_tick.cpp)
target_link_libraries(bench_engine_tick PRIVATE glimmo_engine glimmo_fake glimmo_standin)
add_dependencies(benchmarks bench_engine_tick)

add_executable(bench_engine_delta_child EXCLUDE_FROM_ALL ${CMAKE_CURRENT_LIST_DIR}/engine_delta_child.cpp)
add_executable(bench_engine_stream EXCLUDE_FROM_ALL ${CMAKE_CURRENT_LIST_DIR}/engine_stream.cpp)
target_link_libraries(bench_engine_stream PRIVATE glimmo_engine glimmo_fake glimmo_testsupport)
target_compile_definitions(bench_engine_stream PRIVATE
  DELTA_CHILD="$<TARGET_FILE:bench_engine_delta_child>")
add_dependencies(bench_engine_stream bench_engine_delta_child)
add_dependencies(benchmarks bench_engine_stream)
