// unsatForm on the screen: its controls by name, typing into a row, the
// read-only superposition index of a decaying source, a marked row, a unit
// change, a run stopped half way, a finished run, and pictures of the screen
// at the sizes users have.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "shell/widgets/model_screens.h"
#include "shell/widgets/progress_picture.h"
#include "shell/widgets/term_grid_view.h"
#include "testing/model_screen_fixture.h"
#include "testing/qt_test_support.h"
#include "testing/scripted_user_interface.h"
#include "unsaturated/tests/unsat_test_screen.h"
#include "unsaturated/widgets/tests/unsat_screen_fits.h"
#include "unsaturated/widgets/unsat_form.h"

namespace bm {
namespace {

using testkit::ScriptedUserInterface;
using qtest::settle;

using UnsatFormScreen = testkit::ModelScreenFixture<UnsatForm>;

TEST_F(UnsatFormScreen, ControlsCarryTheScreensNames) {
    open(testkit::unsatModel());
    EXPECT_EQ(form->objectName(), QStringLiteral("unsatForm"));
    EXPECT_EQ(form->windowTitle(), QStringLiteral("Ground Water Model (Unsaturated)"));
    for (int i = 0; i <= unsatrow::SourceDecay; ++i) {
        EXPECT_NE(form->findChild<QLineEdit*>(indexedName(QStringLiteral("Text1"), i)), nullptr) << i;
        EXPECT_NE(form->findChild<QLabel*>(indexedName(QStringLiteral("Text1Panel"), i)), nullptr) << i;
        EXPECT_NE(form->findChild<QLabel*>(indexedName(QStringLiteral("Text1Units"), i)), nullptr) << i;
        EXPECT_TRUE(form->rowEntry(i)->isVisible()) << i;
    }
    EXPECT_FALSE(form->rowEntry(unsatrow::Chemicals)->isVisible());
    EXPECT_NE(form->findChild<TermGridView*>(QStringLiteral("Input1TG")), nullptr);
    EXPECT_NE(form->findChild<QLabel*>(QStringLiteral("LabelResult1D")), nullptr);
    EXPECT_NE(form->findChild<QLabel*>(QStringLiteral("Label5")), nullptr);
    EXPECT_EQ(form->rowCaption(unsatrow::Percolation)->text(), QStringLiteral(" Steady-State Percolation Rate (Q)"));
    EXPECT_EQ(form->rowEntry(unsatrow::X)->text(), QStringLiteral("0:10:0.5:5"));
    for (const char* name : {"mnuFile(10)", "mnuFile(20)", "mnuFile(30)", "mnuFile(35)", "mnuFile(40)", "mnuFile(50)",
                             "menuResults(10)", "menuResults(20)", "menuLength(10)", "menuTime(40)", "menuConc(10)",
                             "menuMonteCarlo(10)", "menuFile(50)"})
        EXPECT_NE(form->menuItem(QString::fromLatin1(name)), nullptr) << name;
}

TEST_F(UnsatFormScreen, AConstantSourceHidesTheDecayRate) {
    open(testkit::unsatModel("Dirichlet"));
    EXPECT_FALSE(form->rowEntry(unsatrow::SourceDecay)->isVisible());
    EXPECT_FALSE(form->rowCaption(unsatrow::SourceDecay)->isVisible());
    EXPECT_FALSE(form->rowEntry(unsatrow::Superposition)->isReadOnly());
}

TEST_F(UnsatFormScreen, TypedTextReachesTheModel) {
    open(testkit::unsatModel());
    QLineEdit* e = form->rowEntry(unsatrow::Dispersion);
    e->setFocus(Qt::MouseFocusReason);
    e->selectAll();
    QTest::keyClicks(e, QStringLiteral("0.05"));
    EXPECT_EQ(form->model().row(unsatrow::Dispersion).text, "0.05");
    QTest::keyClick(e, Qt::Key_Return);  // moves on like Tab
    settle();
    EXPECT_FALSE(e->hasFocus());
    ASSERT_TRUE(form->model().holdDataSet());
    EXPECT_EQ(data.dispersionX, "0.05");
}

TEST_F(UnsatFormScreen, TheSuperpositionIndexOfADecayingSourceIsReadOnly) {
    open(testkit::unsatModel());
    QLineEdit* e = form->rowEntry(unsatrow::Superposition);
    EXPECT_TRUE(e->isReadOnly());
    QTest::mouseClick(e, Qt::LeftButton);
    settle();
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_FALSE(e->hasFocus());
    EXPECT_EQ(ui.lastTitle(), "Read Only");
    EXPECT_EQ(ui.lastText(), "Superposition Index values for Dirichlet/Exponential Condition\r\ris read only.");
    // Entered by Tab: the message, and the focus goes on.
    QLineEdit* before = form->rowEntry(unsatrow::PointT);
    before->setFocus(Qt::TabFocusReason);
    settle();
    e->setFocus(Qt::TabFocusReason);
    settle();
    settle();
    EXPECT_EQ(ui.messages.size(), 2u);
    EXPECT_FALSE(e->hasFocus());
    QTest::keyClicks(e, QStringLiteral("5"));
    EXPECT_EQ(form->model().row(unsatrow::Superposition).text, "1");
}

TEST_F(UnsatFormScreen, AMarkedRowRefusesTyping) {
    DataSet d = testkit::unsatModel();
    d.porosity = formFieldMarker("0.6", 1);
    open(d);
    QLineEdit* e = form->rowEntry(unsatrow::Porosity);
    EXPECT_TRUE(e->isReadOnly());
    EXPECT_EQ(form->findChild<QLabel*>(QStringLiteral("MonteCarloElastic"))->text(), QStringLiteral("Monte Carlo"));
    QTest::mouseClick(form->rowCaption(unsatrow::Porosity), Qt::LeftButton);
    settle();
    EXPECT_EQ(ui.lastText(), "Monte Carlo selected values for  Aquifer Porosity (n) are read only.\r\rTo unselect a "
                             "monte carlo option please use Generate from the Monte Carlo menu.");
    EXPECT_TRUE(holdsMonteMarker(form->model().row(unsatrow::Porosity).text));
}

TEST_F(UnsatFormScreen, AUnitChangeRelabelsTheRowsAndTheGrid) {
    open(testkit::unsatModel());
    form->menuItem(QStringLiteral("menuLength(10)"))->trigger();
    form->menuItem(QStringLiteral("menuTime(40)"))->trigger();
    settle();
    EXPECT_EQ(form->rowUnits(unsatrow::Percolation)->text(), QStringLiteral("(ft/sec)"));
    EXPECT_EQ(form->rowUnits(unsatrow::Dispersion)->text(), QStringLiteral("(ft\u00b2/sec)"));
    EXPECT_EQ(form->rowUnits(unsatrow::SourceDecay)->text(), QStringLiteral("(1/sec)"));
    EXPECT_EQ(form->rowUnits(unsatrow::X)->text(), QStringLiteral("(ft)"));
    EXPECT_EQ(form->rowUnits(unsatrow::BulkDensity)->text(), QStringLiteral("(g/cm\u00b3)"));  // a mass unit stays
    EXPECT_EQ(form->grid()->horizontalHeaderItem(0)->text(), QStringLiteral("Time (sec)"));
    EXPECT_EQ(form->rowEntry(unsatrow::Percolation)->text(), QStringLiteral("0.001"));  // nothing converted
    EXPECT_TRUE(form->menuItem(QStringLiteral("menuLength(10)"))->isChecked());
}

TEST_F(UnsatFormScreen, ARunStoppedHalfWay) {
    DataSet d = testkit::unsatModel();
    d.xRange = "0:9.5:0.5:5";  // 20 depths x 11 times = 220 points
    open(d);
    bool sawRun = false;
    onPoint = [&](const ScriptedUserInterface::Progress& p) {
        if (p.done != 110) return;
        sawRun = form->progressPicture()->isVisible() && form->stopButton()->isVisible() &&
                 !form->findChild<QWidget*>(QStringLiteral("mainElastic"))->isEnabled();
        EXPECT_EQ(form->progressPicture()->text(), QStringLiteral("50%"));
        ui.answers.push_back(MessageAnswer::Yes);
        QTest::mouseClick(form->stopButton(), Qt::LeftButton);
    };
    form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
    settle();
    EXPECT_TRUE(sawRun);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Stop Calculation");
    EXPECT_EQ(ui.progress.size(), 110u);
    EXPECT_FALSE(form->progressPicture()->isVisible());
    EXPECT_FALSE(form->stopButton()->isVisible());
    EXPECT_TRUE(form->findChild<QWidget*>(QStringLiteral("mainElastic"))->isEnabled());
}

TEST_F(UnsatFormScreen, ARefusedRunShowsItsMessageAndComputesNothing) {
    DataSet d = testkit::unsatModel();
    d.saturation = "0.7";
    open(d);
    form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
    settle();
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].icon, MessageIcon::Critical);
    EXPECT_EQ(ui.messages[0].text,
              " Saturation (Sw) is larger than  Aquifer Porosity (n).\r\rPlease give a proper input value.");
    EXPECT_TRUE(ui.progress.empty());
    settle();
    EXPECT_TRUE(form->rowEntry(unsatrow::Saturation)->hasFocus());
}

