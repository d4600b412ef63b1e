#pragma once
// The calculation pass of the three-dimensional model: its input rows, the
// filling of its record and its driver, its result list and its model kind.

#include "saturated/calculation_run.h"

namespace bm {

// "Three Dimensional": threeDimInputRows, fillThreeDimParameters +
// solveThreeDimensional, mcResult3D, ModelKind::ThreeDimensional.
CalculationPass threeDimensionalPass();

}  // namespace bm
