#pragma once
// The report of the time-varying model: its notes, file, model words, units,
// coordinates, the selected point of a simulation and its properties (the
// property lines of the output file), as lines of pieces at character columns,
// for the printer and, as fixed-pitch text, for the text viewer.

#include <string>
#include <vector>

#include "model/data_set.h"
#include "shell/screen/printed_lines.h"

namespace bm {

// From the DataSet as holdDataSet left it. A range with one ":" raises run-time error 5.
std::vector<PrintedLine> merlaReportLines(const DataSet& data);
// The same as text, lines ended by CR LF.
std::string merlaReportText(const DataSet& data);

}  // namespace bm
