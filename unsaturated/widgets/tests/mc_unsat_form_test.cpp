// MCUnsatForm on the screen: its controls by name, the rows a chain does
// without, typing into the number of chemicals and into the tables, a unit
// change, a run stopped between chemicals, a finished run's points table, and
// pictures of the screen at the sizes users have.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "montecarlo/monte_marker.h"
#include "shell/widgets/model_screens.h"
#include "shell/widgets/term_grid_view.h"
#include "species/widgets/chemical_table_view.h"
#include "testing/model_screen_fixture.h"
#include "testing/qt_test_support.h"
#include "testing/scripted_user_interface.h"
#include "unsaturated/tests/unsat_test_screen.h"
#include "unsaturated/widgets/tests/unsat_screen_fits.h"
#include "unsaturated/widgets/mc_unsat_form.h"

namespace bm {
namespace {

using qtest::settle;
using testkit::ScriptedUserInterface;

using MCUnsatFormScreen = testkit::ModelScreenFixture<MCUnsatForm>;

TEST_F(MCUnsatFormScreen, ControlsCarryTheScreensNames) {
    open(testkit::unsatChainModel());
    EXPECT_EQ(form->objectName(), QStringLiteral("MCUnsatForm"));
    EXPECT_EQ(form->windowTitle(), QStringLiteral("Ground Water Model (Unsaturated)"));
    EXPECT_NE(form->findChild<ChemicalTableView*>(QStringLiteral("ChemicalInput1TG")), nullptr);
    EXPECT_NE(form->findChild<PointResultsView*>(QStringLiteral("grd1DResults")), nullptr);
    EXPECT_NE(form->findChild<TermGridView*>(QStringLiteral("Input1TG")), nullptr);
    EXPECT_TRUE(form->rowEntry(unsatrow::Chemicals)->isVisible());
    EXPECT_EQ(form->rowEntry(unsatrow::Chemicals)->objectName(), QStringLiteral("Text1(14)"));
    EXPECT_EQ(form->rowEntry(unsatrow::Chemicals)->text(), QStringLiteral("2"));
    for (int gone : {unsatrow::HalfLife, unsatrow::Superposition}) {
        EXPECT_FALSE(form->rowEntry(gone)->isVisible()) << gone;
        EXPECT_FALSE(form->rowCaption(gone)->isVisible()) << gone;
    }
    EXPECT_EQ(form->chemicalTable()->rowCount(), 2);
    EXPECT_EQ(form->chemicalTable()->item(1, 0)->text(), QStringLiteral("Daughter"));
    EXPECT_EQ(form->grid()->verticalHeaderItem(1)->text(), QStringLiteral("Daughter"));
}

TEST_F(MCUnsatFormScreen, TheNumberOfChemicalsGrowsTheTables) {
    open(testkit::unsatChainModel());
    QLineEdit* e = form->rowEntry(unsatrow::Chemicals);
    e->setFocus(Qt::MouseFocusReason);
    e->selectAll();
    QTest::keyClicks(e, QStringLiteral("3"));
    QTest::keyClick(e, Qt::Key_Return);
    settle();
    EXPECT_EQ(form->chemicalTable()->rowCount(), 3);
    EXPECT_EQ(form->grid()->rowCount(), 3);
    EXPECT_EQ(data.numChemicals, 3);
}

TEST_F(MCUnsatFormScreen, ATypedRateReachesTheTables) {
    open(testkit::unsatChainModel());
    form->chemicalTable()->item(1, 1)->setText(QStringLiteral("0.0007"));
    settle();
    EXPECT_EQ(form->chainModel().tables().chemicals[1].rate, "0.0007");
    ASSERT_TRUE(form->chainModel().holdDataSet());
    EXPECT_EQ(data.decayRate(2), "0.0007");
}

TEST_F(MCUnsatFormScreen, AUnitChangeRelabelsTheRateHeading) {
    open(testkit::unsatChainModel());
    form->menuItem(QStringLiteral("menuTime(30)"))->trigger();
    settle();
    EXPECT_EQ(form->chemicalTable()->horizontalHeaderItem(1)->text(), QStringLiteral("Decay Rate (1/hr)"));
    EXPECT_EQ(form->grid()->horizontalHeaderItem(0)->text(), QStringLiteral("Time (hr)"));
    EXPECT_EQ(form->rowUnits(unsatrow::Percolation)->text(), QStringLiteral("(m/hr)"));
}

TEST_F(MCUnsatFormScreen, ARunStoppedAfterTheFirstChemical) {
    DataSet d = testkit::unsatChainModel();
    d.xRange = "0:9.5:0.5:5";  // 20 depths x 11 times per chemical
    open(d);
    bool asked = false;
    onPoint = [&](const ScriptedUserInterface::Progress& p) {
        if (asked || p.done != 110) return;
        asked = true;
        ui.answers.push_back(MessageAnswer::Yes);
        QTest::mouseClick(form->stopButton(), Qt::LeftButton);
    };
    form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
    settle();
    EXPECT_TRUE(asked);
    ASSERT_FALSE(ui.messages.empty());
    EXPECT_EQ(ui.messages[0].title, "Stop Calculation");
    EXPECT_FALSE(form->stopButton()->isVisible());
    EXPECT_TRUE(form->findChild<QWidget*>(QStringLiteral("mainElastic"))->isEnabled());
}

TEST_F(MCUnsatFormScreen, AFinishedRunFillsThePointsTable) {
    open(testkit::unsatChainModel());
    form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
    settle();
    EXPECT_TRUE(ui.messages.empty()) << ui.lastText();
    EXPECT_EQ(form->resultLabel()->text(), QStringLiteral("Regular"));
    ASSERT_EQ(form->resultsTable()->rowCount(), 2);
    EXPECT_EQ(form->resultsTable()->item(1, 0)->text(), QStringLiteral("Daughter"));
    EXPECT_FALSE(form->resultsTable()->item(1, 1)->text().isEmpty());
}

// Pictures at the sizes users have; nothing of a row may be cut off.
TEST_F(MCUnsatFormScreen, Pictures) {
    for (const QSize size : {QSize(1600, 1000), QSize(1024, 700)}) {
        DataSet d = testkit::unsatChainModel();
        d.title = "A solvent chain below a spill";
        d.author = "A. Hydrogeologist";
        d.comments = "Parent and daughter in a 10 m unsaturated zone";
        d.currentFileName = "/home/user/models/chain.mcu";
        d.decayRate(2) = formFieldMarker("0.001", 1);
        open(d);
        form->resize(size);
        settle();
        qtest::saveShot(form.get(), QStringLiteral("MCUnsatForm-%1x%2").arg(size.width()).arg(size.height()));
        testkit::expectNothingCut(*form);
        EXPECT_GE(form->chemicalTable()->height(), 100);
        form.reset();
    }
}

TEST(MCUnsatFormRegistry, RegisteredForTheUnsaturatedChain) {
    registerMCUnsatForm();
    EXPECT_TRUE(hasModelScreen(ModelScreen::MCUnsatForm));
    EXPECT_EQ(modelScreenFor("Unsaturated One Dimensional", true), ModelScreen::MCUnsatForm);
}

}  // namespace
}  // namespace bm
