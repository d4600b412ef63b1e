#include "kernels/walled_strip.h"

#include <algorithm>
#include <cmath>

#include "kernels/interval_masses.h"
#include "kernels/kept_nodes.h"
#include "kernels/recent_cache.h"
#include "kernels/vector_math.h"
#include "shell/base/checked_math.h"

namespace bm::green {

namespace {

// Mirror images of a walled strip give way to its cosine modes from this
// spread (sqrt(D tau) / W) on: 40 modes then reach 1e-16, and images only need
// the strip and its two nearest mirrors below it (the next ones lie a whole
// width away, beyond erfc(10)).
constexpr double kModeSpread = 0.05;
// An image counts only where the point lies within this many scaled
// distances of it: erfc(6) = 2e-17.
constexpr double kImageReach = 6.0;

// What a set of nodes and zeta give every point: at a short spread the scale
// 1 / (2 sqrt(D tau)) and the reach of the images, at a long one the modes'
// damping exp(-pi^2 ratio^2).
// On a rule with its nodes ascending (as every rule of this program is) the
// long spreads come first and the scale rises from node to node, so that the
// nodes an image or a distance reaches are the first few short ones: a call
// then stops at the first node out of reach.
struct NodeSpreads {
    unsigned long long id = 0;  // differs for every fill on the thread
    bool ordered = false;  // long spreads first, then the scale never falling
    int firstShort = 0;    // the count of long spreads: when ordered, the first node of short spread
    bool isLong[kMostStripNodes];
    double scale[kMostStripNodes], reach[kMostStripNodes], damping[kMostStripNodes];
};

struct SpreadsKey {
    unsigned long long nodeSet;
    int count;
    double zeta, width;
    bool operator==(const SpreadsKey&) const = default;
};

thread_local RecentCache<SpreadsKey, NodeSpreads, 4> theSpreads;

const NodeSpreads& nodeSpreads(unsigned long long nodeSet, const double* s, int n, double zeta, double width) {
    const SpreadsKey key{nodeSet, n, zeta, width};
    if (const NodeSpreads* kept = theSpreads.find(key)) return *kept;
    NodeSpreads& out = theSpreads.claim(key);
    out.id = nextNodeSet();
    double r[kMostStripNodes];
    int at[kMostStripNodes];
    int longs = 0;
    for (int j = 0; j < n; ++j) {
        const double ratio = zeta / s[j];
        out.isLong[j] = ratio >= kModeSpread;
        out.scale[j] = out.reach[j] = out.damping[j] = 0.0;
        if (out.isLong[j]) {
            at[longs] = j;
            r[longs++] = -kPi * kPi * ratio * ratio;
            continue;
        }
        out.scale[j] = 1.0 / (2.0 * ratio * width);
        out.reach[j] = kImageReach / out.scale[j];
    }
    vmath::exp(r, r, longs);
    for (int k = 0; k < longs; ++k) out.damping[at[k]] = r[k];
    out.firstShort = longs;
    out.ordered = true;
    for (int j = 0; j < n && out.ordered; ++j)
        out.ordered = j < longs ? out.isLong[j] : !out.isLong[j] && (j == longs || out.scale[j] >= out.scale[j - 1]);
    return out;
}

// The error functions of one distance d from the point to an image's edge,
// at x_j = d scale_j for every node of short spread: erfc (vmath::erfcTail)
// where x_j is below the interval masses' reach, erf (vmath::erfSmall) where
// it is below kSmallErf, 0 elsewhere; what intervalMasses would take of them.
// On ordered nodes only the nodes up to the first one out of reach are
// written (`written`); the rest read as 0.
struct DistanceTails {
    int written = 0;
    double tail[kMostStripNodes], small[kMostStripNodes];

