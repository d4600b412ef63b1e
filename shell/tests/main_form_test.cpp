#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "model/app_state.h"
#include "model/data_set.h"
#include "model/number_text.h"
#include "shell/file_commands.h"
#include "shell/main_form.h"
#include "shell/new_model_forms.h"
#include "shell/tests/scripted_file_commands.h"
#include "testing/scripted_user_interface.h"
#include "testing/test_paths.h"

using namespace bm;
using testkit::ScriptedUserInterface;
using testkit::TempDir;
namespace fs = std::filesystem;

namespace {

struct Host : MainHost {
    std::vector<std::string> calls;
    std::vector<NewModelDialog> dialogs;
    std::vector<std::pair<ModelScreen, bool>> screens;
    std::string panel;
    std::function<void(NewModelDialog)> onDialog;  // what the user does in the dialog
    std::function<void(ModelScreen)> onScreen;
    DataSet* data = nullptr;
    void showNewModelDialog(NewModelDialog d) override {
        dialogs.push_back(d);
        if (onDialog) onDialog(d);
    }
    void showModelScreen(ModelScreen s, bool saveEnabled) override {
        screens.emplace_back(s, saveEnabled);
        if (onScreen) onScreen(s);
    }
    void filenamePanelChanged(const std::string& t) override { panel = t; }
    void showPrintDialog() override { calls.push_back("print"); }
    void showPreferences() override { calls.push_back("preferences"); }
    void showAbout() override { calls.push_back("about"); }
    void showDisclaimer() override { calls.push_back("disclaimer"); }
    void showSupport() override { calls.push_back("support"); }
    void showHelp(HelpCommand c, int context) override {
        calls.push_back(std::string(c == HelpCommand::Contents ? "contents " : c == HelpCommand::Index ? "index " : "topic ") +
                        std::to_string(context));
    }
    void closeHelp() override { calls.push_back("closeHelp"); }
    void minimize() override { calls.push_back("minimize"); }
    void quit() override { calls.push_back("quit"); }
};

using Files = testkit::ScriptedFileCommands;

struct Fixture {
    DataSet data;
    AppState state;
    Host host;
    Files files;
    ScriptedUserInterface ui;
    MainForm form{data, state, host, ui, files};
    Fixture() { state.crlf = "\r\n"; }
    // A model in memory, as a model screen leaves it before it closes.
    void openSomething() {
        data.modelType = "One Dimensional";
        data.aquiferType = "Finite";
        data.contaminantType = "Dirichlet";
        data.xRange = "0:100:1";
        data.currentFileName = "/d/a.one";
    }
};

}  // namespace

TEST(MainForm, ModelScreenByTypeAndChemicals) {
    EXPECT_EQ(modelScreenFor("Time Varying", true), ModelScreen::merlaform);
    EXPECT_EQ(modelScreenFor("Unsaturated One Dimensional", false), ModelScreen::unsatForm);
    EXPECT_EQ(modelScreenFor("Unsaturated", true), ModelScreen::MCUnsatForm);
    EXPECT_EQ(modelScreenFor("Two Dimensional", false), ModelScreen::inputForm);
    EXPECT_EQ(modelScreenFor("", true), ModelScreen::MCInputForm);
    EXPECT_STREQ(modelScreenName(ModelScreen::MCUnsatForm), "MCUnsatForm");
    EXPECT_EQ(newModelDialogFor("Unsaturated Three Dimensional"), NewModelDialog::unsaturatedNewFile);
    EXPECT_EQ(newModelDialogFor("Time Varying"), NewModelDialog::timeVaryingNewForm);
    EXPECT_EQ(newModelDialogFor("Two Dimensional"), NewModelDialog::NewFile);
}

TEST(MainForm, NewConfirmedOpensTheScreenWithNothingToSave) {
    Fixture f;
    f.openSomething();
    f.host.onDialog = [&](NewModelDialog) {
        EXPECT_EQ(f.data.xRange, "");  // the previous model is closed before the dialog
        NewFileForm form;
        form.load(f.data);
        form.selectModelType(1);
        form.contaminant.selected = 2;
        form.ok(f.data);
    };
    f.form.menuFileClick(fileMenu::New);
    EXPECT_EQ(f.files.prompts, 1);
    ASSERT_EQ(f.host.dialogs.size(), 1u);
    EXPECT_EQ(f.host.dialogs[0], NewModelDialog::NewFile);
    ASSERT_EQ(f.host.screens.size(), 1u);
    EXPECT_EQ(f.host.screens[0].first, ModelScreen::inputForm);
    EXPECT_FALSE(f.host.screens[0].second);
    EXPECT_EQ(f.data.contaminantType, "Gaussian");
    EXPECT_EQ(f.form.filenamePanel(), "Filename: ");
    EXPECT_FALSE(f.ui.busy);
}

