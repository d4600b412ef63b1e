// The open, save and close workflow through a scripted user interface.

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <sys/wait.h>
#include <unistd.h>

#include "files/file_workflow.h"
#include "files/safe_save.h"
#include "model/app_state.h"
#include "sample_models.h"
#include "testing/scripted_user_interface.h"
#include "testing/test_paths.h"

namespace bm {
namespace {

namespace fs = std::filesystem;
using testkit::fixturePath;
using testkit::readFileBytes;
using testkit::ScriptedUserInterface;
using testkit::TempDir;
using testkit::writeFileBytes;

const std::string kOldBytes = "Version 9.1\r\nan older save\r\n";

class FileWorkflow : public ::testing::Test {
protected:
    void SetUp() override {
        savedDataPath_ = theAppState().groundwaterDataPath;
        theAppState().groundwaterDataPath = dir.path().string();
    }
    void TearDown() override { theAppState().groundwaterDataPath = savedDataPath_; }

    TempDir dir;
    ScriptedUserInterface ui;
    std::string tag;

private:
    std::string savedDataPath_;
};

// ---- the question before data is lost ------------------------------------------------

TEST_F(FileWorkflow, UnsavedResultsAskDataNotSavedAndYesSaves) {
    DataSet d = samples::oneRegular();
    d.currentFileName = dir.file("model.one");
    writeFileBytes(d.currentFileName, kOldBytes);
    d.dataState = kNeedsSaving;
    ui.answers = {MessageAnswer::Yes};
    EXPECT_TRUE(saveDataFilePrompt(d, ui, tag));
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Data Not Saved");
    EXPECT_EQ(ui.messages[0].text,
              "One Dimensional Model parameters and results has been changed. \r\rWould you like to save changes now?");
    EXPECT_EQ(ui.messages[0].buttons, MessageButtons::YesNoCancel);
    EXPECT_EQ(ui.messages[0].icon, MessageIcon::Question);
    EXPECT_TRUE(ui.fileDialogs.empty());  // the model has a file: saved without a dialog
    EXPECT_EQ(readFileBytes(d.currentFileName), readFileBytes(fixturePath("files", "one_regular.one")));
    EXPECT_EQ(d.dataState, kDataUnchanged);
}

TEST_F(FileWorkflow, UnsavedResultsNoGoesOnWithoutSaving) {
    DataSet d = samples::oneRegular();
    d.dataState = kNeedsSaving;
    ui.answers = {MessageAnswer::No};
    EXPECT_TRUE(saveDataFilePrompt(d, ui, tag));
    EXPECT_TRUE(ui.fileDialogs.empty());
    EXPECT_EQ(d.dataState, kNeedsSaving);
}

TEST_F(FileWorkflow, UnsavedResultsCancelStays) {
    DataSet d = samples::oneRegular();
    d.dataState = kNeedsSaving;
    ui.answers = {MessageAnswer::Cancel};
    EXPECT_FALSE(saveDataFilePrompt(d, ui, tag));
    EXPECT_TRUE(ui.fileDialogs.empty());
}

TEST_F(FileWorkflow, YesWithACancelInTheFileDialogStays) {
    DataSet d = samples::oneRegular();  // never saved
    d.dataState = kNeedsSaving;
    ui.answers = {MessageAnswer::Yes};
    ui.fileAnswers = {std::nullopt};
    EXPECT_FALSE(saveDataFilePrompt(d, ui, tag));
    EXPECT_EQ(ui.fileDialogs.size(), 1u);
    EXPECT_EQ(ui.messages.size(), 1u);  // a cancel is not reported
    EXPECT_EQ(d.dataState, kNeedsSaving);
    EXPECT_EQ(tag, "");
    EXPECT_EQ(fs::directory_iterator(dir.path()), fs::directory_iterator());  // nothing written
}

TEST_F(FileWorkflow, ChangedParametersAskToCalculateFirst) {
    DataSet d = samples::twoRegular();
    d.dataState = kParametersChanged;
    ui.answers = {MessageAnswer::Yes};
    EXPECT_FALSE(saveDataFilePrompt(d, ui, tag));  // stay and calculate
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Data Changed");
    EXPECT_EQ(ui.messages[0].text,
              "Two Dimensional Model parameters has been changed, but you don't do Calculation.\r\rWould you like to "
              "select Calculate first?");
    EXPECT_EQ(ui.messages[0].buttons, MessageButtons::YesNo);
    ui.answers = {MessageAnswer::No};
    EXPECT_TRUE(saveDataFilePrompt(d, ui, tag));
}

TEST_F(FileWorkflow, NothingToSaveGoesOnWithoutAQuestion) {
    DataSet d = samples::oneRegular();
    d.dataState = kDataUnchanged;
    EXPECT_TRUE(saveDataFilePrompt(d, ui, tag));
    EXPECT_TRUE(ui.messages.empty());
}

// ---- the dialog ------------------------------------------------------------------------

TEST_F(FileWorkflow, OpenDialogOfAnUnsavedModelStartsInTheDataFolder) {
    DataSet d = samples::oneRegular();
    ui.fileAnswers = {std::nullopt};
    EXPECT_EQ(chooseDataFile(d, ui, "Open Data File", "Open", 0, "One Dimensional", tag), "Don't Do Anything");
    ASSERT_EQ(ui.fileDialogs.size(), 1u);
    const FileDialogRequest& r = ui.fileDialogs[0];
    EXPECT_EQ(r.kind, FileDialogRequest::Kind::Open);
    EXPECT_EQ(r.title, "Open Data File");
    EXPECT_EQ(r.filter,
              "One Dim (*.one)|*.one|Two Dim (*.two)|*.two|Three Dim (*.tri)|*.tri|Single Chemical "
              "(*.one;*.two;*.tri)|*.one;*.two;*.tri|Multi-Checmical 1-Dim (*.mc1)|*.mc1|Multi-Checmical 2-Dim  "
              "(*.mc2)|*.mc2|Multi-Checmical 3-Dim  (*.mc3)|*.mc3|Multi-Chemical (*.mc1;*.mc2;*.mc3)|*.mc1;*.mc2;*.mc3|"
              "Ground Water (*.one;*.two;*.tri;*.mc1;*.mc2;*.mc3)|*.one;*.two;*.tri;*.mc1;*.mc2;*.mc3|All Files "
              "(*.*)|*.*");
    EXPECT_EQ(r.filterIndex, 1);
    EXPECT_EQ(r.initialDirectory, dir.path().string());
    EXPECT_EQ(r.initialFileName, "*.one");
    EXPECT_EQ(r.defaultExtension, "one");
    EXPECT_TRUE(ui.messages.empty());
    EXPECT_EQ(tag, "");
    EXPECT_FALSE(ui.busy);
}

TEST_F(FileWorkflow, DialogOfASavedModelStartsAtItsFile) {
    DataSet d = samples::multiRegular2D();
    const fs::path folder = dir.path() / "project";
    fs::create_directory(folder);
    d.currentFileName = (folder / "chain.mc2").string();
    writeFileBytes(d.currentFileName, kOldBytes);
    ui.fileAnswers = {std::nullopt};
    chooseDataFile(d, ui, "Open", "Open", 2, "Two Dimensional", tag);
    const FileDialogRequest& r = ui.fileDialogs.at(0);
    EXPECT_EQ(r.initialDirectory, folder.string());
    EXPECT_EQ(r.initialFileName, "chain.mc2");
    EXPECT_EQ(r.defaultExtension, "mc2");
    EXPECT_EQ(r.filterIndex, 2);
}

TEST_F(FileWorkflow, OpenOfAMissingFileIsError53) {
    DataSet d;
    const std::string missing = dir.file("gone.one");
    ui.fileAnswers = {missing};
    EXPECT_EQ(chooseDataFile(d, ui, "Open", "Open", 0, "", tag), "Don't Do Anything");
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, missing + " not found!");
    EXPECT_EQ(ui.messages[0].text,
              "File not found.\r\nThe selected file: " + missing + " is not found. Please check filename and path.");
    EXPECT_EQ(tag, "File Error");
    EXPECT_EQ(ui.fileDialogs[0].filterIndex, 9);
    EXPECT_EQ(ui.fileDialogs[0].initialFileName, "*.one;*.two;*.tri;*.mc1;*.mc2;*.mc3");
    EXPECT_EQ(ui.fileDialogs[0].defaultExtension, "");
}

TEST_F(FileWorkflow, SaveOverAnExistingFileAsksOverwriteFile) {
    DataSet d = samples::oneRegular();
    const std::string existing = dir.file("old.one");
    writeFileBytes(existing, kOldBytes);
    ui.fileAnswers = {existing, existing};
    ui.answers = {MessageAnswer::No, MessageAnswer::Yes};
    EXPECT_EQ(chooseDataFile(d, ui, "Save Data File As", "Save", 0, "One Dimensional", tag), "Don't Do Anything");
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Overwrite File");
    EXPECT_EQ(ui.messages[0].text, existing + " already exists. \r\n Replace existing file?");
    EXPECT_EQ(ui.messages[0].buttons, MessageButtons::YesNo);
    EXPECT_EQ(ui.fileDialogs[0].kind, FileDialogRequest::Kind::Save);
    tag.clear();
    EXPECT_EQ(chooseDataFile(d, ui, "Save Data File As", "Save", 0, "One Dimensional", tag), existing);
    EXPECT_EQ(tag, "");
}

TEST_F(FileWorkflow, ANameWithoutExtensionGetsTheModels) {
    struct Case {
        const char* modelType;
        bool multi;
        const char* extension;
    };
    for (const Case& c : {Case{"One Dimensional", false, ".one"}, Case{"One Dimensional", true, ".mc1"},
                          Case{"Two Dimensional", false, ".two"}, Case{"Two Dimensional", true, ".mc2"},
                          Case{"Three Dimensional", false, ".tri"}, Case{"Three Dimensional", true, ".mc3"},
                          Case{"Time Varying", true, ".var"}, Case{"Unsaturated One Dimensional", false, ".U1D"},
                          Case{"Unsaturated One Dimensional", true, ".MCU"}}) {
        SCOPED_TRACE(std::string(c.modelType) + (c.multi ? " multi" : ""));
        DataSet d;
        d.multiChemical = c.multi;
        // A relative name: a temporary folder's own path may hold a full stop.
        ui.fileAnswers = {"no-such-folder/plume"};
        EXPECT_EQ(chooseDataFile(d, ui, "Save Data File As", "Save", 0, c.modelType, tag),
                  std::string("no-such-folder/plume") + c.extension);
    }
    DataSet d;
    ui.fileAnswers = {dir.file("plume.txt")};  // a name with a full stop stays as written
    EXPECT_EQ(chooseDataFile(d, ui, "Save", "Save", 0, "One Dimensional", tag), dir.file("plume.txt"));
}

TEST_F(FileWorkflow, AFullStopAnywhereInTheChosenTextKeepsItAsWritten) {
    DataSet d;
    // The full stop of a folder's name counts as well: no extension is added.
    ui.fileAnswers = {"data.v2/plume"};
    EXPECT_EQ(chooseDataFile(d, ui, "Save", "Save", 0, "One Dimensional", tag), "data.v2/plume");
    ui.fileAnswers = {"./plume"};
    EXPECT_EQ(chooseDataFile(d, ui, "Save", "Save", 0, "Two Dimensional", tag), "./plume");
}

// ---- open ------------------------------------------------------------------------------

TEST_F(FileWorkflow, OpenReadsTheChosenFile) {
    DataSet d;
    d.dataState = kNeedsSaving;
    d.mcPointChanged[static_cast<std::size_t>(ModelKind::TwoDimensional)] = true;
    const std::string path = fixturePath("files", "two_regular.two").string();
    ui.fileAnswers = {path};
    EXPECT_TRUE(openModelFile(d, ui, "Open Data File", 0, "", tag));
    EXPECT_EQ(d.currentFileName, path);
    EXPECT_EQ(d.modelType, "Two Dimensional");
    EXPECT_TRUE(d.needsDisplayRefresh);
    EXPECT_EQ(d.dataState, kDataUnchanged);
    EXPECT_FALSE(d.mcPointChanged[static_cast<std::size_t>(ModelKind::TwoDimensional)]);
    EXPECT_TRUE(ui.messages.empty());
    EXPECT_EQ(tag, "");
    EXPECT_FALSE(ui.busy);
    EXPECT_NE(std::find(ui.busyCalls.begin(), ui.busyCalls.end(), true), ui.busyCalls.end());
}

TEST_F(FileWorkflow, OpenCancelledLeavesThePreviousState) {
    DataSet d = samples::threeRegular();
    d.dataState = kNeedsSaving;
    ui.fileAnswers = {std::nullopt};
    EXPECT_FALSE(openModelFile(d, ui, "Open", 0, "", tag));
    const DataSet before = samples::threeRegular();
    EXPECT_EQ(d.modelType, before.modelType);
    EXPECT_EQ(d.xRange, before.xRange);
    EXPECT_EQ(d.result3D, before.result3D);
    EXPECT_EQ(d.dataState, kNeedsSaving);
    EXPECT_FALSE(d.needsDisplayRefresh);
    EXPECT_TRUE(ui.messages.empty());
    EXPECT_EQ(tag, "");
}

TEST_F(FileWorkflow, ReadErrorIsReportedAndTagged) {
    DataSet d;
    const std::string path = fixturePath("files", "marker_end_mismatch.one").string();
    ui.fileAnswers = {path};
    EXPECT_FALSE(openModelFile(d, ui, "Open", 0, "", tag));
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Improper File Name");
    EXPECT_EQ(ui.messages[0].text, path + " is not in one of the recognized formats. \r\n Please open another file.");
    EXPECT_EQ(tag, "File Error");
    EXPECT_EQ(d.modelType, "One Dimensional");  // what was read stays
    EXPECT_FALSE(d.needsDisplayRefresh);
    EXPECT_FALSE(ui.busy);
}

TEST_F(FileWorkflow, BoundsErrorOfAFileShowsNoMessageAndOpensNoScreen) {
    DataSet d;
    const std::string path = fixturePath("files", "more_results_than_rows.one").string();
    ui.fileAnswers = {path};
    EXPECT_FALSE(openModelFile(d, ui, "Open", 0, "", tag));
    EXPECT_TRUE(ui.messages.empty());
    EXPECT_EQ(ui.errorsPassedOver, std::vector<int>{9});
    EXPECT_EQ(tag, "File Error");
    EXPECT_FALSE(d.needsDisplayRefresh);
}

TEST_F(FileWorkflow, OverflowInAFileIsReportedAsOverflow) {
    DataSet d;
    ui.fileAnswers = {fixturePath("files", "count_overflow.one").string()};
    EXPECT_FALSE(openModelFile(d, ui, "Open", 0, "", tag));
    EXPECT_EQ(ui.lastTitle(), "Overflow");
}

// ---- save ------------------------------------------------------------------------------

TEST_F(FileWorkflow, SaveOfANeverSavedModelGoesThroughTheDialog) {
    DataSet d = samples::unsatRegular();
    ASSERT_EQ(d.currentFileName, "");
    d.dataState = kNeedsSaving;
    ui.fileAnswers = {dir.file("column")};
    EXPECT_TRUE(saveDataFile(d, ui, "Save", d.modelType, tag));
    ASSERT_EQ(ui.fileDialogs.size(), 1u);
    EXPECT_EQ(ui.fileDialogs[0].title, "Save Data File As");
    EXPECT_EQ(ui.fileDialogs[0].kind, FileDialogRequest::Kind::Save);
    EXPECT_EQ(ui.fileDialogs[0].initialFileName, "*.U1D");
    EXPECT_EQ(ui.fileDialogs[0].defaultExtension, "U1D");
    EXPECT_EQ(ui.fileDialogs[0].filter,
              "Unsaturated One Dim (*.u1d)|*.u1d|Unsatured Multi-Chemical 1-Dim (*.mcu)|*.mcu|Unsatured Ground "
              "Water (*.u1d;*.mcu)|*.u1d;*.mcu|All Files (*.*)|*.*");
    EXPECT_EQ(d.currentFileName, dir.file("column.U1D"));  // upper-case extension
    EXPECT_EQ(readFileBytes(d.currentFileName), readFileBytes(fixturePath("files", "unsat_regular.u1d")));
    EXPECT_EQ(d.dataState, kDataUnchanged);
}

TEST_F(FileWorkflow, MultiChemicalUnsaturatedSavesAsMCU) {
    DataSet d = samples::multiRegularUnsat();
    ui.fileAnswers = {dir.file("chain")};
    EXPECT_TRUE(saveDataFile(d, ui, "Save As", d.modelType, tag));
    EXPECT_EQ(d.currentFileName, dir.file("chain.MCU"));
    EXPECT_EQ(ui.fileDialogs[0].filterIndex, 2);
    EXPECT_TRUE(fs::exists(dir.file("chain.MCU")));
}

TEST_F(FileWorkflow, SaveOfASavedModelWritesWithoutQuestions) {
    DataSet d = samples::oneRegular();
    d.currentFileName = dir.file("model.one");
    writeFileBytes(d.currentFileName, kOldBytes);
    d.mcPointChanged[static_cast<std::size_t>(ModelKind::OneDimensional)] = true;
    EXPECT_TRUE(saveDataFile(d, ui, "Save", d.modelType, tag));
    EXPECT_TRUE(ui.fileDialogs.empty());
    EXPECT_TRUE(ui.messages.empty());
    EXPECT_EQ(readFileBytes(d.currentFileName), readFileBytes(fixturePath("files", "one_regular.one")));
    EXPECT_FALSE(d.mcPointChanged[static_cast<std::size_t>(ModelKind::OneDimensional)]);
}

TEST_F(FileWorkflow, SaveOfAModelWhoseFileHasGoneAsksForAName) {
    DataSet d = samples::oneRegular();
    d.currentFileName = dir.file("deleted.one");
    ui.fileAnswers = {std::nullopt};
    EXPECT_FALSE(saveDataFile(d, ui, "Save", d.modelType, tag));
    EXPECT_EQ(ui.fileDialogs.size(), 1u);
    EXPECT_EQ(d.currentFileName, dir.file("deleted.one"));
}

TEST_F(FileWorkflow, SaveAsOverAnExistingFileNeedsYes) {
    DataSet d = samples::oneRegular();
    const std::string existing = dir.file("keep.one");
    writeFileBytes(existing, kOldBytes);
    ui.fileAnswers = {existing};
    ui.answers = {MessageAnswer::No};
    EXPECT_FALSE(saveDataFile(d, ui, "Save As", d.modelType, tag));
    EXPECT_EQ(readFileBytes(existing), kOldBytes);
    ui.fileAnswers = {existing};
    ui.answers = {MessageAnswer::Yes};
    EXPECT_TRUE(saveDataFile(d, ui, "Save As", d.modelType, tag));
    EXPECT_EQ(readFileBytes(existing), readFileBytes(fixturePath("files", "one_regular.one")));
}

TEST_F(FileWorkflow, DiskFullShowsTheSaveErrorAndKeepsTheOldFile) {
    DataSet d = samples::oneRegular();
    d.currentFileName = dir.file("model.one");
    writeFileBytes(d.currentFileName, kOldBytes);
    d.dataState = kNeedsSaving;
    ScopedWriteHook full([](int, const void*, std::size_t) -> ssize_t {
        errno = ENOSPC;
        return -1;
    });
    EXPECT_FALSE(saveDataFile(d, ui, "Save", d.modelType, tag));
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Save Vipripro's File Error");
    EXPECT_EQ(ui.messages[0].text, "No space left on the device.\r\n" + dir.file("model.one") +
                                       " cannot be saved. Please make sure there is enough free space on the disk "
                                       "before saving this file.");
    EXPECT_EQ(tag, "File Error");
    EXPECT_EQ(d.dataState, kNeedsSaving);
    EXPECT_EQ(readFileBytes(dir.file("model.one")), kOldBytes);
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), fs::directory_iterator()), 1);
}

