#pragma once
// The inputs of the time-varying model as its screen lays them out, without the
// screen: the rows of Text2 with their captions, unit labels, texts and
// enabled state, by source kind and dispersion function, and the checks before
// a run. The screen (merlaform) keeps one list of them; the batch calculator
// builds one from the DataSet to put it through the same checks.

#include <string>
#include <string_view>
#include <vector>

#include "model/data_set.h"
#include "shell/base/user_interface.h"

namespace bm {

// The rows by index.
namespace varrow {
inline constexpr int X = 0, Time = 1, VelocityX = 2, Y = 3, VelocityY = 4, MolecularDiffusion = 5, Retardation = 6,
                     DispersionRatio = 7, MaximumDiffusion = 8, Decay = 9, MeanTravelTime = 10, Mass = 11, PointX = 12,
                     PointY = 13, PointT = 14, Concentration = 15, Porosity = 16;
inline constexpr int Count = 17;
}  // namespace varrow

// What a y row shows for a line source, which has no y.
inline constexpr const char* kNotUsed = "Not Used";

struct VarRow {
    std::string caption;      // Text2Panel
    std::string unitCaption;  // Text2Units; empty when the row has no unit
    std::string text;         // Text2
    bool enabled = true;      // a disabled row is not in use: no check looks at it
    bool result = false;      // the concentration at the selected point, shown, never typed
};

// The mass row's caption and unit for a source text (a point source's words
// for a text the model does not know), in the words of the units at hand.
std::string massCaption(std::string_view contaminantType);
std::string massUnit(std::string_view contaminantType, std::string_view lengthWord, std::string_view timeWord);
// The result row's unit: mass per volume at a point source, per area at a line.
std::string concentrationUnit(std::string_view contaminantType, std::string_view lengthWord);

// The rows of the model in the DataSet: captions and units by source, the
// fields' texts; a line source's y rows read "Not Used" and its v row is
// disabled, the k row is disabled under the "Constant" function. A point
// source whose y rows still read "Not Used" shows them empty.
std::vector<VarRow> varRowsOf(const DataSet& data, std::string_view lengthWord, std::string_view timeWord);
// The rows' texts back into their fields.
void storeVarRows(const std::vector<VarRow>& rows, DataSet& data);

// A label whose unit is compound ("mg/m/day"): only what stands behind the
// mass word "mg" is relabelled, its first occurrence of the old word replaced,
// so that the "m" of "mg" is never taken for the metre.
std::string relabelCompoundUnit(std::string_view oldWord, std::string_view newWord, std::string_view label);

// The checks before a run, in their order, on the rows as shown; false at the
// first that fails, after its warning, with failedRow set to its row.
bool validateVarRows(const std::vector<VarRow>& rows, UserInterface& ui, int& failedRow);
// The same on the rows of the DataSet, for the batch calculator.
bool validateTimeVaryingInputs(DataSet& data, UserInterface& ui);

inline constexpr const char* kVarNoInputTitle = "No input data";
inline constexpr const char* kVarFormatTitle = "Invalid input format";
inline constexpr const char* kVarImproperTitle = "Improper input data";

}  // namespace bm
