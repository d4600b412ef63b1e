// A grid's point numbers turned into indices, first index fastest: counted on
// in order, worked out afresh after a jump, the same either way.

#include <gtest/gtest.h>

#include <array>

#include "montecarlo/pass/grid_points.h"

namespace bm {
namespace {

TEST(GridCursor, CountsOnInOrderAndAfterAJumpAsDivisionGives) {
    const std::array<int, 3> counts{3, 1, 4};
    GridCursor<3> cursor(counts);
    // In order: point = (k - 1) + 3 * ((i - 1) + 1 * (j - 1)).
    long long point = 0;
    for (int j = 1; j <= 4; ++j)
        for (int i = 1; i <= 1; ++i)
            for (int k = 1; k <= 3; ++k, ++point)
                EXPECT_EQ(cursor(point), (std::array<int, 3>{k, i, j})) << point;
    // Jumps back and forth, then in order again from there.
    EXPECT_EQ(cursor(7), (std::array<int, 3>{2, 1, 3}));
    EXPECT_EQ(cursor(8), (std::array<int, 3>{3, 1, 3}));
    EXPECT_EQ(cursor(9), (std::array<int, 3>{1, 1, 4}));
    EXPECT_EQ(cursor(0), (std::array<int, 3>{1, 1, 1}));
    EXPECT_EQ(cursor(1), (std::array<int, 3>{2, 1, 1}));
    GridCursor<2> single({1, 1});
    EXPECT_EQ(single(0), (std::array<int, 2>{1, 1}));
}

}  // namespace
}  // namespace bm
