bm_add_bench(bench_two_dim ${CMAKE_CURRENT_LIST_DIR}/two_dim.cpp)
