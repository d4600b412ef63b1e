bm_add_bench(bench_decay_chain ${CMAKE_CURRENT_LIST_DIR}/decay_chain.cpp)
