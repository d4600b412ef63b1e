#include <gtest/gtest.h>

#include <cmath>

#include "kernels/gauss_legendre.h"
#include "testing/is_close.h"

using namespace bm;

namespace {
double integrate(const std::vector<double>& x, const std::vector<double>& w, double (*f)(double)) {
    long double s = 0;
    for (std::size_t i = 0; i < x.size(); ++i) s += w[i] * f(x[i]);
    return static_cast<double>(s);
}
}  // namespace

TEST(GaussLegendre, SmallRuleKnownNodes) {
    std::vector<double> x, w;
    gaussLegendre(2, x, w);
    EXPECT_CLOSE(x[1], 1.0 / std::sqrt(3.0), 0, 3e-16);
    EXPECT_CLOSE(x[0], -1.0 / std::sqrt(3.0), 0, 3e-16);
    EXPECT_CLOSE(w[0], 1.0, 0, 1e-15);
    gaussLegendre(3, x, w);
    EXPECT_CLOSE(x[1], 0.0, 0, 1e-17);
    EXPECT_CLOSE(w[1], 8.0 / 9.0, 0, 1e-15);
    EXPECT_CLOSE(x[2], std::sqrt(0.6), 0, 3e-16);
}

TEST(GaussLegendre, Rule256IntegratesHighPolynomialsAndSmoothFunctions) {
    std::vector<double> x, w;
    gaussLegendre(256, x, w);
    // Monomials x^k up to degree 511: integral over [-1,1] is 2/(k+1) for even k, 0 for odd.
    for (int k = 0; k <= 511; ++k) {
        long double s = 0;
        for (std::size_t i = 0; i < x.size(); ++i) s += w[i] * std::pow(static_cast<long double>(x[i]), k);
        const double exact = k % 2 ? 0.0 : 2.0 / (k + 1);
        EXPECT_CLOSE(static_cast<double>(s), exact, 1e-14, 1e-15) << "degree " << k;
    }
    EXPECT_CLOSE(integrate(x, w, [](double t) { return std::exp(t); }), std::exp(1.0) - std::exp(-1.0), 1e-14, 0);
    EXPECT_CLOSE(integrate(x, w, [](double t) { return std::cos(10 * t); }), 2 * std::sin(10.0) / 10, 1e-14, 1e-15);
    EXPECT_CLOSE(integrate(x, w, [](double t) { return 1 / (1 + 25 * t * t); }), 2 * std::atan(5.0) / 5, 1e-14, 0);
}
