// Ticks, contour levels, histograms and contour bands checked against values
// worked out by hand.
#include <gtest/gtest.h>

#include <cmath>

#include "apps/trazel/axis_ticks.h"
#include "apps/trazel/contour_map.h"
#include "apps/trazel/histogram.h"
#include "testing/is_close.h"

namespace bm::trazel {
namespace {

TEST(AxisTicks, StepsOfOneTwoOrFive) {
    const Ticks unit = niceTicks(0, 1, 5);
    EXPECT_DOUBLE_EQ(unit.step, 0.2);
    ASSERT_EQ(unit.values.size(), 6u);
    EXPECT_DOUBLE_EQ(unit.values[3], 0.6);
    const Ticks hundred = niceTicks(0, 100, 5);
    EXPECT_EQ(hundred.values, (std::vector<double>{0, 20, 40, 60, 80, 100}));
    const Ticks inside = niceTicks(-33, 33, 6);
    EXPECT_EQ(inside.values, (std::vector<double>{-30, -20, -10, 0, 10, 20, 30}));
}

TEST(AxisTicks, TextsCarryTheDecimalsOfTheStep) {
    EXPECT_EQ(tickText(0.2, 0.2), "0.2");
    EXPECT_EQ(tickText(0.0, 0.2), "0.0");
    EXPECT_EQ(tickText(40, 20), "40");
    EXPECT_EQ(tickText(0.05, 0.05), "0.05");
    EXPECT_EQ(tickText(2e-5, 1e-5), "2e-5");
    EXPECT_EQ(tickText(1.5e6, 5e5), "1.5e+6");
    EXPECT_EQ(tickText(-1e-17, 0.2), "0.0");  // float dust does not print as "-0.0"
}

TEST(AxisTicks, ContourLevelsEncloseTheValues) {
    const auto unit = contourLevels(0, 1, 10);
    ASSERT_EQ(unit.size(), 11u);
    EXPECT_DOUBLE_EQ(unit[7], 0.7);
    const auto partial = contourLevels(0.0013, 0.87, 10);
    ASSERT_EQ(partial.size(), 10u);
    EXPECT_EQ(partial.front(), 0.0);
    EXPECT_DOUBLE_EQ(partial.back(), 0.9);
    EXPECT_EQ(contourLevels(5, 5, 10), (std::vector<double>{4.75, 5.25}));
}

TEST(Histogram, CountsPerBin) {
    const Histogram h = makeHistogram({0.1, 0.15, 0.21, 0.35, 0.38, 0.39, 0.5}, 4);
    // width 0.1 from 0.1 to 0.5: [.1,.2) [.2,.3) [.3,.4) [.4,.5]
    EXPECT_EQ(h.counts, (std::vector<int>{2, 1, 3, 1}));
    EXPECT_EQ(h.edges, (std::vector<double>{0.1, 0.2, 0.3, 0.4, 0.5}));
}

TEST(Histogram, EqualValuesGetOneBin) {
    const Histogram h = makeHistogram({2, 2, 2}, 0);
    EXPECT_EQ(h.counts, (std::vector<int>{3}));
    EXPECT_EQ(h.edges, (std::vector<double>{1.9, 2.1}));
}

TEST(Histogram, AutomaticBinCount) {
    EXPECT_EQ(automaticBinCount(40), 6);
    EXPECT_EQ(automaticBinCount(12), 5);
    EXPECT_EQ(automaticBinCount(3), 3);
    EXPECT_EQ(automaticBinCount(10000), 40);
}

TEST(Histogram, CumulativeAndSummary) {
    const auto c = empiricalCumulative({4, 1, 3, 2});
    ASSERT_EQ(c.size(), 4u);
    EXPECT_EQ(c[0].value, 1);
    EXPECT_EQ(c[0].fraction, 0.25);
    EXPECT_EQ(c[3].value, 4);
    EXPECT_EQ(c[3].fraction, 1.0);
    const Summary s = summarise({4, 1, 3, 2});
    EXPECT_EQ(s.count, 4u);
    EXPECT_EQ(s.median, 2.5);
    EXPECT_EQ(s.mean, 2.5);
    EXPECT_CLOSE(s.standardDeviation, std::sqrt(5.0 / 3.0), 1e-15, 0);
    EXPECT_EQ(summarise({4, 1, 2}).median, 2);
}

double bandArea(const ContourMap& m, int band) {
    double area = 0;
    for (const BandPolygon& p : m.polygons)
        if (p.band == band) area += polygonArea(p.points);
    return area;
}

TEST(ContourMap, LinearFieldGivesExactBands) {
    // f = x + y on [0,2] x [0,2]: {k <= x + y < k + 1} has area 1/2, 3/2, 3/2, 1/2.
    const std::vector<double> xs{0, 1, 2}, ys{0, 1, 2};
    std::vector<double> f;
    for (double x : xs)
        for (double y : ys) f.push_back(x + y);
    const ContourMap m = contourMap(xs, ys, f, {0, 1, 2, 3, 4});
    EXPECT_CLOSE(bandArea(m, 0), 0.5, 1e-12, 0);
    EXPECT_CLOSE(bandArea(m, 1), 1.5, 1e-12, 0);
    EXPECT_CLOSE(bandArea(m, 2), 1.5, 1e-12, 0);
    EXPECT_CLOSE(bandArea(m, 3), 0.5, 1e-12, 0);
    // The iso-line x + y = 2 runs from (0, 2) to (2, 0).
    double length = 0;
    for (const IsoSegment& s : m.lines)
        if (s.level == 2) length += std::hypot(s.b.x - s.a.x, s.b.y - s.a.y);
    EXPECT_CLOSE(length, 2 * std::sqrt(2.0), 1e-12, 0);
    for (const IsoSegment& s : m.lines) EXPECT_NE(s.level, 0);  // the outer levels draw no line
}

TEST(ContourMap, UnevenGridAndValuesBeyondTheLevels) {
    // f = x on x in {0, 1, 4}, y in {0, 3}: [1, 2) covers 1 <= x < 2, area 3.
    const std::vector<double> xs{0, 1, 4}, ys{0, 3};
    const std::vector<double> f{0, 0, 1, 1, 4, 4};
    const ContourMap m = contourMap(xs, ys, f, {0, 1, 2, 3});
    EXPECT_CLOSE(bandArea(m, 0), 3.0, 1e-12, 0);
    EXPECT_CLOSE(bandArea(m, 1), 3.0, 1e-12, 0);
    EXPECT_CLOSE(bandArea(m, 2), 6.0, 1e-12, 0);  // 2 <= x <= 4: the value 4 lies above the top level
    EXPECT_EQ(bandOf(-1, m.levels), 0);
    EXPECT_EQ(bandOf(9, m.levels), 2);
}

TEST(ContourMap, BandsTileTheDomain) {
    const std::vector<double> xs{0, 10, 20, 30}, ys{-5, 0, 5};
    std::vector<double> f;
    for (double x : xs)
        for (double y : ys) f.push_back(std::exp(-x / 15) * std::exp(-y * y / 20));
    const ContourMap m = contourMap(xs, ys, f, {0, 0.2, 0.4, 0.6, 0.8, 1.0});
    double total = 0;
    for (const BandPolygon& p : m.polygons) total += polygonArea(p.points);
    EXPECT_CLOSE(total, 300.0, 1e-12, 0);
}

}  // namespace
}  // namespace bm::trazel
