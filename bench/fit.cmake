bm_add_bench(bench_fit ${CMAKE_CURRENT_LIST_DIR}/fit.cpp)
