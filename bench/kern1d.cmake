bm_add_bench(bench_kern1d ${CMAKE_CURRENT_LIST_DIR}/kern1d.cpp)
