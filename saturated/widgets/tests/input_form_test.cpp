// inputForm on the screen: its controls by name in the three layouts, typing
// into rows through the key filter, the grid growing and shrinking, the locked
// Monte Carlo cells, a run stopped half way, a unit change, the note pad, bad
// input of every kind, and the printed report as a PDF.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTest>
#include <memory>

#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/ordered_batches.h"
#include "saturated/tests/input_form_test_models.h"
#include "testing/one_dim_test_model.h"
#include "saturated/widgets/input_form.h"
#include "shell/widgets/progress_picture.h"
#include "shell/widgets/term_grid_view.h"
#include "shell/base/common_services.h"
#include "shell/widgets/model_screens.h"
#include "testing/is_close.h"
#include "testing/test_paths.h"
#include "testing/model_screen_fixture.h"
#include "testing/qt_test_support.h"

namespace bm {
namespace {

using testkit::ScriptedUserInterface;

using qtest::settle;

class InputFormScreen : public testkit::ModelScreenFixture<InputForm> {
protected:
    void TearDown() override {
        ModelScreenFixture::TearDown();
        shiftHeld = false;
    }
    QLineEdit* entry(int row) { return form->rowEntry(form->model().dimension(), row); }
    // Focus on a row with its text selected, as a click and Ctrl+A would leave it.
    void focusRow(int row) {
        entry(row)->setFocus(Qt::MouseFocusReason);
        entry(row)->selectAll();
        settle();
    }
    void typeInto(int row, const QString& text) {
        focusRow(row);
        QTest::keyClicks(entry(row), text);
    }
    void leaveRow(int row) {
        QTest::keyClick(entry(row), Qt::Key_Tab);
        settle();
    }
};

// ================================================================ the controls by name

TEST_F(InputFormScreen, OneDimensionalLayoutCarriesTheControlNames) {
    open(testkit::oneDimScreenModel());
    for (const char* name : {"mainElastic", "TabElastic", "MonteCarloElastic", "HelpPanel", "pictureDest", "stopCB",
                             "LabelResult1D", "TitleTB", "AuthorTB", "CommentsTB", "TitleE", "authorE", "CommentsE",
                             "ModelE", "AquiferE", "ContaminantE", "OneDimTab", "Input1TG"})
        EXPECT_NE(form->findChild<QWidget*>(QString::fromLatin1(name)), nullptr) << name;
    for (int i = 0; i <= 10; ++i) {
        EXPECT_NE(form->findChild<QLabel*>(QStringLiteral("Text1Panel(%1)").arg(i)), nullptr) << i;
        EXPECT_NE(form->findChild<QLabel*>(QStringLiteral("Text1Units(%1)").arg(i)), nullptr) << i;
        if (i != 9) {
            EXPECT_NE(form->findChild<QLineEdit*>(QStringLiteral("Text1(%1)").arg(i)), nullptr) << i;
        }
    }
    EXPECT_EQ(form->findChild<QLineEdit*>(QStringLiteral("Text1(9)")), nullptr);
    EXPECT_EQ(form->windowTitle(), QStringLiteral("Ground Water Model (Saturated) -- FileName: "));
    QTabWidget* tabs = form->tabSet(1);
    ASSERT_EQ(tabs->count(), 3);
    EXPECT_EQ(tabs->tabText(0), QStringLiteral("Coor&dinates"));
    EXPECT_EQ(tabs->tabText(1), QStringLiteral("&Boundary Conditions"));
    EXPECT_EQ(tabs->tabText(2), QStringLiteral("Fi&eld and Chemical Constants"));
    EXPECT_TRUE(tabs->isVisible());
    EXPECT_FALSE(form->tabSet(2)->isVisible());
    EXPECT_EQ(entry(0)->text(), QStringLiteral("0.3"));
    EXPECT_EQ(form->rowCaption(1, 0)->text(), QStringLiteral(" Ground Water Darcy Velocity (V)"));
    EXPECT_EQ(form->rowUnits(1, 0)->text(), QStringLiteral("(m/day)"));
    EXPECT_EQ(form->grid(1)->horizontalHeaderItem(0)->text(), QStringLiteral("Time (day)"));
    EXPECT_EQ(form->grid(1)->horizontalHeaderItem(1)->text(),
              QStringLiteral("Contaminant Conc. at Inflow Boundary (mg/l)"));
    for (const char* name : {"mnuFile(10)", "mnuFile(20)", "mnuFile(30)", "mnuFile(35)", "mnuFile(40)", "mnuFile(50)",
                             "menuFile(10)", "menuFile(20)", "menuFile(30)", "menuFile(40)", "menuFile(45)",
                             "menuFile(50)", "menuFile(60)", "menuFile(70)", "menuResults(10)", "menuResults(20)",
                             "menuLength(10)", "menuTime(40)", "menuConc(30)", "menuMonteCarlo(10)",
                             "menuMonteCarlo(20)", "menuMonteCarlo(30)"})
        EXPECT_NE(form->menuItem(QString::fromLatin1(name)), nullptr) << name;
    EXPECT_TRUE(form->menuItem(QStringLiteral("menuLength(30)"))->isChecked());
    EXPECT_FALSE(form->progressPicture()->isVisible());
    EXPECT_FALSE(form->stopButton()->isVisible());
}

TEST_F(InputFormScreen, TwoAndThreeDimensionalLayouts) {
    open(testkit::twoDimScreenModel("Infinite", "Continuous / Point"));
    EXPECT_TRUE(form->tabSet(2)->isVisible());
    EXPECT_NE(form->findChild<QWidget*>(QStringLiteral("Input2TG")), nullptr);
    EXPECT_NE(form->findChild<QLabel*>(QStringLiteral("LabelResult2D")), nullptr);
    EXPECT_EQ(form->rowCaption(2, 2)->text(), QStringLiteral(" Fluid Injection Rate Per Unit Aquifer Thickness (Q')"));
    EXPECT_TRUE(form->rowEntry(2, 10)->isEnabled());
    EXPECT_EQ(form->grid(2)->horizontalHeaderItem(1)->text(),
              QStringLiteral("Contaminant Conc. in the Injection Field (mg/l)"));
    form.reset();
    open(testkit::threeDimScreenModel());
    EXPECT_TRUE(form->tabSet(3)->isVisible());
    EXPECT_EQ(form->rowCaption(3, 7)->text(), QStringLiteral(" Height of Contaminant Source (Hs)"));
    EXPECT_EQ(form->rowEntry(3, 22)->text(), QStringLiteral("1"));
}

// ================================================================ typing

TEST_F(InputFormScreen, TypingGoesThroughTheKeyFilter) {
    open(testkit::oneDimScreenModel());
    data.dataState = kDataUnchanged;
    typeInto(0, QStringLiteral("0.45"));
    EXPECT_EQ(entry(0)->text(), QStringLiteral("0.45"));
    EXPECT_EQ(form->model().row(0).text, "0.45");
    EXPECT_EQ(data.dataState, kParametersChanged);
    // letters are refused, the exponent and the range signs pass
    typeInto(1, QStringLiteral("a1b.5e-3:x"));
    EXPECT_EQ(entry(1)->text(), QStringLiteral("1.5e-3:"));
    // a capital letter is refused, but with Shift held nothing is
    typeInto(2, QStringLiteral("A"));
    EXPECT_EQ(entry(2)->text(), QStringLiteral("10"));
    focusRow(2);
    QTest::keyClicks(entry(2), QStringLiteral("A"), Qt::ShiftModifier);
    EXPECT_EQ(entry(2)->text(), QStringLiteral("A"));
}

TEST_F(InputFormScreen, LeavingARangeInBadFormatKeepsTheFocusThere) {
    open(testkit::oneDimScreenModel());
    typeInto(3, QStringLiteral("0:10"));
    leaveRow(3);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Input Error");
    ASSERT_TRUE(qtest::waitFor([&] { return entry(3)->hasFocus(); }));
    EXPECT_EQ(form->tabSet(1)->currentIndex(), kCoordinatesTab);
    typeInto(3, QStringLiteral("0:20:2:8"));
    leaveRow(3);
    EXPECT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(form->rowEntry(1, 6)->text(), QStringLiteral("8"));  // the point row took the Constant
}

TEST_F(InputFormScreen, EnterMovesOnLikeTab) {
    open(testkit::oneDimScreenModel());
    focusRow(0);
    QTest::keyClick(entry(0), Qt::Key_Return);
    settle();
    EXPECT_FALSE(entry(0)->hasFocus());
}

// ================================================================ the grid grows and shrinks

TEST_F(InputFormScreen, GridGrowsAndShrinksWithTheSuperpositionIndex) {
    open(testkit::oneDimScreenModel());
    form->tabSet(1)->setCurrentIndex(kBoundaryTab);
    typeInto(5, QStringLiteral("3"));
    leaveRow(5);
    TermGridView* grid = form->grid(1);
    ASSERT_EQ(grid->rowCount(), 3);
    EXPECT_EQ(grid->item(0, 1)->text(), QStringLiteral("1"));
    EXPECT_EQ(grid->item(2, 0)->text(), QString());
    grid->item(1, 0)->setText(QStringLiteral("2"));  // as an edit commits it
    grid->item(1, 1)->setText(QStringLiteral("0.5"));
    EXPECT_EQ(form->model().grid().cells[1], (Term{"2", "0.5"}));
    typeInto(5, QStringLiteral("2"));
    leaveRow(5);
    ASSERT_EQ(grid->rowCount(), 2);
    EXPECT_EQ(grid->item(1, 1)->text(), QStringLiteral("0.5"));
    typeInto(5, QStringLiteral("1"));
    leaveRow(5);
    EXPECT_EQ(grid->rowCount(), 1);
    EXPECT_EQ(grid->item(0, 0)->text(), QStringLiteral("0"));
    typeInto(5, QStringLiteral("0"));
    leaveRow(5);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Improper input value");
    EXPECT_EQ(grid->rowCount(), 1);
}

TEST_F(InputFormScreen, GridEditorTakesNumbersOnly) {
    open(testkit::oneDimScreenModel());
    form->tabSet(1)->setCurrentIndex(kBoundaryTab);
    settle();
    TermGridView* grid = form->grid(1);
    grid->setFocus();
    grid->setCurrentCell(0, 1);
    grid->editItem(grid->item(0, 1));
    settle();
    auto* editor = grid->viewport()->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    QTest::keyClicks(editor, QStringLiteral("x2y.5"));
    QTest::keyClick(editor, Qt::Key_Return);
    settle();
    EXPECT_EQ(grid->item(0, 1)->text(), QStringLiteral("2.5"));
    EXPECT_EQ(form->model().grid().cells[0].concentration, "2.5");
}

// ================================================================ locked Monte Carlo values

TEST_F(InputFormScreen, LockedRowsAndCellsRefuseEdits) {
    DataSet d = testkit::oneDimScreenModel();
    d.velocity = formFieldMarker("0.3", 1);
    d.terms(1).concentration = boundaryCellMarker("1", 2, kWideCellMarkerPadding);
    open(d);
    EXPECT_EQ(form->findChild<QLabel*>(QStringLiteral("MonteCarloElastic"))->text(), QStringLiteral("Monte Carlo"));
    // the visible word of the marker is what the row shows
    EXPECT_EQ(entry(0)->cursorPosition(), 0);
    EXPECT_TRUE(entry(0)->displayText().startsWith(QStringLiteral("Monte Carlo")));

    entry(0)->setFocus();
    settle();
    QTest::keyClicks(entry(0), QStringLiteral("5"));
    settle();
    ASSERT_GE(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Read Only");
    EXPECT_TRUE(holdsMonteMarker(form->model().row(0).text));
    EXPECT_FALSE(entry(0)->hasFocus());  // typing sent a Tab

    ui.messages.clear();
    QTest::mouseClick(form->rowCaption(1, 0), Qt::LeftButton);
    QTest::mouseClick(form->rowUnits(1, 0), Qt::LeftButton);
    ASSERT_EQ(ui.messages.size(), 2u);
    EXPECT_EQ(ui.messages[1].text,
              "Monte Carlo selected values for  Ground Water Darcy Velocity (V) are read only.\r\rTo unselect a monte "
              "carlo option please use Generate from the Monte Carlo menu.");

    form->tabSet(1)->setCurrentIndex(kBoundaryTab);
    settle();
    TermGridView* grid = form->grid(1);
    EXPECT_EQ(grid->cellStyle(0, 1), QStringLiteral("MonteCarloStyle1"));
    EXPECT_EQ(grid->item(0, 1)->foreground().color(), QColor(255, 0, 0));
    EXPECT_EQ(grid->cellStyle(0, 0), QString());
    ui.messages.clear();
    grid->setCurrentCell(0, 1);
    grid->editItem(grid->item(0, 1));
    settle();
    EXPECT_EQ(grid->viewport()->findChild<QLineEdit*>(), nullptr);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].text,
              "Monte Carlo selected values for Contaminant Conc. at Inflow Boundary are read only.\r\rTo unselect a "
              "monte carlo option please use Generate from the Monte Carlo menu.");
}

// ================================================================ the run on the screen

TEST_F(InputFormScreen, RunStoppedHalfWayLeavesTheGridAsTheRunRulesSay) {
    open(testkit::oneDimScreenModel());
    bool sawProgress = false;
    QString percent;
    onPoint = [&](const ScriptedUserInterface::Progress& p) {
        if (p.done != 30) return;
        sawProgress = form->progressPicture()->isVisible() && form->stopButton()->isVisible() &&
                      !form->findChild<QWidget*>(QStringLiteral("mainElastic"))->isEnabled() &&
                      !form->menuItem(QStringLiteral("mnuFile(20)"))->isEnabled();
        percent = form->progressPicture()->text();
        ui.answers.push_back(MessageAnswer::Yes);
        QTest::mouseClick(form->stopButton(), Qt::LeftButton);
    };
    form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
    settle();
    EXPECT_TRUE(sawProgress);
    EXPECT_EQ(percent, QStringLiteral("45%"));  // 30 of 66 points
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Stop Calculation");
    const double lambda = std::log(2.0) / 10.0;
    for (int ti = 1; ti <= 6; ++ti)
        for (int xi = 1; xi <= 11; ++xi) {
            const double v = data.result1D(xi, ti);
            if ((ti - 1) * 11 + xi <= 30)
                EXPECT_CLOSE(v, testkit::semiInfiniteDirichletReference(1, 0.5, lambda, xi - 1, ti - 1), 1e-10, 0);
            else
                EXPECT_EQ(v, 0.0);
        }
    EXPECT_EQ(form->resultLabel(1)->text(), QStringLiteral("Regular"));
    EXPECT_FALSE(form->progressPicture()->isVisible());
    EXPECT_FALSE(form->stopButton()->isVisible());
    EXPECT_TRUE(form->findChild<QWidget*>(QStringLiteral("mainElastic"))->isEnabled());
    EXPECT_TRUE(form->menuItem(QStringLiteral("mnuFile(30)"))->isEnabled());
}

TEST_F(InputFormScreen, FinishedRunShowsTheValueAtThePoint) {
    open(testkit::oneDimScreenModel());
    form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
    settle();
    const double lambda = std::log(2.0) / 10.0;
    EXPECT_EQ(form->resultLabel(1)->text().toStdString(),
              formatNumber(testkit::semiInfiniteDirichletReference(1, 0.5, lambda, 10, 5)));
    EXPECT_EQ(form->tabSet(1)->findChild<QLabel*>(QStringLiteral("Label5"))->text(), QStringLiteral("Computed at"));
}

TEST_F(InputFormScreen, ALongRunCanAlwaysBeStopped) {
    DataSet d = testkit::oneDimScreenModel();
    d.xRange = "0:3000:0.1";  // 30001 x 6 points
    d.mcAtX = "3000";
    open(d);
    int points = 0;
    onPoint = [&](const ScriptedUserInterface::Progress& p) {
        points = static_cast<int>(p.done);
        if (p.done == 500) {
            ui.answers.push_back(MessageAnswer::Yes);
            QTest::mouseClick(form->stopButton(), Qt::LeftButton);
        }
    };
    form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
    settle();
    EXPECT_EQ(points, 500);
    EXPECT_EQ(data.calculationMode, "Regular");
    EXPECT_TRUE(form->findChild<QWidget*>(QStringLiteral("mainElastic"))->isEnabled());
}

// A long run on several threads: the progress picture moves and repaints
// between batches, Stop is honoured at the next batch boundary, and the grid
// left is the one a run on one thread stopped at that same point leaves.
TEST_F(InputFormScreen, ALongRunOnSeveralThreadsStoppedHalfWayLeavesTheGridOfOneThreadStoppedThere) {
    DataSet d = testkit::oneDimScreenModel();
    d.xRange = "0:3000:0.1";  // 30001 x 6 points
    d.mcAtX = "3000";
    const double total = 30001.0 * 6.0;

    double stoppedAt = 0;
    std::vector<QString> percents;
    int reportsAfterStop = 0;
    {
        const ScopedCalculationThreads threads(3);
        open(d);
        onPoint = [&](const ScriptedUserInterface::Progress& p) {
            if (stoppedAt > 0) ++reportsAfterStop;
            percents.push_back(form->progressPicture()->text());
            if (stoppedAt == 0 && p.done >= total / 2 && p.done < total) {
                stoppedAt = p.done;
                EXPECT_TRUE(form->progressPicture()->isVisible());
                ui.answers.push_back(MessageAnswer::Yes);
                QTest::mouseClick(form->stopButton(), Qt::LeftButton);
            }
        };
        form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
        settle();
    }
    ASSERT_GT(stoppedAt, 0.0) << "no progress report between half way and the end";
    EXPECT_EQ(reportsAfterStop, 0);  // Stop came in at the boundary after the click
    ASSERT_GT(percents.size(), 2u);
    EXPECT_NE(percents.front(), percents.back());  // the picture moved
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Stop Calculation");
    const Array<double, 2> stoppedOnThreads = data.result1D;
    const std::string modeOnThreads = data.calculationMode;
    const QString labelOnThreads = form->resultLabel(1)->text();
    EXPECT_TRUE(form->findChild<QWidget*>(QStringLiteral("mainElastic"))->isEnabled());

    // The same run on one thread, stopped when the same number of points is done.
    form->hide();
    form.reset();
    ui.messages.clear();
    ui.answers.clear();
    double stoppedOneAt = 0;
    {
        const ScopedCalculationThreads thread(1);
        open(d);
        onPoint = [&](const ScriptedUserInterface::Progress& p) {
            if (p.done == stoppedAt) {
                stoppedOneAt = p.done;
                ui.answers.push_back(MessageAnswer::Yes);
                QTest::mouseClick(form->stopButton(), Qt::LeftButton);
            }
        };
        form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
        settle();
    }
    ASSERT_EQ(stoppedOneAt, stoppedAt);
    EXPECT_EQ(data.result1D, stoppedOnThreads);
    EXPECT_EQ(data.calculationMode, modeOnThreads);
    EXPECT_EQ(form->resultLabel(1)->text(), labelOnThreads);

    // Half the grid or more was computed and the rest left at 0.
    const int nx = 30001;
    const int kept = static_cast<int>(stoppedAt);
    EXPECT_NE(stoppedOnThreads(1, (kept - 1) / nx + 1), 0.0);  // the inlet of the last time reached
    for (int at = kept; at < nx * 6; ++at) ASSERT_EQ(stoppedOnThreads(at % nx + 1, at / nx + 1), 0.0) << at;
}

// ================================================================ units

TEST_F(InputFormScreen, UnitChangeRelabelsEveryLabelAndNoValue) {
    open(testkit::threeDimScreenModel());
    std::vector<QString> before;
    for (int i = 0; i <= 22; ++i)
        if (QLineEdit* e = form->rowEntry(3, i)) before.push_back(e->text());
    form->menuItem(QStringLiteral("menuLength(10)"))->trigger();
    form->menuItem(QStringLiteral("menuTime(10)"))->trigger();
    settle();
    std::vector<QString> after;
    for (int i = 0; i <= 22; ++i) {
        if (QLineEdit* e = form->rowEntry(3, i)) after.push_back(e->text());
        const QString unit = form->rowUnits(3, i)->text();
        EXPECT_FALSE(unit.contains(QStringLiteral("(m")) || unit.contains(QStringLiteral("day"))) << unit.toStdString();
    }
    EXPECT_EQ(before, after);
    EXPECT_EQ(form->rowUnits(3, 8)->text(), QStringLiteral("(ft/yr)"));
    EXPECT_EQ(form->rowUnits(3, 10)->text(), QStringLiteral("(ft\u00b2/yr)"));
    EXPECT_EQ(form->rowUnits(3, 3)->text(), QStringLiteral("(yr)"));
    EXPECT_EQ(form->grid(3)->horizontalHeaderItem(0)->text(), QStringLiteral("Time (yr)"));
    EXPECT_TRUE(form->menuItem(QStringLiteral("menuLength(10)"))->isChecked());
    EXPECT_FALSE(form->menuItem(QStringLiteral("menuLength(30)"))->isChecked());
}

// ================================================================ notes

TEST_F(InputFormScreen, NotePadEditsTheTitle) {
    open(testkit::oneDimScreenModel());
    qtest::onModal(QStringLiteral("Notes"), [](QWidget* w) {
        EXPECT_EQ(w->windowTitle(), QStringLiteral("TITLE"));
        auto* cell = w->findChild<QPlainTextEdit*>(QStringLiteral("NotesText"));
        cell->setPlainText(QStringLiteral("Long title of the plume study"));
        QTest::mouseClick(w->findChild<QPushButton*>(QStringLiteral("okCB")), Qt::LeftButton);
    });
    QTest::mouseClick(form->findChild<QLabel*>(QStringLiteral("TitleE")), Qt::LeftButton);
    settle();
    EXPECT_EQ(form->findChild<QLineEdit*>(QStringLiteral("TitleTB"))->text(),
              QStringLiteral("Long title of the plume study"));
    EXPECT_EQ(form->model().titleText, "Long title of the plume study");
}

TEST_F(InputFormScreen, EnterInTheNotePadIsOk) {
    open(testkit::oneDimScreenModel());
    qtest::onModal(QStringLiteral("Notes"), [](QWidget* w) {
        EXPECT_EQ(w->windowTitle(), QStringLiteral("AUTHOR"));
        auto* cell = w->findChild<QPlainTextEdit*>(QStringLiteral("NotesText"));
        cell->setFocus();
        QTest::keyClicks(cell, QStringLiteral("J. Smith"));
        QTest::keyClick(cell, Qt::Key_Return);
    });
    QTest::mouseClick(form->findChild<QLabel*>(QStringLiteral("authorE")), Qt::LeftButton);
    settle();
    EXPECT_EQ(form->findChild<QLineEdit*>(QStringLiteral("AuthorTB"))->text(), QStringLiteral("J. Smith"));
}

TEST_F(InputFormScreen, ClosingTheWindowGoesByTheSaveOffer) {
    open(testkit::oneDimScreenModel());
    data.dataState = kParametersChanged;
    ui.answers.push_back(MessageAnswer::Yes);  // "Would you like to select Calculate first?"
    form->close();
    settle();
    EXPECT_TRUE(form->isVisible());
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Data Changed");
    ui.answers.push_back(MessageAnswer::No);
    form->close();
    settle();
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(data.modelType, "");  // closeModel("Complete")
}

// ================================================================ bad input

TEST_F(InputFormScreen, BadInputGivesItsMessageAndTheScreenGoesOn) {
    open(testkit::oneDimScreenModel());
    const auto workingAgain = [&] {
        return form->findChild<QWidget*>(QStringLiteral("mainElastic"))->isEnabled() &&
               form->menuItem(QStringLiteral("mnuFile(20)"))->isEnabled() && !form->stopButton()->isVisible();
    };
    // 40000 terms
    form->tabSet(1)->setCurrentIndex(kBoundaryTab);
    typeInto(5, QStringLiteral("40000"));
    leaveRow(5);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Overflow");
    EXPECT_EQ(form->grid(1)->rowCount(), 1);
    typeInto(5, QStringLiteral("1"));
    leaveRow(5);

    // a range of 100000 points
    ui.messages.clear();
    form->tabSet(1)->setCurrentIndex(kCoordinatesTab);
    typeInto(3, QStringLiteral("0:100000:1"));
    leaveRow(3);
    EXPECT_TRUE(ui.messages.empty());
    form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
    settle();
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Overflow");
    EXPECT_TRUE(workingAgain());

    // 1e999 as a velocity
    ui.messages.clear();
    typeInto(3, QStringLiteral("0:10:1"));
    leaveRow(3);
    form->tabSet(1)->setCurrentIndex(kFieldTab);
    typeInto(0, QStringLiteral("1e999"));
    leaveRow(0);
    form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
    settle();
    EXPECT_TRUE(workingAgain());
    const bool reported = !ui.messages.empty() && !ui.messages.back().title.empty();
    const bool calculated = !data.calculationMode.empty() && data.calculationMode != "Regular";
    EXPECT_TRUE(reported || calculated);

    // letters where a number belongs, typed with Shift held past the filter
    ui.messages.clear();
    focusRow(10);
    QTest::keyClicks(entry(10), QStringLiteral("ABC"), Qt::ShiftModifier);
    leaveRow(10);
    form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
    settle();
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Improper input data");
    EXPECT_TRUE(workingAgain());
}

// ================================================================ keys

TEST_F(InputFormScreen, TheUsualShortcutsLeaveTheCaptionsAlone) {
    open(testkit::oneDimScreenModel());
    const struct {
        const char* item;
        QKeySequence keys;
        const char* caption;
    } expected[] = {{"menuFile(10)", QKeySequence::New, "&New"},   {"menuFile(20)", QKeySequence::Open, "&Open..."},
                    {"menuFile(30)", QKeySequence::Save, "&Save"}, {"menuFile(50)", QKeySequence::Print, "&Print"},
                    {"mnuFile(20)", QKeySequence(Qt::Key_F5), "&Calculate!"}};
    for (const auto& e : expected) {
        QAction* a = form->menuItem(QString::fromLatin1(e.item));
        ASSERT_NE(a, nullptr) << e.item;
        EXPECT_EQ(a->shortcut(), e.keys) << e.item;
        EXPECT_EQ(a->text(), QString::fromLatin1(e.caption)) << e.item;
    }
    // F5 calculates.
    ASSERT_TRUE(form->resultLabel(1)->text().isEmpty());
    QTest::keyClick(form.get(), Qt::Key_F5);
    settle();
    EXPECT_FALSE(form->resultLabel(1)->text().isEmpty());
}

// ================================================================ the printed report as a PDF

std::string normalised(const QString& line) { return qtest::spelledOut(line).simplified().toStdString(); }

TEST_F(InputFormScreen, PrintedReportAsPdf) {
    testkit::TempDir dir;
    DataSet d = testkit::oneDimScreenModel();
    d.title = "Plume";
    open(d);
    const QString pdf = QString::fromStdString(dir.file("report.pdf"));
    form->setPdfOutput(pdf);
    form->menuItem(QStringLiteral("menuFile(50)"))->trigger();
    settle();
    ASSERT_TRUE(QFile::exists(pdf));
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    ASSERT_TRUE(p.waitForFinished(20000));
    std::vector<std::string> lines;
    for (const QString& l : QString::fromUtf8(p.readAllStandardOutput()).split(u'\n'))
        if (!l.trimmed().isEmpty()) lines.push_back(normalised(l));
    const std::vector<std::string> expected = {
        "Ground Water Model (Saturated)",
        "Saturated Ground Water Model",
        "Title:",
        "Plume",
        "Author:",
        "Comments:",
        "Input Data file name:",
        "Model: One Dimensional",
        "Aquifer: Semi-Infinite",
        "Contaminant: Dirichlet",
        "Units:",
        "Length: Meters",
        "Time: Days",
        "Concentration: mg/l",
        "Coordinate and Time Data",
        "Minimum Maximum Length of Interval",
        "X Axis 0 10 1",
        "Time Range 0 5 1",
        "Monte Carlo simulation at x: 10",
        "Monte Carlo simulation at t: 5",
        "Boundary Conditions:",
        "Superposition Index: 1",
        "Time (Days) Concentration(mg/l)",
        "0 1",
        "Field and Chemical Properties:",
        "Ground Water Darcy Velocity: 0.3 (m/day)",
        "Aquifer Porosity: 0.3",
        "Contaminant HalfLife: 10 (day)",
        "Longitudinal Dispersion Coefficient: 0.5 (m\u00b2/day)",
        "Retardation Coefficient : 1",
        "Page 1 of 1",
    };
    EXPECT_EQ(lines, expected);
}

// The words of a PDF by line (top to bottom), each with its left edge in points.
struct PdfWord {
    double x;
    QString text;
};
std::vector<std::vector<PdfWord>> pdfLines(const QString& pdf) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), pdf, QStringLiteral("-")});
    EXPECT_TRUE(p.waitForFinished(20000));
    const QRegularExpression word(QStringLiteral("xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\"[^>]*>([^<]*)</word>"));
    std::map<double, std::vector<PdfWord>> byLine;
    auto it = word.globalMatch(QString::fromUtf8(p.readAllStandardOutput()));
    while (it.hasNext()) {
        const auto m = it.next();
        byLine[m.captured(2).toDouble()].push_back({m.captured(1).toDouble(), qtest::spelledOut(m.captured(3))});
    }
    std::vector<std::vector<PdfWord>> out;
    for (auto& [y, words] : byLine) out.push_back(words);
    return out;
}

