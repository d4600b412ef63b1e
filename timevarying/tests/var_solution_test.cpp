// The time-varying driver and its six solutions against the formulas written out
// in double (and a brute-force time integral for the continuous sources): the
// flat list, the selected point, progress, Stop, and a simulation.

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "testing/kernvar_reference.h"
#include "model/number_text.h"
#include "shell/base/runtime_error.h"
#include "testing/is_close.h"
#include "testing/scripted_user_interface.h"
#include "timevarying/tests/var_test_model.h"
#include "timevarying/var_solution.h"
#include "shell/base/raised_error.h"

namespace {

using namespace kernvar_ref;
using bm::testkit::ScriptedUserInterface;

const double kTimes[] = {20, 40};
const double kXs[] = {10, 20, 30};
const double kYs[] = {-5, 0, 5};

// The expected concentration of a source code at (t, x, y).
double expected(int code, const Case& c, double t, double x, double y) {
    switch (code) {
    case 1: return pointValue(c, t, x, y, alphaLong(c, t), true);
    case 2: return pointContinuous(c, t, x, y);
    case 3: return pointValue(c, t, x, y, alphaLong(c, t), false);
    case 4: return lineValue(c, t, x, alphaLong(c, t), true);
    case 5: return lineContinuous(c, t, x);
    default: return lineValue(c, t, x, alphaLong(c, t), false);
    }
}

int flatIndex(int k, int i, int j) { return (k - 1) * 3 * 3 + (i - 1) * 3 + j; }

struct SourceCase {
    const char* text;
    int code;
};
class EachSource : public ::testing::TestWithParam<SourceCase> {};

TEST_P(EachSource, RegularRunFillsTheFlatListAndTheSelectedPoint) {
    const SourceCase sc = GetParam();
    const bool line = sc.code >= 4;
    bm::DataSet d = var_test::model(sc.text, "Exponential");
    ScriptedUserInterface ui;
    const float returned = bm::solveTimeVarying(d, ui);
    const Case c = var_test::caseOf(4, 0.3, line);
    const double tolerance = (sc.code == 2 || sc.code == 5) ? 1e-4 : 2e-5;

    ASSERT_EQ(d.varTValues.ub(), 2);
    ASSERT_EQ(d.varXValues.ub(), 3);
    ASSERT_EQ(d.varYValues.ub(), 3);
    ASSERT_EQ(d.resultVar.ub(), 18);
    EXPECT_EQ(d.calculationMode, "Regular");
    double peak = 0;
    for (int k = 1; k <= 2; ++k)
        for (int i = 1; i <= 3; ++i)
            for (int j = 1; j <= 3; ++j) peak = std::max(peak, expected(sc.code, c, kTimes[k - 1], kXs[i - 1], kYs[j - 1]));
    for (int k = 1; k <= 2; ++k) {
        EXPECT_EQ(d.varTValues(k), static_cast<float>(kTimes[k - 1]));
        for (int i = 1; i <= 3; ++i)
            for (int j = 1; j <= 3; ++j) {
                const double want = expected(sc.code, c, kTimes[k - 1], kXs[i - 1], kYs[j - 1]);
                EXPECT_CLOSE(d.resultVar(flatIndex(k, i, j)), want, tolerance, 1e-7 * peak)
                    << "t " << kTimes[k - 1] << " x " << kXs[i - 1] << " y " << kYs[j - 1];
            }
    }
    // The selected point: the Constant of each range (30, 5, 40).
    const double point = expected(sc.code, c, 40, 30, line ? 0 : 5);
    EXPECT_CLOSE(d.currentConcentration, point, tolerance, 0.0);
    EXPECT_EQ(returned, static_cast<float>(d.currentConcentration));
    EXPECT_EQ(d.mcResultVar.ub(), 1);
    EXPECT_EQ(d.mcResultVar(1), returned);
    EXPECT_EQ(d.varResultText, bm::formatNumber(bm::generalText(returned)));
    EXPECT_FALSE(d.stopRequested);

    // Progress after each point: a line source has no y loop.
    const int points = line ? 6 : 18;
    ASSERT_EQ(ui.progress.size(), static_cast<std::size_t>(points));
    for (int p = 0; p < points; ++p) {
        EXPECT_EQ(ui.progress[p].owner, bm::ProgressOwner::TimeVaryingForm);
        EXPECT_EQ(ui.progress[p].total, points);
        EXPECT_EQ(ui.progress[p].done, p + 1);
    }
    EXPECT_TRUE(ui.messages.empty());
}

std::string sourceName(const ::testing::TestParamInfo<SourceCase>& param) {
    return "Code" + std::to_string(param.param.code);
}

INSTANTIATE_TEST_SUITE_P(VarSolution, EachSource,
                         ::testing::Values(SourceCase{"Point (instantaneous)", 1}, SourceCase{"Point (continuous)", 2},
                                           SourceCase{"Point (with initial distribution)", 3},
                                           SourceCase{"Line (instantaneous)", 4}, SourceCase{"Line (continuous)", 5},
                                           SourceCase{"Line (initial)", 6}),
                         sourceName);

TEST(VarSolution, XRangeZeroGivesTheSingleXAtTheSmallestCoordinate) {
    bm::DataSet d = var_test::model("Line (instantaneous)");
    d.xRange = "0:0:0";
    d.yRange = "Not Used";
    ScriptedUserInterface ui;
    bm::solveTimeVarying(d, ui);
    ASSERT_EQ(d.varXValues.ub(), 1);
    EXPECT_EQ(d.varXValues(1), 0.00001f);
    EXPECT_EQ(d.numXTerms, 1);
    EXPECT_EQ(d.numYTerms, 1);
    ASSERT_EQ(d.resultVar.ub(), 2);
    const Case c = var_test::caseOf(3, 0.3, true);
    EXPECT_CLOSE(d.resultVar(2), lineValue(c, 40, 0.00001, alphaLong(c, 40), true), 2e-5, 0.0);
}

TEST(VarSolution, TimeStartingAtZeroGivesZeroThereWithoutFault) {
    bm::DataSet d = var_test::model("Point (continuous)");
    d.timeRange = "0:40:40";
    ScriptedUserInterface ui;
    EXPECT_NO_THROW(bm::solveTimeVarying(d, ui));
    for (int i = 1; i <= 9; ++i) EXPECT_EQ(d.resultVar(i), 0.0f);
    EXPECT_GT(d.resultVar(10), 0.0f);
}

TEST(VarSolution, StopMidRunLeavesTheListsPartFilled) {
    bm::DataSet d = var_test::model();
    ScriptedUserInterface ui;
    ui.onProgress = [&](const ScriptedUserInterface::Progress& p) {
        if (p.done == 5) d.stopRequested = true;
    };
    d.currentConcentration = -1;
    bm::solveTimeVarying(d, ui);
    EXPECT_EQ(ui.progress.size(), 5u);
    for (int i = 1; i <= 5; ++i) EXPECT_GT(d.resultVar(i), 0.0f) << i;
    for (int i = 6; i <= 18; ++i) EXPECT_EQ(d.resultVar(i), 0.0f) << i;
    EXPECT_FALSE(d.stopRequested);
    EXPECT_EQ(d.mcResultVar(1), 0.0f);
    EXPECT_EQ(d.currentConcentration, -1);  // the selected point was not reached
}

TEST(VarSolution, StopBeforeTheRunLeavesEverythingAtZero) {
    bm::DataSet d = var_test::model();
    d.stopRequested = true;
    ScriptedUserInterface ui;
    EXPECT_EQ(bm::solveTimeVarying(d, ui), 0.0f);
    EXPECT_TRUE(ui.progress.empty());
    for (int i = 1; i <= 18; ++i) EXPECT_EQ(d.resultVar(i), 0.0f);
    EXPECT_FALSE(d.stopRequested);
}

bm::DataSet simulation(const std::string& source) {
    bm::DataSet d = var_test::model(source, "Linear");
    d.porosity = "Monte Carlo" + std::string(500, ' ') + "|0.3: 1";
    d.monteStore(bm::ModelKind::TimeVarying).monteIterations = 4;  // the model's own count, as every kind's
    d.MonteSamples.redim({1, 4, 1});
    const double porosities[] = {0, 0.25, 0.3, 0.4, 0.35};
    for (int i = 1; i <= 4; ++i) d.MonteSamples(1, i, 1) = porosities[i];
    return d;
}

TEST(VarSolution, SimulationWithVaryingPorosity) {
    bm::DataSet d = simulation("Point (initial)");
    ScriptedUserInterface ui;
    bm::solveTimeVarying(d, ui);
    EXPECT_EQ(d.calculationMode, "Monte Carlo");
    ASSERT_EQ(d.mcResultVar.ub(), 3);
    const double porosities[] = {0, 0.25, 0.3, 0.4};
    for (int i = 1; i <= 3; ++i) {
        const Case c = var_test::caseOf(2, porosities[i]);
        EXPECT_CLOSE(d.mcResultVar(i), pointValue(c, 30, 20, 3, alphaLong(c, 30), false), 2e-5, 0.0) << i;
    }
    EXPECT_EQ(d.mcResultVar(0), 0.0f);
    EXPECT_EQ(d.numXTerms, 1);
    EXPECT_EQ(d.numTTerms, 1);
    EXPECT_EQ(d.currentConcentration, d.mcResultVar(3));
    // Progress once per iteration, none per point.
    ASSERT_EQ(ui.progress.size(), 3u);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(ui.progress[i].total, 4);
        EXPECT_EQ(ui.progress[i].done, i + 1);
    }
}

