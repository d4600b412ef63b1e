#pragma once
// The two-dimensional driver: picks the kern2d function of the aquifer and
// source once per run, reads the Gauss-Legendre points the infinite-aquifer
// functions need, lays out the x, y and t lists, runs the grid (time outer,
// then x, then y), superposes the later inflow terms, and computes the selected
// point. Serves a regular run (whole grid) and each Monte Carlo iteration (one
// point at mcAtX, mcAtY, mcAtT).

#include <cstdint>

#include "kernels/kern2d.h"
#include "model/arrays.h"
#include "saturated/spatial_grid.h"
#include "shell/base/user_interface.h"

namespace bm {

struct DataSet;

// Source codes of the two-dimensional library.
inline constexpr std::int16_t kFiniteAquiferSource2D = 1020;   // cnrml_FL
inline constexpr std::int16_t kContinuousPointSource2D = 2010; // cnrml_IC
inline constexpr std::int16_t kFiniteLineSource2D = 2020;      // cnrml_IL
inline constexpr std::int16_t kGaussianSource2D = 2030;        // cnrml_IG

// The case chosen in the first iteration of a run and the points of the
// 256-point rule, kept from one iteration to the next and to the next run,
// which chooses anew.
struct TwoDimSourceTable {
    std::int16_t sourceCode = 0;
    List<double> quadratureNodes;    // 1..256
    List<double> quadratureWeights;  // 1..256
};
TwoDimSourceTable& twoDimSourceTable();

// The case of the record's texts. Every "/ " is removed from contaminantCode
// and its leading blanks stripped ("Finite / Line" reads "Finite Line"), the
// leading blanks of aquiferCode too, and both are stored back blank-padded.
// An aquifer starting "finite" gives 1020 whatever the source; otherwise 2030
// for a source starting "gaussian", 2020 for one starting "finite line", 2010
// for anything else (case ignored). The points file is read (from the
// application state's gaussPointsFile) for every code but 1020; a missing or
// short file is a run-time error (53 or 62).
void chooseTwoDimSource(TwoDimParameters& parameters, TwoDimSourceTable& table);

// Fills xValues, yValues, tValues, result2D, numXTerms, numYTerms, numTTerms
// and currentConcentration, and, unless calculationMode holds "Monte Carlo",
// writes the selected point's value into calculationMode as number text. The
// case is chosen when `iteration` is 1 (or 0, or before any case was chosen);
// later iterations of a simulation use the one chosen. Returns the last value
// computed, or 0 when Stop ended the grid (stopRequested is then cleared and
// the rest of the grid, currentConcentration and calculationMode are left as
// they are). Arithmetic faults are run-time errors.
double solveTwoDimensional(DataSet& data, TwoDimParameters& parameters, bool monteCarlo, int iteration,
                           UserInterface& ui = bm::ui());

}  // namespace bm
