// The calculation run without its screen: mode scan, iterations, Stop, the
// boundary scaling, the statistics hook, the error path and what a run leaves.

#include <gtest/gtest.h>

#include <cmath>

#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "testing/one_dim_test_model.h"
#include "montecarlo/pass/calculation_pass.h"
#include "saturated/saturated_kinds.h"
#include "shell/screen/built_in_kinds.h"
#include "testing/is_close.h"
#include "testing/scripted_user_interface.h"

namespace bm {
namespace {

using testkit::oneDimModel;
using testkit::ScriptedUserInterface;
using testkit::semiInfiniteDirichletReference;

constexpr double kLambda = 0.1;

// A simulation set-up: iterations of the one-dimensional store and samples
// rows 1..3 of the working set.
void giveSamples(DataSet& d, int iterations) {
    d.monteStore(ModelKind::OneDimensional).monteIterations = iterations;
    d.MonteSamples.redim({3, iterations, 1});
    for (int i = 1; i <= iterations; ++i) {
        d.MonteSamples(1, i, 1) = 0.5 * i;  // velocities
        d.MonteSamples(2, i, 1) = 10.0 * i;  // inflow concentrations
        d.MonteSamples(3, i, 1) = 0.25;
    }
}

TEST(CalculationRun, RegularRunFillsGridLabelAndOneResult) {
    DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
    d.mcPointChanged[static_cast<int>(ModelKind::OneDimensional)] = true;
    d.dataState = kParametersChanged;
    ScriptedUserInterface ui;
    const CalculationOutcome outcome = runCalculation(d, ui);
    EXPECT_TRUE(outcome.finished);
    EXPECT_FALSE(outcome.stopped);
    // the selected point of 0:10:1 and 0:5:1 is the Maximum of each: x 10, t 5
    const double expected = semiInfiniteDirichletReference(1, 0.5, kLambda, 10, 5);
    EXPECT_CLOSE(d.currentConcentration, expected, 1e-12, 0);
    EXPECT_EQ(d.calculationMode, formatNumber(expected));
    EXPECT_EQ(outcome.resultLabel, formatNumber(expected));
    EXPECT_EQ(outcome.resultCaption, "Computed at");
    // the loop ran once and kept the last grid value
    ASSERT_EQ(d.mcResult1D.ub(), 1);
    EXPECT_EQ(d.mcResult1D(1), d.result1D(11, 6));
    EXPECT_FALSE(d.mcPointChanged[static_cast<int>(ModelKind::OneDimensional)]);
    EXPECT_EQ(d.dataState, kNeedsSaving);
    EXPECT_FALSE(d.stopRequested);
    EXPECT_TRUE(ui.messages.empty());
    EXPECT_EQ(ui.progress.size(), 66u);  // per point; none per iteration in a regular run
}

TEST(CalculationRun, DataStateOtherThanOneIsKept) {
    for (std::int16_t state : {kDataUnchanged, kNeedsSaving}) {
        DataSet d = oneDimModel("Semi-Infinite", "Cauchy");
        d.dataState = state;
        ScriptedUserInterface ui;
        runCalculation(d, ui);
        EXPECT_EQ(d.dataState, state);
    }
}

TEST(CalculationRun, MonteInAnyRowMakesASimulation) {
    DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
    d.velocity = formFieldMarker("1", 1);
    d.monteCarloModeOn = false;
    giveSamples(d, 4);
    ScriptedUserInterface ui;
    const CalculationOutcome outcome = runCalculation(d, ui);
    EXPECT_TRUE(outcome.finished);
    EXPECT_EQ(d.calculationMode, "Monte Carlo");
    EXPECT_EQ(outcome.resultLabel, "Monte Carlo");
    EXPECT_EQ(outcome.resultCaption, "Monte Carlo Computed at");
    ASSERT_EQ(d.mcResult1D.ub(), 3);
    for (int i = 1; i <= 3; ++i) {
        // iteration i runs at mcAtX = 10, mcAtT = 5 with velocity 0.5 i
        const double expected = semiInfiniteDirichletReference(0.5 * i, 0.5, kLambda, 10, 5);
        EXPECT_CLOSE(d.mcResult1D(i), expected, 1e-12, 1e-300) << i;
    }
    EXPECT_EQ(d.mcResult1D(0), 0.0);
    // progress per iteration only: i of n
    ASSERT_EQ(ui.progress.size(), 3u);
    EXPECT_EQ(ui.progress[2].total, 4.0);
    EXPECT_EQ(ui.progress[2].done, 3.0);
    EXPECT_TRUE(ui.messages.empty());  // the notice belongs to a varying inflow concentration
}

TEST(CalculationRun, EachInputRowIsScanned) {
    // The one-dimensional rows 0..10 without the caption row 9.
    using Field = std::string DataSet::*;
    const Field fields[] = {&DataSet::velocity, &DataSet::dispersionX, &DataSet::halfLife, &DataSet::xRange,
                            &DataSet::timeRange, &DataSet::mcAtX,      &DataSet::mcAtT,    &DataSet::porosity,
                            &DataSet::retardation};
    KindCalculation pass = saturatedCalculation(1);
    int calls = 0;
    pass.iterate = [&](DataSet&, bool simulate, int, UserInterface&) -> std::optional<double> {
        EXPECT_TRUE(simulate);
        ++calls;
        return 0.0;
    };
    for (Field f : fields) {
        DataSet d = oneDimModel("Finite", "Cauchy");
        d.*f = "  Monte Carlo";
        d.monteStore(ModelKind::OneDimensional).monteIterations = 3;
        ScriptedUserInterface ui;
        calls = 0;
        EXPECT_TRUE(calculateRoutine(d, ui, pass).finished);
        EXPECT_EQ(calls, 2);
        EXPECT_EQ(d.calculationMode, "Monte Carlo");
    }
    // the comments, the concentration or the y range are no input rows of one dimension
    DataSet d = oneDimModel("Finite", "Cauchy");
    d.comments = "Monte Carlo";
    d.yRange = "Monte Carlo";
    d.terms(1).concentration = "Monte Carlo";
    ScriptedUserInterface ui;
    calls = 0;
    pass.iterate = [&](DataSet&, bool simulate, int, UserInterface&) -> std::optional<double> {
        EXPECT_FALSE(simulate);
        ++calls;
        return 0.0;
    };
    calculateRoutine(d, ui, pass);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(d.calculationMode, "Regular");
}

TEST(CalculationRun, InputRowListsOfEachDimension) {
    DataSet d = oneDimModel("Finite", "Cauchy");
    d.superpositionIndex = 3;
    const auto one = oneDimInputRows(d);
    ASSERT_EQ(one.size(), 10u);
    EXPECT_EQ(one[0], d.velocity);
    EXPECT_EQ(one[5], "3");
    EXPECT_EQ(one[9], d.retardation);

    DataSet two;
    two.aquiferType = "Infinite";
    two.contaminantType = "Gaussian";
    two.sourceStdDev = "sd";
    two.sourceWidth = "w";
    two.injectionRate = "q";
    two.retardation = "r";
    auto rows = twoDimInputRows(two);
    ASSERT_EQ(rows.size(), 18u);
    EXPECT_EQ(rows[2], "sd");
    EXPECT_EQ(rows[17], "r");
    two.contaminantType = "Finite / Line";
    EXPECT_EQ(twoDimInputRows(two)[2], "w");
    two.contaminantType = "Continuous / Point";
    EXPECT_EQ(twoDimInputRows(two)[2], "q");
    two.aquiferType = "Finite";
    EXPECT_EQ(twoDimInputRows(two)[2], "w");

    DataSet three;
    three.contaminantType = "Finite / Patch";
    three.sourceWidth = "w";
    three.sourceHeight = "h";
    three.sourceXc = "xc";
    three.injectionRate = "q";
    three.mcAtZ = "z";
    auto rows3 = threeDimInputRows(three);
    ASSERT_EQ(rows3.size(), 22u);
    EXPECT_EQ(rows3[4], "w");
    EXPECT_EQ(rows3[7], "h");
    EXPECT_EQ(rows3[18], "z");
    three.contaminantType = "Continuous / Point";
    rows3 = threeDimInputRows(three);
    EXPECT_EQ(rows3[4], "xc");
    EXPECT_EQ(rows3[7], "q");
}

TEST(CalculationRun, IterationsAreTheStoreCountLessOne) {
    DataSet d = oneDimModel("Semi-Infinite", "Cauchy");
    d.halfLife = formFieldMarker("5", 3);
    d.monteStore(ModelKind::OneDimensional).monteIterations = 101;
    d.MonteSamples.redim({3, 101, 1});
    for (int i = 1; i <= 101; ++i) d.MonteSamples(3, i, 1) = 5.0 + i;
    ScriptedUserInterface ui;
    int statisticsCalls = 0;
    KindCalculation pass = saturatedCalculation(1);
    pass.statistics = [&](DataSet&, int n, UserInterface&) {
        ++statisticsCalls;
        EXPECT_EQ(n, 101);
    };
    EXPECT_TRUE(calculateRoutine(d, ui, pass).finished);
    EXPECT_EQ(d.mcResult1D.ub(), 100);
    EXPECT_EQ(ui.progress.size(), 100u);
    for (int i = 1; i <= 100; ++i) EXPECT_GT(d.mcResult1D(i), 0.0);
    EXPECT_EQ(statisticsCalls, 1);
}

TEST(CalculationRun, StatisticsAreNotRunInARegularRun) {
    DataSet d = oneDimModel("Semi-Infinite", "Cauchy");
    ScriptedUserInterface ui;
    KindCalculation pass = saturatedCalculation(1);
    bool called = false;
    pass.statistics = [&](DataSet&, int, UserInterface&) { called = true; };
    calculateRoutine(d, ui, pass);
    EXPECT_FALSE(called);
}

TEST(CalculationRun, VaryingInflowConcentrationScalesEachIteration) {
    DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
    d.terms(1).concentration = boundaryCellMarker("20", 2, 30);
    d.monteCarloModeOn = true;
    giveSamples(d, 5);
    ScriptedUserInterface ui;
    const CalculationOutcome outcome = runCalculation(d, ui);
    EXPECT_TRUE(outcome.finished);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Information");
    EXPECT_EQ(ui.messages[0].text,
              "Initial Concentration (Co) is selected for Monte Carlo simulation analysis\r\nin this case. Please pay "
              "attention that the computed concentration at the\r\nspecified point is not normalized.");
    EXPECT_EQ(d.calculationMode, "Monte Carlo");
    const double unit = semiInfiniteDirichletReference(1, 0.5, kLambda, 10, 5);
    ASSERT_EQ(d.mcResult1D.ub(), 4);
    for (int i = 1; i <= 4; ++i) EXPECT_CLOSE(d.mcResult1D(i), 10.0 * i * unit, 1e-12, 0) << i;
}

TEST(CalculationRun, VaryingInflowWithLaterTermsScalesTheWholeSuperposition) {
    // Term 1 varies, term 2 steps to 30 at t = 2: each iteration gives the
    // concentration c1 C(t) + (30 - c1) C(t - 2).
    DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
    d.superpositionIndex = 2;
    d.terms.redim(2);
    d.terms(1) = {"0", boundaryCellMarker("20", 2, 30)};
    d.terms(2) = {"2", "30"};
    d.monteCarloModeOn = true;
    giveSamples(d, 3);
    ScriptedUserInterface ui;
    EXPECT_TRUE(runCalculation(d, ui).finished);
    const double first = semiInfiniteDirichletReference(1, 0.5, kLambda, 10, 5);
    const double second = semiInfiniteDirichletReference(1, 0.5, kLambda, 10, 3);
    for (int i = 1; i <= 2; ++i) {
        const double c1 = 10.0 * i;
        EXPECT_CLOSE(d.mcResult1D(i), c1 * first + (30 - c1) * second, 1e-12, 0) << i;
    }
}

TEST(CalculationRun, StopDuringStartLeavesTheModeRegular) {
    // A Stop let in by the first event pass ends the run before its first point.
    DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
    ScriptedUserInterface ui;
    ui.answers.push_back(MessageAnswer::Yes);
    ui.onProcessEvents = [&] { stopButtonClicked(d, ui); };
    const CalculationOutcome outcome = runCalculation(d, ui);
    EXPECT_TRUE(outcome.finished);
    EXPECT_TRUE(outcome.stopped);
    EXPECT_EQ(d.calculationMode, "Regular");
    EXPECT_EQ(d.result1D.ub(0), -1);  // the driver never ran: no grid was made
    ASSERT_EQ(d.mcResult1D.ub(), 1);
    EXPECT_EQ(d.mcResult1D(1), 0.0);
    EXPECT_FALSE(d.stopRequested);
    EXPECT_EQ(outcome.resultLabel, formatNumber(0.0));
    EXPECT_FALSE(d.mcPointChanged[static_cast<int>(ModelKind::OneDimensional)]);  // cleared on a stop too
}

TEST(CalculationRun, StopAtTheFirstPointLeavesTheRestOfTheGridAtZero) {
    DataSet d = oneDimModel("Finite", "Dirichlet");
    ScriptedUserInterface ui;
    ui.answers.push_back(MessageAnswer::Yes);
    ui.onProgress = [&](const ScriptedUserInterface::Progress& p) {
        if (p.done == 1) stopButtonClicked(d, ui);
    };
    const CalculationOutcome outcome = runCalculation(d, ui);
    EXPECT_TRUE(outcome.finished);  // the driver took the Stop; to the pass its one iteration came back
    EXPECT_EQ(d.calculationMode, "Regular");
    EXPECT_EQ(ui.progress.size(), 1u);
    EXPECT_EQ(d.result1D(1, 1), 1.0);  // x = 0 at t = 0
    for (int j = 1; j <= 6; ++j)
        for (int i = (j == 1 ? 2 : 1); i <= 11; ++i) EXPECT_EQ(d.result1D(i, j), 0.0);
    EXPECT_EQ(d.mcResult1D(1), 0.0);
    EXPECT_FALSE(d.stopRequested);
}

TEST(CalculationRun, StopBetweenIterationsSkipsTheStatistics) {
    DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
    d.velocity = formFieldMarker("1", 1);
    giveSamples(d, 6);
    ScriptedUserInterface ui;
    ui.answers.push_back(MessageAnswer::Yes);
    ui.onProgress = [&](const ScriptedUserInterface::Progress& p) {
        if (p.done == 2) stopButtonClicked(d, ui);
    };
    KindCalculation pass = saturatedCalculation(1);
    bool statistics = false;
    pass.statistics = [&](DataSet&, int, UserInterface&) { statistics = true; };
    const CalculationOutcome outcome = calculateRoutine(d, ui, pass);
    EXPECT_TRUE(outcome.stopped);
    EXPECT_FALSE(statistics);
    ASSERT_EQ(d.mcResult1D.ub(), 5);
    EXPECT_GT(d.mcResult1D(1), 0.0);
    EXPECT_GT(d.mcResult1D(2), 0.0);
    for (int i = 3; i <= 5; ++i) EXPECT_EQ(d.mcResult1D(i), 0.0);
    EXPECT_EQ(d.calculationMode, "Monte Carlo");
    EXPECT_FALSE(d.stopRequested);
    // the next run starts with the flag clear and runs to its end
    ScriptedUserInterface again;
    EXPECT_FALSE(calculateRoutine(d, again, pass).stopped);
    EXPECT_TRUE(statistics);
    for (int i = 1; i <= 5; ++i) EXPECT_GT(d.mcResult1D(i), 0.0);
}

TEST(CalculationRun, NoToStopLetsTheRunGoOnWithoutLoss) {
    DataSet plain = oneDimModel("Finite", "Cauchy");
    ScriptedUserInterface quiet;
    runCalculation(plain, quiet);

    DataSet d = oneDimModel("Finite", "Cauchy");
    ScriptedUserInterface ui;
    ui.answers.push_back(MessageAnswer::No);
    bool busyAfterAnswer = false;
    ui.onProgress = [&](const ScriptedUserInterface::Progress& p) {
        if (p.done == 20) {
            d.stopRequested = true;  // a Yes from before: the No clears it
            ui.busy = false;
            stopButtonClicked(d, ui);
            busyAfterAnswer = ui.busy;
        }
    };
    const CalculationOutcome outcome = runCalculation(d, ui);
    EXPECT_TRUE(outcome.finished);
    EXPECT_FALSE(outcome.stopped);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Stop Calculation");
    EXPECT_EQ(ui.messages[0].text,
              "Do you want to stop computation process?\r\n\r\nIf YES is selected the output viewed through the "
              "Results menu would not be correct.");
    EXPECT_EQ(ui.messages[0].buttons, MessageButtons::YesNo);
    EXPECT_EQ(defaultAnswer(ui.messages[0]), MessageAnswer::No);
    EXPECT_TRUE(busyAfterAnswer);  // the hourglass comes back
    EXPECT_EQ(d.result1D, plain.result1D);
    EXPECT_EQ(d.calculationMode, plain.calculationMode);
    EXPECT_EQ(d.mcResult1D, plain.mcResult1D);
}

TEST(CalculationRun, RunTimeErrorGoesToTheHandlerAndLeavesTheStaleFlag) {
    DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
    d.superpositionIndex = 2;
    d.terms.redim(2);
    d.terms(1) = {"0", "0"};
    d.terms(2) = {"1", "5"};
    d.dataState = kParametersChanged;
    d.mcPointChanged[static_cast<int>(ModelKind::OneDimensional)] = true;
    ScriptedUserInterface ui;
    const CalculationOutcome outcome = runCalculation(d, ui);
    EXPECT_FALSE(outcome.finished);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Division by zero");
    EXPECT_TRUE(d.mcPointChanged[static_cast<int>(ModelKind::OneDimensional)]);
    EXPECT_EQ(d.dataState, kParametersChanged);
    EXPECT_FALSE(d.stopRequested);
}

TEST(CalculationRun, FiniteCauchySeriesRunningOutShowsTheTypeMismatch) {
    DataSet d = oneDimModel("Finite", "Cauchy");
    d.timeRange = "0:0.0002:0.0001";
    ScriptedUserInterface ui;
    EXPECT_FALSE(runCalculation(d, ui).finished);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Type Mismatch Error");
}

TEST(CalculationRun, OverflowOfTheCountIsReportedByTheParseStep) {
    DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
    d.xRange = "0:100000:1";
    ScriptedUserInterface ui;
    EXPECT_FALSE(runCalculation(d, ui).finished);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Overflow");
}

TEST(CalculationRun, ModelTypeWithoutAPassRunsNothing) {
    DataSet d = oneDimModel("Finite", "Cauchy");
    d.modelType = "Four Dimensional";
    d.stopRequested = true;
    ScriptedUserInterface ui;
    EXPECT_FALSE(calculateRoutine(d, ui).finished);
    EXPECT_FALSE(d.stopRequested);
    EXPECT_EQ(d.mcResult1D.ub(), -1);
}

TEST(CalculationRun, AKindPlugsInWithItsRegistration) {
    // A registration of the two-dimensional kind: its rows, its result list,
    // its store, its stale flag; the pass knows nothing else of it.
    KindCalculation kind;
    kind.kind = ModelKind::TwoDimensional;
    kind.inputRows = twoDimInputRows;
    kind.iterate = [](DataSet& data, bool simulate, int iteration, UserInterface&) -> std::optional<double> {
        data.currentConcentration = 0.5;
        return simulate ? iteration * 0.1 : 0.75;
    };
    registerKindCalculation(kind);
    ASSERT_NE(kindCalculationFor(ModelKind::TwoDimensional), nullptr);

    DataSet d;
    d.modelType = "Two Dimensional";
    d.mcPointChanged[static_cast<int>(ModelKind::TwoDimensional)] = true;
    ScriptedUserInterface ui;
    CalculationOutcome outcome = calculateRoutine(d, ui);
    EXPECT_TRUE(outcome.finished);
    ASSERT_EQ(d.mcResult2D.ub(), 1);
    EXPECT_EQ(d.mcResult2D(1), 0.75);
    EXPECT_EQ(d.mcResult1D.ub(), -1);
    EXPECT_FALSE(d.mcPointChanged[static_cast<int>(ModelKind::TwoDimensional)]);
    EXPECT_EQ(outcome.resultLabel, "0.5");

    d.sourceYc = formFieldMarker("3", 1);  // row 11 of two dimensions
    d.monteStore(ModelKind::TwoDimensional).monteIterations = 4;
    outcome = calculateRoutine(d, ui);
    EXPECT_EQ(outcome.resultLabel, "Monte Carlo");
    ASSERT_EQ(d.mcResult2D.ub(), 3);
    EXPECT_DOUBLE_EQ(d.mcResult2D(3), 0.3);
    registerBuiltInKinds();  // the real registration back for the other tests
}

TEST(CalculationRun, TheKindsAreFoundByTheirWordsAndChemicalFlag) {
    DataSet d;
    d.modelType = "One Dimensional";
    const KindCalculation* kind = kindCalculationOf(d);
    ASSERT_NE(kind, nullptr);
    EXPECT_EQ(kind->kind, ModelKind::OneDimensional);
    d.mcResult1D.redim(4);
    EXPECT_EQ(kindResults(*kind, d).upper(), 4);
    d.modelType = "one dimensional";  // the word is compared exactly
    EXPECT_EQ(kindCalculationOf(d), nullptr);
    d.modelType = "One Dimensional";
    d.multiChemical = true;  // the decay chain of the same word is a kind of its own
    ASSERT_NE(kindCalculationOf(d), nullptr);
    EXPECT_EQ(kindCalculationOf(d)->kind, ModelKind::MultiOneDimensional);
}

TEST(CalculationRun, LabelRefreshedFromTheModeText) {
    EXPECT_EQ(resultLabelFromMode("Regular"), "Regular");
    EXPECT_EQ(resultLabelFromMode("Monte Carlo"), "Monte Carlo");
    EXPECT_EQ(resultLabelFromMode("0.123456789"), "0.12346");
    EXPECT_EQ(resultLabelFromMode("2.5e-05"), "2.5e-5");
    EXPECT_EQ(resultLabelFromMode(""), "");
}

TEST(CalculationRun, BusyPointerFramesTheRun) {
    DataSet d = oneDimModel("Semi-Infinite", "Cauchy");
    ScriptedUserInterface ui;
    runCalculation(d, ui);
    ASSERT_FALSE(ui.busyCalls.empty());
    EXPECT_TRUE(ui.busyCalls.front());
    EXPECT_FALSE(ui.busyCalls.back());
}

TEST(CalculationRun, ParseStepSetsConstantsAndClearsTheConcentration) {
    DataSet d = oneDimModel("Finite", "Cauchy");
    d.xRange = "0:100:1:50";
    d.timeRange = "7";
    d.currentConcentration = 0.3;
    parseCoordinates(d);
    EXPECT_EQ(d.xConstant, 50.0);
    EXPECT_EQ(d.numXTerms, 101);
    EXPECT_EQ(d.tConstant, 7.0);
    EXPECT_EQ(d.numTTerms, 1);
    EXPECT_EQ(d.currentConcentration, 0.0);
}

}  // namespace
}  // namespace bm
