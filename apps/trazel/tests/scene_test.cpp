// What each view shows, built from the hand-written fixtures.
#include "apps/trazel/plot_scene.h"

#include <gtest/gtest.h>

#include "testing/is_close.h"
#include "testing/test_paths.h"

namespace bm::trazel {
namespace {

PlotFile fixture(const std::string& name) {
    ReadResult r = readPlotFile(testkit::fixturePath("apps/trazel", name).string());
    EXPECT_TRUE(r.ok) << r.error;
    return r.file;
}

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(Scene, ProfileOverDistanceDrawsOneCurvePerTime) {
    const PlotFile f = fixture("profile_1d.plt");
    const Scene s = buildScene(f, {});
    EXPECT_EQ(s.kind, SceneKind::Curves);
    EXPECT_EQ(s.title, "One Dimensional Model");
    EXPECT_TRUE(has(s.subtitle, "Aquifer: Semi-Infinite")) << s.subtitle;
    EXPECT_TRUE(has(s.subtitle, "Contaminant: Dirichlet")) << s.subtitle;
    EXPECT_TRUE(has(s.subtitle, "Co = 100 mg/L")) << s.subtitle;
    EXPECT_EQ(s.xLabel, "Distance x (m)");
    EXPECT_EQ(s.yLabel, "Relative concentration C/Co");
    EXPECT_EQ(s.legendTitle, "Time");
    ASSERT_EQ(s.curves.size(), 4u);
    EXPECT_EQ(s.curves[2].name, "t = 40 day");
    ASSERT_EQ(s.curves[2].points.size(), 11u);
    EXPECT_EQ(s.curves[2].points[4].x, 40);
    EXPECT_EQ(s.curves[2].points[4].y, 0.59441);
    EXPECT_EQ(s.extent.xMin, 0);
    EXPECT_EQ(s.extent.xMax, 100);
    EXPECT_LT(s.extent.yMin, 0);  // a margin below 0 and above 1
    EXPECT_GT(s.extent.yMax, 1);
}

TEST(Scene, ProfileOverTimeChoosesSpreadCurves) {
    const PlotFile f = fixture("profile_1d.plt");
    ViewState view;
    view.versus = Versus::Time;
    const Scene s = buildScene(f, view);
    EXPECT_EQ(s.xLabel, "Time t (day)");
    EXPECT_EQ(automaticSelection(11, 8), (std::vector<int>{0, 1, 3, 4, 6, 7, 9, 10}));
    ASSERT_EQ(s.curves.size(), 8u);
    EXPECT_EQ(s.curves[0].name, "x = 0 m");
    EXPECT_EQ(s.curves[7].name, "x = 100 m");
    EXPECT_EQ(s.curves[2].colour, 3);  // colours follow the curve, not its place in the legend
    EXPECT_EQ(s.curves[2].points[1].x, 20);
    EXPECT_EQ(s.curves[2].points[1].y, 0.32184);  // x = 30, t = 20

    view.automaticCurves = false;
    view.shown = {5};
    const Scene one = buildScene(f, view);
    ASSERT_EQ(one.curves.size(), 1u);
    EXPECT_EQ(one.curves[0].name, "x = 50 m");
    view.shown.clear();
    EXPECT_EQ(buildScene(f, view).note, "No curve is selected.");
}

TEST(Scene, UnsaturatedProfileIsOverDepth) {
    EXPECT_EQ(buildScene(fixture("unsat_1d.plt"), {}).xLabel, "Depth x (m)");
}

TEST(Scene, TimeVaryingConcentrationsKeepTheirUnits) {
    const Scene s = buildScene(fixture("time_varying_line.plt"), {});
    EXPECT_EQ(s.title, "Line Source (time-varying dispersion)");
    EXPECT_EQ(s.yLabel, "Concentration (mg/L)");
    EXPECT_TRUE(has(s.subtitle, "Dispersion: Linear")) << s.subtitle;
}

TEST(Scene, ContoursOfTheChosenTime) {
    const PlotFile f = fixture("plane_2d.plt");
    ViewState view;
    view.time = 1;
    const Scene s = buildScene(f, view);
    EXPECT_EQ(s.kind, SceneKind::Contours);
    EXPECT_EQ(s.title, "Two Dimensional Model - Chemical TCE");
    EXPECT_TRUE(has(s.subtitle, "t = 200 day")) << s.subtitle;
    EXPECT_EQ(s.xLabel, "x (m)");
    EXPECT_EQ(s.yLabel, "y (m)");
    EXPECT_EQ(s.legendTitle, "C/Co");
    ASSERT_EQ(s.contours.levels.size(), 11u);  // the values run from 0 to 1
    double area = 0;
    for (const BandPolygon& p : s.contours.polygons) area += polygonArea(p.points);
    EXPECT_CLOSE(area, 100.0 * 60.0, 1e-9, 0);
    EXPECT_FALSE(s.contours.lines.empty());
    EXPECT_EQ(s.extent.yMin, -30);
    EXPECT_EQ(s.extent.xMax, 100);
}

TEST(Scene, ThreeDimensionsShowOnePlane) {
    ViewState view;
    view.plane = 1;
    view.time = 1;
    const Scene s = buildScene(fixture("volume_3d.plt"), view);
    EXPECT_TRUE(has(s.subtitle, "z = 2.5 m")) << s.subtitle;
    EXPECT_TRUE(has(s.subtitle, "t = 100 day")) << s.subtitle;
    view.plane = 99;  // out of range: the last plane
    EXPECT_TRUE(has(buildScene(fixture("volume_3d.plt"), view).subtitle, "z = 5 m"));
}

TEST(Scene, MonteCarloHistogramAndCumulativeCurve) {
    ViewState view;
    view.bins = 5;
    const Scene s = buildScene(fixture("monte_carlo_1d.plt"), view);
    EXPECT_EQ(s.kind, SceneKind::Histogram);
    EXPECT_EQ(s.title, "Monte Carlo Simulation \u2013 One Dimensional Model");
    EXPECT_TRUE(has(s.subtitle, "n = 40")) << s.subtitle;
    EXPECT_EQ(s.xLabel, "Relative concentration C/Co");
    EXPECT_EQ(s.yLabel, "Number of iterations");
    ASSERT_EQ(s.bars.size(), 5u);
    const double heights[] = {3, 8, 15, 10, 4};
    for (int k = 0; k < 5; ++k) EXPECT_EQ(s.bars[static_cast<std::size_t>(k)].height, heights[k]) << k;
    ASSERT_EQ(s.curves.size(), 1u);
    const Curve& c = s.curves[0];
    EXPECT_TRUE(c.secondAxis);
    EXPECT_TRUE(c.stepped);
    EXPECT_CLOSE(c.points.back().y / s.secondAxisScale, 1.0, 1e-15, 0);
    // The 20th smallest value is 0.35: half of the iterations lie at or below it.
    EXPECT_EQ(c.points[20].x, 0.35);
    EXPECT_CLOSE(c.points[20].y / s.secondAxisScale, 0.5, 1e-15, 0);
}

TEST(Scene, GeneratedSamplesOfTheChosenVariant) {
    ViewState view;
    view.variant = 1;
    const Scene s = buildScene(fixture("generated.plt"), view);
    EXPECT_EQ(s.title, "Generated Samples \u2013 Longitudinal Dispersion Coefficient");
    EXPECT_TRUE(has(s.subtitle, "Distribution: Log-Normal")) << s.subtitle;
    EXPECT_TRUE(has(s.subtitle, "variant 2 of 2")) << s.subtitle;
    EXPECT_EQ(s.xLabel, "Longitudinal Dispersion Coefficient");
    ASSERT_EQ(s.bars.size(), 5u);  // twelve samples: five bins
    EXPECT_EQ(s.bars[1].height, 4);
}

}  // namespace
}  // namespace bm::trazel
