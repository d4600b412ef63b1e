#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QFileDialog>
#include <QLabel>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <cstdio>

#include "testing/qt_test_support.h"
#include "shell/base/error_handler.h"
#include "shell/widgets/qt_user_interface.h"
#include "testing/test_paths.h"

using namespace bm;
using namespace bm::qtest;

TEST(QtFilters, CaptionsKeepTheirWordsAndPatternsTakeQtsForm) {
    const QStringList all = qtNameFilters(
        "One Dim (*.one)|*.one|Two Dim (*.two)|*.two|Three Dim (*.tri)|*.tri|Single Chemical (*.one;*.two;*.tri)|*.one;"
        "*.two;*.tri|Multi-Checmical 1-Dim (*.mc1)|*.mc1|Multi-Checmical 2-Dim  (*.mc2)|*.mc2|Multi-Checmical 3-Dim  "
        "(*.mc3)|*.mc3|Multi-Chemical (*.mc1;*.mc2;*.mc3)|*.mc1;*.mc2;*.mc3|Ground Water "
        "(*.one;*.two;*.tri;*.mc1;*.mc2;*.mc3)|*.one;*.two;*.tri;*.mc1;*.mc2;*.mc3|All Files (*.*)|*.*");
    EXPECT_EQ(all, (QStringList{"One Dim (*.one)", "Two Dim (*.two)", "Three Dim (*.tri)",
                                "Single Chemical (*.one *.two *.tri)", "Multi-Checmical 1-Dim (*.mc1)",
                                "Multi-Checmical 2-Dim  (*.mc2)", "Multi-Checmical 3-Dim  (*.mc3)",
                                "Multi-Chemical (*.mc1 *.mc2 *.mc3)",
                                "Ground Water (*.one *.two *.tri *.mc1 *.mc2 *.mc3)", "All Files (*)"}));
    EXPECT_EQ(qtNameFilters("Unsaturated One Dim (*.u1d)|*.u1d|Unsatured Multi-Chemical 1-Dim (*.mcu)|*.mcu|Unsatured "
                            "Ground Water (*.u1d;*.mcu)|*.u1d;*.mcu|All Files (*.*)|*.*"),
              (QStringList{"Unsaturated One Dim (*.u1d)", "Unsatured Multi-Chemical 1-Dim (*.mcu)",
                           "Unsatured Ground Water (*.u1d *.mcu)", "All Files (*)"}));
    // A caption without its patterns in brackets gets them.
    EXPECT_EQ(qtNameFilters("Data Files (*.dat)|*.dat|All Files|*.*"),
              (QStringList{"Data Files (*.dat)", "All Files (*)"}));
    EXPECT_TRUE(qtNameFilters("").isEmpty());
    EXPECT_TRUE(qtNameFilters("odd").isEmpty());
}

TEST(QtUserInterface, AMessageBoxShowsIconTitleTextAndDefault) {
    Watchdog dog;
    QtUserInterface ui;
    onModal("messageBox", [](QWidget* w) {
        auto* box = qobject_cast<QMessageBox*>(w);
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->windowTitle(), "Data Not Saved");
        EXPECT_EQ(box->text(), "One Dimensional Model parameters and results has been changed. \n\nWould you like?");
        EXPECT_EQ(box->icon(), QMessageBox::Question);
        ASSERT_EQ(box->buttons().size(), 3);
        EXPECT_EQ(box->defaultButton(), box->button(QMessageBox::No));
        box->button(QMessageBox::Cancel)->click();
    });
    const auto answer = ui.message(MessageIcon::Question, MessageButtons::YesNoCancel, "Data Not Saved",
                                   "One Dimensional Model parameters and results has been changed. \r\rWould you like?", 1);
    EXPECT_EQ(answer, MessageAnswer::Cancel);
}

TEST(QtUserInterface, TheOverwriteQuestionAnswersYesAndNo) {
    Watchdog dog;
    QtUserInterface ui;
    for (auto [button, expected] : {std::pair{QMessageBox::Yes, kResume}, std::pair{QMessageBox::No, kLeave}}) {
        onModal("messageBox", [b = button](QWidget* w) {
            auto* box = qobject_cast<QMessageBox*>(w);
            EXPECT_EQ(box->windowTitle(), "Overwrite File");
            EXPECT_EQ(box->text(), "/d/a.one already exists. \n Replace existing file?");
            EXPECT_EQ(box->icon(), QMessageBox::Warning);
            box->button(b)->click();
        });
        EXPECT_EQ(handleError(58, "Save", "/d/a.one", ui), expected);
    }
}

TEST(QtUserInterface, ClosingABoxGivesItsCancelAnswer) {
    Watchdog dog;
    QtUserInterface ui;
    onModal("messageBox", [](QWidget* w) { w->close(); });
    EXPECT_EQ(ui.message(MessageIcon::Exclamation, MessageButtons::OkCancel, "t", "x"), MessageAnswer::Cancel);
}

TEST(QtUserInterface, LoggedMessagesShowNoBox) {
    testkit::TempDir dir;
    std::FILE* f = std::fopen(dir.file("log").c_str(), "w");
    QtUserInterface ui;
    ui.logMessagesTo(f);
    EXPECT_EQ(ui.message(MessageIcon::Critical, MessageButtons::YesNo, "Title", "a\r\rb", 1), MessageAnswer::No);
    std::fclose(f);
    EXPECT_EQ(testkit::readFileBytes(dir.file("log")), "Title: a  b\n");
}

