#pragma once
// The output files of the time-varying model: the regular file (header, then a
// block per time: "Time:, t" and the concentrations, a row per x for a point
// source, one row of all x for a line source) that the plotting utility and the
// text viewer read, and the Monte Carlo file (header, one result per line).
// Numbers of the tables go through formatNumber; header values are the texts
// held in the DataSet (a MonteMarker shows the number it keeps).

#include <string>

#include "model/data_set.h"

namespace bm {

// "point" or "line" in the lower-cased contaminantType picks the writer; empty
// text for any other source.
std::string timeVaryingOutputText(const DataSet& data);
std::string timeVaryingMonteCarloOutputText(const DataSet& data);

// Replaces the file at path; false (nothing written) when the source is neither
// a point nor a line. Write failures are run-time errors (75, 76, 61).
bool writeTimeVaryingOutput(const DataSet& data, const std::string& path);
// Appends to an open file's text.
void writeTimeVaryingMonteCarloOutput(const DataSet& data, std::string& file);

}  // namespace bm
