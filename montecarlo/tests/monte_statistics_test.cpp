#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "model/arrays.h"
#include "montecarlo/monte_statistics.h"
#include "shell/base/runtime_error.h"
#include "testing/is_close.h"
#include "shell/base/raised_error.h"

namespace {

using bm::List;

struct Stats {
    float maximum = -1, minimum = -1, median = -1, arithmeticMean = -1, geometricMean = -1, variance = -1,
          standardDeviation = -1;
};

List<float> samplesOf(const std::vector<float>& values) {
    List<float> s(static_cast<int>(values.size()));
    for (std::size_t i = 0; i < values.size(); ++i) s(static_cast<int>(i) + 1) = values[i];
    return s;
}

Stats compute(const List<float>& s, int n) {
    Stats r;
    bm::ComputeStatistics(static_cast<std::int16_t>(n), s, r.maximum, r.minimum, r.median, r.arithmeticMean,
                          r.geometricMean, r.variance, r.standardDeviation);
    return r;
}
Stats compute(const std::vector<float>& values) { return compute(samplesOf(values), static_cast<int>(values.size())); }

int errorOf(const std::vector<float>& values, int n) {
    return bm::raisedError([&] { compute(samplesOf(values), n); });
}

TEST(ComputeStatistics, OneTwoThreeFour) {
    const Stats r = compute({1, 2, 3, 4});
    EXPECT_EQ(r.median, 2.0f);
    EXPECT_EQ(r.minimum, 1.0f);
    EXPECT_EQ(r.maximum, 4.0f);
    EXPECT_EQ(r.arithmeticMean, 2.5f);
    EXPECT_CLOSE(r.variance, 5.0 / 3.0, 1e-6, 0);
    EXPECT_CLOSE(r.standardDeviation, std::sqrt(5.0 / 3.0), 1e-6, 0);
    EXPECT_CLOSE(r.geometricMean, std::pow(24.0, 0.25), 1e-6, 0);
}

TEST(ComputeStatistics, MedianIsTheLowerMiddleWithoutAveraging) {
    const Stats r = compute({4, 1, 2});
    EXPECT_EQ(r.median, 1.0f);  // floor(3/2) = 1: the smallest
    EXPECT_EQ(r.minimum, 1.0f);
    EXPECT_EQ(r.maximum, 4.0f);
    EXPECT_CLOSE(r.arithmeticMean, 7.0 / 3.0, 1e-6, 0);
    // ten and eleven values: the fifth smallest both times
    EXPECT_EQ(compute({10, 9, 8, 7, 6, 5, 4, 3, 2, 1}).median, 5.0f);
    EXPECT_EQ(compute({11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1}).median, 5.0f);
}

TEST(ComputeStatistics, AZeroSampleMakesTheGeometricMeanZero) {
    const Stats r = compute({3, 0, 5});
    EXPECT_EQ(r.geometricMean, 0.0f);
    EXPECT_EQ(r.minimum, 0.0f);
}

TEST(ComputeStatistics, TheSamplesAreLeftAsTheyWere) {
    const List<float> s = samplesOf({4, 1, 2});
    compute(s, 3);
    EXPECT_EQ(s(1), 4.0f);
    EXPECT_EQ(s(2), 1.0f);
    EXPECT_EQ(s(3), 2.0f);
}

TEST(ComputeStatistics, ANegativeSampleIsAnIllegalFunctionCall) {
    EXPECT_EQ(errorOf({1, -2, 3}, 3), bm::err::InvalidProcedureCall);
    EXPECT_EQ(errorOf({-1, -2}, 2), bm::err::InvalidProcedureCall);
}

TEST(ComputeStatistics, OneSampleDividesZeroByZeroAndNoSampleDividesByZero) {
    EXPECT_EQ(errorOf({7}, 1), bm::err::Overflow);   // variance 0 / 0
    EXPECT_EQ(errorOf({-7}, 1), bm::err::Overflow);  // the first root is the sample itself
    EXPECT_EQ(errorOf({}, 0), bm::err::DivisionByZero);  // 1 / n
}

TEST(ComputeStatistics, TheSixteenBitCounterStopsAt32766) {
    const std::vector<float> many(32767, 2.0f);
    EXPECT_EQ(errorOf(many, 32767), bm::err::Overflow);
    const Stats r = compute(samplesOf(many), 32766);
    EXPECT_EQ(r.median, 2.0f);
    EXPECT_EQ(r.variance, 0.0f);
}

TEST(ComputeStatistics, ASampleListShorterThanTheCountIsABoundsError) {
    EXPECT_EQ(errorOf({1, 2}, 3), bm::err::SubscriptOutOfRange);
}

TEST(ComputeStatistics, SumsRoundToFloatAfterEachStep) {
    // 2^24 + 1 is 2^24 again in single precision, four times over: the mean is
    // 2^24 / 5 in float, not (2^24 + 4) / 5 as a double sum would give.
    const Stats r = compute({16777216.0f, 1, 1, 1, 1});
    EXPECT_EQ(r.arithmeticMean, static_cast<float>(16777216.0 / 5.0));
    EXPECT_NE(r.arithmeticMean, static_cast<float>(16777220.0 / 5.0));
}

TEST(ComputeStatistics, TheGeometricMeanOfLargeSamplesDoesNotOverflow) {
    // The plain product of these would be 1e15^32766; the product of roots stays near 1e15.
    std::vector<float> big(32766, 1e15f);
    const Stats r = compute(big);
    EXPECT_CLOSE(r.geometricMean, 1e15, 5e-3, 0);
    EXPECT_CLOSE(r.arithmeticMean, 1e15, 5e-3, 0);
}

TEST(ComputeStatistics, ASumBeyondTheFloatRangeIsAnOverflow) {
    EXPECT_EQ(errorOf({3e38f, 3e38f}, 2), bm::err::Overflow);
}

// The exchange rule as the screen's developer first wrote it: for every i and j,
// swap when copy(i) < copy(j). It gives the ascending order the median rests on.
std::vector<float> exchangeSorted(std::vector<float> v) {
    for (std::size_t i = 0; i < v.size(); ++i)
        for (std::size_t j = 0; j < v.size(); ++j)
            if (v[i] < v[j]) std::swap(v[i], v[j]);
    return v;
}

TEST(ComputeStatistics, OrderStatisticsAgreeWithTheExchangeSort) {
    std::mt19937 engine(5);
    std::uniform_real_distribution<float> u(0.5f, 9.5f);
    for (int n : {2, 3, 10, 11, 57, 200}) {
        std::vector<float> v(static_cast<std::size_t>(n));
        for (float& x : v) x = std::floor(u(engine) * 4) / 4;  // with ties
        const std::vector<float> sorted = exchangeSorted(v);
        const Stats r = compute(v);
        EXPECT_EQ(r.minimum, sorted.front()) << n;
        EXPECT_EQ(r.maximum, sorted.back()) << n;
        EXPECT_EQ(r.median, sorted[static_cast<std::size_t>(n / 2 - 1)]) << n;
    }
}

TEST(ComputeStatistics, MomentsAgreeWithADoublePrecisionReference) {
    std::mt19937 engine(9);
    std::uniform_real_distribution<float> u(1.0f, 3.0f);
    std::vector<float> v(1000);
    for (float& x : v) x = u(engine);
    double sum = 0, logSum = 0;
    for (float x : v) {
        sum += x;
        logSum += std::log(double(x));
    }
    const double mean = sum / 1000;
    double squares = 0;
    for (float x : v) squares += (x - mean) * (x - mean);
    const Stats r = compute(v);
    EXPECT_CLOSE(r.arithmeticMean, mean, 1e-5, 0);
    EXPECT_CLOSE(r.geometricMean, std::exp(logSum / 1000), 1e-4, 0);
    EXPECT_CLOSE(r.variance, squares / 999, 1e-4, 0);
    EXPECT_CLOSE(r.standardDeviation, std::sqrt(squares / 999), 1e-4, 0);
}

}  // namespace
