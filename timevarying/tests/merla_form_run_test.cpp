// Calculate! on merlaform: the run with its progress and Stop, the value at the
// selected point against the closed form, the Results menu of this model, and
// its report.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "files/text_file.h"
#include "merla_test_screen.h"
#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "testing/is_close.h"
#include "testing/kernvar_reference.h"
#include "testing/test_paths.h"
#include "timevarying/var_output.h"

namespace bm {
namespace {

using testkit::merlaModel;
using testkit::MerlaScreen;

// The screen's model with constant dispersion and explicit Constants: x 10:30:10
// held at 20, y 1:5:2 at 3, t 20:40:20 at 40.
DataSet constantModel(const std::string& source) {
    DataSet d = merlaModel(source, "Constant");
    d.xRange = "10:30:10:20";
    d.yRange = "1:5:2:3";
    d.timeRange = "20:40:20:40";
    d.mcAtX = "11";
    d.mcAtY = "2";
    d.mcAtT = "21";
    return d;
}

// The same values as the record holds them: seepage velocities u = 1, v = 0.3.
kernvar_ref::Case stored(bool line) {
    kernvar_ref::Case c;
    c.function = 1;
    c.R = 2;
    c.u = static_cast<float>(0.3 / 0.3);
    c.v = line ? 0.0 : static_cast<float>(0.09f / 0.3f);
    c.mu = 0.001;
    c.a = 0.2;
    c.Do = 5;
    c.Dm = 0.01;
    c.M = 1000;
    return kernvar_ref::asStored(c);
}

// Constant dispersion grows alpha linearly: (Dm + Do |V|) t / R.
double alphaOf(const kernvar_ref::Case& c, double t) { return (c.Dm + c.Do * kernvar_ref::speed(c)) * t / c.R; }

TEST(MerlaRun, ARegularRunComputesTheGridAndThePoint) {
    DataSet d = constantModel("Point (instantaneous)");
    d.dataState = kParametersChanged;
    MerlaScreen s(d);
    bool sawRun = false;
    s.ui.onProgress = [&](const testkit::ScriptedUserInterface::Progress& p) {
        if (sawRun) return;
        sawRun = true;
        EXPECT_EQ(p.owner, ProgressOwner::TimeVaryingForm);
        EXPECT_TRUE(s.form.running);
        EXPECT_TRUE(s.form.stopVisible);
        EXPECT_FALSE(s.form.menusEnabled);
        EXPECT_EQ(s.form.helpPanel, " Computation Status:");
    };
    s.form.mnuFileClick(topMenu::Calculate);
    ASSERT_TRUE(sawRun);
    EXPECT_TRUE(s.ui.messages.empty()) << s.ui.lastText();
    EXPECT_EQ(s.ui.progress.size(), 18u);  // 2 times x 3 x x 3 y
    EXPECT_FALSE(s.form.running);

    const kernvar_ref::Case c = stored(false);
    const double atPoint = kernvar_ref::pointValue(c, 40, 20, 3, alphaOf(c, 40), true);
    EXPECT_CLOSE(s.data.currentConcentration, atPoint, 2e-5, 0);
    EXPECT_EQ(s.form.resultLabel, s.data.varResultText);
    EXPECT_EQ(s.form.resultLabel, formatNumber(generalText(static_cast<float>(s.data.currentConcentration))));
    EXPECT_EQ(s.form.row(varrow::Concentration).text, s.form.resultLabel);
    EXPECT_EQ(s.form.resultCaption, "Computed at");
    // the selected point's rows say where
    EXPECT_EQ(s.form.row(varrow::PointX).text, "20");
    EXPECT_EQ(s.form.row(varrow::PointY).text, "3");
    EXPECT_EQ(s.form.row(varrow::PointT).text, "40");
    for (int k = 1; k <= 2; ++k)
        for (int i = 1; i <= 3; ++i)
            for (int j = 1; j <= 3; ++j) {
                const double t = 20.0 * k, x = 10.0 * i, y = 2.0 * j - 1;
                EXPECT_CLOSE(s.data.resultVar((k - 1) * 9 + (i - 1) * 3 + j),
                             kernvar_ref::pointValue(c, t, x, y, alphaOf(c, t), true), 2e-5, 1e-30)
                    << t << "," << x << "," << y;
            }
    EXPECT_EQ(s.data.dataState, kNeedsSaving);
    EXPECT_TRUE(s.form.resultsMenuEnabled);
}

TEST(MerlaRun, ALineSourceHasNoYLoop) {
    MerlaScreen s(constantModel("Line (instantaneous)"));
    s.form.calculate();
    EXPECT_TRUE(s.ui.messages.empty()) << s.ui.lastText();
    EXPECT_EQ(s.ui.progress.size(), 6u);
    const kernvar_ref::Case c = stored(true);
    EXPECT_CLOSE(s.data.currentConcentration, kernvar_ref::lineValue(c, 40, 20, alphaOf(c, 40), true), 2e-5, 0);
    EXPECT_EQ(s.form.row(varrow::Y).text, "Not Used");
    EXPECT_EQ(s.form.row(varrow::PointY).text, "Not Used");
}

TEST(MerlaRun, StopHalfWayLeavesNoValueAtThePoint) {
    MerlaScreen s(constantModel("Point (instantaneous)"));
    s.form.calculate();
    ASSERT_FALSE(s.form.resultLabel.empty());
    s.ui.progress.clear();
    s.ui.onProgress = [&](const testkit::ScriptedUserInterface::Progress& p) {
        if (p.done == 7) {
            s.ui.answers.push_back(MessageAnswer::Yes);
            s.form.stopClicked();
        }
    };
    s.data.resultVar.redim(18);  // the grid of the first run cleared, to see what the second fills
    s.form.calculate();
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.lastTitle(), "Stop Calculation");
    EXPECT_EQ(s.ui.progress.size(), 7u);
    for (int n = 1; n <= 18; ++n) {
        if (n <= 7)
            EXPECT_GT(s.data.resultVar(n), 0.0f) << n;
        else
            EXPECT_EQ(s.data.resultVar(n), 0.0f) << n;
    }
    EXPECT_EQ(s.data.varResultText, "");
    EXPECT_EQ(s.form.resultLabel, "Regular");  // no value: the label says what ran, as after a file is read
    EXPECT_TRUE(s.data.runStopped);
    EXPECT_FALSE(s.data.stopRequested);
    EXPECT_FALSE(s.form.running);
    EXPECT_TRUE(s.form.menusEnabled);
}

TEST(MerlaRun, InvalidInputsRunNothing) {
    MerlaScreen s(constantModel("Point (instantaneous)"));
    s.type(varrow::Retardation, "0.5");
    EXPECT_FALSE(s.form.calculate());
    EXPECT_TRUE(s.ui.progress.empty());
    EXPECT_EQ(s.ui.lastTitle(), "Improper input data");
}

// ---------------------------------------------------------------- the Results menu

struct ResultsScreen : MerlaScreen {
    testkit::TempDir dir;
    explicit ResultsScreen(DataSet d) : MerlaScreen(std::move(d)) {
        state.temporaryDataPath = dir.path().string();
        state.textEditorPath = (dir.path() / "no-editor").string();
    }
    std::string plotFile() const {
        const auto path = dir.path() / "brenmoor.plt";
        return std::filesystem::exists(path) ? testkit::readFileBytes(path) : std::string();
    }
};

TEST(MerlaResults, ViewWritesTheOutputFileOfTheRun) {
    ResultsScreen s(constantModel("Point (continuous)"));
    s.form.calculate();
    s.ui.messages.clear();
    s.form.menuResultsClick(resultsItem::View);
    const std::string written = s.plotFile();
    EXPECT_EQ(written, timeVaryingOutputText(s.data));
    EXPECT_EQ(written.rfind("Ground Water\r\nModel: Point Source\r\nDispersion Coefficient: Constant\r\n", 0), 0u);
    EXPECT_EQ(s.ui.lastTitle(), "Missing Text Editor");
}

TEST(MerlaResults, GraphHandsTheFileToThePlottingUtility) {
    ResultsScreen s(constantModel("Line (initial)"));
    s.state.graphUtilityPath = s.dir.file("no-trazel");
    s.form.calculate();
    s.form.menuResultsClick(resultsItem::Graph);
    EXPECT_EQ(s.plotFile(), timeVaryingOutputText(s.data));
    EXPECT_EQ(s.plotFile().rfind("Ground Water\r\nModel: Line Source\r\n", 0), 0u);
    EXPECT_EQ(s.ui.lastTitle(), "Missing Trazel Utility");
}

TEST(MerlaResults, ChangedInputsAskFirst) {
    ResultsScreen s(constantModel("Point (continuous)"));
    s.form.calculate();
    s.type(varrow::Decay, "0.002");
    s.ui.messages.clear();
    s.ui.answers.push_back(MessageAnswer::No);
    s.form.menuResultsClick(resultsItem::Graph);
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.lastTitle(), "Results Not Updated");
    EXPECT_EQ(s.ui.messages[0].buttons, MessageButtons::YesNo);
    EXPECT_EQ(s.ui.messages[0].defaultButton, 1);  // No
    EXPECT_EQ(s.ui.lastText(),
              "Input data has been changed. The results shown would be from a previous computation.\rIn order to "
              "update the results please press calculate from the menu.\rDo you want to continue ?");
    EXPECT_TRUE(s.plotFile().empty());
}

