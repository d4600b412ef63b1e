#include <gtest/gtest.h>

#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "model/app_state.h"
#include "testing/qt_test_support.h"
#include "shell/settings_file.h"
#include "shell/widgets/preferences_dialog.h"
#include "testing/scripted_user_interface.h"
#include "testing/test_paths.h"

using namespace bm;

TEST(PreferencesDialog, RowsHelpLinesPlotUtilityAndSave) {
    testkit::TempDir dir;
    testkit::ScriptedUserInterface ui;
    testkit::ScopedUserInterface scope(ui);
    AppState s;
    s.appPath = dir.file("suite/brenmoor");
    s.suiteRoot = dir.file("suite");
    s.iniFilePath = dir.file("orva.ini");
    s.currentDirectory = dir.path().string();
    applyDefaultSettings(s, s.suiteRoot, "/usr/bin/");
    PreferencesDialog d(s);
    EXPECT_EQ(d.windowTitle(), "ORVA Preferences...");
    EXPECT_EQ(d.findChild<QLineEdit*>("pathTB(2)")->text().toStdString(), s.temporaryDataPath);
    EXPECT_TRUE(d.findChild<QLabel*>("freeSpaceL")->text().endsWith(" KBytes"));

    QEvent enter(QEvent::Enter);
    QApplication::sendEvent(d.findChild<QPushButton*>("pathCB(4)"), &enter);
    EXPECT_EQ(d.helpLine(), "Change data directory of Ground Water Models by clicking button");
    QApplication::sendEvent(d.findChild<QLineEdit*>("pathTB(4)"), &enter);
    EXPECT_EQ(d.helpLine(), "Change data directory of Ground Water Models");
    QApplication::sendEvent(d.findChild<QRadioButton*>("optTrazel(1)"), &enter);
    EXPECT_EQ(d.helpLine(), "Select new version by clicking radio button");

    EXPECT_TRUE(d.findChild<QRadioButton*>("optTrazel(0)")->isChecked());
    d.findChild<QRadioButton*>("optTrazel(1)")->click();
    EXPECT_EQ(s.graphUtilityPath, dir.file("suite/trazel/trazel1"));

    auto* editor = d.findChild<QLineEdit*>("pathTB(0)");
    editor->setFocus();
    editor->selectAll();
    editor->clear();
    editor->insert("/usr/bin/gedit");
    emit editor->textEdited(editor->text());
    EXPECT_EQ(s.textEditorPath, "/usr/bin/gedit");
    d.findChild<QPushButton*>("saveCB")->click();
    EXPECT_EQ(testkit::readFileBytes(dir.file("orva.ini")), settingsFileText(s));
    d.findChild<QPushButton*>("closeCB")->click();
    EXPECT_TRUE(ui.messages.empty());  // nothing left unsaved
}

TEST(PreferencesDialog, LeavingWithUnsavedChangesAsks) {
    testkit::TempDir dir;
    testkit::ScriptedUserInterface ui;
    testkit::ScopedUserInterface scope(ui);
    AppState s;
    s.appPath = dir.file("suite/brenmoor");
    s.iniFilePath = dir.file("orva.ini");
    applyDefaultSettings(s, dir.file("suite"), "/usr/bin/");
    PreferencesDialog d(s);
    d.findChild<QRadioButton*>("optTrazel(1)")->click();
    ui.answers = {MessageAnswer::Yes};
    d.reject();
    EXPECT_EQ(ui.lastTitle(), "Save changes");
    EXPECT_EQ(testkit::readFileBytes(dir.file("orva.ini")), settingsFileText(s));
}
