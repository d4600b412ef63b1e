bm_add_bench(bench_whole_run ${CMAKE_CURRENT_LIST_DIR}/whole_run.cpp)
target_link_libraries(bench_whole_run PRIVATE batchcalc)
target_compile_definitions(bench_whole_run PRIVATE BRENMOOR_GRID_DIR="${CMAKE_CURRENT_LIST_DIR}/grids")