    double tailAt(int j) const { return j < written ? tail[j] : 0.0; }
    double smallAt(int j) const { return j < written ? small[j] : 0.0; }
};

struct TailsKey {
    unsigned long long spreads;
    double distance;
    bool operator==(const TailsKey&) const = default;
};

// A line of points meets each distance at two edges at least (and the
// images' edges near the walls), a few dozen points apart.
constexpr int kKeptDistances = 32;
thread_local RecentCache<TailsKey, DistanceTails, kKeptDistances> theDistanceTails;

const DistanceTails& distanceTails(const NodeSpreads& spreads, int n, double distance, const DistanceTails* keep) {
    const TailsKey key{spreads.id, distance};
    if (const DistanceTails* kept = theDistanceTails.find(key)) return *kept;
    DistanceTails& out = theDistanceTails.claim(key, keep);
    double tails[kMostStripNodes], smalls[kMostStripNodes];
    int tailAt[kMostStripNodes], smallAt[kMostStripNodes];
    int nTails = 0, nSmalls = 0;
    // Every node written to both lists, each list's count moved on only where
    // the node belongs to it: no branch to mispredict. On ordered nodes the
    // first one out of reach ends the pass.
    const int first = spreads.ordered ? spreads.firstShort : 0;
    out.written = n;
    for (int j = first; j < n; ++j) {
        const double x = distance * spreads.scale[j];
        if (spreads.ordered && !(x < kPlanarReach)) {
            out.written = j;
            break;
        }
        out.tail[j] = out.small[j] = 0.0;
        const bool shortSpread = !spreads.isLong[j];
        tailAt[nTails] = j;
        tails[nTails] = x;
        nTails += shortSpread && x < kPlanarReach;
        smallAt[nSmalls] = j;
        smalls[nSmalls] = x;
        nSmalls += shortSpread && x < kSmallErf;
    }
    vmath::erfcTail(tails, tails, nTails);
    for (int k = 0; k < nTails; ++k) out.tail[tailAt[k]] = tails[k];
    vmath::erfSmall(smalls, smalls, nSmalls);
    for (int k = 0; k < nSmalls; ++k) out.small[smallAt[k]] = smalls[k];
    return out;
}

// (erf(p) - erf(q)) / 2 at one node, p = d0 scale >= q = d1 scale, from the
// error functions of |d0| (tail0, small0) and |d1| (tail1, small1), its terms
// added in the order intervalMasses adds them (so to the same bits): an
// interval on one side of 0 the near tail less the far one, one about 0 the
// two inner parts, 1/2 less a tail each or a small erf each.
double imageMass(double p, double q, double tail0, double tail1, double small0, double small1) {
    double mass = 0.0;
    if (q >= 0.0 || p <= 0.0) {
        const bool beyondHigh = q >= 0.0;
        const double near = beyondHigh ? q : -p, far = beyondHigh ? p : -q;
        if (near >= kPlanarReach) return mass;
        mass += 0.5 * (beyondHigh ? tail1 : tail0);
        if (far < kPlanarReach) mass += -0.5 * (beyondHigh ? tail0 : tail1);
        return mass;
    }
    const double a = p, b = -q;
    if (a >= kSmallErf) mass += 0.5;
    if (b >= kSmallErf) mass += 0.5;
    if (a >= kSmallErf && a < kPlanarReach) mass += -0.5 * tail0;
    if (b >= kSmallErf && b < kPlanarReach) mass += -0.5 * tail1;
    if (a < kSmallErf) mass += 0.5 * small0;
    if (b < kSmallErf) mass += 0.5 * small1;
    return mass;
}

}  // namespace

WalledStripFactor::WalledStripFactor(const WalledAquifer& aquifer, double y)
    : width_(aquifer.width), y_(y), a_(aquifer.a), b_(aquifer.b) {
    coefficient_[0] = fp::div(b_ - a_, width_);
    bound_ = std::min(4.0 / kPi, 2.0 * coefficient_[0]);
}

void WalledStripFactor::makeModes() const {
    if (modesMade_) return;
    StripModes modes(width_, a_, b_, y_);
    for (int m = 1; m <= kModes; ++m) coefficient_[m] = modes.next();
    modesMade_ = true;
}

double WalledStripFactor::modeSum(double r) const {
    // Sum of c_m cos(m pi y / W) r^(m^2), the powers built by
    // r^((m+1)^2) = r^(m^2) r^(2m+1).
    const double r2 = r * r;
    double sum = coefficient_[0];
    double power = 1.0, step = r;  // r^(m^2), r^(2m+1) before the update
    for (int m = 1; m <= kModes; ++m) {
        power *= step;
        step *= r2;
        sum += coefficient_[m] * power;
        // Remaining modes: |c| r^((m+1)^2) (1 + r^(2m+3) + ...).
        const double next = power * step;
        if (next * bound_ <= 1e-17 * (1.0 - step * r2)) break;
    }
    return sum;
}

int WalledStripFactor::many(unsigned long long nodeSet, const double* s, int n, double zeta, double* out) const {
    const NodeSpreads& spreads = nodeSpreads(nodeSet, s, n, zeta, width_);
    // Short spreads: the strip, its mirror in the wall at 0 and its mirror in
    // the wall at W, each only within its reach of the point. Long spreads:
    // the modes.
    constexpr int kImages = 3;
    const double images[kImages][2] = {{a_, b_}, {-b_, -a_}, {2.0 * width_ - b_, 2.0 * width_ - a_}};
    for (int j = 0; j < n; ++j) out[j] = 0.0;
    int reached = spreads.ordered ? spreads.firstShort : n;
    for (const auto& image : images) {
        const double d0 = y_ - image[0], d1 = y_ - image[1];
        const double below = image[0] - y_;  // how far the image's low edge lies above the point
        auto reaches = [&](int j) { return !(spreads.isLong[j] || d1 > spreads.reach[j] || below > spreads.reach[j]); };
        if (spreads.ordered) {
            // The nodes that reach the image: the first few short ones.
            const int first = spreads.firstShort;
            int end = first;
            while (end < n && reaches(end)) ++end;
            if (end == first) continue;
            reached = std::max(reached, end);
            const DistanceTails& t0 = distanceTails(spreads, n, std::fabs(d0), nullptr);
            const DistanceTails& t1 = distanceTails(spreads, n, std::fabs(d1), &t0);
            // A point beside the image (both edges on one side of it at every
            // node, the far edge's scaled distance never below the near one's):
            // the near tail less the far one, each only within its reach,
            // which ends where its kept values end.
            if ((d1 >= 0.0 || d0 <= 0.0) && (d1 >= 0.0 || d1 * spreads.scale[first] < 0.0)) {
                const DistanceTails& near = d1 >= 0.0 ? t1 : t0;
                const DistanceTails& far = d1 >= 0.0 ? t0 : t1;
                const int nearEnd = std::min(end, near.written), farEnd = std::min(nearEnd, far.written);
                int j = first;
                for (; j < farEnd; ++j) out[j] += 0.5 * near.tail[j] + -0.5 * far.tail[j];
                for (; j < nearEnd; ++j) out[j] += 0.5 * near.tail[j];
                continue;
            }
            for (int j = first; j < end; ++j) {
                const double scale = spreads.scale[j];
                out[j] += imageMass(d0 * scale, d1 * scale, t0.tailAt(j), t1.tailAt(j), t0.smallAt(j), t1.smallAt(j));
            }
            continue;
        }
        const DistanceTails* t0 = nullptr;
        const DistanceTails* t1 = nullptr;
        for (int j = 0; j < n; ++j) {
            if (!reaches(j)) continue;
            if (t0 == nullptr) {
                t0 = &distanceTails(spreads, n, std::fabs(d0), nullptr);
                t1 = &distanceTails(spreads, n, std::fabs(d1), t0);
            }
            const double scale = spreads.scale[j];
            out[j] += imageMass(d0 * scale, d1 * scale, t0->tailAt(j), t1->tailAt(j), t0->smallAt(j), t1->smallAt(j));
        }
    }
    if (spreads.firstShort > 0) {  // a node of long spread
        makeModes();
        for (int j = 0; j < n; ++j)
            if (spreads.isLong[j]) out[j] = modeSum(spreads.damping[j]);
    }
    return reached;
}

}  // namespace bm::green
