#pragma once
// Numbers in plot files. The workbench writes every value through its number
// format, so "1.e+5", "5.e-4", ".5", "-.25" and "1E-20" are ordinary values,
// and a lone "." is how that format prints a zero.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bm::trazel {

// The value of one cell, or nothing when the trimmed cell is not a number.
std::optional<double> cellNumber(std::string_view text);

// The comma-separated cells of a line, each a number; nothing if any cell is
// not. Empty cells (as after "Time:,") are skipped.
std::optional<std::vector<double>> rowNumbers(std::string_view line);
// The same into a vector that keeps its storage from row to row; false when a cell is not a number.
bool rowNumbersInto(std::string_view line, std::vector<double>& values);

// The shortest text that reads back as the same double, in plain decimals
// from 1e-4 up ("0.6681", "100000"), with an exponent below ("5.3402e-05").
std::string plainNumber(double value);

}  // namespace bm::trazel