TEST_F(FileWorkflow, DeviceFailureShowsDiskNotReady) {
    DataSet d = samples::oneRegular();
    d.currentFileName = dir.file("model.one");
    writeFileBytes(d.currentFileName, kOldBytes);
    ScopedWriteHook failing([](int, const void*, std::size_t) -> ssize_t {
        errno = EIO;
        return -1;
    });
    EXPECT_FALSE(saveDataFile(d, ui, "Save", d.modelType, tag));
    EXPECT_EQ(ui.lastTitle(), "Disk Not ready");
    EXPECT_EQ(ui.lastText(), "Disk not ready!\r\nPlease check the disk and try again.");
    EXPECT_EQ(readFileBytes(d.currentFileName), kOldBytes);
}

TEST_F(FileWorkflow, ReadOnlyFolderGivesAClearMessage) {
    const fs::path folder = dir.path() / "locked";
    fs::create_directory(folder);
    const std::string path = (folder / "model.one").string();
    writeFileBytes(path, kOldBytes);
    fs::permissions(dir.path(), static_cast<fs::perms>(0755));
    fs::permissions(folder, static_cast<fs::perms>(0555));
    const pid_t pid = ::fork();
    if (pid == 0) {
        if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) _exit(98);
        DataSet d = samples::oneRegular();
        d.currentFileName = path;
        ScriptedUserInterface childUi;
        std::string childTag;
        if (saveDataFile(d, childUi, "Save", d.modelType, childTag)) _exit(1);
        if (childUi.messages.size() != 1 || childTag != "File Error") _exit(2);
        const std::string& text = childUi.messages[0].text;
        if (childUi.messages[0].title != "Error") _exit(3);
        if (text.find("Error # 75 was generated by") != 0) _exit(4);
        if (text.find(path) == std::string::npos || text.find("Permission denied") == std::string::npos) _exit(5);
        _exit(0);
    }
    int status = 0;
    ::waitpid(pid, &status, 0);
    fs::permissions(folder, static_cast<fs::perms>(0755));
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(readFileBytes(path), kOldBytes);
}

// ---- close -----------------------------------------------------------------------------

TEST_F(FileWorkflow, CloseAsksAndClearsTheModel) {
    DataSet d = samples::twoRegular();
    d.dataState = kNeedsSaving;
    d.currentFileName = "somewhere.two";
    ui.answers = {MessageAnswer::Cancel};
    EXPECT_FALSE(closeModelFile(d, ui, tag));
    EXPECT_EQ(d.modelType, "Two Dimensional");
    ui.answers = {MessageAnswer::No};
    EXPECT_TRUE(closeModelFile(d, ui, tag));
    EXPECT_EQ(d.modelType, "");
    EXPECT_EQ(d.currentFileName, "");
    EXPECT_EQ(fileNameCaption(d), "Filename: ");
}

TEST_F(FileWorkflow, FileNameCaption) {
    DataSet d;
    d.currentFileName = "/data/plume.one";
    EXPECT_EQ(fileNameCaption(d), "Filename: /data/plume.one");
}

}  // namespace
}  // namespace bm
