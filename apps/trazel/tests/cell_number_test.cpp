#include "apps/trazel/cell_number.h"

#include <gtest/gtest.h>

namespace bm::trazel {
namespace {

TEST(CellNumber, ReadsTheFormsOfTheNumberFormat) {
    EXPECT_EQ(cellNumber("1.e+5"), 100000.0);
    EXPECT_EQ(cellNumber("5.e-4"), 0.0005);
    EXPECT_EQ(cellNumber(".5"), 0.5);
    EXPECT_EQ(cellNumber("-.25"), -0.25);
    EXPECT_EQ(cellNumber("1.2346e+5"), 123460.0);
    EXPECT_EQ(cellNumber("1E-20"), 1e-20);
    EXPECT_EQ(cellNumber("  42 "), 42.0);
    EXPECT_EQ(cellNumber("1."), 1.0);
    EXPECT_EQ(cellNumber("."), 0.0);  // how the format prints a zero with "#.#"
}

TEST(CellNumber, RefusesWhatIsNotANumber) {
    EXPECT_FALSE(cellNumber(""));
    EXPECT_FALSE(cellNumber("abc"));
    EXPECT_FALSE(cellNumber("12abc"));
    EXPECT_FALSE(cellNumber("1e"));
    EXPECT_FALSE(cellNumber("1e999"));  // too large for a double
    EXPECT_FALSE(cellNumber("Time:"));
}

TEST(CellNumber, SplitsRowsAtCommasAndSkipsEmptyCells) {
    const auto row = rowNumbers("40, 0.002204, 5.3402e-5,.5");
    ASSERT_TRUE(row);
    EXPECT_EQ(*row, (std::vector<double>{40, 0.002204, 5.3402e-5, 0.5}));
    const auto times = rowNumbers(", 10, 20");
    ASSERT_TRUE(times);
    EXPECT_EQ(*times, (std::vector<double>{10, 20}));
    EXPECT_FALSE(rowNumbers("40, abc, 0.5"));
}

TEST(CellNumber, PlainNumbersReadBackExactly) {
    EXPECT_EQ(plainNumber(0.6681), "0.6681");
    EXPECT_EQ(plainNumber(100000), "100000");
    EXPECT_EQ(plainNumber(-0.0), "0");
    EXPECT_EQ(plainNumber(3.217e-4), "0.0003217");
    EXPECT_EQ(plainNumber(5.3402e-5), "5.3402e-05");
    for (double v : {0.1, 1.0 / 3, 2.0352e-4, 1.7347e-9, 123456.789})
        EXPECT_EQ(std::stod(plainNumber(v)), v);
}

}  // namespace
}  // namespace bm::trazel
