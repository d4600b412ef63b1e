// merlaform on the screen: its controls by name, the source kinds switching
// the mass caption and the "Not Used" y rows, a locked row, a unit change
// relabelling the compound units, a run stopped half way, a finished run, and
// pictures of the screen at the sizes users have.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <memory>

#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "shell/widgets/model_screens.h"
#include "shell/widgets/progress_picture.h"
#include "testing/model_screen_fixture.h"
#include "testing/qt_test_support.h"
#include "testing/test_paths.h"
#include "testing/scripted_user_interface.h"
#include "timevarying/tests/merla_test_screen.h"
#include "timevarying/widgets/merla_form.h"

namespace bm {
namespace {

using testkit::ScriptedUserInterface;

using qtest::settle;

class MerlaFormScreen : public testkit::ModelScreenFixture<MerlaForm> {
protected:
    // Another source for the model on the screen: what the screen holds kept, the source changed.
    void chooseSource(const std::string& source) {
        ASSERT_TRUE(form->model().holdDataSet());
        data.contaminantType = source;
        form->model().setDisplay();
        settle();
    }
};

TEST_F(MerlaFormScreen, ControlsCarryTheScreensNames) {
    open(testkit::merlaModel());
    EXPECT_EQ(form->objectName(), QStringLiteral("merlaform"));
    EXPECT_EQ(form->windowTitle(), QStringLiteral("Ground Water Model with Time Dependent Dispersion Coefficients"));
    for (int i = 0; i < varrow::Count; ++i) {
        EXPECT_NE(form->findChild<QLabel*>(indexedName(QStringLiteral("Text2Panel"), i)), nullptr) << i;
        EXPECT_NE(form->findChild<QLabel*>(indexedName(QStringLiteral("Text2Units"), i)), nullptr) << i;
        EXPECT_EQ(form->findChild<QLineEdit*>(indexedName(QStringLiteral("Text2"), i)) != nullptr,
                  i != varrow::Concentration)
            << i;
    }
    EXPECT_EQ(form->rowEntry(0)->text(), QStringLiteral("10:30:10"));
    EXPECT_EQ(form->rowCaption(0)->text(), QStringLiteral("X Coordinates (x)"));
    EXPECT_NE(form->findChild<QLabel*>(QStringLiteral("LabelResult")), nullptr);
    EXPECT_NE(form->findChild<QLabel*>(QStringLiteral("Label5")), nullptr);
    for (const char* name : {"mnuFile(10)", "mnuFile(20)", "mnuFile(30)", "mnuFile(35)", "mnuFile(40)",
                             "menuResults(10)", "menuResults(20)", "menuResults(30)", "menuLength(10)",
                             "menuTime(40)", "menuMonteCarlo(10)", "menuFile(50)"})
        EXPECT_NE(form->menuItem(QString::fromLatin1(name)), nullptr) << name;
    // Length and Time only
    EXPECT_EQ(form->menuItem(QStringLiteral("menuConc(10)")), nullptr);
    EXPECT_EQ(form->findChild<QMenu*>(QStringLiteral("menuConc")), nullptr);
}

TEST_F(MerlaFormScreen, SourceKindsSwitchTheCaptionsAndTheYRows) {
    open(testkit::merlaModel("Point (instantaneous)"));
    QLabel* mass = form->rowCaption(varrow::Mass);
    EXPECT_EQ(mass->text(), QStringLiteral(" Mass Injected at x=0, y=0 and at time t=0 (M)"));
    EXPECT_EQ(form->rowUnits(varrow::Mass)->text(), QStringLiteral("mg/m"));
    EXPECT_TRUE(form->rowEntry(varrow::Y)->isEnabled());
    EXPECT_TRUE(form->rowEntry(varrow::VelocityY)->isEnabled());

    chooseSource("Line (continuous)");
    EXPECT_EQ(mass->text(), QStringLiteral(" Mass Injection Rate at x=0 (M)"));
    EXPECT_EQ(form->rowUnits(varrow::Mass)->text(), QStringLiteral("mg/m/day"));
    for (int y : {varrow::Y, varrow::PointY}) {
        EXPECT_EQ(form->rowEntry(y)->text(), QStringLiteral("Not Used"));
        EXPECT_FALSE(form->rowEntry(y)->isEnabled());
    }
    EXPECT_FALSE(form->rowEntry(varrow::VelocityY)->isEnabled());
    EXPECT_EQ(form->findChild<QLabel*>(QStringLiteral("ContaminantE"))->text(),
              QStringLiteral("Contaminant: Line (continuous)"));

    chooseSource("Point (with initial distribution)");
    EXPECT_EQ(mass->text(), QStringLiteral(" Initial Mass at x=0, y=0 (M)"));
    EXPECT_EQ(form->rowEntry(varrow::Y)->text(), QStringLiteral(""));  // a point needs its y again
    EXPECT_TRUE(form->rowEntry(varrow::Y)->isEnabled());
    EXPECT_TRUE(form->rowEntry(varrow::VelocityY)->isEnabled());
}

TEST_F(MerlaFormScreen, TypedTextReachesTheModel) {
    open(testkit::merlaModel());
    QLineEdit* e = form->rowEntry(varrow::Decay);
    e->setFocus(Qt::MouseFocusReason);
    e->selectAll();
    QTest::keyClicks(e, QStringLiteral("0.05"));
    EXPECT_EQ(form->model().row(varrow::Decay).text, "0.05");
    QTest::keyClick(e, Qt::Key_Return);  // moves on like Tab
    settle();
    EXPECT_FALSE(e->hasFocus());
}

TEST_F(MerlaFormScreen, ALockedRowRefusesTyping) {
    DataSet d = testkit::merlaModel();
    d.porosity = formFieldMarker("0.3", 1);
    open(d);
    QLineEdit* e = form->rowEntry(varrow::Porosity);
    EXPECT_TRUE(e->isReadOnly());
    EXPECT_EQ(form->findChild<QLabel*>(QStringLiteral("MonteCarloElastic"))->text(), QStringLiteral("Monte Carlo"));
    e->setFocus(Qt::MouseFocusReason);
    settle();
    QTest::keyClicks(e, QStringLiteral("5"));
    settle();
    ASSERT_FALSE(ui.messages.empty());
    EXPECT_EQ(ui.lastTitle(), "Read Only");
    EXPECT_TRUE(holdsMonteMarker(form->model().row(varrow::Porosity).text));
    const std::size_t before = ui.messages.size();
    QTest::mouseClick(form->rowCaption(varrow::Porosity), Qt::LeftButton);
    EXPECT_EQ(ui.messages.size(), before + 1);
    EXPECT_EQ(ui.lastText(),
              "Monte Carlo selected values for Aquifer Porosity (n) are read only.\r\rTo unselect a monte carlo option "
              "please use Generate from the Monte Carlo menu.");
}

TEST_F(MerlaFormScreen, AUnitChangeRelabelsTheCompoundUnits) {
    open(testkit::merlaModel("Point (continuous)"));
    const QString before = form->rowEntry(varrow::Mass)->text();
    form->menuItem(QStringLiteral("menuLength(10)"))->trigger();
    form->menuItem(QStringLiteral("menuTime(40)"))->trigger();
    settle();
    EXPECT_EQ(form->rowUnits(varrow::Mass)->text(), QStringLiteral("mg/ft/sec"));
    EXPECT_EQ(form->rowUnits(varrow::Concentration)->text(), QStringLiteral("mg/ft\u00b3"));
    EXPECT_EQ(form->rowUnits(varrow::VelocityX)->text(), QStringLiteral("(ft/sec)"));
    EXPECT_EQ(form->rowUnits(varrow::Decay)->text(), QStringLiteral("(1/sec)"));
    EXPECT_EQ(form->rowEntry(varrow::Mass)->text(), before);
    EXPECT_TRUE(form->menuItem(QStringLiteral("menuLength(10)"))->isChecked());
    EXPECT_TRUE(form->menuItem(QStringLiteral("menuTime(40)"))->isChecked());
}

TEST_F(MerlaFormScreen, ARunStoppedHalfWay) {
    DataSet d = testkit::merlaModel("Point (continuous)", "Linear");
    d.xRange = "5:100:5";  // 20 x 3 y 2 t = 120 points
    open(d);
    bool sawRun = false;
    onPoint = [&](const ScriptedUserInterface::Progress& p) {
        if (p.done != 60) return;
        sawRun = form->progressPicture()->isVisible() && form->stopButton()->isVisible() &&
                 !form->findChild<QWidget*>(QStringLiteral("mainElastic"))->isEnabled() &&
                 !form->menuItem(QStringLiteral("mnuFile(30)"))->isEnabled();
        EXPECT_EQ(form->progressPicture()->text(), QStringLiteral("50%"));
        ui.answers.push_back(MessageAnswer::Yes);
        QTest::mouseClick(form->stopButton(), Qt::LeftButton);
    };
    form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
    settle();
    EXPECT_TRUE(sawRun);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Stop Calculation");
    EXPECT_EQ(ui.progress.size(), 60u);
    EXPECT_EQ(data.resultVar(60) != 0.0f, true);
    EXPECT_EQ(data.resultVar(61), 0.0f);
    EXPECT_EQ(form->resultLabel()->text(), QStringLiteral("Regular"));
    EXPECT_FALSE(form->progressPicture()->isVisible());
    EXPECT_FALSE(form->stopButton()->isVisible());
    EXPECT_TRUE(form->findChild<QWidget*>(QStringLiteral("mainElastic"))->isEnabled());
}

TEST_F(MerlaFormScreen, AFinishedRunShowsTheValueAtThePoint) {
    open(testkit::merlaModel());
    form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
    settle();
    ASSERT_FALSE(data.varResultText.empty());
    EXPECT_EQ(form->resultLabel()->text().toStdString(), data.varResultText);
    EXPECT_EQ(form->findChild<QLabel*>(QStringLiteral("Label5"))->text(), QStringLiteral("Computed at"));
    EXPECT_EQ(form->rowEntry(varrow::PointX)->text().toStdString(), formatNumber(data.xConstant));
}

TEST_F(MerlaFormScreen, PrintedReportAsPdf) {
    testkit::TempDir dir;
    DataSet d = testkit::merlaModel("Line (initial)", "Linear");
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
    QStringList lines;
    for (const QString& l : QString::fromUtf8(p.readAllStandardOutput()).split(u'\n'))
        if (!l.trimmed().isEmpty()) lines << qtest::spelledOut(l).simplified();
    for (const char* expected : {"Saturated Ground Water Model with Time Dependent Dispersion Coefficients", "Plume",
                                 "Contaminant Source: Line (initial)", "Dispersion Coefficient: Linear",
                                 "X Axis 10 30 10", "Y Axis Not Used", "Time Range 20 40 20",
                                 "Monte Carlo simulation at t: 30", "Mean Travel Time: 20"})
        EXPECT_TRUE(lines.contains(QString::fromLatin1(expected))) << expected << "\n"
                                                                   << lines.join(u'\n').toStdString();
}

// Pictures at the sizes users have; nothing of a row may be cut off.
TEST_F(MerlaFormScreen, Pictures) {
    const std::vector<std::pair<QString, std::string>> sources = {{QStringLiteral("point"), "Point (continuous)"},
                                                                  {QStringLiteral("line"), "Line (instantaneous)"}};
    for (const auto& [name, source] : sources) {
        for (const QSize size : {QSize(1600, 1000), QSize(1024, 700)}) {
            DataSet d = testkit::merlaModel(source, "Exponential");
            d.title = "Plume at the old gas works";
            d.author = "A. Hydrogeologist";
            d.comments = "Scale-dependent dispersion, monitoring wells MW1 to MW9";
            d.currentFileName = "/home/user/models/gasworks.var";
            d.retardation = formFieldMarker("2", 1);
            open(d);
            form->resize(size);
            settle();
            qtest::saveShot(form.get(), QStringLiteral("merlaform-%1-%2x%3").arg(name).arg(size.width()).arg(size.height()));
            for (int i = 0; i < varrow::Count; ++i) {
                QLabel* caption = form->rowCaption(i);
                // a caption wraps rather than being cut: every word fits its width
                for (const QString& word : caption->text().split(u' ', Qt::SkipEmptyParts))
                    EXPECT_GE(caption->width(), caption->fontMetrics().horizontalAdvance(word)) << i;
                QLabel* unit = form->rowUnits(i);
                EXPECT_GE(unit->width(), unit->fontMetrics().horizontalAdvance(unit->text())) << i;
                if (QLineEdit* e = form->rowEntry(i)) {
                    EXPECT_GE(e->width(), 100) << i;
                }
            }
            form.reset();
        }
    }
}

// A run in progress and its end, pictured at the small size.
TEST_F(MerlaFormScreen, PicturesOfARun) {
    DataSet d = testkit::merlaModel("Point (continuous)", "Linear");
    d.xRange = "1:200:1:20";  // 200 x 3 y 2 t
    open(d);
    form->resize(1024, 700);
    settle();
    bool shot = false;
    onPoint = [&](const ScriptedUserInterface::Progress& p) {
        if (p.done != 600) return;
        form->repaint();
        qtest::saveShot(form.get(), QStringLiteral("merlaform-running-1024x700"));
        shot = form->progressPicture()->isVisible() && form->stopButton()->isVisible() &&
               form->helpPanel()->text() == QStringLiteral(" Computation Status:");
    };
    form->menuItem(QStringLiteral("mnuFile(20)"))->trigger();
    settle();
    EXPECT_TRUE(shot);
    qtest::saveShot(form.get(), QStringLiteral("merlaform-finished-1024x700"));
    EXPECT_EQ(form->resultLabel()->text().toStdString(), data.varResultText);
    EXPECT_GE(form->resultLabel()->width(), form->resultLabel()->fontMetrics().horizontalAdvance(form->resultLabel()->text()));
}

TEST(MerlaFormRegistry, RegisteredForTheTimeVaryingModel) {
    registerMerlaForm();
    EXPECT_TRUE(hasModelScreen(ModelScreen::merlaform));
    EXPECT_EQ(modelScreenFor("Time Varying", false), ModelScreen::merlaform);
}

}  // namespace
}  // namespace bm
