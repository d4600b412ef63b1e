#pragma once
// The calculation pass of the two-dimensional model: its input rows, the
// filling of its record and its driver, its result list and its model kind.

#include "saturated/calculation_run.h"

namespace bm {

// "Two Dimensional": twoDimInputRows, fillTwoDimParameters + solveTwoDimensional,
// mcResult2D, ModelKind::TwoDimensional.
CalculationPass twoDimensionalPass();

}  // namespace bm
