#include <gtest/gtest.h>

#include <QAction>
#include <QDialog>
#include <QDir>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <filesystem>

#include "model/app_state.h"
#include "model/data_set.h"
#include "testing/qt_test_support.h"
#include "shell/file_commands.h"
#include "shell/settings_file.h"
#include "shell/widgets/help_viewer.h"
#include "shell/widgets/main_window.h"
#include "shell/tests/scripted_file_commands.h"
#include "testing/scripted_user_interface.h"
#include "testing/test_paths.h"

using namespace bm;
using namespace bm::qtest;
using testkit::ScriptedUserInterface;
namespace fs = std::filesystem;

namespace {

using Files = testkit::ScriptedFileCommands;

// A suite tree with everything the start looks for, and a Main started in it.
struct MainFixture {
    testkit::TempDir dir;
    fs::path root = dir.path() / "suite";
    fs::path program = root / "brenmoor";
    ScriptedUserInterface ui;
    Files files;
    DataSet& data = theDataSet();
    AppState& state = theAppState();
    std::unique_ptr<MainWindow> main;

    // `realFiles`: File > Open goes through the real dialog and reader.
    explicit MainFixture(bool complete = true, std::vector<std::string> words = {}, bool realFiles = false) {
        setUserInterface(&ui);
        setFileCommands(realFiles ? nullptr : &files);
        closeModel(data, "Complete");
        data.modelType.clear();
        state = AppState{};
        fs::create_directories(program / "sampldat");
        fs::create_directories(root / "Trazel");
        if (complete) {
            for (const fs::path& p : {program / "textviewer", root / "trazel" / "trazel", program / "glq.pts"}) {
                fs::create_directories(p.parent_path());
                testkit::writeFileBytes(p, "x");
            }
            fs::copy_file(testkit::sourceDir() / "data" / "orvahelp.hlp", root / "orvahelp.hlp");
            AppState s;
            applyDefaultSettings(s, root.string(), "/usr/bin/");
            s.textEditorPath = (program / "textviewer").string();
            testkit::writeFileBytes(root / "orva.ini", settingsFileText(s));
        }
        main = std::make_unique<MainWindow>(data, state, fileCommands());
        main->start(words, program.string());
        main->show();
    }
    ~MainFixture() {
        closeHelp();
        main.reset();
        setFileCommands(nullptr);
        setUserInterface(nullptr);
    }
    QAction* item(const char* name) const {
        QAction* a = main->menuItem(QString::fromLatin1(name));
        EXPECT_NE(a, nullptr) << name;
        return a;
    }
};

}  // namespace

