bm_add_bench(bench_monte_carlo_run ${CMAKE_CURRENT_LIST_DIR}/monte_carlo_run.cpp)