TEST(MerlaResults, ASinglePointIsNotPlotted) {
    DataSet d = constantModel("Point (instantaneous)");
    d.xRange = "20:20:0";
    d.yRange = "3:3:0";
    d.timeRange = "40:40:0";
    ResultsScreen s(d);
    s.form.calculate();
    ASSERT_TRUE(s.ui.messages.empty()) << s.ui.lastText();
    s.form.menuResultsClick(resultsItem::Graph);
    EXPECT_EQ(s.ui.lastTitle(), "Error Information");
    EXPECT_EQ(s.ui.lastText(), " Only single value is computed! ");
    EXPECT_TRUE(s.plotFile().empty());
    s.form.menuResultsClick(resultsItem::View);  // the text view takes it
    EXPECT_NE(s.plotFile().find("Number of X Terms:  1 "), std::string::npos);
}

TEST(MerlaResults, ASimulationsResultsAreTheMonteCarloMenus) {
    ResultsScreen s(constantModel("Point (instantaneous)"));
    s.data.calculationMode = "Monte Carlo";
    s.form.menuResultsClick(resultsItem::View);
    EXPECT_EQ(s.ui.lastTitle(), "Error Information");
    EXPECT_EQ(s.ui.lastText(), "Output Data are not correct!   Please select calculate before choosing this option.");
}

