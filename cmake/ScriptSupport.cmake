# What the build's test scripts (cmake -P) share.

# Stops the script unless every named variable was given with -D.
function(bm_require_variables script)
  foreach(v ${ARGN})
    if(NOT DEFINED ${v})
      message(FATAL_ERROR "${script} needs ${v}")
    endif()
  endforeach()
endfunction()

# Installs the build into a fresh prefix, as `cmake --install` does for a user.
function(bm_install_fresh build prefix)
  file(REMOVE_RECURSE ${prefix})
  execute_process(COMMAND ${CMAKE_COMMAND} --install ${build} --prefix ${prefix}
    RESULT_VARIABLE rc OUTPUT_QUIET ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "cmake --install failed: ${err}")
  endif()
endfunction()

# Checks with the smoke checker that a screenshot is a real picture of a window.
function(bm_check_screenshot check picture)
  execute_process(COMMAND ${check} ${picture} RESULT_VARIABLE rc OUTPUT_VARIABLE checked)
  message(STATUS "screenshot: ${checked}")
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "the screenshot ${picture} is blank or missing")
  endif()
endfunction()

# Runs the workbench PROGRAM under a virtual X server with a screen of SCREEN
# ("1280x900") and the arguments that follow, with --smoke-screenshot=OUT; what
# it wrote on standard error (the messages it would have shown, the windows)
# lands in the variable named by SAID.
function(bm_smoke_workbench said screen program out)
  file(REMOVE ${out})
  execute_process(
    COMMAND xvfb-run -a -s "-screen 0 ${screen}x24" ${program} ${ARGN} --smoke-screenshot=${out}
    RESULT_VARIABLE rc OUTPUT_QUIET ERROR_VARIABLE err TIMEOUT 60)
  message(STATUS "workbench said:\n${err}")
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "the workbench ended with ${rc}: ${err}")
  endif()
  set(${said} "${err}" PARENT_SCOPE)
endfunction()
