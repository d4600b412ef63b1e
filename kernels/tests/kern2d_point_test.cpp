// cnrml_IC: continuous injection at the origin of an infinite aquifer, against
// the adaptive time integral, the steady state (the leaky-well form 2 K0) and
// the mass balance of the whole plume.

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "kernels/gauss_legendre.h"
#include "kernels/kern2d.h"
#include "kernels/tests/kern2d_reference.h"
#include "shell/base/runtime_error.h"
#include "testing/is_close.h"

using namespace bm;
using namespace bm::kern2dref;

namespace {

TwoDimParameters pointRecord(const Flow& f, double q) {
    TwoDimParameters p = record(f);
    p.injectionRate = q;
    return p;
}

int errorOf(const TwoDimParameters& p, double t, double x, double y) {
    return raisedError([&] { pointAt(p, t, x, y); });
}

}  // namespace

TEST(Kern2dPoint, MatchesTheAdaptiveTimeIntegral) {
    Target target("cnrml_IC against adaptive Gauss-Kronrod");
    struct Case {
        Flow flow;
        double q, t;
    };
    std::vector<Case> cases;
    Flow base;
    base.v = 1, base.dx = 1, base.dy = 0.2, base.porosity = 0.3;
    cases.push_back({base, 0.5, 10});
    cases.push_back({base, 0.5, 1e-3});
    Flow sharp;
    sharp.v = 2, sharp.dx = 1e-3, sharp.dy = 2e-4, sharp.porosity = 0.25;
    cases.push_back({sharp, 1e-3, 20});
    Flow wide;
    wide.v = 0.1, wide.dx = 40, wide.dy = 40, wide.porosity = 0.35;
    cases.push_back({wide, 30, 3});
    Flow decaying = base;
    decaying.halfLife = 6;
    cases.push_back({decaying, 0.5, 1000});
    Flow recharged = base;
    recharged.recharge = 0.01, recharged.thickness = 8, recharged.halfLife = 40;
    cases.push_back({recharged, 0.5, 60});
    Flow still;
    still.v = 0, still.dx = 0.5, still.dy = 0.25, still.porosity = 0.3;
    cases.push_back({still, 0.1, 1e5});
    for (const Case& c : cases) {
        const TwoDimParameters p = pointRecord(c.flow, c.q);
        const double lx = c.flow.v * c.t + 3 * std::sqrt(c.flow.dx * c.t), ly = 3 * std::sqrt(c.flow.dy * c.t);
        for (double xf : {-0.3, -1e-6, 0.0, 1e-6, 0.01, 0.5, 0.9, 1.2})
            for (double yf : {0.0, 1e-5, 0.3, 1.0}) {
                const double x = xf * lx, y = yf * ly;
                if (x == 0 && y == 0) continue;
                std::ostringstream where;
                where << "t=" << c.t << " x=" << x << " y=" << y;
                target.check(pointAt(p, c.t, x, y), pointSource(c.flow, c.q, x, y, c.t), where.str());
            }
    }
}

TEST(Kern2dPoint, LongRunReachesTheLeakyWellSteadyState) {
    // Steady state: Q' / (4 pi n sqrt(Dx Dy)) exp(v x / (2 Dx)) 2 K0(r sqrt(b)),
    // r^2 = x^2 / Dx + y^2 / Dy, b = v^2 / (4 Dx) + k.
    Target target("cnrml_IC steady state against 2 K0");
    Flow f;
    f.v = 0.4, f.dx = 0.8, f.dy = 0.1, f.porosity = 0.3, f.halfLife = 25;
    const double q = 0.3;
    const TwoDimParameters p = pointRecord(f, q);
    const double b = f.v * f.v / (4 * f.dx) + f.k();
    for (double x : {-2.0, 0.01, 1.0, 5.0, 20.0})
        for (double y : {0.0, 0.5, 3.0}) {
            const double r = std::sqrt(x * x / f.dx + y * y / f.dy);
            const double steady = q / (4 * kPi * f.porosity * std::sqrt(f.dx * f.dy)) * std::exp(f.v * x / (2 * f.dx)) * 2 *
                                  std::cyl_bessel_k(0.0, r * std::sqrt(b));
            target.check(pointAt(p, 1e7, x, y), steady, "x=" + std::to_string(x) + " y=" + std::to_string(y));
        }
}

