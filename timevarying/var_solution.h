#pragma once
// The time-varying solutions: the driver of a regular run or a simulation, and
// the six solution routines that walk the grid of times (outer), x and y
// (inner; none for a line source) with the kernvar source of the model.
//
// Lists: varTValues, varXValues, varYValues from 1; resultVar flat, value of
// time k, x i, y j at (k - 1) * nx * ny + (i - 1) * ny + j; mcResultVar 0..n - 1.

#include "kernels/kernvar.h"
#include "model/data_set.h"
#include "shell/user_interface.h"

namespace bm {

// The record the runs fill; it lives for the whole session, so a code the
// record already has stays when its text is not recognised.
kernvarRecord& theVarRecord();

// The driver: the mode scan, the record in its regular form for the counts, the
// lists, then n - 1 solutions (n = monteIterations in a simulation, else 2),
// each stored in mcResultVar. Stop (stopRequested) is tested before each
// iteration and each evaluation; it is cleared, and the lists stay as far as
// they were filled. Returns the last solution's value (0 when none finished).
// Run-time errors propagate to the caller's handler.
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
