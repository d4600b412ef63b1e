// The calculation pass on several threads against the same pass on one: a
// grid stopped between batches, an error inside a grid, and the iterations of
// a simulation that fail, reach the user or leave their changes in the DataSet.

#include <gtest/gtest.h>

#include <cmath>
#include <optional>

#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/calculation_pass.h"
#include "montecarlo/pass/ordered_batches.h"
#include "saturated/tests/two_dim_test_model.h"
#include "shell/base/runtime_error.h"
#include "testing/points_file.h"
#include "testing/scripted_user_interface.h"

namespace bm {
namespace {

using testkit::PointsFileScope;
using testkit::ScriptedUserInterface;
using testkit::twoDimModel;

// A strip on a grid of 41 x 41 x 4 points.
DataSet largerStrip() {
    DataSet d = twoDimModel("Infinite", "Finite / Line");
    d.xRange = "0:40:1";
    d.yRange = "-10:10:0.5";
    parseCoordinates(d);
    return d;
}

struct StoppedRun {
    DataSet data;
    double stoppedAfter = 0;  // points done when Stop was pressed
    std::size_t reports = 0;
    bool stopped = false;
};

// The run on `threads` threads, Stop pressed (and answered Yes) at the first
// report of at least `stopAt` points done.
StoppedRun runStoppedAt(int threads, double stopAt) {
    const ScopedCalculationThreads scope(threads);
    StoppedRun run;
    run.data = largerStrip();
    ScriptedUserInterface ui;
    ui.onProgress = [&](const ScriptedUserInterface::Progress& p) {
        if (run.stoppedAfter == 0 && p.done >= stopAt) {
            run.stoppedAfter = p.done;
            ui.answers.push_back(MessageAnswer::Yes);
            stopButtonClicked(run.data, ui);
        }
    };
    const CalculationOutcome outcome = runCalculation(run.data, ui);
    run.stopped = outcome.stopped;
    run.reports = ui.progress.size();
    return run;
}

TEST(ThreadsPass, AGridStoppedBetweenBatchesLeavesWhatOneThreadStoppedThereLeaves) {
    const PointsFileScope points;
    const double total = 41.0 * 41.0 * 4.0;
    const StoppedRun many = runStoppedAt(3, total / 2);
    EXPECT_GE(many.stoppedAfter, total / 2);
    EXPECT_LT(many.stoppedAfter, total);
    EXPECT_GT(many.reports, 1u);  // the progress display moved on the way

    const StoppedRun one = runStoppedAt(1, many.stoppedAfter);
    EXPECT_EQ(one.stoppedAfter, many.stoppedAfter);
    EXPECT_EQ(many.stopped, one.stopped);
    EXPECT_EQ(many.data.result2D, one.data.result2D);
    EXPECT_EQ(many.data.calculationMode, one.data.calculationMode);
    EXPECT_FALSE(many.data.stopRequested);

    // The points after the boundary (y fastest, then x, then t) were not computed.
    long long at = 0;
    int computed = 0;
    for (int j = 1; j <= 4; ++j)
        for (int i = 1; i <= 41; ++i)
            for (int k = 1; k <= 41; ++k, ++at) {
                if (at >= static_cast<long long>(many.stoppedAfter)) ASSERT_EQ(many.data.result2D(i, k, j), 0.0);
                else computed += many.data.result2D(i, k, j) != 0.0 ? 1 : 0;
            }
    EXPECT_GT(computed, 100);
}

// A zero first inflow concentration divides by zero from the time the second
// term starts (t = 20): the grid before it stays, error 11 is shown once.
TEST(ThreadsPass, AnErrorInsideTheGridLeavesWhatOneThreadLeaves) {
    const PointsFileScope points;
    auto run = [](int threads, ScriptedUserInterface& ui) {
        const ScopedCalculationThreads scope(threads);
        DataSet d = largerStrip();
        d.superpositionIndex = 2;
        d.terms.redim(2);
        d.terms(1) = {"0", "0"};
        d.terms(2) = {"20", "1"};
        EXPECT_FALSE(runCalculation(d, ui).finished);
        return d;
    };
    ScriptedUserInterface oneUi, manyUi;
    const DataSet one = run(1, oneUi);
    const DataSet many = run(3, manyUi);
    ASSERT_EQ(oneUi.messages.size(), 1u);
    EXPECT_EQ(oneUi.messages[0].title, "Division by zero");
    ASSERT_EQ(manyUi.messages.size(), 1u);
    EXPECT_EQ(manyUi.messages[0].title, oneUi.messages[0].title);
    EXPECT_EQ(manyUi.messages[0].text, oneUi.messages[0].text);
    EXPECT_EQ(many.result2D, one.result2D);
    EXPECT_NE(one.result2D(5, 20, 2), 0.0);  // t = 10 was computed
    EXPECT_EQ(one.result2D(1, 1, 3), 0.0);   // t = 20 was not
}

// A simulation of a made-up kind: iteration i stores 1 / i, leaves i in the
// DataSet, asks the user something at iteration 20 and faults at `failAt`.
struct MadeUpSimulation {
    int failAt = 0;
    KindCalculation kind() const {
        KindCalculation k = *kindCalculationFor(ModelKind::TwoDimensional);
        k.layOutGrid = nullptr;
        k.refuses = nullptr;
        k.statistics = nullptr;
        k.scalesByInflowSamples = false;
        const int fail = failAt;
        k.iterate = [fail](DataSet& data, bool, int i, UserInterface& ui) -> std::optional<double> {
            data.currentConcentration = i;
            if (i == 20) ui.message(MessageIcon::Information, MessageButtons::Ok, "Iteration", "twenty");
            if (i == fail) raiseError(err::Overflow);
            data.numXTerms = static_cast<std::int16_t>(i);
            return 1.0 / i;
        };
        return k;
    }
};

struct SimulationRun {
    DataSet data;
    ScriptedUserInterface ui;
    bool finished = false;
};

void simulate(int threads, int failAt, double stopAt, SimulationRun& run) {
    const ScopedCalculationThreads scope(threads);
    run.data = twoDimModel("Infinite", "Gaussian");
    run.data.monteCarloModeOn = true;
    run.data.monteStore(ModelKind::TwoDimensional).monteIterations = 3001;
    run.ui.onProgress = [&](const ScriptedUserInterface::Progress& p) {
        if (stopAt > 0 && p.done >= stopAt && !run.data.runStopped) {
            run.ui.answers.push_back(MessageAnswer::Yes);
            stopButtonClicked(run.data, run.ui);
        }
    };
    const MadeUpSimulation made{failAt};
    run.finished = calculateRoutine(run.data, run.ui, made.kind()).finished;
}

TEST(ThreadsPass, IterationsOnThreadsStoreAskAndLeaveTheDataSetAsOnOneThread) {
    SimulationRun one, many;
    simulate(1, 0, 0, one);
    simulate(3, 0, 0, many);
    ASSERT_TRUE(one.finished);
    ASSERT_TRUE(many.finished);
    ASSERT_EQ(one.data.mcResult2D.ub(), 3000);
    for (int i = 1; i <= 3000; ++i) ASSERT_EQ(many.data.mcResult2D(i), 1.0 / i) << i;
    EXPECT_EQ(many.data.mcResult2D, one.data.mcResult2D);
    // The question of iteration 20 was asked once, in its turn.
    ASSERT_EQ(many.ui.messages.size(), 1u);
    EXPECT_EQ(many.ui.messages[0].text, "twenty");
    // The DataSet holds what the last iteration left in it.
    EXPECT_EQ(many.data.currentConcentration, 3000.0);
    EXPECT_EQ(many.data.numXTerms, 3000);
    EXPECT_GT(many.ui.progress.size(), 1u);
    EXPECT_EQ(many.ui.progress.back().done, 3000.0);
}

TEST(ThreadsPass, AnIterationThatFaultsOnAThreadRaisesItsErrorInItsTurn) {
    for (int failAt : {2, 37, 1500, 3000}) {
        SimulationRun one, many;
        simulate(1, failAt, 0, one);
        simulate(3, failAt, 0, many);
        EXPECT_FALSE(one.finished);
        EXPECT_FALSE(many.finished);
        ASSERT_EQ(many.ui.messages.size(), one.ui.messages.size()) << failAt;
        for (std::size_t m = 0; m < one.ui.messages.size(); ++m) {
            EXPECT_EQ(many.ui.messages[m].title, one.ui.messages[m].title) << failAt;
            EXPECT_EQ(many.ui.messages[m].text, one.ui.messages[m].text) << failAt;
        }
        EXPECT_EQ(one.ui.messages.back().title, "Overflow");
        EXPECT_EQ(many.data.mcResult2D, one.data.mcResult2D) << failAt;
        // The faulting iteration's change before the fault, over the one before it.
        EXPECT_EQ(many.data.currentConcentration, failAt);
        EXPECT_EQ(many.data.numXTerms, one.data.numXTerms) << failAt;
        EXPECT_EQ(one.data.numXTerms, failAt - 1);
    }
}

TEST(ThreadsPass, ASimulationStoppedBetweenBatchesKeepsTheIterationsBeforeTheBoundary) {
    SimulationRun many;
    simulate(3, 0, 1500, many);
    EXPECT_TRUE(many.finished);
    const double stoppedAfter = many.ui.progress.back().done;
    EXPECT_GE(stoppedAfter, 1500);
    EXPECT_LT(stoppedAfter, 3000);
    SimulationRun one;
    simulate(1, 0, stoppedAfter, one);
    EXPECT_EQ(one.ui.progress.back().done, stoppedAfter);
    EXPECT_EQ(many.data.mcResult2D, one.data.mcResult2D);
    EXPECT_EQ(many.data.currentConcentration, one.data.currentConcentration);
    EXPECT_EQ(many.data.numXTerms, one.data.numXTerms);
    EXPECT_EQ(many.data.currentConcentration, stoppedAfter);
}

}  // namespace
}  // namespace bm
