#pragma once
// --chemical N of the batch calculator: the chemical of a multi-chemical model
// whose results the output file shows.

#include "model/data_set.h"
#include "shell/base/user_interface.h"

namespace bm {

inline constexpr const char* kChemicalChoiceTitle = "Improper chemical";

// Sets selectedChemical to `chemical` (0: the file's own choice is kept).
// False, after a message, for a number outside 1 .. numChemicals of a
// multi-chemical model; a single-chemical model has one result and ignores it.
bool chooseBatchChemical(DataSet& data, int chemical, UserInterface& ui);

}  // namespace bm
