#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "model/app_state.h"
#include "model/data_set.h"
#include "shell/help_context.h"
#include "shell/settings_file.h"
#include "shell/start_up.h"
#include "testing/scripted_user_interface.h"
#include "testing/test_paths.h"

using namespace bm;
using testkit::ScriptedUserInterface;
using testkit::TempDir;
namespace fs = std::filesystem;

TEST(CommandLine, ModelWordsAndCaptions) {
    DataSet d;
    EXPECT_EQ(applyCommandLine("Time Varying", d),
              "Ground Water Contaminant Transport Model with Variable Dispersion Coefficients");
    EXPECT_EQ(d.modelType, "Time Varying");
    for (const char* word : {"Unsaturated One Dimensional", "Unsaturated", "unsaturated"}) {
        DataSet u;
        EXPECT_EQ(applyCommandLine(word, u), "Unsaturated Ground Water Contaminant Transport - Marino Model");
        EXPECT_EQ(u.modelType, "Unsaturated One Dimensional");
    }
    for (const char* other : {"", "time varying", "UNSATURATED", "Unsaturated  One Dimensional", "x"}) {
        DataSet o;
        EXPECT_EQ(applyCommandLine(other, o),
                  "Ground Water Contaminant Transport Model with Constant Dispersion Coefficients")
            << other;
        EXPECT_EQ(o.modelType, "");
    }
    // The words of a command line arrive one by one and count as one text.
    EXPECT_EQ(commandLineText({"Unsaturated", "One", "Dimensional"}), "Unsaturated One Dimensional");
    EXPECT_EQ(commandLineText({}), "");
}

namespace {

// A suite tree: <tmp>/suite with the program folder brenmoor.
struct Suite {
    TempDir dir;
    fs::path root = dir.path() / "suite";
    fs::path program = root / "brenmoor";
    Suite() { fs::create_directories(program); }
    void touch(const fs::path& p) {
        fs::create_directories(p.parent_path());
        testkit::writeFileBytes(p, "x");
    }
    // Every file and folder the start looks for, named by a settings file.
    void complete() {
        touch(program / "textviewer");
        touch(root / "trazel" / "trazel");
        touch(program / "glq.pts");
        touch(root / "orvahelp.hlp");
        fs::create_directories(program / "sampldat");
        fs::create_directories(root / "Trazel");
        AppState s;
        applyDefaultSettings(s, root.string(), "/usr/bin/");
        s.textEditorPath = (program / "textviewer").string();
        testkit::writeFileBytes(root / "orva.ini", settingsFileText(s));
    }
    std::set<std::string> listing() const {
        std::set<std::string> out;
        for (const auto& e : fs::recursive_directory_iterator(dir.path())) out.insert(e.path().string());
        return out;
    }
};

std::vector<std::string> titles(const ScriptedUserInterface& ui) {
    std::vector<std::string> out;
    for (const auto& m : ui.messages) out.push_back(m.title);
    return out;
}

}  // namespace

TEST(EnvironmentCheck, ACompleteSuiteGivesNoMessage) {
    Suite s;
    s.complete();
    s.touch(s.program / "ZENWA_gw.bmp");
    ScriptedUserInterface ui;
    AppState st;
    DataSet d;
    const ShellPaths p = checkEnvironment(s.program.string() + "/", st, d, ui);
    EXPECT_TRUE(ui.messages.empty()) << ui.lastTitle() << ": " << ui.lastText();
    EXPECT_TRUE(p.completed);
    EXPECT_EQ(st.appPath, s.program.string());
    EXPECT_EQ(st.suiteRoot, s.root.string());
    EXPECT_EQ(st.iniFilePath, (s.root / "orva.ini").string());
    EXPECT_EQ(st.gaussPointsFile, (s.program / "glq.pts").string());
    EXPECT_EQ(st.windowsDirectory, "/usr/bin/");
    EXPECT_EQ(st.windowsDrive, "/");
    EXPECT_EQ(st.currentDirectory, (s.program / "sampldat").string());
    EXPECT_EQ(p.helpFile, (s.root / "orvahelp.hlp").string());
    EXPECT_EQ(p.splashFile, (s.program / "ZENWA_gw.bmp").string());
    EXPECT_EQ(p.helpContext, 3100);
}

TEST(EnvironmentCheck, MissingGaussPointsGiveTwoMessagesInARow) {
    Suite s;
    s.complete();
    fs::remove(s.program / "glq.pts");
    ScriptedUserInterface ui;
    AppState st;
    DataSet d;
    checkEnvironment(s.program.string(), st, d, ui);
    ASSERT_EQ(ui.messages.size(), 2u);
    const std::string glq = (s.program / "glq.pts").string();
    EXPECT_EQ(ui.messages[0].title, "Missing Program Files");
    EXPECT_EQ(ui.messages[0].text, "Unable to data file: " + glq +
                                       ".\r\rFor proper calculations in Two and Three dimensional models GLQ.PTS "
                                       "must be present at the above location.");
    EXPECT_EQ(ui.messages[1].title, "Missing Program Files");
    EXPECT_EQ(ui.messages[1].text, "Unable to locate ground water model file " + glq +
                                       ".\r\rFor certain computations for two and three dimensional models , "
                                       "GLQ.PTS must be present the above location.");
}

