#include "kernels/kern3d_special.h"

#include <cmath>

namespace bm::k3 {

namespace {
// Past this argument erfc(b) is below 1e-295 and about to lose bits to underflow;
// the asymptotic series of erfcx is then good to 1e-19 with a dozen terms.
constexpr double kAsymptoticFrom = 26.0;
// erfc(6.5) = 3.8e-20: a share this far out is below the rounding of 1.
constexpr double kSaturated = 6.5;
constexpr double kInvSqrtPi = 0.56418958354775628695;
}  // namespace

double erfcx(double b) {
    if (b < kAsymptoticFrom) {
        // exp(b^2) with b^2 = hi + lo split exactly, so that the rounding of b^2
        // (up to 676 * 1.1e-16) does not reach the result.
        const double hi = b * b;
        const double lo = std::fma(b, b, -hi);
        return std::exp(hi) * (1.0 + lo) * std::erfc(b);
    }
    // 1/(b sqrt(pi)) * sum (-1)^n (2n-1)!! / (2 b^2)^n
    const double x = 1.0 / (2.0 * b * b);
    double term = 1.0, sum = 1.0;
    for (int n = 1; n <= 12; ++n) {
        term *= -(2.0 * n - 1.0) * x;
        sum += term;
    }
    return kInvSqrtPi / b * sum;
}

double expErfc(double a, double b) {
    if (b < 0.5) {
        // erfc(b) lies in (0.47, 2]: only exp(a) can go out of range.
        const double e = std::erfc(b);
        if (a <= 700.0) return std::exp(a) * e;
        return std::exp(a + std::log(e));
    }
    if (a <= 700.0 && b < kAsymptoticFrom) return std::exp(a) * std::erfc(b);
    const double hi = b * b;
    const double lo = std::fma(b, b, -hi);
    return std::exp((a - hi) - lo) * erfcx(b);
}

double intervalShare(double d1, double d2, double r) {
    const double a1 = d1 * r;
    const double a2 = d2 * r;
    if (a1 >= 0.0 && a2 >= 0.0) {
        // Inside: 1 less the two tails that spread out over the ends.
        double out = 0.0;
        if (a1 < kSaturated) out += std::erfc(a1);
        if (a2 < kSaturated) out += std::erfc(a2);
        return 1.0 - 0.5 * out;
    }
    // Outside, on the side of the negative distance: the near tail less the far one.
    const double nearArg = a1 < 0.0 ? -a1 : -a2;
    const double farArg = a1 < 0.0 ? a2 : a1;
    if (nearArg >= kSaturated) return 0.0;
    const double farTail = farArg < kSaturated ? std::erfc(farArg) : 0.0;
    return 0.5 * (std::erfc(nearArg) - farTail);
}

}  // namespace bm::k3
