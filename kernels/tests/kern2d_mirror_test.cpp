// The infinite-width strip, Gaussian and point sources are the same on both
// sides of the source's axis y = Yc to the last bit, where the offsets from Yc
// are exact mirror images (the grid computes such points once): random flows,
// points near the source and far out, early and late, with and without decay.

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
void expectMirrored(Kernel kernel, const char* source) {
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
        if (i % 5 == 0) f.recharge = between(1e-4, 1e-2);
        TwoDimParameters p = record(f);
        p.sourceYc = std::round(between(1, 1e3));
        p.sourceWidth = std::round(between(1, 400));
        p.sourceStdDev = between(1, 100);
        p.injectionRate = between(1e-2, 10);
        const double t = between(1e-2, 1e4);
        const double x = (i % 4 == 0 ? -1 : 1) * between(1e-2, 2e3);
        const double offset = std::round(between(1e-3, 2e3) * 8) / 8;  // exact either way from Yc
        const double up = kernel(p, t, x, p.sourceYc + offset), down = kernel(p, t, x, p.sourceYc - offset);
        if (std::bit_cast<std::uint64_t>(up) != std::bit_cast<std::uint64_t>(down)) ++differing;
        if (up > 1e-12) ++nonZero;
    }
    EXPECT_EQ(differing, 0) << source;
    EXPECT_GT(nonZero, 1000) << source;  // the comparison saw real plumes, not only zeros
}

}  // namespace

TEST(Kern2dMirror, StripIsTheSameOnBothSides) { expectMirrored(stripAt, "strip"); }

TEST(Kern2dMirror, GaussianIsTheSameOnBothSides) { expectMirrored(gaussianAt, "Gaussian"); }

// The point source takes its coordinates already shifted to the source.
TEST(Kern2dMirror, PointSourceIsTheSameOnBothSides) {
    expectMirrored([](const TwoDimParameters& p, double t, double x,
                      double y) { return pointAt(p, t, x, y - p.sourceYc); },
                   "point");
}
