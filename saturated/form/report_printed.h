#pragma once
// The printed report of the saturated model screen: the inputs of the model
// (title, file, model, units, coordinates, the selected point, the inflow
// terms, the source and the field and chemical properties), as lines of
// pieces placed at character columns, as the printer's Tab(n) places them.

#include <string>
#include <vector>

namespace bm {

class InputFormModel;

// A piece of a printed line: its text starts at `column` (Tab(column), counted
// from 1), or right behind the piece before it when `column` is 0.
struct PrintedPiece {
    int column = 0;
    std::string text;
    bool operator==(const PrintedPiece&) const = default;
};
using PrintedLine = std::vector<PrintedPiece>;

// The report of the model on the screen, from the DataSet as holdDataSet left
// it and the unit labels of the screen. Range fields are read by the range
// readers, so a range with one ":" raises run-time error 5.
std::vector<PrintedLine> printedReportLines(const InputFormModel& form);

// The line as a fixed-pitch text: Tab(n) pads with blanks up to column n, or,
// when the line has gone past it, continues on a new line at column n.
std::string printedLineText(const PrintedLine& line);
// The whole report as fixed-pitch text, lines ended by "\n".
std::string printedReportText(const std::vector<PrintedLine>& lines);

// Every Tab column the report uses, in ascending order.
std::vector<int> printedTabColumns(const std::vector<PrintedLine>& lines);
// The lines for a printer with one column stop per entry of `columns`: cell k
// (k >= 1, the cells split at "\t") starts at stop k - 1.
std::vector<std::string> tabbedReportLines(const std::vector<PrintedLine>& lines, const std::vector<int>& columns);

}  // namespace bm
