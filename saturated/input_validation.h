#pragma once
// The saturated model's checks before a run (inputForm_validate), on the
// sheet of the screen's rows and inflow grid (not the DataSet). They stop at
// the first rule that fails with one message box and say where the user is to
// be taken. They overwrite the rows of the selected point with the Constants of
// their ranges and set the counts numXTerms, numYTerms, numZTerms and
// numTTerms, and change nothing else.

#include <string>

#include "saturated/input_sheet.h"
#include "shell/base/user_interface.h"

namespace bm {

// The rules of the sheet's model word in their order; false at the first that
// fails, its message shown and `failure` set to the place of the input.
// Run-time errors propagate.
bool validateInputSheet(InputSheet& sheet, DataSet& data, UserInterface& ui, InputPlace& failure);

// The saturated kinds' validation for the batch calculator: the sheet of the
// DataSet (a model the layouts do not know gives "Error in setDisplay()"),
// validated as the screen validates it (a run-time error goes to the handler),
// and the rows of the selected point that validation rewrote kept in the
// DataSet. True when the model may be calculated.
bool validateSaturatedInputs(DataSet& data, UserInterface& ui);

// Message titles.
inline constexpr const char* kNoInputTitle = "No input data";
inline constexpr const char* kImproperInputTitle = "Improper input data";
inline constexpr const char* kInvalidFormatTitle = "Invalid input format";

// The format texts of the messages, by dimension.
std::string rangeFormatTextF(int dimension);
std::string rangeFormatTextG(int dimension);

}  // namespace bm
