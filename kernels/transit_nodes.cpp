#include "kernels/transit_nodes.h"

#include "kernels/kept_nodes.h"
#include "kernels/vector_math.h"

namespace bm::green {

namespace {

struct Key {
    double wLo, wHi, e;
    int panels, firstPanel;
    const double* nodes;
    const double* weights;
    bool operator==(const Key&) const = default;
};

struct Entry {
    KeptRule<kRulePoints> rule;
    TransitNodes nodes;
};

void fill(Entry& entry, const TransitRange& r, int firstPanel, const double* nodes, const double* weights) {
    TransitNodes& out = entry.nodes;
    out.nodeSet = nextNodeSet();
    out.count = 0;
    const double h = (r.wHi - r.wLo) / r.panels;
    const double half = 0.5 * h;
    double s[kRulePoints], square[kRulePoints];
    double gauss[kMostGroupNodes];
    for (int p = firstPanel; p < r.panels && p < firstPanel + kGroupPanels; ++p) {
        const double mid = r.wLo + (p + 0.5) * h;
        for (int i = 0; i < kRulePoints; ++i) s[i] = mid + half * nodes[i];
        vmath::exp(s, s, kRulePoints);
        for (int i = 0; i < kRulePoints; ++i) {
            const double z = s[i] - r.e / s[i];
            square[i] = z * z;
        }
        for (int i = 0; i < kRulePoints; ++i) {
            if (square[i] > kNegligibleGauss) continue;
            out.s[out.count] = s[i];
            out.weight[out.count] = half * weights[i] * s[i];
            gauss[out.count] = -square[i];
            ++out.count;
        }
    }
    vmath::exp(gauss, gauss, out.count);
    for (int j = 0; j < out.count; ++j) out.weight[j] *= gauss[j];
}

thread_local RecentCache<Key, Entry, 4> theCache;

}  // namespace

const TransitNodes& transitNodes(const TransitRange& r, int firstPanel, const double* nodes, const double* weights) {
    const Key key{r.wLo, r.wHi, r.e, r.panels, firstPanel, nodes, weights};
    return keptNodes(theCache, key, nodes, weights, [&](Entry& entry) { fill(entry, r, firstPanel, nodes, weights); })
        .nodes;
}

}  // namespace bm::green
