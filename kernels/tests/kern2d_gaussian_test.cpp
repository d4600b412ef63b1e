// cnrml_IG: source profile C0 exp(-(y - Yc)^2 / (2 sigma^2)) on the plane x = 0
// of an aquifer of infinite width, against the adaptive Green's-function
// integral and the limits of a very wide and a narrow profile.

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "kernels/kern2d.h"
#include "kernels/tests/kern2d_reference.h"
#include "shell/base/runtime_error.h"
#include "testing/is_close.h"

using namespace bm;
using namespace bm::kern2dref;

namespace {

int errorOf(const TwoDimParameters& p, double t, double x, double y) {
    return raisedError([&] { gaussianAt(p, t, x, y); });
}

}  // namespace

TEST(Kern2dGaussian, MatchesTheAdaptiveGreensFunctionIntegral) {
    Target target("cnrml_IG against adaptive Gauss-Kronrod");
    struct Case {
        Flow flow;
        double t, yc, sigma;
    };
    std::vector<Case> cases;
    Flow base;
    base.v = 1, base.dx = 1, base.dy = 0.1;
    cases.push_back({base, 10, 0, 1});
    cases.push_back({base, 1e-3, 0, 0.05});
    Flow sharp;
    sharp.v = 1, sharp.dx = 1e-3, sharp.dy = 1e-4;
    cases.push_back({sharp, 40, 1, 0.3});
    Flow wide;
    wide.v = 0.2, wide.dx = 50, wide.dy = 80;
    cases.push_back({wide, 2, 0, 3});
    Flow decaying = base;
    decaying.halfLife = 4;
    cases.push_back({decaying, 500, 0, 1});
    Flow recharged = base;
    recharged.recharge = 0.005, recharged.porosity = 0.2, recharged.thickness = 3, recharged.halfLife = 50;
    cases.push_back({recharged, 30, 2, 0.5});
    Flow still;
    still.v = 0, still.dx = 1, still.dy = 1;
    cases.push_back({still, 1e5, 0, 2});
    for (const Case& c : cases) {
        TwoDimParameters p = record(c.flow);
        p.sourceYc = c.yc;
        p.sourceStdDev = c.sigma;
        const double front = c.flow.v * c.t + 3 * std::sqrt(c.flow.dx * c.t);
        for (double xf : {1e-6, 0.01, 0.3, 0.9, 1.0, 1.1, 2.0})
            for (double yo : {0.0, 0.5, 2.0, 6.0}) {
                const double x = xf * front, y = c.yc + yo * (c.sigma + std::sqrt(c.flow.dy * c.t));
                const double reference = planeSource(
                    c.flow, x, c.t, [&](double tau) { return gaussianLateral(c.flow, y, c.yc, c.sigma, tau); });
                std::ostringstream where;
                where << "t=" << c.t << " x=" << x << " y=" << y;
                target.check(gaussianAt(p, c.t, x, y), reference, where.str());
            }
    }
}

TEST(Kern2dGaussian, VeryWideProfileIsTheOneDimensionalSolution) {
    Target target("cnrml_IG wide profile against the one-dimensional closed form");
    Flow f;
    f.v = 0.5, f.dx = 0.3, f.dy = 0.03, f.halfLife = 12;
    TwoDimParameters p = record(f);
    p.sourceYc = -4;
    p.sourceStdDev = 1e6;
    for (double t : {0.5, 8.0, 100.0})
        for (double x : {1e-3, 0.5, 4.0, 10.0}) target.check(gaussianAt(p, t, x, -4), oneDimensional(x, t, f.v, f.dx, f.k()), "wide");
}

TEST(Kern2dGaussian, ProfileOnThePlaneAndNothingElsewhereAtFirst) {
    Flow f;
    TwoDimParameters p = record(f);
    p.sourceYc = 2;
    p.sourceStdDev = 0.5;
    for (double t : {0.0, 3.0}) {
        EXPECT_EQ(gaussianAt(p, t, 0, 2), 1.0);
        EXPECT_CLOSE(gaussianAt(p, t, 0, 2.5), std::exp(-0.5), 1e-15, 0);
        EXPECT_CLOSE(gaussianAt(p, t, 0, 0.5), std::exp(-4.5), 1e-15, 0);
        EXPECT_EQ(gaussianAt(p, t, -1, 2), 0.0);
    }
    EXPECT_EQ(gaussianAt(p, 0, 0.1, 2), 0.0);
}

TEST(Kern2dGaussian, ZeroDeviationIsTheProgramsDivisionByZero) {
    Flow f;
    TwoDimParameters p = record(f);
    p.sourceYc = 2;
    p.sourceStdDev = 0;
    EXPECT_EQ(errorOf(p, 1, 1, 3), 11);
    EXPECT_EQ(errorOf(p, 1, 0, 3), 11);
    EXPECT_EQ(errorOf(p, 1, 1, 2), 11);
    EXPECT_EQ(errorOf(p, 1, -1, 2), 0);  // upstream of the plane: nothing is computed
}
