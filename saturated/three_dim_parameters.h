#pragma once
// Filling the record that kern3d reads from the DataSet's texts, for one run or
// one Monte Carlo iteration.

#include "kernels/kern3d.h"

namespace bm {

struct DataSet;

// Rebuilds the record from scratch: the ranges of x, y, z and t (a single
// number is the column from 0 to it), the source and field values, the
// effective velocity (velocity / porosity, then the dispersions / retardation,
// then the velocity / retardation) and half-life (halfLife * retardation), and
// the aquifer and contaminant texts blank-padded. In a simulation (monteCarlo
// true) each of sourceYc, sourceXc, sourceZc, sourceWidth, sourceHeight,
// halfLife, velocity, injectionRate, porosity, dispersionX, dispersionY,
// dispersionZ, netRecharge, aquiferThickness and retardation that holds a
// MonteMarker takes the sample of its row for `iteration`. A zero porosity or
// retardation is division by zero (error 11; 6 for 0 / 0).
void fillThreeDimParameters(const DataSet& data, ThreeDimParameters& parameters, bool monteCarlo, int iteration);

}  // namespace bm
