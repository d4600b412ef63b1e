// The values a line of grid points keeps for its mirror images: a mirror's
// value comes back without a computation, a new line keeps nothing of the
// last, and a line of many points keeps every one of them.

#include <gtest/gtest.h>

#include "saturated/mirrored_points.h"

using namespace bm;

namespace {

TEST(MirroredPoints, AMirrorImageTakesTheKeptValue) {
    MirroredPoints line;
    int computed = 0;
    auto at = [&](double t, double x, double y) {
        return line.valueAt(t, x, LateralKey(y, 0.0), {LateralKey(-y, 0.0)}, [&] {
            ++computed;
            return 100.0 * t + x + 0.001 * y;
        });
    };
    EXPECT_EQ(at(1, 2, 5), 102.005);
    EXPECT_EQ(at(1, 2, -5), 102.005);  // the mirror of y = 5, not computed
    EXPECT_EQ(computed, 1);
    EXPECT_EQ(at(1, 2, 7), 102.007);
    EXPECT_EQ(computed, 2);
    // Another line: nothing kept from the last one.
    EXPECT_EQ(at(1, 3, -5), 103.0 - 0.005);
    EXPECT_EQ(computed, 3);
    EXPECT_EQ(at(1, 3, 5), 103.0 - 0.005);
    EXPECT_EQ(computed, 3);
    // 0 and -0 are different bits: each is its own point's mirror.
    EXPECT_EQ(at(1, 3, 0.0), 103.0);
    EXPECT_EQ(at(1, 3, -0.0), 103.0);
    EXPECT_EQ(computed, 4);
}

TEST(MirroredPoints, ALongLineKeepsEveryPoint) {
    MirroredPoints line;
    int computed = 0;
    auto value = [](int k) { return 0.5 * k + 1.0; };
    for (int k = 1; k <= 5000; ++k)
        line.valueAt(7, 9, LateralKey(k, -k), {LateralKey(-k, k)}, [&] {
            ++computed;
            return value(k);
        });
    for (int k = 1; k <= 5000; ++k)
        EXPECT_EQ(line.valueAt(7, 9, LateralKey(-k, k), {LateralKey(k, -k)}, [&] {
            ++computed;
            return -1.0;
        }), value(k));
    EXPECT_EQ(computed, 5000);
}

}  // namespace
