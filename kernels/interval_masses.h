#pragma once
// (erf(p) - erf(q)) / 2 for p >= q over arrays: the share of a unit Gaussian
// spread that falls between two points, for many points at once. An interval
// on one side of 0 is the difference of two erfc tails, one about 0 the sum of
// two erf: no 1 - erf anywhere. The functions are taken in vectors
// (vector_math.h), and only where they matter: a tail at or beyond `reach`
// is 0 and an erf there 1 without a call. Each result is within 4e-16 +
// erfc(reach) / 2 of the exact share, and within 2e-15 of it relative (plus
// that cut) unless two nearly equal tails cancel.

namespace bm {

// Where the kernels cut the tails, as they always have: the two-dimensional
// ones at erfc(6.3) = 1.3e-19, the three-dimensional ones at erfc(6.5) = 3.8e-20.
inline constexpr double kPlanarReach = 6.3;
inline constexpr double kSpatialReach = 6.5;
// Below this an erf is its own series (and erfc, at least 0.48 there, is 1
// less it); above, erf is 1 less erfc without loss.
inline constexpr double kSmallErf = 0.5;

// out[i] = (erf(p[i]) - erf(q[i])) / 2 for 0 <= i < n; out may be p or q.
// reach at most kSpatialReach.
void intervalMasses(const double* p, const double* q, double* out, int n, double reach);

}  // namespace bm
