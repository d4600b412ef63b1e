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
    AppState state;
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
        dialog->findChild<QPushButton*>("applyFitB")->click();
    });
    fit->trigger();
    EXPECT_TRUE(seen);
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
