#pragma once
// The share of a strip (or of a patch's side) that lateral dispersion has
// spread onto a point, at every node of a quadrature at once, through the
// tails beyond each of its two edges. For an edge at distance d from the
// point and a node whose spread scale is sigma (1 / (2 sqrt(D tau))), the
// tail beyond it is erfc(d sigma) / 2 and the part short of it erf(d sigma)
// / 2; the share of the strip is the near tail less the far one when the
// point lies beside it, the two inner parts together when it lies inside.
//
// The tails at a distance depend on the nodes and d only, and on a regular
// grid the same distances come back again and again (the point 40 m left of
// one edge is 40 m right of it two steps on, and as far from the other edge
// elsewhere): they are kept per thread for the last kKeptDistances
// distances of each set of nodes. Each is a pure function of its key, so a
// result never depends on what was computed before it.
//
// Accuracy: erfc through vmath::erfcTail (6 ulp), erf its series below 0.5
// and 1 - erfc above (2 ulp), tails at or beyond d sigma = reach taken as 0
// (interval_masses.h): each share within 4e-16 + erfc(reach) / 2 of the exact
// one, and small shares keep their relative accuracy but where two nearly
// equal tails cancel.

namespace bm {

inline constexpr int kMostEdgeNodes = 512;

// The shares at the n <= kMostEdgeNodes nodes of set `nodeSet` (a number
// that differs for every set of nodes a thread makes), sigma_j = scale *
// spread[j], of a strip whose edges lie at distances nearEdge <= farEdge
// from the point, inside it (between its edges) or beside it; tails cut at
// `reach` (at most kSpatialReach).
void stripShares(unsigned long long nodeSet, double scale, const double* spread, int n, double nearEdge,
                 double farEdge, bool inside, double reach, double* out);

}  // namespace bm
