#pragma once
// The three-dimensional driver, built like the two-dimensional one around
// kern3d: picks the function of the aquifer and source once per run, reads the
// Gauss-Legendre points only for the patch of an infinite aquifer, lays out the
// x, y, z and t lists, runs the grid (time outer, then z, then x, then y),
// superposes the later inflow terms, and computes the selected point. Serves a
// regular run (whole grid) and each Monte Carlo iteration (one point at mcAtX,
// mcAtY, mcAtZ, mcAtT).

#include <cstdint>

#include "kernels/kern3d.h"
#include "model/arrays.h"
#include "shell/base/user_interface.h"

namespace bm {

struct DataSet;

// Source codes of the three-dimensional library.
inline constexpr std::int16_t kFiniteAquiferSource3D = 2200;    // cnrml_3FL
inline constexpr std::int16_t kContinuousPointSource3D = 3100;  // cnrml_3IC
inline constexpr std::int16_t kPatchSource3D = 3200;            // cnrml_3IL

// The case chosen in the first iteration of a run and the points of the
// 256-point rule, kept from one iteration to the next and to the next run,
// which chooses anew.
struct ThreeDimSourceTable {
    std::int16_t sourceCode = 0;
    List<double> quadratureNodes;    // 1..256
    List<double> quadratureWeights;  // 1..256
};
ThreeDimSourceTable& threeDimSourceTable();

// The case of the record's texts. The leading blanks of aquiferCode are
// stripped; an aquifer starting "finite" (case ignored) gives 2200 whatever the
// source. Otherwise the leading blanks of contaminantCode are stripped too and
// a source starting "finite" gives the patch, 3200, anything else the point,
// 3100 (only six characters are compared, so "Finite / Patch" needs no "/ "
// removal). Stripped texts are stored back blank-padded. The points file is
// read (from the application state's gaussPointsFile) for 3200 only; a missing
// or short file is a run-time error (53 or 62).
void chooseThreeDimSource(ThreeDimParameters& parameters, ThreeDimSourceTable& table);

// Fills xValues, yValues, zValues, tValues, result3D, the four counts and
// currentConcentration, and, unless calculationMode holds "Monte Carlo", writes
// the selected point's value into calculationMode as number text. The case is
// chosen when `iteration` is 1 (or 0, or before any case was chosen). The point
// source's coordinates are shifted to its centre, where the library is called
// too (its value there is above 1 and so 0 after the clamp). Returns the last
// value computed, or 0 when Stop ended the grid (stopRequested is then cleared
// and the rest of the grid, currentConcentration and calculationMode are left
// as they are). Arithmetic faults are run-time errors.
double solveThreeDimensional(DataSet& data, ThreeDimParameters& parameters, bool monteCarlo, int iteration,
                             UserInterface& ui = bm::ui());

}  // namespace bm
