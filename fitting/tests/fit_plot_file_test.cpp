// The fit's plot file: hand-written files read into the values typed in them
// and written back byte for byte; a bad line named with its number; and the
// curves of a real fit against the model evaluated another way (the closed
// form of the column, a regular Calculate! over the strip's grid).

#include <gtest/gtest.h>

#include "fit_test_support.h"
#include "fitting/fit_form.h"
#include "fitting/fit_plot_file.h"
#include "testing/is_close.h"

namespace bm {
namespace {

using namespace testkit;

std::string fixtureText(const std::string& name) { return readFileBytes(fixturePath("fitting", name)); }

FitPlot readFixture(const std::string& name) {
    const FitPlotReading reading = parseFitPlot(fixtureText(name));
    EXPECT_TRUE(reading.plot) << name << ": " << reading.problem;
    return reading.plot.value_or(FitPlot{});
}

// Reads a fixture, and writes it back exactly as it was.
void expectRoundTrip(const std::string& name) {
    const FitPlot plot = readFixture(name);
    EXPECT_EQ(fitPlotText(plot), fixtureText(name)) << name;
}

TEST(FitPlotFile, OnePlaceReadsAsTypedAndWritesBack) {
    const FitPlot p = readFixture("fit_plot_one_place.plt");
    EXPECT_EQ(p.model, "One Dimensional");
    EXPECT_EQ(p.aquifer, "Semi-Infinite");
    EXPECT_EQ(p.contaminant, "Dirichlet");
    EXPECT_EQ(p.lengthUnit, "m");
    EXPECT_EQ(p.timeUnit, "day");
    EXPECT_EQ(p.concentrationUnit, "mg/l");
    EXPECT_TRUE(p.relative);
    EXPECT_EQ(p.dimension, 1);
    EXPECT_EQ(p.dataFile, "/data/column.one");
    EXPECT_EQ(p.observationFile, "/data/wells.csv");
    EXPECT_EQ(p.estimates, (std::vector<FitPlotEstimate>{{"Velocity", 0.5}, {"Dispersion_X", 0.8}}));
    EXPECT_EQ(p.rmse, 0.0125);
    EXPECT_EQ(p.rSquared, 0.998);
    ASSERT_EQ(p.places.size(), 1u);
    EXPECT_EQ(p.places[0].x, 3);
    EXPECT_EQ(p.places[0].times, (std::vector<double>{2.5, 5, 7.5, 10}));
    EXPECT_EQ(p.places[0].values, (std::vector<double>{0.25, 0.5, 0.75, 0.875}));
    EXPECT_EQ(p.places[0].observations,
              (std::vector<FitPlotObservation>{{1, 2.5, 0.26, 0.25, 0.01}, {2, 5, 0.52, 0.5, 0.02}, {3, 10, 0.9, 0.875, 0.025}}));
    EXPECT_EQ(p.observationCount(), 3u);
    EXPECT_EQ(p.header.size(), 16u);
    EXPECT_EQ(p.header[0], (std::pair<std::string, std::string>{"Model", "One Dimensional"}));
    expectRoundTrip("fit_plot_one_place.plt");
}

TEST(FitPlotFile, SeveralPlacesOfAPlaneInTheModelsUnit) {
    const FitPlot p = readFixture("fit_plot_several_places.plt");
    EXPECT_FALSE(p.relative);
    EXPECT_EQ(p.dimension, 2);
    EXPECT_EQ(p.dataFile, "Input Data Not Saved");
    EXPECT_EQ(p.estimates.size(), 3u);
    ASSERT_EQ(p.places.size(), 3u);
    EXPECT_EQ(p.places[1].x, 100);
    EXPECT_EQ(p.places[1].y, 20);
    EXPECT_EQ(p.places[1].z, 0);
    EXPECT_EQ(p.places[2].x, 200);
    // The observations keep the numbers of the observation file, whatever the place.
    EXPECT_EQ(p.places[0].observations,
              (std::vector<FitPlotObservation>{{1, 1, 2.5, 2, 0.5}, {3, 3, 7.75, 8, -0.25}}));
    EXPECT_EQ(p.places[1].observations, (std::vector<FitPlotObservation>{{2, 2, 1.25, 1.5, -0.25}}));
    EXPECT_EQ(p.places[2].observations[1], (FitPlotObservation{5, 3, 4, 4, 0}));
    EXPECT_EQ(p.observationCount(), 5u);
    expectRoundTrip("fit_plot_several_places.plt");
}

TEST(FitPlotFile, AnObservationExactlyOnTheCurveOfAPlaceInThreeDimensions) {
    const FitPlot p = readFixture("fit_plot_on_the_curve.plt");
    EXPECT_EQ(p.dimension, 3);
    ASSERT_EQ(p.places.size(), 1u);
    EXPECT_EQ(p.places[0].z, 2.5);
    const FitPlotObservation& o = p.places[0].observations.at(0);
    EXPECT_EQ(o.t, p.places[0].times[1]);
    EXPECT_EQ(o.observed, p.places[0].values[1]);
    EXPECT_EQ(o.residual, 0);
    expectRoundTrip("fit_plot_on_the_curve.plt");
}

TEST(FitPlotFile, NegativeResiduals) {
    const FitPlot p = readFixture("fit_plot_negative_residual.plt");
    ASSERT_EQ(p.places.size(), 2u);
    EXPECT_EQ(p.places[0].observations.at(0).residual, -0.05);
    EXPECT_EQ(p.places[1].observations.at(0).residual, -0.025);
    expectRoundTrip("fit_plot_negative_residual.plt");
}

TEST(FitPlotFile, ABadFileIsNamedByItsLine) {
    const std::pair<const char*, const char*> cases[] = {
        {"fit_plot_bad_row.plt", "Line 22: a row of the fitted curve (t, C) holds 2 values, but this one holds 3."},
        {"fit_plot_bad_number.plt",
         "Line 27: \"2, 5, 0.52x, 0.5, 0.02\" is not a row of numbers: \"0.52x\" is not a number."},
        {"fit_plot_bad_place.plt", "Line 19: \"y = 3\" should read \"x = \" and a number."},
        {"fit_plot_no_dimension.plt", "Line 18: the header lacks the line \"Dimension: \" before the first place."},
        {"fit_plot_count_mismatch.plt", "The header announces 4 observations but the file holds 3."},
        {"fit_plot_no_observations.plt", "Line 19: the place x = 3 has no observations."},
    };
    for (const auto& [name, message] : cases) {
        const FitPlotReading reading = parseFitPlot(fixtureText(name));
        EXPECT_FALSE(reading.plot) << name;
        EXPECT_EQ(reading.problem, message) << name;
    }
    EXPECT_EQ(parseFitPlot("").problem, "The file is empty.");
    EXPECT_EQ(parseFitPlot("\n\nGround Water\nModel: One Dimensional\n").problem,
              "Line 3: a fit's plot file begins with \"Fit to Observations\", not \"Ground Water\".");
    EXPECT_EQ(parseFitPlot("Fit to Observations\nDimension: 1\nConcentration: C/Co\n").problem,
              "The file has no places (no line begins with \"Place:\").");
    EXPECT_EQ(parseFitPlot("Fit to Observations\r\nDimension: 4\r\n").problem,
              "Line 2: the dimension should be 1, 2 or 3, not \"4\".");
}

// --- a real fit ----------------------------------------------------------------

struct ColumnFit {
    DataSet model = columnStartedAway();
    FitReport report;
};

// The column the fits start from: started away from the wells' values, decaying.
DataSet columnToFit() {
    DataSet model = columnStartedAway();
    model.halfLife = "40";
    return model;
}

ColumnFit fittedColumn(ScriptedUserInterface& ui) {
    ColumnFit fit{columnToFit(), {}};
    const ObservationReading reading = parseObservations(columnObservationText(true), "wells.csv", 1);
    fit.report = fitModel(fit.model, *reading.set, vary({"Velocity", "Dispersion_X"}), ui);
    EXPECT_EQ(fit.report.ending, FitEnding::Converged) << fit.report.stopReason;
    return fit;
}

TEST(FitPlotFile, TheColumnsCurvesAreItsClosedFormAtTheEstimates) {
    ScriptedUserInterface ui;
    const ColumnFit fit = fittedColumn(ui);
    const std::optional<FitPlot> plot = fitPlotOf(fit.model, fit.report, ui);
    ASSERT_TRUE(plot);
    EXPECT_EQ(plot->estimates[0].name, "Velocity");
    EXPECT_EQ(plot->observationCount(), 24u);
    ASSERT_EQ(plot->places.size(), 2u);
    EXPECT_EQ(plot->places[0].x, 3);
    EXPECT_EQ(plot->places[1].x, 8);
    // The curves: the model's rows as Apply leaves them.
    DataSet applied = fit.model;
    applyEstimates(applied, fit.report);
    const double V = textValue(applied.velocity), D = textValue(applied.dispersionX);
    const double lambda = std::log(2.0) / 40;
    for (const FitPlotPlace& place : plot->places) {
        ASSERT_EQ(place.times.size(), 101u);
        EXPECT_CLOSE(place.times.back(), 36, 1e-15, 0);
        for (std::size_t k = 0; k < place.times.size(); ++k)
            EXPECT_CLOSE(place.values[k], semiInfiniteDirichletReference(V, D, lambda, place.x, place.times[k]), 1e-9, 1e-12)
                << "x = " << place.x << ", t = " << place.times[k];
        // The observations: the fitted value at the full-precision estimates.
        const double v = fit.report.estimates[0].value, d = fit.report.estimates[1].value;
        ASSERT_EQ(place.observations.size(), 12u);
        for (const FitPlotObservation& o : place.observations) {
            const double expected = semiInfiniteDirichletReference(v, d, lambda, place.x, o.t);
            EXPECT_CLOSE(o.fitted, expected, 1e-9, 1e-12);
            EXPECT_CLOSE(o.residual, o.observed - expected, 1e-6, 1e-11);
        }
    }
    // Numbered in the file's order: the first well's twelve, then the second's.
    EXPECT_EQ(plot->places[0].observations.front().number, 1);
    EXPECT_EQ(plot->places[1].observations.front().number, 13);
    EXPECT_EQ(plot->places[1].observations.front().t, 3);
}

TEST(FitPlotFile, WrittenWholeAndReadBackToFifteenDigits) {
    ScriptedUserInterface ui;
    const DataSet model = columnToFit();
    FitForm form(model, ui);
    TempDir dir;
    writeFileBytes(dir.file("wells.csv"), columnObservationText(true));
    ASSERT_TRUE(form.chooseObservations(dir.file("wells.csv")));
    EXPECT_FALSE(form.canPlot());
    EXPECT_FALSE(form.writePlot(dir.file("fit.plt")));
    form.rows[0].vary = form.rows[1].vary = true;
    ASSERT_TRUE(form.run({}, {}));
    ASSERT_TRUE(form.canPlot());
    writeFileBytes(dir.file("fit.plt"), "an earlier plot");
    ASSERT_TRUE(form.writePlot(dir.file("fit.plt")));
    const FitPlotReading back = parseFitPlot(readFileBytes(dir.file("fit.plt")));
    ASSERT_TRUE(back.plot) << back.problem;
    const std::optional<FitPlot> direct = fitPlotOf(model, *form.report(), ui);
    ASSERT_TRUE(direct);
    ASSERT_EQ(back.plot->places.size(), direct->places.size());
    for (std::size_t p = 0; p < direct->places.size(); ++p) {
        const FitPlotPlace &a = back.plot->places[p], &b = direct->places[p];
        ASSERT_EQ(a.values.size(), b.values.size());
        for (std::size_t k = 0; k < a.values.size(); ++k) {
            EXPECT_CLOSE(a.times[k], b.times[k], 1e-14, 0);
            EXPECT_CLOSE(a.values[k], b.values[k], 1e-14, 1e-300);
        }
        ASSERT_EQ(a.observations.size(), b.observations.size());
        for (std::size_t k = 0; k < a.observations.size(); ++k)
            EXPECT_CLOSE(a.observations[k].residual, b.observations[k].residual, 1e-14, 1e-300);
    }
    EXPECT_EQ(back.plot->observationFile, dir.file("wells.csv"));
    EXPECT_EQ(back.plot->dataFile, "Input Data Not Saved");
    EXPECT_EQ(back.plot->concentrationUnit, "mg/l");
    EXPECT_TRUE(ui.messages.empty());
}

TEST(FitPlotFile, TheStripsCurvesAreItsRegularRunAtTheEstimates) {
    ScriptedUserInterface ui;
    DataSet truth = sampleModel(".two");
    truth.aquiferType = "Finite";
    truth.timeRange = "182.5:1825:182.5";
    const std::vector<GridPoint> places{{5, 11}, {13, 12}};
    DataSet model = truth;
    model.velocity = generalText(textValue(truth.velocity) * 1.2);
    const FitReport report = fitModel(model, gridObservations(truth, places, 0.0, 1), vary({"Velocity"}), ui);
    ASSERT_EQ(report.ending, FitEnding::Converged) << report.stopReason;
    // Ten points up to the last observed time fall on the grid's times.
    const std::optional<FitPlot> plot = fitPlotOf(model, report, ui, 10);
    ASSERT_TRUE(plot);
    ASSERT_EQ(plot->places.size(), 2u);
    EXPECT_EQ(plot->dimension, 2);

    DataSet applied = model;
    applyEstimates(applied, report);
    ASSERT_TRUE(runCalculation(applied, ui).finished);
    ASSERT_EQ(applied.tValues.ub(), 10);
    for (std::size_t p = 0; p < places.size(); ++p) {
        const FitPlotPlace& place = plot->places[p];
        EXPECT_EQ(place.x, applied.xValues(places[p].i));
        EXPECT_EQ(place.y, applied.yValues(places[p].j));
        ASSERT_EQ(place.times.size(), 10u);
        for (int t = 1; t <= 10; ++t) {
            EXPECT_CLOSE(place.times[static_cast<std::size_t>(t - 1)], applied.tValues(t), 1e-12, 0);
            EXPECT_CLOSE(place.values[static_cast<std::size_t>(t - 1)], applied.result2D(places[p].i, places[p].j, t), 1e-9, 1e-12)
                << "place " << p << ", t = " << applied.tValues(t);
        }
    }
    EXPECT_TRUE(ui.messages.empty());
}

}  // namespace
}  // namespace bm
