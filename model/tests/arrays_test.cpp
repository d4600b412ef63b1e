#include <gtest/gtest.h>

#include "model/arrays.h"

using namespace bm;

TEST(List, OneBasedWithEmptySlotZeroAndBoundsError) {
    List<double> l(3);
    EXPECT_EQ(l.ub(), 3);
    l(3) = 2.5;
    EXPECT_EQ(l(0), 0.0);
    try {
        l(4);
        FAIL();
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 9);
    }
    l.redimPreserve(5);
    EXPECT_EQ(l(3), 2.5);
    l.redim(2);
    EXPECT_EQ(l(2), 0.0);
}

TEST(Array, PreserveKeepsOverlap) {
    Array<int, 3> a;
    a.redim({2, 3, 1});
    a(1, 2, 1) = 7;
    a(2, 3, 0) = 9;
    a.redimPreserve({2, 4, 1});
    EXPECT_EQ(a(1, 2, 1), 7);
    EXPECT_EQ(a(2, 3, 0), 9);
    EXPECT_EQ(a(2, 4, 1), 0);
    EXPECT_EQ(a.ub(1), 4);
    try {
        a(3, 0, 0);
        FAIL();
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 9);
    }
}
