# Installs the suite into a fresh prefix, starts the installed workbench under a
# virtual X server, checks its picture, and checks that the start said nothing:
# an installed suite has every file the environment check looks for.
include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/ScriptSupport.cmake)
bm_require_variables(installed_smoke_test.cmake BUILD PREFIX CHECK OUT)
file(REMOVE ${OUT})
bm_install_fresh(${BUILD} ${PREFIX})
foreach(file orva.ini orvahelp.hlp brenmoor/brenmoor brenmoor/brenmoor-calc brenmoor/glq.pts brenmoor/textviewer
             brenmoor/ZENWA_gw.bmp brenmoor/sampldat/sample1.one trazel/trazel)
  if(NOT EXISTS ${PREFIX}/${file})
    message(FATAL_ERROR "the installed suite lacks ${file}")
  endif()
endforeach()
bm_smoke_workbench(err 1280x900 ${PREFIX}/brenmoor/brenmoor ${OUT})
# Each message box of the start is logged on standard error as "TITLE: TEXT".
foreach(title "Missing Text Editor:" "Missing Paths:" "Missing Program Files:" "Error:" "Overflow:"
              "Illegal Function Call:")
  string(FIND "${err}" "${title}" at)
  if(NOT at EQUAL -1)
    message(FATAL_ERROR "the installed suite started with a message: ${err}")
  endif()
endforeach()
bm_check_screenshot(${CHECK} ${OUT})
# The installed batch calculator computes an installed sample.
execute_process(COMMAND ${PREFIX}/brenmoor/brenmoor-calc ${PREFIX}/brenmoor/sampldat/sample1.one
  RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(NOT rc EQUAL 0 OR NOT out MATCHES "^Ground Water")
  message(FATAL_ERROR "the installed brenmoor-calc failed (${rc}): ${err}")
endif()
file(REMOVE_RECURSE ${PREFIX})
