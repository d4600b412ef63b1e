bm_add_bench(bench_kern2d ${CMAKE_CURRENT_LIST_DIR}/kern2d.cpp)
