// The fit dialog: choosing the observations, ticking inputs with bounds, Fit,
// Stop, the report and the plots, Apply; and the entry beside Calculate! on
// the saturated screen, whose rows show the estimates after Apply.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QtCharts/QChartView>

#include "fitting/fit_parameters.h"
#include "fitting/fit_plot_file.h"
#include "fitting/widgets/fit_dialog.h"
#include "model/app_state.h"
#include "model/number_text.h"
#include "saturated/widgets/input_form.h"
#include "testing/observed_column.h"
#include "testing/qt_test_support.h"
#include "testing/scripted_user_interface.h"
#include "testing/test_paths.h"

namespace bm {
namespace {

using testkit::ScriptedUserInterface;
using testkit::TempDir;

// The column started away from the inputs that made its observations.
DataSet column() {
    DataSet d = testkit::columnStartedAway();
    d.halfLife = "40";
    return d;
}

std::string observations(const TempDir& dir, bool scattered = false) {
    testkit::writeFileBytes(dir.file("wells.csv"), testkit::columnObservationText(scattered));
    return dir.file("wells.csv");
}

QCheckBox* box(QWidget* dialog, const QString& name) { return dialog->findChild<QCheckBox*>(name); }

TEST(FitDialog, ChooseTickBoundRunApply) {
    TempDir dir;
    ScriptedUserInterface ui;
    DataSet model = column();
    FitDialog dialog(model, ui);
    dialog.show();
    ui.fileAnswers.push_back(observations(dir, true));
    dialog.findChild<QPushButton*>("chooseObservationsB")->click();
    EXPECT_EQ(dialog.findChild<QLabel*>("observationSummaryL")->text(), "24 observations of C/Co at 2 places");
    EXPECT_FALSE(dialog.findChild<QPushButton*>("applyFitB")->isEnabled());

    auto* table = dialog.findChild<QTableWidget*>("fitInputsTG");
    ASSERT_EQ(table->item(0, 1)->text(), "Velocity");
    ASSERT_EQ(table->item(1, 1)->text(), "Dispersion_X");
    box(&dialog, "vary0")->setChecked(true);
    box(&dialog, "vary1")->setChecked(true);
    box(&dialog, "log1")->setChecked(true);
    table->item(0, 3)->setText("0.1");
    table->item(0, 4)->setText("3");
    dialog.findChild<QPushButton*>("runFitB")->click();

    ASSERT_TRUE(dialog.form().report());
    EXPECT_EQ(dialog.form().report()->ending, FitEnding::Converged);
    const QString report = dialog.findChild<QPlainTextEdit*>("fitReportE")->toPlainText();
    EXPECT_TRUE(report.contains("0.1 to 3")) << report.toStdString();
    EXPECT_TRUE(report.contains("(log scale)"));
    EXPECT_TRUE(report.contains("Correlation matrix"));
    EXPECT_TRUE(dialog.findChild<QPushButton*>("applyFitB")->isEnabled());
    auto* chart = dialog.findChild<QChartView*>("fitChartV");
    ASSERT_NE(chart, nullptr);
    EXPECT_EQ(chart->chart()->series().size(), 4);  // a curve and its observations at each well
    ASSERT_NE(dialog.findChild<QChartView*>("residualChartV"), nullptr);
    qtest::saveShot(&dialog, "fit_report");
    dialog.findChild<QTabWidget*>("fitResultsTabs")->setCurrentIndex(1);
    QApplication::processEvents();
    qtest::saveShot(&dialog, "fit_plot");
    dialog.findChild<QTabWidget*>("fitResultsTabs")->setCurrentIndex(2);
    QApplication::processEvents();
    qtest::saveShot(&dialog, "fit_residuals");

    dialog.findChild<QPushButton*>("applyFitB")->click();
    EXPECT_TRUE(dialog.applied());
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    const FitReport& fitted = *dialog.form().report();
    EXPECT_EQ(model.velocity, fittedValueText(fitted.estimates[0].value));
    EXPECT_EQ(model.dispersionX, fittedValueText(fitted.estimates[1].value));
    EXPECT_NEAR(fitted.estimates[0].value, 0.5, 0.01);
    EXPECT_NEAR(fitted.estimates[1].value, 0.8, 0.05);
    EXPECT_EQ(model.halfLife, "40");
    EXPECT_TRUE(ui.messages.empty());
}

// The plotting utility's folder and a stand-in for the program.
AppState plotting(const TempDir& dir) {
    AppState state;
    state.temporaryDataPath = dir.path().string();
    state.graphUtilityPath = dir.file("trazel");
    testkit::writeFileBytes(state.graphUtilityPath, "program");
    return state;
}

TEST(FitDialog, PlotWritesTheFitsPlotFileAndStartsTheUtilityOnIt) {
    TempDir dir;
    ScriptedUserInterface ui;
    DataSet model = column();
    const AppState state = plotting(dir);
    FitDialog dialog(model, ui, &state);
    dialog.show();
    auto* plot = dialog.findChild<QPushButton*>("plotFitB");
    ASSERT_NE(plot, nullptr);
    EXPECT_EQ(plot->text(), "&Plot in Trazel");
    EXPECT_FALSE(plot->isEnabled());  // nothing fitted yet
    ui.fileAnswers.push_back(observations(dir, true));
    dialog.findChild<QPushButton*>("chooseObservationsB")->click();
    box(&dialog, "vary0")->setChecked(true);
    box(&dialog, "vary1")->setChecked(true);
    dialog.findChild<QPushButton*>("runFitB")->click();
    ASSERT_TRUE(plot->isEnabled());
    plot->click();

    ASSERT_EQ(ui.programStarts.size(), 1u);
    EXPECT_EQ(ui.programStarts[0].program, dir.file("trazel"));
    EXPECT_EQ(ui.programStarts[0].arguments, std::vector<std::string>{dir.file("brenmoor_fit.plt")});
    const FitPlotReading written = parseFitPlot(testkit::readFileBytes(dir.file("brenmoor_fit.plt")));
    ASSERT_TRUE(written.plot) << written.problem;
    EXPECT_EQ(written.plot->places.size(), 2u);
    EXPECT_EQ(written.plot->observationCount(), 24u);
    EXPECT_EQ(written.plot->estimates.size(), 2u);
    EXPECT_TRUE(ui.messages.empty());
    // The workbench's own plot file is left alone.
    EXPECT_FALSE(std::filesystem::exists(dir.file("brenmoor.plt")));

    // Without the utility the file is still written, and the message says what is missing.
    std::filesystem::remove(dir.file("trazel"));
    std::filesystem::remove(dir.file("brenmoor_fit.plt"));
    plot->click();
    EXPECT_TRUE(std::filesystem::exists(dir.file("brenmoor_fit.plt")));
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Missing Trazel Utility");
    EXPECT_EQ(ui.programStarts.size(), 1u);
}

TEST(FitDialog, PlotNeedsToKnowWhereTheUtilityIs) {
    TempDir dir;
    ScriptedUserInterface ui;
    DataSet model = column();
    FitDialog dialog(model, ui);
    ui.fileAnswers.push_back(observations(dir));
    dialog.findChild<QPushButton*>("chooseObservationsB")->click();
    box(&dialog, "vary0")->setChecked(true);
    dialog.findChild<QPushButton*>("runFitB")->click();
    ASSERT_TRUE(dialog.form().canPlot());
    EXPECT_FALSE(dialog.findChild<QPushButton*>("plotFitB")->isEnabled());
    dialog.plotFit();
    EXPECT_TRUE(ui.programStarts.empty());
}

TEST(FitDialog, APlotFolderThatCannotBeWrittenIsAMessageAndNoStart) {
    TempDir dir;
    ScriptedUserInterface ui;
    DataSet model = column();
    AppState state = plotting(dir);
    state.temporaryDataPath = dir.file("no such folder");
    FitDialog dialog(model, ui, &state);
    ui.fileAnswers.push_back(observations(dir));
    dialog.findChild<QPushButton*>("chooseObservationsB")->click();
    box(&dialog, "vary0")->setChecked(true);
    dialog.findChild<QPushButton*>("runFitB")->click();
    dialog.findChild<QPushButton*>("plotFitB")->click();
    EXPECT_TRUE(ui.programStarts.empty());
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_NE(ui.messages[0].text.find("no such folder"), std::string::npos) << ui.messages[0].text;
}

TEST(FitDialog, StopEndsTheRunAndTheReportSaysSo) {
    TempDir dir;
    ScriptedUserInterface ui;
    DataSet model = column();
    FitDialog dialog(model, ui);
    dialog.show();
    ui.fileAnswers.push_back(observations(dir));
    dialog.findChild<QPushButton*>("chooseObservationsB")->click();
    box(&dialog, "vary0")->setChecked(true);
    box(&dialog, "vary1")->setChecked(true);
    box(&dialog, "vary2")->setChecked(true);
    // Stop is pressed once the first iteration is shown.
    auto* stop = dialog.findChild<QPushButton*>("stopFitB");
    EXPECT_FALSE(stop->isEnabled());
    QObject::connect(dialog.findChild<QProgressBar*>("fitProgress"), &QProgressBar::valueChanged, stop, [stop](int value) {
        if (value >= 1 && stop->isEnabled()) stop->click();
    });
    dialog.findChild<QPushButton*>("runFitB")->click();
    ASSERT_TRUE(dialog.form().report());
    EXPECT_EQ(dialog.form().report()->ending, FitEnding::Stopped);
    EXPECT_TRUE(dialog.findChild<QPlainTextEdit*>("fitReportE")->toPlainText().contains("Stopped by the user after 1 iterations"));
    EXPECT_FALSE(stop->isEnabled());
    EXPECT_TRUE(dialog.findChild<QPushButton*>("runFitB")->isEnabled());
    // Close leaves the model as it was.
    dialog.findChild<QPushButton*>("closeFitB")->click();
    EXPECT_FALSE(dialog.applied());
    EXPECT_EQ(model.velocity, "0.7");
}

TEST(FitDialog, ARowUnderMonteCarloCannotBeTicked) {
    ScriptedUserInterface ui;
    DataSet model = column();
    model.dispersionX = "Monte Carlo" + std::string(500, ' ') + "|0.5: 1";
    FitDialog dialog(model, ui);
    EXPECT_TRUE(box(&dialog, "vary0")->isEnabled());
    EXPECT_FALSE(box(&dialog, "vary1")->isEnabled());
    EXPECT_FALSE(box(&dialog, "log1")->isEnabled());
    EXPECT_EQ(dialog.findChild<QTableWidget*>("fitInputsTG")->item(1, 2)->text(), "Monte Carlo");
}

TEST(FitDialog, TheSaturatedScreenOpensItBesideCalculateAndShowsTheEstimates) {
    TempDir dir;
    ScriptedUserInterface ui;
    testkit::ScopedUserInterface scope(ui);
    DataSet data = column();
    AppState state = plotting(dir);
    auto form = std::make_unique<InputForm>(data, state, ui);
    form->load(true);
    form->show();
    QAction* fit = form->menuItem("mnuFit");
    ASSERT_NE(fit, nullptr);
    EXPECT_EQ(fit->text(), "Fit to &Observations...");
    EXPECT_TRUE(fit->isEnabled());
    const std::string file = observations(dir);
    bool seen = false;
    qtest::onModal("fitForm", [&](QWidget* w) {
        seen = true;
        auto* dialog = static_cast<FitDialog*>(w);
        ui.fileAnswers.push_back(file);
        dialog->findChild<QPushButton*>("chooseObservationsB")->click();
        box(dialog, "vary0")->setChecked(true);
        box(dialog, "vary1")->setChecked(true);
        dialog->findChild<QPushButton*>("runFitB")->click();
        dialog->findChild<QPushButton*>("plotFitB")->click();  // the screen's utility and folder
        dialog->findChild<QPushButton*>("applyFitB")->click();
    });
    fit->trigger();
    EXPECT_TRUE(seen);
    ASSERT_EQ(ui.programStarts.size(), 1u);
    EXPECT_EQ(ui.programStarts[0].arguments, std::vector<std::string>{dir.file("brenmoor_fit.plt")});
    EXPECT_EQ(data.velocity, "0.5");
    EXPECT_EQ(data.dispersionX, "0.8");
    EXPECT_EQ(data.dataState, kParametersChanged);
    // The rows of the screen (velocity, dispersion) show the estimates.
    EXPECT_EQ(form->rowEntry(1, 0)->text(), "0.5");
    EXPECT_EQ(form->rowEntry(1, 1)->text(), "0.8");
    form->hide();
}

}  // namespace
}  // namespace bm
