#pragma once
// The inputs a fit can vary, kind by kind: each named as the data file labels
// it ("Velocity", "Dispersion_X"), bound to its text in the DataSet. Only the
// inputs of the model in hand are offered (a Gaussian source has a standard
// deviation, a patch a width and a height).

#include <string>
#include <string_view>
#include <vector>

#include "model/data_set.h"

namespace bm {

struct FitParameterInfo {
    std::string name;                // the data file's label
    std::string alias;               // a shorter name also accepted ("Retardation"); may be empty
    std::string DataSet::*field = nullptr;  // the input text; nullptr: the first inflow term's concentration
    bool positive = true;            // the physics needs it above zero (a lower bound of 0 is implied)
};

// The inputs of the model's kind that a fit can vary, in the screen's order;
// empty for a multiple-chemical model or an unknown kind.
std::vector<FitParameterInfo> fitParametersOf(const DataSet& data);

// The parameter a user's name means (the label or its alias, case, blanks,
// underscores and brackets ignored); nullptr when the model has none.
const FitParameterInfo* findFitParameter(const std::vector<FitParameterInfo>& parameters, std::string_view name);

// The parameter's text in the DataSet (the first inflow term's concentration
// for the source concentration; it is created when the model has no term).
std::string& fitParameterText(DataSet& data, const FitParameterInfo& parameter);
const std::string& fitParameterText(const DataSet& data, const FitParameterInfo& parameter);

// A number with `digits` significant digits ("%g": "0.5", "1.25e-07").
std::string significantText(double value, int digits);

// A fitted value as the rows hold it: seven significant digits.
std::string fittedValueText(double value);

}  // namespace bm
