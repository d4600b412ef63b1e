bm_add_bench(bench_one_dim ${CMAKE_CURRENT_LIST_DIR}/one_dim.cpp)
