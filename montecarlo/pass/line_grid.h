#pragma once
// The x and time axes of a one-dimensional grid (saturated and unsaturated
// columns alike): the counts, the lists and their counters in the DataSet.

#include <optional>
#include <utility>
#include <vector>

#include "model/data_set.h"
#include "model/number_text.h"
#include "montecarlo/pass/grid_points.h"
#include "shell/base/user_interface.h"

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

// C/Co over the grid laid out in `result`, time by time and x by x, with
// `point(x, t)` giving each value (on a copy of its own on each calculation
// thread, see grid_points.h). Stop is looked at before every batch of points
// and progress reported after it (not in a simulation). Then the selected
// point (xConstant, tConstant) is computed on its own when the grid has more
// than one point, and a regular run shows it as the mode text. Returns the
// last grid value, or 0 when stopped.
template <class Point>
double runLineGrid(DataSet& data, Array<double, 2>& result, bool monteCarlo, ProgressOwner owner, UserInterface& ui,
                   Point&& point) {
    const int nx = data.numXTerms;
    const int nt = data.numTTerms;
    auto compute = [&xs = std::as_const(data.xValues), &ts = std::as_const(data.tValues), point,
                    nx](long long at) mutable {
        return point(xs(static_cast<int>(at % nx) + 1), ts(static_cast<int>(at / nx) + 1));
    };
    double c = 0.0;
    const bool finished = runGridPoints<double>(
        data, static_cast<long long>(nx) * nt, monteCarlo, owner, ui, compute, [&](long long at, double value) {
            result(static_cast<int>(at % nx) + 1, static_cast<int>(at / nx) + 1) = value;
            c = value;
        });
    if (!finished) return 0.0;
    const double last = c;

    if (nx != 1 || nt != 1) {
        const double savedX = data.xValues(1);
        const double savedT = data.tValues(1);
        data.xValues(1) = data.xConstant;
        data.tValues(1) = data.tConstant;
        data.currentConcentration = point(data.xValues(1), data.tValues(1));
        data.xValues(1) = savedX;
        data.tValues(1) = savedT;
    } else {
        data.currentConcentration = result(1, 1);
    }

    if (!contains(data.calculationMode, "Monte Carlo")) data.calculationMode = formatNumber(data.currentConcentration);
    return last;
}

// The start times and concentrations of the inflow terms, each read from its
// text (a concentration through the MonteMarker of a simulation) when first
// needed and then kept for the driver call: reading the texts again at every
// point would cost more than the solution itself.
class InflowTermValues {
public:
    InflowTermValues(const DataSet& data, bool monteCarlo, int iteration)
        : data_(data), monteCarlo_(monteCarlo), iteration_(iteration) {}
    double time(int k) const;
    double concentration(int k) const;

private:
    const DataSet& data_;
    bool monteCarlo_;
    int iteration_;
    mutable std::vector<std::optional<double>> times_, concentrations_;
};

}  // namespace bm
