#pragma once
// The one closeness test of the numeric suites: |a - b| <= atol + rtol * |b|.

#include <string>

namespace bm::testkit {

bool isClose(double a, double b, double rtol, double atol);

// For gtest: EXPECT_TRUE(isCloseMessage(...)) prints the values on failure.
std::string closeReport(double a, double b, double rtol, double atol);

}  // namespace bm::testkit

#define EXPECT_CLOSE(a, b, rtol, atol) \
    EXPECT_TRUE(::bm::testkit::isClose((a), (b), (rtol), (atol))) << ::bm::testkit::closeReport((a), (b), (rtol), (atol))
#define ASSERT_CLOSE(a, b, rtol, atol) \
    ASSERT_TRUE(::bm::testkit::isClose((a), (b), (rtol), (atol))) << ::bm::testkit::closeReport((a), (b), (rtol), (atol))
