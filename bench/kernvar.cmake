bm_add_bench(bench_kernvar ${CMAKE_CURRENT_LIST_DIR}/kernvar.cpp)
