// cnrml_3FL: the patch source in an aquifer of finite width and height.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <vector>

#include "kernels/gauss_legendre.h"
#include "kernels/kern3d.h"
#include "kernels/kern3d_finite.h"
#include "kernels/tests/kern3d_reference.h"
#include "shell/base/runtime_error.h"
#include "testing/is_close.h"

using namespace bm;
using kern3dref::decayOf;
using kern3dref::Worst;

namespace {


double finite(const ThreeDimParameters& p, double t, double x, double y, double z) {
    double c = -1;
    cnrml_3FL(p, t, x, y, z, c);
    return c;
}

// Aquifer y in [-20, 30], z in [0, 10]; patch y in [-5, 5], z in [2, 6].
ThreeDimParameters aquifer(double v, double dx, double dy, double dz, double halfLife, double recharge = 0) {
    ThreeDimParameters p = kern3dref::withMedium({}, v, dx, dy, dz, halfLife, recharge);
    p.yMin = -20;
    p.yMax = 30;
    p.yInterval = 5;
    p.zMin = 0;
    p.zMax = 10;
    p.zInterval = 1;
    p.porosity = 0.3;
    p.aquiferThickness = 10;
    p.sourceYc = 0;
    p.sourceZc = 4;
    p.sourceWidth = 10;
    p.sourceHeight = 4;
    return p;
}


// The Green's-function time integral with each transverse share summed over
// mirror images: walls, patch and point given in the aquifer's own coordinates
// (lower walls at 0, the point already inside).
double reference(const ThreeDimParameters& p, double t, double x, double yIn, double zIn, double w, double h, double p1,
                 double p2, double q1, double q2) {
    const kern3dref::Medium m{p.effectiveVelocity, p.effectiveDispersionX, p.effectiveDispersionY,
                              p.effectiveDispersionZ, decayOf(p)};
    const auto fy = kern3dref::boundedShare(yIn, p1, p2, w, m.dy);
    const auto fz = kern3dref::boundedShare(zIn, q1, q2, h, m.dz);
    const double r = std::sqrt(m.dy / m.dz);
    return kern3dref::patchIntegral(
        m, x, t, [&](double tau) { return fy(tau) * fz(tau); },
        {std::fabs(yIn - p1), std::fabs(yIn - p2), yIn, w - yIn, w, std::fabs(zIn - q1) * r, std::fabs(zIn - q2) * r,
         zIn * r, (h - zIn) * r, h * r},
        m.dy);
}

// The standard geometry of aquifer(): y from -20, z from 0.
double reference(const ThreeDimParameters& p, double t, double x, double y, double z) {
    return reference(p, t, x, y + 20, z, 50, 10, 15, 25, 2, 6);
}


struct Grid {
    std::vector<double> ts, xs, ys, zs;
};

// Compares every point by the automatic choice and by each path forced, and
// counts the points each path took by itself.
void compare(const ThreeDimParameters& p, const Grid& g, Worst& worst, int& seriesCount, int& imageCount) {
    for (double t : g.ts)
        for (double x : g.xs)
            for (double y : g.ys)
                for (double z : g.zs) {
                    const double expected = reference(p, t, x, y, z);
                    const double got = finite(p, t, x, y, z);
                    worst.add(got, expected);
                    EXPECT_CLOSE(got, expected, 1e-5, 1e-6) << "t=" << t << " x=" << x << " y=" << y << " z=" << z;
                    k3::FinitePath used;
                    k3::finiteAquiferRatio(p, t, x, y, z, k3::FinitePath::Automatic, &used);
                    (used == k3::FinitePath::Series ? seriesCount : imageCount)++;
                    const double images = k3::finiteAquiferRatio(p, t, x, y, z, k3::FinitePath::Images);
                    EXPECT_CLOSE(images, expected, 1e-5, 1e-6) << "images t=" << t << " x=" << x << " y=" << y << " z=" << z;
                    k3::FinitePath forced;
                    const double series = k3::finiteAquiferRatio(p, t, x, y, z, k3::FinitePath::Series, &forced);
                    if (forced == k3::FinitePath::Series) {
                        worst.add(series, expected);
                        EXPECT_CLOSE(series, expected, 1e-5, 1e-6) << "series t=" << t << " x=" << x << " y=" << y << " z=" << z;
                    }
                }
}

}  // namespace

