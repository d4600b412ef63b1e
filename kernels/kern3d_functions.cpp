#include "kernels/kern3d_functions.h"

#include <cmath>

namespace bm::k3 {

namespace {
// erfc(6.5) = 3.8e-20: a share this far out is below the rounding of 1.
constexpr double kSaturated = 6.5;
}  // namespace

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