TEST(MerlaResults, NothingComputedIsNotCorrect) {
    ResultsScreen s(constantModel("Point (instantaneous)"));
    s.form.menuResultsClick(resultsItem::Graph);
    EXPECT_EQ(s.ui.lastText(), "Output Data are not correct!   Please select calculate before choosing this option.");
}

// ---------------------------------------------------------------- the report

TEST(MerlaReport, PrintedAndViewedWithTheModelsWords) {
    DataSet d = constantModel("Line (continuous)");
    d.title = "Plume";
    d.retardation = formFieldMarker("2", 1);
    ResultsScreen s(d);
    s.form.menuFileClick(fileItem::Print);
    const std::vector<std::string>& printed = s.host.printedLines;
    ASSERT_GT(printed.size(), 30u);
    EXPECT_EQ(printed[2], "Saturated Ground Water Model with Time Dependent Dispersion Coefficients");
    EXPECT_EQ(printed[5], " Title: ");
    EXPECT_EQ(printed[6], "   Plume");
    const auto has = [&](const std::string& line) {
        return std::find(printed.begin(), printed.end(), line) != printed.end();
    };
    // the printer's column stops are every column the report tabs to; a piece
    // at column 26 is the fourth stop, one at column 14 the second
    EXPECT_EQ(s.host.printedColumns, (std::vector<int>{13, 14, 20, 26, 30, 32, 45, 50}));
    EXPECT_TRUE(has("Contaminant Source: \t\t\t\tLine (continuous)"));
    EXPECT_TRUE(has("Dispersion Coefficient: \t\t\t\tConstant"));
    EXPECT_TRUE(has(" Y Axis\t\tNot Used"));
    EXPECT_TRUE(has(" Retardation Coefficient: Monte Carlo"));
    EXPECT_TRUE(has(" Magnitude of Source: 1000"));
    EXPECT_TRUE(has(" Monte Carlo simulation at y: Not Used"));
    EXPECT_FALSE(has(" Steady-state velocity in Y-direction: 0.09"));  // a line has no v

    s.form.menuResultsClick(kReportItem);
    const std::string text = testkit::readFileBytes(s.form.reportFileName());
    EXPECT_NE(text.find("\r\nContaminant Source:      Line (continuous)\r\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\r\n X Axis      10" + std::string(16, ' ') + "30" + std::string(16, ' ') + "10\r\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\r\nProperties:\r\n Retardation Coefficient: Monte Carlo\r\n"), std::string::npos);
    EXPECT_EQ(s.ui.lastTitle(), "Missing Text Editor");
}

}  // namespace
}  // namespace bm
