# Printing and export.
add_executable(export_bench export_bench.cpp)
target_link_libraries(export_bench PRIVATE luming_store benchmark::benchmark_main)
if(LUMING_DESKTOP)
  add_executable(pages_bench pages_bench.cpp)
  target_link_libraries(pages_bench PRIVATE luming_desktop luming_script benchmark::benchmark)
endif()
