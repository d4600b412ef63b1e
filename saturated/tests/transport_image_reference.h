#pragma once
// The finite aquifer [0, L] of a sharp front as the semi-infinite solution
// plus its reflection at the outlet, in long double.
//
// The transform of the finite solution expands in powers of the round trip
// rho exp(-2 sigma L / sqrt D) (sigma = sqrt(s + lambda + V^2/4D),
// rho = (sigma - c) / (sigma + c), c = V / (2 sqrt D)); kept to the first
// reflection, and with (1 - rho) the transform of the Cauchy inlet's
// exponentially weighted average, it inverts to
//
//   Dirichlet: SD(x) + exp(-V (L - x) / D) (SD(2L - x) - SC(2L - x)),
//   Cauchy:    SC(x) + exp(-V (L - x) / D) (SC(2L - x) - A(2L - x)),
//   A(z) = 2 integral_0^inf exp(-2w) SC(z + 2 D w / V) dw,
//
// SD and SC the semi-infinite solutions with Dirichlet and Cauchy inlets.
// The reflections left out are of order exp(-V L / D): below 1e-26 for
// V L / D >= 60, where this is a reference in its own right. SD and SC are
// the closed forms in long double with the erfc of transport_green_reference,
// each exp(a) erfc(b) with b >= 0 taken as exp(-(x - V t)^2 / 4Dt - lambda t)
// erfcx(b), the exact sum of its exponents, so that a sharp front's large
// exponents do not meet; A is an adaptive Gauss-Kronrod integral.

namespace bm::testkit {

// The semi-infinite Cauchy solution in closed form, long double. With decay
// its form cancels as V^2 / (4 lambda D): keep lambda above about 1e-6 V^2 / D.
long double semiInfiniteCauchyClosedForm(double V, double D, double lambda, double x, double t);

// The semi-infinite Dirichlet solution (Ogata-Banks with decay) in the same arrangement.
long double semiInfiniteDirichletScaled(double V, double D, double lambda, double x, double t);

// C/Co of the finite aquifer by the first reflection (V L / D >= 60), 0 <= x <= L, t > 0.
long double finiteByReflection(bool cauchy, double V, double D, double lambda, double L, double x, double t);

}  // namespace bm::testkit