TEST(MainForm, NewCancelledOpensNothingButThePreviousModelIsGone) {
    Fixture f;
    f.openSomething();
    f.data.newModelConfirmed = true;  // left over from an earlier dialog
    f.form.menuFileClick(fileMenu::New);
    EXPECT_FALSE(f.data.newModelConfirmed);
    EXPECT_TRUE(f.host.screens.empty());
    EXPECT_EQ(f.data.modelType, "");
    EXPECT_EQ(f.data.xRange, "");
    EXPECT_EQ(f.data.currentFileName, "");
}

TEST(MainForm, NewRefusedByTheSavePromptChangesNothing) {
    Fixture f;
    f.openSomething();
    f.files.promptAnswers = {false};
    f.form.menuFileClick(fileMenu::New);
    EXPECT_TRUE(f.host.dialogs.empty());
    EXPECT_EQ(f.data.xRange, "0:100:1");
}

TEST(MainForm, AfterAnUnsaturatedStartNewOffersTheUnsaturatedDialogAgain) {
    Fixture f;
    applyCommandLine("unsaturated", f.data);
    f.host.onDialog = [&](NewModelDialog) {
        UnsaturatedNewFileForm form;
        form.load(f.data);
        form.chemicals.selected = 1;
        form.ok(f.data);
    };
    f.form.menuFileClick(fileMenu::New);
    ASSERT_EQ(f.host.screens.size(), 1u);
    EXPECT_EQ(f.host.screens[0].first, ModelScreen::MCUnsatForm);
    f.form.menuFileClick(fileMenu::Close);
    EXPECT_EQ(f.data.modelType, "Unsaturated One Dimensional");
    f.form.menuFileClick(fileMenu::New);
    ASSERT_EQ(f.host.dialogs.size(), 2u);
    EXPECT_EQ(f.host.dialogs[1], NewModelDialog::unsaturatedNewFile);
}

TEST(MainForm, TimeVaryingStartUsesItsDialogAndScreen) {
    Fixture f;
    applyCommandLine("Time Varying", f.data);
    f.host.onDialog = [&](NewModelDialog) {
        TimeVaryingNewForm form;
        form.load(f.data);
        form.ok(f.data);
    };
    f.form.menuFileClick(fileMenu::New);
    EXPECT_EQ(f.host.dialogs.at(0), NewModelDialog::timeVaryingNewForm);
    EXPECT_EQ(f.host.screens.at(0).first, ModelScreen::merlaform);
    EXPECT_TRUE(f.form.timeVaryingItemVisible());
}

TEST(MainForm, TimeVaryingItemStartsATimeVaryingModelFromAnyStart) {
    Fixture f;
    EXPECT_TRUE(f.form.timeVaryingItemVisible());  // offered in a constant-dispersion start too
    f.host.onDialog = [&](NewModelDialog) {
        EXPECT_EQ(f.data.modelType, "Time Varying");  // the dialog shows the time-varying choices
        TimeVaryingNewForm form;
        form.load(f.data);
        form.ok(f.data);
    };
    f.form.menuTimeVaryingClick();
    ASSERT_EQ(f.host.dialogs.size(), 1u);
    EXPECT_EQ(f.host.dialogs.at(0), NewModelDialog::timeVaryingNewForm);
    ASSERT_EQ(f.host.screens.size(), 1u);
    EXPECT_EQ(f.host.screens.at(0), std::make_pair(ModelScreen::merlaform, false));  // nothing to save yet

    // a time-varying model with its source goes straight to its screen
    f.data.modelType = "Time Varying";
    f.data.contaminantType = "Line (continuous)";
    f.form.menuTimeVaryingClick();
    EXPECT_EQ(f.host.dialogs.size(), 1u);
    ASSERT_EQ(f.host.screens.size(), 2u);
    EXPECT_EQ(f.host.screens.at(1), std::make_pair(ModelScreen::merlaform, true));
}

TEST(MainForm, TimeVaryingItemCancelledKeepsTheModelWord) {
    Fixture f;
    f.form.menuTimeVaryingClick();  // the dialog is closed without OK
    EXPECT_EQ(f.host.dialogs.size(), 1u);
    EXPECT_TRUE(f.host.screens.empty());
    EXPECT_EQ(f.data.modelType, "");
}

