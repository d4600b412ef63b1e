# Shared build helpers.

function(bm_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wno-unused-parameter)
endfunction()

# bm_add_gtest(NAME src...): one GoogleTest executable linked to core and the
# test support library, its tests registered with CTest.
function(bm_add_gtest name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE core testsupport GTest::gtest GTest::gtest_main)
  bm_warnings(${name})
  gtest_discover_tests(${name}
    WORKING_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}
    PROPERTIES ENVIRONMENT "BRENMOOR_SOURCE_DIR=${PROJECT_SOURCE_DIR};BRENMOOR_BINARY_DIR=${PROJECT_BINARY_DIR}"
    DISCOVERY_TIMEOUT 60)
endfunction()

# bm_add_qtest(NAME src...): a GUI test under the offscreen platform.
function(bm_add_qtest name)
  add_executable(${name} ${ARGN})
  set_target_properties(${name} PROPERTIES AUTOMOC ON)
  target_link_libraries(${name} PRIVATE gui testsupport qttestsupport Qt6::Test GTest::gtest GTest::gtest_main)
  bm_warnings(${name})
  gtest_discover_tests(${name}
    WORKING_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}
    PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen;BRENMOOR_SOURCE_DIR=${PROJECT_SOURCE_DIR};BRENMOOR_BINARY_DIR=${PROJECT_BINARY_DIR}"
    DISCOVERY_TIMEOUT 60)
endfunction()

# bm_folder(NAME): a subsystem folder. Its *.cpp join core, widgets/*.cpp join
# gui, tests/*.cpp make test_NAME and widgets/tests/*.cpp make qtest_NAME.
# Sources are globbed, so adding a file needs no edit here.
function(bm_folder name)
  file(GLOB core_src CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(core_src)
    target_sources(core PRIVATE ${core_src})
  endif()
  if(BRENMOOR_BUILD_GUI)
    file(GLOB gui_src CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/widgets/*.cpp)
    if(gui_src)
      target_sources(gui PRIVATE ${gui_src})
    endif()
  endif()
  if(BRENMOOR_BUILD_TESTS)
    file(GLOB test_src CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/tests/*.cpp)
    if(test_src)
      bm_add_gtest(test_${name} ${test_src})
    endif()
    if(BRENMOOR_BUILD_GUI)
      file(GLOB qtest_src CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/widgets/tests/*.cpp)
      if(qtest_src)
        bm_add_qtest(qtest_${name} ${qtest_src})
      endif()
    endif()
  endif()
endfunction()

# bm_program(TARGET [FOLDER]): a program of the suite, built into the suite tree
# (FOLDER below the suite root, "brenmoor" by default) and installed alike.
function(bm_program target)
  set(folder brenmoor)
  if(ARGC GREATER 1)
    set(folder ${ARGV1})
  endif()
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${BRENMOOR_SUITE_DIR}/${folder})
  install(TARGETS ${target} RUNTIME DESTINATION ${folder})
endfunction()
