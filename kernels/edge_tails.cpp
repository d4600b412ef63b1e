#include "kernels/edge_tails.h"

#include <cmath>

#include "kernels/interval_masses.h"
#include "kernels/recent_cache.h"
#include "kernels/vector_math.h"

namespace bm {

namespace {

constexpr int kKeptDistances = 48;

// One number per node: erfc(d sigma) where d sigma >= kSmallErf (0 at and
// beyond the reach), minus erf(d sigma) below (-0 at 0): the sign bit tells
// which, and either gives both functions.
struct EdgeTails {
    double value[kMostEdgeNodes];
};

// 1 where the sign bit is set (-0 included), 0 elsewhere, without a branch.
double signOf(double v) { return 0.5 - std::copysign(0.5, v); }
double tailOf(double v) { return v + signOf(v); }
double innerOf(double v) { return (1.0 - signOf(v)) - v; }

struct Key {
    double distance, scale, reach;
    unsigned long long nodeSet;
    int count;
    bool operator==(const Key&) const = default;
};

void fill(EdgeTails& out, double scale, const double* spread, int n, double d, double reach) {
    // The two kinds of node apart, each taking its function in one pass.
    int large[kMostEdgeNodes], small[kMostEdgeNodes];
    double tails[kMostEdgeNodes], series[kMostEdgeNodes];
    int larges = 0, smalls = 0;
    for (int j = 0; j < n; ++j) {
        const double x = d * (scale * spread[j]);
        out.value[j] = 0.0;
        large[larges] = j;
        tails[larges] = x;
        larges += x >= kSmallErf && x < reach;
        small[smalls] = j;
        series[smalls] = x;
        smalls += x < kSmallErf;
    }
    vmath::erfcTail(tails, tails, larges);
    for (int k = 0; k < larges; ++k) out.value[large[k]] = tails[k];
    vmath::erfSmall(series, series, smalls);
    for (int k = 0; k < smalls; ++k) out.value[small[k]] = -series[k];
}

thread_local RecentCache<Key, EdgeTails, kKeptDistances> theTails;

}  // namespace

void stripShares(unsigned long long nodeSet, double scale, const double* spread, int n, double nearEdge,
                 double farEdge, bool inside, double reach, double* out) {
    const Key nearKey{nearEdge, scale, reach, nodeSet, n}, farKey{farEdge, scale, reach, nodeSet, n};
    EdgeTails* a = theTails.find(nearKey);
    if (a == nullptr) {
        a = &theTails.claim(nearKey);
        fill(*a, scale, spread, n, nearEdge, reach);
    }
    EdgeTails* b = theTails.find(farKey);
    if (b == nullptr) {
        b = &theTails.claim(farKey, a);
        fill(*b, scale, spread, n, farEdge, reach);
    }
    const double* __restrict near = a->value;
    const double* __restrict far = b->value;
    double* __restrict share = out;
    if (inside) {
        for (int j = 0; j < n; ++j) share[j] = 0.5 * (innerOf(near[j]) + innerOf(far[j]));
    } else {
        for (int j = 0; j < n; ++j) share[j] = 0.5 * (tailOf(near[j]) - tailOf(far[j]));
    }
}

}  // namespace bm
