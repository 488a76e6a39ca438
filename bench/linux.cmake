# Real desktop benchmarks: run inside tests/e2e/desktop.sh (they start the GTK test editor).
if(TARGET glimmo-gtk-editor)
  add_executable(bench_linux_tick EXCLUDE_FROM_ALL ${CMAKE_CURRENT_LIST_DIR}/linux_tick.cpp)
  target_link_libraries(bench_linux_tick PRIVATE glimmo_ax glimmo_linux Qt6::Widgets)
  target_compile_definitions(bench_linux_tick PRIVATE
    GLIMMO_GTK_EDITOR="$<TARGET_FILE:glimmo-gtk-editor>")
  add_dependencies(bench_linux_tick glimmo-gtk-editor)
  add_dependencies(benchmarks bench_linux_tick)
endif()
if(TARGET glimmo-gtk-editor)
  add_executable(bench_linux_clipboard EXCLUDE_FROM_ALL
    ${CMAKE_CURRENT_LIST_DIR}/linux_clipboard.cpp)
  target_link_libraries(bench_linux_clipboard PRIVATE glimmo_linux Qt6::Widgets)
  target_compile_definitions(bench_linux_clipboard PRIVATE
    GLIMMO_GTK_EDITOR="$<TARGET_FILE:glimmo-gtk-editor>")
  add_dependencies(bench_linux_clipboard glimmo-gtk-editor)
  add_dependencies(benchmarks bench_linux_clipboard)
endif()
