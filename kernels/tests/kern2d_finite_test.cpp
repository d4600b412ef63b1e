// cnrml_FL: aquifer of finite width between no-flux walls, strip source on the
// plane x = 0. Checked against the adaptive Green's-function integral with a
// brute-force image sum, a finite-difference solution of the equation, and the
// limits of a source filling the width and of a width far beyond the plume.

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <vector>

#include "kernels/kern2d.h"
#include "kernels/tests/kern2d_reference.h"
#include "shell/base/runtime_error.h"
#include "testing/is_close.h"

using namespace bm;
using namespace bm::kern2dref;

namespace {

TwoDimParameters finiteRecord(const Flow& f, double yMin, double yMax, double yc, double width) {
    TwoDimParameters p = record(f);
    p.yMin = yMin;
    p.yMax = yMax;
    p.sourceYc = yc;
    p.sourceWidth = width;
    return p;
}

int errorOf(const TwoDimParameters& p, double t, double x, double y) {
    return raisedError([&] { finiteAt(p, t, x, y); });
}

// Explicit finite differences on 0 <= x <= length, 0 <= y <= width (nodes every
// h, the walls mirrored), C(0, y) = 1 on the strip (1/2 on a node at its edge),
// C = 0 at x = length, time step h^2 / (4 (Dx + Dy)). Second order in h.
class FiniteDifference {
public:
    FiniteDifference(double h, double length, double width, double y1, double y2, const Flow& f, double t)
        : h_(h), nx_(static_cast<int>(std::lround(length / h))), ny_(static_cast<int>(std::lround(width / h))),
          c_(static_cast<std::size_t>((nx_ + 1) * (ny_ + 1)), 0.0) {
        for (int j = 0; j <= ny_; ++j) {
            const double y = j * h;
            const bool edge = std::fabs(y - y1) < 1e-9 || std::fabs(y - y2) < 1e-9;
            c_[at(0, j)] = edge ? 0.5 : (y > y1 && y < y2 ? 1.0 : 0.0);
        }
        std::vector<double> next = c_;
        const int steps = static_cast<int>(std::ceil(t / (0.25 * h * h / (f.dx + f.dy))));
        const double dt = t / steps;
        const double ax = f.dx * dt / (h * h), ay = f.dy * dt / (h * h), av = f.v * dt / (2 * h), kd = f.k() * dt;
        for (int s = 0; s < steps; ++s) {
            for (int i = 1; i < nx_; ++i) {
                const double* lo = &c_[at(i - 1, 0)];
                const double* mid = &c_[at(i, 0)];
                const double* hi = &c_[at(i + 1, 0)];
                double* out = &next[at(i, 0)];
                for (int j = 0; j <= ny_; ++j) {
                    const double below = j > 0 ? mid[j - 1] : mid[1];
                    const double above = j < ny_ ? mid[j + 1] : mid[ny_ - 1];
                    out[j] = mid[j] + ax * (hi[j] - 2 * mid[j] + lo[j]) + ay * (above - 2 * mid[j] + below) -
                             av * (hi[j] - lo[j]) - kd * mid[j];
                }
            }
            c_.swap(next);
        }
    }
    double operator()(double x, double y) const {
        return c_[at(static_cast<int>(std::lround(x / h_)), static_cast<int>(std::lround(y / h_)))];
    }

private:
    std::size_t at(int i, int j) const { return static_cast<std::size_t>(i * (ny_ + 1) + j); }
    double h_;
    int nx_, ny_;
    std::vector<double> c_;
};

}  // namespace

