#pragma once
// The semi-infinite aquifer with a Cauchy inlet and decay, in a form that
// stays accurate as the decay rate falls towards 0.
//
// The closed form ((U/V - 1) e2 + 2 e1 - (U/V + 1) e3) V^2 / (4 lambda D)
// cancels as lambda -> 0 (U -> V, e1 -> e3), losing digits as V^2 / (4 lambda D).
// With delta = U - V = 4 D lambda / (U + V), taken without cancellation, the
// bracket is (delta / V)(e2 - e3) + 2 (e1 - e3), and e1 and e3 share their
// exponential factor P = exp(-(x - V t)^2 / 4Dt - lambda t):
//
//   e1 - e3 = P (erfcx(eta_V) - erfcx(eta_U)),  eta_W = (x + W t) / (2 sqrt(D t)),
//
// a difference of erfcx over an interval of length delta t / (2 sqrt(D t)),
// taken as the integral of -erfcx' = 2/sqrt(pi) - 2 eta erfcx(eta) > 0 when the
// interval is short. So
//
//   C/Co = V / (U + V) (e2 - e3) + P V^2 sqrt(t) / ((U + V) sqrt D) * mean of -erfcx' on [eta_V, eta_U],
//
// in which every part is positive or a difference of bounded terms, for every
// lambda > 0, and tends to the solution without decay.

namespace bm {

// C/Co for V > 0, D > 0, lambda > 0, x >= 0, t > 0. Absolute accuracy near 1e-15;
// the value is kept within [0, 1], where the solution lies.
double semiInfiniteCauchyWithDecay(double V, double D, double lambda, double x, double t);

// -d/dz erfcx(z) = 2/sqrt(pi) - 2 z erfcx(z) for z >= 0, without the
// cancellation of its two parts at large z.
double erfcxSlope(double z);

}  // namespace bm
