#include "kernels/erfc_scaled.h"

#include <cmath>

namespace bm {

namespace {

constexpr double kInvSqrtPi = 0.56418958354775628695;

// Above this argument erfc(b) leaves the normal range, so the scaled form takes over.
constexpr double kScaledFrom = 26.0;

// exp(s) * m where the product may be a normal double although exp(s) alone
// is not: the exponential is taken in two halves around the factor.
double scaledExp(double s, double m) {
    if (m == 0.0) return 0.0;
    if (s > 700.0 || s < -700.0) {
        const double half = std::exp(0.5 * s);
        return (half * m) * half;
    }
    return std::exp(s) * m;
}

// exp(b^2) erfc(b) for b >= 26 by its asymptotic series
// 1 / (b sqrt(pi)) * sum (-1)^k (2k - 1)!! / (2 b^2)^k, whose terms fall by a
// factor of at least 1000 per step here.
double erfcxLarge(double b) {
    const double z = 0.5 / b / b;
    double term = 1.0;
    double sum = 1.0;
    for (int k = 1; k < 40; ++k) {
        term *= -(2.0 * k - 1.0) * z;
        sum += term;
        if (std::fabs(term) < 1e-18 * sum) break;
    }
    return sum * kInvSqrtPi / b;
}

}  // namespace

double erfcx(double b) {
    if (b >= kScaledFrom) return erfcxLarge(b);
    // exp(b^2) as exp(hi) (1 + lo) with hi + lo = b^2 exactly, so that the
    // rounding of b^2 does not reach the result.
    const double hi = b * b;
    const double lo = std::fma(b, b, -hi);
    return std::erfc(b) * std::exp(hi) * (1.0 + lo);
}

double expErfc(double a, double b) {
    if (b < kScaledFrom) {
        // erfc(b) lies between 5e-296 and 2 here: a normal factor.
        return scaledExp(a, std::erfc(b));
    }
    // exp(a) erfc(b) = exp(a - b^2) erfcx(b), with a - b^2 carried in two
    // parts so that the large square loses no digits of the exponent.
    const double hi = b * b;
    if (std::isinf(hi)) return 0.0;  // a - b^2 far below the exponent range
    const double lo = std::fma(b, b, -hi);  // b^2 = hi + lo exactly
    const double s = a - hi;
    const double bb = s - a;
    const double roundOff = (a - (s - bb)) + (-hi - bb);  // a - hi = s + roundOff exactly
    const double tail = roundOff - lo;
    const double m = erfcxLarge(b);
    return scaledExp(s, m + m * tail);
}

}  // namespace bm
