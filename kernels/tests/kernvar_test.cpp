// kernvar against independent computations: the dispersion measure against a
// quadrature of DL/R, the instantaneous solutions against the formulas written
// out in double and against their mass balance, the continuous ones against a
// brute-force adaptive integral over the elapsed time.

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "kernels/kernvar.h"
#include "testing/kernvar_reference.h"
#include "shell/base/runtime_error.h"
#include "testing/is_close.h"
#include "shell/base/raised_error.h"

namespace {

using namespace kernvar_ref;
using bm::kernvarRecord;
namespace src = bm::varsource;

using bm::raisedError;

const char* kFunctionNames[] = {"", "Constant", "Linear", "Asymptotic", "Exponential"};

class EachFunction : public ::testing::TestWithParam<int> {
protected:
    Case base() const {
        Case c;
        c.function = GetParam();
        return asStored(c);
    }
};

std::string functionName(const ::testing::TestParamInfo<int>& info) { return kFunctionNames[info.param]; }

// ---- alpha_t ----

TEST_P(EachFunction, AlphaEqualsTheIntegralOfDLOverR) {
    Case c = base();
    const kernvarRecord r = recordOf(c, src::PointInstantaneous);
    for (double t : {0.001, 0.5, 3.0, 20.0, 75.0, 400.0, 5000.0}) {
        const double reference = alphaByQuadrature(c, static_cast<float>(t));
        EXPECT_CLOSE(bm::alpha_t(r, static_cast<float>(t)), reference, 2e-6, 0.0) << "t = " << t;
        EXPECT_CLOSE(alphaLong(c, static_cast<float>(t)), reference, 1e-10, 0.0) << "t = " << t;
    }
}

TEST_P(EachFunction, AlphaForSmallTimesOverKLosesNothing) {
    // Without molecular diffusion the growth term alone, at t/k down to 1e-6.
    Case c = base();
    c.Dm = 0;
    c.k = 50;
    const kernvarRecord r = recordOf(c, src::LineInstantaneous);
    for (double t : {5e-5, 1e-3, 0.05, 1.0, 49.0, 51.0}) {
        const double reference = alphaByQuadrature(c, static_cast<float>(t));
        ASSERT_GT(reference, 0.0);
        EXPECT_CLOSE(bm::alpha_t(r, static_cast<float>(t)), reference, 2e-6, 0.0) << "t = " << t;
    }
}

TEST_P(EachFunction, AlphaIsZeroAtAndBeforeTheStart) {
    const kernvarRecord r = recordOf(base(), src::PointInstantaneous);
    EXPECT_EQ(bm::alpha_t(r, 0.0f), 0.0f);
    EXPECT_EQ(bm::alpha_t(r, -3.0f), 0.0f);
}

TEST(KernvarAlpha, VelocityYCountsInTheSpeed) {
    Case c;
    c.Dm = 0;
    c.u = 3;
    c.v = 4;
    c.R = 1;
    c.Do = 2;
    // Constant function: alpha = Do |V| t / R = 2 * 5 * 7.
    EXPECT_CLOSE(bm::alpha_t(recordOf(c, src::PointInstantaneous), 7.0f), 70.0, 1e-6, 0.0);
}

TEST(KernvarAlpha, LinearWithZeroMeanTravelTimeIsADivisionByZero) {
    Case c;
    c.function = 2;
    c.k = 0;
    const kernvarRecord r = recordOf(c, src::PointInstantaneous);
    EXPECT_EQ(raisedError([&] { bm::alpha_t(r, 10.0f); }), bm::err::DivisionByZero);
}

TEST(KernvarAlpha, AsymptoticAndExponentialWithZeroMeanTravelTimeAreConstant) {
    Case c;
    c.k = 0;
    c.function = 1;
    const float constant = bm::alpha_t(recordOf(c, src::PointInstantaneous), 12.0f);
    EXPECT_CLOSE(constant, (c.Dm * 12 + c.Do * speed(c) * 12) / c.R, 1e-6, 0.0);
    for (int f : {3, 4}) {
        c.function = f;
        EXPECT_EQ(bm::alpha_t(recordOf(c, src::PointInstantaneous), 12.0f), constant) << kFunctionNames[f];
    }
}

TEST(KernvarAlpha, UnknownFunctionCodeIsAnInvalidCall) {
    Case c;
    c.function = 7;
    EXPECT_EQ(raisedError([&] { bm::alpha_t(recordOf(c, src::PointInstantaneous), 1.0f); }),
              bm::err::InvalidProcedureCall);
}

// ---- the instantaneous and initial sources against the formulas in double ----

struct Spot {
    double t, x, y;
};
const std::vector<Spot> kSpots = {{10, 5, 0},  {10, 3, 2},    {50, 25, 7},  {50, 40, -5},
                                  {200, 100, 30}, {200, 60, 10}, {3, 0.5, 0.2}, {0.2, 0.1, 0}};

TEST_P(EachFunction, PointSourcesMatchTheirFormulasInDouble) {
    const Case c = base();
    kernvarRecord r = recordOf(c, src::PointInstantaneous);
    for (const Spot& s : kSpots) {
        const float t = static_cast<float>(s.t), x = static_cast<float>(s.x), y = static_cast<float>(s.y);
        const float alpha = bm::alpha_t(r, t);
        const double a = alphaLong(c, t);
        const double peakInstan = pointValue(c, t, c.u * t / c.R, c.v * t / c.R, a, true);
        EXPECT_CLOSE(bm::point_instan_injection(r, t, x, y, alpha, pointFactor(r)), pointValue(c, t, x, y, a, true),
                     2e-5, 1e-7 * peakInstan)
            << "t " << s.t << " x " << s.x << " y " << s.y;
        EXPECT_CLOSE(bm::point_initial_concentration(r, t, x, y, alpha, pointInitialFactor(r)),
                     pointValue(c, t, x, y, a, false), 2e-5, 1e-7 * peakInstan * c.R)
            << "t " << s.t << " x " << s.x << " y " << s.y;
    }
}

TEST_P(EachFunction, LineSourcesMatchTheirFormulasInDouble) {
    const Case c0 = base();
    Case c = c0;
    c.v = 0;  // a line source has no velocity in y
    kernvarRecord r = recordOf(c, src::LineInstantaneous);
    for (const Spot& s : kSpots) {
        const float t = static_cast<float>(s.t), x = static_cast<float>(s.x);
        const float alpha = bm::alpha_t(r, t);
        const double a = alphaLong(c, t);
        const double peak = lineValue(c, t, c.u * t / c.R, a, true);
        EXPECT_CLOSE(bm::line_instan_injection(r, t, x, alpha, lineFactor(r)), lineValue(c, t, x, a, true), 2e-5,
                     1e-7 * peak)
            << "t " << s.t << " x " << s.x;
        EXPECT_CLOSE(bm::line_initial_concentration(r, t, x, alpha, lineFactor(r)), lineValue(c, t, x, a, false),
                     2e-5, 1e-7 * peak * c.R)
            << "t " << s.t << " x " << s.x;
    }
}

// ---- mass balance ----

// The plume's integral over the plane by the trapezoid rule on a grid wide enough
// for the Gaussian (exponentially accurate there).
double planeIntegral(const std::function<double(double, double)>& C, double cx, double cy, double sx, double sy) {
    const int n = 240;
    const double hx = 24 * sx / n, hy = 24 * sy / n;
    double sum = 0;
    for (int i = 0; i <= n; ++i)
        for (int j = 0; j <= n; ++j) sum += C(cx - 12 * sx + i * hx, cy - 12 * sy + j * hy);
    return sum * hx * hy;
}

double lineIntegral(const std::function<double(double)>& C, double cx, double sx) {
    const int n = 2000;
    const double h = 24 * sx / n;
    double sum = 0;
    for (int i = 0; i <= n; ++i) sum += C(cx - 12 * sx + i * h);
    return sum * h;
}

TEST_P(EachFunction, PointSourcesHoldTheReleasedMassLessDecay) {
    Case c = base();
    c.mu = 0.01;
    c = asStored(c);
    const kernvarRecord r = recordOf(c, src::PointInstantaneous);
    for (float t : {2.0f, 30.0f, 150.0f}) {
        const float alpha = bm::alpha_t(r, t);
        const double sx = std::sqrt(2.0 * alpha), sy = std::sqrt(2.0 * c.a * alpha);
        const double cx = c.u * t / c.R, cy = c.v * t / c.R;
        const double expected = c.M * std::exp(-c.mu * t);
        const double instan = planeIntegral(
            [&](double x, double y) {
                return bm::point_instan_injection(r, t, static_cast<float>(x), static_cast<float>(y), alpha,
                                                  pointFactor(r));
            },
            cx, cy, sx, sy);
        // The dissolved part is 1/R of the injected mass.
        EXPECT_CLOSE(instan * c.R, expected, 2e-5, 0.0) << "t = " << t;
        const double initial = planeIntegral(
            [&](double x, double y) {
                return bm::point_initial_concentration(r, t, static_cast<float>(x), static_cast<float>(y), alpha,
                                                       pointInitialFactor(r));
            },
            cx, cy, sx, sy);
        EXPECT_CLOSE(initial, expected, 2e-5, 0.0) << "t = " << t;
    }
}

TEST_P(EachFunction, LineSourcesHoldTheReleasedMassLessDecay) {
    Case c = base();
    c.v = 0;
    c.mu = 0.02;
    c = asStored(c);
    const kernvarRecord r = recordOf(c, src::LineInstantaneous);
    for (float t : {2.0f, 30.0f, 150.0f}) {
        const float alpha = bm::alpha_t(r, t);
        const double sx = std::sqrt(2.0 * alpha), cx = c.u * t / c.R;
        const double expected = c.M * std::exp(-c.mu * t);
        const double instan = lineIntegral(
            [&](double x) { return bm::line_instan_injection(r, t, static_cast<float>(x), alpha, lineFactor(r)); }, cx,
            sx);
        EXPECT_CLOSE(instan * c.R, expected, 2e-5, 0.0) << "t = " << t;
        const double initial = lineIntegral(
            [&](double x) {
                return bm::line_initial_concentration(r, t, static_cast<float>(x), alpha, lineFactor(r));
            },
            cx, sx);
        EXPECT_CLOSE(initial, expected, 2e-5, 0.0) << "t = " << t;
    }
}

// ---- the continuous sources against a brute-force time integral ----

struct ContinuousCase {
    const char* name;
    Case c;
    double t, x, y;
};

std::vector<ContinuousCase> continuousCases(int function) {
    std::vector<ContinuousCase> cases;
    Case broad;  // the base case: strong growth of dispersion
    broad.function = function;
    cases.push_back({"broad, behind the centre", broad, 50, 10, 2});
    cases.push_back({"broad, at the centre", broad, 80, 40, 12});
    cases.push_back({"broad, ahead", broad, 30, 45, -3});
    cases.push_back({"broad, near the source", broad, 20, 0.05, 0.01});
    Case narrow;  // weak dispersion: the arrival is a sharp pulse in time
    narrow.function = function;
    narrow.R = 1;
    narrow.u = 2;
    narrow.v = 0.1;
    narrow.Do = 1e-4;
    narrow.Dm = 1e-5;
    narrow.k = 30;
    narrow.mu = 0.003;
    cases.push_back({"narrow, passed", narrow, 100, 150, 7.5});
    cases.push_back({"narrow, arriving", narrow, 75.3, 150, 7.5});
    Case decaying = broad;
    decaying.mu = 0.05;
    decaying.v = 0;
    cases.push_back({"decaying", decaying, 120, 30, 1});
    for (ContinuousCase& cc : cases) cc.c = asStored(cc.c);
    return cases;
}

TEST_P(EachFunction, ContinuousPointSourceEqualsTheTimeIntegral) {
    for (const ContinuousCase& cc : continuousCases(GetParam())) {
        const kernvarRecord r = recordOf(cc.c, src::PointContinuous);
        const float t = static_cast<float>(cc.t);
        const double reference = pointContinuous(cc.c, t, static_cast<float>(cc.x), static_cast<float>(cc.y));
        ASSERT_GT(reference, 0.0) << cc.name;
        const float value = bm::point_contin_injection(r, t, static_cast<float>(cc.x), static_cast<float>(cc.y),
                                                       bm::alpha_t(r, t), pointFactor(r), t / 100.0f, 100);
        EXPECT_CLOSE(value, reference, 1e-4, 0.0) << cc.name;
    }
}

TEST_P(EachFunction, ContinuousLineSourceEqualsTheTimeIntegral) {
    for (ContinuousCase cc : continuousCases(GetParam())) {
        cc.c.v = 0;
        const kernvarRecord r = recordOf(cc.c, src::LineContinuous);
        const float t = static_cast<float>(cc.t);
        const double reference = lineContinuous(cc.c, t, static_cast<float>(cc.x));
        ASSERT_GT(reference, 0.0) << cc.name;
        const float value = bm::line_contin_injection(r, t, static_cast<float>(cc.x), bm::alpha_t(r, t),
                                                      lineFactor(r), t / 100.0f, 100);
        EXPECT_CLOSE(value, reference, 1e-4, 0.0) << cc.name;
    }
}

TEST(KernvarContinuous, SteadyLineSourceWithoutGrowthApproachesTheClosedForm) {
    // Constant dispersion D/R and retarded velocity U = u/R: for a long time the
    // integral of the Gaussian tends to (M/R) / sqrt(U^2 + 4 mu D') * exp(x (U - sqrt(U^2 + 4 mu D')) / (2 D')).
    Case c;
    c.function = 1;
    c.v = 0;
    c.Do = 1;
    c.Dm = 0;
    c.mu = 0.05;
    c = asStored(c);
    const kernvarRecord r = recordOf(c, src::LineContinuous);
    const double D = c.Do * c.u / c.R, U = c.u / c.R, root = std::sqrt(U * U + 4 * c.mu * D);
    for (double x : {2.0, 10.0, 25.0}) {
        const double steady = c.M / c.R / root * std::exp(x * (U - root) / (2 * D));
        const float t = 4000.0f;
        EXPECT_CLOSE(bm::line_contin_injection(r, t, static_cast<float>(x), bm::alpha_t(r, t), lineFactor(r),
                                               t / 100.0f, 100),
                     steady, 1e-4, 0.0)
            << "x = " << x;
    }
}

INSTANTIATE_TEST_SUITE_P(Kernvar, EachFunction, ::testing::Values(1, 2, 3, 4), functionName);

// ---- the start and the faults ----

TEST(KernvarStart, EverySourceIsZeroAtTimeZeroWithoutFault) {
    for (int f = 1; f <= 4; ++f) {
        Case c;
        c.function = f;
        const kernvarRecord r = recordOf(c, src::PointInstantaneous);
        const float alpha = bm::alpha_t(r, 0.0f);
        EXPECT_EQ(alpha, 0.0f);
        for (float t : {0.0f, -1.0f}) {
            EXPECT_EQ(bm::point_instan_injection(r, t, 3.0f, 1.0f, alpha, pointFactor(r)), 0.0f);
            EXPECT_EQ(bm::point_initial_concentration(r, t, 3.0f, 1.0f, alpha, pointInitialFactor(r)), 0.0f);
            EXPECT_EQ(bm::point_contin_injection(r, t, 3.0f, 1.0f, alpha, pointFactor(r), t / 100.0f, 100), 0.0f);
            EXPECT_EQ(bm::line_instan_injection(r, t, 3.0f, alpha, lineFactor(r)), 0.0f);
            EXPECT_EQ(bm::line_initial_concentration(r, t, 3.0f, alpha, lineFactor(r)), 0.0f);
            EXPECT_EQ(bm::line_contin_injection(r, t, 3.0f, alpha, lineFactor(r), t / 100.0f, 100), 0.0f);
        }
    }
}

TEST(KernvarStart, TheSmallestTimeOfTheProgramGivesNothingAwayFromTheSource) {
    Case c;
    const kernvarRecord r = recordOf(c, src::PointInstantaneous);
    const float t = 0.00001f;
    const float alpha = bm::alpha_t(r, t);
    EXPECT_EQ(bm::point_instan_injection(r, t, 5.0f, 0.0f, alpha, pointFactor(r)), 0.0f);
    EXPECT_EQ(bm::line_instan_injection(r, t, 5.0f, alpha, lineFactor(r)), 0.0f);
    EXPECT_EQ(bm::point_contin_injection(r, t, 5.0f, 0.0f, alpha, pointFactor(r), t / 100.0f, 100), 0.0f);
    EXPECT_EQ(bm::line_contin_injection(r, t, 5.0f, alpha, lineFactor(r), t / 100.0f, 100), 0.0f);
}

TEST(KernvarFaults, PointSourceWithoutTransverseRatioDividesByZero) {
    Case c;
    c.a = 0;
    const kernvarRecord r = recordOf(c, src::PointInstantaneous);
    const float alpha = bm::alpha_t(r, 10.0f);
    EXPECT_EQ(raisedError([&] { bm::point_instan_injection(r, 10.0f, 5.0f, 1.0f, alpha, 0.0f); }),
              bm::err::DivisionByZero);
    EXPECT_EQ(raisedError([&] { bm::point_contin_injection(r, 10.0f, 5.0f, 1.0f, alpha, 0.0f, 0.1f, 100); }),
              bm::err::DivisionByZero);
    // The line sources do not use the ratio.
    EXPECT_EQ(raisedError([&] { bm::line_instan_injection(r, 10.0f, 5.0f, alpha, lineFactor(r)); }), 0);
}

TEST(KernvarFaults, NoDispersionAtAllDividesByZero) {
    Case c;
    c.Dm = 0;
    c.Do = 0;
    const kernvarRecord r = recordOf(c, src::PointInstantaneous);
    const float alpha = bm::alpha_t(r, 10.0f);
    EXPECT_EQ(alpha, 0.0f);
    EXPECT_EQ(raisedError([&] { bm::point_instan_injection(r, 10.0f, 5.0f, 1.0f, alpha, pointFactor(r)); }),
              bm::err::DivisionByZero);
    EXPECT_EQ(raisedError([&] { bm::line_contin_injection(r, 10.0f, 5.0f, alpha, lineFactor(r), 0.1f, 100); }),
              bm::err::DivisionByZero);
}

TEST(KernvarFaults, ANegativeAlphaIsAnInvalidCall) {
    Case c;
    const kernvarRecord r = recordOf(c, src::PointInstantaneous);
    EXPECT_EQ(raisedError([&] { bm::line_instan_injection(r, 10.0f, 5.0f, -1.0f, lineFactor(r)); }),
              bm::err::InvalidProcedureCall);
}

TEST(KernvarStart, ContinuousLineSourceAtItsPlaneIsFinite) {
    // At x = 0 the integrand has a 1/sqrt singularity at zero elapsed time:
    // with u = mu = 0 and constant D' the integral is (M/R) sqrt(t / (pi D')).
    Case c;
    c.function = 1;
    c.u = 0;
    c.v = 0;
    c.mu = 0;
    c.Dm = 0.5;
    c = asStored(c);
    const kernvarRecord r = recordOf(c, src::LineContinuous);
    const float t = 10.0f;
    const double expected = c.M / c.R * std::sqrt(t / (std::numbers::pi * c.Dm / c.R));
    EXPECT_CLOSE(bm::line_contin_injection(r, t, 0.0f, bm::alpha_t(r, t), lineFactor(r), t / 100, 100), expected,
                 1e-4, 0.0);
}

// ---- the lists ----

TEST(KernvarLists, InitializeFillsMinimumPlusMultiplesOfTheInterval) {
    kernvarRecord r{};
    r.timeMinimum = 0.5f;
    r.timeInterval = 0.1f;
    r.timeCount = 4;
    r.xMinimum = 10.0f;
    r.xInterval = 2.5f;
    r.xCount = 3;
    r.yMinimum = -1.0f;
    r.yInterval = 0.0f;
    r.yCount = 1;
    std::vector<float> t(6, -99.0f), x(5, -99.0f), y(3, -99.0f);
    bm::initialize_t_x_y(r, &t[1], &x[1], &y[1]);
    const double times[] = {0.5, 0.6, 0.7, 0.8};
    for (int i = 0; i < 4; ++i) EXPECT_CLOSE(t[i + 1], times[i], 1e-6, 0.0);
    EXPECT_EQ(t[0], -99.0f);
    EXPECT_EQ(t[5], -99.0f);
    EXPECT_EQ(x[1], 10.0f);
    EXPECT_EQ(x[2], 12.5f);
    EXPECT_EQ(x[3], 15.0f);
    EXPECT_EQ(x[4], -99.0f);
    EXPECT_EQ(y[1], -1.0f);
    EXPECT_EQ(y[2], -99.0f);
    bm::initialize_t_x_y(r, nullptr, &x[1], nullptr);  // a missing list is skipped
}

}  // namespace
