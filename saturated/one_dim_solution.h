#pragma once
// The one-dimensional driver: lays out the x and t lists, asks kern1d for the
// eigenvalues of a finite aquifer, runs the grid (time outer, x inner) with the
// kernel of the aquifer and inlet, superposes the later inflow terms, and
// computes the selected point. Serves a regular run (whole grid) and each
// Monte Carlo iteration (one point at mcAtX, mcAtT).

#include "model/arrays.h"
#include "saturated/one_dim_parameters.h"
#include "shell/base/user_interface.h"

namespace bm {

struct DataSet;

// Per-point progress goes to the saturated family's screen of the chemical
// flag (progressOwnerOf in model/model_kinds.h).
// Fills xValues, tValues, result1D, numXTerms, numTTerms and currentConcentration,
// and, unless calculationMode holds "Monte Carlo", writes the selected point's
// value into calculationMode as number text. Returns the last grid value, or 0
// when Stop ended the grid (stopRequested is then cleared) or root1 failed
// (the grid is then left at zero). Arithmetic faults are run-time errors.
double solveOneDimensional(DataSet& data, OneDimParameters& parameters, bool monteCarlo, UserInterface& ui = bm::ui());

}  // namespace bm
