# Shared build helpers.

function(bm_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wno-unused-parameter)
endfunction()

# bm_layer(NAME DIRS dir... [CHECKED_DIRS dir...] [DEPENDS layer...] [QT])
#
# One layer of the program: a static library of the *.cpp directly in DIRS
# (folders relative to the source tree), linked to the layers it DEPENDS on.
# It compiles against a view of the tree that holds only its own headers and
# those of the layers below it (build/layer_views/NAME), so that an include
# of a higher layer does not build. CHECKED_DIRS hold headers of the layer
# that are not compiled into it (the fuzz targets'). Every layer is written
# to build/layers.txt, which the test of the include order reads.
set_property(GLOBAL PROPERTY BM_LAYER_LINES "")
function(bm_layer name)
  cmake_parse_arguments(L "QT" "" "DIRS;CHECKED_DIRS;DEPENDS" ${ARGN})
  set(sources)
  set(headers)
  foreach(dir ${L_DIRS})
    file(GLOB dir_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${dir}/*.cpp)
    list(APPEND sources ${dir_sources})
  endforeach()
  foreach(dir ${L_DIRS} ${L_CHECKED_DIRS})
    file(GLOB dir_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${dir}/*.h)
    list(APPEND headers ${dir_headers})
  endforeach()
  foreach(dep ${L_DEPENDS})
    get_property(dep_headers GLOBAL PROPERTY BM_VIEW_HEADERS_${dep})
    list(APPEND headers ${dep_headers})
  endforeach()
  list(REMOVE_DUPLICATES headers)
  set_property(GLOBAL PROPERTY BM_VIEW_HEADERS_${name} ${headers})

  set(view ${CMAKE_BINARY_DIR}/layer_views/${name})
  file(REMOVE_RECURSE ${view})
  foreach(header ${headers})
    file(RELATIVE_PATH relative ${PROJECT_SOURCE_DIR} ${header})
    get_filename_component(folder ${view}/${relative} DIRECTORY)
    file(MAKE_DIRECTORY ${folder})
    file(CREATE_LINK ${header} ${view}/${relative} SYMBOLIC)
  endforeach()

  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PRIVATE ${view})
  target_link_libraries(${name} PUBLIC ${L_DEPENDS})
  if(L_QT)
    set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON)
    target_link_libraries(${name} PUBLIC Qt6::Widgets Qt6::PrintSupport)
  endif()
  if(BRENMOOR_BUILD_FUZZERS)
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer-no-link,address,undefined)
  endif()
  bm_warnings(${name})

  string(REPLACE ";" "," dirs "${L_DIRS};${L_CHECKED_DIRS}")
  string(REPLACE ";" "," deps "${L_DEPENDS}")
  set_property(GLOBAL APPEND PROPERTY BM_LAYER_LINES "${name} ${dirs} ${deps}")
endfunction()

# Writes build/layers.txt: a line per layer, "name dir,dir,... dep,dep,...".
function(bm_write_layer_map)
  get_property(lines GLOBAL PROPERTY BM_LAYER_LINES)
  string(REPLACE ";" "\n" text "${lines}")
  file(WRITE ${CMAKE_BINARY_DIR}/layers.txt "${text}\n")
endfunction()

# The test executables get this main: it registers the built-in model kinds
# (as the programs do at start) before the tests run.
function(bm_test_main target)
  target_link_libraries(${target} PRIVATE testmain GTest::gtest)
endfunction()

# bm_add_gtest(NAME src...): one GoogleTest executable linked to core and the
# test support library, its tests registered with CTest.
function(bm_add_gtest name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE core testsupport)
  bm_test_main(${name})
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
  target_link_libraries(${name} PRIVATE gui core testsupport qttestsupport Qt6::Test)
  bm_test_main(${name})
  bm_warnings(${name})
  gtest_discover_tests(${name}
    WORKING_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}
    PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen;BRENMOOR_SOURCE_DIR=${PROJECT_SOURCE_DIR};BRENMOOR_BINARY_DIR=${PROJECT_BINARY_DIR}"
    DISCOVERY_TIMEOUT 60)
endfunction()

# bm_folder(NAME): the tests of a subsystem folder (its code belongs to the
# layers declared in the top CMakeLists.txt): tests/*.cpp make test_NAME and
# widgets/tests/*.cpp make qtest_NAME. Sources are globbed, so adding a file
# needs no edit here.
function(bm_folder name)
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
