#pragma once
// The points of a grid computed over the calculation threads (ordered_batches.h):
// Stop is looked at before every batch (before every point on one thread) and
// progress reported after it, not in a simulation.

#include <array>
#include <cstddef>

#include "model/data_set.h"
#include "montecarlo/pass/ordered_batches.h"
#include "shell/base/user_interface.h"

namespace bm {

enum class StopFlag { Cleared, Kept };

// The indices (from 1) of a grid's points by number, the first index running
// fastest: counted on from the last point asked for when the next one is
// asked for (the order in which a grid is computed and stored), worked out by
// division otherwise.
template <std::size_t N>
class GridCursor {
public:
    explicit GridCursor(const std::array<int, N>& counts) : counts_(counts) {}
    const std::array<int, N>& operator()(long long point) {
        if (point == last_ + 1 && last_ >= 0) {
            for (std::size_t d = 0; d < N; ++d) {
                if (++indices_[d] <= counts_[d] || d + 1 == N) break;
                indices_[d] = 1;
            }
        } else {
            long long rest = point;
            for (std::size_t d = 0; d < N; ++d) {
                indices_[d] = static_cast<int>(rest % counts_[d]) + 1;
                rest /= counts_[d];
            }
        }
        last_ = point;
        return indices_;
    }

private:
    std::array<int, N> counts_;
    std::array<int, N> indices_{};
    long long last_ = -1;
};

// Points 0 .. count - 1: compute(point) gives each value (on copies of
// `compute`, one per thread), store(point, value) keeps it, in point order, on
// the calling thread. False when Stop ended the grid; stopRequested is then
// cleared or kept as `stop` says. The points of one `line` (the grid's inner
// loop, whose points share what a kernel keeps) stay on one thread.
template <class Value, class Compute, class Store>
bool runGridPoints(DataSet& data, long long count, bool monteCarlo, ProgressOwner owner, UserInterface& ui,
                   Compute& compute, Store&& store, StopFlag stop = StopFlag::Cleared, long long line = 1) {
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
        [&](long long point) { return compute(point); }, line);
}

}  // namespace bm
