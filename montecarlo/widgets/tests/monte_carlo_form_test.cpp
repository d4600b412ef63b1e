// The simulation screen on the display: its grids and drop-downs, F7 with an
// edit still open, the double-click selection, Exit copying the tables back,
// and the whole sequence from a model screen: Generate, the locked field,
// and a simulation stopped between iterations.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QProcess>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <memory>

#include "kernels/kernmc.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/monte_setup.h"
#include "montecarlo/widgets/monte_carlo_form.h"
#include "saturated/tests/input_form_test_models.h"
#include "saturated/widgets/input_form.h"
#include "testing/qt_test_support.h"
#include "testing/scripted_user_interface.h"
#include "testing/test_paths.h"

namespace bm {
namespace {

using testkit::ScriptedUserInterface;

const QString kVelocity = QStringLiteral("Ground Water Darcy Velocity (V)");
const QString kDispersion = QStringLiteral("Longitudinal Dispersion Coefficient (D)");

using qtest::settle;

// Opens the editor of a cell and gives it back (a drop-down or a line).
template <typename Editor>
Editor* openEditor(QTableWidget* grid, int row, int column) {
    grid->setCurrentCell(row, column);
    grid->editItem(grid->item(row, column));
    settle();
    return qobject_cast<Editor*>(grid->indexWidget(grid->model()->index(row, column)));
}

// Picks an entry of a drop-down editor as a click on it would.
void pick(QComboBox* combo, const QString& text) {
    const int at = combo->findText(text);
    ASSERT_GE(at, 0) << text.toStdString();
    combo->hidePopup();
    combo->setCurrentIndex(at);
    emit combo->activated(at);
    settle();
}

void typeCell(QTableWidget* grid, int row, int column, const QString& text) {
    QLineEdit* line = openEditor<QLineEdit>(grid, row, column);
    ASSERT_NE(line, nullptr);
    line->selectAll();
    QTest::keyClicks(line, text);
    QTest::keyClick(line, Qt::Key_Return);
    settle();
}

// A variant row filled through the grid: the variant and the distribution
// picked from their drop-downs, the numbers typed.
void fillRow(QTableWidget* grid, int row, const QString& variant, const QString& minimum, const QString& maximum,
             const QString& variance, const QString& terms, const QString& distribution) {
    pick(openEditor<QComboBox>(grid, row, 0), variant);
    typeCell(grid, row, 2, minimum);
    typeCell(grid, row, 3, maximum);
    typeCell(grid, row, 4, variance);
    if (!terms.isEmpty()) typeCell(grid, row, 5, terms);
    pick(openEditor<QComboBox>(grid, row, 6), distribution);
}

void doubleClickCell(QTableWidget* grid, int row, int column) {
    // Apart from the click before, so that the two are not taken for one.
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    grid->scrollToItem(grid->item(row, column));
    const QRect cell = grid->visualItemRect(grid->item(row, column));
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, cell.center());
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, cell.center());
    settle();
}

class MonteCarloScreen : public ::testing::Test {
protected:
    DataSet data = testkit::oneDimScreenModel();
    AppState state;
    ScriptedUserInterface ui;
    std::unique_ptr<MonteCarloForm> form;

    void open() {
        std::optional<MonteCarloSetup> setup = monteCarloSetup(data);
        ASSERT_TRUE(setup.has_value());
        form = std::make_unique<MonteCarloForm>(data, state, ui, std::move(*setup));
        form->load();
        form->show();
        form->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
        settle();
    }
    void TearDown() override {
        if (form) form->hide();
        form.reset();
    }
};

