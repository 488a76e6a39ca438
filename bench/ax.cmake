# Accessibility helper benchmarks: cmake --build <dir> --target benchmarks, then run each.
foreach(name paragraph tick capture)
  add_executable(bench_ax_${name} EXCLUDE_FROM_ALL ${CMAKE_CURRENT_LIST_DIR}/ax_${name}.cpp)
  target_link_libraries(bench_ax_${name} PRIVATE glimmo_ax glimmo_fake)
  add_dependencies(benchmarks bench_ax_${name})
endforeach()
