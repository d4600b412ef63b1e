// The two-sided 95 % point of Student's t against the printed tables.

#include <gtest/gtest.h>

#include "fitting/fitter.h"
#include "testing/is_close.h"

namespace bm {
namespace {

TEST(StudentT, MatchesTheTablesForOddAndEvenDegreesOfFreedom) {
    EXPECT_CLOSE(studentT95(1), 12.7062, 1e-5, 0);
    EXPECT_CLOSE(studentT95(2), 4.3027, 1e-4, 0);
    EXPECT_CLOSE(studentT95(5), 2.5706, 1e-4, 0);
    EXPECT_CLOSE(studentT95(10), 2.2281, 1e-4, 0);
    EXPECT_CLOSE(studentT95(30), 2.0423, 1e-4, 0);
    EXPECT_CLOSE(studentT95(120), 1.9799, 1e-4, 0);
}

TEST(StudentT, TendsToTheNormalPoint) { EXPECT_CLOSE(studentT95(20001), 1.959964, 2e-4, 0); }

}  // namespace
}  // namespace bm