TEST_F(MonteCarloScreen, GridsCaptionsAndMenus) {
    open();
    EXPECT_EQ(form->windowTitle(), QStringLiteral("Monte Carlo Simulation (One Dimensional)"));
    EXPECT_EQ(form->panel()->text(), QStringLiteral("AQUIFER: Semi-Infinite  CONTAMINANT: Dirichlet"));
    QTableWidget* input = form->inputGrid();
    QTableWidget* result = form->resultGrid();
    EXPECT_EQ(input->objectName(), QStringLiteral("InputTG"));
    EXPECT_EQ(result->objectName(), QStringLiteral("ResultTG"));
    EXPECT_EQ(input->rowCount(), 7);
    const QStringList captions = {QStringLiteral("Variants"),      QStringLiteral("Arithematic Mean"),
                                  QStringLiteral("Geometric Mean"), QStringLiteral("Median"),
                                  QStringLiteral("Minimum"),       QStringLiteral("Maximum"),
                                  QStringLiteral("Standard Deviation")};
    for (int c = 0; c < 7; ++c) EXPECT_EQ(result->horizontalHeaderItem(c)->text(), captions[c]);
    QAction* generate = form->action(QStringLiteral("mnuGenerate"));
    ASSERT_NE(generate, nullptr);
    EXPECT_EQ(generate->shortcut(), QKeySequence(Qt::Key_F7));
    for (const char* name : {"mnuPrint", "mnuView", "mnuGraph", "mnuExit"})
        EXPECT_NE(form->action(QString::fromLatin1(name)), nullptr) << name;
    const QString hints = form->findChild<QLabel*>(QStringLiteral("HintsPanel"))->text();
    EXPECT_TRUE(hints.contains(QStringLiteral("To update results click on the Generate menu or press F7.")));
    EXPECT_TRUE(hints.contains(QStringLiteral("Double click on the variant name to select all the terms generated.")));
    // Every column heading can be read whole.
    for (QTableWidget* grid : {input, result})
        for (int c = 0; c < 7; ++c) {
            const QString heading = grid->horizontalHeaderItem(c)->text();
            EXPECT_GE(grid->horizontalHeader()->sectionSize(c),
                      grid->horizontalHeader()->fontMetrics().horizontalAdvance(heading))
                << heading.toStdString();
        }
}

TEST_F(MonteCarloScreen, TheDropDownsOfferTheVariantsAndTheDistributions) {
    open();
    QComboBox* variants = openEditor<QComboBox>(form->inputGrid(), 0, 0);
    ASSERT_NE(variants, nullptr);
    EXPECT_EQ(variants->objectName(), QStringLiteral("variantLB"));
    ASSERT_EQ(variants->count(), 7);
    EXPECT_EQ(variants->itemText(0), kVelocity);
    EXPECT_EQ(variants->itemText(5), QStringLiteral("Contaminant Conc. at Inflow Boundary"));
    EXPECT_EQ(variants->itemText(6), QStringLiteral("--REMOVE--"));
    // The list drops down whole, every name readable.
    if (variants->view()->isVisible()) {
        EXPECT_GE(variants->view()->width(), variants->view()->fontMetrics().horizontalAdvance(kDispersion));
        qtest::saveShot(variants->view()->window(), QStringLiteral("monte_carlo_form_variant_list"));
    }
    pick(variants, kDispersion);
    EXPECT_EQ(form->inputGrid()->item(0, 0)->text(), kDispersion);
    EXPECT_EQ(form->inputGrid()->item(0, 1)->text(), QStringLiteral("0.5"));  // its present value

    QComboBox* distributions = openEditor<QComboBox>(form->inputGrid(), 0, 6);
    ASSERT_NE(distributions, nullptr);
    EXPECT_EQ(distributions->objectName(), QStringLiteral("distributionCombo"));
    const QStringList expected = {"Normal", "Lognormal", "Exponential", "Uniform", "Gumbel", "Triangle", "Loguniform"};
    ASSERT_EQ(distributions->count(), 7);
    for (int i = 0; i < 7; ++i) EXPECT_EQ(distributions->itemText(i), expected[i]);
    pick(distributions, QStringLiteral("Gumbel"));
    EXPECT_EQ(form->inputGrid()->item(0, 6)->text(), QStringLiteral("Gumbel"));

    // --REMOVE-- empties the row again.
    pick(openEditor<QComboBox>(form->inputGrid(), 0, 0), QStringLiteral("--REMOVE--"));
    for (int c = 0; c < 7; ++c) EXPECT_EQ(form->inputGrid()->item(0, c)->text(), QString()) << c;
}

