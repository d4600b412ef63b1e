// Calculate! on the screen: the run's controls while it goes, the results it
// leaves, Stop half way and before the first point, No to the Stop question,
// a simulation started by a marker, and the notice of a varying inflow.

#include <gtest/gtest.h>

#include <cmath>

#include "input_form_test_models.h"
#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "testing/one_dim_test_model.h"
#include "testing/is_close.h"

namespace bm {
namespace {

using testkit::Screen;

// The one-dimensional test model: V = 0.3 / 0.3 = 1, D = 0.5, half-life 10.
const double kLambda = std::log(2.0) / 10.0;
double reference(double x, double t) { return testkit::semiInfiniteDirichletReference(1.0, 0.5, kLambda, x, t); }

struct RunState {
    bool seen = false, running = false, stopVisible = false, progressVisible = false, mainEnabled = true,
         menusEnabled = true, tabEnabled = true;
    std::string help;
};

TEST(InputFormRun, RegularRunOnTheScreen) {
    DataSet d = testkit::oneDimScreenModel();
    d.dataState = kParametersChanged;
    d.mcPointChanged[static_cast<int>(ModelKind::OneDimensional)] = true;
    Screen s(d);
    s.form.helpPanel = " before";
    RunState during;
    s.ui.onProgress = [&](const testkit::ScriptedUserInterface::Progress&) {
        if (during.seen) return;
        during = {true, s.form.running, s.form.stopVisible, s.form.progressVisible, s.form.mainEnabled,
                  s.form.menusEnabled, s.form.tabEnabled, s.form.helpPanel};
    };
    s.form.mnuFileClick(topMenu::Calculate);
    ASSERT_TRUE(during.seen);
    EXPECT_TRUE(during.running);
    EXPECT_TRUE(during.stopVisible);
    EXPECT_TRUE(during.progressVisible);
    EXPECT_FALSE(during.mainEnabled);
    EXPECT_FALSE(during.menusEnabled);
    EXPECT_FALSE(during.tabEnabled);
    EXPECT_EQ(during.help, " Computation Status:");
    EXPECT_FALSE(s.form.topMenus()[0].enabled == false);

    // what the run leaves
    EXPECT_TRUE(s.ui.messages.empty());
    EXPECT_FALSE(s.form.running);
    EXPECT_FALSE(s.form.stopVisible);
    EXPECT_FALSE(s.form.progressVisible);
    EXPECT_TRUE(s.form.mainEnabled);
    EXPECT_TRUE(s.form.menusEnabled);
    EXPECT_EQ(s.form.helpPanel, " before");
    EXPECT_FALSE(s.ui.busy);
    EXPECT_EQ(s.ui.progress.size(), 66u);
    EXPECT_EQ(s.ui.progress.front().owner, ProgressOwner::InputForm);
    EXPECT_EQ(s.ui.progress.back().done, 66);
    EXPECT_EQ(s.ui.progress.back().total, 66);
    const double atPoint = reference(10, 5);
    EXPECT_CLOSE(s.data.currentConcentration, atPoint, 1e-10, 0);
    EXPECT_EQ(s.form.resultLabel, formatNumber(atPoint));
    EXPECT_EQ(s.form.resultCaption, "Computed at");
    EXPECT_EQ(s.form.row(6).text, "10");
    EXPECT_EQ(s.form.row(7).text, "5");
    EXPECT_CLOSE(s.data.result1D(4, 3), reference(3, 2), 1e-10, 0);
    // the regular run is the loop run once; its one result is the last grid value
    ASSERT_EQ(s.data.mcResult1D.ub(), 1);
    EXPECT_EQ(s.data.mcResult1D(1), s.data.result1D(11, 6));
    EXPECT_EQ(s.data.dataState, kNeedsSaving);
    EXPECT_FALSE(s.data.mcPointChanged[static_cast<int>(ModelKind::OneDimensional)]);
    EXPECT_TRUE(s.form.resultsMenuEnabled);
    EXPECT_TRUE(s.form.saveEnabled);
    ASSERT_FALSE(s.host.focus.empty());
    EXPECT_TRUE(s.host.focus.front().stop);  // Stop had the focus during the run
}

TEST(InputFormRun, StopHalfWayLeavesTheGridFilledUpToThePoint) {
    Screen s(testkit::oneDimScreenModel());
    s.ui.onProgress = [&](const testkit::ScriptedUserInterface::Progress& p) {
        if (p.done == 30) {
            s.ui.answers.push_back(MessageAnswer::Yes);
            s.form.stopClicked();
        }
    };
    s.form.calculate();
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "Stop Calculation");
    EXPECT_EQ(s.ui.messages[0].defaultButton, 1);
    // time outer, x inner: the 30 points are t 1 and 2 whole and t 3 up to x = 8
    for (int ti = 1; ti <= 6; ++ti)
        for (int xi = 1; xi <= 11; ++xi) {
            const int point = (ti - 1) * 11 + xi;
            const double v = s.data.result1D(xi, ti);
            if (point <= 30)
                EXPECT_CLOSE(v, reference(xi - 1, ti - 1), 1e-10, 0) << xi << "," << ti;
            else
                EXPECT_EQ(v, 0.0) << xi << "," << ti;
        }
    EXPECT_EQ(s.ui.progress.size(), 30u);
    EXPECT_EQ(s.data.calculationMode, "Regular");
    EXPECT_EQ(s.form.resultLabel, "Regular");
    EXPECT_FALSE(s.data.stopRequested);
    EXPECT_FALSE(s.data.mcPointChanged[static_cast<int>(ModelKind::OneDimensional)]);
    EXPECT_TRUE(s.form.resultsMenuEnabled);
    EXPECT_FALSE(s.form.stopVisible);
    EXPECT_TRUE(s.form.mainEnabled);

