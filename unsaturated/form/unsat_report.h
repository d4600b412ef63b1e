#pragma once
// The printed report of the unsaturated screens: the head every report has,
// the depth and time ranges, the selected point, the inflow terms (one
// chemical) or the chemicals' properties (several), and the field and
// chemical constants with the units of the screen's rows.

#include <vector>

#include "model/data_set.h"
#include "shell/screen/printed_lines.h"
#include "unsaturated/unsat_rows.h"

namespace bm {

// From the DataSet as holdDataSet left it; the rows give the unit labels.
std::vector<PrintedLine> unsatReportLines(const DataSet& data, const std::vector<UnsatRow>& rows);

}  // namespace bm
