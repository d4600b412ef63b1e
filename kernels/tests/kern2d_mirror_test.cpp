// The infinite-width strip and Gaussian sources are the same on both sides of
// the source's axis y = Yc to the last bit, where the grid's offsets from Yc
// are exact mirror images.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>

#include "kernels/kern2d.h"
#include "kernels/tests/kern2d_reference.h"

using namespace bm;
using namespace bm::kern2dref;

namespace {

template <class Kernel>
void expectMirrored(Kernel kernel, bool gaussian) {
    std::mt19937_64 random(77);
    auto between = [&](double low, double high) {
        return std::exp(std::uniform_real_distribution<double>(std::log(low), std::log(high))(random));
    };
    int nonZero = 0, differing = 0;
    for (int i = 0; i < 20000; ++i) {
        Flow f;
        f.v = i % 7 == 0 ? 0.0 : between(1e-3, 10);
        f.dx = between(1e-3, 50);
        f.dy = f.dx * between(1e-2, 1);
        f.halfLife = i % 3 == 0 ? 1e300 : between(1, 1e4);
        TwoDimParameters p = record(f);
        p.sourceYc = std::ldexp(std::round(between(1, 1e3)), 0);
        p.sourceWidth = std::round(between(1, 400));
        p.sourceStdDev = between(1, 100);
        const double t = between(1e-2, 1e4);
        const double x = between(1e-2, 2e3);
        const double offset = std::round(between(1e-3, 2e3) * 8) / 8;  // exact either way from Yc
        const double up = kernel(p, t, x, p.sourceYc + offset), down = kernel(p, t, x, p.sourceYc - offset);
        if (std::bit_cast<std::uint64_t>(up) != std::bit_cast<std::uint64_t>(down)) ++differing;
        if (up > 1e-12) ++nonZero;
    }
    EXPECT_EQ(differing, 0) << (gaussian ? "Gaussian" : "strip");
    EXPECT_GT(nonZero, 1000);
}

}  // namespace

TEST(Kern2dMirror, StripIsTheSameOnBothSides) { expectMirrored(stripAt, false); }

TEST(Kern2dMirror, GaussianIsTheSameOnBothSides) { expectMirrored(gaussianAt, true); }