TEST(Kern2dPoint, PlumeHoldsTheInjectedMassLessDecay) {
    // The integral of C/C0 over the plane is (Q'/n) (1 - exp(-k t)) / k (and
    // Q' t / n without loss). Integrated in coordinates scaled by sqrt(D), in
    // polar form around the well: radially with Gauss-Legendre panels graded
    // towards the logarithmic peak at the well, around by the trapezoid rule.
    std::vector<double> gx, gw;
    gaussLegendre(24, gx, gw);
    for (double halfLife : {1e300, 3.0}) {
        Flow f;
        f.v = 0.5, f.dx = 1, f.dy = 0.5, f.porosity = 0.25, f.halfLife = halfLife;
        const double q = 0.2, t = 4;
        const TwoDimParameters p = pointRecord(f, q);
        const double radius = f.v * t / std::sqrt(f.dx) + 16 * std::sqrt(t);
        std::vector<double> cuts{0};
        for (int e = -10; e <= -1; ++e) cuts.push_back(radius * std::pow(10.0, e));
        for (int i = 1; i <= 12; ++i) cuts.push_back(radius * (0.1 + 0.9 * i / 12.0));
        const int angles = 96;
        double mass = 0;
        for (int a = 0; a < angles; ++a) {
            const double theta = 2 * kPi * a / angles;
            double radial = 0;
            for (std::size_t k = 1; k < cuts.size(); ++k) {
                const double mid = 0.5 * (cuts[k] + cuts[k - 1]), half = 0.5 * (cuts[k] - cuts[k - 1]);
                for (std::size_t i = 0; i < gx.size(); ++i) {
                    const double rho = mid + half * gx[i];
                    const double x = rho * std::cos(theta) * std::sqrt(f.dx), y = rho * std::sin(theta) * std::sqrt(f.dy);
                    radial += half * gw[i] * rho * pointAt(p, t, x, y);
                }
            }
            mass += radial * 2 * kPi / angles;
        }
        mass *= std::sqrt(f.dx * f.dy);
        const double k = f.k();
        const double injected = q / f.porosity * (k * t > 1e-8 ? -std::expm1(-k * t) / k : t);
        EXPECT_CLOSE(mass, injected, 1e-7, 0) << "half-life " << halfLife;
        std::printf("[ worst    ] cnrml_IC mass balance, half-life %g: relative %.2e\n", halfLife,
                    std::fabs(mass - injected) / injected);
    }
}

TEST(Kern2dPoint, SourcePointIsAboveOneWithoutAFault) {
    Flow f;
    const TwoDimParameters p = pointRecord(f, 0.5);
    double c = 0;
    EXPECT_EQ(cnrml_IC(p, 3, 0, 0, c, theRule().nodes.data(), theRule().weights.data()), kKernelOk);
    EXPECT_GT(c, 1.0);
    EXPECT_TRUE(std::isfinite(c));
    EXPECT_GT(pointAt(p, 3, 1e-300, 0), 1.0);  // the logarithmic peak, computed
    EXPECT_EQ(pointAt(p, 0, 0, 0), 0.0);       // nothing injected yet
    EXPECT_EQ(pointAt(p, 0, 1, 0.5), 0.0);
    EXPECT_EQ(pointAt(p, -1, 1, 0.5), 0.0);
}

TEST(Kern2dPoint, ZeroPorosityOrDispersionIsTheProgramsFault) {
    Flow f;
    TwoDimParameters p = pointRecord(f, 0.5);
    p.porosity = 0;
    EXPECT_EQ(errorOf(p, 1, 1, 0), 11);
    p.injectionRate = 0;
    EXPECT_EQ(errorOf(p, 1, 1, 0), 6);  // 0 / 0
    p = pointRecord(f, 0.5);
    p.effectiveDispersionX = 0;
    EXPECT_EQ(errorOf(p, 1, 1, 0), 11);
    p = pointRecord(f, 0.5);
    p.effectiveDispersionY = 0;
    EXPECT_EQ(errorOf(p, 1, 1, 0), 11);
    p = pointRecord(f, 0.5);
    EXPECT_EQ(errorOf(p, 1, 1, 0), 0);
}