TEST(Kern3dFinite, MatchesImageSumIntegralModerateDispersion) {
    Worst worst{"3FL moderate dispersion"};
    int series = 0, images = 0;
    const ThreeDimParameters p = aquifer(0.5, 2.0, 0.5, 0.05, 1e300);
    compare(p, {{1, 50, 400, 1e4}, {0.02, 3, 40, 300}, {0, 5, 12, 29}, {0.5, 2, 4, 9}}, worst, series, images);
    // Both ways of summing were exercised by the automatic choice.
    EXPECT_GT(series, 20);
    EXPECT_GT(images, 20);
}

TEST(Kern3dFinite, MatchesImageSumIntegralLargeDispersionDecayAndRecharge) {
    Worst worst{"3FL large dispersion, decay and recharge"};
    int series = 0, images = 0;
    const ThreeDimParameters p = aquifer(0.2, 30.0, 10.0, 5.0, 40, 0.003);
    compare(p, {{0.2, 5, 80, 5000}, {0.005, 1, 20, 150}, {-20, 0, 5, 30}, {0, 4, 6, 10}}, worst, series, images);
    EXPECT_GT(series, 20);
    EXPECT_GT(images, 10);
}

TEST(Kern3dFinite, MatchesImageSumIntegralSmallDispersionLongTimes) {
    Worst worst{"3FL small dispersion, long times"};
    int series = 0, images = 0;
    const ThreeDimParameters p = aquifer(1.0, 1e-2, 2e-3, 1e-4, 2000);
    compare(p, {{2, 60, 3000, 1e5}, {0.5, 50, 2000}, {0, 4.9, 5.1, 25}, {2, 3, 6.1, 9}}, worst, series, images);
    EXPECT_GT(series + images, 100);
}

TEST(Kern3dFinite, PatchCoveringTheWholeSectionIsTheOneDimensionalColumn) {
    Worst worst{"3FL full patch vs 1-D Dirichlet"};
    ThreeDimParameters p = aquifer(0.4, 1.5, 0.3, 0.1, 150, 0.002);
    p.sourceYc = 5;  // [-20, 30] exactly
    p.sourceWidth = 50;
    p.sourceZc = 5;
    p.sourceHeight = 30;  // beyond both walls: clipped to [0, 10]
    for (double t : {0.1, 20.0, 500.0, 1e5})
        for (double x : {1e-4, 0.7, 15.0, 120.0}) {
            const double expected = kern3dref::columnStep(x, t, 0.4, 1.5, decayOf(p));
            const double got = finite(p, t, x, 3.0, 7.0);
            worst.add(got, expected);
            EXPECT_CLOSE(got, expected, 1e-5, 1e-6) << "t=" << t << " x=" << x;
        }
}

TEST(Kern3dFinite, AquiferMuchWiderThanThePlumeIsTheUnboundedPatch) {
    Worst worst{"3FL wide aquifer vs 3IL"};
    std::vector<double> nodes, weights;
    gaussLegendre(256, nodes, weights);
    for (const auto& base : {aquifer(0.5, 2.0, 0.5, 0.05, 1e300), aquifer(0.1, 10.0, 3.0, 1.0, 30)}) {
        ThreeDimParameters p = base;
        p.yMin = -2000;
        p.yMax = 2000;
        p.zMin = -1000;
        p.zMax = 1000;
        for (double t : {2.0, 60.0, 600.0})
            for (double x : {0.01, 4.0, 30.0})
                for (double y : {0.0, 5.0, 9.0})
                    for (double z : {4.0, 6.0, 7.5}) {
                        double unbounded;
                        cnrml_3IL(p, t, x, y, z, unbounded, nodes.data(), weights.data());
                        const double got = finite(p, t, x, y, z);
                        worst.add(got, unbounded);
                        EXPECT_CLOSE(got, unbounded, 1e-5, 1e-6) << "t=" << t << " x=" << x << " y=" << y << " z=" << z;
                    }
    }
}

