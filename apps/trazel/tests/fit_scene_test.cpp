// A fit's plot file in Trazel: the observations as marks over the fitted
// curve of their place, the residuals against time or number, the CSV of the
// observations, and a file it cannot read. The values expected are those
// typed into the hand-written files.

#include <gtest/gtest.h>

#include "apps/trazel/csv_export.h"
#include "apps/trazel/plot_file.h"
#include "apps/trazel/plot_scene.h"
#include "testing/test_paths.h"

namespace bm::trazel {
namespace {

std::string fitFixture(const char* name) { return testkit::fixturePath("fitting", name).string(); }

PlotFile severalPlaces() {
    ReadResult r = readPlotFile(fitFixture("fit_plot_several_places.plt"));
    EXPECT_TRUE(r.ok) << r.error;
    return std::move(r.file);
}

std::vector<Point> marksOf(const Scene& s, int colour) {
    for (const Curve& c : s.curves)
        if (c.pointsOnly && c.colour == colour && !c.points.empty()) return c.points;
    return {};
}

bool same(const std::vector<Point>& a, const std::vector<Point>& b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (a[i].x != b[i].x || a[i].y != b[i].y) return false;
    return true;
}

TEST(FitScene, TheFileIsKnownByItsFirstLine) {
    const PlotFile f = severalPlaces();
    EXPECT_EQ(f.kind, PlotKind::Fit);
    EXPECT_EQ(f.model, "Two Dimensional");
    EXPECT_EQ(f.lengthUnit, "ft");
    EXPECT_EQ(f.timeUnit, "year");
    EXPECT_EQ(f.value("Observation File"), "plume_wells.csv");
    EXPECT_EQ(f.fit.places.size(), 3u);
    EXPECT_EQ(curveNames(f, Versus::Distance),
              (std::vector<std::string>{"x = 100 ft, y = 0 ft", "x = 100 ft, y = 20 ft", "x = 200 ft, y = 0 ft"}));
}

TEST(FitScene, OneMarkPerObservationOnItsPlacesCurve) {
    const PlotFile f = severalPlaces();
    const Scene s = buildScene(f, ViewState{});
    EXPECT_EQ(s.kind, SceneKind::Curves);
    EXPECT_EQ(s.xLabel, "Time t (year)");
    EXPECT_EQ(s.yLabel, "Concentration (mg/l)");
    EXPECT_NE(s.subtitle.find("Fitted: Velocity = 120, Dispersion_X = 40, Dispersion_Y = 4"), std::string::npos) << s.subtitle;
    std::size_t marks = 0, lines = 0;
    for (const Curve& c : s.curves) (c.pointsOnly ? marks : lines) += c.points.size();
    EXPECT_EQ(marks, 5u);
    EXPECT_EQ(lines, 9u);
    // The lines of the three places, in their colours.
    ASSERT_GE(s.curves.size(), 3u);
    EXPECT_EQ(s.curves[0].name, "x = 100 ft, y = 0 ft");
    EXPECT_FALSE(s.curves[0].pointsOnly);
    EXPECT_TRUE(same(s.curves[2].points, {{1, 0}, {2, 1}, {3, 4}}));
    EXPECT_EQ(s.curves[2].colour, 2);
    // Each place's observations, in its colour, at (t, C observed).
    EXPECT_TRUE(same(marksOf(s, 0), {{1, 2.5}, {3, 7.75}}));
    EXPECT_TRUE(same(marksOf(s, 1), {{2, 1.25}}));
    EXPECT_TRUE(same(marksOf(s, 2), {{2, 1.5}, {3, 4}}));
    // The legend says what the marks are.
    EXPECT_EQ(s.curves.back().name, "observed");
    EXPECT_TRUE(s.curves.back().pointsOnly);
    EXPECT_TRUE(s.curves.back().points.empty());
    // From time 0 to a little beyond the last mark, which the frame must not cut.
    EXPECT_LE(s.extent.yMin, 0);
    EXPECT_GE(s.extent.yMax, 8);
    EXPECT_EQ(s.extent.xMin, 0);
    EXPECT_DOUBLE_EQ(s.extent.xMax, 3.09);
}

TEST(FitScene, ThePlacesChosenAreTheOnesDrawn) {
    const PlotFile f = severalPlaces();
    ViewState view;
    view.automaticCurves = false;
    view.shown = {1, 7};  // 7 is no place
    const Scene s = buildScene(f, view);
    ASSERT_EQ(s.curves.size(), 3u);  // the line, its marks and the legend's mark
    EXPECT_EQ(s.curves[0].name, "x = 100 ft, y = 20 ft");
    EXPECT_TRUE(same(marksOf(s, 1), {{2, 1.25}}));
    view.shown.clear();
    EXPECT_EQ(buildScene(f, view).note, "No place is selected.");
}

TEST(FitScene, ResidualsAgainstTimeAndAgainstNumber) {
    const PlotFile f = severalPlaces();
    ViewState view;
    Scene s = buildResidualScene(f, view);
    EXPECT_EQ(s.xLabel, "Time t (year)");
    EXPECT_EQ(s.yLabel, "Residual C (mg/l)");
    ASSERT_EQ(s.curves.size(), 3u);
    EXPECT_TRUE(same(marksOf(s, 0), {{1, 0.5}, {3, -0.25}}));
    EXPECT_TRUE(same(marksOf(s, 1), {{2, -0.25}}));
    EXPECT_TRUE(same(marksOf(s, 2), {{2, 0.5}, {3, 0}}));
    ASSERT_EQ(s.guides.size(), 1u);
    EXPECT_FALSE(s.guides[0].vertical);
    EXPECT_EQ(s.guides[0].at, 0);
    EXPECT_DOUBLE_EQ(s.extent.yMin, -0.55);
    EXPECT_DOUBLE_EQ(s.extent.yMax, 0.55);

    view.residualsByNumber = true;
    s = buildResidualScene(f, view);
    EXPECT_EQ(s.xLabel, "Observation number");
    EXPECT_TRUE(same(marksOf(s, 0), {{1, 0.5}, {3, -0.25}}));
    EXPECT_TRUE(same(marksOf(s, 1), {{2, -0.25}}));
    EXPECT_TRUE(same(marksOf(s, 2), {{4, 0.5}, {5, 0}}));
    EXPECT_EQ(s.extent.xMin, 0.5);
    EXPECT_EQ(s.extent.xMax, 5.5);
}

TEST(FitScene, RelativeConcentrationsAreLabelledSo) {
    ReadResult r = readPlotFile(fitFixture("fit_plot_on_the_curve.plt"));
    ASSERT_TRUE(r.ok) << r.error;
    const Scene s = buildScene(r.file, ViewState{});
    EXPECT_EQ(s.yLabel, "Relative concentration C/Co");
    EXPECT_EQ(s.subtitle, "Aquifer: Infinite    Contaminant: Finite    Fitted: HalfLife = 30    RMSE = 0");
    EXPECT_EQ(s.curves[0].name, "x = 10 m, y = 0 m, z = 2.5 m");
    // The observation on the curve is a mark at a point of the line.
    const std::vector<Point> marks = marksOf(s, 0);
    ASSERT_EQ(marks.size(), 1u);
    EXPECT_EQ(marks[0].x, s.curves[0].points[1].x);
    EXPECT_EQ(marks[0].y, s.curves[0].points[1].y);
    EXPECT_EQ(buildResidualScene(r.file, ViewState{}).yLabel, "Residual C/Co");
}

TEST(FitScene, TheTitlesShowSixDigitsOfTheEstimates) {
    const ReadResult r = parsePlotText(
        "Fit to Observations\nModel: One Dimensional\nDimension: 1\nConcentration: C/Co\n"
        "Estimate: Velocity = 5.99276833505896E-02\nRMSE: 4.88801948999235E-03\nR Squared: 0.999711552351819\n"
        "Place: x = 50\nFitted Curve: t, C\n7, 0\nObservations: n, t, C, fitted, residual\n1, 7, 0, 0, 0\n");
    ASSERT_TRUE(r.ok) << r.error;
    EXPECT_EQ(buildScene(r.file, ViewState{}).subtitle, "Fitted: Velocity = 0.0599277    RMSE = 0.00488802");
    EXPECT_EQ(buildResidualScene(r.file, ViewState{}).subtitle, "n = 1    R\u00b2 = 0.999712");
}

TEST(FitScene, TheCsvListsTheObservationsOfThePlacesShown) {
    const PlotFile f = severalPlaces();
    EXPECT_EQ(csvText(f, ViewState{}),
              "n,x (ft),y (ft),t (year),C (mg/l) observed,C (mg/l) fitted,Residual\n"
              "1,100,0,1,2.5,2,0.5\n"
              "3,100,0,3,7.75,8,-0.25\n"
              "2,100,20,2,1.25,1.5,-0.25\n"
              "4,200,0,2,1.5,1,0.5\n"
              "5,200,0,3,4,4,0\n");
}

TEST(FitScene, AFileItCannotReadSaysWhereAndWhy) {
    const ReadResult r = readPlotFile(fitFixture("fit_plot_bad_row.plt"));
    EXPECT_FALSE(r.ok);
    EXPECT_EQ(r.error, "Line 22: a row of the fitted curve (t, C) holds 2 values, but this one holds 3.");
    // The line numbers hold when empty lines come before the first.
    const ReadResult late = parsePlotText("\n\nFit to Observations\nDimension: one\n");
    EXPECT_EQ(late.error, "Line 4: the dimension \"one\" is not a whole number.");
    EXPECT_EQ(buildResidualScene(PlotFile{}, ViewState{}).note, "Residuals belong to a fit to observations.");
}

}  // namespace
}  // namespace bm::trazel
