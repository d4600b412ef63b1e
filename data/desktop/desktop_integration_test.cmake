# Installs the suite into a fresh prefix and checks what a Linux desktop reads
# of it: the desktop entries pass desktop-file-validate, the MIME definition
# is well-formed and update-mime-database takes it without a word, each of
# the nine data-file kinds and the plot file is known by its extension (and
# by its content where another kind shares the extension), each kind opens
# with the right program, and every Exec, icon and launcher exists.
include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/ScriptSupport.cmake)
bm_require_variables(desktop_integration_test.cmake BUILD PREFIX SAMPLES CHECK)
bm_install_fresh(${BUILD} ${PREFIX})
set(share ${PREFIX}/share)
# The desktop as it would see the prefix.
set(ENV{XDG_DATA_DIRS} "${share}:/usr/share")
set(ENV{XDG_DATA_HOME} "${PREFIX}/no-user-data")

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0 OR NOT "${out}${err}" STREQUAL "")
    message(FATAL_ERROR "${ARGN}\nended with ${rc}:\n${out}${err}")
  endif()
endfunction()

# The desktop entries.
set(entries brenmoor brenmoor-trazel brenmoor-textviewer)
foreach(entry ${entries})
  set(file ${share}/applications/${entry}.desktop)
  if(NOT EXISTS ${file})
    message(FATAL_ERROR "no ${file}")
  endif()
  run(desktop-file-validate ${file})
  file(STRINGS ${file} exec REGEX "^Exec=")
  string(REGEX REPLACE "^Exec=([^ ]+).*" "\\1" program "${exec}")
  if(NOT IS_ABSOLUTE "${program}" OR NOT EXISTS "${program}" OR NOT program MATCHES "^${PREFIX}/")
    message(FATAL_ERROR "${entry}: Exec names ${program}, not a program of the installed suite")
  endif()
  file(STRINGS ${file} icon REGEX "^Icon=")
  string(REGEX REPLACE "^Icon=" "" icon "${icon}")
  if(NOT EXISTS ${share}/icons/hicolor/scalable/apps/${icon}.svg)
    message(FATAL_ERROR "${entry}: no icon ${icon}.svg")
  endif()
endforeach()

# The launchers on the PATH.
foreach(launcher brenmoor brenmoor-calc trazel brenmoor-textviewer)
  if(NOT EXISTS ${PREFIX}/bin/${launcher})
    message(FATAL_ERROR "the launcher bin/${launcher} does not lead to a program")
  endif()
endforeach()
execute_process(COMMAND ${PREFIX}/bin/brenmoor-calc --help RESULT_VARIABLE rc OUTPUT_QUIET ERROR_QUIET)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "bin/brenmoor-calc --help ended with ${rc}")
endif()

# The file kinds.
set(xml ${share}/mime/packages/brenmoor.xml)
run(xmllint --noout ${xml})
run(update-mime-database ${share}/mime)
foreach(kind one two tri mc1 mc2 mc3 u1d mcu var plot)
  if(NOT EXISTS ${share}/mime/application/x-brenmoor-${kind}.xml)
    message(FATAL_ERROR "update-mime-database made nothing of application/x-brenmoor-${kind}")
  endif()
endforeach()
foreach(icon application-x-brenmoor-data application-x-brenmoor-plot)
  if(NOT EXISTS ${share}/icons/hicolor/scalable/mimetypes/${icon}.svg)
    message(FATAL_ERROR "no icon ${icon}.svg")
  endif()
endforeach()

# Each sample is known as its kind, as a file manager asks; .mc2 is also
# another program's extension, so the content decides there.
file(WRITE ${PREFIX}/brenmoor.plt "Ground Water\r\nModel: Two Dimensional\r\n")
set(files)
foreach(kind one two tri mc1 mc2 mc3 u1d mcu var)
  list(APPEND files "${SAMPLES}/sample1.${kind}|application/x-brenmoor-${kind}")
endforeach()
list(APPEND files "${PREFIX}/brenmoor.plt|application/x-brenmoor-plot")
foreach(pair ${files})
  string(REPLACE "|" ";" pair "${pair}")
  list(GET pair 0 path)
  list(GET pair 1 expected)
  execute_process(COMMAND ${CHECK} ${path} OUTPUT_VARIABLE got OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT got STREQUAL expected)
    message(FATAL_ERROR "${path} is taken for ${got}, not ${expected}")
  endif()
endforeach()

# Which program opens each kind.
run(update-desktop-database ${share}/applications)
file(READ ${share}/applications/mimeinfo.cache cache)
foreach(kind one two tri mc1 mc2 mc3 u1d mcu var)
  if(NOT cache MATCHES "application/x-brenmoor-${kind}=brenmoor.desktop;")
    message(FATAL_ERROR "the workbench does not open application/x-brenmoor-${kind}:\n${cache}")
  endif()
endforeach()
if(NOT cache MATCHES "application/x-brenmoor-plot=brenmoor-trazel.desktop;")
  message(FATAL_ERROR "Trazel does not open the plot file:\n${cache}")
endif()
file(REMOVE_RECURSE ${PREFIX})
