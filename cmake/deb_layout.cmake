# Run by CPack on its staging folder before the package is made: moves what
# the desktop and the shell look for out of the suite tree in /opt/brenmoor
# (see Packaging.cmake), and opens the temporary folder to every user.
set(stage ${CPACK_TEMPORARY_DIRECTORY})
set(tree ${stage}${CPACK_PACKAGING_INSTALL_PREFIX})
if(NOT EXISTS ${tree}/brenmoor/brenmoor)
  message(FATAL_ERROR "deb_layout.cmake: no suite tree in ${tree}")
endif()
file(MAKE_DIRECTORY ${stage}/usr)
foreach(folder share bin)
  file(REMOVE_RECURSE ${stage}/usr/${folder})
  file(RENAME ${tree}/${folder} ${stage}/usr/${folder})
endforeach()
# The workbench writes brenmoor.plt there for Trazel; sticky, as /tmp is.
execute_process(COMMAND chmod 1777 ${tree}/Trazel RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "deb_layout.cmake: cannot open ${tree}/Trazel to its users")
endif()
