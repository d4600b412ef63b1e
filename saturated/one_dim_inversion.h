#pragma once
// The finite-aquifer solutions by inversion of their Laplace transform, for
// the points where the eigenvalue series cancels too deeply for double
// precision (a sharp front ahead of which exp(a x - G - lambda t) is huge).
//
// The transform of C/Co (s the Laplace variable, sigma = sqrt(s + lambda + V^2/4D),
// c = V / (2 sqrt D), rho = (sigma - c) / (sigma + c), h = x / sqrt D, l = L / sqrt D):
//
//   Cbar = exp(V x / 2D - sigma h) R(sigma) / s,
//   Dirichlet inlet: R = (1 + rho e^{-2 sigma (l - h)}) / (1 + rho e^{-2 sigma l}),
//   Cauchy inlet:    R = (1 - rho) (1 + rho e^{-2 sigma (l - h)}) / (1 - rho^2 e^{-2 sigma l}),
//
// both with |rho e^{-2 sigma l}| < 1 for Re sigma > 0: every reflection between
// inlet and outlet is in the denominator and nothing cancels. The inverse is an
// integral over a vertical line Re sigma = sigma0 through the saddle point of
// exp(s t - sigma h), where the integrand is a Gaussian in Im sigma of height
// exp(-(x - V t)^2 / 4Dt - lambda t) <= 1; the pole of 1/s at sigma = u is
// taken out in closed form (it gives the exerfc term of the steady part) and
// the smooth remainder is summed by the midpoint rule, which converges
// geometrically in the width of the strip where the remainder is analytic.

namespace bm {

// C/Co of the finite aquifer [0, L] at 0 <= x <= L and t > 0, for V > 0, D > 0,
// lambda >= 0 (no decay when 0). Absolute accuracy near 1e-14; the value is
// kept within [0, 1], where the solution lies.
double finiteRatioByInversion(bool cauchy, double V, double D, double L, double lambda, double x, double t);

// What the inversion at one x shares over all times.
struct InversionPlace {
    bool cauchy = false;
    double V = 0, D = 0, L = 0, lambda = 0, x = 0;
    double U = 0;       // sqrt(V^2 + 4 D lambda)
    double excess = 0;  // U - V
    double c = 0, u = 0, h = 0, l = 0;
    double Ru = 0;      // R at the pole sigma = u
};
InversionPlace inversionPlace(bool cauchy, double V, double D, double L, double lambda, double x);
// The same value as finiteRatioByInversion at the place's x and time t.
double finiteRatioByInversion(const InversionPlace& place, double t);

// The same, its midpoint nodes summed one at a time in complex arithmetic:
// the plain form of the sum above, which takes four nodes at a time in
// vector lanes (and gives the same bits).
double finiteRatioByInversionNodeByNode(bool cauchy, double V, double D, double L, double lambda, double x, double t);

// The number of midpoint nodes the inversion above uses at (x, t) (its cost).
int inversionNodeCount(double V, double D, double lambda, double x, double t);

}  // namespace bm
