#include "apps/trazel/grid_collector.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace bm::trazel {

namespace {

constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();

std::vector<double> keptCoordinates(const std::vector<double>& axis, const KeptAxis& kept) {
    std::vector<double> out;
    for (std::size_t i : kept.indexes(axis.size())) out.push_back(axis[i]);
    return out;
}

// The stored block of kept positions (planned sizes) laid onto the kept nodes
// of the axes as read.
std::vector<double> laidOut(const std::vector<double>& stored, std::size_t nx, std::size_t ny, std::size_t nz,
                            std::size_t storedY, std::size_t storedZ) {
    std::vector<double> out(nx * ny * nz, kMissing);
    for (std::size_t a = 0; a < nx; ++a)
        for (std::size_t b = 0; b < ny && b < storedY; ++b)
            for (std::size_t c = 0; c < nz && c < storedZ; ++c) {
                const std::size_t from = (a * storedY + b) * storedZ + c;
                if (from < stored.size()) out[(a * ny + b) * nz + c] = stored[from];
            }
    return out;
}

}  // namespace

GridCollector::GridCollector(const ReadLimits& limits, Counts counts, bool overview, int focusTime, int focusPlane)
    : limits_(limits), counts_(counts), overview_(overview), focusTime_(focusTime), focusPlane_(focusPlane) {
    const bool profile = counts.y <= 1 && counts.z <= 1;
    const std::size_t times = std::max<std::size_t>(counts.t, 1);
    const std::size_t perTime = std::max<std::size_t>(limits.displayValues / times, 4);
    kept_ = planKeptGrid(counts.x, counts.y, counts.z, profile ? limits.profileNodes : limits.axisNodes, limits.zNodes,
                         perTime);
    focusKept_ = planKeptGrid(counts.x, counts.y, 1, limits.sliceValues, 1, limits.sliceValues);
    planes_ = std::max<std::size_t>(counts.z, 1);
}

std::vector<double>& GridCollector::timeValues(std::size_t it) {
    if (times_.size() <= it) times_.resize(it + 1);
    return times_[it];
}

void GridCollector::put(std::size_t it, std::size_t ix, std::size_t iy, std::size_t iz, double value) {
    ++received_;
    if (!std::isnan(value)) {
        if (!any_) lowest_ = highest_ = value;
        lowest_ = std::min(lowest_, value);
        highest_ = std::max(highest_, value);
        any_ = true;
        const std::size_t peak = it * planes_ + iz;
        if (peaks_.size() <= peak) peaks_.resize((it + 1) * planes_, kMissing);
        if (std::isnan(peaks_[peak]) || value > peaks_[peak]) peaks_[peak] = value;
    }
    if (overview_) {
        const long long kx = kept_.x.position(ix), ky = kept_.y.position(iy), kz = kept_.z.position(iz);
        if (kx >= 0 && ky >= 0 && kz >= 0) {
            const std::size_t ny = kept_.y.count(), nz = kept_.z.count();
            const std::size_t at = (static_cast<std::size_t>(kx) * ny + static_cast<std::size_t>(ky)) * nz +
                                   static_cast<std::size_t>(kz);
            std::vector<double>& values = timeValues(it);
            if (values.size() <= at) {
                const std::size_t grown = (static_cast<std::size_t>(kx) + 1) * ny * nz;
                stored_ += grown - values.size();
                if (stored_ > limits_.unplannedValues) throw GridTooLarge{};
                values.resize(grown, kMissing);
            }
            values[at] = value;
        }
    }
    if (static_cast<int>(it) == focusTime_ && static_cast<int>(iz) == focusPlane_) {
        const long long kx = focusKept_.x.position(ix), ky = focusKept_.y.position(iy);
        if (kx >= 0 && ky >= 0) {
            const std::size_t ny = focusKept_.y.count();
            const std::size_t at = static_cast<std::size_t>(kx) * ny + static_cast<std::size_t>(ky);
            if (focus_.size() <= at) {
                if (at >= limits_.unplannedValues) throw GridTooLarge{};
                focus_.resize((static_cast<std::size_t>(kx) + 1) * ny, kMissing);
            }
            focus_[at] = value;
        }
    }
}

void GridCollector::finish(const Axes& axes, PlotFile& file) {
    Grid& g = file.grid;
    g.x = keptCoordinates(axes.x, kept_.x);
    g.y = keptCoordinates(axes.y, kept_.y);
    g.z = keptCoordinates(axes.z, kept_.z);
    g.t = axes.t;
    g.c.clear();
    g.c.reserve(g.nx() * g.ny() * g.nz() * g.nt());
    for (std::size_t it = 0; it < g.nt(); ++it) {
        const std::vector<double> block =
            it < times_.size() ? laidOut(times_[it], g.nx(), g.ny(), g.nz(), kept_.y.count(), kept_.z.count())
                               : std::vector<double>(g.nx() * g.ny() * g.nz(), kMissing);
        g.c.insert(g.c.end(), block.begin(), block.end());
        if (it < times_.size()) std::vector<double>().swap(times_[it]);
    }
    file.axes = axes;
    file.reduced = !kept_.everyNode();
    file.lowest = lowest_;
    file.highest = highest_;
    file.planePeak.assign(axes.t.size() * planes_, kMissing);
    std::copy_n(peaks_.begin(), std::min(peaks_.size(), file.planePeak.size()), file.planePeak.begin());
}

std::shared_ptr<Slice> GridCollector::takeFocus(const Axes& axes) {
    if (focusTime_ < 0 || focus_.empty()) return nullptr;
    auto s = std::make_shared<Slice>();
    s->time = focusTime_;
    s->plane = focusPlane_;
    s->x = keptCoordinates(axes.x, focusKept_.x);
    s->y = keptCoordinates(axes.y, focusKept_.y);
    s->c = laidOut(focus_, s->x.size(), s->y.size(), 1, focusKept_.y.count(), 1);
    std::vector<double>().swap(focus_);
    return s;
}

}  // namespace bm::trazel