TEST(MainWindow, MenusCarryTheControlNamesAndCaptions) {
    MainFixture f;
    EXPECT_TRUE(f.ui.messages.empty()) << f.ui.lastText();
    EXPECT_EQ(f.main->objectName(), "Main");
    EXPECT_EQ(f.main->windowTitle(), "Ground Water Contaminant Transport Model with Constant Dispersion Coefficients");
    const std::vector<std::pair<const char*, const char*>> items = {
        {"menuFile(10)", "&New"}, {"menuFile(20)", "&Open..."}, {"menuFile(23)", "&Edit..."},
        {"menuFile(40)", "&Close"}, {"menuFile(60)", "E&xit Ground Water Model"},
        {"menuModel(0)", "&New"}, {"menuModel(1)", "&Load"},
        {"menuRun2", "&Run Program"}, {"menuView", "&View Output"}, {"menuCreate", "View &Contour Plot"},
        {"mnuExist(0)", "View Existing Output"}, {"mnuExist(1)", "View Existing Graphs / Plots"},
        {"mnuInfo(1)", "&About"}, {"mnuInfo(2)", "&Disclaimer"}, {"mnuInfo(3)", "&References"},
        {"menuStatus", "&Preferences..."},
        {"mnuHelp(0)", "&Contents"}, {"mnuHelp(1)", "&Index of Topics..."},
        {"mnuHelp(2)", "&Obtaining Technical Support.."}, {"mnuHelp(3)", "&About Ground Water Model..."},
        {"menuNew", "&New"}, {"menuOpen", "&Open..."}, {"menuEdit", "&Edit..."}, {"menuClose", "&Close"},
        {"menuIcon", "&Iconize"}, {"menuPrint", "&Print"}, {"menuPrinterSetup", "Printer &Setup"},
        {"menuTest", "Testing..."}, {"mnureturnshell", "&Return to Main Shell"}, {"menuExit", "E&xit Program"},
        {"menuTimeVarying", "Time varying"}};
    for (const auto& [name, caption] : items)
        if (QAction* a = f.item(name)) {
            EXPECT_EQ(a->text().toStdString(), caption) << name;
        }
    EXPECT_TRUE(f.item("menuFile(25)")->isSeparator());
    EXPECT_TRUE(f.item("menuFile(45)")->isSeparator());
    EXPECT_TRUE(f.item("mnuRunSep")->isSeparator());
    EXPECT_EQ(f.item("menuFile(40)")->data().toInt(), 40);
    EXPECT_FALSE(f.item("menuFile(23)")->isVisible());
    EXPECT_FALSE(f.item("mnuFileMenu")->isVisible());
    EXPECT_TRUE(f.item("menuTimeVarying")->isVisible());  // offered in every start
    for (const char* menu : {"menuFile", "menuModel", "menuRun", "menuInfo", "menuSpecial", "menuHelp"})
        EXPECT_NE(f.main->findChild<QMenu*>(menu), nullptr) << menu;
    EXPECT_EQ(f.main->menuBar()->actions().at(0)->text(), "&File");
    auto* panel = f.main->findChild<QLabel*>("filenamePanel");
    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(panel->text(), " Filename:");
}

TEST(MainWindow, NewRelabelsTheDialogAndOpensTheScreenThenComesBack) {
    Watchdog dog;
    MainFixture f;
    f.data.xRange = "0:10:1";  // a model left in memory
    onModal("NewFile", [&](QWidget* d) {
        EXPECT_EQ(d->windowTitle(), "New Ground Water Model (Constant Dispersion Coefficients)");
        auto* contaminant2 = d->findChild<QRadioButton*>("Contaminant(2)");
        EXPECT_FALSE(contaminant2->isVisibleTo(d));
        EXPECT_EQ(d->findChild<QRadioButton*>("Aquifer_Type(1)")->text(), "Semi-Infinite");
        d->findChild<QRadioButton*>("Model_Type(1)")->click();
        EXPECT_EQ(d->findChild<QRadioButton*>("Aquifer_Type(1)")->text(), "Infinite");
        EXPECT_EQ(d->findChild<QRadioButton*>("Contaminant(0)")->text(), "Continuous / Point");
        EXPECT_TRUE(contaminant2->isVisibleTo(d));
        EXPECT_EQ(contaminant2->text(), "Gaussian");
        d->findChild<QRadioButton*>("Aquifer_Type(1)")->click();
        contaminant2->click();
        d->findChild<QRadioButton*>("optChemicals(1)")->click();
        saveShot(d, "NewFile");
        onModal("MCInputForm", [&](QWidget* screen) {
            saveShot(screen, "placeholder");
            auto* kind = screen->findChild<QLabel*>("modelKindL");
            EXPECT_TRUE(kind->text().contains("Two Dimensional"));
            EXPECT_TRUE(kind->text().contains("Gaussian"));
            EXPECT_TRUE(kind->text().contains("Multiple Chemicals"));
            EXPECT_FALSE(screen->findChild<QAction*>("menuSave")->isEnabled());
            screen->findChild<QPushButton*>("closeCB")->click();
        });
        d->findChild<QPushButton*>("okCB")->click();
    });
    f.item("menuFile(10)")->trigger();
    EXPECT_EQ(f.files.prompts, 2);  // before New, and at the screen's Close
    EXPECT_EQ(f.data.modelType, "");  // the screen's Close closed the model
    EXPECT_EQ(f.data.xRange, "");
    EXPECT_EQ(f.main->filenamePanelText(), "Filename: ");
    EXPECT_FALSE(dog.fired());
}

