bm_add_bench(bench_data_file ${CMAKE_CURRENT_LIST_DIR}/data_file.cpp)
