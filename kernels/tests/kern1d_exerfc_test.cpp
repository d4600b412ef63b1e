// exerfc against an extended-precision evaluation made here: the positive
// series of erf for small arguments, the continued fraction of erfc for large
// ones, and the exponent a - b^2 taken in long double, whose range holds
// exp(800) and exp(-100000) alike.

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <vector>

#include "kernels/kern1d.h"
#include "shell/base/runtime_error.h"
#include "testing/is_close.h"

namespace bm {
namespace {

using Real = long double;
const Real kSqrtPi = std::sqrt(3.14159265358979323846264338327950288L);

// exp(x^2) erfc(x), x >= 0.
Real erfcxReference(Real x) {
    if (x < 2.5L) {
        // erf(x) = 2/sqrt(pi) exp(-x^2) sum 2^n x^(2n+1) / (2n+1)!!: all terms positive.
        Real term = x;
        Real sum = x;
        for (int n = 1; n < 400; ++n) {
            term *= 2.0L * x * x / (2.0L * n + 1.0L);
            sum += term;
            if (term < 1e-22L * sum) break;
        }
        const Real erf = 2.0L / kSqrtPi * std::exp(-x * x) * sum;
        return (1.0L - erf) * std::exp(x * x);
    }
    // erfc(x) = exp(-x^2)/sqrt(pi) * 1/(x + (1/2)/(x + 1/(x + (3/2)/(x + ...)))), evaluated from the tail.
    Real t = x;
    for (int k = 6000; k >= 1; --k) t = x + (k / 2.0L) / t;
    return 1.0L / (kSqrtPi * t);
}

// exp(a) erfc(b) in long double.
Real exerfcReference(double a, double b) {
    const Real bl = b;
    if (b >= 0) return std::exp(Real(a) - bl * bl) * erfcxReference(bl);
    return std::exp(Real(a)) * (2.0L - std::exp(-bl * bl) * erfcxReference(-bl));
}

TEST(Kern1dExerfc, MatchesExtendedPrecisionOverTheArgumentGrid) {
    const std::vector<double> as = {-800, -300, -50, -1, -1e-3, 0, 1e-3, 0.7, 1, 50, 300, 700, 709.5, 800};
    const std::vector<double> bs = {-30,  -6,   -2.6, -2.4, -1, -0.3, -1e-8, 0,  1e-8, 0.2, 0.5, 1,   2.4,  2.6,
                                    4,    7.5,  10,   15,   20, 25.9, 26,    26.1, 27, 30,  45, 100, 1e3, 1e5};
    int compared = 0;
    for (double a : as) {
        for (double b : bs) {
            const Real reference = exerfcReference(a, b);
            if (reference > Real(DBL_MAX)) {
                double r = 0;
                try {
                    exerfc(a, b, r);
                    ADD_FAILURE() << "no overflow for a=" << a << " b=" << b;
                } catch (const RuntimeError& e) {
                    EXPECT_EQ(e.number(), err::Overflow);
                }
                continue;
            }
            double r = -1;
            exerfc(a, b, r);
            if (reference < Real(DBL_MIN)) {
                EXPECT_LE(r, 2 * DBL_MIN) << "a=" << a << " b=" << b;
                continue;
            }
            EXPECT_CLOSE(r, static_cast<double>(reference), 1e-13, 0.0) << "a=" << a << " b=" << b;
            ++compared;
        }
    }
    EXPECT_GT(compared, 250);
}

TEST(Kern1dExerfc, LargeExponentWithLargeArgument) {
    // exp(800) and erfc(30) alone are inf and 0; their product is an ordinary number.
    double r = 0;
    exerfc(800.0, 30.0, r);
    EXPECT_CLOSE(r, static_cast<double>(exerfcReference(800.0, 30.0)), 1e-13, 0.0);
    EXPECT_GT(r, 1e-46);
    EXPECT_LT(r, 1e-45);
    // a - b^2 cancels exactly: exp(0) erfcx(1e6), close to 1/(1e6 sqrt(pi)).
    exerfc(1e12 - 3.0, 1e6, r);
    EXPECT_CLOSE(r, static_cast<double>(exerfcReference(1e12 - 3.0, 1e6)), 1e-13, 0.0);
    exerfc(1e4, 100.0, r);
    EXPECT_CLOSE(r, static_cast<double>(exerfcReference(1e4, 100.0)), 1e-13, 0.0);
    // Past exp's own limit but within the doubles once multiplied by erfc(0.5).
    exerfc(710.0, 0.5, r);
    EXPECT_CLOSE(r, static_cast<double>(exerfcReference(710.0, 0.5)), 1e-13, 0.0);
}

TEST(Kern1dExerfc, AgreesWithTheLibraryErfcWhereThatIsNormal) {
    for (double b = -5.0; b <= 25.0; b += 0.37) {
        double r = 0;
        exerfc(0.0, b, r);
        EXPECT_CLOSE(r, std::erfc(b), 1e-13, 0.0) << b;
    }
}

TEST(Kern1dExerfc, TrueOverflowIsError6AndUnderflowIsZero) {
    double r = 0;
    EXPECT_THROW(
        {
            try {
                exerfc(1e5, 300.0, r);
            } catch (const RuntimeError& e) {
                EXPECT_EQ(e.number(), err::Overflow);
                throw;
            }
        },
        RuntimeError);
    EXPECT_THROW(exerfc(710.0, -1.0, r), RuntimeError);
    EXPECT_THROW(exerfc(std::nan(""), 1.0, r), RuntimeError);
    r = 1;
    exerfc(-1e5, -3.0, r);
    EXPECT_EQ(r, 0.0);
    r = 1;
    exerfc(10.0, 1e200, r);  // b^2 is beyond the doubles: the result underflows
    EXPECT_EQ(r, 0.0);
    exerfc(0.0, -1e200, r);
    EXPECT_EQ(r, 2.0);
}

}  // namespace
}  // namespace bm