TEST_F(MonteCarloScreen, F7CommitsTheOpenEditThenGenerates) {
    open();
    fillRow(form->inputGrid(), 0, kVelocity, QStringLiteral("0.2"), QStringLiteral("0.4"), QStringLiteral("0.001"),
            QStringLiteral("10"), QStringLiteral("Uniform"));
    // The terms typed but still in the editor when F7 comes.
    QLineEdit* line = openEditor<QLineEdit>(form->inputGrid(), 0, 5);
    ASSERT_NE(line, nullptr);
    line->selectAll();
    QTest::keyClicks(line, QStringLiteral("12"));
    seedMonteCarlo(4);
    QTest::keyClick(line, Qt::Key_F7);
    settle();
    EXPECT_EQ(data.InputTGData(1, 1).terms, "12");
    EXPECT_EQ(data.monteIterations, 13);
    EXPECT_EQ(form->resultGrid()->item(0, 0)->text(), kVelocity);
    EXPECT_FALSE(form->resultGrid()->item(0, 4)->text().isEmpty());
    EXPECT_EQ(form->panel()->text(), QStringLiteral("AQUIFER: Semi-Infinite  CONTAMINANT: Dirichlet"));
    EXPECT_TRUE(ui.messages.empty());
}

TEST_F(MonteCarloScreen, DoubleClickSelectsAndExitCopiesTheTablesBack) {
    open();
    fillRow(form->inputGrid(), 0, kVelocity, QStringLiteral("0.2"), QStringLiteral("0.4"), QStringLiteral("0.001"),
            QStringLiteral("10"), QStringLiteral("Uniform"));
    seedMonteCarlo(4);
    form->action(QStringLiteral("mnuGenerate"))->trigger();
    settle();
    doubleClickCell(form->resultGrid(), 0, 3);
    EXPECT_EQ(data.ResultTGData(1, 1).selection, "Median");
    EXPECT_TRUE(form->resultGrid()->item(0, 3)->data(Qt::UserRole).toBool());
    EXPECT_FALSE(form->resultGrid()->item(0, 0)->data(Qt::UserRole).toBool());
    doubleClickCell(form->resultGrid(), 0, 3);
    EXPECT_EQ(data.ResultTGData(1, 1).selection, "Nothing");
    doubleClickCell(form->resultGrid(), 0, 0);
    EXPECT_EQ(data.ResultTGData(1, 1).selection, "Variants");
    qtest::saveShot(form.get(), QStringLiteral("monte_carlo_form"));

    form->action(QStringLiteral("mnuExit"))->trigger();
    settle();
    EXPECT_FALSE(form->isVisible());
    const MonteBlock& block = data.monteStore(ModelKind::OneDimensional);
    EXPECT_EQ(block.InputTGData(1, 1).variant, kVelocity.toStdString());
    EXPECT_EQ(block.ResultTGData(1, 1).selection, "Variants");
    EXPECT_EQ(block.monteIterations, 11);
}

TEST_F(MonteCarloScreen, ClosingTheWindowIsExit) {
    open();
    pick(openEditor<QComboBox>(form->inputGrid(), 1, 0), kVelocity);
    form->close();
    settle();
    EXPECT_EQ(data.monteStore(ModelKind::OneDimensional).InputTGData(2, 1).variant, kVelocity.toStdString());
}

TEST_F(MonteCarloScreen, PrintAndViewTheSummaryOfEachVariant) {
    testkit::TempDir dir;
    state.temporaryDataPath = dir.file("");
    state.textEditorPath = "/bin/true";
    open();
    fillRow(form->inputGrid(), 0, kVelocity, QStringLiteral("0.2"), QStringLiteral("0.4"), QStringLiteral("0.001"),
            QStringLiteral("10"), QStringLiteral("Uniform"));
    form->model().setViewPath(dir.file("view.plt"));
    // Nothing generated yet: nothing to view.
    form->action(QStringLiteral("mnuView"))->trigger();
    settle();
    EXPECT_EQ(ui.lastText(), "No output data to be viewed.");
    seedMonteCarlo(4);
    form->action(QStringLiteral("mnuGenerate"))->trigger();
    settle();

    form->action(QStringLiteral("mnuView"))->trigger();
    settle();
    ASSERT_EQ(ui.programStarts.size(), 1u);
    EXPECT_EQ(ui.programStarts[0].program, "/bin/true");
    const std::string view = testkit::readFileBytes(dir.file("view.plt"));
    EXPECT_EQ(view.rfind("Monte Carlo\r\nType: Generated\r\nTotal variants: 1\r\n", 0), 0u);
    EXPECT_NE(view.find("Variant: Ground Water Darcy Velocity (V)"), std::string::npos);

    const QString pdf = QString::fromStdString(dir.file("summary.pdf"));
    form->setPdfOutput(pdf);
    form->action(QStringLiteral("mnuPrint"))->trigger();
    settle();
    ASSERT_TRUE(QFile::exists(pdf));
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    ASSERT_TRUE(p.waitForFinished(20000));
    const QString text = QString::fromUtf8(p.readAllStandardOutput());
    for (const char* word : {"Variant:", "Ground Water Darcy Velocity (V)", "Distribution Type:", "Uniform",
                             "Number of Monte Carlo Iterations:", "Standard Deviation:"})
        EXPECT_TRUE(text.contains(QString::fromLatin1(word))) << word;
}

