#pragma once
// The printed report of the saturated model screen: the inputs of the model
// (title, file, model, units, coordinates, the selected point, the inflow
// terms, the source and the field and chemical properties), as lines of
// pieces placed at character columns, as the printer's Tab(n) places them.

#include <string>
#include <vector>

#include "shell/screen/printed_lines.h"

namespace bm {

class InputFormModel;

// The report of the model on the screen, from the DataSet as holdDataSet left
// it and the unit labels of the screen. Range fields are read by the range
// readers, so a range with one ":" raises run-time error 5.
std::vector<PrintedLine> printedReportLines(const InputFormModel& form);

}  // namespace bm
