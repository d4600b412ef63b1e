#include "testing/transport_green_reference.h"

#include <cmath>
#include <vector>

#include "testing/gauss_kronrod.h"

namespace bm::testkit {

namespace {

using Real = long double;
const Real kPi = 3.14159265358979323846264338327950288L;
const Real kSqrtPi = std::sqrt(kPi);

// The integral over u in (0, sqrt t) with tau = u^2, which takes the
// 1/sqrt(tau) of the Cauchy pulse at x = 0 out of the integrand; the pulse's
// peak near tau = x / V is a panel boundary.
Real timeIntegral(const std::function<Real(Real)>& pulse, double V, double lambda, double x, double t) {
    const Real top = std::sqrt(Real(t));
    auto integrand = [&](Real u) {
        const Real tau = u * u;
        return 2 * u * std::exp(-Real(lambda) * tau) * pulse(tau);
    };
    constexpr Real kTolerance = 1e-17L;
    const Real peak = V > 0 ? std::sqrt(Real(x) / V) : top;
    if (peak > 0 && peak < top)
        return integrate(integrand, 0, peak, kTolerance / 2) + integrate(integrand, peak, top, kTolerance / 2);
    return integrate(integrand, 0, top, kTolerance);
}

}  // namespace

long double erfcxLong(long double x) {
    if (x < 0) return 2 * std::exp(x * x) - erfcxLong(-x);
    if (x < 2) {
        // erf(x) = 2/sqrt(pi) exp(-x^2) sum 2^n x^(2n+1) / (2n+1)!!, all terms positive
        Real term = x, sum = x;
        for (int n = 1; n < 1000; ++n) {
            term *= 2 * x * x / (2 * n + 1);
            sum += term;
            if (term < 1e-22L * sum) break;
        }
        return std::exp(x * x) - 2 / kSqrtPi * sum;
    }
    // erfcx(x) = 1 / (sqrt(pi) K), K = x + (1/2)/(x + (2/2)/(x + (3/2)/(x + ...))), by modified Lentz.
    Real f = x, c = x, d = 0;
    for (int j = 1; j < 100000; ++j) {
        const Real a = j / 2.0L;
        d = x + a * d;
        c = x + a / c;
        d = 1 / d;
        const Real delta = c * d;
        f *= delta;
        if (std::fabs(delta - 1) < 1e-21L) break;
    }
    return 1 / (kSqrtPi * f);
}

long double erfcLong(long double x) {
    if (x < 0) return 2 - erfcLong(-x);
    return std::exp(-x * x) * erfcxLong(x);
}

long double integrate(const std::function<long double(long double)>& f, long double a, long double b,
                      long double tolerance, int panels) {
    return globalGaussKronrod(f, a, b, tolerance, panels);
}

long double dirichletPulse(long double V, long double D, long double x, long double tau) {
    const Real xi = (x - V * tau) / (2 * std::sqrt(D * tau));
    return x / (2 * std::sqrt(kPi * D * tau * tau * tau)) * std::exp(-xi * xi);
}

long double cauchyPulse(long double V, long double D, long double x, long double tau) {
    const Real root = 2 * std::sqrt(D * tau);
    const Real xi = (x - V * tau) / root, eta = (x + V * tau) / root;
    return std::exp(-xi * xi) * (V / std::sqrt(kPi * D * tau) - V * V / (2 * D) * erfcxLong(eta));
}

long double semiInfiniteDirichletByQuadrature(double V, double D, double lambda, double x, double t) {
    if (t == 0) return x == 0 ? 1 : 0;
    if (x == 0) return 1;  // the inlet itself
    return timeIntegral([&](Real tau) { return dirichletPulse(V, D, x, tau); }, V, lambda, x, t);
}

long double semiInfiniteCauchyByQuadrature(double V, double D, double lambda, double x, double t) {
    if (t == 0) return 0;
    return timeIntegral([&](Real tau) { return cauchyPulse(V, D, x, tau); }, V, lambda, x, t);
}

long double semiInfiniteDirichletClosedForm(double V, double D, double lambda, double x, double t) {
    if (t == 0) return x == 0 ? 1 : 0;
    const Real v = V, d = D, X = x, T = t;
    const Real U = std::sqrt(v * v + 4 * d * Real(lambda));
    const Real S = 2 * std::sqrt(d * T);
    const Real near = std::exp((v - U) * X / (2 * d)) * erfcLong((X - U * T) / S);
    const Real eta = (X + U * T) / S;  // >= 0: exp((V + U) x / 2D) erfc(eta) as one exponential times erfcx
    const Real far = std::exp((v + U) * X / (2 * d) - eta * eta) * erfcxLong(eta);
    return (near + far) / 2;
}

}  // namespace bm::testkit
