#pragma once
// The time-varying solutions: the driver of a regular run or a simulation, and
// the six solution routines that walk the grid of times (outer), x and y
// (inner; none for a line source) with the kernvar source of the model.
//
// Lists: varTValues, varXValues, varYValues from 1; resultVar flat, value of
// time k, x i, y j at (k - 1) * nx * ny + (i - 1) * ny + j; mcResultVar 0..n - 1.

#include <optional>

#include "kernels/kernvar.h"
#include "montecarlo/pass/kind_calculation.h"
#include "model/data_set.h"
#include "shell/base/user_interface.h"

namespace bm {

// The record the runs fill; it lives for the whole session, so a code the
// record already has stays when its text is not recognised.
kernvarRecord& theVarRecord();

// The time-varying kind in the calculation pass: the screen's rows scanned
// for "Monte", the grid laid out once from the record in its regular form
// (the counts, the lists, the flat result list), and each iteration's record
// (its samples in a simulation) solved by the source's routine. Stop inside a
// grid ends the pass without storing that iteration's value.
void layOutTimeVaryingGrid(DataSet& data, bool simulate, UserInterface& ui);
std::optional<double> timeVaryingIteration(DataSet& data, bool simulate, int iteration, UserInterface& ui);
KindCalculation timeVaryingCalculation();
void registerTimeVaryingKind();

// The pass of the time-varying kind: n - 1 solutions (n = the kind's
// monteIterations in a simulation, else 2), each stored in mcResultVar. Stop
// (stopRequested) is tested before each iteration and each evaluation; it is
// cleared, and the lists stay as far as they were filled. Returns the last
// solution's value (0 when none finished). Run-time errors propagate.
float solveTimeVarying(DataSet& data, UserInterface& ui);

// The six solutions. Each computes its factor, places the first list elements
// (the simulation's point, or a range's Constant where its count is 1), walks
// the grid with alpha_t once per time, reporting progress after each point in a
// regular run, then evaluates the selected point (xConstant, yConstant,
// tConstant) alone into currentConcentration and varResultText, restoring the
// list elements. Returns that value; 0 when Stop cut the grid short (the flag
// is left set for the driver).
float pointInstantaneousSolution(DataSet& data, const kernvarRecord& record, bool monteCarlo, UserInterface& ui);
float pointContinuousSolution(DataSet& data, const kernvarRecord& record, bool monteCarlo, UserInterface& ui);
float pointInitialSolution(DataSet& data, const kernvarRecord& record, bool monteCarlo, UserInterface& ui);
float lineInstantaneousSolution(DataSet& data, const kernvarRecord& record, bool monteCarlo, UserInterface& ui);
float lineContinuousSolution(DataSet& data, const kernvarRecord& record, bool monteCarlo, UserInterface& ui);
float lineInitialSolution(DataSet& data, const kernvarRecord& record, bool monteCarlo, UserInterface& ui);

// The number of steps of the continuous sources' time integral, and 4 pi as the program holds it.
inline constexpr std::int16_t kVarTimeSteps = 100;
inline constexpr float kFourPi = 12.566372f;

}  // namespace bm