TEST(MainWindow, NewCancelledOpensNoScreen) {
    Watchdog dog;
    MainFixture f;
    f.data.modelType = "One Dimensional";
    f.data.xRange = "0:10:1";
    onModal("NewFile", [](QWidget* d) { d->findChild<QPushButton*>("cancelCB")->click(); });
    f.item("menuModel(0)")->trigger();
    EXPECT_FALSE(f.data.newModelConfirmed);
    EXPECT_EQ(f.data.xRange, "");  // closed before the dialog
    EXPECT_EQ(f.main->filenamePanelText(), " Filename:");
}

TEST(MainWindow, OpenShowsTheScreenOfTheFilesModel) {
    Watchdog dog;
    MainFixture f(true, {"Unsaturated"});
    EXPECT_EQ(f.main->windowTitle(), "Unsaturated Ground Water Contaminant Transport - Marino Model");
    f.files.reader = [](DataSet& d) {
        d.modelType = "Unsaturated One Dimensional";
        d.multiChemical = true;
        d.currentFileName = "/data/two.mcu";
        return true;
    };
    QString panelWhileOpen;
    onModal("MCUnsatForm", [&](QWidget* screen) {
        panelWhileOpen = f.main->filenamePanelText();
        screen->close();
    });
    f.item("menuFile(20)")->trigger();
    EXPECT_EQ(panelWhileOpen, "Filename: /data/two.mcu");
    EXPECT_EQ(f.data.modelType, "Unsaturated One Dimensional");  // survives Close after an unsaturated start
    EXPECT_EQ(f.main->filenamePanelText(), "Filename: ");
}

TEST(MainWindow, AScreenWhoseSavePromptSaysStayStaysOpen) {
    Watchdog dog;
    MainFixture f;
    f.files.reader = [](DataSet& d) {
        d.modelType = "One Dimensional";
        return true;
    };
    onModal("inputForm", [&](QWidget* screen) {
        f.files.promptAnswers = {false};
        screen->findChild<QPushButton*>("closeCB")->click();
        EXPECT_TRUE(screen->isVisible());
        screen->findChild<QAction*>("menuClose")->trigger();  // asked again: now it may go
        EXPECT_FALSE(screen->isVisible());
    });
    f.item("menuModel(1)")->trigger();
    EXPECT_EQ(f.files.prompts, 3);
}

TEST(MainWindow, InformationScreensAndPreferencesOpenModally) {
    Watchdog dog;
    MainFixture f;
    const std::vector<std::pair<const char*, const char*>> routes = {
        {"mnuInfo(1)", "aboutform"}, {"mnuInfo(2)", "frmDeclaimer"}, {"mnuHelp(2)", "OTSForm"},
        {"mnuHelp(3)", "aboutform"}, {"menuStatus", "statusForm"}};
    for (const auto& [item, screen] : routes) {
        QString title;
        onModal(screen, [&](QWidget* w) {
            title = w->windowTitle();
            saveShot(w, QString::fromLatin1(screen));
            w->close();
        });
        f.item(item)->trigger();
        EXPECT_FALSE(title.isEmpty()) << item;
        if (std::string(screen) == "aboutform") {
            EXPECT_EQ(title, "ORVA Version 9.1 for Microsoft Windows");
        }
        if (std::string(screen) == "statusForm") {
            EXPECT_EQ(title, "ORVA Preferences...");
        }
    }
}

TEST(MainWindow, HelpOpensContentsIndexAndTopics) {
    MainFixture f;
    f.item("mnuHelp(0)")->trigger();
    HelpViewer* viewer = helpViewer();
    ASSERT_NE(viewer, nullptr);
    viewer->showTopic(3100);
    saveShot(viewer, "help");
    viewer->showTopic(3000);
    EXPECT_TRUE(viewer->isVisible());
    EXPECT_EQ(viewer->currentTopic(), 3000);
    f.item("mnuInfo(3)")->trigger();
    EXPECT_EQ(helpViewer()->currentTopic(), 3900);
    f.item("mnuHelp(1)")->trigger();
    EXPECT_EQ(f.main->form().helpContext(), 3100);
    f.item("menuExit")->trigger();  // closes help and the program
    EXPECT_TRUE(waitFor([] { return helpViewer() == nullptr || !helpViewer()->isVisible(); }));
    EXPECT_TRUE(f.main->quitRequested());
    EXPECT_FALSE(f.main->isVisible());
}