    // the next Calculate starts with the flag clear and runs to the end
    s.ui.onProgress = nullptr;
    s.ui.messages.clear();
    s.form.calculate();
    EXPECT_EQ(s.ui.progress.size(), 30u + 66u);
    EXPECT_CLOSE(s.data.result1D(11, 6), reference(10, 5), 1e-10, 0);
}

TEST(InputFormRun, StopBeforeTheFirstPoint) {
    Screen s(testkit::oneDimScreenModel());
    s.ui.onProcessEvents = [&] {
        if (!s.form.running) return;
        s.ui.answers.push_back(MessageAnswer::Yes);
        s.form.stopClicked();
        s.ui.onProcessEvents = nullptr;
    };
    s.form.calculate();
    EXPECT_TRUE(s.ui.progress.empty());
    EXPECT_EQ(s.data.calculationMode, "Regular");
    for (int ti = 1; ti <= s.data.result1D.ub(1); ++ti)
        for (int xi = 1; xi <= s.data.result1D.ub(0); ++xi) EXPECT_EQ(s.data.result1D(xi, ti), 0.0);
    EXPECT_FALSE(s.data.stopRequested);
}

TEST(InputFormRun, NoToTheStopQuestionGoesOn) {
    Screen s(testkit::oneDimScreenModel());
    s.ui.onProgress = [&](const testkit::ScriptedUserInterface::Progress& p) {
        if (p.done == 10) {
            s.ui.answers.push_back(MessageAnswer::No);
            s.form.stopClicked();
        }
    };
    s.form.calculate();
    EXPECT_EQ(s.ui.progress.size(), 66u);
    EXPECT_CLOSE(s.data.result1D(11, 6), reference(10, 5), 1e-10, 0);
    EXPECT_EQ(s.form.resultLabel, formatNumber(reference(10, 5)));
}

TEST(InputFormRun, MarkerInARowRunsASimulation) {
    DataSet d = testkit::oneDimScreenModel();
    d.velocity = formFieldMarker("0.3", 1);
    d.monteStore(ModelKind::OneDimensional).monteIterations = 5;
    d.MonteSamples.redim({1, 5, 1});
    for (int i = 1; i <= 5; ++i) d.MonteSamples(1, i, 1) = 0.3 * i;  // V = i
    Screen s(d);
    s.form.calculate();
    EXPECT_EQ(s.data.calculationMode, "Monte Carlo");
    EXPECT_EQ(s.form.resultLabel, "Monte Carlo");
    EXPECT_EQ(s.form.resultCaption, "Monte Carlo Computed at");
    ASSERT_EQ(s.data.mcResult1D.ub(), 4);
    for (int i = 1; i <= 4; ++i)
        EXPECT_CLOSE(s.data.mcResult1D(i), testkit::semiInfiniteDirichletReference(i, 0.5, kLambda, 10, 5), 1e-10, 0);
    EXPECT_EQ(s.ui.progress.size(), 4u);  // once per iteration
}

TEST(InputFormRun, SimulationStoppedBetweenIterationsLeavesZeros) {
    DataSet d = testkit::oneDimScreenModel();
    d.dispersionX = formFieldMarker("0.5", 1);
    d.monteStore(ModelKind::OneDimensional).monteIterations = 6;
    d.MonteSamples.redim({1, 6, 1});
    for (int i = 1; i <= 6; ++i) d.MonteSamples(1, i, 1) = 0.5;
    Screen s(d);
    s.ui.onProgress = [&](const testkit::ScriptedUserInterface::Progress& p) {
        if (p.done == 2) {
            s.ui.answers.push_back(MessageAnswer::Yes);
            s.form.stopClicked();
        }
    };
    s.form.calculate();
    ASSERT_EQ(s.data.mcResult1D.ub(), 5);
    EXPECT_CLOSE(s.data.mcResult1D(1), reference(10, 5), 1e-10, 0);
    EXPECT_CLOSE(s.data.mcResult1D(2), reference(10, 5), 1e-10, 0);
    for (int i = 3; i <= 5; ++i) EXPECT_EQ(s.data.mcResult1D(i), 0.0);
    EXPECT_EQ(s.data.calculationMode, "Monte Carlo");
    EXPECT_EQ(s.form.resultLabel, "Monte Carlo");
    EXPECT_FALSE(s.data.stopRequested);
}

TEST(InputFormRun, VaryingInflowGivesTheNoticeAndScalesTheResults) {
    DataSet d = testkit::oneDimScreenModel();
    d.terms(1).concentration = boundaryCellMarker("2", 1, kWideCellMarkerPadding);
    d.monteCarloModeOn = true;
    d.monteStore(ModelKind::OneDimensional).monteIterations = 3;
    d.MonteSamples.redim({1, 3, 1});
    for (int i = 1; i <= 3; ++i) d.MonteSamples(1, i, 1) = 2.0 * i;
    Screen s(d);
    s.form.calculate();
    ASSERT_FALSE(s.ui.messages.empty());
    EXPECT_EQ(s.ui.messages[0].title, "Information");
    EXPECT_EQ(s.ui.messages[0].text,
              "Initial Concentration (Co) is selected for Monte Carlo simulation analysis\r\nin this case. Please pay "
              "attention that the computed concentration at the\r\nspecified point is not normalized.");
    ASSERT_EQ(s.data.mcResult1D.ub(), 2);
    for (int i = 1; i <= 2; ++i) EXPECT_CLOSE(s.data.mcResult1D(i), 2.0 * i * reference(10, 5), 1e-10, 0);
}

TEST(InputFormRun, InvalidInputsRunNothing) {
    Screen s(testkit::oneDimScreenModel());
    s.form.row(4).text = "1:5:1";
    s.form.calculate();
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_TRUE(s.ui.progress.empty());
    EXPECT_TRUE(s.form.mainEnabled);
    EXPECT_FALSE(s.ui.busy);
    EXPECT_EQ(s.data.calculationMode, "");
    EXPECT_EQ(s.data.timeRange, "0:5:1");  // holdDataSet did not run
}

TEST(InputFormRun, DataStateZeroOrTwoStaysAfterARun) {
    DataSet d = testkit::oneDimScreenModel();
    d.dataState = kDataUnchanged;
    Screen s(d);
    s.form.calculate();
    EXPECT_EQ(s.data.dataState, kDataUnchanged);
}

}  // namespace
}  // namespace bm

