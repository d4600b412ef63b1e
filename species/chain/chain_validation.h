#pragma once
// The checks of a decay chain's two tables before a run, in their order: the
// inputs table (each chemical's source time and concentration), then the
// chemicals' table (name, decay rate, yield factor), then no two rates alike.
// A value holding a Monte Carlo marker passes the value checks. The first
// failure shows its critical message and ends the checks.

#include "model/data_set.h"
#include "shell/base/user_interface.h"

namespace bm {

bool chainTablesAccepted(const DataSet& data, UserInterface& ui);

// Two rates count as equal when their single-precision values agree in the
// seven digits a single shows (0.1 and 0.10000001 do); a marker counts as the
// number it carries.
bool sameDecayRate(const std::string& first, const std::string& second);

}  // namespace bm
