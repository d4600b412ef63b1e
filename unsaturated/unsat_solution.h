#pragma once
// The unsaturated-zone driver: one-dimensional downward transport with
// linear sorption and first-order degradation of the dissolved phase,
//
//   R dC/dt = Dv d2C/dz2 - V dC/dz - lambda C,   C(z, 0) = 0,
//   R = 1 + Kdv rho / (Sw theta),  V = q / (Sw theta),  lambda = ln 2 / halfLife,
//
// with the inlet held at Co ("Dirichlet", later terms superposed) or at
// Co exp(-gamma t) ("Dirichlet/Exp. Decay"). Lays out the depth and time lists
// as the one-dimensional driver does, fills resultUnsat (time outer, depth
// inner) and computes the selected point.

#include "unsaturated/unsat_parameters.h"
#include "shell/base/user_interface.h"

namespace bm {

struct DataSet;

// Per-point progress goes to the unsaturated family's screen of the chemical
// flag (progressOwnerOf in model/model_kinds.h).

// Fills xValues, tValues, resultUnsat, numXTerms, numTTerms and
// currentConcentration; unless calculationMode holds "Monte Carlo" the
// selected point's value replaces it as number text. Divides
// parameters.dispersion by R in place. Returns the last grid value, or 0 when
// Stop ended the grid (stopRequested is then cleared). C is not clamped at 0.
// Faults of the formulas are run-time errors (11, 6, 5).
double solveUnsaturated(DataSet& data, UnsatParameters& parameters, bool monteCarlo, UserInterface& ui = bm::ui());

}  // namespace bm