// The left edge of the first word behind the word that ends the label (the one ending in ":").
double valueEdge(const std::vector<PdfWord>& line) {
    for (std::size_t i = 0; i + 1 < line.size(); ++i)
        if (line[i].text.endsWith(u':')) return line[i + 1].x;
    return -1;
}

TEST_F(InputFormScreen, ValuesOfTheReportStandInTheirColumns) {
    testkit::TempDir dir;
    open(testkit::twoDimScreenModel());
    const QString pdf = QString::fromStdString(dir.file("columns.pdf"));
    form->setPdfOutput(pdf);
    form->menuItem(QStringLiteral("menuFile(50)"))->trigger();
    settle();
    const auto lines = pdfLines(pdf);
    // Tab(20): the model and the units; Tab(50): the field and chemical properties
    std::vector<double> at20, at50;
    bool properties = false;
    for (const auto& line : lines) {
        if (line.empty()) continue;
        const QString first = line.front().text;
        if (first == QStringLiteral("Field")) properties = true;
        for (const char* label : {"Model:", "Aquifer:", "Contaminant:", "Length:", "Time:", "Concentration:"})
            if (!properties && first == QLatin1String(label) && line.size() > 1) at20.push_back(valueEdge(line));
        if (properties && first != QStringLiteral("Field") && first != QStringLiteral("Page"))
            at50.push_back(valueEdge(line));
    }
    ASSERT_EQ(at20.size(), 6u);
    ASSERT_EQ(at50.size(), 8u);
    for (double x : at20) EXPECT_NEAR(x, at20.front(), 0.01);
    for (double x : at50) EXPECT_NEAR(x, at50.front(), 0.01);
    EXPECT_GT(at50.front(), at20.front());
}

