#pragma once
// Filling the record that kern2d reads from the DataSet's texts, for one run or
// one Monte Carlo iteration.

#include "kernels/kern2d.h"

namespace bm {

struct DataSet;

// Rebuilds the record from scratch: the ranges of x, y and t, the source and
// field values, the effective velocity (velocity / porosity / retardation, the
// velocity divided by porosity first, the dispersions next, then the velocity
// by retardation) and half-life (halfLife * retardation), and the aquifer and
// contaminant texts blank-padded. In a simulation (monteCarlo true) each of
// sourceYc, sourceXc, sourceWidth, halfLife, velocity, injectionRate, porosity,
// dispersionX, dispersionY, netRecharge, aquiferThickness, sourceStdDev and
// retardation that holds a MonteMarker takes the sample of its row for
// `iteration`. A zero porosity or retardation is division by zero (error 11).
void fillTwoDimParameters(const DataSet& data, TwoDimParameters& parameters, bool monteCarlo, int iteration);

}  // namespace bm
