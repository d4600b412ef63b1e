#pragma once
// The output files of the saturated models: the regular grid file and the
// Monte Carlo file, in the layout the plotting utility and the text viewer read.
// Every number of the tables goes through formatNumber; header values are the
// texts held in the DataSet.

#include <string>

#include "model/data_set.h"

namespace bm {

// The regular output of a dimension (1, 2 or 3). In a multi-chemical model the
// values are those of `selectedChemical`.
std::string regularOutputText(const DataSet& data, int dimension);
// The Monte Carlo output of a dimension: the iterations of mcResult1D/2D/3D
// (or of the selected chemical's list in a multi-chemical model).
std::string monteCarloOutputText(const DataSet& data, int dimension);

// The writers: each replaces the file at `path`.
void writeOutput1D(const DataSet& data, const std::string& path);
void writeOutput2D(const DataSet& data, const std::string& path);
void writeOutput3D(const DataSet& data, const std::string& path);
// The Monte Carlo writers append to an open file's text.
void writeMonteCarloOutput1D(const DataSet& data, std::string& file);
void writeMonteCarloOutput2D(const DataSet& data, std::string& file);
void writeMonteCarloOutput3D(const DataSet& data, std::string& file);

}  // namespace bm
