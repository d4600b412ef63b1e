// The kind-neutral screen model carries a model screen that writes nothing but
// its own inputs: here a sketch of a screen for the unsaturated model, which
// shows the model words and the ranges and leaves validation, the run, the
// result files, the menus, the notes and the Monte Carlo screen to what the
// kind registered and to the screen model.

#include <gtest/gtest.h>

#include "files/code_page.h"
#include "files/data_file.h"
#include "model/number_text.h"
#include "montecarlo/pass/calculation_pass.h"
#include "shell/screen/screen_model.h"
#include "testing/recording_screen_host.h"
#include "testing/scripted_user_interface.h"
#include "testing/test_paths.h"
#include "unsaturated/unsat_output.h"

namespace bm {
namespace {

using testkit::RecordingHost;
using testkit::ScriptedUserInterface;
using testkit::TempDir;

// All a new screen writes: its inputs (here none but the model words) and the
// hooks that say what its rows hold.
class UnsaturatedSketch : public ScreenModel {
public:
    UnsaturatedSketch(DataSet& data, AppState& state, UserInterface& ui)
        : ScreenModel(data, state, ui, ModelScreen::unsatForm) {}
    bool setDisplay() override {
        showModelWords();
        changed();
        return true;
    }
    bool holdDataSet() override {
        holdModelWords();
        parseCoordinates(data_);
        return true;
    }
    bool validate() override {
        const KindCalculation* kind = kindCalculation();
        return kind && (!kind->validate || kind->validate(data_, ui_));
    }

protected:
    std::string windowTitlePrefix() const override { return "Unsaturated Sketch -- FileName: "; }
    std::string modelWords() const override { return "Unsaturated Model"; }
    std::vector<std::string> rangeTexts() const override { return {data_.xRange, data_.timeRange}; }
    bool inputsHoldMarker() const override { return false; }
};

class ScreenModelSketch : public ::testing::Test {
protected:
    ScreenModelSketch() {
        readDataFile(data, (testkit::sourceDir() / "data" / "sampldat" / "sample1.u1d").string());
        state.temporaryDataPath = dir.path().string();
        state.textEditorPath = (testkit::sourceDir() / "README.md").string();  // any file that is there
        host.data = &data;
        screen.setHost(&host);
        screen.load(true);
    }
    TempDir dir;
    DataSet data;
    AppState state;
    ScriptedUserInterface ui;
    RecordingHost host;
    UnsaturatedSketch screen{data, state, ui};
};

TEST_F(ScreenModelSketch, ShowsTheModelWordsAndItsMenus) {
    EXPECT_EQ(screen.modelCaption, "Model: Unsaturated One Dimensional");
    EXPECT_EQ(screen.windowTitle(), "Unsaturated Sketch -- FileName: " + data.currentFileName);
    EXPECT_EQ(screen.helpPanel, " Please press Calculate before viewing the Results.");
    ASSERT_EQ(screen.fileMenu().size(), 8u);
    EXPECT_TRUE(screen.fileMenu()[2].enabled);  // Save, after an Open
    EXPECT_EQ(screen.unitMenu(UnitMenu::Time)[1].checked, true);  // "day"
}

TEST_F(ScreenModelSketch, CalculateRunsTheKindThroughThePass) {
    data.mcPointChanged[static_cast<int>(ModelKind::Unsaturated)] = true;
    EXPECT_TRUE(screen.calculate());
    // The grid of the file's ranges: depth 0:10:0.5, time 0:730:73.
    EXPECT_EQ(data.resultUnsat.ub(0), 21);
    EXPECT_EQ(data.resultUnsat.ub(1), 11);
    EXPECT_FALSE(data.mcPointChanged[static_cast<int>(ModelKind::Unsaturated)]);
    EXPECT_NE(screen.resultLabel, "");
    EXPECT_EQ(screen.resultLabel, formatNumber(data.currentConcentration));
    ASSERT_FALSE(ui.progress.empty());
    EXPECT_EQ(ui.progress.front().owner, ProgressOwner::UnsaturatedForm);
    EXPECT_EQ(ui.progress.back().done, 21.0 * 11.0);
    EXPECT_TRUE(screen.resultsAreValid());
    EXPECT_FALSE(screen.running);
    EXPECT_FALSE(screen.stopVisible);
}

TEST_F(ScreenModelSketch, TheResultsViewWritesTheKindsOutputFile) {
    ASSERT_TRUE(screen.calculate());
    screen.menuResultsClick(resultsItem::View);
    ASSERT_EQ(ui.programStarts.size(), 1u);
    EXPECT_EQ(ui.programStarts[0].program, state.textEditorPath);
    const std::string written = testkit::readFileBytes(dir.file("brenmoor.plt"));
    EXPECT_EQ(written, utf8ToWindows1252(unsatPlotText(data)));
    EXPECT_NE(written.find("Time:"), std::string::npos);
}

TEST_F(ScreenModelSketch, ChangedInputsAskBeforeTheResultsAreShown) {
    ASSERT_TRUE(screen.calculate());
    data.mcPointChanged[static_cast<int>(ModelKind::Unsaturated)] = true;
    ui.answers.push_back(MessageAnswer::No);
    screen.menuResultsClick(resultsItem::View);
    EXPECT_EQ(ui.lastTitle(), "Results Not Updated");
    EXPECT_TRUE(ui.programStarts.empty());
}

TEST_F(ScreenModelSketch, TheMonteCarloScreenComesFromTheScreenRegistry) {
    screen.menuMonteCarloClick(monteCarloItem::Generate);
    EXPECT_EQ(ui.lastText(), "The Monte Carlo simulation screen is not part of this build.");
    EXPECT_EQ(host.monteCarloScreens, 0);
    host.monteCarloAvailable = true;
    screen.menuMonteCarloClick(monteCarloItem::Generate);
    EXPECT_EQ(host.monteCarloScreens, 1);
}

TEST_F(ScreenModelSketch, NotesGoThroughThePadAndAskForASave) {
    host.notesOk = true;
    host.notesTyped = "A sketch";
    data.dataState = kDataUnchanged;
    screen.noteLabelClicked(NoteField::Title);
    EXPECT_EQ(screen.titleText, "A sketch");
    EXPECT_EQ(data.dataState, kNeedsSaving);
    ASSERT_EQ(host.notesCaptions.size(), 1u);
    EXPECT_EQ(host.notesCaptions[0], "TITLE");
}

TEST_F(ScreenModelSketch, ExitOffersTheSaveAndClosesTheModel) {
    data.dataState = kDataUnchanged;
    screen.menuFileClick(fileItem::Exit);
    EXPECT_EQ(host.closes, 1);
    EXPECT_EQ(data.xRange, "");
    EXPECT_EQ(data.modelType, "Unsaturated One Dimensional");  // the unsaturated workbench keeps its word
}

}  // namespace
}  // namespace bm
