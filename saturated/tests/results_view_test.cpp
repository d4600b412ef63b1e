// The Results menu: whether results fit the inputs, the refusals, the stale
// question, and the output file handed to the plotting utility or the viewer.

#include <gtest/gtest.h>

#include <filesystem>

#include "files/stopped_run_note.h"
#include "input_form_test_models.h"
#include "model/number_text.h"
#include "testing/test_paths.h"

namespace bm {
namespace {

using testkit::Screen;
using testkit::TempDir;

const std::string kNotCorrect = "Output Data are not correct! \r\r  Please select calculate before choosing this option.";

struct Calculated : ::testing::Test {
    TempDir dir;
    Screen s{testkit::oneDimScreenModel()};
    void SetUp() override {
        s.state.temporaryDataPath = dir.path().string();
        s.form.calculate();
        ASSERT_TRUE(s.ui.messages.empty());
        s.ui.programStarts.clear();
    }
    std::string plotFile() const { return dir.file("brenmoor.plt"); }
    std::string program(const std::string& name) {
        testkit::writeFileBytes(dir.path() / name, "#!/bin/sh\n");
        return dir.file(name);
    }
};

TEST_F(Calculated, ResultsAreValidAfterARun) { EXPECT_TRUE(s.form.resultsAreValid()); }

TEST_F(Calculated, ThePlotFileIsWrittenUnderTheBusyPointer) {
    s.state.graphUtilityPath = program("trazel");
    s.ui.busyCalls.clear();
    s.form.menuResultsClick(resultsItem::Graph);
    ASSERT_EQ(s.ui.programStarts.size(), 1u);
    ASSERT_GE(s.ui.busyCalls.size(), 2u);
    EXPECT_TRUE(s.ui.busyCalls.front());
    EXPECT_FALSE(s.ui.busyCalls.back());
    EXPECT_FALSE(s.ui.busy);
}

TEST_F(Calculated, TheFileOfAStoppedRunHasANoteBesideIt) {
    s.state.graphUtilityPath = program("trazel");
    s.ui.answers.push_back(MessageAnswer::Yes);
    s.ui.onProgress = [&](const testkit::ScriptedUserInterface::Progress& p) {
        if (p.done == 5) s.form.stopClicked();
    };
    s.form.calculate();
    s.ui.onProgress = nullptr;
    s.form.menuResultsClick(resultsItem::Graph);
    const std::string stopped = testkit::readFileBytes(plotFile());
    EXPECT_TRUE(std::filesystem::exists(plotFile() + kStoppedRunNoteSuffix));
    // The next complete run removes the note; the file's layout is the same either way.
    s.form.calculate();
    s.form.menuResultsClick(resultsItem::Graph);
    EXPECT_FALSE(std::filesystem::exists(plotFile() + kStoppedRunNoteSuffix));
    const std::string complete = testkit::readFileBytes(plotFile());
    EXPECT_EQ(stopped.substr(0, stopped.find("\r\n\r\n")), complete.substr(0, complete.find("\r\n\r\n")));
}

TEST_F(Calculated, ChangedCountOfARangeRowMakesThemInvalid) {
    s.form.row(3).text = "0:10:2";
    EXPECT_FALSE(s.form.resultsAreValid());
    s.form.row(3).text = "0:10:1";
    s.form.row(4).text = "0:5:0.5";
    EXPECT_FALSE(s.form.resultsAreValid());
}

TEST_F(Calculated, DataStateOneIsNeverValid) {
    s.data.dataState = kParametersChanged;
    EXPECT_FALSE(s.form.resultsAreValid());
}

TEST_F(Calculated, GraphWritesThePlotFileAndStartsTheUtility) {
    s.state.graphUtilityPath = program("trazel");
    s.form.menuResultsClick(resultsItem::Graph);
    EXPECT_TRUE(s.ui.messages.empty());
    ASSERT_EQ(s.ui.programStarts.size(), 1u);
    EXPECT_EQ(s.ui.programStarts[0].program, s.state.graphUtilityPath);
    EXPECT_EQ(s.ui.programStarts[0].arguments, std::vector<std::string>{plotFile()});
    const std::string file = testkit::readFileBytes(plotFile());
    EXPECT_EQ(file.rfind("Ground Water\r\nModel: One Dimensional\r\n", 0), 0u) << file.substr(0, 60);
    EXPECT_NE(file.find("Number of X Terms:  11 "), std::string::npos);
}

TEST_F(Calculated, OutputFileHeaderAndLastLine) {
    s.form.row(3).text = "0:4:1";  // five x terms
    s.form.row(6).text = "4";
    s.form.calculate();
    s.state.textEditorPath = program("editor");
    s.form.menuResultsClick(resultsItem::View);
    const std::string file = testkit::readFileBytes(plotFile());
    EXPECT_NE(file.find("\r\nNumber of X Terms:  5 \r\n"), std::string::npos);
    EXPECT_NE(file.find("\r\nContaminant:Dirichlet\r\n"), std::string::npos);
    EXPECT_NE(file.find("\r\nAquifer: Semi-Infinite\r\n"), std::string::npos);
    ASSERT_GE(file.size(), 2u);
    EXPECT_NE(file.substr(file.size() - 2), "\r\n");  // the table's last row has no line end
}

TEST_F(Calculated, ViewOpensTheTextViewer) {
    s.state.textEditorPath = program("editor");
    s.form.menuResultsClick(resultsItem::View);
    ASSERT_EQ(s.ui.programStarts.size(), 1u);
    EXPECT_EQ(s.ui.programStarts[0].program, s.state.textEditorPath);
    EXPECT_TRUE(testkit::readFileBytes(plotFile()).size() > 100);
}

TEST_F(Calculated, MissingEditorIsReportedAfterTheFileIsWritten) {
    s.state.textEditorPath = dir.file("no-such-editor");
    s.form.menuResultsClick(resultsItem::View);
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "Missing Text Editor");
    EXPECT_FALSE(testkit::readFileBytes(plotFile()).empty());
}

TEST_F(Calculated, StaleResultsAskFirstNoEndsTheCommand) {
    s.form.rowEdited(0, "0.6");
    s.data.dataState = kNeedsSaving;  // a stale flag without a parameter change to calculate
    s.state.graphUtilityPath = program("trazel");
    s.ui.answers.push_back(MessageAnswer::No);
    s.form.menuResultsClick(resultsItem::Graph);
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "Results Not Updated");
    EXPECT_EQ(s.ui.messages[0].text,
              "Input data has been changed. The results shown would be from a previous computation.\rIn order to "
              "update the results please press calculate from the menu.\r\rDo you want to continue ?");
    EXPECT_EQ(s.ui.messages[0].buttons, MessageButtons::YesNo);
    EXPECT_EQ(s.ui.messages[0].defaultButton, 1);
    EXPECT_TRUE(s.ui.programStarts.empty());
    s.ui.answers.push_back(MessageAnswer::Yes);
    s.form.menuResultsClick(resultsItem::Graph);
    EXPECT_EQ(s.ui.programStarts.size(), 1u);
}

