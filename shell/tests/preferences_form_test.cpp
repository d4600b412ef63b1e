#include <gtest/gtest.h>

#include "model/app_state.h"
#include "shell/preferences_form.h"
#include "shell/settings_file.h"
#include "testing/scripted_user_interface.h"
#include "testing/test_paths.h"

using namespace bm;
using testkit::ScriptedUserInterface;
using testkit::TempDir;

namespace {
AppState stateIn(const TempDir& dir) {
    AppState s;
    s.appPath = "/opt/orva/brenmoor";
    s.suiteRoot = "/opt/orva";
    s.iniFilePath = dir.file("orva.ini");
    s.currentDirectory = dir.path().string();
    applyDefaultSettings(s, "/opt/orva", "/usr/bin/");
    return s;
}
}  // namespace

TEST(Preferences, FreeSpaceInThousandsOfKilobytes) {
    EXPECT_EQ(PreferencesForm::freeSpaceText(1234567.0 * 1024), "1,234,567 KBytes");
    EXPECT_EQ(PreferencesForm::freeSpaceText(999.0 * 1024), "999 KBytes");
    EXPECT_EQ(PreferencesForm::freeSpaceText(1536.0 * 1024), "1,536 KBytes");
}

TEST(Preferences, HelpLines) {
    EXPECT_STREQ(PreferencesForm::helpLine(PreferencesForm::TextEditor), "Change text editor by clicking button");
    EXPECT_STREQ(PreferencesForm::helpLine(PreferencesForm::AirData),
                 "Change data directory of Air/Soil Models by clicking button");
    EXPECT_STREQ(PreferencesForm::rowHelpLine(PreferencesForm::SurfaceData),
                 "Change data directory of Surface Water Models");
}

TEST(Preferences, EditorAndDatabaseButtonsUseFileDialogs) {
    TempDir dir;
    AppState s = stateIn(dir);
    ScriptedUserInterface ui;
    PreferencesForm f(s, ui, nullptr);
    f.clickButton(PreferencesForm::TextEditor);  // cancelled
    EXPECT_EQ(s.textEditorPath, "/usr/bin/notepad.exe");
    EXPECT_FALSE(f.changed());
    ui.fileAnswers = {std::string("/usr/bin/vi")};
    f.clickButton(PreferencesForm::ChemicalDatabase);
    ASSERT_EQ(ui.fileDialogs.size(), 2u);
    EXPECT_EQ(ui.fileDialogs[0].title, "Select Default Editor");
    EXPECT_EQ(ui.fileDialogs[0].filter, "Text Editor (*.exe)|*.exe|All Files (*.*)|*.*");
    EXPECT_EQ(ui.fileDialogs[0].initialDirectory, "/usr/bin");
    EXPECT_EQ(ui.fileDialogs[1].title, "Select Default Chemical Database");
    EXPECT_EQ(ui.fileDialogs[1].filter, "Chemical Database (*.mdb)|*.mdb|All Files (*.*)|*.*");
    EXPECT_EQ(s.chemicalDbName, "/usr/bin/vi");
    EXPECT_TRUE(f.changed());
}

TEST(Preferences, ACancelledDirectoryPickerKeepsTheOldValue) {
    TempDir dir;
    AppState s = stateIn(dir);
    ScriptedUserInterface ui;
    std::string answer = "Cancel Button is Clicked";
    PreferencesForm f(s, ui, [&](const std::string&, const std::string&) { return answer; });
    f.clickButton(PreferencesForm::TemporaryDirectory);
    EXPECT_EQ(s.temporaryDataPath, "/opt/orva/Trazel");
    EXPECT_FALSE(f.changed());
    answer = "/scratch";
    f.clickButton(PreferencesForm::TemporaryDirectory);
    f.clickButton(PreferencesForm::GroundWaterData);
    EXPECT_EQ(s.temporaryDataPath, "/scratch");
    EXPECT_EQ(s.groundwaterDataPath, "/scratch");
}

TEST(Preferences, PlotUtilityVersions) {
    TempDir dir;
    AppState s = stateIn(dir);
    ScriptedUserInterface ui;
    PreferencesForm f(s, ui, nullptr);
    EXPECT_EQ(f.plotUtilityChoice(), 0);
    f.choosePlotUtility(1);
    EXPECT_EQ(s.graphUtilityPath, "/opt/orva/trazel/trazel1");
    EXPECT_EQ(f.plotUtilityChoice(), 1);
    f.choosePlotUtility(0);
    EXPECT_EQ(s.graphUtilityPath, "/opt/orva/trazel/trazel");
}

TEST(Preferences, SaveRewritesTheFileWhole) {
    TempDir dir;
    AppState s = stateIn(dir);
    testkit::writeFileBytes(s.iniFilePath, "[General]\r\nTextEditor=/old\r\nUnknown=kept?\r\n");
    ScriptedUserInterface ui;
    PreferencesForm f(s, ui, nullptr);
    f.setValue(PreferencesForm::TextEditor, "/usr/bin/gedit");
    ASSERT_TRUE(f.save());
    EXPECT_FALSE(f.changed());
    EXPECT_EQ(testkit::readFileBytes(s.iniFilePath), settingsFileText(s));
    EXPECT_TRUE(f.leave());
    EXPECT_TRUE(ui.messages.empty());
}

TEST(Preferences, LeavingWithChangesAsks) {
    TempDir dir;
    AppState s = stateIn(dir);
    ScriptedUserInterface ui;
    {
        PreferencesForm f(s, ui, nullptr);
        f.setValue(PreferencesForm::AirData, "/air");
        ui.answers = {MessageAnswer::No};
        EXPECT_TRUE(f.leave());
        ASSERT_EQ(ui.messages.size(), 1u);
        EXPECT_EQ(ui.messages[0].title, "Save changes");
        EXPECT_EQ(ui.messages[0].text, "Path settings have been changed.\r\nDo you want to save changes?");
        EXPECT_FALSE(std::filesystem::exists(s.iniFilePath));
        EXPECT_EQ(s.airDataPath, "/air");  // in force for the session all the same
    }
    PreferencesForm f(s, ui, nullptr);
    f.setValue(PreferencesForm::AirData, "/air2");
    ui.answers = {MessageAnswer::Yes};
    f.leave();
    EXPECT_EQ(testkit::readFileBytes(s.iniFilePath), settingsFileText(s));
}

TEST(Preferences, AFailedSaveIsReportedAndKeepsTheSettingsInMemory) {
    TempDir dir;
    AppState s = stateIn(dir);
    s.iniFilePath = dir.file("gone/orva.ini");
    ScriptedUserInterface ui;
    PreferencesForm f(s, ui, nullptr);
    f.setValue(PreferencesForm::TextEditor, "/bin/ed");
    EXPECT_FALSE(f.save());
    EXPECT_EQ(ui.lastTitle(), "Error");
    EXPECT_EQ(s.textEditorPath, "/bin/ed");
    EXPECT_TRUE(f.changed());
}
