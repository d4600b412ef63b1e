#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "testing/is_close.h"

using bm::testkit::isClose;

TEST(IsClose, AbsoluteToleranceNearZero) {
    EXPECT_TRUE(isClose(1e-9, 0.0, 0.0, 1e-8));
    EXPECT_FALSE(isClose(1e-7, 0.0, 0.0, 1e-8));
}

TEST(IsClose, RelativeToleranceScalesWithExpected) {
    EXPECT_TRUE(isClose(1000.001, 1000.0, 1e-5, 0.0));
    EXPECT_FALSE(isClose(1000.1, 1000.0, 1e-5, 0.0));
}

TEST(IsClose, NanNeverCloseInfinityOnlyToItself) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_FALSE(isClose(nan, nan, 1, 1));
    EXPECT_FALSE(isClose(1.0, nan, 1, 1));
    EXPECT_TRUE(isClose(inf, inf, 0, 0));
    EXPECT_FALSE(isClose(inf, -inf, 1, 1));
    EXPECT_FALSE(isClose(1e308, inf, 1, 1));
}