TEST(Kern2dFinite, MatchesTheAdaptiveIntegralWithAllImages) {
    // Points near the source plane (many modes: the image-source integral) and
    // far from it (the closed-form cosine series), inside and outside the
    // aquifer, for sources inside, touching a wall and reaching beyond one.
    Target target("cnrml_FL against adaptive Gauss-Kronrod with images");
    struct Case {
        Flow flow;
        double t, yMin, yMax, yc, width;
    };
    std::vector<Case> cases;
    Flow base;
    base.v = 1, base.dx = 1, base.dy = 0.3;
    cases.push_back({base, 20, 0, 10, 3, 2});
    cases.push_back({base, 20, -5, 5, 4.5, 2});   // reaches beyond the wall at 5
    cases.push_back({base, 0.01, 0, 10, 3, 2});
    Flow slow;
    slow.v = 0.05, slow.dx = 0.2, slow.dy = 0.2, slow.halfLife = 200;
    cases.push_back({slow, 2000, 0, 4, 0.5, 1});  // long run: many wall reflections
    Flow sharp;
    sharp.v = 1, sharp.dx = 1e-3, sharp.dy = 1e-3;
    cases.push_back({sharp, 30, 0, 2, 1, 0.4});
    Flow recharged = base;
    recharged.recharge = 0.02, recharged.porosity = 0.3, recharged.thickness = 6;
    cases.push_back({recharged, 50, 10, 30, 12, 4});
    for (const Case& c : cases) {
        const TwoDimParameters p = finiteRecord(c.flow, c.yMin, c.yMax, c.yc, c.width);
        const double w = c.yMax - c.yMin;
        const double a = std::max(c.yc - c.width / 2 - c.yMin, 0.0), b = std::min(c.yc + c.width / 2 - c.yMin, w);
        const double front = c.flow.v * c.t + 3 * std::sqrt(c.flow.dx * c.t);
        for (double xf : {1e-7, 1e-3, 0.05, 0.3, 0.8, 1.0, 1.3})
            for (double yf : {-0.4, 0.0, 0.21, 0.3, 0.5, 0.77, 1.0, 1.3}) {
                const double x = xf * front, local = yf * w;
                const double reference = planeSource(
                    c.flow, x, c.t, [&](double tau) { return walledLateral(c.flow, local, w, a, b, tau); });
                std::ostringstream where;
                where << "t=" << c.t << " x=" << x << " y=" << c.yMin + local;
                target.check(finiteAt(p, c.t, x, c.yMin + local), reference, where.str());
            }
    }
}

TEST(Kern2dFinite, AgreesWithFiniteDifferences) {
    // A small case solved on two grids (h = 0.05, 0.025) and extrapolated
    // (Richardson, second order): the extrapolated grid values carry errors
    // well below 1e-6 at the points compared (away from the corners of the
    // source, where the boundary data jump).
    Flow f;
    f.v = 0.5, f.dx = 0.2, f.dy = 0.1, f.halfLife = std::log(2.0) / 0.05;
    const double width = 2, y1 = 0.5, y2 = 1.2, t = 4;
    const TwoDimParameters p = finiteRecord(f, 0, width, 0.5 * (y1 + y2), y2 - y1);
    const FiniteDifference coarse(0.05, 8, width, y1, y2, f, t), fine(0.025, 8, width, y1, y2, f, t);
    Target target("cnrml_FL against extrapolated finite differences");
    for (double x : {1.0, 2.0, 3.0, 4.5})
        for (double y : {0.0, 0.8, 1.5, 2.0}) {
            const double extrapolated = (4 * fine(x, y) - coarse(x, y)) / 3;
            target.check(finiteAt(p, t, x, y), extrapolated, "x=" + std::to_string(x) + " y=" + std::to_string(y));
        }
}

TEST(Kern2dFinite, SourceFillingTheWidthIsTheOneDimensionalSolution) {
    Target target("cnrml_FL full-width source against the one-dimensional closed form");
    for (double halfLife : {1e300, 7.0}) {
        Flow f;
        f.v = 0.7, f.dx = 0.4, f.dy = 2, f.halfLife = halfLife;
        const TwoDimParameters p = finiteRecord(f, -3, 3, 0, 6);
        for (double t : {0.05, 3.0, 40.0})
            for (double x : {1e-4, 0.1, 1.0, 2.5, 6.0})
                for (double y : {-3.0, 0.4, 3.0, 7.5})
                    target.check(finiteAt(p, t, x, y), oneDimensional(x, t, f.v, f.dx, f.k()), "full width");
    }
}

TEST(Kern2dFinite, WidthFarBeyondThePlumeIsTheInfiniteWidthStrip) {
    Target target("cnrml_FL wide aquifer against cnrml_IL");
    Flow f;
    f.v = 1, f.dx = 0.5, f.dy = 0.05;
    TwoDimParameters finiteP = finiteRecord(f, -500, 500, 1, 2);
    TwoDimParameters infiniteP = record(f);
    infiniteP.sourceYc = 1;
    infiniteP.sourceWidth = 2;
    for (double t : {0.1, 5.0, 30.0})
        for (double x : {1e-5, 0.01, 1.0, 5.0, 20.0})
            for (double y : {1.0, 2.0, 2.5, -1.0, 4.0}) {
                double strip = -1;
                cnrml_IL(infiniteP, t, x, y, strip, theRule().nodes.data(), theRule().weights.data());
                target.check(finiteAt(finiteP, t, x, y), strip, "wide");
            }
}

