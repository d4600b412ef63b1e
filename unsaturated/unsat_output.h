#pragma once
// The output files of the unsaturated model: the grid as a plot file for the
// plotting utility and the simulation's values for the text viewer. Lines end
// in CR LF; numbers of the tables go through formatNumber; header values are
// the DataSet's texts.

#include <string>

#include "model/data_set.h"

namespace bm {

// The plot file's text: the header, two empty lines, "Time:" with the times,
// then one row per depth (each row starts on a new line; the last has no line
// end). A multi-chemical model names the selected chemical and its decay rate;
// its grid is the one copied into resultUnsat for display.
std::string unsatPlotText(const DataSet& data);
// Replaces the file at `path` with unsatPlotText (errors 75/76/61 as writeTextFile).
void writeUnsatPlotFile(const DataSet& data, const std::string& path);

// The Monte Carlo file's text: the header with every marked value shown as the
// number it carries, an empty line, and the iterations of mcResultUnsat one a line.
std::string unsatMonteCarloText(const DataSet& data);
// Appends unsatMonteCarloText to an open file's text.
void writeUnsatMonteCarloFile(const DataSet& data, std::string& file);

}  // namespace bm
