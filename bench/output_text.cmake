bm_add_bench(bench_output_text ${CMAKE_CURRENT_LIST_DIR}/output_text.cpp)
target_link_libraries(bench_output_text PRIVATE batchcalc)
target_compile_definitions(bench_output_text PRIVATE BRENMOOR_GRID_DIR="${CMAKE_CURRENT_LIST_DIR}/grids")
