# Exchange benchmarks: overhead from ask to onDone against the pipe floor, and warm against cold.
foreach(name overhead warm)
  add_executable(bench_exchange_${name} EXCLUDE_FROM_ALL
    ${CMAKE_CURRENT_LIST_DIR}/exchange_${name}.cpp ${CMAKE_CURRENT_LIST_DIR}/exchange_bench.h)
  target_link_libraries(bench_exchange_${name} PRIVATE glimmo_claude Qt6::Core)
  target_compile_definitions(bench_exchange_${name} PRIVATE
    GLIMMO_STANDIN_PATH="$<TARGET_FILE:claude-standin>")
  add_dependencies(bench_exchange_${name} claude-standin)
  add_dependencies(benchmarks bench_exchange_${name})
endforeach()
