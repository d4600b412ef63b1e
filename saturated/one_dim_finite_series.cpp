#include "saturated/one_dim_finite_series.h"

#include "saturated/one_dim_inversion.h"
#include "shell/base/checked_math.h"

namespace bm::finite_series {

FiniteShared finiteShared(double V, double D, double L, double lambda, double t) {
    FiniteShared s{};
    s.a = fp::div(V, 2.0 * D);
    s.aL = fp::mul(s.a, L);
    s.aL2 = fp::mul(s.aL, s.aL);
    s.L2 = fp::mul(L, L);
    s.B = fp::div(fp::mul(lambda * L, L), D);
    s.G = fp::div(fp::mul(V * V, t), 4.0 * D);
    return s;
}

double byInversion(const FiniteEnd& end) {
    return finiteRatioByInversion(end.cauchy, end.V, end.D, end.L, end.lambda, end.x, end.t);
}

double finiteResult(const FiniteEnd& end, double sum, const SeriesErrors& errors) {
    const bool inside = covered(end);
    if (inside && end.exponent > kLargestExponent) return byInversion(end);
    const double factor = fp::exp(end.exponent);
    if (inside) {
        const double steady = steadyError(end);
        const double rounding = kEpsilon * (errors.spread + std::fabs(sum) * (2.0 + end.exponentSize));
        const double scale = sumScale(end, factor);
        // (a NaN bound is no bound)
        if (!(steady + scale * (rounding + errors.tail(false)) <= kRoundingTolerance) &&
            !(steady + scale * (rounding + errors.tail(true)) <= kRoundingTolerance))
            return byInversion(end);
    }
    return fp::checked(end.F - 2.0 * end.multiplier * factor * sum);
}

double cauchySteady(double V, double D, double L, double U, double Q, double x) {
    const double N = 2.0 * V *
                     (fp::exp(fp::div((V - U) * x, 2.0 * D)) +
                      fp::exp(fp::div((U + V) * x - 2.0 * U * L, 2.0 * D)) * Q);
    const double H = Q * (V - U) * fp::exp(-fp::div(U * L, D)) + (U + V);
    return fp::div(N, H);
}

FiniteEnd cauchyEnd(const FiniteShared& s, double V, double D, double L, double lambda, double M, double U, double F,
                    double x, double t) {
    if (lambda != 0.0)
        return FiniteEnd{.cauchy = true, .V = V, .D = D, .L = L, .lambda = lambda, .x = x, .t = t,
                         .F = F, .steadySize = 4.0 + U * L / D, .multiplier = M,
                         .exponent = s.a * x - s.G - lambda * t,
                         .exponentSize = std::fabs(s.a * x) + s.G + lambda * t};
    return FiniteEnd{.cauchy = true, .V = V, .D = D, .L = L, .lambda = 0.0, .x = x, .t = t,
                     .F = 1.0, .steadySize = 0.0, .multiplier = M, .exponent = s.a * x - s.G,
                     .exponentSize = std::fabs(s.a * x) + s.G};
}

}  // namespace bm::finite_series