TEST(EnvironmentCheck, EverythingMissingIsReportedInOrder) {
    Suite s;  // the program folder and nothing else
    ScriptedUserInterface ui;
    AppState st;
    DataSet d;
    const auto before = s.listing();
    checkEnvironment(s.program.string(), st, d, ui);
    const std::string root = s.root.string(), program = s.program.string();
    ASSERT_EQ(titles(ui), (std::vector<std::string>{"Missing Text Editor", "Missing Paths", "Missing Paths",
                                                     "Missing Program Files", "Missing Program Files",
                                                     "Missing Program Files", "Missing Program Files"}));
    EXPECT_EQ(ui.messages[0].icon, MessageIcon::Critical);
    EXPECT_EQ(ui.messages[0].text,
              "Specified text editor /USR/BIN/NOTEPAD.EXE  was not found.\r\rPlease select an apropriate text "
              "editor. Such a selection can be made by using the Configuration menu in the initial window of ORVA "
              "software.");
    EXPECT_EQ(ui.messages[1].text, "Selected sample data directory " + root +
                                       "/brenmoor/sampldat  was not found.\r\rPlease select an apropriate sample "
                                       "data directory. Such a selection can be made by using the Configuration "
                                       "menu in the initial window of ORVA software.");
    EXPECT_EQ(ui.messages[2].text, "Selected temporary directory " + root +
                                       "/Trazel  was not found.\r\rPlease select an apropriate temporary directory. "
                                       "This directory is used to used for writing files before displaying graphs. "
                                       "Such a selection can be made by using the Configuration menu in the initial "
                                       "window of ORVA software.");
    EXPECT_EQ(ui.messages[3].text, "Unable to find trazel utility: " + root +
                                       "/trazel/trazel.\r\rFor viewing graphs, TRAZEL.EXE must be present at the "
                                       "above location.");
    EXPECT_EQ(ui.messages[4].text.rfind("Unable to data file: " + program + "/glq.pts.", 0), 0u);
    EXPECT_EQ(ui.messages[5].text, "Unable to locate ground water model help file " + root +
                                       "/orvahelp.hlp.\r\rFor viewing online help, BRENMOOR.HLP must be present in "
                                       "the above directory.");
    EXPECT_EQ(ui.messages[6].text.rfind("Unable to locate ground water model file " + program + "/glq.pts.", 0), 0u);
    // A first start creates nothing, not even the settings file.
    EXPECT_EQ(s.listing(), before);
    EXPECT_EQ(st.textEditorPath, "/usr/bin/notepad.exe");
    EXPECT_TRUE(ui.programStarts.empty());
}

TEST(EnvironmentCheck, EmptyPathsFallBackToTheProgramsSampleFolder) {
    Suite s;
    s.complete();
    testkit::writeFileBytes(s.root / "orva.ini",
                            "[General]\r\nTextEditor=\r\nTemporaryDataPath=\r\n[Ground Water Model]\r\n"
                            "GroundWaterDataPath=   \r\n[Graphics]\r\nGraph=" +
                                (s.root / "trazel" / "trazel").string() + "\r\n");
    ScriptedUserInterface ui;
    AppState st;
    DataSet d;
    checkEnvironment(s.program.string(), st, d, ui);
    EXPECT_EQ(st.groundwaterDataPath, (s.program / "sampldat").string());
    EXPECT_EQ(st.temporaryDataPath, (s.program / "sampldat").string());
    EXPECT_EQ(st.textEditorPath, "/usr/bin/notepad.exe");
    ASSERT_EQ(ui.messages.size(), 1u);  // only the editor, which is not there
    EXPECT_EQ(ui.messages[0].title, "Missing Text Editor");
}

TEST(EnvironmentCheck, AProgramFolderWithoutItsWordEndsTheCheckAtTheError) {
    TempDir dir;
    fs::create_directories(dir.path() / "bin");
    ScriptedUserInterface ui;
    AppState st;
    DataSet d;
    const ShellPaths p = checkEnvironment((dir.path() / "bin").string(), st, d, ui);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Illegal Function Call");
    EXPECT_FALSE(p.completed);
    EXPECT_EQ(p.helpFile, "");
}

TEST(EnvironmentCheck, HelpContextFollowsTheModelOfTheCommandLine) {
    Suite s;
    s.complete();
    ScriptedUserInterface ui;
    AppState st;
    DataSet d;
    applyCommandLine("Unsaturated", d);
    EXPECT_EQ(checkEnvironment(s.program.string(), st, d, ui).helpContext, 3300);
}

TEST(RefreshMenuLabels, HelpContextByModel) {
    EXPECT_EQ(helpContextFor("One Dimensional", "Finite", "Cauchy"), 3100);
    EXPECT_EQ(helpContextFor("Two Dimensional", " Finite ", "Gaussian"), 3122);
    EXPECT_EQ(helpContextFor("Two Dimensional", "Infinite", "Continuous / Point"), 3126);
    EXPECT_EQ(helpContextFor("Two Dimensional", "Infinite", "continuous point"), 3126);
    EXPECT_EQ(helpContextFor("Two Dimensional", "Infinite", "Gaussian"), 3124);
    EXPECT_EQ(helpContextFor("Two Dimensional", "Infinite", "Finite / Line"), 3122);
    EXPECT_EQ(helpContextFor("Three Dimensional", "finite", "Continuous / Point"), 3134);
    EXPECT_EQ(helpContextFor("Three Dimensional", "Infinite", "Continuous / Point"), 3132);
    EXPECT_EQ(helpContextFor("Three Dimensional", "Infinite", "Finite / Patch"), 3136);
    EXPECT_EQ(helpContextFor("Time Varying", "Linear", "Point (continuous)"), 3200);
    EXPECT_EQ(helpContextFor("Unsaturated One Dimensional", "", ""), 3300);
    EXPECT_EQ(helpContextFor("Unsaturated", "", ""), 3100);  // only the full word has its own topic
    EXPECT_EQ(helpContextFor("", "", ""), 3100);
    DataSet d;
    d.modelType = "Three Dimensional";
    d.aquiferType = "Infinite";
    d.contaminantType = "Continuous Point";
    EXPECT_EQ(refreshMenuLabels(d), 3132);
}