TEST(MainForm, OpenShowsTheScreenOfTheFileRead) {
    Fixture f;
    f.files.reader = [](DataSet& d) {
        d.modelType = "Three Dimensional";
        d.multiChemical = true;
        d.currentFileName = "/data/chain.mc3";
        return true;
    };
    f.host.onScreen = [&](ModelScreen) { EXPECT_EQ(f.form.filenamePanel(), "Filename: /data/chain.mc3"); };
    f.form.menuFileClick(fileMenu::Open);
    EXPECT_EQ(f.files.openTitles, (std::vector<std::string>{"Open Data File|0"}));
    ASSERT_EQ(f.host.screens.size(), 1u);
    EXPECT_EQ(f.host.screens[0].first, ModelScreen::MCInputForm);
    EXPECT_TRUE(f.host.screens[0].second);
    EXPECT_EQ(f.form.tag(), "New Model Selected");
}

TEST(MainForm, OpenCancelledOrFailedOpensNoScreen) {
    Fixture f;
    f.form.menuFileClick(fileMenu::Open);
    EXPECT_TRUE(f.host.screens.empty());
    EXPECT_EQ(f.form.tag(), "File Error");
    f.files.promptAnswers = {false};
    f.form.menuFileClick(fileMenu::Open);
    EXPECT_TRUE(f.files.openTitles.size() == 1u);  // the prompt kept the dialog away
}

TEST(MainForm, EditShowsTheModelInMemoryAgain) {
    Fixture f;
    f.openSomething();
    f.data.dataState = 2;
    f.form.menuFileClick(fileMenu::Edit);
    ASSERT_EQ(f.host.screens.size(), 1u);
    EXPECT_TRUE(f.data.needsDisplayRefresh);
    EXPECT_EQ(f.data.dataState, 0);
    EXPECT_FALSE(f.form.editItemVisible());
}

TEST(MainForm, CloseByEitherIndexClosesTheModel) {
    for (int index : {fileMenu::CloseOld, fileMenu::Close}) {
        Fixture f;
        f.openSomething();
        f.form.menuFileClick(index);
        EXPECT_EQ(f.data.modelType, "");
        EXPECT_EQ(f.data.xRange, "");
        EXPECT_EQ(f.form.filenamePanel(), "Filename: ");
    }
    Fixture stay;
    stay.openSomething();
    stay.files.promptAnswers = {false};
    stay.form.menuFileClick(fileMenu::Close);
    EXPECT_EQ(stay.data.xRange, "0:100:1");
    EXPECT_EQ(stay.form.filenamePanel(), " Filename:");
}

TEST(MainForm, PrintExitAndUnknownIndices) {
    Fixture f;
    f.form.menuFileClick(fileMenu::Print);
    f.form.menuFileClick(99);
    f.form.menuFileClick(fileMenu::Exit);
    EXPECT_EQ(f.host.calls, (std::vector<std::string>{"print", "quit"}));
    EXPECT_EQ(f.files.prompts, 0);  // Exit asks nothing: no model is open while Main has the focus
}

TEST(MainForm, ReturnToShellRefusesWhileAFileIsOpen) {
    Fixture f;
    f.state.openFileName = "/d/old.dat";
    f.form.mnureturnshellClick();
    ASSERT_EQ(f.ui.messages.size(), 1u);
    EXPECT_EQ(f.ui.messages[0].icon, MessageIcon::Critical);
    EXPECT_EQ(f.ui.messages[0].title, "Cannot Exit");
    EXPECT_EQ(f.ui.messages[0].text,
              "/d/old.dat is open.\r\nPlease close this file by choosing Close option from the File menu before exit.");
    EXPECT_TRUE(f.host.calls.empty());
    f.state.openFileName.clear();
    f.ui.answers = {MessageAnswer::No, MessageAnswer::Yes};
    f.form.mnureturnshellClick();
    EXPECT_EQ(f.ui.lastTitle(), "End Program");
    EXPECT_EQ(f.ui.lastText(), "Exit Ground Water Model?");
    EXPECT_EQ(f.ui.messages.back().buttons, MessageButtons::YesNo);
    EXPECT_TRUE(f.host.calls.empty());
    f.form.mnureturnshellClick();
    EXPECT_EQ(f.host.calls, (std::vector<std::string>{"quit"}));
}

TEST(MainForm, ExitClosesHelpFirst) {
    Fixture f;
    f.form.menuExitClick();
    EXPECT_EQ(f.host.calls, (std::vector<std::string>{"closeHelp", "quit"}));
}

TEST(MainForm, InfoHelpAndOptionsMenus) {
    Fixture f;
    f.form.mnuInfoClick(1);
    f.form.mnuInfoClick(2);
    f.form.mnuInfoClick(3);
    f.form.mnuHelpClick(0);
    f.form.mnuHelpClick(1);
    f.form.mnuHelpClick(2);
    f.form.mnuHelpClick(3);
    f.form.menuStatusClick();
    f.form.menuIconClick();
    f.form.helpKey();
    EXPECT_EQ(f.host.calls, (std::vector<std::string>{"about", "disclaimer", "topic 3900", "contents 3000", "index 0",
                                                      "support", "about", "preferences", "minimize", "topic 0"}));
}

