#pragma once
// The x and time axes of a one-dimensional grid (saturated and unsaturated
// columns alike): the counts, the lists and their counters in the DataSet.

#include "model/data_set.h"

namespace bm {

struct LineGridCounts {
    int nx = 1;
    int nt = 1;
};

// One x and one time in a simulation; otherwise the counts of the two ranges
// (half to even, 1 for an interval of 0). Only a bad x count is repaired, and
// only then is the time count looked at.
LineGridCounts lineGridCounts(double xMin, double xMax, double xInterval, double tMin, double tMax, double tInterval,
                              bool monteCarlo);

// Dimensions xValues and tValues, sets numXTerms and numTTerms, and fills the
// lists: the simulation's point (mcAtX, mcAtT), a list of one taking the range's
// Constant, a longer one (i - 1) * interval + minimum.
void layOutLineGrid(DataSet& data, const LineGridCounts& counts, double xMin, double xInterval, double tMin,
                    double tInterval, bool monteCarlo);

}  // namespace bm
