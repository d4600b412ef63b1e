#pragma once
// Collects the values of a regular result as a reader meets them, keeping
// only what can be shown: a sub-grid of every time for the overview, and one
// x-y plane (a time and a z plane) in full for a close look. It also keeps
// what choosing a view needs from all values: the range of the values and the
// largest value of every plane of every time.
//
// Values arrive with their grid indexes, over x before y before z within a
// time; an index the counts did not announce grows the grid (such a file is
// kept whole, within a limit).

#include <cstddef>
#include <memory>
#include <vector>

#include "apps/trazel/plot_file.h"
#include "apps/trazel/sub_grid.h"

namespace bm::trazel {

struct Counts {
    std::size_t x = 0, y = 0, z = 0, t = 0;  // 0: not announced
};

class GridCollector {
public:
    // `overview` false collects only the close-look plane (a second read for another plane).
    GridCollector(const ReadLimits& limits, Counts counts, bool overview, int focusTime, int focusPlane);

    void put(std::size_t it, std::size_t ix, std::size_t iy, std::size_t iz, double value);

    // The values seen.
    std::size_t received() const { return received_; }
    bool everyNodeKept() const { return kept_.everyNode(); }
    const KeptGrid& kept() const { return kept_; }

    // The overview on the axes as read (the nodes of a file that ended early are
    // missing values, NaN); the peaks, the range and the close-look plane.
    void finish(const Axes& axes, PlotFile& file);
    std::shared_ptr<Slice> takeFocus(const Axes& axes);

private:
    std::vector<double>& timeValues(std::size_t it);

    ReadLimits limits_;
    Counts counts_;
    bool overview_;
    KeptGrid kept_;
    KeptGrid focusKept_;
    int focusTime_, focusPlane_;
    std::vector<std::vector<double>> times_;  // overview values of each time
    std::vector<double> focus_;
    std::vector<double> peaks_;  // it * nz + iz
    std::size_t planes_ = 1;
    double lowest_ = 0, highest_ = 0;
    bool any_ = false;
    std::size_t received_ = 0;
    std::size_t stored_ = 0;
};

}  // namespace bm::trazel
