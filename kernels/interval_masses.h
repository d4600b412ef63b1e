#pragma once
// (erf(p) - erf(q)) / 2 for p >= q over arrays: the share of a unit Gaussian
// spread that falls between two points, for many points at once. An interval
// on one side of 0 is the difference of two erfc tails, one about 0 the sum of
// two erf: no 1 - erf anywhere. The functions are taken in vectors
// (vector_math.h), and only where they matter: a tail beyond kMassReach is 0
// and an erf there 1 without a call (erfc(6.5) / 2 = 2e-20). Each result is
// within 4e-16 + 2e-20 of the exact share, and within 2e-15 of it relative
// (plus the 2e-20) unless two nearly equal tails cancel.

namespace bm {

inline constexpr double kMassReach = 6.5;

// out[i] = (erf(p[i]) - erf(q[i])) / 2 for 0 <= i < n; out may be p or q.
void intervalMasses(const double* p, const double* q, double* out, int n);

}  // namespace bm
