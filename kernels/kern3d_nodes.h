#pragma once
// The nodes of the patch kernels' time integral (kern3d_quadrature.h) with
// everything that does not depend on the transverse shares: sqrt(tau) at each
// node and its weight (h / 2) w_i exp(psi(u_i)), nodes whose exponent lies 50
// below the peak left out (as timeIntegral skips them: together they add less
// than e^-50 of the integral's largest node). They depend on the column (x,
// the flow) and t, not on y or z, so they are kept for the last few columns
// and times on each thread and a grid's y and z loops evaluate them once;
// the shares of one transverse direction can be kept beside them
// (TransverseCache). Evaluated in vectors (vector_math.h).

#include "kernels/kern3d_quadrature.h"

namespace bm::k3 {

// Plans of more panels than this are evaluated in groups of this many.
inline constexpr int kGroupPanels = 2;
inline constexpr int kMostGroupNodes = kGroupPanels * kRulePoints;

struct ColumnNodes {
    unsigned long long nodeSet = 0;  // differs for every set of nodes made on a thread
    int count = 0;
    double sqrtTau[kMostGroupNodes];
    double inverseRoot[kMostGroupNodes];  // 1 / sqrt(tau)
    double weight[kMostGroupNodes];
};

// Panels firstPanel .. firstPanel + kGroupPanels - 1 of the plan (those that
// exist) on the rule given (kRulePoints nodes and weights, any order). The
// reference stays valid until the next call on this thread.
const ColumnNodes& columnNodes(const Column& column, const Panels& plan, int firstPanel, const double* nodes,
                               const double* weights);

// The time integral with the transverse shares computed per group of nodes:
// `shares(nodes, out)` writes the share at each of nodes.count nodes.
template <class Shares>
double vectorTimeIntegral(const Column& c, const Panels& plan, const double* nodes, const double* weights,
                          Shares&& shares) {
    if (plan.empty) return 0.0;
    double total = 0.0;
    double share[kMostGroupNodes];
    for (int first = 0; first < plan.count; first += kGroupPanels) {
        const ColumnNodes& cn = columnNodes(c, plan, first, nodes, weights);
        shares(cn, share);
        double sum = 0.0;
        for (int j = 0; j < cn.count; ++j) sum += cn.weight[j] * share[j];
        total += sum;
    }
    return total;
}

// The shares of one transverse direction at the nodes of one ColumnNodes,
// kept while the column nodes and the direction's own numbers stay the same
// (the z shares across a grid's y loop).
class TransverseCache {
public:
    // The shares for these nodes and `numbers` (whatever determines them:
    // distances, scales), computed by fill(nodes, out) when not kept.
    template <class Fill>
    const double* shares(const ColumnNodes& nodes, const double (&numbers)[6], Fill&& fill) {
        if (nodes.nodeSet != nodeSet_ || !sameNumbers(numbers)) {
            fill(nodes, values_);
            nodeSet_ = nodes.nodeSet;
            for (int i = 0; i < 6; ++i) numbers_[i] = numbers[i];
        }
        return values_;
    }

private:
    bool sameNumbers(const double (&numbers)[6]) const {
        for (int i = 0; i < 6; ++i)
            if (!(numbers[i] == numbers_[i])) return false;
        return true;
    }
    unsigned long long nodeSet_ = 0;
    double numbers_[6] = {};
    double values_[kMostGroupNodes];
};

}  // namespace bm::k3
