// The time integral of the patch kernels, on its own.

#include <gtest/gtest.h>

#include <cmath>

#include "kernels/kern3d_quadrature.h"
#include "kernels/tests/kern3d_reference.h"
#include "testing/is_close.h"

using namespace bm;

namespace {
struct ColumnCase {
    double x, v, dx, decay, t;
};
const ColumnCase kCases[] = {
    {1.0, 0.5, 1.0, 0.0, 10.0},       {0.001, 0.0, 1.0, 0.0, 1e6},    {50.0, 2.0, 1e-4, 0.001, 1e5},
    {3.0, 0.1, 20.0, 0.05, 0.5},      {1e-6, 1.0, 0.3, 0.01, 100.0},  {200.0, 0.2, 5.0, 0.0, 1e4},
    {10.0, -0.3, 2.0, 0.0, 100.0},    {5.0, 1.0, 1e-8, 0.02, 6.0},    {0.3, 0.05, 0.01, 2.0, 3.0},
};
}  // namespace

TEST(Kern3dQuadrature, ColumnResponseIsTheOneDimensionalDirichletSolution) {
    for (const auto& c : kCases) {
        const k3::Column column = k3::makeColumn(c.x, c.v, c.dx, c.decay);
        const double expected = kern3dref::columnStep(c.x, c.t, c.v, c.dx, c.decay);
        EXPECT_CLOSE(k3::columnStepResponse(column, c.t), expected, 1e-11, 1e-14) << c.x << " " << c.v << " " << c.t;
    }
}

TEST(Kern3dQuadrature, MorePanelsOverTheSameStretchGiveTheSameIntegral) {
    for (const auto& c : kCases) {
        const k3::Column column = k3::makeColumn(c.x, c.v, c.dx, c.decay);
        k3::Panels plan = k3::planPanels(column, c.t);
        if (plan.empty) continue;
        const auto one = [](double, double) { return 1.0; };
        plan.count = 1;
        const double single = k3::timeIntegral(column, plan, k3::internalNodes(), k3::internalWeights(), one);
        for (int n : {2, 3, 7}) {
            plan.count = n;
            EXPECT_CLOSE(k3::timeIntegral(column, plan, k3::internalNodes(), k3::internalWeights(), one), single, 1e-12,
                         1e-15)
                << n;
        }
    }
}

TEST(Kern3dQuadrature, TheStretchHoldsEverythingAboveTheCut) {
    // The ends lie at least 46 below the peak of the exponent (or at ln t), and
    // a sample of points outside the stretch never rises above them.
    for (const auto& c : kCases) {
        const k3::Column column = k3::makeColumn(c.x, c.v, c.dx, c.decay);
        const k3::Panels plan = k3::planPanels(column, c.t);
        if (plan.empty) continue;
        auto psi = [&](double u) { return column.psi(u, std::exp(u)); };
        const bool cutByTime = plan.uB >= std::log(c.t);
        EXPECT_LE(psi(plan.uA), plan.psiMax - 44.9);
        if (!cutByTime) {
            EXPECT_LE(psi(plan.uB), plan.psiMax - 44.9);
        }
        for (double d = 0.01; d < 100; d *= 1.7) {
            EXPECT_LE(psi(plan.uA - d), plan.psiMax - 44.9);
            if (!cutByTime) {
                EXPECT_LE(psi(plan.uB + d), plan.psiMax - 44.9);
            }
        }
        // Not needlessly long either: a fifth of the way in, the cut is passed.
        const double length = plan.uB - plan.uA;
        EXPECT_GT(psi(plan.uA + 0.2 * length), plan.psiMax - 46.0);
        if (!cutByTime) {
            EXPECT_GT(psi(plan.uB - 0.2 * length), plan.psiMax - 46.0);
        }
    }
}

TEST(Kern3dQuadrature, NothingArrivedIsAnEmptyPlan) {
    const k3::Column column = k3::makeColumn(100.0, 1.0, 0.01, 0.0);
    EXPECT_TRUE(k3::planPanels(column, 1.0).empty);
    EXPECT_FALSE(k3::planPanels(column, 100.0).empty);
}
