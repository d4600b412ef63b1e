#include "kernels/kern3d_nodes.h"

#include "kernels/kept_nodes.h"
#include "kernels/vector_math.h"

namespace bm::k3 {

namespace {

// Exponents this far below the peak are left out.
constexpr double kSkipBelowPeak = 50.0;

struct Key {
    double x, v, dx, decay;
    double uA, uB, psiMax;
    int count, firstPanel;
    const double* nodes;
    const double* weights;
    bool operator==(const Key&) const = default;
};

struct Entry {
    KeptRule<kRulePoints> rule;
    ColumnNodes nodes;
};

thread_local RecentCache<Key, Entry, 4> theCache;

void fill(Entry& entry, const Column& c, const Panels& plan, int firstPanel, const double* nodes, const double* weights) {
    ColumnNodes& out = entry.nodes;
    out.nodeSet = nextNodeSet();
    out.count = 0;
    const double skipBelow = plan.psiMax - kSkipBelowPeak;
    const double h = (plan.uB - plan.uA) / plan.count;
    const double half = 0.5 * h;
    double u[kRulePoints], root[kRulePoints];
    double exponent[kMostGroupNodes];
    for (int j = firstPanel; j < plan.count && j < firstPanel + kGroupPanels; ++j) {
        const double mid = plan.uA + (j + 0.5) * h;
        for (int i = 0; i < kRulePoints; ++i) {
            u[i] = mid + half * nodes[i];
            root[i] = 0.5 * u[i];
        }
        vmath::exp(root, root, kRulePoints);
        for (int i = 0; i < kRulePoints; ++i) {
            const double p = c.psi(u[i], root[i] * root[i]);
            if (p < skipBelow) continue;
            out.sqrtTau[out.count] = root[i];
            out.inverseRoot[out.count] = 1.0 / root[i];
            out.weight[out.count] = half * weights[i];
            exponent[out.count] = p;
            ++out.count;
        }
    }
    vmath::exp(exponent, exponent, out.count);
    for (int j = 0; j < out.count; ++j) out.weight[j] *= exponent[j];
}

}  // namespace

const ColumnNodes& columnNodes(const Column& c, const Panels& plan, int firstPanel, const double* nodes,
                               const double* weights) {
    const Key key{c.x, c.v, c.dx, c.decay, plan.uA, plan.uB, plan.psiMax, plan.count, firstPanel, nodes, weights};
    return keptNodes(theCache, key, nodes, weights, [&](Entry& entry) { fill(entry, c, plan, firstPanel, nodes, weights); })
        .nodes;
}

}  // namespace bm::k3
