#pragma once
// The points of a grid computed over the calculation threads (ordered_batches.h):
// Stop is looked at before every batch (before every point on one thread) and
// progress reported after it, not in a simulation.

#include "model/data_set.h"
#include "montecarlo/pass/ordered_batches.h"
#include "shell/base/user_interface.h"

namespace bm {

enum class StopFlag { Cleared, Kept };

// Points 0 .. count - 1: compute(point) gives each value (on copies of
// `compute`, one per thread), store(point, value) keeps it, in point order, on
// the calling thread. False when Stop ended the grid; stopRequested is then
// cleared or kept as `stop` says.
template <class Value, class Compute, class Store>
bool runGridPoints(DataSet& data, long long count, bool monteCarlo, ProgressOwner owner, UserInterface& ui,
                   Compute& compute, Store&& store, StopFlag stop = StopFlag::Cleared) {
    const double total = static_cast<double>(count);
    return forEachInOrderedBatches<Value>(
        count, compute, store,
        [&] {
            if (!data.stopRequested) return true;
            if (stop == StopFlag::Cleared) data.stopRequested = false;
            return false;
        },
        [&](long long done) {
            if (!monteCarlo) ui.reportProgress(owner, total, static_cast<double>(done));
        },
        [&](long long point) { return compute(point); });
}

}  // namespace bm