namespace bm {
namespace {

TEST(ProgressPicture, PercentageIsAWholeNumberUpToOneHundred) {
    EXPECT_EQ(progressPercentText(66, 0), "0%");
    EXPECT_EQ(progressPercentText(3, 1), "33%");
    EXPECT_EQ(progressPercentText(3, 2), "67%");
    EXPECT_EQ(progressPercentText(66, 66), "100%");
    EXPECT_EQ(progressPercentText(10, 12), "100%");
    EXPECT_EQ(progressPercentText(0, 0), "0%");
    EXPECT_DOUBLE_EQ(progressFraction(4, 1), 0.25);
    EXPECT_DOUBLE_EQ(progressFraction(4, 9), 1.0);
}

}  // namespace
}  // namespace bm

namespace bm {
namespace {

// Two and three dimensions run through the passes of their drivers; a finite
// aquifer needs no quadrature file.
TEST(InputFormRunSpatial, TwoDimensionalRunFillsItsGridAndLabel) {
    Screen s(testkit::twoDimScreenModel("Finite", "Finite / Line"));
    s.data.dataState = kParametersChanged;
    s.form.calculate();
    for (const auto& m : s.ui.messages) ADD_FAILURE() << m.title << ": " << m.text;
    EXPECT_EQ(s.data.result2D.ub(0), 11);
    EXPECT_EQ(s.data.result2D.ub(1), 11);
    EXPECT_EQ(s.data.result2D.ub(2), 11);
    ASSERT_FALSE(s.ui.progress.empty());
    EXPECT_EQ(s.ui.progress.back().total, 11 * 11 * 11);
    EXPECT_EQ(s.form.resultLabel, formatNumber(s.data.currentConcentration));
    EXPECT_GE(s.data.currentConcentration, 0.0);
    EXPECT_LE(s.data.currentConcentration, 1.0);
    EXPECT_FALSE(s.data.mcPointChanged[static_cast<int>(ModelKind::TwoDimensional)]);
    EXPECT_EQ(s.data.dataState, kNeedsSaving);
    EXPECT_TRUE(s.form.resultsAreValid());
}

TEST(InputFormRunSpatial, ThreeDimensionalRunFillsItsGridAndLabel) {
    DataSet d = testkit::threeDimScreenModel("Finite", "Finite / Patch");
    d.xRange = "0:40:10";
    d.mcAtX = "40";
    Screen s(d);
    s.form.calculate();
    for (const auto& m : s.ui.messages) ADD_FAILURE() << m.title << ": " << m.text;
    EXPECT_EQ(s.data.result3D.ub(0), 5);
    EXPECT_EQ(s.data.result3D.ub(1), 5);
    EXPECT_EQ(s.data.result3D.ub(2), 3);
    EXPECT_EQ(s.data.result3D.ub(3), 11);
    ASSERT_FALSE(s.ui.progress.empty());
    EXPECT_EQ(s.ui.progress.back().total, 5 * 5 * 3 * 11);
    EXPECT_EQ(s.form.resultLabel, formatNumber(s.data.currentConcentration));
    EXPECT_EQ(s.form.row(16).text, "40");
    EXPECT_TRUE(s.form.resultsAreValid());
}

}  // namespace
}  // namespace bm
