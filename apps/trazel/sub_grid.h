#pragma once
// Which nodes of a large grid are kept for showing it: every s-th node of an
// axis and always its last one, so that the picture spans the whole grid. The
// strides are chosen so that the kept values stay within a budget; a grid
// within the budget keeps every node (all strides 1).

#include <cstddef>
#include <vector>

namespace bm::trazel {

// An axis of n nodes of which every `stride`-th (and the last) is kept. An
// axis whose size is not known (n = 0) keeps every node.
struct KeptAxis {
    std::size_t n = 0;
    std::size_t stride = 1;

    // How many nodes are kept.
    std::size_t count() const;
    // The position of node i among the kept ones, or -1 when it is not kept.
    long long position(std::size_t i) const {
        if (stride == 1) return static_cast<long long>(i);
        if (i % stride == 0) return static_cast<long long>(i / stride);
        if (n > 0 && i == n - 1) return static_cast<long long>(i / stride + 1);
        return -1;
    }
    // The indexes of the kept nodes among the first `available` nodes.
    std::vector<std::size_t> indexes(std::size_t available) const;
};

// The smallest stride that keeps at most `most` nodes of n (1 when n <= most).
std::size_t strideFor(std::size_t n, std::size_t most);

struct KeptGrid {
    KeptAxis x, y, z;
    std::size_t values() const { return x.count() * y.count() * z.count(); }
    bool everyNode() const { return x.stride == 1 && y.stride == 1 && z.stride == 1; }
};

// Strides for a grid of nx * ny * nz nodes (0: not known) so that each axis
// keeps at most `axisMost` nodes (`zMost` for z) and the grid at most
// `valuesMost` values; the axis with the most kept nodes gives way first.
KeptGrid planKeptGrid(std::size_t nx, std::size_t ny, std::size_t nz, std::size_t axisMost, std::size_t zMost,
                      std::size_t valuesMost);

}  // namespace bm::trazel
