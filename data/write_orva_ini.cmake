# Writes the suite's settings file for the tree rooted at ROOT into OUT, naming
# the suite's own programs: the text viewer beside the workbench and the plot
# utility in its own folder. Lines end in CR LF like every file of the suite.
if(NOT DEFINED ROOT OR NOT DEFINED OUT)
  message(FATAL_ERROR "write_orva_ini.cmake needs ROOT and OUT")
endif()
set(crlf "\r\n")
string(CONCAT text
  "[General]${crlf}"
  "TextEditor=${ROOT}/brenmoor/textviewer${crlf}"
  "TemporaryDataPath=${ROOT}/Trazel${crlf}"
  "ChemicalDBName=${ROOT}/chemical/chemical.mdb${crlf}"
  "[Surface Model]${crlf}"
  "SurfacePath=${ROOT}/surface/sampldat${crlf}"
  "[Plant and Animal Model]${crlf}"
  "plantPath=${ROOT}/plant/sampldat${crlf}"
  "[Air Model]${crlf}"
  "AirDataPath=${ROOT}/air/sampldat${crlf}"
  "[Ground Water Model]${crlf}"
  "GroundWaterDataPath=${ROOT}/brenmoor/sampldat${crlf}"
  "[Graphics]${crlf}"
  "Graph=${ROOT}/trazel/trazel${crlf}")
file(WRITE "${OUT}" "${text}")
