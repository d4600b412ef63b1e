bm_add_bench(bench_matrix_operations ${CMAKE_CURRENT_LIST_DIR}/matrix_operations.cpp)
