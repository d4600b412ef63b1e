#pragma once
// The one-dimensional driver: lays out the x and t lists, asks kern1d for the
// eigenvalues of a finite aquifer, runs the grid (time outer, x inner) with the
// kernel of the aquifer and inlet, superposes the later inflow terms, and
// computes the selected point. Serves a regular run (whole grid) and each
// Monte Carlo iteration (one point at mcAtX, mcAtT).

#include "model/arrays.h"
#include "saturated/one_dim_parameters.h"
#include "shell/user_interface.h"

namespace bm {

struct DataSet;

// Where a solver's per-point progress goes: the multi-chemical screen when the
// model has several chemicals, otherwise the saturated model screen.
ProgressOwner progressOwnerOf(const DataSet& data);

// Clamp of a single kernel value: a ratio below 0 or above 1 is thrown away (0).
double clampRatio(double ratio);

// Fills xValues, tValues, result1D, numXTerms, numTTerms and currentConcentration,
// and, unless calculationMode holds "Monte Carlo", writes the selected point's
// value into calculationMode as number text. Returns the last grid value, or 0
// when Stop ended the grid (stopRequested is then cleared) or root1 failed
// (the grid is then left at zero). Arithmetic faults are run-time errors.
double solveOneDimensional(DataSet& data, OneDimParameters& parameters, bool monteCarlo, UserInterface& ui = bm::ui());

}  // namespace bm