TEST(MainWindow, ExitEndsAtOnceAndReturnToShellAsks) {
    {
        MainFixture f;
        f.item("menuFile(60)")->trigger();
        EXPECT_TRUE(f.main->quitRequested());
        EXPECT_TRUE(f.ui.messages.empty());
    }
    MainFixture f;
    f.ui.answers = {MessageAnswer::No};
    f.item("mnureturnshell")->trigger();
    EXPECT_EQ(f.ui.lastTitle(), "End Program");
    EXPECT_FALSE(f.main->quitRequested());
    f.ui.answers = {MessageAnswer::Yes};
    f.item("mnureturnshell")->trigger();
    EXPECT_TRUE(f.main->quitRequested());
}

TEST(MainWindow, ViewingWithoutATemporaryFolderNamesTheFile) {
    MainFixture f;
    fs::remove_all(f.root / "Trazel");
    f.item("menuCreate")->trigger();
    EXPECT_EQ(f.ui.lastTitle(), "Drive Read Only");
    std::string upper = (f.root / "Trazel" / "brenmoor.plt").string();
    for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    EXPECT_EQ(f.ui.lastText(), "Unable to find the output graph file: " + upper + ".");
    f.item("menuView")->trigger();
    EXPECT_EQ(f.ui.messages.size(), 2u);
    f.item("mnuExist(1)")->trigger();  // cancelled: nothing more
    EXPECT_EQ(f.ui.messages.size(), 2u);
    EXPECT_EQ(f.ui.fileDialogs.back().title, "Open Plot / Graph File");
    EXPECT_TRUE(f.ui.programStarts.empty());
}

TEST(MainWindow, AStartWithMissingPiecesWarnsAndStillComesUp) {
    MainFixture f(false);
    std::vector<std::string> titles;
    for (const auto& m : f.ui.messages) titles.push_back(m.title);
    EXPECT_EQ(titles, (std::vector<std::string>{"Missing Text Editor", "Missing Program Files", "Missing Program Files",
                                                "Missing Program Files", "Missing Program Files"}));
    EXPECT_TRUE(f.main->isVisible());
    EXPECT_FALSE(fs::exists(f.root / "orva.ini"));  // nothing created
    // Help without its file says so and opens nothing.
    f.item("mnuHelp(0)")->trigger();
    EXPECT_EQ(f.ui.lastTitle(), "Missing Program Files");
    EXPECT_EQ(helpViewer(), nullptr);
}

TEST(MainWindow, ATimeVaryingStartOffersItsOwnMenu) {
    Watchdog dog;
    MainFixture f(true, {"Time", "Varying"});
    EXPECT_EQ(f.main->windowTitle(), "Ground Water Contaminant Transport Model with Variable Dispersion Coefficients");
    EXPECT_TRUE(f.item("menuTimeVarying")->isVisible());
    onModal("timeVaryingNewForm", [&](QWidget* d) {
        d->findChild<QRadioButton*>("contaminantSourceO(1)")->click();
        d->findChild<QRadioButton*>("sourceTypeO(1)")->click();
        d->findChild<QRadioButton*>("DispersionCoefficientFunctionO(2)")->click();
        onModal("merlaform", [&](QWidget* s) {
            EXPECT_EQ(f.data.contaminantType, "Line (continuous)");
            EXPECT_EQ(f.data.aquiferType, "Asymptotic");
            s->close();
        });
        d->findChild<QPushButton*>("okCB")->click();
    });
    f.item("menuFile(10)")->trigger();
    EXPECT_EQ(f.data.modelType, "Time Varying");  // a time-varying start stays in its type
}

TEST(MainWindow, PrintOpensThePlatformPrintDialog) {
    Watchdog dog;
    MainFixture f;
    for (const char* item : {"menuFile(50)", "menuPrinterSetup"}) {
        bool shown = false;
        onModal("CMDialog1", [&](QWidget* w) {
            shown = true;
            qobject_cast<QDialog*>(w)->reject();
        });
        if (std::string(item) == "menuFile(50)")
            f.main->form().menuFileClick(50);  // index 50 has no visible item in the released menu
        else
            f.item(item)->trigger();
        EXPECT_TRUE(shown) << item;
    }
}

