bm_add_bench(bench_kern3d ${CMAKE_CURRENT_LIST_DIR}/kern3d.cpp)
