// The CSV of each view against the numbers of the fixtures.
#include "apps/trazel/csv_export.h"

#include <gtest/gtest.h>

#include <sstream>

#include "testing/test_paths.h"

namespace bm::trazel {
namespace {

std::vector<std::string> csvLines(const std::string& name, const ViewState& view) {
    const ReadResult r = readPlotFile(testkit::fixturePath("apps/trazel", name).string());
    EXPECT_TRUE(r.ok) << r.error;
    std::istringstream in(csvText(r.file, view));
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

TEST(CsvExport, ProfileOverDistance) {
    const auto lines = csvLines("profile_1d.plt", {});
    ASSERT_EQ(lines.size(), 12u);
    EXPECT_EQ(lines[0], "x (m),C/Co at t = 10 day,C/Co at t = 20 day,C/Co at t = 40 day,C/Co at t = 60 day");
    EXPECT_EQ(lines[1], "0,1,1,1,1");
    EXPECT_EQ(lines[5], "40,0.002204,0.11158,0.59441,0.8593");
    EXPECT_EQ(lines[6], "50,5.3402e-05,0.02513,0.38338,0.73663");
    EXPECT_EQ(lines[11], "100,2.0556e-19,1.2929e-08,0.001971,0.06698");
}

TEST(CsvExport, ProfileOverTimeHasEveryPosition) {
    ViewState view;
    view.versus = Versus::Time;
    const auto lines = csvLines("profile_1d.plt", view);
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[0].substr(0, 40), "t (day),C/Co at x = 0 m,C/Co at x = 10 m");
    EXPECT_EQ(lines[1], "10,1,0.6681,0.23236,0.03553,0.002204,5.3402e-05,4.9495e-07,1.7347e-09,2.2827e-12,1.1224e-15,2.0556e-19");
}

TEST(CsvExport, PlaneAtTheChosenTime) {
    ViewState view;
    view.time = 1;
    const auto lines = csvLines("plane_2d.plt", view);
    ASSERT_EQ(lines.size(), 1u + 77u);
    EXPECT_EQ(lines[0], "x (m),y (m),C/Co at t = 200 day");
    EXPECT_EQ(lines[1 + 7 + 2], "10,-10,0.43088");
    EXPECT_EQ(lines[77], "100,30,0.05591");
}

TEST(CsvExport, VolumeAtTheChosenPlaneAndTime) {
    ViewState view;
    view.plane = 1;
    view.time = 0;
    const auto lines = csvLines("volume_3d.plt", view);
    ASSERT_EQ(lines.size(), 1u + 30u);
    EXPECT_EQ(lines[0], "x (m),y (m),\"C/Co at z = 2.5 m, t = 50 day\"");
    EXPECT_EQ(lines[1 + 5 + 2], "10,0,0.21456");
}

TEST(CsvExport, MonteCarloBins) {
    ViewState view;
    view.bins = 5;
    const auto lines = csvLines("monte_carlo_1d.plt", view);
    ASSERT_EQ(lines.size(), 6u);
    EXPECT_EQ(lines[0], "Lower edge,Upper edge,Count,Relative frequency,Cumulative fraction");
    EXPECT_EQ(lines[1], "0.1,0.2,3,0.075,0.075");
    EXPECT_EQ(lines[2], "0.2,0.3,8,0.2,0.275");
    EXPECT_EQ(lines[3], "0.3,0.4,15,0.375,0.65");
    EXPECT_EQ(lines[4], "0.4,0.5,10,0.25,0.9");
    EXPECT_EQ(lines[5], "0.5,0.6,4,0.1,1");
}

TEST(CsvExport, GeneratedVariantBins) {
    ViewState view;
    view.variant = 1;
    const auto lines = csvLines("generated.plt", view);
    ASSERT_EQ(lines.size(), 6u);
    // 2, 3.5, 3.5 | 4, 4.5, 5, 5 | 6, 6.5, 7 | 8 | 11 in bins 1.8 wide from 2
    EXPECT_EQ(lines[1], "2,3.8,3,0.25,0.25");
    EXPECT_EQ(lines[2], "3.8,5.6,4,0.3333333333333333,0.5833333333333334");
    EXPECT_EQ(lines[5], "9.2,11,1,0.08333333333333333,1");
}

TEST(CsvExport, TimeVaryingPointInConcentrationUnits) {
    ViewState view;
    view.time = 0;
    const auto lines = csvLines("time_varying_point.plt", view);
    ASSERT_EQ(lines.size(), 13u);
    EXPECT_EQ(lines[0], "x (m),y (m),C (mg/L) at t = 10 day");
    EXPECT_EQ(lines[5], "10,0,4.4");
}

}  // namespace
}  // namespace bm::trazel
