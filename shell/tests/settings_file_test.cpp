#include <gtest/gtest.h>

#include <filesystem>

#include "model/app_state.h"
#include "shell/base/runtime_error.h"
#include "shell/settings_file.h"
#include "testing/scripted_user_interface.h"
#include "testing/test_paths.h"

using namespace bm;
using testkit::ScriptedUserInterface;
using testkit::TempDir;
namespace fs = std::filesystem;

namespace {
const std::string kWindows = "/usr/bin/";

AppState readFrom(const std::string& path, ScriptedUserInterface& ui, const std::string& root = "/suite") {
    AppState s;
    readSettings(path, root, kWindows, s, ui);
    return s;
}
}  // namespace

TEST(SettingsFile, PathIsTheRootWithoutItsTrailingSeparator) {
    EXPECT_EQ(settingsFilePath("/opt/orva/"), "/opt/orva/orva.ini");
    EXPECT_EQ(settingsFilePath(" /opt/orva "), "/opt/orva/orva.ini");
    EXPECT_EQ(settingsRoot("/opt/orva//"), "/opt/orva");
}

TEST(SettingsFile, NoFileGivesTheDefaultsAndCreatesNothing) {
    TempDir dir;
    ScriptedUserInterface ui;
    const std::string path = dir.file("orva.ini");
    AppState s;
    s.graphUtilityPath = "stale";
    EXPECT_TRUE(readSettings(path, "/suite", kWindows, s, ui));
    EXPECT_EQ(s.textEditorPath, "/usr/bin/notepad.exe");
    EXPECT_EQ(s.temporaryDataPath, "/suite/Trazel");
    EXPECT_EQ(s.chemicalDbName, "/suite/chemical/chemical.mdb");
    EXPECT_EQ(s.surfaceDataPath, "/suite/surface/sampldat");
    EXPECT_EQ(s.plantDataPath, "/suite/plant/sampldat");
    EXPECT_EQ(s.airDataPath, "/suite/air/sampldat");
    EXPECT_EQ(s.groundwaterDataPath, "/suite/brenmoor/sampldat");
    EXPECT_EQ(s.graphUtilityPath, "/suite/trazel/trazel");
    EXPECT_TRUE(ui.messages.empty());
    EXPECT_FALSE(fs::exists(path));
    EXPECT_TRUE(fs::is_empty(dir.path()));
}

TEST(SettingsFile, AKeyCountsInAnySection) {
    TempDir dir;
    ScriptedUserInterface ui;
    testkit::writeFileBytes(dir.file("orva.ini"), "[General]\r\nGraph=/x/plot\r\n[Air Model]\r\nTextEditor=/bin/ed\r\n");
    const AppState s = readFrom(dir.file("orva.ini"), ui);
    EXPECT_EQ(s.graphUtilityPath, "/x/plot");
    EXPECT_EQ(s.textEditorPath, "/bin/ed");
    // An existing file starts every setting empty: what it does not name stays empty.
    EXPECT_EQ(s.temporaryDataPath, "");
    EXPECT_EQ(s.groundwaterDataPath, "");
}

TEST(SettingsFile, AnyLineWithGraphBeforeItsEqualsSignSetsThePlotUtility) {
    TempDir dir;
    ScriptedUserInterface ui;
    testkit::writeFileBytes(dir.file("orva.ini"), "MyGraphingTool = /opt/plot  \n");
    EXPECT_EQ(readFrom(dir.file("orva.ini"), ui).graphUtilityPath, "/opt/plot");
}

TEST(SettingsFile, ALaterLineOverridesAnEarlierOne) {
    TempDir dir;
    ScriptedUserInterface ui;
    testkit::writeFileBytes(dir.file("orva.ini"),
                            "[Graphics]\r\nGraph=/first\r\n[Graphics]\r\nGraph=/second\r\n"
                            "TemporaryDataPath=/t1\r\ntemporarydatapath = /t2\r\n");
    const AppState s = readFrom(dir.file("orva.ini"), ui);
    EXPECT_EQ(s.graphUtilityPath, "/second");
    EXPECT_EQ(s.temporaryDataPath, "/t2");
}

