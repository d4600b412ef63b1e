# Writes, for the suite installed at ROOT, the desktop entries into
# OUT/share/applications (naming the programs by absolute paths, as orva.ini
# does) and the launchers OUT/bin/NAME, links to the programs in the tree.
# OUT is ROOT, or ROOT below a staging folder (DESTDIR).
include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/ScriptSupport.cmake)
bm_require_variables(write_desktop_entries.cmake ROOT SOURCE OUT)
set(SUITE_DIR ${ROOT})
set(PROGRAM_DIR ${ROOT}/brenmoor)
foreach(entry brenmoor brenmoor-trazel brenmoor-textviewer)
  configure_file(${SOURCE}/${entry}.desktop.in ${OUT}/share/applications/${entry}.desktop @ONLY NEWLINE_STYLE UNIX)
endforeach()
file(MAKE_DIRECTORY ${OUT}/bin)
foreach(pair "brenmoor|brenmoor/brenmoor" "brenmoor-calc|brenmoor/brenmoor-calc" "trazel|trazel/trazel"
             "brenmoor-textviewer|brenmoor/textviewer")
  string(REPLACE "|" ";" pair "${pair}")
  list(GET pair 0 name)
  list(GET pair 1 program)
  file(REMOVE ${OUT}/bin/${name})
  file(CREATE_LINK ${ROOT}/${program} ${OUT}/bin/${name} SYMBOLIC)
endforeach()
