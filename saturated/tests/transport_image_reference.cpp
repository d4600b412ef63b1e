#include "transport_image_reference.h"

#include <cmath>
#include <stdexcept>

#include "testing/transport_green_reference.h"

namespace bm::testkit {

namespace {

using Real = long double;
const Real kPi = 3.14159265358979323846264338327950288L;

// The outlet's averaging of the Cauchy solution.
Real averagedCauchy(double V, double D, double lambda, double z, double t) {
    auto integrand = [&](Real w) {
        return 2 * std::exp(-2 * w) *
               semiInfiniteCauchyClosedForm(V, D, lambda, static_cast<double>(z + 2 * D * w / V), t);
    };
    return integrate(integrand, 0, 40, 1e-15L, 8);  // exp(-80) beyond
}

}  // namespace

long double semiInfiniteCauchyClosedForm(double V, double D, double lambda, double x, double t) {
    if (t == 0) return 0;
    const Real v = V, d = D, X = x, T = t, L = lambda;
    const Real S = 2 * std::sqrt(d * T);
    const Real xi = (X - v * T) / S, eta = (X + v * T) / S;
    // exp(V x / D) erfc(eta) = exp(-xi^2) erfcx(eta): the large exponents cancel exactly.
    const Real gauss = std::exp(-xi * xi);
    if (lambda == 0) {
        // 1/2 erfc(xi) + sqrt(V^2 t / (pi D)) exp(-xi^2) - 1/2 (1 + V (x + V t) / D) exp(V x / D) erfc(eta)
        return erfcLong(xi) / 2 +
               gauss * (std::sqrt(v * v * T / (kPi * d)) - (1 + v * (X + v * T) / d) * erfcxLong(eta) / 2);
    }
    const Real U = std::sqrt(v * v + 4 * d * L);
    const Real shared = gauss * std::exp(-L * T);  // of e1 and e3, and of e2 where its erfc is scaled
    const Real e1 = shared * erfcxLong(eta);
    const Real below = (X - U * T) / S;
    const Real e2 = below >= 0 ? shared * erfcxLong(below) : std::exp((v - U) * X / (2 * d)) * erfcLong(below);
    const Real e3 = shared * erfcxLong((X + U * T) / S);
    return ((U / v - 1) * e2 + 2 * e1 - (U / v + 1) * e3) * v * v / (4 * L * d);
}

long double semiInfiniteDirichletScaled(double V, double D, double lambda, double x, double t) {
    if (t == 0) return x == 0 ? 1 : 0;
    const Real v = V, d = D, X = x, T = t, L = lambda;
    const Real S = 2 * std::sqrt(d * T);
    const Real U = std::sqrt(v * v + 4 * d * L);
    const Real xi = (X - v * T) / S;
    const Real shared = std::exp(-xi * xi - L * T);
    const Real below = (X - U * T) / S;
    const Real near = below >= 0 ? shared * erfcxLong(below) : std::exp((v - U) * X / (2 * d)) * erfcLong(below);
    return (near + shared * erfcxLong((X + U * T) / S)) / 2;
}

long double finiteByReflection(bool cauchy, double V, double D, double lambda, double L, double x, double t) {
    if (V * L / D < 60) throw std::invalid_argument("the first reflection alone needs V L / D >= 60");
    const double z = 2 * L - x;
    const Real weight = std::exp(-Real(V) * (L - x) / D);
    if (!cauchy)
        return semiInfiniteDirichletScaled(V, D, lambda, x, t) +
               weight *
                   (semiInfiniteDirichletScaled(V, D, lambda, z, t) - semiInfiniteCauchyClosedForm(V, D, lambda, z, t));
    return semiInfiniteCauchyClosedForm(V, D, lambda, x, t) +
           weight * (semiInfiniteCauchyClosedForm(V, D, lambda, z, t) - averagedCauchy(V, D, lambda, z, t));
}

}  // namespace bm::testkit
