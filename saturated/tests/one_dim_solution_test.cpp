// The one-dimensional driver: the grid, the counts, the aquifer length, the
// clamp and superposition, Stop, the selected point and the mode text.

#include <gtest/gtest.h>

#include <cmath>

#include "model/number_text.h"
#include "testing/one_dim_test_model.h"
#include "saturated/one_dim_kernels.h"
#include "saturated/one_dim_parameters.h"
#include "saturated/one_dim_solution.h"
#include "saturated/ratio_clamp.h"
#include "shell/base/runtime_error.h"
#include "testing/is_close.h"
#include "testing/scripted_user_interface.h"
#include "transport_fd_reference.h"

namespace bm {
namespace {

using testkit::expectRunTimeError;
using testkit::oneDimModel;
using testkit::ScriptedUserInterface;
using testkit::semiInfiniteDirichletReference;

constexpr double kLambda = 0.1;

double solve(DataSet& d, ScriptedUserInterface& ui, bool monteCarlo = false, int iteration = 0) {
    OneDimParameters p;
    fillOneDimParameters(d, p, monteCarlo, iteration);
    return solveOneDimensional(d, p, monteCarlo, ui);
}

TEST(OneDimParameters, FillsEffectiveValuesAndBoundaryType) {
    DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
    d.velocity = "0.6";
    d.porosity = "0.3";
    d.retardation = "4";
    d.dispersionX = "2";
    d.halfLife = "10";
    d.xRange = "5:25:2";
    d.timeRange = "1:9:0.5:3";
    OneDimParameters p;
    fillOneDimParameters(d, p, false, 7);
    EXPECT_EQ(p.boundaryType, 1);
    EXPECT_DOUBLE_EQ(p.effectiveVelocity, 0.5);  // 0.6 / 0.3 / 4
    EXPECT_DOUBLE_EQ(p.effectiveDispersion, 0.5);
    EXPECT_DOUBLE_EQ(p.effectiveHalfLife, 40.0);
    EXPECT_EQ(p.xMin, 5.0);
    EXPECT_EQ(p.xMax, 25.0);
    EXPECT_EQ(p.xInterval, 2.0);
    EXPECT_EQ(p.tMin, 1.0);
    EXPECT_EQ(p.tMax, 9.0);
    EXPECT_EQ(p.tInterval, 0.5);
    EXPECT_EQ(p.aquiferCode, "Semi-Infinite");
    EXPECT_EQ(p.iteration, 0);

    EXPECT_EQ(boundaryTypeOf("dirichlet"), 1);
    EXPECT_EQ(boundaryTypeOf("Dirichlet/Exp. Decay"), 1);
    EXPECT_EQ(boundaryTypeOf("Cauchy"), 3);
    EXPECT_EQ(boundaryTypeOf("Dirichle"), 3);
    EXPECT_EQ(boundaryTypeOf(""), 3);
    d.aquiferType = "An aquifer with a very long name";
    fillOneDimParameters(d, p, false, 0);
    EXPECT_EQ(p.aquiferCode, "An aquifer with a ve");  // a fixed text of 20 characters
}

TEST(OneDimParameters, SingleNumberMeansAColumnFromZero) {
    DataSet d = oneDimModel("Finite", "Dirichlet");
    d.xRange = "7";
    d.timeRange = "3";
    OneDimParameters p;
    fillOneDimParameters(d, p, false, 0);
    EXPECT_EQ(p.xMin, 0.0);
    EXPECT_EQ(p.xMax, 7.0);
    EXPECT_EQ(p.tMin, 0.0);
    // a range with colons that counts one term keeps its minimum
    d.xRange = "4:100:0:7";
    fillOneDimParameters(d, p, false, 0);
    EXPECT_EQ(p.xMin, 4.0);
}

TEST(OneDimParameters, ZeroPorosityIsADivisionByZero) {
    DataSet d = oneDimModel("Finite", "Dirichlet");
    d.porosity = "0";
    OneDimParameters p;
    expectRunTimeError(err::DivisionByZero, [&] { fillOneDimParameters(d, p, false, 0); });
}

TEST(OneDimSolution, SemiInfiniteGridMatchesTheClosedForm) {
    DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
    d.velocity = "0.6";
    d.porosity = "0.3";
    d.retardation = "4";
    d.dispersionX = "2";  // effective 0.5
    d.halfLife = "1.7328679513998633";  // effective ln 2 / 0.1
    ScriptedUserInterface ui;
    const double last = solve(d, ui);
    ASSERT_EQ(d.numXTerms, 11);
    ASSERT_EQ(d.numTTerms, 6);
    for (int j = 1; j <= 6; ++j) {
        EXPECT_EQ(d.tValues(j), j - 1.0);
        for (int i = 1; i <= 11; ++i) {
            EXPECT_EQ(d.xValues(i), i - 1.0);
            const double expected = semiInfiniteDirichletReference(0.5, 0.5, kLambda, i - 1.0, j - 1.0);
            EXPECT_CLOSE(d.result1D(i, j), expected, 1e-12, 1e-15) << i << " " << j;
        }
    }
    EXPECT_EQ(last, d.result1D(11, 6));
    // one progress step per point, of the saturated screen
    ASSERT_EQ(ui.progress.size(), 66u);
    EXPECT_EQ(ui.progress.back().total, 66.0);
    EXPECT_EQ(ui.progress.back().done, 66.0);
    EXPECT_EQ(ui.progress.front().done, 1.0);
    EXPECT_EQ(ui.progress.front().owner, ProgressOwner::InputForm);
}

TEST(OneDimSolution, MultiChemicalModelReportsToItsOwnScreen) {
    DataSet d = oneDimModel("Semi-Infinite", "Cauchy");
    d.multiChemical = true;
    ScriptedUserInterface ui;
    solve(d, ui);
    ASSERT_FALSE(ui.progress.empty());
    EXPECT_EQ(ui.progress.front().owner, ProgressOwner::MultiChemicalForm);
}

TEST(OneDimSolution, CountsRoundHalfToEven) {
    ScriptedUserInterface ui;
    struct Case {
        const char* range;
        int count;
        double last;
    };
    for (const Case& c : {Case{"0:10:3", 4, 9}, Case{"0:10:4", 4, 12}, Case{"0:9:2", 6, 10}, Case{"0:11:2", 6, 10},
                          Case{"0:100:0:50", 1, 50}}) {
        DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
        d.xRange = c.range;
        parseCoordinates(d);
        solve(d, ui);
        EXPECT_EQ(d.numXTerms, c.count) << c.range;
        EXPECT_EQ(d.xValues.ub(), c.count) << c.range;
        EXPECT_EQ(d.xValues(c.count), c.last) << c.range;
    }
}

TEST(OneDimSolution, BadXCountIsRepairedAndOnlyThenTheTimeCount) {
    ScriptedUserInterface ui;
    {
        DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
        d.xRange = "10:0:1";  // -9 terms
        d.timeRange = "5:0:1";
        parseCoordinates(d);
        solve(d, ui);
        EXPECT_EQ(d.numXTerms, 1);
        EXPECT_EQ(d.numTTerms, 1);
        EXPECT_EQ(d.xValues(1), d.xConstant);
        EXPECT_EQ(d.tValues(1), d.tConstant);
    }
    {
        // a bad time count beside a good x count is left as it is: no time list,
        // and the selected point then finds no time slot
        DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
        d.timeRange = "5:0:1";
        parseCoordinates(d);
        expectRunTimeError(err::SubscriptOutOfRange, [&] { solve(d, ui); });
        EXPECT_EQ(d.numXTerms, 11);
        EXPECT_EQ(d.numTTerms, -4);
    }
}

TEST(OneDimSolution, SingleNumberRangeIsOnePointAtItsValueOverAColumnFromZero) {
    // A finite aquifer "7" is the column 0..7, evaluated at x = 7 only.
    DataSet d = oneDimModel("Finite", "Dirichlet");
    d.xRange = "7";
    d.timeRange = "0:6:2";
    parseCoordinates(d);
    ScriptedUserInterface ui;
    solve(d, ui);
    ASSERT_EQ(d.numXTerms, 1);
    EXPECT_EQ(d.xValues(1), 7.0);
    testkit::FdProblem problem;
    problem.velocity = 1;
    problem.dispersion = 0.5;
    problem.decay = kLambda;
    problem.length = 7;
    problem.cells = 70;
    problem.timeStep = 0.02;
    const auto reference = testkit::fdSolution(problem, {7.0}, {2.0, 4.0, 6.0});
    for (int j = 2; j <= 4; ++j) EXPECT_CLOSE(d.result1D(1, j), reference[static_cast<std::size_t>(j - 2)][0], 1e-5, 1e-6);
}

TEST(OneDimSolution, FiniteAquiferLengthIsTheExtentOfTheRange) {
    // 10:100:10: L is 90 while the positions run from 10 to 100, unshifted.
    DataSet d = oneDimModel("Finite", "Cauchy");
    d.xRange = "10:100:10";
    d.timeRange = "0:20:10";
    parseCoordinates(d);
    ScriptedUserInterface ui;
    solve(d, ui);
    ASSERT_EQ(d.numXTerms, 10);
    EXPECT_EQ(d.xValues(1), 10.0);
    EXPECT_EQ(d.xValues(10), 100.0);
    testkit::FdProblem problem;
    problem.velocity = 1;
    problem.dispersion = 0.5;
    problem.decay = kLambda;
    problem.cauchy = true;
    problem.length = 90;
    problem.cells = 900;
    problem.timeStep = 0.05;
    const auto reference = testkit::fdSolution(problem, {10.0, 20.0, 50.0, 90.0}, {10.0, 20.0});
    for (int j = 2; j <= 3; ++j) {
        const auto& row = reference[static_cast<std::size_t>(j - 2)];
        EXPECT_CLOSE(d.result1D(1, j), row[0], 1e-5, 1e-6);
        EXPECT_CLOSE(d.result1D(2, j), row[1], 1e-5, 1e-6);
        EXPECT_CLOSE(d.result1D(5, j), row[2], 1e-5, 1e-6);
        EXPECT_CLOSE(d.result1D(9, j), row[3], 1e-5, 1e-6);
    }
}

TEST(OneDimSolution, RatioAboveOneIsThrownAwayBeforeSuperposition) {
    EXPECT_EQ(clampRatio(1.0000001), 0.0);
    EXPECT_EQ(clampRatio(1.0), 1.0);
    EXPECT_EQ(clampRatio(0.25), 0.25);
    EXPECT_EQ(clampRatio(-1e-300), 0.0);
    // A negative half-life makes the contaminant grow: near the inlet C/Co
    // passes 1 and is stored as 0; the later term's share still adds on top.
    const double lambda = -0.1;
    DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
    d.halfLife = "-6.931471805599453";
    d.superpositionIndex = 2;
    d.terms.redim(2);
    d.terms(1) = {"0", "1"};
    d.terms(2) = {"1", "2"};
    ScriptedUserInterface ui;
    solve(d, ui);
    int thrownAway = 0;
    for (int j = 2; j <= 6; ++j) {
        for (int i = 1; i <= 11; ++i) {
            const double x = i - 1.0, t = j - 1.0;
            const double first = semiInfiniteDirichletReference(1, 0.5, lambda, x, t);
            const double second = t > 1 ? semiInfiniteDirichletReference(1, 0.5, lambda, x, t - 1) : 0.0;
            const double keptFirst = first > 1 ? 0.0 : first;
            const double keptSecond = second > 1 ? 0.0 : second;
            if (first > 1 + 1e-9) ++thrownAway;
            if (std::fabs(first - 1) < 1e-9 || std::fabs(second - 1) < 1e-9) continue;  // too close to call
            EXPECT_CLOSE(d.result1D(i, j), keptFirst + 1.0 * keptSecond, 1e-12, 1e-14) << x << " " << t;
        }
    }
    EXPECT_GT(thrownAway, 5);
}

TEST(OneDimSolution, SuperpositionAddsStepsOfLaterTerms) {
    DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
    d.xRange = "0.01";
    d.timeRange = "3";
    d.superpositionIndex = 2;
    d.terms.redim(2);
    d.terms(1) = {"0", "4"};
    d.terms(2) = {"3", "10"};  // starts at the time computed: adds nothing
    parseCoordinates(d);
    ScriptedUserInterface ui;
    solve(d, ui);
    const double base = semiInfiniteDirichletReference(1, 0.5, kLambda, 0.01, 3);
    EXPECT_CLOSE(d.result1D(1, 1), base, 1e-12, 0);
    // a moment earlier: the full step (10 - 4) / 4 times a small C2
    d.terms(2).time = "2.99999";
    solve(d, ui);
    const double small = semiInfiniteDirichletReference(1, 0.5, kLambda, 0.01, 1e-5);
    EXPECT_GT(small, 1e-4);
    EXPECT_LT(small, 1e-2);
    EXPECT_CLOSE(d.result1D(1, 1), base + 1.5 * small, 1e-9, 0);
    // a later term above the first is allowed to pass 1
    d.terms(2).time = "0";
    d.terms(2).concentration = "12";
    solve(d, ui);
    EXPECT_GT(d.result1D(1, 1), 1.0);
}

TEST(OneDimSolution, OneTermReadsNoTerms) {
    DataSet d = oneDimModel("Semi-Infinite", "Cauchy");
    d.terms.clear();  // any read would be a bounds error
    ScriptedUserInterface ui;
    EXPECT_NO_THROW(solve(d, ui));
    EXPECT_GT(d.result1D(2, 3), 0.0);
}

TEST(OneDimSolution, ZeroFirstTermConcentrationDividesByZero) {
    DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
    d.superpositionIndex = 2;
    d.terms.redim(2);
    d.terms(1) = {"0", "0"};
    d.terms(2) = {"1", "2"};
    ScriptedUserInterface ui;
    expectRunTimeError(err::DivisionByZero, [&] { solve(d, ui); });
}

TEST(OneDimSolution, StopBeforeTheFirstPointLeavesTheGridAtZero) {
    DataSet d = oneDimModel("Finite", "Cauchy");
    d.stopRequested = true;
    d.currentConcentration = 0.125;
    ScriptedUserInterface ui;
    EXPECT_EQ(solve(d, ui), 0.0);
    EXPECT_FALSE(d.stopRequested);
    EXPECT_EQ(d.calculationMode, "Regular");
    EXPECT_EQ(d.currentConcentration, 0.125);
    ASSERT_EQ(d.numXTerms, 11);
    for (int j = 1; j <= 6; ++j)
        for (int i = 1; i <= 11; ++i) EXPECT_EQ(d.result1D(i, j), 0.0);
    EXPECT_TRUE(ui.progress.empty());
}

TEST(OneDimSolution, StopMidGridKeepsThePointsDone) {
    DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
    ScriptedUserInterface ui;
    ui.onProgress = [&](const ScriptedUserInterface::Progress& p) {
        if (p.done == 15) d.stopRequested = true;
    };
    EXPECT_EQ(solve(d, ui), 0.0);
    EXPECT_FALSE(d.stopRequested);
    EXPECT_EQ(ui.progress.size(), 15u);
    // time outer, x inner: the first 15 points are all of t = 0 and four of t = 1
    EXPECT_EQ(d.result1D(1, 1), 1.0);
    EXPECT_GT(d.result1D(4, 2), 0.0);
    EXPECT_EQ(d.result1D(5, 2), 0.0);
    EXPECT_EQ(d.result1D(11, 6), 0.0);
    EXPECT_EQ(d.calculationMode, "Regular");
}

TEST(OneDimSolution, SelectedPointIsComputedAndWrittenAsTheModeText) {
    DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
    d.xRange = "0:10:1:4";
    d.timeRange = "0:5:1:2.5";
    parseCoordinates(d);
    ScriptedUserInterface ui;
    solve(d, ui);
    const double expected = semiInfiniteDirichletReference(1, 0.5, kLambda, 4, 2.5);
    EXPECT_CLOSE(d.currentConcentration, expected, 1e-12, 0);
    EXPECT_EQ(d.calculationMode, formatNumber(d.currentConcentration));
    // the lists are put back
    EXPECT_EQ(d.xValues(1), 0.0);
    EXPECT_EQ(d.tValues(1), 0.0);
}

TEST(OneDimSolution, MonteCarloIterationIsOnePointAtTheSimulationPoint) {
    DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
    d.calculationMode = "Monte Carlo";
    d.mcAtX = "3";
    d.mcAtT = "4";
    ScriptedUserInterface ui;
    const double value = solve(d, ui, true, 1);
    EXPECT_EQ(d.numXTerms, 1);
    EXPECT_EQ(d.numTTerms, 1);
    EXPECT_EQ(d.xValues(1), 3.0);
    EXPECT_EQ(d.tValues(1), 4.0);
    const double expected = semiInfiniteDirichletReference(1, 0.5, kLambda, 3, 4);
    EXPECT_CLOSE(value, expected, 1e-12, 0);
    EXPECT_EQ(d.currentConcentration, value);
    EXPECT_EQ(d.calculationMode, "Monte Carlo");
    EXPECT_TRUE(ui.progress.empty());  // a simulation reports per iteration, not per point
}

TEST(OneDimSolution, Root1FailureEndsTheDriverSilently) {
    // Flow against the inlet with V L / (2D) <= -1: the first branch holds no eigenvalue.
    DataSet d = oneDimModel("Finite", "Dirichlet");
    d.velocity = "-1";
    d.currentConcentration = 0.5;
    ScriptedUserInterface ui;
    EXPECT_EQ(solve(d, ui), 0.0);
    EXPECT_EQ(d.numXTerms, 11);
    for (int j = 1; j <= 6; ++j)
        for (int i = 1; i <= 11; ++i) EXPECT_EQ(d.result1D(i, j), 0.0);
    EXPECT_EQ(d.calculationMode, "Regular");
    EXPECT_EQ(d.currentConcentration, 0.5);
    EXPECT_TRUE(ui.messages.empty());
}

TEST(OneDimSolution, FiniteCauchyInDecayFailsWhenItsSeriesRunsOut) {
    DataSet d = oneDimModel("Finite", "Cauchy");
    d.timeRange = "0:0.0002:0.0001";
    parseCoordinates(d);
    ScriptedUserInterface ui;
    expectRunTimeError(err::TypeMismatch, [&] { solve(d, ui); });
}

TEST(OneDimSolution, ZeroVelocityInAFiniteCauchyAquiferDividesByZero) {
    DataSet d = oneDimModel("Finite", "Cauchy");
    d.velocity = "0";
    ScriptedUserInterface ui;
    expectRunTimeError(err::DivisionByZero, [&] { solve(d, ui); });
}

}  // namespace
}  // namespace bm