TEST_F(UnsatFormScreen, AFinishedRunShowsTheValueAtThePoint) {
    open(testkit::unsatModel());
    form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
    settle();
    EXPECT_TRUE(ui.messages.empty());
    EXPECT_EQ(form->resultLabel()->text().toStdString(), data.calculationMode);
    EXPECT_TRUE(isNumeric(data.calculationMode)) << data.calculationMode;
    EXPECT_EQ(form->findChild<QLabel*>(QStringLiteral("Label5"))->text(), QStringLiteral("Computed at"));
    EXPECT_EQ(form->rowEntry(unsatrow::PointX)->text(), QStringLiteral("5"));
    EXPECT_EQ(form->rowEntry(unsatrow::PointT)->text(), QStringLiteral("365"));
}

// Pictures at the sizes users have; nothing of a row may be cut off.
TEST_F(UnsatFormScreen, Pictures) {
    for (const QSize size : {QSize(1600, 1000), QSize(1024, 700)}) {
        DataSet d = testkit::unsatModel();
        d.title = "Percolation below a spill";
        d.author = "A. Hydrogeologist";
        d.comments = "A decaying surface source above a 10 m unsaturated zone";
        d.currentFileName = "/home/user/models/spill.u1d";
        d.distributionCoefficient = formFieldMarker("0.1", 1);
        open(d);
        form->resize(size);
        settle();
        qtest::saveShot(form.get(), QStringLiteral("unsatForm-%1x%2").arg(size.width()).arg(size.height()));
        testkit::expectNothingCut(*form);
        form.reset();
    }
}

TEST(UnsatFormRegistry, RegisteredForTheUnsaturatedModel) {
    registerUnsatForm();
    EXPECT_TRUE(hasModelScreen(ModelScreen::unsatForm));
    EXPECT_EQ(modelScreenFor("Unsaturated One Dimensional", false), ModelScreen::unsatForm);
}

}  // namespace
}  // namespace bm
