#pragma once
// The saturated single-chemical kinds (one, two and three dimensions) in the
// calculation pass: their input rows, the fill and driver of each iteration,
// the screen's validation for the batch calculator, the result grid and the
// output files.

#include <string>
#include <vector>

#include "montecarlo/pass/kind_calculation.h"

namespace bm {

// The input rows of the saturated screen as DataSet texts, without the
// concentration caption row: one dimension rows 0..10 without 9, two
// dimensions 0..18 without 17, three dimensions 0..22 without 21.
std::vector<std::string> oneDimInputRows(const DataSet& data);
std::vector<std::string> twoDimInputRows(const DataSet& data);
std::vector<std::string> threeDimInputRows(const DataSet& data);

// The registration of a dimension (1, 2 or 3).
KindCalculation saturatedCalculation(int dimension);
// Registers the three.
void registerSaturatedKinds();

}  // namespace bm
