// The unsaturated pass of the calculation run: regular runs, Monte Carlo runs
// over a small samples table, the radicand test before a simulation, and what
// the run framework does around the pass.

#include <gtest/gtest.h>

#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/calculation_pass.h"
#include "testing/is_close.h"
#include "testing/scripted_user_interface.h"
#include "unsat_reference.h"
#include "unsaturated/unsat_radicand.h"
#include "unsaturated/unsat_run.h"

namespace bm {
namespace {

using testkit::referenceRatio;
using testkit::ScriptedUserInterface;
using testkit::UnsatInputs;
using testkit::unsatModel;

constexpr auto kUnsat = static_cast<std::size_t>(ModelKind::Unsaturated);

// Samples of velocity (row 1) and dispersion (row 2), `count` of each, and
// the inflow concentration (row 3).
void giveSamples(DataSet& d, int count) {
    d.monteStore(ModelKind::Unsaturated).monteIterations = count;
    d.MonteSamples.redim({3, count, 1});
    for (int i = 1; i <= count; ++i) {
        d.MonteSamples(1, i, 1) = 0.02 * i;
        d.MonteSamples(2, i, 1) = 0.1 + 0.05 * i;
        d.MonteSamples(3, i, 1) = 10.0 * i;
    }
}

double sampledReference(const DataSet& d, int i, double x, double t, const UnsatInputs& base) {
    UnsatInputs in = base;
    in.q = d.MonteSamples(1, i, 1);
    in.Dv = d.MonteSamples(2, i, 1);
    return static_cast<double>(referenceRatio(in, {{0, 1}}, 0, 0, x, t));
}

TEST(UnsatRun, ThePassIsRegisteredForTheUnsaturatedWords) {
    for (const char* word : {"Unsaturated One Dimensional", "Unsaturated"}) {
        DataSet d;
        d.modelType = word;
        const KindCalculation* pass = kindCalculationOf(d);
        ASSERT_NE(pass, nullptr) << word;
        EXPECT_EQ(pass->kind, ModelKind::Unsaturated);
        d.mcResultUnsat.redim(2);
        EXPECT_EQ(kindResults(*pass, d).upper(), 2);
    }
}

TEST(UnsatRun, InputRowsAreTheThirteenRowsOfTheScreen) {
    DataSet d = unsatModel(UnsatInputs{}, "0:10:1", "0:50:10");
    d.superpositionIndex = 3;
    d.mcAtX = "4";
    d.mcAtT = "40";
    d.sourceDecayRate = "0.01";
    const std::vector<std::string> rows = unsatInputRows(d);
    const std::vector<std::string> expected = {d.velocity,    d.dispersionX, d.halfLife,
                                               "0:10:1",      "0:50:10",     "3",
                                               "4",           "40",          d.bulkDensity,
                                               d.distributionCoefficient,    d.porosity,
                                               d.saturation,  "0.01"};
    EXPECT_EQ(rows, expected);
}

TEST(UnsatRun, RegularRunFillsTheGridTheLabelAndOneResult) {
    const UnsatInputs in;
    DataSet d = unsatModel(in, "0:10:1:2", "0:50:10:30");
    d.dataState = kParametersChanged;
    d.mcPointChanged[kUnsat] = true;
    ScriptedUserInterface ui;
    const CalculationOutcome outcome = runCalculation(d, ui);
    EXPECT_TRUE(outcome.finished);
    EXPECT_FALSE(outcome.stopped);
    const double expected = static_cast<double>(referenceRatio(in, {{0, 1}}, 0, 0, 2, 30));
    EXPECT_CLOSE(d.currentConcentration, expected, 1e-13, 0);
    EXPECT_EQ(d.calculationMode, formatNumber(d.currentConcentration));
    EXPECT_EQ(outcome.resultLabel, formatNumber(d.currentConcentration));
    EXPECT_EQ(outcome.resultCaption, "Computed at");
    ASSERT_EQ(d.mcResultUnsat.ub(), 1);
    EXPECT_EQ(d.mcResultUnsat(1), d.resultUnsat(11, 6));
    EXPECT_FALSE(d.mcPointChanged[kUnsat]);
    EXPECT_EQ(d.dataState, kNeedsSaving);
    EXPECT_TRUE(ui.messages.empty());
    ASSERT_EQ(ui.progress.size(), 66u);
    EXPECT_EQ(ui.progress.back().owner, ProgressOwner::UnsaturatedForm);
}

TEST(UnsatRun, MonteCarloRunOverASmallSamplesTable) {
    const UnsatInputs in;
    DataSet d = unsatModel(in, "0:10:1", "0:50:10");
    d.velocity = formFieldMarker("0.05", 1);
    d.dispersionX = formFieldMarker("0.4", 2);
    d.mcAtX = "2";
    d.mcAtT = "30";
    giveSamples(d, 5);
    ScriptedUserInterface ui;
    const CalculationOutcome outcome = runCalculation(d, ui);
    EXPECT_TRUE(outcome.finished);
    EXPECT_EQ(d.calculationMode, "Monte Carlo");
    EXPECT_EQ(outcome.resultLabel, "Monte Carlo");
    EXPECT_EQ(outcome.resultCaption, "Monte Carlo Computed at");
    // iterations 1 to 4 use samples 1 to 4; the fifth is never used
    ASSERT_EQ(d.mcResultUnsat.ub(), 4);
    for (int i = 1; i <= 4; ++i) EXPECT_CLOSE(d.mcResultUnsat(i), sampledReference(d, i, 2, 30, in), 1e-13, 0) << i;
    // one point per iteration, one progress step per iteration
    EXPECT_EQ(d.numXTerms, 1);
    EXPECT_EQ(d.numTTerms, 1);
    ASSERT_EQ(ui.progress.size(), 4u);
    EXPECT_EQ(ui.progress.back().done, 4.0);
    EXPECT_EQ(ui.progress.back().total, 5.0);
    // on the unsaturated screen's bar (the multi-chemical one in a multi-chemical model)
    for (const auto& p : ui.progress) EXPECT_EQ(p.owner, ProgressOwner::UnsaturatedForm);
    EXPECT_TRUE(ui.messages.empty());
}

TEST(UnsatRun, AMarkerInAnyRowMakesASimulation) {
    const UnsatInputs in;
    DataSet d = unsatModel(in, "0:10:1", "0:50:10");
    d.saturation = formFieldMarker("0.6", 1);
    d.monteStore(ModelKind::Unsaturated).monteIterations = 3;
    d.MonteSamples.redim({1, 3, 1});
    d.MonteSamples(1, 1, 1) = 0.5;
    d.MonteSamples(1, 2, 1) = 0.7;
    ScriptedUserInterface ui;
    runCalculation(d, ui);
    EXPECT_EQ(d.calculationMode, "Monte Carlo");
    ASSERT_EQ(d.mcResultUnsat.ub(), 2);
    UnsatInputs second = in;
    second.Sw = 0.7;
    EXPECT_CLOSE(d.mcResultUnsat(2), static_cast<double>(referenceRatio(second, {{0, 1}}, 0, 0, 1, 1)), 1e-13, 0);
}

TEST(UnsatRun, DecayingSourceSimulationIsRefusedBeforeAnyComputing) {
    UnsatInputs in;
    in.constantInlet = false;
    in.gamma = 0.02;
    DataSet d = unsatModel(in, "0:10:1", "0:50:10");
    d.dispersionX = formFieldMarker("0.4", 2);
    giveSamples(d, 5);
    d.MonteSamples(2, 3, 1) = 40.0;  // iteration 3: 4 D (R gamma - lambda) far above V^2
    ScriptedUserInterface ui;
    const CalculationOutcome outcome = runCalculation(d, ui);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, kUnsatRadicandTitle);
    EXPECT_EQ(ui.messages[0].text, kUnsatRadicandText);
    EXPECT_TRUE(outcome.stopped);
    ASSERT_EQ(d.mcResultUnsat.ub(), 4);
    for (int i = 1; i <= 4; ++i) EXPECT_EQ(d.mcResultUnsat(i), 0.0);
    EXPECT_EQ(d.resultUnsat.ub(0), -1);  // the driver never ran
    EXPECT_FALSE(d.stopRequested);
    EXPECT_FALSE(ui.busy);
}

TEST(UnsatRun, DecayingSourceSimulationWithinBoundsRuns) {
    UnsatInputs in;
    in.constantInlet = false;
    in.gamma = 0.02;
    DataSet d = unsatModel(in, "0:10:1", "0:50:10");
    d.velocity = formFieldMarker("0.05", 1);
    d.dispersionX = formFieldMarker("0.4", 2);
    d.mcAtX = "2";
    d.mcAtT = "30";
    giveSamples(d, 5);
    for (int i = 1; i <= 5; ++i) d.MonteSamples(1, i, 1) = 0.05 + 0.01 * i;  // keep V^2 above 4 D (R gamma - lambda)
    ScriptedUserInterface ui;
    const CalculationOutcome outcome = runCalculation(d, ui);
    EXPECT_TRUE(outcome.finished);
    EXPECT_FALSE(outcome.stopped);
    EXPECT_TRUE(ui.messages.empty());
    for (int i = 1; i <= 4; ++i) EXPECT_CLOSE(d.mcResultUnsat(i), sampledReference(d, i, 2, 30, in), 1e-13, 0) << i;
}

TEST(UnsatRun, ConstantInletSimulationHasNoRadicandTest) {
    UnsatInputs in;
    DataSet d = unsatModel(in, "0:10:1", "0:50:10");
    d.sourceDecayRate = "50";  // would refuse any decaying source; a constant inlet ignores it
    d.velocity = formFieldMarker("0.05", 1);
    giveSamples(d, 3);
    ScriptedUserInterface ui;
    const CalculationOutcome outcome = runCalculation(d, ui);
    EXPECT_TRUE(outcome.finished);
    EXPECT_FALSE(outcome.stopped);
    EXPECT_TRUE(ui.messages.empty());
    EXPECT_GT(d.mcResultUnsat(2), 0.0);
}

TEST(UnsatRun, VaryingInflowConcentrationScalesTheUnitSolution) {
    // The unit solution of each iteration, with its later term relative to the
    // sampled first one, times the sample: s C(t) + (20 - s) C(t - 10).
    const UnsatInputs in;
    DataSet d = unsatModel(in, "0:10:1", "0:50:10", {{0, 1}, {10, 20}});
    d.terms(1).concentration = boundaryCellMarker("10", 3, kWideCellMarkerPadding);
    d.monteCarloModeOn = true;
    d.mcAtX = "2";
    d.mcAtT = "30";
    giveSamples(d, 4);
    ScriptedUserInterface ui;
    const CalculationOutcome outcome = runCalculation(d, ui);
    EXPECT_TRUE(outcome.finished);
    ASSERT_EQ(ui.messages.size(), 1u);  // the notice that the result is not normalized
    EXPECT_EQ(ui.messages[0].title, "Information");
    const auto k = testkit::referenceCoefficients(in);
    for (int i = 1; i <= 3; ++i) {
        const double s = d.MonteSamples(3, i, 1);
        const double expected = s * static_cast<double>(testkit::referenceStep(k, 2, 30)) +
                                (20 - s) * static_cast<double>(testkit::referenceStep(k, 2, 20));
        EXPECT_CLOSE(d.mcResultUnsat(i), expected, 1e-13, 0) << i;
    }
}

TEST(UnsatRun, RunTimeErrorOfARegularRunGoesToTheHandler) {
    UnsatInputs in;
    in.constantInlet = false;
    in.gamma = 0.5;  // validation would have refused it; without it the square root fails
    DataSet d = unsatModel(in, "0:10:1", "0:50:10");
    d.mcPointChanged[kUnsat] = true;
    ScriptedUserInterface ui;
    const CalculationOutcome outcome = runCalculation(d, ui);
    EXPECT_FALSE(outcome.finished);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_TRUE(d.mcPointChanged[kUnsat]);
    EXPECT_FALSE(d.stopRequested);
}

TEST(UnsatRun, StopBetweenIterationsEndsTheSimulation) {
    const UnsatInputs in;
    DataSet d = unsatModel(in, "0:10:1", "0:50:10");
    d.velocity = formFieldMarker("0.05", 1);
    d.mcAtX = "2";
    d.mcAtT = "30";
    giveSamples(d, 6);
    ScriptedUserInterface ui;
    ui.onProgress = [&](const ScriptedUserInterface::Progress& p) {
        if (p.done == 2) d.stopRequested = true;
    };
    const CalculationOutcome outcome = runCalculation(d, ui);
    EXPECT_TRUE(outcome.stopped);
    EXPECT_GT(d.mcResultUnsat(2), 0.0);
    EXPECT_EQ(d.mcResultUnsat(3), 0.0);
    EXPECT_FALSE(d.stopRequested);
}

}  // namespace
}  // namespace bm
