#include <gtest/gtest.h>

#include <cmath>

#include "kernels/kern3d_functions.h"
#include "testing/is_close.h"

using namespace bm;

namespace {
// exp(a) erfc(b) in long double, where both factors are in range (the long
// double exponent reaches 1e4932).
double longExpErfc(double a, double b) {
    return static_cast<double>(std::exp(static_cast<long double>(a)) * std::erfc(static_cast<long double>(b)));
}
}  // namespace

TEST(Kern3dSpecial, ExpErfcMatchesExtendedPrecisionOverItsRange) {
    const double as[] = {-700, -50, -1, 0, 0.3, 5, 100, 690, 800, 2000};
    const double bs[] = {-20, -3, -0.4, 0, 0.2, 0.49, 0.5, 0.51, 1, 3, 6, 10, 25.9, 26, 26.1, 30, 45};
    for (double a : as) {
        for (double b : bs) {
            const double expected = longExpErfc(a, b);
            if (!(expected > 1e-300) || !(expected < 1e300)) continue;  // not a normal double
            EXPECT_CLOSE(k3::expErfc(a, b), expected, 1e-13, 0) << "a=" << a << " b=" << b;
        }
    }
}

TEST(Kern3dSpecial, ExpErfcBalancesHugeFactors) {
    // exp(800) overflows and erfc(30) underflows in double; their product is 1e-44 scale.
    const double expected = longExpErfc(800, 30);
    EXPECT_GT(expected, 1e-50);
    EXPECT_CLOSE(k3::expErfc(800, 30), expected, 1e-13, 0);
    // a = b^2 exactly: exp(b^2) erfc(b) -> 1 / (b sqrt(pi)) for large b.
    const double b = 1000.0;
    EXPECT_CLOSE(k3::expErfc(b * b, b), 1.0 / (b * std::sqrt(3.14159265358979323846)) * (1 - 0.5 / (b * b)), 1e-12, 0);
    // Truly too large: infinity, for the caller to report.
    EXPECT_TRUE(std::isinf(k3::expErfc(1000, -1)));
}

TEST(Kern3dSpecial, ScaledErfcAgreesAcrossTheSwitchToItsAsymptoticSeries) {
    for (double b : {0.5, 2.0, 10.0, 25.0, 25.99}) {
        const double expected = static_cast<double>(std::exp(static_cast<long double>(b) * b) * std::erfc(static_cast<long double>(b)));
        EXPECT_CLOSE(k3::erfcx(b), expected, 2e-14, 0) << b;
    }
    for (double b : {26.0, 40.0, 1e3, 1e8}) {
        const long double lb = b;
        const long double expected = std::exp(lb * lb) * std::erfc(lb);
        if (b < 100) {
            EXPECT_CLOSE(k3::erfcx(b), static_cast<double>(expected), 2e-14, 0) << b;
        }
        EXPECT_CLOSE(k3::erfcx(b), 1.0 / (b * std::sqrt(3.14159265358979323846)), 1.0 / (b * b), 0) << b;
    }
}

TEST(Kern3dSpecial, IntervalShareIsTheGaussianMassOverTheInterval) {
    // Half of the mass at an edge, all of it deep inside, none far out.
    EXPECT_CLOSE(k3::intervalShare(0.0, 1e9, 1.0), 0.5, 0, 1e-16);
    EXPECT_EQ(k3::intervalShare(100.0, 100.0, 1.0), 1.0);
    EXPECT_EQ(k3::intervalShare(-100.0, 101.0, 1.0), 0.0);
    // Zero length: nothing.
    EXPECT_EQ(k3::intervalShare(-0.3, 0.3, 1.0), 0.0);
    EXPECT_EQ(k3::intervalShare(0.0, 0.0, 1.0), 0.0);
    // Plain erf differences, and small tails to relative accuracy.
    EXPECT_CLOSE(k3::intervalShare(0.7, 1.9, 0.8), 0.5 * (std::erf(0.56) + std::erf(1.52)), 1e-15, 0);
    const long double far = 0.5L * (std::erfc(4.0L) - std::erfc(6.0L));
    EXPECT_CLOSE(k3::intervalShare(-4.0, 6.0, 1.0), static_cast<double>(far), 1e-14, 0);
    EXPECT_CLOSE(k3::intervalShare(6.0, -4.0, 1.0), static_cast<double>(far), 1e-14, 0);
}