TEST(VarSolution, SimulationStoppedBetweenIterationsKeepsWhatItHas) {
    bm::DataSet d = simulation("Line (instantaneous)");
    ScriptedUserInterface ui;
    ui.onProgress = [&](const ScriptedUserInterface::Progress& p) {
        if (p.done == 2) d.stopRequested = true;
    };
    bm::solveTimeVarying(d, ui);
    EXPECT_GT(d.mcResultVar(1), 0.0f);
    EXPECT_GT(d.mcResultVar(2), 0.0f);
    EXPECT_EQ(d.mcResultVar(3), 0.0f);
    EXPECT_FALSE(d.stopRequested);
}

TEST(VarSolution, LinearWithoutMeanTravelTimeEndsInDivisionByZero) {
    bm::DataSet d = var_test::model("Point (instantaneous)", "Linear");
    d.distributionCoefficient = "0";
    ScriptedUserInterface ui;
    try {
        bm::solveTimeVarying(d, ui);
        FAIL() << "no error";
    } catch (const bm::RuntimeError& e) {
        EXPECT_EQ(e.number(), bm::err::DivisionByZero);
    }
}

TEST(VarSolution, SingleCountsUseTheConstants) {
    bm::DataSet d = var_test::model("Point (instantaneous)", "Constant");
    d.xRange = "0:100:0:25";  // one term, held at 25
    d.timeRange = "35";
    ScriptedUserInterface ui;
    bm::solveTimeVarying(d, ui);
    ASSERT_EQ(d.varXValues.ub(), 1);
    EXPECT_EQ(d.varXValues(1), 25.0f);
    EXPECT_EQ(d.varTValues(1), 35.0f);
    const Case c = var_test::caseOf(1);
    EXPECT_CLOSE(d.resultVar(2), pointValue(c, 35, 25, 0, alphaLong(c, 35), true), 2e-5, 0.0);
}

}  // namespace

namespace {

int runError(bm::DataSet& d) {
    ScriptedUserInterface ui;
    return bm::raisedError([&] { bm::solveTimeVarying(d, ui); });
}

TEST(VarSolution, AGridTooLargeForMemoryIsRefusedBeforeItIsMade) {
    bm::DataSet d = var_test::model();
    d.xRange = "1:30000:1";
    d.yRange = "1:30000:1";
    d.timeRange = "1:30000:1";
    EXPECT_EQ(runError(d), bm::err::OutOfMemory);
}

TEST(VarSolution, ANumberBeyondTheFloatRangeIsAnOverflow) {
    bm::DataSet d = var_test::model();
    d.velocityX = "1e300";
    EXPECT_EQ(runError(d), bm::err::Overflow);
    d = var_test::model();
    d.xRange = "1:1e40:1";
    EXPECT_EQ(runError(d), bm::err::Overflow);
}

}  // namespace
