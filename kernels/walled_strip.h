#pragma once
// Lateral factor of a strip between no-flux walls after spreading with
// variance 2 D tau: the strip's own mass plus that of its mirror images, or
// equivalently the cosine series with modes damped by exp(-D (m pi / W)^2 tau).
// Each evaluation picks the cheaper form: few images for short spreads, few
// modes for long ones, so a node costs at most a handful of error functions
// or ~40 multiplications.
//
// The factor is asked for at the nodes of a transit integral (transit_nodes.h),
// at spread ratios sqrt(D tau) / W = zeta / s_j. What depends on the nodes and
// zeta alone (each node's scale, reach and mode damping) and the error
// functions of each distance from the point to an edge of an image are kept
// per thread: on a grid the same x and t come back for every y, and the same
// distances for many points of a line. Each kept value is a pure function of
// its key, so a result never depends on the calls before it.

#include "kernels/green_integrals.h"

namespace bm::green {

// The most nodes one call takes.
inline constexpr int kMostStripNodes = 512;

class WalledStripFactor {
public:
    // y: folded local coordinate. Raises division by zero for W = 0.
    WalledStripFactor(const WalledAquifer& aquifer, double y);
    // out[j] = the factor at spread ratio zeta / s[j], j < n <=
    // kMostStripNodes, for the nodes of set `nodeSet` (a number that differs
    // for every set of nodes a thread makes, kept_nodes.h). Returns how many
    // leading nodes may have a factor other than +0 (those beyond reach no
    // image on ordered nodes).
    int many(unsigned long long nodeSet, const double* s, int n, double zeta, double* out) const;
    // The mean over the width, (b - a) / W (the zeroth mode).
    double mean() const { return coefficient_[0]; }

    static constexpr int kModes = 48;

private:
    // The cosine modes' sum at r = exp(-pi^2 spreadRatio^2).
    double modeSum(double r) const;
    // The coefficients beyond the first, made at the first long spread (short
    // spreads, the images, need none of them).
    void makeModes() const;

    double width_, y_, a_, b_;
    double bound_;  // bound on every mode's coefficient beyond the first
    mutable bool modesMade_ = false;
    mutable double coefficient_[kModes + 1];  // c_m cos(m pi y / W)
};

}  // namespace bm::green
