// The fit dialog's model: its rows, the observation file, a run with bounds,
// Stop, the report, the curves and Apply.

#include <gtest/gtest.h>

#include "fit_test_support.h"
#include "fitting/fit_form.h"
#include "montecarlo/monte_marker.h"
#include "testing/is_close.h"

namespace bm {
namespace {

using namespace testkit;

std::string observationFile(const TempDir& dir) {
    writeFileBytes(dir.file("wells.csv"), columnObservationText());
    return dir.file("wells.csv");
}

TEST(FitForm, RowsShowTheModelsInputsAndLockThoseUnderMonteCarlo) {
    ScriptedUserInterface ui;
    DataSet model = fitColumn();
    model.halfLife = formFieldMarker("40", 1);
    FitForm form(model, ui);
    ASSERT_EQ(form.rows.size(), 6u);
    EXPECT_EQ(form.rows[0].name, "Velocity");
    EXPECT_EQ(form.rows[0].start, "0.5");
    EXPECT_TRUE(form.rows[0].enabled);
    EXPECT_EQ(form.rows[2].name, "HalfLife");
    EXPECT_FALSE(form.rows[2].enabled);
    EXPECT_EQ(form.rows[2].start, "Monte Carlo");
    EXPECT_EQ(form.observationSummary(), "No observations chosen.");
}

TEST(FitForm, RunsTheTickedRowsWithTheirBoundsAndAppliesTheEstimates) {
    ScriptedUserInterface ui;
    TempDir dir;
    DataSet model = fitColumn();
    model.velocity = "0.6";
    model.halfLife = "50";
    FitForm form(model, ui);
    ASSERT_TRUE(form.chooseObservations(observationFile(dir)));
    EXPECT_EQ(form.observationSummary(), "24 observations of C/Co at 2 places");
    form.rows[0].vary = true;
    form.rows[0].lower = "0.1";
    form.rows[0].upper = "2";
    form.rows[2].vary = true;
    form.rows[2].logScale = true;
    int iterations = 0;
    ASSERT_TRUE(form.run([&](int, double) { ++iterations; }, {}));
    EXPECT_GT(iterations, 0);
    ASSERT_TRUE(form.canApply());
    EXPECT_NE(form.reportText().find("0.1 to 2"), std::string::npos);
    const auto curves = form.curves();
    ASSERT_EQ(curves.size(), 2u);
    EXPECT_EQ(curves[1].place, "x = 8");
    EXPECT_EQ(curves[1].observedTimes.size(), 12u);
    // The curve at its last time is the closed form at the truth.
    EXPECT_CLOSE(curves[0].values.back(), trueColumnRatio(3, 36), 1e-5, 1e-9);
    DataSet target = model;
    form.apply(target);
    EXPECT_EQ(target.velocity, "0.5");
    EXPECT_EQ(target.halfLife, "40");
    EXPECT_EQ(target.dispersionX, "0.8");
    EXPECT_TRUE(ui.messages.empty());
}

TEST(FitForm, BadBoundsAndMissingObservationsAreMessages) {
    ScriptedUserInterface ui;
    TempDir dir;
    FitForm form(fitColumn(), ui);
    EXPECT_FALSE(form.run({}, {}));
    EXPECT_EQ(ui.lastText(), "Choose the file of observed concentrations first.");
    writeFileBytes(dir.file("bad.csv"), "x,t\n1,2\n");
    EXPECT_FALSE(form.chooseObservations(dir.file("bad.csv")));
    EXPECT_EQ(ui.lastTitle(), "Fit to Observations");
    ASSERT_TRUE(form.chooseObservations(observationFile(dir)));
    form.rows[0].vary = true;
    form.rows[0].upper = "fast";
    EXPECT_FALSE(form.run({}, {}));
    EXPECT_EQ(ui.lastText(), "The upper bound of Velocity (\"fast\") is not a number.");
    form.rows[0].upper.clear();
    form.rows[0].vary = false;
    EXPECT_FALSE(form.run({}, {}));
    EXPECT_EQ(ui.lastText(), "Choose at least one input to vary.");
    EXPECT_FALSE(form.canApply());
}

TEST(FitForm, StopLeavesAReportThatSaysSo) {
    ScriptedUserInterface ui;
    TempDir dir;
    DataSet model = fitColumn();
    model.velocity = "0.9";
    FitForm form(model, ui);
    ASSERT_TRUE(form.chooseObservations(observationFile(dir)));
    form.rows[0].vary = form.rows[1].vary = true;
    int calls = 0;
    ASSERT_TRUE(form.run({}, [&] { return ++calls < 3; }));
    ASSERT_TRUE(form.report());
    EXPECT_EQ(form.report()->ending, FitEnding::Stopped);
    EXPECT_NE(form.reportText().find("Stopped by the user"), std::string::npos);
}

}  // namespace
}  // namespace bm
