// The integration oracle of the reference solutions against integrals known in
// closed form.

#include <gtest/gtest.h>

#include <cmath>

#include "testing/gauss_kronrod.h"
#include "testing/is_close.h"

namespace bm::testkit {
namespace {

TEST(GaussKronrod, OnePanelIsExactForPolynomialsUpToDegreeTwentyTwo) {
    // The integral of x^22 over [0, 1] is 1/23; the Gauss 7 part is not exact for it.
    const auto p = kronrodPanel([](double x) { return std::pow(x, 22); }, 0.0, 1.0);
    EXPECT_CLOSE(p.value, 1.0 / 23.0, 1e-14, 0.0);
    EXPECT_GT(p.error, 1e-8);
    const auto cubic = kronrodPanel([](double x) { return x * x * x - 2 * x; }, -1.0, 3.0);
    EXPECT_CLOSE(cubic.value, (81.0 / 4 - 9.0) - (1.0 / 4 - 1.0), 1e-14, 0.0);
    EXPECT_LT(cubic.error, 1e-12);
}

TEST(GaussKronrod, LocalHalvingMeetsTheTolerance) {
    const double runge = adaptiveGaussKronrod([](double x) { return 1 / (1 + 25 * x * x); }, -1.0, 1.0, 1e-13);
    EXPECT_CLOSE(runge, 0.4 * std::atan(5.0), 1e-13, 0.0);
    // A kink: |x - 1/3| over [0, 1] is 1/18 + 2/9.
    const double kink = adaptiveGaussKronrod([](double x) { return std::fabs(x - 1.0 / 3); }, 0.0, 1.0, 1e-12);
    EXPECT_CLOSE(kink, 1.0 / 18 + 2.0 / 9, 1e-11, 0.0);
}

TEST(GaussKronrod, ABudgetStopsTheHalving) {
    long budget = 45;
    const HalvingLimits limits{40, 0.0, &budget};
    adaptiveGaussKronrod([](double x) { return std::sqrt(x); }, 0.0, 1.0, 1e-300, limits);
    EXPECT_LE(budget, 0);
    EXPECT_GT(budget, -15 * 40);
}

TEST(GaussKronrod, GlobalRefinementInLongDouble) {
    const long double e = globalGaussKronrod([](long double x) { return std::exp(x); }, 0.0L, 1.0L, 1e-18L, 1);
    EXPECT_NEAR(static_cast<double>(e - (std::exp(1.0L) - 1)), 0.0, 1e-17);
    // The square root's end point needs the refinement: 2/3.
    const long double root = globalGaussKronrod([](long double x) { return std::sqrt(x); }, 0.0L, 1.0L, 1e-15L, 4);
    EXPECT_NEAR(static_cast<double>(root - 2.0L / 3), 0.0, 1e-14);
}

}  // namespace
}  // namespace bm::testkit