TEST(Kern2dFinite, PointsOutsideTheAquiferAreTheirMirrorImages) {
    Flow f;
    f.v = 1, f.dx = 1, f.dy = 0.4;
    const TwoDimParameters p = finiteRecord(f, 2, 6, 3, 1);
    for (double x : {0.0, 1e-3, 0.7, 6.0})
        for (double y : {2.3, 3.0, 3.5, 5.9}) {
            const double inside = finiteAt(p, 8, x, y);
            EXPECT_EQ(finiteAt(p, 8, x, 4 - y), inside);           // mirror in the wall at 2
            EXPECT_CLOSE(finiteAt(p, 8, x, 12 - y), inside, 1e-13, 1e-16);  // mirror in the wall at 6
            EXPECT_CLOSE(finiteAt(p, 8, x, y + 8), inside, 1e-14, 1e-16);   // period 2 W
            EXPECT_CLOSE(finiteAt(p, 8, x, y - 16), inside, 1e-14, 1e-16);
        }
}

TEST(Kern2dFinite, SourceIsClippedToTheAquifer) {
    Flow f;
    f.v = 1, f.dx = 1, f.dy = 0.4;
    const TwoDimParameters reaching = finiteRecord(f, 0, 5, 4.5, 3);  // 3 .. 6, aquifer 0 .. 5
    const TwoDimParameters clipped = finiteRecord(f, 0, 5, 4, 2);     // 3 .. 5
    for (double x : {0.0, 0.01, 1.0, 4.0})
        for (double y : {0.0, 2.9, 3.0, 4.0, 5.0}) EXPECT_EQ(finiteAt(reaching, 3, x, y), finiteAt(clipped, 3, x, y));
    const TwoDimParameters outside = finiteRecord(f, 0, 5, 8, 2);
    EXPECT_EQ(finiteAt(outside, 3, 1, 4), 0.0);
    EXPECT_EQ(finiteAt(outside, 3, 0, 4.5), 0.0);
}

TEST(Kern2dFinite, SingleNumberYRangeSpansFromZero) {
    Flow f;
    f.v = 1, f.dx = 1, f.dy = 0.4;
    const TwoDimParameters single = finiteRecord(f, 7, 7, 2, 1);
    const TwoDimParameters spanned = finiteRecord(f, 0, 7, 2, 1);
    for (double x : {0.0, 0.5, 3.0})
        for (double y : {0.0, 2.0, 6.0, 7.0}) EXPECT_EQ(finiteAt(single, 2, x, y), finiteAt(spanned, 2, x, y));
}

TEST(Kern2dFinite, BoundaryInitialAndUpstreamValues) {
    Flow f;
    const TwoDimParameters p = finiteRecord(f, 0, 10, 5, 2);
    for (double t : {0.0, 1.0}) {
        EXPECT_EQ(finiteAt(p, t, 0, 4), 1.0);
        EXPECT_EQ(finiteAt(p, t, 0, 6), 1.0);
        EXPECT_EQ(finiteAt(p, t, 0, 5), 1.0);
        EXPECT_EQ(finiteAt(p, t, 0, 6.5), 0.0);
        EXPECT_EQ(finiteAt(p, t, -2, 5), 0.0);
    }
    EXPECT_EQ(finiteAt(p, 0, 0.5, 5), 0.0);
}

TEST(Kern2dFinite, ZeroWidthOrDispersionIsTheProgramsFault) {
    Flow f;
    EXPECT_EQ(errorOf(finiteRecord(f, 0, 0, 0, 1), 1, 1, 0), 11);
    EXPECT_EQ(errorOf(finiteRecord(f, 3, 3, 0, 1), 1, 1, 0), 0);  // spans 0 .. 3
    TwoDimParameters p = finiteRecord(f, 0, 10, 5, 2);
    p.effectiveDispersionY = 0;
    EXPECT_EQ(errorOf(p, 1, 1, 5), 11);
    p = finiteRecord(f, 0, 10, 5, 2);
    p.effectiveDispersionX = 0;
    EXPECT_EQ(errorOf(p, 1, 1, 5), 11);
}
