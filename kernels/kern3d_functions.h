#pragma once
// Special functions of the three-dimensional kernels: the scaled error
// functions (shared with the other kernels) and the strip factor of a Gaussian
// spread over an interval.

#include "kernels/erfc_scaled.h"

namespace bm::k3 {

using bm::erfcx;
using bm::expErfc;

// Share of a unit Gaussian spread, centred at a point at distances d1 = y - c1
// and d2 = c2 - y from the ends of the interval [c1, c2], that falls inside it:
// (erf(d1 * r) + erf(d2 * r)) / 2 with r = 1 / (2 sqrt(D tau)). Uses erfc on the
// far side so that small shares keep their relative accuracy, and returns 0 or 1
// without an error-function call where both ends are more than 6.5 spreads away.
double intervalShare(double d1, double d2, double r);

}  // namespace bm::k3
