#pragma once
// What the two finite-aquifer series (Dirichlet and Cauchy inlet) share: the
// quantities they are built from, and how their sum becomes C/Co, or gives
// way to the inversion of the Laplace transform where a bound of its rounding
// exceeds the tolerance.

#include <cmath>
#include <limits>
#include <numbers>

namespace bm::finite_series {

// The closed forms are used as they stand wherever their rounding error in
// double precision, bounded per call from the magnitudes they combine, stays
// below this; elsewhere the same solution comes from a form that does not cancel.
constexpr double kRoundingTolerance = 1e-12;
constexpr double kEpsilon = std::numeric_limits<double>::epsilon();
// exp of more than this overflows, or nearly: the series form is beyond use there.
constexpr double kLargestExponent = 700.0;

// Quantities shared by the two finite-aquifer series.
// The x at which the Cauchy series is evaluated: the mid-point of the aquifer
// a little downstream of itself, every other x as it is.
inline double seriesX(double x, double L) { return x == L / 2.0 ? x * 1.001 : x; }

struct FiniteShared {
    double a;    // V / (2D)
    double aL;   // a L
    double aL2;  // (a L)^2
    double L2;   // L^2
    double B;    // lambda L^2 / D
    double G;    // V^2 t / (4D)
};

FiniteShared finiteShared(double V, double D, double L, double lambda, double t);

// What the evaluation of a finite-aquifer series leaves uncertain in its sum.
struct SeriesErrors {
    double spread = 0.0;    // the terms' rounding, in units of epsilon
    double envelope = 0.0;  // size of the last term without its sine and cosine factors
    double beta = 0.0;      // its eigenvalue
    double damping = 0.0;   // and its exponent b D t / L^2
    bool stopped = false;   // the series left by its tolerance test, not by running out

    // The terms after a tolerance stop, which an exponential factor of
    // exp(e) may make count: their sizes fall at least as
    // (1 + k pi / beta) r^k with r = exp(-d), d = (2 pi beta + pi^2) D t / L^2.
    // With exact false, r / (1 - r) <= 1 / d stands in for the exponential.
    double tail(bool exact) const {
        if (!stopped || envelope == 0.0) return 0.0;
        constexpr double pi = std::numbers::pi;
        const double step = pi / beta;
        const double d = damping * step * (2.0 + step);
        if (!(d > 0.0)) return std::numeric_limits<double>::infinity();
        if (!exact) {
            const double inverse = 1.0 / d;
            return envelope * inverse * (1.0 + step * (1.0 + inverse));
        }
        const double r = std::exp(-d);
        return envelope * r / (1.0 - r) * (1.0 + step / (1.0 - r));
    }
};

// The finite series end in F - 2 M exp(e) sum (M = 1 for the Dirichlet inlet),
// where the terms of sum are of order 1 and must cancel to exp(-e): the
// rounding of the sum and the terms left out after the tolerance stop are
// multiplied by exp(e); F carries its own exponents (steadySize, in units of
// epsilon relative to F). Where the bound of these errors exceeds the
// tolerance, at points of the aquifer, the inversion gives the solution
// instead. A series that ran out of terms keeps its sum so far: that shortfall
// is what its flag reports.
struct FiniteEnd {
    bool cauchy;
    double V, D, L, lambda, x, t;
    double F, steadySize;
    double multiplier;    // M
    double exponent;      // e = a x - G - lambda t
    double exponentSize;  // |a x| + G + lambda t, for the rounding of e
};

// The bound applies at points of the aquifer with V, D, L > 0, lambda >= 0, t > 0.
inline bool covered(const FiniteEnd& end) {
    return end.V > 0.0 && end.D > 0.0 && end.L > 0.0 && end.t > 0.0 && end.x >= 0.0 && end.x <= end.L &&
           end.lambda >= 0.0 && std::isfinite(end.V) && std::isfinite(end.D) && std::isfinite(end.L) &&
           std::isfinite(end.t) && std::isfinite(end.lambda) && std::isfinite(end.exponent);
}

// The inversion at the end's point.
double byInversion(const FiniteEnd& end);

// The two parts of the error bound that do not depend on the sum: F's own
// rounding, and the factor 2 M exp(e) that multiplies the sum's.
inline double steadyError(const FiniteEnd& end) { return kEpsilon * std::fabs(end.F) * end.steadySize; }
inline double sumScale(const FiniteEnd& end, double factor) { return 2.0 * end.multiplier * factor; }

// F - 2 M exp(e) sum, or the inversion where the bound exceeds the tolerance.
double finiteResult(const FiniteEnd& end, double sum, const SeriesErrors& errors);

// The bound of finiteResult grows with the spread (every other part of it is
// at least 0, and rounding keeps the order of what it rounds): once
// steady + scale * epsilon * spread alone exceeds the tolerance, the point
// goes to the inversion whatever the rest of the series adds.
inline bool inversionCertain(double steady, double scale, double spread) {
    return steady + scale * (kEpsilon * spread) > kRoundingTolerance;
}

// The steady part of the Cauchy solution with decay, N / H (U and Q as shared).
double cauchySteady(double V, double D, double L, double U, double Q, double x);

// How the Cauchy series ends at (x, t); F is 1 without decay (the exact 1).
FiniteEnd cauchyEnd(const FiniteShared& s, double V, double D, double L, double lambda, double M, double U, double F,
                    double x, double t);

}  // namespace bm::finite_series