TEST(Kern3dFinite, FullHeightPatchIsTheFiniteStripInY) {
    // The patch fills the height: no z modes, and the answer is the strip of
    // the y direction alone, by image sums in the test.
    Worst worst{"3FL full height vs 2-D strip"};
    ThreeDimParameters p = aquifer(0.3, 1.0, 0.4, 0.02, 500);
    p.sourceZc = 5;
    p.sourceHeight = 10;
    for (double t : {3.0, 100.0, 4000.0})
        for (double x : {0.05, 5.0, 60.0})
            for (double y : {-20.0, -6.0, 5.0, 22.0}) {
                const kern3dref::Medium m{0.3, 1.0, 0.4, 0.02, decayOf(p)};
                const auto fy = kern3dref::boundedShare(y + 20, 15, 25, 50, m.dy);
                const double expected = kern3dref::patchIntegral(
                    m, x, t, fy, {std::fabs(y + 5), std::fabs(y - 5), y + 20, 30 - y, 50}, m.dy);
                const double got = finite(p, t, x, y, 1.0);
                worst.add(got, expected);
                EXPECT_CLOSE(got, expected, 1e-5, 1e-6) << "t=" << t << " x=" << x << " y=" << y;
            }
}

TEST(Kern3dFinite, PureAdvectionSeparatesIntoTwoFiniteStripFactors) {
    // Dx -> 0: the product of the two strips' image sums after the travel time x/v.
    Worst worst{"3FL separated finite strips at Pe 1e9"};
    ThreeDimParameters p = aquifer(1.0, 1e-8, 2.0, 0.3, 100);
    const double x = 10, tau = 10;
    for (double y : {-20.0, -5.0, 0.0, 17.0})
        for (double z : {0.0, 2.0, 4.5, 10.0}) {
            const double stripY = kern3dref::boundedShare(y + 20, 15, 25, 50, 2.0)(tau);
            const double stripZ = kern3dref::boundedShare(z, 2, 6, 10, 0.3)(tau);
            const double expected = std::exp(-decayOf(p) * tau) * stripY * stripZ;
            const double got = finite(p, 40.0, x, y, z);
            worst.add(got, expected);
            EXPECT_CLOSE(got, expected, 1e-5, 1e-6) << "y=" << y << " z=" << z;
        }
}

TEST(Kern3dFinite, CentredPatchWithVanishingModesStillConverges) {
    // A patch centred in the aquifer has every odd cosine coefficient zero; a
    // series stopped at the first small term would stop at m = 1.
    Worst worst{"3FL centred patch"};
    ThreeDimParameters p = aquifer(0.5, 2.0, 0.5, 0.05, 1e300);
    p.sourceYc = 5;
    p.sourceZc = 5;
    for (double x : {1.0, 10.0, 100.0})
        for (double y : {5.0, 6.0, 10.0}) {
            const double expected = reference(p, 300, x, y + 20, 5.0, 50, 10, 20, 30, 3, 7);
            const double got = finite(p, 300, x, y, 5.0);
            worst.add(got, expected);
            EXPECT_CLOSE(got, expected, 1e-5, 1e-6) << "x=" << x << " y=" << y;
        }
}

TEST(Kern3dFinite, PointsOutsideTheRangeAreItsMirrorImages) {
    const ThreeDimParameters p = aquifer(0.5, 2.0, 0.5, 0.05, 200);
    for (double x : {0.5, 20.0}) {
        // Reflection about y = 30 and about z = 0, and a full period of 2W further.
        EXPECT_CLOSE(finite(p, 100, x, 34, 4), finite(p, 100, x, 26, 4), 1e-12, 1e-15);
        EXPECT_CLOSE(finite(p, 100, x, -22, -3), finite(p, 100, x, -18, 3), 1e-12, 1e-15);
        EXPECT_CLOSE(finite(p, 100, x, 1 + 100, 4 + 20), finite(p, 100, x, 1, 4), 1e-12, 1e-15);
    }
    // And the value there is the reference's at the mirrored point.
    EXPECT_CLOSE(finite(p, 100, 20, 34, -3), reference(p, 100, 20, 26, 3), 1e-5, 1e-6);
}

