bm_add_bench(bench_statistics ${CMAKE_CURRENT_LIST_DIR}/statistics.cpp)
