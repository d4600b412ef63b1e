// cnrml_IL: strip source Yc - W/2 .. Yc + W/2 on the plane x = 0 of an aquifer
// of infinite width, checked against the Green's-function time integral taken
// by adaptive Gauss-Kronrod quadrature and against the one-dimensional limit.

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <vector>

#include "kernels/gauss_legendre.h"
#include "kernels/kern2d.h"
#include "kernels/tests/kern2d_reference.h"
#include "testing/is_close.h"

using namespace bm;
using namespace bm::kern2dref;

namespace {

struct Case {
    const char* name;
    Flow flow;
    double t, yc, width;
    std::vector<double> xs, ys;
};

std::string where(const Case& c, double x, double y) {
    std::ostringstream s;
    s << c.name << " t=" << c.t << " x=" << x << " y=" << y;
    return s.str();
}

// Regimes: small and large times, small and large dispersion, with and
// without decay and recharge, no flow, points inside, on the edge of and
// beside the strip, near the source plane and beyond the front.
std::vector<Case> cases() {
    std::vector<Case> out;
    Flow base;
    base.v = 1, base.dx = 1, base.dy = 0.1;
    out.push_back({"base", base, 10, 0, 2, {1e-4, 0.01, 0.5, 5, 9, 12, 20, 30}, {0, 1, 1.5, -3, 8}});
    out.push_back({"early", base, 1e-3, 0, 2, {1e-5, 1e-3, 0.01, 0.05, 0.1}, {0, 0.99, 1, 1.01, 1.1}});
    Flow sharp;
    sharp.v = 1, sharp.dx = 1e-3, sharp.dy = 5e-4;
    out.push_back({"small dispersion", sharp, 50, 2, 1, {0.01, 10, 49, 49.9, 50, 50.1, 51}, {2, 2.5, 2.6, 3}});
    Flow wide;
    wide.v = 0.1, wide.dx = 100, wide.dy = 50;
    out.push_back({"large dispersion", wide, 1, 0, 4, {0.1, 5, 20, 40}, {0, 2, 10, 30}});
    Flow decaying = base;
    decaying.halfLife = 5;
    out.push_back({"decay, steady", decaying, 1000, 0, 2, {0.3, 3, 10, 20}, {0, 1, 2}});
    out.push_back({"decay, transient", decaying, 6, 0, 2, {0.3, 3, 6, 9}, {0, 1, 2}});
    Flow recharged = base;
    recharged.recharge = 0.01, recharged.porosity = 0.3, recharged.thickness = 5;
    out.push_back({"recharge", recharged, 20, -1, 3, {1, 10, 19, 25}, {-1, 0.5, 2}});
    Flow both = recharged;
    both.halfLife = 30;
    out.push_back({"decay and recharge", both, 200, 0, 3, {2, 20, 60}, {0, 1.5, 4}});
    Flow still;
    still.v = 0, still.dx = 0.5, still.dy = 0.5;
    out.push_back({"no flow, long time", still, 1e5, 0, 2, {0.01, 1, 100, 500}, {0, 1, 50}});
    Flow stillDecay = still;
    stillDecay.halfLife = 100;
    out.push_back({"no flow with decay", stillDecay, 1e4, 0, 2, {0.01, 1, 10}, {0, 1, 5}});
    Flow fast;
    fast.v = 50, fast.dx = 0.01, fast.dy = 0.001;
    out.push_back({"high Peclet", fast, 100, 0, 1, {1, 100, 4000, 4999, 5000, 5001}, {0, 0.5, 0.6}});
    return out;
}

}  // namespace

TEST(Kern2dStrip, MatchesTheAdaptiveGreensFunctionIntegral) {
    Target target("cnrml_IL against adaptive Gauss-Kronrod");
    for (const Case& c : cases()) {
        TwoDimParameters p = record(c.flow);
        p.sourceYc = c.yc;
        p.sourceWidth = c.width;
        const double y1 = c.yc - c.width / 2, y2 = c.yc + c.width / 2;
        for (double x : c.xs)
            for (double y : c.ys) {
                const double reference =
                    planeSource(c.flow, x, c.t, [&](double tau) { return stripLateral(c.flow, y, y1, y2, tau); });
                target.check(stripAt(p, c.t, x, y), reference, where(c, x, y));
            }
    }
}