TEST(Kern3dFinite, PatchReachingBeyondAWallIsClipped) {
    ThreeDimParameters p = aquifer(0.5, 2.0, 0.5, 0.05, 200);
    p.sourceYc = 28;  // [18, 38] -> [18, 30]
    p.sourceWidth = 20;
    p.sourceZc = 1;   // [-1, 3] -> [0, 3]
    p.sourceHeight = 4;
    for (double x : {0.3, 8.0, 60.0}) {
        const double expected = reference(p, 200, x, 44, 1, 50, 10, 38, 50, 0, 3);
        EXPECT_CLOSE(finite(p, 200, x, 24, 1), expected, 1e-5, 1e-6) << x;
    }
    // A patch wholly outside the aquifer lets nothing in, even at the inlet.
    p.sourceYc = 45;
    p.sourceWidth = 10;
    EXPECT_EQ(finite(p, 200, 5, 29, 1), 0.0);
    EXPECT_EQ(finite(p, 200, 0, 29, 1), 0.0);
}

TEST(Kern3dFinite, RangeOfOneNumberSpansFromZeroToIt) {
    ThreeDimParameters p = aquifer(0.5, 2.0, 0.5, 0.05, 200);
    p.yMin = p.yMax = 50;  // the aquifer is [0, 50]
    p.yInterval = 0;
    p.sourceYc = 20;
    ThreeDimParameters q = p;
    q.yMin = 0;
    q.yMax = 50;
    for (double x : {0.1, 10.0})
        for (double y : {0.0, 20.0, 26.0, 49.0}) EXPECT_EQ(finite(p, 100, x, y, 3), finite(q, 100, x, y, 3));
    EXPECT_CLOSE(finite(p, 100, 10, 26, 3), reference(p, 100, 10, 26, 3, 50, 10, 15, 25, 2, 6), 1e-5, 1e-6);
}

TEST(Kern3dFinite, InletPlaneCarriesTheClippedMirroredProfile) {
    ThreeDimParameters p = aquifer(0.5, 2.0, 0.5, 0.05, 200);
    for (double t : {0.0, 1.0, 1e5}) {
        EXPECT_EQ(finite(p, t, 0, 0, 4), 1.0);
        EXPECT_EQ(finite(p, t, 0, -5, 2), 1.0);  // edges included
        EXPECT_EQ(finite(p, t, 0, 5, 6), 1.0);
        EXPECT_EQ(finite(p, t, 0, 5.01, 6), 0.0);
        EXPECT_EQ(finite(p, t, 0, 0, -4), 1.0);   // mirror of z = 4 about the wall at 0
        EXPECT_EQ(finite(p, t, 0, -35, 4), 1.0);  // mirror of the edge y = -5 about the wall at -20
        EXPECT_EQ(finite(p, t, 0, -31, 4), 0.0);  // mirror of y = -9, outside the patch
    }
    EXPECT_EQ(finite(p, 0.0, 1e-3, 0, 4), 0.0);
    EXPECT_EQ(finite(p, 10.0, -1.0, 0, 4), 0.0);
    EXPECT_CLOSE(finite(p, 10.0, 1e-9, 0, 4), 1.0, 0, 1e-6);
}