TEST(SettingsFile, KeysAreSearchedInTheirFixedOrder) {
    TempDir dir;
    ScriptedUserInterface ui;
    // The value names another key's word: the first word of the order wins.
    testkit::writeFileBytes(dir.file("orva.ini"),
                            "Graph=/home/texteditor/trazel\r\nplantPath=/p\r\nSurfacePath=/s/plantpath\r\n");
    const AppState s = readFrom(dir.file("orva.ini"), ui);
    EXPECT_EQ(s.textEditorPath, "/home/texteditor/trazel");
    EXPECT_EQ(s.graphUtilityPath, "");
    EXPECT_EQ(s.plantDataPath, "/p");
    EXPECT_EQ(s.surfaceDataPath, "/s/plantpath");
}

TEST(SettingsFile, AHeadingWithTheWordEmptiesTheSetting) {
    TempDir dir;
    ScriptedUserInterface ui;
    // "[Graphics]" holds "GRAPH" and no "=", so it sets the utility to nothing.
    testkit::writeFileBytes(dir.file("orva.ini"), "Graph=/x/trazel\r\n[Graphics]\r\n");
    EXPECT_EQ(readFrom(dir.file("orva.ini"), ui).graphUtilityPath, "");
}

TEST(SettingsFile, KeysAreWrittenInTheirOwnCaseAndFoundInUpperCase) {
    TempDir dir;
    ScriptedUserInterface ui;
    testkit::writeFileBytes(dir.file("orva.ini"), "PLANTPATH=/a\r\nplantpath=/b\r\n");
    EXPECT_EQ(readFrom(dir.file("orva.ini"), ui).plantDataPath, "/b");
}

TEST(SettingsFile, GarbageAndVeryLongLinesAreSkippedOrTaken) {
    TempDir dir;
    ScriptedUserInterface ui;
    std::string text = std::string("\x01\x02\xff\xfe garbage \0 with a nul", 27) + "\r\n";
    text += std::string(1 << 20, 'x') + "\r\n";                        // a megabyte of nothing
    text += "GroundWaterDataPath=" + std::string(100000, 'g') + "\r\n";  // a very long value
    text += "=\r\n==\r\n\r\n";
    text += "TextEditor=/bin/ed";  // no line end at the end of the file
    testkit::writeFileBytes(dir.file("orva.ini"), text);
    const AppState s = readFrom(dir.file("orva.ini"), ui);
    EXPECT_EQ(s.groundwaterDataPath, std::string(100000, 'g'));
    EXPECT_EQ(s.textEditorPath, "/bin/ed");
    EXPECT_EQ(s.graphUtilityPath, "");
    EXPECT_TRUE(ui.messages.empty());
    EXPECT_EQ(testkit::readFileBytes(dir.file("orva.ini")), text);  // read only
}

TEST(SettingsFile, AnUnreadableFileGoesToTheErrorHandlerWithItsPath) {
    // A file that opens but fails on reading.
    const std::string path = "/proc/self/mem";
    ScriptedUserInterface ui;
    AppState s;
    EXPECT_FALSE(readSettings(path, "/suite", kWindows, s, ui));
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Error");
    EXPECT_EQ(ui.messages[0].text,
              "Error # 75 was generated by brenmoor with the following description: Path/File access error.");
}

TEST(SettingsFile, AnErrorInALineThatTheHandlerResumesFromLetsTheReadingGoOn) {
    TempDir dir;
    testkit::writeFileBytes(dir.file("orva.ini"),
                            "[General]\r\nTextEditor=/bin/ed\r\nTemporaryDataPath=/bad\r\nGraph=/bin/plot\r\n");
    // A bounds error, which the handler resumes from, in the line of the temporary folder.
    ScopedSettingsLineCheck check([](const std::string& line) {
        if (line.find("/bad") != std::string::npos) raiseError(err::SubscriptOutOfRange);
    });
    ScriptedUserInterface ui;
    AppState s;
    EXPECT_TRUE(readSettings(dir.file("orva.ini"), "/suite", kWindows, s, ui));
    EXPECT_EQ(s.textEditorPath, "/bin/ed");
    EXPECT_EQ(s.temporaryDataPath, "");  // the failing line is skipped
    EXPECT_EQ(s.graphUtilityPath, "/bin/plot");  // and the lines behind it are read
    EXPECT_TRUE(ui.messages.empty());
    EXPECT_EQ(ui.errorsPassedOver, std::vector<int>{9});
}

