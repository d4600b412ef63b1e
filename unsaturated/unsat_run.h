#pragma once
// The unsaturated model's pass of the calculation run: the rows of the
// unsaturated screen scanned for "Monte", the fill and the driver per
// iteration, mcResultUnsat, and, in a simulation with a decaying source, the
// radicand test of every iteration before anything is computed.

#include <string>
#include <vector>

#include "saturated/calculation_run.h"

namespace bm {

// The model type word the pass answers to.
inline constexpr const char* kUnsaturatedModelType = "Unsaturated One Dimensional";

// Rows 0 to 12 of the unsaturated screen as DataSet texts: percolation rate,
// dispersion, half-life, depth range, time range, superposition index, the
// simulation point's depth and time, bulk density, distribution coefficient,
// porosity, saturation, source decay rate.
std::vector<std::string> unsatInputRows(const DataSet& data);

// The simulation's test before its run: for a contaminant other than
// "Dirichlet", the record of each iteration 1 .. iterations - 1 goes through
// unsatRadicandNegative; true (the message shown) at the first refusal.
bool unsatSimulationRefused(const DataSet& data, int iterations, UserInterface& ui);

// The pass (single chemical, ModelKind::Unsaturated). A refused simulation
// ends at its first iteration, before any computing, as a Stop does: the
// results stay at zero.
CalculationPass unsaturatedPass();

// Registers the pass for "Unsaturated One Dimensional" and the short word
// "Unsaturated" that comparison code accepts as well. Registering twice is
// harmless. The pass also registers itself when this part of the library is
// linked in.
void registerUnsaturatedPass();

}  // namespace bm
