#include <gtest/gtest.h>

#include "model/output_text.h"

namespace bm {
namespace {

TEST(OutputText, UnitTextDropsEveryAmpersand) {
    EXPECT_EQ(unitText("&ft"), "ft");
    EXPECT_EQ(unitText("m&g/&l"), "mg/l");
    EXPECT_EQ(unitText("&&day&"), "day");
    EXPECT_EQ(unitText("yr"), "yr");
    EXPECT_EQ(unitText(""), "");
}

}  // namespace
}  // namespace bm
