bm_add_bench(bench_unsaturated ${CMAKE_CURRENT_LIST_DIR}/unsaturated.cpp)