TEST_F(InputFormScreen, TheSourceValuesStandInOneColumn) {
    // The source labels are padded to one length; their values form a column
    // in the printed font too, with the properties' Tab(50) where they meet it.
    const std::vector<std::pair<DataSet, std::vector<QString>>> models = {
        {testkit::twoDimScreenModel("Infinite", "Continuous / Point"), {"Center", "Center", "Fluid"}},
        {testkit::threeDimScreenModel(), {"Width", "Height"}},
    };
    for (const auto& [model, firsts] : models) {
        testkit::TempDir dir;
        open(model);
        const QString pdf = QString::fromStdString(dir.file("source.pdf"));
        form->setPdfOutput(pdf);
        form->menuItem(QStringLiteral("menuFile(50)"))->trigger();
        settle();
        std::vector<double> edges;
        bool properties = false;
        for (const auto& line : pdfLines(pdf)) {
            if (line.empty()) continue;
            properties = properties || line.front().text == QStringLiteral("Field");
            if (!properties && std::find(firsts.begin(), firsts.end(), line.front().text) != firsts.end())
                edges.push_back(valueEdge(line));
        }
        ASSERT_EQ(edges.size(), firsts.size()) << model.modelType;
        for (double x : edges) EXPECT_NEAR(x, edges.front(), 0.01) << model.modelType;
        EXPECT_GT(edges.front(), 0);
    }
}

