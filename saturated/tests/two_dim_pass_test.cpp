// The two-dimensional model through the calculation run: a regular run, a
// Monte Carlo run over a small samples table, Stop, and the run-time errors of
// singular input and of a missing points file ending at the error handler.

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/calculation_pass.h"
#include "saturated/saturated_kinds.h"
#include "saturated/two_dim_solution.h"
#include "testing/is_close.h"
#include "testing/scripted_user_interface.h"
#include "testing/test_paths.h"
#include "two_dim_test_model.h"

namespace bm {
namespace {

using testkit::expectHandledError;
using testkit::PointsFileScope;
using testkit::rule;
using testkit::ScriptedUserInterface;
using testkit::twoDimModel;
using testkit::twoDimRecord;

double strip(const TwoDimParameters& p, double t, double x, double y) {
    double r = -1;
    cnrml_IL(p, t, x, y, r, rule().nodes.data(), rule().weights.data());
    return r;
}

class TwoDimPass : public ::testing::Test {
protected:
    PointsFileScope points_;
};

TEST_F(TwoDimPass, IsRegisteredForTheTwoDimensionalModel) {
    DataSet d = twoDimModel("Infinite", "Gaussian");
    const KindCalculation* pass = kindCalculationOf(d);
    ASSERT_NE(pass, nullptr);
    EXPECT_EQ(pass->kind, ModelKind::TwoDimensional);
    d.mcResult2D.redim(3);
    EXPECT_EQ(kindResults(*pass, d).upper(), 3);
    EXPECT_EQ(pass->inputRows(d), twoDimInputRows(d));
    EXPECT_NE(kindCalculationFor(ModelKind::OneDimensional), pass);
}

TEST_F(TwoDimPass, RegularRunCalculatesTheGridAndTheSelectedPoint) {
    DataSet d = twoDimModel("Infinite", "Finite / Line");
    d.xRange = "0:40:10:20";
    d.yRange = "-10:10:5:0";
    d.timeRange = "0:30:10:30";
    d.dataState = kParametersChanged;
    d.mcPointChanged[static_cast<int>(ModelKind::TwoDimensional)] = true;
    ScriptedUserInterface ui;
    const CalculationOutcome outcome = runCalculation(d, ui);
    ASSERT_TRUE(outcome.finished);
    EXPECT_FALSE(outcome.stopped);
    EXPECT_TRUE(ui.messages.empty());
    ASSERT_EQ(d.numXTerms, 5);
    ASSERT_EQ(d.numYTerms, 5);
    ASSERT_EQ(d.numTTerms, 4);
    const TwoDimParameters p = twoDimRecord();
    for (int j = 1; j <= 4; ++j)
        for (int i = 1; i <= 5; ++i)
            for (int k = 1; k <= 5; ++k) {
                const double c = strip(p, d.tValues(j), d.xValues(i), d.yValues(k));
                EXPECT_CLOSE(d.result2D(i, k, j), c, 1e-13, 1e-300);
            }
    const double selected = strip(p, 30, 20, 0);
    EXPECT_CLOSE(d.currentConcentration, selected, 1e-13, 0);
    EXPECT_GT(selected, 0.1);
    EXPECT_EQ(d.calculationMode, formatNumber(d.currentConcentration));
    EXPECT_EQ(outcome.resultLabel, formatNumber(d.currentConcentration));
    EXPECT_EQ(outcome.resultCaption, "Computed at");
    ASSERT_EQ(d.mcResult2D.ub(), 1);
    EXPECT_EQ(d.mcResult2D(1), d.result2D(5, 5, 4));  // the last grid value
    EXPECT_FALSE(d.mcPointChanged[static_cast<int>(ModelKind::TwoDimensional)]);
    EXPECT_EQ(d.dataState, kNeedsSaving);
    EXPECT_EQ(ui.progress.size(), 100u);
}

TEST_F(TwoDimPass, MonteCarloRunOverASmallSamplesTable) {
    DataSet d = twoDimModel("Infinite", "Finite Line");
    d.mcAtX = "12";
    d.mcAtY = "2";
    d.mcAtT = "18";
    d.velocity = formFieldMarker("0.3", 1);
    d.dispersionY = formFieldMarker("0.1", 2);
    d.terms(1).concentration = boundaryCellMarker("1", 3, 20);
    d.monteCarloModeOn = true;
    const int iterations = 5;  // four runs
    d.monteStore(ModelKind::TwoDimensional).monteIterations = iterations;
    d.MonteSamples.redim({3, iterations, 1});
    const double velocity[] = {0, 0.15, 0.3, 0.45, 0.6, 99};
    const double dispersionY[] = {0, 0.05, 0.2, 0.1, 0.4, 99};
    const double inflow[] = {0, 2, 0.5, 1, 4, 99};
    for (int i = 1; i <= iterations; ++i) {
        d.MonteSamples(1, i, 1) = velocity[i];
        d.MonteSamples(2, i, 1) = dispersionY[i];
        d.MonteSamples(3, i, 1) = inflow[i];
    }
    ScriptedUserInterface ui;
    const CalculationOutcome outcome = runCalculation(d, ui);
    ASSERT_TRUE(outcome.finished);
    EXPECT_EQ(outcome.resultLabel, "Monte Carlo");
    EXPECT_EQ(outcome.resultCaption, "Monte Carlo Computed at");
    EXPECT_EQ(d.calculationMode, "Monte Carlo");
    ASSERT_EQ(d.mcResult2D.ub(), iterations - 1);
    for (int i = 1; i <= iterations - 1; ++i) {
        TwoDimParameters p = twoDimRecord();
        p.effectiveVelocity = velocity[i] / 0.3;
        p.effectiveDispersionY = dispersionY[i];
        const double unit = strip(p, 18, 12, 2);
        EXPECT_GT(unit, 1e-3) << i;
        EXPECT_CLOSE(d.mcResult2D(i), inflow[i] * unit, 1e-13, 0) << i;
    }
    // The driver reported nothing per point; the pass once per iteration.
    ASSERT_EQ(ui.progress.size(), 4u);
    EXPECT_EQ(ui.progress.back().total, 5.0);
    EXPECT_EQ(ui.progress.back().done, 4.0);
    // The notice about a varying initial concentration came first.
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages.front().title, kInitialConcentrationTitle);
    EXPECT_EQ(d.numXTerms, 1);
    EXPECT_EQ(d.xValues(1), 12.0);
}

TEST_F(TwoDimPass, StopInsideTheGridLeavesTheModeAndClearsTheFlag) {
    DataSet d = twoDimModel("Infinite", "Gaussian");
    d.calculationMode = "0.25";
    ScriptedUserInterface ui;
    ui.onProgress = [&](const ScriptedUserInterface::Progress& p) {
        if (p.done == 7) d.stopRequested = true;
    };
    const CalculationOutcome outcome = calculateRoutine(d, ui);
    EXPECT_TRUE(outcome.finished);
    EXPECT_FALSE(d.stopRequested);
    EXPECT_EQ(d.calculationMode, "Regular");  // as the pass set it: the driver left it alone
    EXPECT_EQ(ui.progress.size(), 7u);
    EXPECT_EQ(d.mcResult2D(1), 0.0);
}

TEST_F(TwoDimPass, SingularInputEndsAtTheErrorHandler) {
    {
        // An aquifer of no width: the y range is one number 0.
        DataSet d = twoDimModel("Finite", "Finite Line");
        d.yRange = "0";
        d.sourceYc = "0";
        expectHandledError(d, "Division by zero");
    }
    for (const char* source : {"Finite Line", "Gaussian", "Continuous Point"}) {
        DataSet d = twoDimModel("Infinite", source);
        d.dispersionX = "0";
        expectHandledError(d, "Division by zero");
        DataSet e = twoDimModel("Infinite", source);
        e.dispersionY = "0";
        expectHandledError(e, "Division by zero");
        DataSet r = twoDimModel("Infinite", source);
        r.netRecharge = "0.01";
        r.aquiferThickness = "0";
        expectHandledError(r, "Division by zero");
    }
    {
        DataSet d = twoDimModel("Finite", "Finite Line");
        d.yRange = "0:20:5";
        d.dispersionY = "0";
        expectHandledError(d, "Division by zero");
    }
    {
        // A Gaussian source of no spread.
        DataSet d = twoDimModel("Infinite", "Gaussian");
        d.sourceStdDev = "0";
        expectHandledError(d, "Division by zero");
    }
    {
        DataSet d = twoDimModel("Infinite", "Finite Line");
        d.porosity = "0";
        expectHandledError(d, "Division by zero");
    }
}

TEST_F(TwoDimPass, MissingPointsFileEndsAtTheErrorHandler) {
    testkit::TempDir dir;
    PointsFileScope missing(dir.file("glq.pts"));
    DataSet d = twoDimModel("Infinite", "Gaussian");
    ScriptedUserInterface ui;
    const CalculationOutcome outcome = runCalculation(d, ui);
    EXPECT_FALSE(outcome.finished);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages.front().title, dir.file("glq.pts") + " not found!");
    EXPECT_EQ(ui.messages.front().text, "File not found.\r\nThe selected file: " + dir.file("glq.pts") +
                                            " is not found. Please check filename and path.");
}

TEST_F(TwoDimPass, SourceOfNoWidthLetsNothingInWithoutAFault) {
    for (const char* aquifer : {"Finite", "Infinite"}) {
        DataSet d = twoDimModel(aquifer, "Finite Line");
        d.yRange = "0:20:5";
        d.sourceYc = "10";
        d.sourceWidth = "0";
        ScriptedUserInterface ui;
        ASSERT_TRUE(runCalculation(d, ui).finished) << aquifer;
        EXPECT_TRUE(ui.messages.empty());
        for (int j = 1; j <= d.numTTerms; ++j)
            for (int i = 2; i <= d.numXTerms; ++i)
                for (int k = 1; k <= d.numYTerms; ++k) EXPECT_EQ(d.result2D(i, k, j), 0.0);
    }
}

}  // namespace
}  // namespace bm
