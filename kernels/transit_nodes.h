#pragma once
// The nodes of the two-dimensional transit integral (green_integrals.h) for
// one range, with everything that does not depend on the lateral factor:
// the node s and its weight
//
//   (h / 2) * w_i * s * exp(-z^2),   z = s - e / s,
//
// so that the integral is 2/sqrt(pi) exp(logPrefactor) sum weight_j G(s_j).
// Nodes where z^2 > kNegligibleGauss are left out, as the scalar sum skips
// them. The values depend on x and t (and the flow), not on y, so they are
// kept for the last few ranges on each thread: a grid's y loop evaluates
// them once. They are evaluated in vectors (vector_math.h).

#include <algorithm>

#include "kernels/green_integrals.h"

namespace bm::green {

// Ranges of more panels than this are evaluated in groups of this many.
inline constexpr int kGroupPanels = 2;
inline constexpr int kMostGroupNodes = kGroupPanels * kRulePoints;

struct TransitNodes {
    unsigned long long nodeSet = 0;  // differs for every set of nodes made on a thread
    int count = 0;
    double s[kMostGroupNodes];
    double weight[kMostGroupNodes];
};

// The nodes of panels firstPanel .. firstPanel + kGroupPanels - 1 of the range
// (those that exist), on the rule given (kRulePoints nodes and weights on
// [-1, 1], any order). The reference stays valid until the next call.
const TransitNodes& transitNodes(const TransitRange& range, int firstPanel, const double* nodes, const double* weights);

// The transit integral with lateral factors computed per group of nodes:
// `lateral(nodes, out)` writes G(nodes.s[j]) for j < nodes.count and returns
// how many leading nodes may have a factor other than +0: the rest would add
// +0 (their weights are positive) to a sum that starts at +0 and never becomes
// -0, which leaves it as it is, and are left out.
template <class Lateral>
double vectorTransitIntegral(const TransitRange& r, const double* nodes, const double* weights, Lateral&& lateral) {
    if (r.panels <= 0 || r.logPrefactor < -745.0) return 0.0;
    double total = 0.0;
    double g[kMostGroupNodes];
    for (int first = 0; first < r.panels; first += kGroupPanels) {
        const TransitNodes& tn = transitNodes(r, first, nodes, weights);
        const int count = std::min(tn.count, static_cast<int>(lateral(tn, g)));
        double sum = 0.0;
        for (int j = 0; j < count; ++j) sum += tn.weight[j] * g[j];
        total += sum;
    }
    return kTwoOverSqrtPi * std::exp(r.logPrefactor) * total;
}

}  // namespace bm::green
