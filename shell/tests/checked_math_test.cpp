#include <gtest/gtest.h>

#include <limits>

#include "shell/base/checked_math.h"
#include "shell/base/runtime_error.h"
#include "shell/base/raised_error.h"

using namespace bm;

using bm::raisedError;

TEST(CheckedMath, FaultsBecomeErrorNumbers) {
    EXPECT_EQ(raisedError([] { fp::div(1.0, 0.0); }), 11);
    EXPECT_EQ(raisedError([] { fp::div(0.0, 0.0); }), 6);
    EXPECT_EQ(raisedError([] { fp::exp(710.0); }), 6);
    EXPECT_EQ(raisedError([] { fp::mul(1e200, 1e200); }), 6);
    EXPECT_EQ(raisedError([] { fp::sqrt(-1.0); }), 5);
    EXPECT_EQ(raisedError([] { fp::log(0.0); }), 5);
    EXPECT_EQ(raisedError([] { fp::log(-2.0); }), 5);
    EXPECT_EQ(raisedError([] { fp::pow(-2.0, 0.5); }), 5);
}

TEST(CheckedMath, UnderflowIsNoFault) {
    EXPECT_EQ(raisedError([] { fp::exp(-800.0); }), 0);
    EXPECT_EQ(fp::exp(-800.0), 0.0);
    EXPECT_EQ(fp::mul(1e-200, 1e-200), 0.0);
}

TEST(CheckedMath, Int16ConversionRoundsHalfToEvenAndOverflows) {
    EXPECT_EQ(toInt16(0.5), 0);
    EXPECT_EQ(toInt16(1.5), 2);
    EXPECT_EQ(toInt16(2.5), 2);
    EXPECT_EQ(toInt16(-2.5), -2);
    EXPECT_EQ(toInt16(32767.0), 32767);
    EXPECT_EQ(toInt16(-32768.0), -32768);
    EXPECT_EQ(raisedError([] { toInt16(32767.5); }), 6);  // rounds to 32768
    EXPECT_EQ(raisedError([] { toInt16(-32769.0); }), 6);
    EXPECT_EQ(raisedError([] { toInt16(std::numeric_limits<double>::quiet_NaN()); }), 6);
    EXPECT_EQ(raisedError([] { checkedInt16(32768); }), 6);
    EXPECT_EQ(checkedInt16(-32768), -32768);
}
