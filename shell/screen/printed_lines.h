#pragma once
// A report of a model screen as lines of pieces placed at character columns,
// as the printer's Tab(n) places them: the text form for a fixed-pitch view,
// and the tab-separated form for a printer with column stops.

#include <string>
#include <vector>

#include "model/data_set.h"
#include "model/units.h"

namespace bm {

// A piece of a printed line: its text starts at `column` (Tab(column), counted
// from 1), or right behind the piece before it when `column` is 0.
struct PrintedPiece {
    int column = 0;
    std::string text;
    bool operator==(const PrintedPiece&) const = default;
};
using PrintedLine = std::vector<PrintedPiece>;

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

// What every report of a model starts from. A unit as a report names it: the
// checked menu caption without its "&" (the word itself when no caption has it).
std::string reportUnitName(UnitMenu menu, const std::string& word);
// " Title: ", " Author: ", " Comments: ", each followed by its text indented by
// three blanks (an empty text prints its label alone).
void appendReportNotes(std::vector<PrintedLine>& lines, const std::string& title, const std::string& author,
                       const std::string& comments);
// "Units:" and the three units at column 20.
void appendReportUnits(std::vector<PrintedLine>& lines, const std::string& lengthWord, const std::string& timeWord,
                       const std::string& concentrationWord);
// The head of a model's report: its heading, the notes, the data file's name,
// the model words and the units.
void appendReportHead(std::vector<PrintedLine>& lines, const std::string& heading, const DataSet& data);
// "Boundary Conditions:": the superposition index and the table of the terms;
// of a decay chain, each chemical's source time and concentration.
void appendReportTerms(std::vector<PrintedLine>& lines, const DataSet& data);
// "Chemical Properties": a decay chain's chemicals, one row each (name, decay
// rate, yield factor), their values under the heading's words.
void appendChemicalProperties(std::vector<PrintedLine>& lines, const DataSet& data);
// Each chemical's concentration at the selected point, chemical after chemical,
// as the points table of a chain's screen shows it.
void appendChemicalResults(std::vector<PrintedLine>& lines, const DataSet& data);
// "Coordinate and Time Data" and its column headings.
void appendCoordinateHeadings(std::vector<PrintedLine>& lines);
// A row of that table: the name, then the range's minimum, maximum and interval
// through formatNumber (the range readers raise run-time error 5 on a text with one ":").
PrintedLine coordinateRow(const std::string& name, const std::string& rangeText);

}  // namespace bm
