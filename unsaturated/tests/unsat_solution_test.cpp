// The unsaturated driver against an independent long-double evaluation of its
// closed form, against the one-dimensional semi-infinite Dirichlet solution in
// pore-water terms, and through each of its branches and edge cases.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "model/number_text.h"
#include "model/ranges.h"
#include "montecarlo/monte_marker.h"
#include "saturated/one_dim_kernels.h"
#include "testing/one_dim_test_model.h"
#include "shell/base/runtime_error.h"
#include "testing/is_close.h"
#include "testing/scripted_user_interface.h"
#include "unsat_reference.h"
#include "unsaturated/unsat_parameters.h"
#include "unsaturated/unsat_solution.h"

namespace bm {
namespace {

using testkit::expectRunTimeError;
using testkit::referenceRatio;
using testkit::referenceStep;
using testkit::referenceCoefficients;
using testkit::ScriptedUserInterface;
using testkit::UnsatInputs;
using testkit::UnsatTerm;
using testkit::unsatModel;

double runDriver(DataSet& d, UserInterface& ui, bool monteCarlo = false, int iteration = 0) {
    UnsatParameters p;
    fillUnsatParameters(d, p, monteCarlo, iteration);
    return solveUnsaturated(d, p, monteCarlo, ui);
}

// Compares the whole grid with the reference; returns the largest relative difference.
double expectGridMatches(const DataSet& d, const UnsatInputs& in, const std::vector<UnsatTerm>& terms, double rtol,
                         double atol = 1e-300) {
    const ParsedRange xr = parseRange(d.xRange);
    const ParsedRange tr = parseRange(d.timeRange);
    const double xMin = contains(d.xRange, ":") ? xr.minimum : 0.0;
    const double tMin = contains(d.timeRange, ":") ? tr.minimum : 0.0;
    double worst = 0.0;
    for (int j = 1; j <= d.numTTerms; ++j) {
        for (int i = 1; i <= d.numXTerms; ++i) {
            const double expected =
                static_cast<double>(referenceRatio(in, terms, xMin, tMin, d.xValues(i), d.tValues(j)));
            const double got = d.resultUnsat(i, j);
            EXPECT_CLOSE(got, expected, rtol, atol) << " at x " << d.xValues(i) << ", t " << d.tValues(j);
            if (expected != 0.0) worst = std::max(worst, std::fabs(got - expected) / std::fabs(expected));
        }
    }
    return worst;
}

TEST(UnsatSolution, ConstantInletWithSorptionAndDecayMatchesReference) {
    const UnsatInputs in;  // q 0.05, Dv 0.4, half-life 20, rho 1.6, Kd 0.2, theta 0.4, Sw 0.6
    DataSet d = unsatModel(in, "0:10:0.5", "0:50:5");
    ScriptedUserInterface ui;
    runDriver(d, ui);
    ASSERT_EQ(d.numXTerms, 21);
    ASSERT_EQ(d.numTTerms, 11);
    const double worst = expectGridMatches(d, in, {{0, 1}}, 1e-13);
    RecordProperty("max_relative_difference", testkit::numberText(worst));
    // the profile is a front moving down: below 1 inside, 1 at the inlet
    EXPECT_EQ(d.resultUnsat(1, 11), 1.0);
    EXPECT_GT(d.resultUnsat(5, 11), d.resultUnsat(10, 11));
}

TEST(UnsatSolution, DecayingSourceMatchesReference) {
    UnsatInputs in;
    in.constantInlet = false;
    in.gamma = 0.02;  // above lambda / R = 0.0149: the radicand shrinks but stays positive
    DataSet d = unsatModel(in, "0:10:0.5", "0:50:5");
    ScriptedUserInterface ui;
    runDriver(d, ui);
    RecordProperty("max_relative_difference", testkit::numberText(expectGridMatches(d, in, {{0, 1}}, 1e-13)));
    // at the inlet the concentration is the source's own: exp(-gamma T)
    EXPECT_CLOSE(d.resultUnsat(1, 11), std::exp(-0.02 * 50), 1e-14, 0);
}

TEST(UnsatSolution, LargeArgumentsMatchReference) {
    // exp((U + V) X / 2D) passes 1e400 and erfc of the second argument falls
    // below 1e-400: only their product is a double.
    UnsatInputs in;
    in.q = 1;
    in.theta = 1;
    in.Sw = 1;
    in.Kd = 0;
    in.Dv = 0.1;
    in.halfLife = 10;
    DataSet d = unsatModel(in, "0:100:10", "0:100:10");
    ScriptedUserInterface ui;
    runDriver(d, ui);
    const double worst = expectGridMatches(d, in, {{0, 1}}, 1e-12);
    RecordProperty("max_relative_difference", testkit::numberText(worst));
    // x 100, t 50: the second term's exponential alone would be e^1007
    EXPECT_GT(d.resultUnsat(11, 6), 1e-70);
    EXPECT_LT(d.resultUnsat(11, 6), 1e-40);
}

TEST(UnsatSolution, WithoutSorptionItIsTheOneDimensionalSolutionInPoreWaterVelocity) {
    UnsatInputs in;
    in.Kd = 0;
    DataSet d = unsatModel(in, "0:10:0.5", "0:50:5");
    ScriptedUserInterface ui;
    runDriver(d, ui);
    OneDimParameters one;
    one.effectiveVelocity = in.q / (in.theta * in.Sw);
    one.effectiveDispersion = in.Dv;
    one.effectiveHalfLife = in.halfLife;
    double worst = 0;
    for (int j = 1; j <= d.numTTerms; ++j) {
        for (int i = 1; i <= d.numXTerms; ++i) {
            double expected = 0;
            semiInfiniteDirichletRatio(one, d.xValues(i), d.tValues(j), expected);
            EXPECT_CLOSE(d.resultUnsat(i, j), expected, 1e-13, 1e-300);
            if (expected != 0) worst = std::max(worst, std::fabs(d.resultUnsat(i, j) / expected - 1));
        }
    }
    RecordProperty("max_relative_difference", testkit::numberText(worst));
}

TEST(UnsatSolution, WithSorptionItIsTheOneDimensionalSolutionWithRetardation) {
    const UnsatInputs in;
    DataSet d = unsatModel(in, "0:10:0.5", "0:50:5");
    ScriptedUserInterface ui;
    runDriver(d, ui);
    const double R = 1 + in.Kd * in.rho / (in.Sw * in.theta);
    OneDimParameters one;
    one.effectiveVelocity = in.q / (in.theta * in.Sw) / R;
    one.effectiveDispersion = in.Dv / R;
    one.effectiveHalfLife = in.halfLife * R;
    for (int j = 1; j <= d.numTTerms; ++j) {
        for (int i = 1; i <= d.numXTerms; ++i) {
            double expected = 0;
            semiInfiniteDirichletRatio(one, d.xValues(i), d.tValues(j), expected);
            EXPECT_CLOSE(d.resultUnsat(i, j), expected, 1e-12, 1e-300);
        }
    }
}

TEST(UnsatSolution, DecayingSourceSatisfiesTheTransportEquation) {
    // Central differences of the computed field against
    // dC/dT = D d2C/dX2 - V dC/dX - lambda C (retarded coefficients), and the
    // inlet value exp(-gamma T).
    UnsatInputs in;
    in.constantInlet = false;
    in.gamma = 0.01;
    ScriptedUserInterface ui;
    const auto c = [&](double x, double t) {
        DataSet d = unsatModel(in, testkit::numberText(x), testkit::numberText(t));
        runDriver(d, ui);
        return d.resultUnsat(1, 1);
    };
    const double x0 = 1.5, t0 = 20;
    const auto k = referenceCoefficients(in);
    // residual of the equation with steps h; second order in h
    const auto residual = [&](double h, double& dT) {
        dT = (c(x0, t0 + h) - c(x0, t0 - h)) / (2 * h);
        const double dX = (c(x0 + h, t0) - c(x0 - h, t0)) / (2 * h);
        const double dXX = (c(x0 + h, t0) - 2 * c(x0, t0) + c(x0 - h, t0)) / (h * h);
        return dT - (static_cast<double>(k.D) * dXX - static_cast<double>(k.V) * dX -
                     static_cast<double>(k.lambda) * c(x0, t0));
    };
    double dT = 0;
    const double coarse = residual(0.02, dT);
    const double fine = residual(0.01, dT);
    RecordProperty("pde_residual", testkit::numberText(fine));
    EXPECT_GT(std::fabs(dT), 1e-3);
    EXPECT_LT(std::fabs(fine), 2e-5 * std::fabs(dT));
    EXPECT_GT(std::fabs(coarse / fine), 3.5);  // the residual is the differences' own error
    EXPECT_LT(std::fabs(coarse / fine), 4.5);
    EXPECT_CLOSE(c(0, t0), std::exp(-0.01 * t0), 1e-14, 0);
}

TEST(UnsatSolution, DecayExactlyZeroTakesTheNoDecayForm) {
    UnsatInputs in;
    in.halfLife = std::numeric_limits<double>::infinity();
    DataSet d = unsatModel(in, "0:10:1", "0:50:10");
    d.halfLife = "1e400";  // too large for a double: ln 2 / half-life is exactly 0
    ScriptedUserInterface ui;
    runDriver(d, ui);
    expectGridMatches(d, in, {{0, 1}}, 1e-13);

    // A tiny decay rate takes the other form and agrees with it.
    UnsatInputs tiny = in;
    tiny.halfLife = 1e300;
    DataSet e = unsatModel(tiny, "0:10:1", "0:50:10");
    runDriver(e, ui);
    for (int j = 1; j <= 6; ++j)
        for (int i = 1; i <= 11; ++i) EXPECT_CLOSE(e.resultUnsat(i, j), d.resultUnsat(i, j), 1e-13, 1e-300);
}

TEST(UnsatSolution, DecayingSourceWithoutDegradationUsesVelocityAlone) {
    // With lambda exactly 0 the no-decay form is taken whatever gamma is, and
    // the source factor exp(-gamma T) is applied to it.
    UnsatInputs in;
    in.halfLife = std::numeric_limits<double>::infinity();
    in.constantInlet = false;
    in.gamma = 0.001;
    DataSet d = unsatModel(in, "0:10:1", "0:50:10");
    d.halfLife = "1e400";
    ScriptedUserInterface ui;
    runDriver(d, ui);
    UnsatInputs plain = in;
    plain.constantInlet = true;
    const auto k = referenceCoefficients(plain);
    for (int j = 2; j <= 6; ++j) {
        for (int i = 1; i <= 11; ++i) {
            const double T = d.tValues(j), X = d.xValues(i);
            const double expected = static_cast<double>(referenceStep(k, X, T)) * std::exp(-0.001 * T);
            EXPECT_CLOSE(d.resultUnsat(i, j), std::min(expected, 1.0), 1e-13, 1e-300);
        }
    }
}

TEST(UnsatSolution, StepAtTheTopOfTheRangeAtTimeZeroInBothConditions) {
    for (bool constant : {true, false}) {
        UnsatInputs in;
        in.constantInlet = constant;
        in.gamma = 0.02;
        DataSet d = unsatModel(in, "2:6:1", "0:4:1");
        ScriptedUserInterface ui;
        runDriver(d, ui);
        EXPECT_EQ(d.resultUnsat(1, 1), 1.0);  // x = xMin
        for (int i = 2; i <= 5; ++i) EXPECT_EQ(d.resultUnsat(i, 1), 0.0) << i;
        EXPECT_GT(d.resultUnsat(2, 2), 0.0);
    }
}

TEST(UnsatSolution, TimeZeroIsCountedFromTheStartOfTheTimeRange) {
    const UnsatInputs in;
    DataSet d = unsatModel(in, "0:4:1", "3:7:1");
    ScriptedUserInterface ui;
    runDriver(d, ui);
    EXPECT_EQ(d.resultUnsat(1, 1), 1.0);
    EXPECT_EQ(d.resultUnsat(2, 1), 0.0);
    expectGridMatches(d, in, {{0, 1}}, 1e-13);
}

TEST(UnsatSolution, SourceDecayPlaysNoPartAtTimeZero) {
    UnsatInputs in;
    in.constantInlet = false;
    in.gamma = 0.5;
    in.q = 0.5;  // a fast percolation keeps the radicand positive
    DataSet d = unsatModel(in, "0:4:1", "0:4:1");
    ScriptedUserInterface ui;
    runDriver(d, ui);
    EXPECT_EQ(d.resultUnsat(1, 1), 1.0);
    EXPECT_CLOSE(d.resultUnsat(1, 2), std::exp(-0.5), 1e-14, 0);
}

TEST(UnsatSolution, LaterTermStartingExactlyAtTAddsNothingAtT) {
    const UnsatInputs in;
    const std::vector<UnsatTerm> terms = {{0, 1}, {20, 3}};
    DataSet two = unsatModel(in, "0:10:1", "0:40:10", terms);
    DataSet one = unsatModel(in, "0:10:1", "0:40:10");
    ScriptedUserInterface ui;
    runDriver(two, ui);
    runDriver(one, ui);
    for (int i = 1; i <= 11; ++i) {
        EXPECT_EQ(two.resultUnsat(i, 3), one.resultUnsat(i, 3)) << i;  // t = 20
        EXPECT_EQ(two.resultUnsat(i, 2), one.resultUnsat(i, 2)) << i;  // t = 10
    }
    EXPECT_GT(two.resultUnsat(2, 4), one.resultUnsat(2, 4));  // t = 30: the step of 2 has begun
    expectGridMatches(two, in, terms, 1e-13);
}

TEST(UnsatSolution, LaterTermAgeIsNotReducedByTheStartOfTheTimeRange) {
    const UnsatInputs in;
    const std::vector<UnsatTerm> terms = {{10, 1}, {12, 2}};
    DataSet d = unsatModel(in, "0:5:1", "10:20:5", terms);
    ScriptedUserInterface ui;
    runDriver(d, ui);
    expectGridMatches(d, in, terms, 1e-13);
    // At t = 15 the second term is 3 old (15 - 12), not 5 (15 - 10) nor -7.
    const auto k = referenceCoefficients(in);
    const double first = static_cast<double>(referenceStep(k, 1, 5));
    EXPECT_CLOSE(d.resultUnsat(2, 2), first + static_cast<double>(referenceStep(k, 1, 3)), 1e-13, 0);
}

TEST(UnsatSolution, EachDirichletTermIsCappedAtOne) {
    // A negative half-life (a growing contaminant) lifts the closed form above 1.
    UnsatInputs in;
    in.halfLife = -5;
    in.q = 0.5;
    const std::vector<UnsatTerm> terms = {{0, 1}, {10, 2}};
    DataSet d = unsatModel(in, "0:10:1", "0:60:10", terms);
    ScriptedUserInterface ui;
    runDriver(d, ui);
    expectGridMatches(d, in, terms, 1e-13);
    const auto k = referenceCoefficients(in);
    ASSERT_GT(referenceStep(k, 10, 60), 1.0L);
    ASSERT_GT(referenceStep(k, 10, 50), 1.0L);
    EXPECT_EQ(d.resultUnsat(11, 7), 2.0);  // 1 + (2 - 1) / 1 * 1
}

TEST(UnsatSolution, DecayingSourceIsCappedAtOne) {
    UnsatInputs in;
    in.halfLife = -5;
    in.q = 0.5;
    in.constantInlet = false;
    in.gamma = 0.001;
    DataSet d = unsatModel(in, "0:10:1", "0:60:10");
    ScriptedUserInterface ui;
    runDriver(d, ui);
    expectGridMatches(d, in, {{0, 1}}, 1e-13);
    const auto k = referenceCoefficients(in);
    ASSERT_GT(referenceStep(k, 10, 60) * std::exp(-0.06L), 1.0L);
    EXPECT_EQ(d.resultUnsat(11, 7), 1.0);
}

TEST(UnsatSolution, NoClampAtZero) {
    // A second term that drops the inlet to -1 takes 2 C' from C: negative
    // once the first step has passed, and kept as it is.
    const UnsatInputs in;
    const std::vector<UnsatTerm> terms = {{0, 1}, {10, -1}};
    DataSet d = unsatModel(in, "0:4:1", "0:50:10", terms);
    ScriptedUserInterface ui;
    runDriver(d, ui);
    expectGridMatches(d, in, terms, 1e-12, 1e-14);
    EXPECT_LT(d.resultUnsat(1, 6), 0.0);
    EXPECT_CLOSE(d.resultUnsat(1, 6), -1.0, 1e-15, 0);  // at the inlet: 1 - 2 * 1
}

TEST(UnsatSolution, SuperpositionHasNoEffectOnTheDecayingSource) {
    UnsatInputs in;
    in.constantInlet = false;
    in.gamma = 0.01;
    DataSet three = unsatModel(in, "0:10:1", "0:50:10", {{0, 1}, {10, 5}, {20, 2}});
    DataSet one = unsatModel(in, "0:10:1", "0:50:10");
    ScriptedUserInterface ui;
    runDriver(three, ui);
    runDriver(one, ui);
    for (int j = 1; j <= 6; ++j)
        for (int i = 1; i <= 11; ++i) EXPECT_EQ(three.resultUnsat(i, j), one.resultUnsat(i, j));
}

TEST(UnsatSolution, OldContaminantWordKeepsThePreviousValueZeroEverywhere) {
    UnsatInputs in;
    in.constantInlet = false;
    DataSet d = unsatModel(in, "0:10:1:3", "0:50:10:20");
    d.contaminantType = "Dirichilet";
    ScriptedUserInterface ui;
    EXPECT_EQ(runDriver(d, ui), 0.0);
    for (int j = 1; j <= 6; ++j)
        for (int i = 1; i <= 11; ++i) EXPECT_EQ(d.resultUnsat(i, j), 0.0);  // even x = 0, t = 0
    EXPECT_EQ(d.currentConcentration, 0.0);
    EXPECT_EQ(d.calculationMode, "0");
    EXPECT_EQ(ui.progress.size(), 66u);
}

TEST(UnsatSolution, NegativeRadicandIsASquareRootFault) {
    UnsatInputs in;
    in.constantInlet = false;
    in.gamma = 0.2;  // 4 D (gamma - lambda / R) far above V^2
    DataSet d = unsatModel(in, "0:10:1", "0:50:10");
    ScriptedUserInterface ui;
    expectRunTimeError(err::InvalidProcedureCall, [&] { runDriver(d, ui); });
}

TEST(UnsatSolution, ZeroDivisorsAreRunTimeErrors) {
    const UnsatInputs in;
    {
        DataSet d = unsatModel(in, "5", "5");
        d.porosity = "0";
        ScriptedUserInterface ui;
        expectRunTimeError(err::DivisionByZero, [&] { runDriver(d, ui); });
    }
    {
        DataSet d = unsatModel(in, "5", "5");
        d.saturation = "0";
        ScriptedUserInterface ui;
        expectRunTimeError(err::DivisionByZero, [&] { runDriver(d, ui); });
    }
    {
        DataSet d = unsatModel(in, "5", "5");
        d.halfLife = "0";
        ScriptedUserInterface ui;
        expectRunTimeError(err::DivisionByZero, [&] { runDriver(d, ui); });
    }
    {
        DataSet d = unsatModel(in, "5", "5");
        d.dispersionX = "0";
        ScriptedUserInterface ui;
        expectRunTimeError(err::DivisionByZero, [&] { runDriver(d, ui); });
    }
    {
        // At the top of the column a zero dispersion is 0 / 0.
        DataSet d = unsatModel(in, "0:1:1", "0:1:1");
        d.dispersionX = "0";
        ScriptedUserInterface ui;
        expectRunTimeError(err::Overflow, [&] { runDriver(d, ui); });
    }
}

TEST(UnsatSolution, DispersionIsDividedByRetardationInPlace) {
    const UnsatInputs in;
    DataSet d = unsatModel(in, "0:2:1", "0:2:1");
    UnsatParameters p;
    fillUnsatParameters(d, p, false, 0);
    EXPECT_EQ(p.dispersion, in.Dv);
    ScriptedUserInterface ui;
    solveUnsaturated(d, p, false, ui);
    EXPECT_CLOSE(p.dispersion, in.Dv / (1 + in.Kd * in.rho / (in.Sw * in.theta)), 1e-15, 0);
}

TEST(UnsatSolution, StopIsTestedBeforeEachPoint) {
    const UnsatInputs in;
    DataSet d = unsatModel(in, "0:4:1", "0:20:10");
    ScriptedUserInterface ui;
    ui.onProgress = [&](const ScriptedUserInterface::Progress& p) {
        if (p.done == 7) d.stopRequested = true;
    };
    EXPECT_EQ(runDriver(d, ui), 0.0);
    EXPECT_FALSE(d.stopRequested);
    EXPECT_EQ(ui.progress.size(), 7u);
    EXPECT_EQ(d.calculationMode, "Regular");  // the selected point was never reached
    EXPECT_GT(d.resultUnsat(2, 2), 0.0);      // point 7: x 1, t 10
    for (int i = 3; i <= 5; ++i) EXPECT_EQ(d.resultUnsat(i, 2), 0.0);
    for (int i = 1; i <= 5; ++i) EXPECT_EQ(d.resultUnsat(i, 3), 0.0);

    // A Stop pressed before the run ends it before the first point.
    DataSet e = unsatModel(in, "0:4:1", "0:20:10");
    e.stopRequested = true;
    ScriptedUserInterface quiet;
    EXPECT_EQ(runDriver(e, quiet), 0.0);
    EXPECT_TRUE(quiet.progress.empty());
    EXPECT_FALSE(e.stopRequested);
}

TEST(UnsatSolution, ProgressPerPointGoesToTheScreenOfTheModel) {
    const UnsatInputs in;
    DataSet d = unsatModel(in, "0:4:1", "0:20:10");
    ScriptedUserInterface ui;
    runDriver(d, ui);
    ASSERT_EQ(ui.progress.size(), 15u);
    for (std::size_t k = 0; k < 15; ++k) {
        EXPECT_EQ(ui.progress[k].owner, ProgressOwner::UnsaturatedForm);
        EXPECT_EQ(ui.progress[k].total, 15.0);
        EXPECT_EQ(ui.progress[k].done, static_cast<double>(k + 1));
    }
    DataSet multi = unsatModel(in, "0:4:1", "0:20:10");
    multi.multiChemical = true;
    ScriptedUserInterface mui;
    runDriver(multi, mui);
    ASSERT_EQ(mui.progress.size(), 15u);
    EXPECT_EQ(mui.progress[0].owner, ProgressOwner::MultiUnsaturatedForm);
}

TEST(UnsatSolution, SelectedPointAndCalculationMode) {
    const UnsatInputs in;
    DataSet d = unsatModel(in, "0:10:1:2.5", "0:50:10:12");
    ScriptedUserInterface ui;
    const double last = runDriver(d, ui);
    EXPECT_EQ(last, d.resultUnsat(11, 6));
    const double expected = static_cast<double>(referenceRatio(in, {{0, 1}}, 0, 0, 2.5, 12));
    EXPECT_CLOSE(d.currentConcentration, expected, 1e-13, 0);
    EXPECT_EQ(d.calculationMode, formatNumber(d.currentConcentration));
    EXPECT_EQ(d.xValues(1), 0.0);  // put back
    EXPECT_EQ(d.tValues(1), 0.0);

    DataSet m = unsatModel(in, "0:10:1:2.5", "0:50:10:12");
    m.calculationMode = "Monte Carlo";
    runDriver(m, ui);
    EXPECT_EQ(m.calculationMode, "Monte Carlo");
    EXPECT_EQ(m.currentConcentration, d.currentConcentration);
}

TEST(UnsatSolution, SingleNumberRangesAreOnePointFromZero) {
    const UnsatInputs in;
    DataSet d = unsatModel(in, "5", "30");
    ScriptedUserInterface ui;
    runDriver(d, ui);
    ASSERT_EQ(d.numXTerms, 1);
    ASSERT_EQ(d.numTTerms, 1);
    EXPECT_EQ(d.xValues(1), 5.0);
    EXPECT_EQ(d.tValues(1), 30.0);
    EXPECT_CLOSE(d.resultUnsat(1, 1), static_cast<double>(referenceRatio(in, {{0, 1}}, 0, 0, 5, 30)), 1e-13, 0);
    EXPECT_EQ(d.currentConcentration, d.resultUnsat(1, 1));
}

TEST(UnsatSolution, BadDepthCountIsRepairedAndOnlyThenTheTimeCount) {
    const UnsatInputs in;
    // Both counts below 1: both become 1, at the Constants.
    DataSet d = unsatModel(in, "10:0:1:10", "5:0:1:5");
    ScriptedUserInterface ui;
    runDriver(d, ui);
    EXPECT_EQ(d.numXTerms, 1);
    EXPECT_EQ(d.numTTerms, 1);
    EXPECT_EQ(d.resultUnsat(1, 1), 1.0);  // X = 10 - 10, T = 5 - 5

    // A bad time count beside a good depth count stays: no time list, and the
    // selected point finds no first time.
    DataSet e = unsatModel(in, "0:2:1", "5:0:1");
    expectRunTimeError(err::SubscriptOutOfRange, [&] { runDriver(e, ui); });
    EXPECT_EQ(e.numTTerms, -4);
}

TEST(UnsatSolution, SimulationComputesOnePointFromTheSamples) {
    const UnsatInputs in;
    DataSet d = unsatModel(in, "0:10:1", "0:50:10");
    d.calculationMode = "Monte Carlo";
    d.velocity = formFieldMarker("0.05", 1);
    d.mcAtX = "3";
    d.mcAtT = "20";
    d.MonteSamples.redim({1, 3, 1});
    d.MonteSamples(1, 1, 1) = 0.03;
    d.MonteSamples(1, 2, 1) = 0.09;
    ScriptedUserInterface ui;
    const double c = runDriver(d, ui, true, 2);
    UnsatInputs sampled = in;
    sampled.q = 0.09;
    EXPECT_CLOSE(c, static_cast<double>(referenceRatio(sampled, {{0, 1}}, 0, 0, 3, 20)), 1e-13, 0);
    EXPECT_EQ(d.numXTerms, 1);
    EXPECT_EQ(d.numTTerms, 1);
    EXPECT_EQ(d.currentConcentration, c);
    EXPECT_EQ(d.calculationMode, "Monte Carlo");
    EXPECT_TRUE(ui.progress.empty());
}

}  // namespace
}  // namespace bm
