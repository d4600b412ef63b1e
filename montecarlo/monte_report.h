#pragma once
// The simulation's reports: the printed summary of each variant (as lines of
// a field and its value, for the printer's two tab columns) and the text file
// of the generated samples that the plot utility or the text viewer shows.

#include <cstdint>
#include <string>
#include <vector>

#include "model/data_set.h"

namespace bm {

class UserInterface;

// One printed line: `field` at column 10, `value` at column 40 (either may be empty).
struct ReportLine {
    std::string field;
    std::string value;
    bool operator==(const ReportLine&) const = default;
};
inline constexpr int kReportFieldColumn = 10;
inline constexpr int kReportValueColumn = 40;

// The printed report, per variant in use: "Variant:", the input data, the
// output data, and an empty line after each variant. Numbers go through the
// common number format.
std::vector<ReportLine> simulationReportLines(const DataSet& data, std::int16_t chemical);
// A line laid out on the two columns (1-based), at least one blank between field and value.
std::string reportLineText(const ReportLine& line);

// True when some variant in use has a summary and samples to show.
bool hasGeneratedOutput(const DataSet& data, std::int16_t chemical);

// The lines of the file for viewing: the header, each variant in use with its
// input and output data and its samples 1..terms (the extra sample is not
// listed), and "[End File]".
std::vector<std::string> simulationViewLines(const DataSet& data, std::int16_t chemical);

// Writes those lines (CR LF ends) to `path`. With no generated output it shows
// "No output data to be viewed." and writes nothing; a file that cannot be
// written goes to the error handler with the path. False when no file was written.
bool writeSimulationViewFile(const DataSet& data, std::int16_t chemical, const std::string& path, UserInterface& ui);

}  // namespace bm
