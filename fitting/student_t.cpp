#include <cmath>
#include <numbers>

#include "fitting/fitter.h"

namespace bm {

namespace {

// P(|T| <= t) for Student's t with n degrees of freedom, by the finite series
// in cos(theta), theta = atan(t / sqrt(n)), exact for whole n.
double centralProbability(double t, int n) {
    const double theta = std::atan(t / std::sqrt(static_cast<double>(n)));
    const double s = std::sin(theta), c = std::cos(theta), c2 = c * c;
    if (n % 2 == 0) {
        double term = 1.0, sum = 1.0;
        for (int k = 2; k <= n - 2; k += 2) {
            term *= c2 * (k - 1) / k;
            sum += term;
        }
        return s * sum;
    }
    if (n == 1) return 2.0 * theta / std::numbers::pi;
    double term = 1.0, sum = 1.0;
    for (int k = 3; k <= n - 2; k += 2) {
        term *= c2 * (k - 1) / k;
        sum += term;
    }
    return 2.0 / std::numbers::pi * (theta + s * c * sum);
}

}  // namespace

double studentT95(int degreesOfFreedom) {
    const int n = degreesOfFreedom < 1 ? 1 : degreesOfFreedom;
    double low = 0.0, high = 1000.0;
    for (int i = 0; i < 200 && high - low > 1e-13 * high; ++i) {
        const double middle = 0.5 * (low + high);
        (centralProbability(middle, n) < 0.95 ? low : high) = middle;
    }
    return 0.5 * (low + high);
}

}  // namespace bm