TEST(SettingsFile, AnErrorInALineThatTheHandlerLeavesOnStopsTheReading) {
    TempDir dir;
    testkit::writeFileBytes(dir.file("orva.ini"),
                            "[General]\r\nTextEditor=/bin/ed\r\nTemporaryDataPath=/bad\r\nGraph=/bin/plot\r\n");
    ScopedSettingsLineCheck check([](const std::string& line) {
        if (line.find("/bad") != std::string::npos) raiseError(err::TypeMismatch);
    });
    ScriptedUserInterface ui;
    AppState s;
    EXPECT_FALSE(readSettings(dir.file("orva.ini"), "/suite", kWindows, s, ui));
    EXPECT_EQ(s.textEditorPath, "/bin/ed");  // what was read stays
    EXPECT_EQ(s.graphUtilityPath, "");
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Type Mismatch Error");
}

TEST(SettingsFile, WrittenTextHasTheSectionsInOrderWithNoEmptyLines) {
    AppState s;
    s.textEditorPath = "/e";
    s.temporaryDataPath = "/t";
    s.chemicalDbName = "/c.mdb";
    s.surfaceDataPath = "/s";
    s.plantDataPath = "/p";
    s.airDataPath = "/a";
    s.groundwaterDataPath = "/g";
    s.graphUtilityPath = "/tr";
    EXPECT_EQ(settingsFileText(s),
              "[General]\r\nTextEditor=/e\r\nTemporaryDataPath=/t\r\nChemicalDBName=/c.mdb\r\n"
              "[Surface Model]\r\nSurfacePath=/s\r\n[Plant and Animal Model]\r\nplantPath=/p\r\n"
              "[Air Model]\r\nAirDataPath=/a\r\n[Ground Water Model]\r\nGroundWaterDataPath=/g\r\n"
              "[Graphics]\r\nGraph=/tr\r\n");
}

TEST(SettingsFile, WriteThenReadGivesTheSameSettings) {
    TempDir dir;
    ScriptedUserInterface ui;
    AppState s;
    applyDefaultSettings(s, "/where ever/suite", kWindows);
    s.textEditorPath = "/usr/bin/gedit";
    ASSERT_TRUE(writeSettings(dir.file("orva.ini"), s, ui));
    const AppState back = readFrom(dir.file("orva.ini"), ui);
    for (auto f : {&AppState::textEditorPath, &AppState::temporaryDataPath, &AppState::chemicalDbName,
                   &AppState::surfaceDataPath, &AppState::plantDataPath, &AppState::airDataPath,
                   &AppState::groundwaterDataPath, &AppState::graphUtilityPath})
        EXPECT_EQ(back.*f, s.*f);
    EXPECT_TRUE(ui.messages.empty());
    // Only the file itself is left behind.
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), fs::directory_iterator()), 1);
}

TEST(SettingsFile, AFailedWriteIsReportedAndDamagesNothing) {
    TempDir dir;
    ScriptedUserInterface ui;
    AppState s;
    applyDefaultSettings(s, "/suite", kWindows);
    // A folder that is not there.
    EXPECT_FALSE(writeSettings(dir.file("missing/orva.ini"), s, ui));
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].text, "Error # 76 was generated by brenmoor with the following description: Path not found.");
    // A folder where the file should be: it stays a folder with its content.
    fs::create_directory(dir.file("orva.ini"));
    testkit::writeFileBytes(dir.file("orva.ini/keep"), "keep");
    EXPECT_FALSE(writeSettings(dir.file("orva.ini"), s, ui));
    EXPECT_EQ(ui.messages.size(), 2u);
    EXPECT_EQ(testkit::readFileBytes(dir.file("orva.ini/keep")), "keep");
    EXPECT_FALSE(fs::exists(dir.file("orva.ini.new")));
}

TEST(SettingsFile, TheSuiteTreeShipsASettingsFileForItsOwnPrograms) {
    const fs::path suite = testkit::binaryDir() / "suite";
    if (!fs::exists(suite / "orva.ini")) GTEST_SKIP() << "no suite tree in this build";
    AppState expected;
    const std::string root = suite.string();
    expected.textEditorPath = root + "/brenmoor/textviewer";
    expected.temporaryDataPath = root + "/Trazel";
    expected.chemicalDbName = root + "/chemical/chemical.mdb";
    expected.surfaceDataPath = root + "/surface/sampldat";
    expected.plantDataPath = root + "/plant/sampldat";
    expected.airDataPath = root + "/air/sampldat";
    expected.groundwaterDataPath = root + "/brenmoor/sampldat";
    expected.graphUtilityPath = root + "/trazel/trazel";
    EXPECT_EQ(testkit::readFileBytes(suite / "orva.ini"), settingsFileText(expected));
}