// ---------------------------------------------------------------- from the model screen

TEST(MonteCarloFromTheModelScreen, GenerateLocksTheFieldAndCalculateStopsBetweenIterations) {
    DataSet& data = theDataSet();
    data = testkit::oneDimScreenModel();
    AppState state;
    ScriptedUserInterface ui;
    testkit::ScopedUserInterface scope(ui);
    registerMonteCarloForm();
    InputForm screen(data, state, ui);
    ui.onProcessEvents = [] { QApplication::processEvents(); };
    screen.load(true);
    screen.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&screen));
    settle();

    bool seen = false;
    qtest::onModal(QStringLiteral("MonteCarloForm"), [&](QWidget* w) {
        auto* form = static_cast<MonteCarloForm*>(w);
        seen = true;
        form->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form));
        fillRow(form->inputGrid(), 0, kVelocity, QStringLiteral("0.2"), QStringLiteral("0.4"),
                QStringLiteral("0.001"), QStringLiteral("10"), QStringLiteral("Uniform"));
        seedMonteCarlo(8);
        // (F7 itself is the test above; here the menu item.)
        form->action(QStringLiteral("mnuGenerate"))->trigger();
        settle();
        doubleClickCell(form->resultGrid(), 0, 0);
        form->action(QStringLiteral("mnuExit"))->trigger();
    });
    qtest::Watchdog watchdog;
    screen.menuItem(QStringLiteral("menuMonteCarlo(10)"))->trigger();
    settle();
    ASSERT_TRUE(seen);
    ASSERT_FALSE(watchdog.fired());

    screen.tabSet(1)->setCurrentIndex(2);  // the field constants, where the velocity is
    settle();
    qtest::saveShot(&screen, QStringLiteral("input_form_under_simulation"));
    QLineEdit* velocity = screen.rowEntry(1, 0);
    EXPECT_TRUE(velocity->displayText().startsWith(QStringLiteral("Monte Carlo")));
    EXPECT_EQ(screen.findChild<QLabel*>(QStringLiteral("MonteCarloElastic"))->text(), QStringLiteral("Monte Carlo"));
    ui.messages.clear();
    velocity->setFocus();
    settle();
    QTest::keyClicks(velocity, QStringLiteral("5"));
    settle();
    ASSERT_GE(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Read Only");
    EXPECT_TRUE(holdsMonteMarker(data.velocity));

    // Stop between the third and the fourth iteration.
    ui.messages.clear();
    ui.onProgress = [&](const ScriptedUserInterface::Progress& p) {
        screen.showProgress(p.total, p.done);
        QApplication::processEvents();
        if (p.done == 3) {
            ui.answers.push_back(MessageAnswer::Yes);
            QTest::mouseClick(screen.stopButton(), Qt::LeftButton);
        }
    };
    screen.menuItem(QStringLiteral("mnuFile(20)"))->trigger();
    settle();
    EXPECT_EQ(ui.progress.size(), 3u);
    ASSERT_EQ(data.mcResult1D.ub(), 10);
    EXPECT_GT(data.mcResult1D(3), 0.0);
    EXPECT_EQ(data.mcResult1D(4), 0.0);
    EXPECT_EQ(ui.lastTitle(), "Stop Calculation");
    screen.hide();
    closeModel(data, "Complete");
}

}  // namespace
}  // namespace bm
