#pragma once
// What the model takes back from the simulation screen: for each variant of
// the model that has a generated row in its tables, the statistic selected
// (written as a number in the common format), the mean ("Nothing"), or all
// samples ("Variants": the MonteMarker of its place, which makes the field
// vary per iteration).

#include <vector>

#include "model/data_set.h"
#include "montecarlo/monte_variants.h"

namespace bm {

struct SelectionOutcome {
    bool fieldVaries = false;   // a field of the form took a marker
    bool inflowVaries = false;  // the inflow concentration took one (monteCarloModeOn)
    bool chemicalVaries = false;
};

// The field's text for a selection of a row of the tables: a statistic of the
// result row or the input row's mean in the common number format, or the
// marker of `place` for "Variants"/"Variant". Empty for a selection that says
// nothing the model knows.
std::string selectedText(const DataSet& data, const MonteInputRow& input, const MonteResultRow& result, int row,
                         MarkerPlace place);

// Applies the model's block (its tables) to the variants' fields. Every marker
// in those fields first goes back to the constant it stands for, so a variant
// no longer selected stops varying; then each row in use of the result table
// whose variant matches a variant's name (trimmed, case ignored) writes its
// selection into the field. monteCarloModeOn follows the inflow concentration.
SelectionOutcome applySelections(DataSet& data, const MonteBlock& block, const std::vector<MonteVariant>& variants);

}  // namespace bm
