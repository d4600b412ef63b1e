# The smoke test: starts the suite's workbench under a virtual X server, lets it
# save a picture of its window, checks the picture, and checks that the start
# reported exactly what is missing from the suite tree.
include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/ScriptSupport.cmake)
bm_require_variables(smoke_test.cmake PROGRAM CHECK SUITE OUT)
bm_smoke_workbench(err 1280x900 ${PROGRAM} ${OUT})
bm_check_screenshot(${CHECK} ${OUT})

# A message may only stand for a file that is truly missing.
set(checks
  "Missing Text Editor: |${SUITE}/brenmoor/textviewer"
  "Unable to find trazel utility|${SUITE}/trazel/trazel"
  "Unable to data file|${SUITE}/brenmoor/glq.pts"
  "Unable to locate ground water model file|${SUITE}/brenmoor/glq.pts")
foreach(check ${checks})
  string(REPLACE "|" ";" parts "${check}")
  list(GET parts 0 words)
  list(GET parts 1 file)
  string(FIND "${err}" "${words}" at)
  if(EXISTS ${file} AND NOT at EQUAL -1)
    message(FATAL_ERROR "\"${words}\" although ${file} exists")
  elseif(NOT EXISTS ${file} AND at EQUAL -1)
    message(FATAL_ERROR "no \"${words}\" although ${file} is missing")
  endif()
endforeach()
foreach(never "Missing Paths:" "ground water model help file" "Error:" "Illegal Function Call:")
  string(FIND "${err}" "${never}" at)
  if(NOT at EQUAL -1)
    message(FATAL_ERROR "unexpected message \"${never}\"")
  endif()
endforeach()