// ================================================================ desktop conventions

TEST(MainWindow, CommandLineWordsThatNameADataFile) {
    testkit::TempDir dir;
    const fs::path model = dir.path() / "gas works.two";
    testkit::writeFileBytes(model, "Version 9.1\r\n");
    EXPECT_EQ(MainWindow::dataFileOnCommandLine({}), "");
    EXPECT_EQ(MainWindow::dataFileOnCommandLine({"Time", "Varying"}), "");
    EXPECT_EQ(MainWindow::dataFileOnCommandLine({"Unsaturated One Dimensional"}), "");
    EXPECT_EQ(MainWindow::dataFileOnCommandLine({"unsaturated"}), "");
    EXPECT_EQ(MainWindow::dataFileOnCommandLine({"Constant"}), "");  // a stray word starts the workbench as before
    // A path with a blank may arrive as two words.
    EXPECT_EQ(MainWindow::dataFileOnCommandLine({(dir.path() / "gas").string(), "works.two"}), model.string());
    EXPECT_EQ(MainWindow::dataFileOnCommandLine({model.string()}), model.string());
    // A model's extension is enough: File > Open then says the file is not there.
    EXPECT_EQ(MainWindow::dataFileOnCommandLine({"/no/such/model.TRI"}), "/no/such/model.TRI");
    const QString wasCurrent = QDir::currentPath();
    QDir::setCurrent(QString::fromStdString(dir.path().string()));
    EXPECT_EQ(MainWindow::dataFileOnCommandLine({"plume.one"}), (dir.path() / "plume.one").string());
    QDir::setCurrent(wasCurrent);
}

TEST(MainWindow, ADataFileOnTheCommandLineIsOpenedAsFileOpenDoes) {
    Watchdog dog;
    testkit::TempDir dir;
    const fs::path model = dir.path() / "sample1.two";
    fs::copy_file(testkit::sourceDir() / "data" / "sampldat" / "sample1.two", model);
    MainFixture f(true, {model.string()}, true);
    QString described, panel;
    onModal("inputForm", [&](QWidget* screen) {
        described = screen->findChild<QLabel*>("modelKindL")->text();
        panel = f.main->filenamePanelText();
        screen->close();
    });
    ASSERT_TRUE(waitFor([&] { return !described.isEmpty(); }, 5000));
    EXPECT_EQ(f.main->windowTitle(), "Ground Water Contaminant Transport Model with Constant Dispersion Coefficients");
    EXPECT_TRUE(described.contains("Model: Two Dimensional")) << described.toStdString();
    EXPECT_TRUE(described.contains(QString::fromStdString("File: " + model.string()))) << described.toStdString();
    EXPECT_EQ(panel.toStdString(), "Filename: " + model.string());
    EXPECT_TRUE(f.ui.fileDialogs.empty());  // no dialog was shown
    EXPECT_TRUE(f.ui.messages.empty());
}

TEST(MainWindow, AMissingFileOnTheCommandLineGetsFileOpensMessage) {
    Watchdog dog;
    MainFixture f(true, {"/no/such/plume.two"}, true);
    ASSERT_TRUE(waitFor([&] { return !f.ui.messages.empty(); }, 5000));
    EXPECT_EQ(f.ui.messages[0].title, "/no/such/plume.two not found!");
    EXPECT_EQ(f.main->filenamePanelText(), " Filename:");
}

TEST(MainWindow, TheUsualShortcutsLeaveTheCaptionsAlone) {
    MainFixture f;
    EXPECT_EQ(f.item("menuFile(10)")->shortcut(), QKeySequence(QKeySequence::New));
    EXPECT_EQ(f.item("menuFile(20)")->shortcut(), QKeySequence(QKeySequence::Open));
    EXPECT_EQ(f.item("menuFile(10)")->text(), "&New");
    EXPECT_EQ(f.item("menuFile(20)")->text(), "&Open...");
    EXPECT_TRUE(f.item("menuFile(40)")->shortcut().isEmpty());
}