TEST(Kern2dStrip, HoldsWhereOneRuleOverTheWholeTimeFails) {
    // A sharp arrival late in a long run: the integrand in tau is a peak of width
    // about 0.3 at tau = 5 inside [0, 1000], far narrower than the spacing of
    // the 256 nodes over [0, t]. One application of the rule misses it; the
    // kernel does not.
    Flow f;
    f.v = 1, f.dx = 0.01, f.dy = 0.01;
    TwoDimParameters p = record(f);
    p.sourceWidth = 2;
    const double t = 1000, x = 5, y = 0.3;
    auto integrand = [&](double tau) { return transit(f, x, tau) * stripLateral(f, y, -1, 1, tau); };
    double naive = 0;
    for (int i = 0; i < 256; ++i) naive += theRule().weights[i] * integrand(0.5 * t * (1 + theRule().nodes[i]));
    naive *= 0.5 * t;
    const double reference = planeSource(f, x, t, [&](double tau) { return stripLateral(f, y, -1, 1, tau); });
    EXPECT_GT(std::fabs(naive - reference), 1e-3) << "the case must defeat a single application";
    Target target("cnrml_IL where one application over [0, t] fails");
    target.check(stripAt(p, t, x, y), reference, "late sharp arrival");
    for (double tt : {4.0, 5.0, 6.0, 100.0, 1e4, 1e6}) {
        const double ref = planeSource(f, x, tt, [&](double tau) { return stripLateral(f, y, -1, 1, tau); });
        target.check(stripAt(p, tt, x, y), ref, "t=" + std::to_string(tt));
    }
}

TEST(Kern2dStrip, WideStripIsTheOneDimensionalSolution) {
    // Far inside a strip much wider than the lateral spread, the lateral factor
    // is 1 and the answer is the semi-infinite Dirichlet solution.
    Target target("cnrml_IL wide strip against the one-dimensional closed form");
    const std::vector<std::pair<Flow, double>> flows = [] {
        Flow a;
        a.v = 1, a.dx = 0.5, a.dy = 0.05;
        Flow b = a;
        b.halfLife = 3;
        Flow c = a;
        c.recharge = 0.02, c.porosity = 0.25, c.thickness = 4;
        Flow d;
        d.v = 0, d.dx = 2, d.dy = 1, d.halfLife = 20;
        return std::vector<std::pair<Flow, double>>{{a, 10}, {b, 10}, {c, 7}, {d, 30}};
    }();
    for (const auto& [f, t] : flows) {
        TwoDimParameters p = record(f);
        p.sourceYc = 3;
        p.sourceWidth = 1e4;
        for (double x : {1e-3, 0.2, 2.0, 5.0, 9.0, 10.0, 11.0, 15.0})
            for (double y : {3.0, 10.0, -200.0})
                target.check(stripAt(p, t, x, y), oneDimensional(x, t, f.v, f.dx, f.k()),
                             "x=" + std::to_string(x) + " y=" + std::to_string(y));
    }
}

TEST(Kern2dStrip, BoundaryInitialAndUpstreamValues) {
    Flow f;
    TwoDimParameters p = record(f);
    p.sourceYc = 1;
    p.sourceWidth = 2;
    for (double t : {0.0, 1.0, 1e6}) {
        EXPECT_EQ(stripAt(p, t, 0, 1), 1.0);
        EXPECT_EQ(stripAt(p, t, 0, 0), 1.0);  // edges included
        EXPECT_EQ(stripAt(p, t, 0, 2), 1.0);
        EXPECT_EQ(stripAt(p, t, 0, 2.0000001), 0.0);
        EXPECT_EQ(stripAt(p, t, 0, -1), 0.0);
        EXPECT_EQ(stripAt(p, t, -0.5, 1), 0.0);
    }
    EXPECT_EQ(stripAt(p, 0, 1e-9, 1), 0.0);
    EXPECT_EQ(stripAt(p, 0, 3, 1), 0.0);
    // Just off the plane the solution tends to the profile: 1 inside, 1/2 on an edge.
    EXPECT_CLOSE(stripAt(p, 1, 1e-9, 1), 1.0, 0, 1e-6);
    EXPECT_CLOSE(stripAt(p, 1, 1e-9, 2), 0.5, 0, 1e-6);
    EXPECT_CLOSE(stripAt(p, 1, 1e-9, 3), 0.0, 0, 1e-6);
}

