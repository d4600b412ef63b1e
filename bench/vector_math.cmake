bm_add_bench(bench_vector_math ${CMAKE_CURRENT_LIST_DIR}/vector_math.cpp)
