#pragma once
// Special functions of the three-dimensional kernels: the scaled complementary
// error function and exp(a) * erfc(b) formed without overflow or underflow of
// either factor, and the strip factor of a Gaussian spread over an interval.

namespace bm::k3 {

// erfcx(b) = exp(b^2) * erfc(b) for b >= 0, relative accuracy near 1e-15.
double erfcx(double b);

// exp(a) * erfc(b) for all finite a, b. Where both factors are representable
// it is their product; otherwise it is exp(a - b^2) * erfcx(b), with b^2 split
// exactly so that a large a and a large b do not cancel badly. A result too
// large for a double comes back as infinity (the caller decides the fault).
double expErfc(double a, double b);

// Share of a unit Gaussian spread, centred at a point at distances d1 = y - c1
// and d2 = c2 - y from the ends of the interval [c1, c2], that falls inside it:
// (erf(d1 * r) + erf(d2 * r)) / 2 with r = 1 / (2 sqrt(D tau)). Uses erfc on the
// far side so that small shares keep their relative accuracy, and returns 0 or 1
// without an error-function call where both ends are more than 6.5 spreads away.
double intervalShare(double d1, double d2, double r);

}  // namespace bm::k3
