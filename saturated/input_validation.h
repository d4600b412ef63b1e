#pragma once
// inputForm_validate: whether the saturated model screen may be calculated. It
// reads the rows and the inflow grid of the screen (not the DataSet), stops at
// the first rule that fails with one message box, brings the tab of the
// failing row forward and sends the focus there (the grid's row, in edit mode,
// for a term), and gives false. It overwrites the rows of the selected point
// with the Constants of their ranges and sets the counts numXTerms,
// numYTerms, numZTerms and numTTerms, and changes nothing else.

#include <string>

namespace bm {

class InputFormModel;
class UserInterface;
struct DataSet;

bool inputForm_validate(InputFormModel& form);

// For the batch calculator: a form model is filled from the DataSet
// (setDisplay), validated, and the rows that validation overwrote (the selected
// point) and the counts are kept in the DataSet. True when the model may be
// calculated; every failure has been reported through `ui`.
bool validateDataSet(DataSet& data, UserInterface& ui);

// Message titles.
inline constexpr const char* kNoInputTitle = "No input data";
inline constexpr const char* kImproperInputTitle = "Improper input data";
inline constexpr const char* kInvalidFormatTitle = "Invalid input format";

// The format texts of the messages, by dimension.
std::string rangeFormatTextF(int dimension);
std::string rangeFormatTextG(int dimension);

}  // namespace bm
