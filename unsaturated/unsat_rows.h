#pragma once
// The inputs of the unsaturated model as its screens lay them out, without the
// screens: the rows of Text1 with their captions, unit labels, texts and
// whether they are in use, and the checks before a run, in their order. The
// single-chemical screen (unsatForm) adds the inflow terms' grid; the
// multi-chemical one (MCUnsatForm) has the number of chemicals in place of the
// half-life and the superposition index, and its chemicals' tables. The batch
// calculator builds the rows from the DataSet to put them through the same checks.

#include <functional>
#include <string>
#include <vector>

#include "model/data_set.h"
#include "model/term_grid.h"
#include "shell/base/user_interface.h"

namespace bm {

namespace unsatrow {
inline constexpr int Percolation = 0, Dispersion = 1, HalfLife = 2, X = 3, Time = 4, Superposition = 5, PointX = 6,
                     PointT = 7, BulkDensity = 8, Distribution = 9, Porosity = 10, Saturation = 11, SourceDecay = 12,
                     Chemicals = 14;
inline constexpr int Count = 15;  // row 13 is not used
}  // namespace unsatrow

inline constexpr const char* kUnsatXRangeCaption = " Depth Range (z)";
inline constexpr const char* kUnsatTimeRangeCaption = " Time Range (t)";
inline constexpr const char* kUnsatSuperpositionCaption = " Superposition Index";
inline constexpr const char* kUnsatPointXCaption = " Computation Depth z";
inline constexpr const char* kUnsatPointTCaption = " Computation Time t";
inline constexpr const char* kSourceDecayCaption = " Source Concentration Decay Rate";
inline constexpr const char* kUnsatChemicalCountCaption = " Number of Chemicals";

// The superposition row of a decaying source, which takes no later terms.
inline constexpr const char* kSuperpositionReadOnlyText =
    "Superposition Index values for Dirichlet/Exponential Condition\r\ris read only.";

struct UnsatRow {
    std::string caption;      // Text1Panel
    std::string unitCaption;  // Text1Units; empty when the row has no unit
    std::string text;         // Text1
    bool inUse = true;        // shown and checked; a row not in use is hidden
    bool readOnly = false;    // shown, never typed into (the superposition index of a decaying source)
};

// Whether a contaminant word is a source at a constant concentration.
bool unsatConstantSource(const std::string& contaminantType);

// The rows of the model in the DataSet for the screen of one chemical or of
// several: captions, units in the words at hand, the fields' texts. The source
// decay rate is in use only for a source other than "Dirichlet", and the
// superposition index of such a source is read only.
std::vector<UnsatRow> unsatRowsOf(const DataSet& data, bool multiChemical, const std::string& lengthWord,
                                  const std::string& timeWord);
// The texts of the rows in use back into their fields (the superposition
// index and the number of chemicals as whole numbers, at least 1).
void storeUnsatRows(const std::vector<UnsatRow>& rows, DataSet& data);

// What the checks look at beyond the rows.
struct UnsatChecks {
    std::string contaminantType;
    bool multiChemical = false;
    // unsatForm: the inflow terms.
    const TermGrid* terms = nullptr;
    // MCUnsatForm: the chemicals' two tables, checked where the terms are on
    // the single-chemical screen (with the time range of the rows), and the
    // decay rates the square root's test goes through.
    std::function<bool(UserInterface&)> tablesAccepted;
    std::vector<std::string> decayRates;
};

// Where a check failed: a row, or a cell of the terms' grid.
struct UnsatFailure {
    int row = -1;
    bool grid = false;
    int gridRow = -1;
    int gridColumn = 0;
};

// The checks before a run, in their order; false at the first that fails,
// after its critical message, with `failure` set to the input.
bool validateUnsatRows(const std::vector<UnsatRow>& rows, const UnsatChecks& checks, UserInterface& ui,
                       UnsatFailure& failure);

// The single-chemical checks on the DataSet, for the batch calculator.
bool validateUnsaturatedInputs(DataSet& data, UserInterface& ui);
// The multi-chemical checks on the DataSet, with the chemicals' tables' checks.
bool validateMultiUnsaturatedInputs(DataSet& data, const std::function<bool(UserInterface&)>& tablesAccepted,
                                    UserInterface& ui);

}  // namespace bm