// ================================================================ pictures of the screens

// With BRENMOOR_SCREENSHOT_DIR set, pictures of every tab of each layout, of a
// locked row and of a long run with its progress picture (for looking at them).
TEST_F(InputFormScreen, PicturesOfEachLayout) {
    const std::vector<std::pair<QString, DataSet>> models = {
        {QStringLiteral("one"), testkit::oneDimScreenModel()},
        {QStringLiteral("two"), testkit::twoDimScreenModel("Infinite", "Continuous / Point")},
        {QStringLiteral("three"), testkit::threeDimScreenModel()},
    };
    for (const auto& [name, model] : models) {
        DataSet d = model;
        d.title = "Plume at the old gas works";
        d.author = "A. Hydrogeologist";
        d.comments = "Leak of 1998, monitoring wells MW1 to MW9";
        d.currentFileName = "/home/user/models/gasworks." + name.toStdString();
        d.superpositionIndex = 3;
        d.terms.redim(3);
        d.terms(1) = {"0", "1"};
        d.terms(2) = {"2", "0.5"};
        d.terms(3) = {"4", "0"};
        open(d);
        form->resize(1280, 800);
        const int dim = form->model().dimension();
        for (int t = 0; t < 3; ++t) {
            form->tabSet(dim)->setCurrentIndex(t);
            settle();
            qtest::saveShot(form.get(), QStringLiteral("inputForm-%1-tab%2").arg(name).arg(t));
            // nothing of a row may be cut off: each entry is as wide as asked
            for (int i = 0; i < static_cast<int>(form->model().rows(dim).size()); ++i)
                if (QLineEdit* e = form->rowEntry(dim, i); e && e->isVisible()) {
                    EXPECT_GE(e->width(), 200) << i;
                    EXPECT_GE(form->rowCaption(dim, i)->width(),
                              form->rowCaption(dim, i)->fontMetrics().horizontalAdvance(form->rowCaption(dim, i)->text()))
                        << i;
                }
        }
        form.reset();
    }
    DataSet locked = testkit::oneDimScreenModel();
    locked.velocity = formFieldMarker("0.3", 1);
    locked.terms(1).concentration = boundaryCellMarker("1", 2, kWideCellMarkerPadding);
    open(locked);
    form->resize(1280, 800);
    form->tabSet(1)->setCurrentIndex(kFieldTab);
    settle();
    qtest::saveShot(form.get(), QStringLiteral("inputForm-locked-field"));
    form->tabSet(1)->setCurrentIndex(kBoundaryTab);
    settle();
    qtest::saveShot(form.get(), QStringLiteral("inputForm-locked-grid"));
    form.reset();

    DataSet big = testkit::oneDimScreenModel();
    big.xRange = "0:3000:0.1";
    big.mcAtX = "3000";
    open(big);
    form->resize(1280, 800);
    bool shot = false;
    onPoint = [&](const ScriptedUserInterface::Progress& p) {
        if (p.done != 20000) return;
        form->repaint();
        qtest::saveShot(form.get(), QStringLiteral("inputForm-running"));
        shot = form->progressPicture()->isVisible() && form->progressPicture()->width() >= 200;
        ui.answers.push_back(MessageAnswer::Yes);
        QTest::mouseClick(form->stopButton(), Qt::LeftButton);
    };
    form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
    settle();
    EXPECT_TRUE(shot);
}

// ================================================================ the registry

TEST(InputFormRegistry, RegisteredForTheSingleChemicalSaturatedKinds) {
    registerInputForm();
    EXPECT_TRUE(hasModelScreen(ModelScreen::inputForm));
    EXPECT_EQ(modelScreenFor("Two Dimensional", false), ModelScreen::inputForm);
}

}  // namespace
}  // namespace bm
