#include "kernels/edge_tails.h"

#include <algorithm>

#include "kernels/interval_masses.h"
#include "kernels/recent_cache.h"
#include "kernels/vector_math.h"

namespace bm {

namespace {

constexpr int kKeptDistances = 48;
// Below this an erf is its own series; above it 1 - erfc loses nothing.
constexpr double kSmallErf = 0.5;

struct EdgeTails {
    double tail[kMostEdgeNodes];   // erfc(d sigma_j), 0 beyond the reach
    double inner[kMostEdgeNodes];  // erf(d sigma_j)
};

struct Key {
    unsigned long long nodeSet;
    double scale, distance, reach;
    int count;
    bool operator==(const Key&) const = default;
};

void fill(EdgeTails& out, double scale, const double* spread, int n, double d, double reach) {
    // Only the nodes within the reach take the functions.
    int index[kMostEdgeNodes], small[kMostEdgeNodes];
    double argument[kMostEdgeNodes], series[kMostEdgeNodes];
    int within = 0, smalls = 0;
    for (int j = 0; j < n; ++j) {
        const double x = d * (scale * spread[j]);
        out.tail[j] = 0.0;
        out.inner[j] = 1.0;
        index[within] = j;
        argument[within] = x;
        within += x < reach;
        small[smalls] = j;
        series[smalls] = x;
        smalls += x < kSmallErf;
    }
    vmath::erfcTail(argument, argument, within);
    for (int k = 0; k < within; ++k) {
        out.tail[index[k]] = argument[k];
        out.inner[index[k]] = 1.0 - argument[k];
    }
    vmath::erfSmall(series, series, smalls);
    for (int k = 0; k < smalls; ++k) out.inner[small[k]] = series[k];
}

thread_local RecentCache<Key, EdgeTails, kKeptDistances> theTails;

}  // namespace

void stripShares(unsigned long long nodeSet, double scale, const double* spread, int n, double nearEdge,
                 double farEdge, bool inside, double reach, double* out) {
    const Key nearKey{nodeSet, scale, nearEdge, reach, n}, farKey{nodeSet, scale, farEdge, reach, n};
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
    if (inside) {
        for (int j = 0; j < n; ++j) out[j] = 0.5 * (a->inner[j] + b->inner[j]);
    } else {
        for (int j = 0; j < n; ++j) out[j] = 0.5 * (a->tail[j] - b->tail[j]);
    }
}

}  // namespace bm
