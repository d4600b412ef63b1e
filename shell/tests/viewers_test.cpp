#include <gtest/gtest.h>

#include "model/app_state.h"
#include "shell/base/error_handler.h"
#include "shell/base/runtime_error.h"
#include "shell/screen/viewers.h"
#include "testing/scripted_user_interface.h"
#include "testing/test_paths.h"

using namespace bm;
using testkit::ScriptedUserInterface;
using testkit::TempDir;

TEST(Viewers, PlotFileNameAddsOneSeparator) {
    AppState s;
    s.temporaryDataPath = "/tmp/Trazel";
    EXPECT_EQ(plotFileName(s), "/tmp/Trazel/brenmoor.plt");
    s.temporaryDataPath = "/tmp/Trazel/";
    EXPECT_EQ(plotFileName(s), "/tmp/Trazel/brenmoor.plt");
    s.temporaryDataPath = "";
    EXPECT_EQ(plotFileName(s), "/brenmoor.plt");
}

TEST(Viewers, GraphWithAMissingUtilitySaysWhereItShouldBe) {
    TempDir dir;
    testkit::writeFileBytes(dir.file("brenmoor.plt"), "plot");
    AppState s;
    s.graphUtilityPath = dir.file("trazel/trazel");
    ScriptedUserInterface ui;
    viewGraph(dir.file("brenmoor.plt"), s, ui);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].icon, MessageIcon::Exclamation);
    EXPECT_EQ(ui.messages[0].title, "Missing Trazel Utility");
    std::string upper = dir.file("trazel/trazel");
    for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    EXPECT_EQ(ui.messages[0].text,
              "Unable to find Trazel utility: " + upper + ".\r\rTrazel program must be present at the above location.");
    EXPECT_TRUE(ui.programStarts.empty());
}

TEST(Viewers, APlotFileWithBlanksReachesTheUtilityAsTyped) {
    TempDir dir;
    const std::string plot = dir.file("my plots/run 1.plt");
    testkit::writeFileBytes(dir.file("trazel"), "program");
    std::filesystem::create_directories(dir.path() / "my plots");
    testkit::writeFileBytes(plot, "plot");
    AppState s;
    s.graphUtilityPath = dir.file("trazel");
    ScriptedUserInterface ui;
    viewGraph(plot, s, ui);
    ASSERT_EQ(ui.programStarts.size(), 1u);
    EXPECT_EQ(ui.programStarts[0].program, dir.file("trazel"));
    EXPECT_EQ(ui.programStarts[0].arguments, std::vector<std::string>{plot});  // one argument, no quotes added
    EXPECT_TRUE(ui.messages.empty());
}

TEST(Viewers, TextNeedsTheFileAndTheEditor) {
    TempDir dir;
    AppState s;
    s.textEditorPath = dir.file("editor");
    ScriptedUserInterface ui;
    viewText(dir.file("out.txt"), s, ui);
    EXPECT_EQ(ui.lastTitle(), "Drive Read Only");
    testkit::writeFileBytes(dir.file("out.txt"), "numbers");
    viewText(dir.file("out.txt"), s, ui);
    EXPECT_EQ(ui.lastTitle(), "Missing Text Editor");
    EXPECT_EQ(ui.lastText(), "Please select an appropriate text editor before using this option.");
    testkit::writeFileBytes(dir.file("editor"), "program");
    viewText(dir.file("out.txt"), s, ui);
    ASSERT_EQ(ui.programStarts.size(), 1u);
    EXPECT_EQ(ui.programStarts[0].arguments, std::vector<std::string>{dir.file("out.txt")});
}

TEST(Viewers, AFailedStartIsARunTimeErrorForTheHandler) {
    TempDir dir;
    testkit::writeFileBytes(dir.file("out.txt"), "numbers");
    testkit::writeFileBytes(dir.file("editor"), "not a program");
    AppState s;
    s.textEditorPath = dir.file("editor");
    ScriptedUserInterface ui;
    ui.startSucceeds = false;
    try {
        viewText(dir.file("out.txt"), s, ui);
        FAIL() << "no error";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 75);
    }
}

TEST(Viewers, ExistingOutputDialogRemembersTheFolder) {
    TempDir dir;
    AppState s;
    s.groundwaterDataPath = "/data/gw";
    s.textEditorPath = dir.file("editor");
    testkit::writeFileBytes(dir.file("editor"), "program");
    testkit::writeFileBytes(dir.file("a.out"), "numbers");
    ScriptedUserInterface ui;
    viewExistingFile(0, s, ui);  // cancelled
    ASSERT_EQ(ui.fileDialogs.size(), 1u);
    EXPECT_EQ(ui.fileDialogs[0].title, "Open Output File");
    EXPECT_EQ(ui.fileDialogs[0].filter, "Data Files (*.dat)|*.dat|Output (*.out)|*.out|Plot Files (*.plt)|*.plt");
    EXPECT_EQ(ui.fileDialogs[0].initialDirectory, "/data/gw");
    EXPECT_TRUE(ui.messages.empty());
    EXPECT_TRUE(ui.programStarts.empty());
    ui.fileAnswers = {dir.file("a.out")};
    viewExistingFile(0, s, ui);
    EXPECT_EQ(s.lastOutputFile, dir.file("a.out"));
    EXPECT_EQ(ui.programStarts.size(), 1u);
    viewExistingFile(0, s, ui);
    EXPECT_EQ(ui.fileDialogs.back().initialDirectory, dir.path().string());
    viewExistingFile(1, s, ui);
    EXPECT_EQ(ui.fileDialogs.back().title, "Open Plot / Graph File");
    EXPECT_EQ(ui.fileDialogs.back().initialDirectory, "/data/gw");  // the graph dialog keeps its own memory
}