TEST(MainForm, ModelMenuAndRunProgramAreRoutesToNewAndOpen) {
    Fixture f;
    f.form.menuModelClick(0);
    f.form.runProgramClick();
    EXPECT_EQ(f.host.dialogs.size(), 2u);
    f.form.menuModelClick(1);
    EXPECT_EQ(f.files.openTitles.size(), 1u);
}

TEST(MainForm, ViewOutputAndContourPlotNameTheMissingPlotFile) {
    TempDir dir;
    Fixture f;
    f.state.temporaryDataPath = dir.file("no such folder");
    f.form.viewOutputClick();
    f.form.createPlotClick();
    ASSERT_EQ(f.ui.messages.size(), 2u);
    for (const auto& m : f.ui.messages) {
        EXPECT_EQ(m.title, "Drive Read Only");
        EXPECT_EQ(m.text, "Unable to find the output graph file: " + toUpper(dir.file("no such folder/brenmoor.plt")) + ".");
    }
    EXPECT_TRUE(f.ui.programStarts.empty());
}

TEST(MainForm, TheHiddenOpenRouteReadsADescribedDataFile) {
    TempDir dir;
    Fixture f;
    f.state.openFileName = "/d/old.dat";
    f.form.menuOpenClick();
    EXPECT_EQ(f.ui.lastTitle(), "A File Already Open");
    EXPECT_EQ(f.ui.lastText(),
              "/D/OLD.DAT is already open.\r\n\r\n  First choose Close or Iconize from the file menu before opening "
              "another file.");
    EXPECT_TRUE(f.ui.fileDialogs.empty());

    f.state.openFileName.clear();
    f.ui.fileAnswers = {dir.file("gone.dat")};
    f.form.menuOpenClick();
    ASSERT_EQ(f.ui.fileDialogs.size(), 1u);
    EXPECT_EQ(f.ui.fileDialogs[0].title, "Open Ground Water Data File");
    EXPECT_EQ(f.ui.fileDialogs[0].filter, "Data Files (*.dat)|*.dat|All Files|*.*");
    EXPECT_EQ(f.ui.lastTitle(), dir.file("gone.dat") + " not found!");

    // A file without a description line: the message, and on to the File menu's Open.
    testkit::writeFileBytes(dir.file("plain.dat"), "just numbers\r\n1 2 3\r\n");
    f.ui.fileAnswers = {dir.file("plain.dat")};
    f.form.menuOpenClick();
    EXPECT_EQ(f.ui.messages.at(2).title, "Incorrect Data File");
    EXPECT_EQ(f.ui.messages.at(2).text,
              "The data file chosen was not in the correct format.  Please select another data file");
    EXPECT_EQ(f.files.openTitles.size(), 1u);
    EXPECT_EQ(f.state.openFileName, "");

    testkit::writeFileBytes(dir.file("site.dat"), "Model: x\r\nDescription: Landfill east\r\n");
    f.ui.fileAnswers = {dir.file("site.dat")};
    f.form.menuOpenClick();
    EXPECT_EQ(f.state.openFileName, dir.file("site.dat"));
    EXPECT_EQ(f.form.openFileDescription(), "Landfill east");
    EXPECT_EQ(f.form.filenamePanel(), "Filename: site.dat");
}

TEST(MainForm, LoadReadsTheCommandLineAndChecksTheEnvironment) {
    TempDir dir;
    fs::create_directories(dir.path() / "suite" / "brenmoor");
    Fixture f;
    f.data.dataState = 2;
    f.data.monteCarloValueInUse = true;
    f.form.load({"Time", "Varying"}, (dir.path() / "suite" / "brenmoor").string());
    EXPECT_EQ(f.form.caption(), "Ground Water Contaminant Transport Model with Variable Dispersion Coefficients");
    EXPECT_EQ(f.data.modelType, "Time Varying");
    EXPECT_EQ(f.data.dataState, 0);
    EXPECT_FALSE(f.data.monteCarloValueInUse);
    EXPECT_EQ(f.form.helpContext(), 3200);
    EXPECT_EQ(f.state.crlf, "\r\n");
    EXPECT_EQ(f.form.paths().helpFile, (dir.path() / "suite" / "orvahelp.hlp").string());
    EXPECT_FALSE(f.ui.messages.empty());  // the bare tree lacks nearly everything
}
