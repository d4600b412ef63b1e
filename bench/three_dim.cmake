bm_add_bench(bench_three_dim ${CMAKE_CURRENT_LIST_DIR}/three_dim.cpp)