TEST(Kern3dFinite, CachedCoefficientsFollowTheRecordFromCallToCall) {
    // The cosine coefficients are kept between calls; records of other
    // geometry, called in turn at points where the series is used, must each
    // keep their own answer.
    const ThreeDimParameters a = aquifer(0.5, 2.0, 0.5, 0.05, 1e300);
    ThreeDimParameters b = a;
    b.sourceYc = 12;  // patch y in [10, 14]
    b.sourceWidth = 4;
    b.zMax = 8;
    ThreeDimParameters c = b;
    c.yMax = 40;  // wider aquifer, same patch
    k3::FinitePath used;
    const ThreeDimParameters* records[] = {&a, &b, &c};
    for (const ThreeDimParameters* p : records) {
        k3::finiteAquiferRatio(*p, 400, 300, 12, 3, k3::FinitePath::Automatic, &used);
        ASSERT_EQ(used, k3::FinitePath::Series);
    }
    const double first[] = {finite(a, 400, 300, 12, 3), finite(b, 400, 300, 12, 3), finite(c, 400, 300, 12, 3)};
    EXPECT_CLOSE(first[1], reference(b, 400, 300, 32, 3, 50, 8, 30, 34, 2, 6), 1e-5, 1e-6);
    EXPECT_CLOSE(first[2], reference(c, 400, 300, 32, 3, 60, 8, 30, 34, 2, 6), 1e-5, 1e-6);
    // Far enough apart that a stale coefficient would fail the references.
    EXPECT_GT(std::fabs(first[0] - first[1]), 2e-5);
    EXPECT_GT(std::fabs(first[1] - first[2]), 2e-5);
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(finite(c, 400, 300, 12, 3), first[2]);
        EXPECT_EQ(finite(a, 400, 300, 12, 3), first[0]);
        EXPECT_EQ(finite(b, 400, 300, 12, 3), first[1]);
    }
}

TEST(Kern3dFinite, DivisionsByZeroOfTheFormulasAreRunTimeErrors) {
    using kern3dref::errorAfter;
    const auto call = [](const ThreeDimParameters& p) { finite(p, 10, 1, 0, 4); };
    const ThreeDimParameters base = aquifer(0.5, 1.0, 0.1, 0.01, 100, 0.01);
    kern3dref::expectSharedDivisionFaults(base, call);
    // No width or no height at all.
    EXPECT_EQ(errorAfter(base, [](ThreeDimParameters& p) { p.yMin = p.yMax = 0; }, call), 11);
    EXPECT_EQ(errorAfter(base, [](ThreeDimParameters& p) { p.zMin = p.zMax = 0; }, call), 11);
    // A patch of no height is no fault: nothing enters.
    EXPECT_EQ(errorAfter(base, [](ThreeDimParameters& p) { p.sourceHeight = 0; }, call), 0);
    ThreeDimParameters p = base;
    p.sourceHeight = 0;
    EXPECT_EQ(finite(p, 10, 1, 0, 4), 0.0);
}

TEST(Kern3dFinite, StrongNegativeDecayIsStillEvaluated) {
    // A negative half-life (growth) beyond -v^2/(4 Dx) leaves the lowest modes
    // without a real root; they are integrated instead.
    ThreeDimParameters p = aquifer(0.1, 1.0, 0.5, 0.05, -5.0);
    const double lambda = decayOf(p);
    ASSERT_LT(lambda + 0.1 * 0.1 / 4, 0);
    for (double x : {3.0, 6.0})
        for (double t : {2.0, 10.0}) {
            const double expected = reference(p, t, x, 3.0, 5.0);
            k3::FinitePath used;
            const double series = k3::finiteAquiferRatio(p, t, x, 3.0, 5.0, k3::FinitePath::Series, &used);
            ASSERT_EQ(used, k3::FinitePath::Series);
            EXPECT_CLOSE(series, expected, 1e-5, 1e-6) << x << " " << t;
            EXPECT_CLOSE(finite(p, t, x, 3.0, 5.0), expected, 1e-5, 1e-6) << x << " " << t;
        }
}

TEST(Kern3dFinite, AbsurdInputsGiveNumbersOrErrorsNeverNaN) {
    kern3dref::expectNumbersOrErrors(
        [](double v, double x, double t) { return finite(aquifer(v, 1e-3, 1e-4, 1e-5, 10), t, x, 1, 3); }, true, -1e-9,
        1.0 + 1e-9);
}
