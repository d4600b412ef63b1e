# The smoke test: starts the suite's workbench under a virtual X server, lets it
# save a picture of its window, checks the picture, and checks that the start
# reported exactly what is missing from the suite tree.
foreach(v PROGRAM CHECK SUITE OUT)
  if(NOT DEFINED ${v})
    message(FATAL_ERROR "smoke_test.cmake needs ${v}")
  endif()
endforeach()
file(REMOVE ${OUT})
execute_process(
  COMMAND xvfb-run -a -s "-screen 0 1280x900x24" ${PROGRAM} --smoke-screenshot=${OUT}
  RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err TIMEOUT 60)
message(STATUS "workbench said:\n${err}")
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "the workbench ended with ${rc}")
endif()
execute_process(COMMAND ${CHECK} ${OUT} RESULT_VARIABLE rc OUTPUT_VARIABLE checked)
message(STATUS "screenshot: ${checked}")
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "the screenshot ${OUT} is blank or missing")
endif()

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
