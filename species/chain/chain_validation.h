#pragma once
// The checks of a decay chain's two tables before a run, in their order: the
// inputs table (each chemical's source time and concentration), then the
// chemicals' table (name, decay rate, yield factor), then no two rates alike.
// A value holding a Monte Carlo marker passes the value checks. The first
// failure shows its critical message and ends the checks.

#include <string>
#include <vector>

#include "model/data_set.h"
#include "shell/base/user_interface.h"

namespace bm {

// One chemical of the chain as its two tables hold it.
struct ChainEntry {
    std::string name, rate, yield;   // the chemicals' table
    std::string time, concentration; // the inputs table
};

// Where a check failed: the table (the chemicals' or the inputs'), the
// chemical (from 1) and the value (ChainValue).
enum class ChainValue { Name, Rate, Yield, Time, Concentration };
struct ChainFailure {
    int chemical = 0;
    ChainValue value = ChainValue::Name;
    bool inChemicalsTable() const { return value == ChainValue::Name || value == ChainValue::Rate || value == ChainValue::Yield; }
};

// The checks on the tables; the times must lie in `timeRange` (its minimum
// and maximum allowed). `failure`, when given, tells the failing value.
bool chainTablesAccepted(const std::vector<ChainEntry>& chain, const std::string& timeRange, UserInterface& ui,
                         ChainFailure* failure = nullptr);
// The same on the DataSet's chemical lists (numChemicals of them).
bool chainTablesAccepted(const DataSet& data, UserInterface& ui);
// The DataSet's chemicals as entries (a list shorter than numChemicals gives empty texts).
std::vector<ChainEntry> chainEntries(const DataSet& data);

// Two rates count as equal when their single-precision values agree in the
// seven digits a single shows (0.1 and 0.10000001 do); a marker counts as the
// number it carries.
bool sameDecayRate(const std::string& first, const std::string& second);

}  // namespace bm
