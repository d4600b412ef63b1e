#pragma once
// Independent long double evaluations of one-dimensional transport in a
// semi-infinite aquifer, dC/dt = D C_xx - V C_x - lambda C, C(x, 0) = 0.
//
// With the inlet held from t = 0, the decaying solution is the time integral
// of the non-decaying solution's rate of change, weighted by exp(-lambda tau):
//   C(x, t) = integral_0^t exp(-lambda tau) dC0/dtau(x, tau) dtau
// (substitute C = exp(-lambda t) w). dC0/dtau is the response to a pulse at the
// inlet:
//   Dirichlet: x / (2 sqrt(pi D tau^3)) exp(-(x - V tau)^2 / (4 D tau))
//   Cauchy:    exp(-xi^2) (V / sqrt(pi D tau) - V^2 / (2D) erfcx(eta)),
//              xi = (x - V tau) / (2 sqrt(D tau)), eta = (x + V tau) / (2 sqrt(D tau)).
// The integral is taken by adaptive Gauss-Kronrod quadrature in long double.
// The complementary error function is this file's own: a positive series for
// small arguments and a continued fraction for large ones.

#include <functional>

namespace bm::testkit {

// exp(x^2) erfc(x) in long double, for any x.
long double erfcxLong(long double x);
// erfc(x) in long double.
long double erfcLong(long double x);

// Adaptive Gauss-Kronrod (7/15) integral of f over [a, b] to an absolute
// tolerance, starting from `panels` equal panels.
long double integrate(const std::function<long double(long double)>& f, long double a, long double b,
                      long double tolerance, int panels = 64);

// The pulse responses above, at tau > 0.
long double dirichletPulse(long double V, long double D, long double x, long double tau);
long double cauchyPulse(long double V, long double D, long double x, long double tau);

// C/Co by the time integral of the pulse response (semi-infinite aquifer).
long double semiInfiniteDirichletByQuadrature(double V, double D, double lambda, double x, double t);
long double semiInfiniteCauchyByQuadrature(double V, double D, double lambda, double x, double t);

// The Dirichlet closed form (Ogata-Banks with decay) in long double with this
// file's erfc:
//   (exp((V - U) x / 2D) erfc((x - U t) / S) + exp((V + U) x / 2D) erfc((x + U t) / S)) / 2.
long double semiInfiniteDirichletClosedForm(double V, double D, double lambda, double x, double t);

}  // namespace bm::testkit
