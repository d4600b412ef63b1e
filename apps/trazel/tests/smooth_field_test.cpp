// Smooth contours and the pointer's value: monotone cubic interpolation keeps
// the nodes, stays within each cell's values, and follows a smooth plume more
// closely than straight lines between the nodes.
#include "apps/trazel/smooth_field.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "testing/is_close.h"

namespace bm::trazel {
namespace {

double gaussian(double x, double y) { return std::exp(-(x * x + y * y) / 8); }

Field sampled(double (*f)(double, double), double from, double to, std::size_t n) {
    Field field;
    for (std::size_t i = 0; i < n; ++i) field.x.push_back(from + (to - from) * static_cast<double>(i) / static_cast<double>(n - 1));
    field.y = field.x;
    for (double x : field.x)
        for (double y : field.y) field.c.push_back(f(x, y));
    return field;
}

// Straight lines between the nodes, for comparison.
double bilinear(const Field& f, double x, double y) {
    const auto cell = [](const std::vector<double>& a, double v) {
        std::size_t k = static_cast<std::size_t>(std::upper_bound(a.begin(), a.end(), v) - a.begin());
        return std::clamp<std::size_t>(k, 1, a.size() - 1) - 1;
    };
    const std::size_t i = cell(f.x, x), j = cell(f.y, y);
    const double u = (x - f.x[i]) / (f.x[i + 1] - f.x[i]), v = (y - f.y[j]) / (f.y[j + 1] - f.y[j]);
    return (1 - u) * (1 - v) * f.at(i, j) + u * (1 - v) * f.at(i + 1, j) + (1 - u) * v * f.at(i, j + 1) + u * v * f.at(i + 1, j + 1);
}

TEST(SmoothField, TheNodesKeepTheirValues) {
    const Field f = sampled(gaussian, -6, 6, 7);
    const Field r = refinedField(f, 4, 5);
    ASSERT_EQ(r.x.size(), 25u);
    ASSERT_EQ(r.y.size(), 31u);
    for (std::size_t i = 0; i < f.x.size(); ++i)
        for (std::size_t j = 0; j < f.y.size(); ++j) {
            EXPECT_EQ(r.x[i * 4], f.x[i]);
            EXPECT_EQ(r.at(i * 4, j * 5), f.at(i, j));
            EXPECT_EQ(fieldValue(f, f.x[i], f.y[j]).value(), f.at(i, j));
        }
}

TEST(SmoothField, NoValueLeavesTheRangeOfItsCell) {
    // Steps, spikes and flat stretches: where a cubic spline would overshoot.
    Field f;
    f.x = {0, 1, 2, 4, 5, 9};
    f.y = {0, 0.5, 3, 3.5};
    const double values[6][4] = {{0, 0, 0, 0}, {0, 1, 1, 0}, {0, 1, 0.2, 0}, {1, 1, 1, 1}, {0, 0, 0.9, 0}, {0, 0, 0, 0}};
    for (const auto& row : values) f.c.insert(f.c.end(), row, row + 4);
    const Field r = refinedField(f, 8, 8);
    for (std::size_t i = 0; i < r.x.size(); ++i)
        for (std::size_t j = 0; j < r.y.size(); ++j) {
            const std::size_t a = std::min<std::size_t>(i / 8, f.x.size() - 2), b = std::min<std::size_t>(j / 8, f.y.size() - 2);
            const double corners[] = {f.at(a, b), f.at(a + 1, b), f.at(a, b + 1), f.at(a + 1, b + 1)};
            const double v = r.at(i, j);
            EXPECT_GE(v, *std::min_element(corners, corners + 4)) << i << " " << j;
            EXPECT_LE(v, *std::max_element(corners, corners + 4)) << i << " " << j;
        }
}

TEST(SmoothField, FollowsASmoothPlumeMoreCloselyThanStraightLines) {
    const Field f = sampled(gaussian, -6, 6, 7);
    double smoothError = 0, straightError = 0;
    for (int i = 0; i <= 120; ++i)
        for (int j = 0; j <= 120; ++j) {
            const double x = -6 + 0.1 * i, y = -6 + 0.1 * j;
            smoothError = std::max(smoothError, std::fabs(fieldValue(f, x, y).value() - gaussian(x, y)));
            straightError = std::max(straightError, std::fabs(bilinear(f, x, y) - gaussian(x, y)));
        }
    EXPECT_LT(smoothError, 0.6 * straightError) << smoothError << " vs " << straightError;
}

TEST(SmoothField, AMonotoneLineStaysMonotone) {
    const std::vector<double> xs = {0, 1, 1.5, 4, 10}, fs = {0, 0.01, 0.5, 0.51, 1};
    Field f;
    f.x = xs;
    f.y = {0};
    f.c = fs;
    double last = -1;
    for (int k = 0; k <= 1000; ++k) {
        const double v = fieldValue(f, 0.01 * k, 0).value();
        EXPECT_GE(v, last) << k;
        last = v;
    }
}

TEST(SmoothField, TheRefinedGridAndThePointerAgree) {
    const Field f = sampled(gaussian, -5, 5, 6);
    const Field r = refinedField(f, 3, 3);
    for (std::size_t i = 0; i < r.x.size(); ++i)
        for (std::size_t j = 0; j < r.y.size(); ++j) EXPECT_CLOSE(fieldValue(f, r.x[i], r.y[j]).value(), r.at(i, j), 1e-14, 1e-15);
}

TEST(SmoothField, SlopesAreFlatAtAnExtreme) {
    const std::vector<double> m = monotoneSlopes({0, 1, 2, 3}, {0, 1, 0.5, 0.5});
    EXPECT_EQ(m[1], 0);  // the peak
    EXPECT_EQ(m[2], 0);  // the start of a flat stretch
    EXPECT_EQ(m[0], 1);  // an end takes its secant
}

TEST(SmoothField, ANodeWithoutAValueEmptiesItsCells) {
    Field f = sampled(gaussian, 0, 4, 5);
    f.c[2 * 5 + 2] = std::numeric_limits<double>::quiet_NaN();  // (2, 2)
    EXPECT_FALSE(fieldValue(f, 1.5, 1.5).has_value());
    EXPECT_FALSE(fieldValue(f, 2.5, 2.5).has_value());
    EXPECT_TRUE(fieldValue(f, 0.5, 0.5).has_value());
    EXPECT_FALSE(fieldValue(f, 4.5, 1).has_value());  // outside the grid
    const Field r = refinedField(f, 2, 2);
    EXPECT_TRUE(std::isnan(r.at(3, 3)));
    EXPECT_FALSE(std::isnan(r.at(1, 1)));
}

TEST(SmoothField, CoarseAxesAreSplitUpToEightTimes) {
    EXPECT_EQ(refinementFor(7, 160), 8);
    EXPECT_EQ(refinementFor(41, 160), 4);
    EXPECT_EQ(refinementFor(400, 160), 1);
    EXPECT_EQ(refinementFor(1, 160), 1);
}

}  // namespace
}  // namespace bm::trazel
