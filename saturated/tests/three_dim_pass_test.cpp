// The three-dimensional model through the calculation run: a regular run, a
// Monte Carlo run over a small samples table, Stop, and the run-time errors of
// singular input ending at the error handler.

#include <gtest/gtest.h>

#include <string>

#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/calculation_pass.h"
#include "saturated/saturated_kinds.h"
#include "saturated/three_dim_solution.h"
#include "testing/is_close.h"
#include "testing/scripted_user_interface.h"
#include "testing/test_paths.h"
#include "three_dim_test_model.h"

namespace bm {
namespace {

using testkit::expectHandledError;
using testkit::PointsFileScope;
using testkit::rule;
using testkit::ScriptedUserInterface;
using testkit::threeDimModel;
using testkit::threeDimRecord;

double patch(const ThreeDimParameters& p, double t, double x, double y, double z) {
    double r = -1;
    cnrml_3IL(p, t, x, y, z, r, rule().nodes.data(), rule().weights.data());
    return r;
}

class ThreeDimPass : public ::testing::Test {
protected:
    PointsFileScope points_;
};

TEST_F(ThreeDimPass, IsRegisteredForTheThreeDimensionalModel) {
    DataSet d = threeDimModel("Infinite", "Finite");
    const KindCalculation* pass = kindCalculationOf(d);
    ASSERT_NE(pass, nullptr);
    EXPECT_EQ(pass->kind, ModelKind::ThreeDimensional);
    d.mcResult3D.redim(3);
    EXPECT_EQ(kindResults(*pass, d).upper(), 3);
    EXPECT_EQ(pass->inputRows(d), threeDimInputRows(d));
    EXPECT_NE(kindCalculationFor(ModelKind::TwoDimensional), pass);
}

TEST_F(ThreeDimPass, RegularRunCalculatesTheGridAndTheSelectedPoint) {
    DataSet d = threeDimModel("Infinite", "Finite / Patch");
    d.xRange = "0:40:10:20";
    d.yRange = "-10:10:5:0";
    d.zRange = "-4:4:2:1";
    d.timeRange = "0:30:10:30";
    d.dataState = kParametersChanged;
    d.mcPointChanged[static_cast<int>(ModelKind::ThreeDimensional)] = true;
    ScriptedUserInterface ui;
    const CalculationOutcome outcome = runCalculation(d, ui);
    ASSERT_TRUE(outcome.finished);
    EXPECT_TRUE(ui.messages.empty());
    ASSERT_EQ(d.numZTerms, 5);
    const ThreeDimParameters p = threeDimRecord();
    for (int j = 1; j <= 4; ++j)
        for (int l = 1; l <= 5; ++l)
            for (int i = 1; i <= 5; ++i)
                for (int k = 1; k <= 5; ++k)
                    EXPECT_CLOSE(d.result3D(i, k, l, j),
                                 patch(p, d.tValues(j), d.xValues(i), d.yValues(k), d.zValues(l)), 1e-13, 1e-300);
    const double selected = patch(p, 30, 20, 0, 1);
    EXPECT_GT(selected, 0.05);
    EXPECT_CLOSE(d.currentConcentration, selected, 1e-13, 0);
    EXPECT_EQ(d.calculationMode, formatNumber(d.currentConcentration));
    EXPECT_EQ(outcome.resultLabel, formatNumber(d.currentConcentration));
    ASSERT_EQ(d.mcResult3D.ub(), 1);
    EXPECT_EQ(d.mcResult3D(1), d.result3D(5, 5, 5, 4));
    EXPECT_FALSE(d.mcPointChanged[static_cast<int>(ModelKind::ThreeDimensional)]);
    EXPECT_EQ(d.dataState, kNeedsSaving);
    EXPECT_EQ(ui.progress.size(), 500u);
}

TEST_F(ThreeDimPass, MonteCarloRunOverASmallSamplesTable) {
    DataSet d = threeDimModel("Infinite", "Finite");
    d.mcAtX = "12";
    d.mcAtY = "2";
    d.mcAtZ = "0.5";
    d.mcAtT = "18";
    d.sourceHeight = formFieldMarker("4", 1);
    d.halfLife = formFieldMarker("50", 2);
    const int iterations = 4;  // three runs
    d.monteStore(ModelKind::ThreeDimensional).monteIterations = iterations;
    d.MonteSamples.redim({2, iterations, 1});
    const double height[] = {0, 2, 4, 8, 99};
    const double halfLife[] = {0, 10, 50, 1e6, 99};
    for (int i = 1; i <= iterations; ++i) {
        d.MonteSamples(1, i, 1) = height[i];
        d.MonteSamples(2, i, 1) = halfLife[i];
    }
    ScriptedUserInterface ui;
    const CalculationOutcome outcome = runCalculation(d, ui);
    ASSERT_TRUE(outcome.finished);
    EXPECT_EQ(outcome.resultLabel, "Monte Carlo");
    EXPECT_EQ(d.calculationMode, "Monte Carlo");
    EXPECT_TRUE(ui.messages.empty());  // the inflow concentration does not vary
    ASSERT_EQ(d.mcResult3D.ub(), iterations - 1);
    for (int i = 1; i <= iterations - 1; ++i) {
        ThreeDimParameters p = threeDimRecord();
        p.sourceHeight = height[i];
        p.effectiveHalfLife = halfLife[i];
        const double expected = patch(p, 18, 12, 2, 0.5);
        EXPECT_GT(expected, 1e-3) << i;
        EXPECT_CLOSE(d.mcResult3D(i), expected, 1e-13, 0) << i;
    }
    EXPECT_LT(d.mcResult3D(1), d.mcResult3D(2));
    ASSERT_EQ(ui.progress.size(), 3u);
    EXPECT_EQ(ui.progress.back().total, 4.0);
}

TEST_F(ThreeDimPass, StopInsideTheGridLeavesTheModeAndClearsTheFlag) {
    DataSet d = threeDimModel("Infinite", "Continuous Point");
    ScriptedUserInterface ui;
    ui.onProgress = [&](const ScriptedUserInterface::Progress& p) {
        if (p.done == 9) d.stopRequested = true;
    };
    const CalculationOutcome outcome = calculateRoutine(d, ui);
    EXPECT_TRUE(outcome.finished);
    EXPECT_FALSE(d.stopRequested);
    EXPECT_EQ(d.calculationMode, "Regular");
    EXPECT_EQ(ui.progress.size(), 9u);
}

TEST_F(ThreeDimPass, SingularInputEndsAtTheErrorHandler) {
    for (const char* aquifer : {"Finite", "Infinite"}) {
        for (const char* source : {"Finite", "Continuous Point"}) {
            auto model = [&] {
                DataSet d = threeDimModel(aquifer, source);
                d.yRange = "0:20:5";
                d.zRange = "0:10:5";
                d.sourceYc = "10";
                d.sourceZc = "5";
                return d;
            };
            DataSet dx = model();
            dx.dispersionX = "0";
            expectHandledError(dx, "Division by zero");
            DataSet dy = model();
            dy.dispersionY = "0";
            expectHandledError(dy, "Division by zero");
            DataSet dz = model();
            dz.dispersionZ = "0";
            expectHandledError(dz, "Division by zero");
            DataSet recharge = model();
            recharge.netRecharge = "0.01";
            recharge.aquiferThickness = "0";
            expectHandledError(recharge, "Division by zero");
        }
    }
    // An aquifer of no width or no height: its range is the one number 0.
    DataSet width = threeDimModel("Finite", "Finite");
    width.yRange = "0";
    width.sourceYc = "0";
    expectHandledError(width, "Division by zero");
    DataSet height = threeDimModel("Finite", "Finite");
    height.yRange = "0:20:5";
    height.sourceYc = "10";
    height.zRange = "0";
    expectHandledError(height, "Division by zero");
}

TEST_F(ThreeDimPass, PatchOfNoWidthOrHeightLetsNothingInWithoutAFault) {
    for (const char* aquifer : {"Finite", "Infinite"}) {
        for (const char* size : {"width", "height"}) {
            DataSet d = threeDimModel(aquifer, "Finite");
            d.yRange = "0:20:5";
            d.zRange = "0:10:5";
            d.sourceYc = "10";
            d.sourceZc = "5";
            (std::string(size) == "width" ? d.sourceWidth : d.sourceHeight) = "0";
            ScriptedUserInterface ui;
            ASSERT_TRUE(runCalculation(d, ui).finished) << aquifer << " " << size;
            EXPECT_TRUE(ui.messages.empty());
            for (int j = 1; j <= d.numTTerms; ++j)
                for (int l = 1; l <= d.numZTerms; ++l)
                    for (int i = 2; i <= d.numXTerms; ++i)
                        for (int k = 1; k <= d.numYTerms; ++k) EXPECT_EQ(d.result3D(i, k, l, j), 0.0);
        }
    }
}

}  // namespace
}  // namespace bm
