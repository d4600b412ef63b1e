#pragma once
// The later iterations of a simulation spread over the calculation threads
// (ordered_batches.h), for the calculation pass.

#include "model/data_set.h"
#include "model/model_kinds.h"
#include "montecarlo/pass/kind_calculation.h"
#include "shell/base/user_interface.h"

namespace bm {

struct PassResult;

// Whether iterations 2 .. n - 1 of a simulation go to the calculation threads
// (more than one thread, and more than one such iteration).
bool spreadsIterations(int n);

// Iterations 2 .. n - 1 (the first ran on `data`): each on a thread's own copy
// of the DataSet as the first left it, its value stored in `results` in
// iteration order; Stop looked at and progress reported between batches. An
// iteration that fails on a thread, or would reach the user, runs again on
// `data` after the one before it, so that its error or message comes in its
// turn as on one thread. At the end `data` holds what the last stored
// iteration left in it. False when Stop ended the pass (stopRequested cleared).
bool spreadLaterIterations(DataSet& data, const KindCalculation& kind, int n, IterationResults& results,
                           PassResult& pass, ProgressOwner owner, UserInterface& ui);

}  // namespace bm