TEST(Kern2dStrip, ZeroWidthStripGivesNothingAwayFromThePlane) {
    Flow f;
    TwoDimParameters p = record(f);
    p.sourceYc = 1;
    p.sourceWidth = 0;
    EXPECT_EQ(stripAt(p, 5, 2, 1), 0.0);
    EXPECT_EQ(stripAt(p, 5, 0, 1), 1.0);
    EXPECT_EQ(stripAt(p, 5, 0, 1.1), 0.0);
}

TEST(Kern2dStrip, RuleMayComeInTheProgramsMirroredOrder) {
    // The program hands the nodes as +x1, -x1, +x2, -x2, ...
    std::vector<double> x(256), w(256);
    for (int i = 0; i < 128; ++i) {
        x[2 * i] = theRule().nodes[255 - i];
        x[2 * i + 1] = -x[2 * i];
        w[2 * i] = w[2 * i + 1] = theRule().weights[255 - i];
    }
    Flow f;
    TwoDimParameters p = record(f);
    p.sourceWidth = 2;
    for (double xx : {0.01, 1.0, 8.0}) {
        double mirrored = -1;
        cnrml_IL(p, 10, xx, 0.7, mirrored, x.data(), w.data());
        EXPECT_CLOSE(mirrored, stripAt(p, 10, xx, 0.7), 1e-13, 1e-16);
    }
}

TEST(Kern2dStrip, ArraysRefilledWithAnotherRuleAreFollowed) {
    // The kernel keeps values made from the caller's arrays. Refilled where
    // only one node's weight changes, they give what fresh arrays holding
    // that rule give, once the change is said; refilled with every weight
    // doubled, they give twice the result at once.
    std::vector<double> x(theRule().nodes.begin(), theRule().nodes.end());
    std::vector<double> w(theRule().weights.begin(), theRule().weights.end());
    Flow f;
    TwoDimParameters p = record(f);
    p.sourceWidth = 2;
    double first = -1, said = -1, fresh = -1, doubled = -1;
    cnrml_IL(p, 10, 1.0, 0.7, first, x.data(), w.data());
    w[100] *= 1.5;  // a node near the middle of the time range
    ruleArraysChanged();
    cnrml_IL(p, 10, 1.0, 0.7, said, x.data(), w.data());
    const std::vector<double> x2 = x, w2 = w;
    cnrml_IL(p, 10, 1.0, 0.7, fresh, x2.data(), w2.data());
    EXPECT_EQ(said, fresh);
    EXPECT_NE(said, first);
    for (double& v : w) v *= 2.0;
    cnrml_IL(p, 10, 1.0, 0.7, doubled, x.data(), w.data());
    EXPECT_CLOSE(doubled, 2.0 * said, 1e-14, 0);
}

TEST(Kern2dStrip, NoRuleIsAFailedStatusNotACrash) {
    Flow f;
    TwoDimParameters p = record(f);
    p.sourceWidth = 2;
    double c = -1;
    EXPECT_EQ(cnrml_IL(p, 1, 1, 0, c, nullptr, nullptr), kKernelFailed);
    EXPECT_EQ(c, 0.0);
    EXPECT_EQ(cnrml_IL(p, 1, 1, 0, c, theRule().nodes.data(), theRule().weights.data()), kKernelOk);
    EXPECT_GT(c, 0.0);
}
