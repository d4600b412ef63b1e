#include "apps/trazel/sub_grid.h"

#include <algorithm>

namespace bm::trazel {

std::size_t KeptAxis::count() const {
    if (n == 0) return 1;  // growing: counted as one row while planning
    if (stride == 1) return n;
    return (n - 1) / stride + 1 + ((n - 1) % stride != 0 ? 1 : 0);
}

std::vector<std::size_t> KeptAxis::indexes(std::size_t available) const {
    std::vector<std::size_t> out;
    for (std::size_t i = 0; i < available; ++i)
        if (position(i) >= 0) out.push_back(i);
    return out;
}

std::size_t strideFor(std::size_t n, std::size_t most) {
    if (n <= most) return 1;
    if (most <= 2) return n - 1;  // the two ends alone
    // k kept regular nodes plus the last: (n - 2) / s + 2 <= most
    std::size_t s = std::max<std::size_t>((n - 2) / (most - 2), 1);
    while (KeptAxis{n, s}.count() > most) ++s;
    while (s > 1 && KeptAxis{n, s - 1}.count() <= most) --s;
    return std::max<std::size_t>(s, 1);
}

KeptGrid planKeptGrid(std::size_t nx, std::size_t ny, std::size_t nz, std::size_t axisMost, std::size_t zMost,
                      std::size_t valuesMost) {
    KeptGrid g;
    g.x = {nx, nx ? strideFor(nx, axisMost) : 1};
    g.y = {ny, ny ? strideFor(ny, axisMost) : 1};
    g.z = {nz, nz ? strideFor(nz, zMost) : 1};
    valuesMost = std::max<std::size_t>(valuesMost, 1);
    while (g.values() > valuesMost) {
        KeptAxis* widest = nullptr;
        for (KeptAxis* a : {&g.x, &g.y, &g.z})
            if (a->n > 0 && a->count() > 2 && (!widest || a->count() > widest->count())) widest = a;
        if (!widest) break;
        // Halve the widest axis's kept nodes at most, so the others keep up.
        const std::size_t target = std::max<std::size_t>(2, std::max(widest->count() / 2,
                                                                     widest->count() * valuesMost / g.values()));
        widest->stride = strideFor(widest->n, std::min(target, widest->count() - 1));
    }
    return g;
}

}  // namespace bm::trazel
