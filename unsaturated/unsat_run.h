#pragma once
// The unsaturated kind in the calculation pass: the rows of the unsaturated
// screen scanned for "Monte", the fill and the driver per iteration, the
// screen's checks before a run (validateUnsaturatedInputs of unsat_rows.h),
// and, in a simulation with a decaying source, the radicand test of every
// iteration before anything is computed.

#include <string>
#include <vector>

#include "montecarlo/pass/kind_calculation.h"

namespace bm {

// Rows 0 to 12 of the unsaturated screen as DataSet texts: percolation rate,
// dispersion, half-life, depth range, time range, superposition index, the
// simulation point's depth and time, bulk density, distribution coefficient,
// porosity, saturation, source decay rate.
std::vector<std::string> unsatInputRows(const DataSet& data);

// The simulation's test before its run: for a contaminant other than
// "Dirichlet", the record of each iteration 1 .. iterations - 1 goes through
// unsatRadicandNegative; true (the message shown) at the first refusal.
bool unsatSimulationRefused(const DataSet& data, int iterations, UserInterface& ui);

// The registration of the single-chemical unsaturated kind. A refused
// simulation ends before any computing: the results stay at zero.
KindCalculation unsaturatedCalculation();
void registerUnsaturatedKind();

}  // namespace bm