namespace {
QStringList listedNames(QFileDialog* dialog) {
    QStringList names;
    auto* view = dialog->findChild<QListView*>("listView");
    if (!view || !view->model()) return names;
    const QModelIndex root = view->rootIndex();
    for (int r = 0; r < view->model()->rowCount(root); ++r)
        names << view->model()->index(r, 0, root).data().toString();
    return names;
}
// selectFile leaves the name field alone while that field has the focus,
// which it gets once the window is active (sooner or later, by the machine's
// load): the focus comes off it first.
void chooseFile(QFileDialog* d, const QString& path) {
    if (QWidget* focused = d->focusWidget()) focused->clearFocus();
    d->selectFile(path);
}
}  // namespace

TEST(QtUserInterface, AnOpenDialogHasTheRequestAndReturnsTheChoice) {
    Watchdog dog;
    testkit::TempDir dir;
    testkit::writeFileBytes(dir.file("a.u1d"), "x");
    testkit::writeFileBytes(dir.file("b.U1D"), "x");
    testkit::writeFileBytes(dir.file("c.mcu"), "x");
    QtUserInterface ui;
    FileDialogRequest r;
    r.title = "Open Data File";
    r.filter = "Unsaturated One Dim (*.u1d)|*.u1d|Unsatured Multi-Chemical 1-Dim (*.mcu)|*.mcu|All Files (*.*)|*.*";
    r.filterIndex = 1;
    r.initialDirectory = dir.path().string();
    QStringList seen;
    onModal("CMDialog1", [&](QWidget* w) {
        auto* d = qobject_cast<QFileDialog*>(w);
        ASSERT_NE(d, nullptr);
        EXPECT_EQ(d->windowTitle(), "Open Data File");
        EXPECT_EQ(d->selectedNameFilter(), "Unsaturated One Dim (*.u1d)");
        EXPECT_EQ(d->directory().absolutePath().toStdString(), dir.path().string());
        EXPECT_EQ(d->fileMode(), QFileDialog::ExistingFile);
        waitFor([&] { return listedNames(d).size() >= 2; });
        seen = listedNames(d);
        const QString wanted = QString::fromStdString(dir.file("b.U1D"));
        chooseFile(d, wanted);
        EXPECT_TRUE(waitFor([&] { return d->selectedFiles() == QStringList{wanted}; }))
            << d->selectedFiles().join(",").toStdString() << " in " << d->directory().absolutePath().toStdString() << " listed " << listedNames(d).join(",").toStdString();
        static_cast<QDialog*>(d)->accept();
    });
    const auto chosen = ui.askFile(r);
    ASSERT_TRUE(chosen);
    EXPECT_EQ(*chosen, dir.file("b.U1D"));
    // The upper-case extension of a saved unsaturated model is listed under the lower-case pattern.
    seen.sort();
    EXPECT_EQ(seen, (QStringList{"a.u1d", "b.U1D"}));
}

TEST(QtUserInterface, ASaveDialogAddsTheDefaultExtensionAndCancelGivesNothing) {
    Watchdog dog;
    testkit::TempDir dir;
    QtUserInterface ui;
    FileDialogRequest r;
    r.kind = FileDialogRequest::Kind::Save;
    r.title = "Save Data File As";
    r.filter = "One Dim (*.one)|*.one|All Files (*.*)|*.*";
    r.initialDirectory = dir.path().string();
    r.initialFileName = "*.one";
    r.defaultExtension = ".one";
    onModal("CMDialog1", [&](QWidget* w) {
        auto* d = qobject_cast<QFileDialog*>(w);
        EXPECT_EQ(d->acceptMode(), QFileDialog::AcceptSave);
        EXPECT_TRUE(d->testOption(QFileDialog::DontConfirmOverwrite));
        chooseFile(d, QString::fromStdString(dir.file("model")));
        static_cast<QDialog*>(d)->accept();
    });
    EXPECT_EQ(ui.askFile(r).value_or("cancelled"), dir.file("model.one"));
    onModal("CMDialog1", [](QWidget* w) { qobject_cast<QDialog*>(w)->reject(); });
    EXPECT_FALSE(ui.askFile(r));
}

TEST(QtUserInterface, BusyPointerProgressAndEvents) {
    QtUserInterface ui;
    ui.setBusy(true);
    ui.setBusy(true);  // no second layer
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    ui.setBusy(false);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);

    double total = 0, done = 0;
    ui.setProgressSink(ProgressOwner::InputForm, [&](double t, double d) {
        total = t;
        done = d;
    });
    bool stopPressed = false;
    QTimer::singleShot(0, [&] { stopPressed = true; });  // a click waiting in the queue
    ui.reportProgress(ProgressOwner::InputForm, 200, 50);
    EXPECT_EQ(total, 200);
    EXPECT_EQ(done, 50);
    EXPECT_TRUE(stopPressed);
    ui.setProgressSink(ProgressOwner::InputForm, nullptr);
    ui.reportProgress(ProgressOwner::InputForm, 200, 60);
    EXPECT_EQ(done, 50);
}

TEST(QtUserInterface, ProgramsStartWithoutWaiting) {
    QtUserInterface ui;
    EXPECT_TRUE(ui.startProgram("/bin/true", {"a file with blanks.plt"}));
    EXPECT_FALSE(ui.startProgram("/no/such/program", {}));
}
