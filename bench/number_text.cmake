bm_add_bench(bench_number_text ${CMAKE_CURRENT_LIST_DIR}/number_text.cpp
             ${PROJECT_SOURCE_DIR}/model/tests/number_text_reference.cpp)
