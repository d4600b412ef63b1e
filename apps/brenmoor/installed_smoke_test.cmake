# Installs the suite into a fresh prefix, starts the installed workbench under a
# virtual X server, checks its picture, and checks that the start said nothing:
# an installed suite has every file the environment check looks for.
foreach(v BUILD PREFIX CHECK OUT)
  if(NOT DEFINED ${v})
    message(FATAL_ERROR "installed_smoke_test.cmake needs ${v}")
  endif()
endforeach()
file(REMOVE_RECURSE ${PREFIX})
file(REMOVE ${OUT})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX}
  RESULT_VARIABLE rc OUTPUT_QUIET ERROR_VARIABLE err)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "cmake --install failed: ${err}")
endif()
foreach(file orva.ini orvahelp.hlp brenmoor/brenmoor brenmoor/brenmoor-calc brenmoor/glq.pts brenmoor/textviewer
             brenmoor/ZENWA_gw.bmp brenmoor/sampldat/sample1.one trazel/trazel)
  if(NOT EXISTS ${PREFIX}/${file})
    message(FATAL_ERROR "the installed suite lacks ${file}")
  endif()
endforeach()
execute_process(
  COMMAND xvfb-run -a -s "-screen 0 1280x900x24" ${PREFIX}/brenmoor/brenmoor --smoke-screenshot=${OUT}
  RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err TIMEOUT 60)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "the installed workbench ended with ${rc}: ${err}")
endif()
# Each message box of the start is logged on standard error as "TITLE: TEXT".
foreach(title "Missing Text Editor:" "Missing Paths:" "Missing Program Files:" "Error:" "Overflow:"
              "Illegal Function Call:")
  string(FIND "${err}" "${title}" at)
  if(NOT at EQUAL -1)
    message(FATAL_ERROR "the installed suite started with a message: ${err}")
  endif()
endforeach()
execute_process(COMMAND ${CHECK} ${OUT} RESULT_VARIABLE rc OUTPUT_VARIABLE checked)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "the screenshot ${OUT} is blank or missing")
endif()
# The installed batch calculator computes an installed sample.
execute_process(COMMAND ${PREFIX}/brenmoor/brenmoor-calc ${PREFIX}/brenmoor/sampldat/sample1.one
  RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(NOT rc EQUAL 0 OR NOT out MATCHES "^Ground Water")
  message(FATAL_ERROR "the installed brenmoor-calc failed (${rc}): ${err}")
endif()
file(REMOVE_RECURSE ${PREFIX})