TEST_F(Calculated, MonteCarloRunGoesToTheSimulationOutput) {
    s.data.calculationMode = "Monte Carlo";
    s.data.monteStore(ModelKind::OneDimensional).monteIterations = 3;
    s.data.mcResult1D.redim(2);
    s.data.mcResult1D(1) = 0.25;
    s.data.mcResult1D(2) = 0.5;
    s.state.graphUtilityPath = program("trazel");
    s.form.menuResultsClick(resultsItem::Graph);
    ASSERT_EQ(s.ui.programStarts.size(), 1u);
    const std::string file = testkit::readFileBytes(plotFile());
    EXPECT_EQ(file.rfind("Monte Carlo", 0), 0u);
    EXPECT_NE(file.find("0.25"), std::string::npos);
}

TEST(ResultsView, NeverCalculatedIsInvalidForBothViews) {
    DataSet d = testkit::oneDimScreenModel();
    d.dataState = kParametersChanged;
    d.calculationMode = "Regular";
    d.numXTerms = 11;
    d.numTTerms = 6;
    Screen s(d);
    EXPECT_FALSE(s.form.resultsAreValid());
    s.form.menuResultsClick(resultsItem::Graph);
    s.form.menuResultsClick(resultsItem::View);
    ASSERT_EQ(s.ui.messages.size(), 2u);
    for (const auto& m : s.ui.messages) {
        EXPECT_EQ(m.title, "Error Information");
        EXPECT_EQ(m.text, kNotCorrect);
    }
}

TEST(ResultsView, SinglePointRefusesTheGraphAndAcceptsTheTextView) {
    TempDir dir;
    DataSet d = testkit::oneDimScreenModel();
    d.xRange = "10:10:1";
    d.timeRange = "0:0:1";
    d.dataState = kParametersChanged;
    d.calculationMode = "0.5";
    d.numXTerms = 1;
    d.numTTerms = 1;
    d.xConstant = 10;
    d.tConstant = 0;
    d.xValues.redim(1);
    d.tValues.redim(1);
    d.xValues(1) = 10;
    d.result1D.redim({1, 1});
    Screen s(d);
    s.state.temporaryDataPath = dir.path().string();
    s.form.menuResultsClick(resultsItem::Graph);
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "Error Information");
    EXPECT_EQ(s.ui.messages[0].text, "Only single value at x = 10 and t = 0 is computed! ");
    EXPECT_EQ(s.ui.messages[0].icon, MessageIcon::Information);
    s.ui.messages.clear();
    s.form.menuResultsClick(resultsItem::View);
    // the view goes on: the file is written and the (missing) editor reported
    EXPECT_FALSE(testkit::readFileBytes(dir.path() / "brenmoor.plt").empty());
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "Missing Text Editor");
}

TEST(ResultsView, NoOutputBeforeAnyCalculation) {
    Screen s(testkit::oneDimScreenModel());
    s.data.calculationMode.clear();
    s.form.viewResults("Numbers");
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "No output data");
    EXPECT_EQ(s.ui.messages[0].text,
              "Output data has not been generated.\r\rPlease click on the Calculate! menu label to generate output data.");
}

TEST(ResultsView, UnknownModelTypeIsAnError) {
    Screen s(testkit::oneDimScreenModel());
    s.data.modelType = "Time Varying";
    EXPECT_FALSE(s.form.resultsAreValid());
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].text, "There is an error due to Saturated Model.(Inside holdDataSet)");
}

TEST(ResultsView, MonteCarloListOfTheRightLengthIsValid) {
    DataSet d = testkit::twoDimScreenModel();
    d.calculationMode = "Monte Carlo";
    d.monteStore(ModelKind::TwoDimensional).monteIterations = 11;
    d.mcResult2D.redim(10);
    Screen s(d);
    EXPECT_TRUE(s.form.resultsAreValid());
    s.data.mcResult2D.redim(9);
    EXPECT_FALSE(s.form.resultsAreValid());
}

}  // namespace
}  // namespace bm
