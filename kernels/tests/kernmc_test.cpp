// kernmc against distributions written out independently here: each sample must
// lie in its window and pass a Kolmogorov-Smirnov test against the exact CDF of
// the truncated distribution.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <numbers>
#include <vector>

#include "kernels/kernmc.h"
#include "testing/is_close.h"

namespace {

using bm::monteRecord;
using Cdf = std::function<double(double)>;

constexpr int kDraws = 20000;

monteRecord record(std::int16_t code, double mean, double variance, double minimum, double maximum,
                   std::int32_t count = kDraws) {
    monteRecord r{};
    r.count = count;
    r.mean = static_cast<float>(mean);
    r.variance = static_cast<float>(variance);
    r.standardDeviation = static_cast<float>(std::sqrt(static_cast<float>(variance)));
    r.minimum = static_cast<float>(minimum);
    r.maximum = static_cast<float>(maximum);
    r.distribution = code;
    return r;
}

// Samples from a seeded generator; slot 0 and one slot past the end hold sentinels.
std::vector<float> drawSamples(const monteRecord& r, std::uint64_t seed, std::int16_t* status = nullptr) {
    bm::seedMonteCarlo(seed);
    std::vector<float> buffer(static_cast<std::size_t>(std::max(r.count, 0)) + 2, -7.25f);
    const std::int16_t s = bm::monteCarlo(r, buffer[1]);
    if (status) *status = s;
    EXPECT_EQ(buffer.front(), -7.25f) << "wrote before the first sample";
    EXPECT_EQ(buffer.back(), -7.25f) << "wrote past the last sample";
    return std::vector<float>(buffer.begin() + 1, buffer.end() - 1);
}

// The CDFs, from their textbook definitions.
double phi(double z) { return 0.5 * (1.0 + std::erf(z / std::sqrt(2.0))); }

Cdf normalCdf(double mu, double sigma) {
    return [=](double x) { return phi((x - mu) / sigma); };
}
Cdf lognormalCdf(double m, double s2) {
    const double sigma2 = std::log(1.0 + s2 / (m * m));
    const double mu = std::log(m) - sigma2 / 2;
    return [=](double x) { return x <= 0 ? 0.0 : phi((std::log(x) - mu) / std::sqrt(sigma2)); };
}
Cdf uniformCdf(double a, double b) {
    return [=](double x) { return x <= a ? 0.0 : x >= b ? 1.0 : (x - a) / (b - a); };
}
Cdf exponentialCdf(double mean) {
    return [=](double x) { return x <= 0 ? 0.0 : 1.0 - std::exp(-x / mean); };
}
Cdf gumbelCdf(double mean, double sd) {
    const double beta = sd * std::sqrt(6.0) / std::numbers::pi;
    const double location = mean - 0.5772157 * beta;
    return [=](double x) { return std::exp(-std::exp(-(x - location) / beta)); };
}
Cdf triangleCdf(double a, double c, double b) {
    return [=](double x) {
        if (x <= a) return 0.0;
        if (x >= b) return 1.0;
        if (x <= c) return (x - a) * (x - a) / ((b - a) * (c - a));
        return 1.0 - (b - x) * (b - x) / ((b - a) * (b - c));
    };
}
Cdf loguniformCdf(double a, double b) {
    return [=](double x) { return x <= a ? 0.0 : x >= b ? 1.0 : std::log(x / a) / std::log(b / a); };
}
// The distribution restricted to [a, b].
Cdf truncated(const Cdf& f, double a, double b) {
    const double fa = f(a), fb = f(b);
    return [=](double x) { return x <= a ? 0.0 : x >= b ? 1.0 : (f(x) - fa) / (fb - fa); };
}

double ksStatistic(std::vector<float> samples, const Cdf& cdf) {
    std::sort(samples.begin(), samples.end());
    const double n = static_cast<double>(samples.size());
    double d = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double f = cdf(samples[i]);
        d = std::max({d, f - static_cast<double>(i) / n, static_cast<double>(i + 1) / n - f});
    }
    return d;
}
// Asymptotic critical value of the one-sample test at alpha = 0.001.
double ksCritical(std::size_t n) { return std::sqrt(-std::log(0.001 / 2) / 2) / std::sqrt(static_cast<double>(n)); }

void expectFollows(const monteRecord& r, const Cdf& untruncated, std::uint64_t seed) {
    std::int16_t status = -1;
    const auto samples = drawSamples(r, seed, &status);
    ASSERT_EQ(status, bm::mcstatus::Ok);
    ASSERT_EQ(samples.size(), static_cast<std::size_t>(kDraws));
    for (float x : samples) {
        ASSERT_GE(x, r.minimum);
        ASSERT_LE(x, r.maximum);
    }
    const double d = ksStatistic(samples, truncated(untruncated, r.minimum, r.maximum));
    EXPECT_LT(d, ksCritical(samples.size())) << "distribution " << r.distribution;
}

double meanOf(const std::vector<float>& v) {
    double s = 0;
    for (float x : v) s += x;
    return s / static_cast<double>(v.size());
}
double varianceOf(const std::vector<float>& v) {
    const double m = meanOf(v);
    double s = 0;
    for (float x : v) s += (x - m) * (x - m);
    return s / static_cast<double>(v.size() - 1);
}

TEST(KernmcRecord, FieldsSitAtTheirByteOffsets) {
    monteRecord r{};
    r.count = 0x01020304;
    r.mean = 1.5f;
    r.standardDeviation = 2.5f;
    r.variance = 6.25f;
    r.minimum = -3.0f;
    r.maximum = 9.0f;
    r.distribution = 0x0607;
    unsigned char bytes[sizeof(monteRecord)];
    std::memcpy(bytes, &r, sizeof r);
    ASSERT_EQ(sizeof bytes, 26u);
    std::int32_t count;
    std::memcpy(&count, bytes + 0, 4);
    EXPECT_EQ(count, 0x01020304);
    const float expected[] = {1.5f, 2.5f, 6.25f, -3.0f, 9.0f};
    for (int k = 0; k < 5; ++k) {
        float f;
        std::memcpy(&f, bytes + 4 + 4 * k, 4);
        EXPECT_EQ(f, expected[k]) << "field at offset " << 4 + 4 * k;
    }
    std::int16_t code;
    std::memcpy(&code, bytes + 24, 2);
    EXPECT_EQ(code, 0x0607);
}

TEST(KernmcDistribution, NormalTruncated) {
    expectFollows(record(bm::dist::Normal, 10, 4, 7, 14), normalCdf(10, 2), 101);
}
TEST(KernmcDistribution, LognormalTruncated) {
    expectFollows(record(bm::dist::Lognormal, 5, 9, 2, 12), lognormalCdf(5, 9), 102);
}
TEST(KernmcDistribution, Uniform) { expectFollows(record(bm::dist::Uniform, 4, 1, 2, 6), uniformCdf(2, 6), 103); }
TEST(KernmcDistribution, ExponentialTruncated) {
    expectFollows(record(bm::dist::Exponential, 3, 9, 0.5, 8), exponentialCdf(3), 104);
}
TEST(KernmcDistribution, GumbelTruncated) {
    expectFollows(record(bm::dist::Gumbel, 10, 16, 5, 20), gumbelCdf(10, 4), 105);
}
TEST(KernmcDistribution, TriangleModeFromTheMean) {
    // mode = 3*4 - 1 - 9 = 2
    expectFollows(record(bm::dist::Triangle, 4, 1, 1, 9), triangleCdf(1, 2, 9), 106);
}
TEST(KernmcDistribution, TriangleModeHeldAtTheMinimum) {
    // 3*2 - 1 - 9 = -4 lies below the minimum: the mode is the minimum
    expectFollows(record(bm::dist::Triangle, 2, 1, 1, 9), triangleCdf(1, 1, 9), 107);
}
TEST(KernmcDistribution, TriangleModeHeldAtTheMaximum) {
    // 3*8 - 1 - 9 = 14 lies above the maximum
    expectFollows(record(bm::dist::Triangle, 8, 1, 1, 9), triangleCdf(1, 9, 9), 108);
}
TEST(KernmcDistribution, Loguniform) {
    expectFollows(record(bm::dist::Loguniform, 10, 1, 0.1, 100), loguniformCdf(0.1, 100), 109);
}

TEST(KernmcDistribution, TheTestRejectsAWrongDistribution) {
    // The same triangle sample measured against the uniform on its window must fail.
    const auto samples = drawSamples(record(bm::dist::Triangle, 4, 1, 1, 9), 106);
    EXPECT_GT(ksStatistic(samples, uniformCdf(1, 9)), ksCritical(samples.size()));
    // And a truncated normal against the untruncated one.
    const auto normal = drawSamples(record(bm::dist::Normal, 10, 4, 7, 14), 101);
    EXPECT_GT(ksStatistic(normal, normalCdf(10, 2)), ksCritical(normal.size()));
}

TEST(KernmcMoments, UntruncatedNormalMeanAndVariance) {
    const auto s = drawSamples(record(bm::dist::Normal, 50, 25, 0, 100), 201);
    // standard errors: 5/sqrt(20000) = 0.035 for the mean, 25*sqrt(2/20000) = 0.25 for the variance
    EXPECT_CLOSE(meanOf(s), 50.0, 0, 0.15);
    EXPECT_CLOSE(varianceOf(s), 25.0, 0, 1.0);
}

TEST(KernmcMoments, UntruncatedExponentialMean) {
    const auto s = drawSamples(record(bm::dist::Exponential, 3, 9, 0, 1000), 202);
    EXPECT_CLOSE(meanOf(s), 3.0, 0, 4 * 3.0 / std::sqrt(double(kDraws)));
}

TEST(KernmcMoments, LognormalHasTheArithmeticMeanAndVarianceGiven) {
    const auto s = drawSamples(record(bm::dist::Lognormal, 5, 4, 0.001, 1000), 203);
    EXPECT_CLOSE(meanOf(s), 5.0, 0, 0.06);
    EXPECT_CLOSE(varianceOf(s), 4.0, 0, 0.4);
}

TEST(KernmcMoments, GumbelHasTheMeanAndDeviationGiven) {
    const auto s = drawSamples(record(bm::dist::Gumbel, 10, 4, -100, 100), 204);
    EXPECT_CLOSE(meanOf(s), 10.0, 0, 0.06);
    EXPECT_CLOSE(std::sqrt(varianceOf(s)), 2.0, 0, 0.1);
}

TEST(KernmcWindow, ProbabilityMatchesTheDistribution) {
    EXPECT_CLOSE(bm::monteWindowProbability(record(bm::dist::Normal, 10, 4, 7, 14)), phi(2) - phi(-1.5), 1e-12, 0);
    EXPECT_CLOSE(bm::monteWindowProbability(record(bm::dist::Exponential, 3, 9, 0.5, 8)),
                 exponentialCdf(3)(8) - exponentialCdf(3)(0.5), 1e-12, 0);
    const Cdf g = gumbelCdf(10, 4);
    EXPECT_CLOSE(bm::monteWindowProbability(record(bm::dist::Gumbel, 10, 16, 5, 20)), g(20) - g(5), 1e-6, 0);
    const Cdf l = lognormalCdf(5, 9);
    EXPECT_CLOSE(bm::monteWindowProbability(record(bm::dist::Lognormal, 5, 9, 2, 12)), l(12) - l(2), 1e-6, 0);
    EXPECT_EQ(bm::monteWindowProbability(record(bm::dist::Triangle, 4, 1, 1, 9)), 1.0);
    EXPECT_TRUE(std::isnan(bm::monteWindowProbability(record(bm::dist::Lognormal, -1, 1, -2, 0))));
}

void expectGivesUp(const monteRecord& r) {
    std::int16_t status = -1;
    const auto samples = drawSamples(r, 7, &status);
    EXPECT_EQ(status, bm::mcstatus::WindowEmpty) << "distribution " << r.distribution;
    for (float x : samples) ASSERT_TRUE(std::isnan(x));
}

TEST(KernmcGiveUp, AWindowHoldingAlmostNoProbability) {
    // a window 2e-5 wide under a normal of deviation 1000
    expectGivesUp(record(bm::dist::Normal, 5, 1e6, 4.99999, 5.00001, 50));
    // far in the exponential's tail: probability about e^-100
    expectGivesUp(record(bm::dist::Exponential, 1, 1, 100, 101, 50));
    // far below a Gumbel's location
    expectGivesUp(record(bm::dist::Gumbel, 100, 1, 1, 90, 50));
    // a lognormal of tiny spread outside the window
    expectGivesUp(record(bm::dist::Lognormal, 10, 1e-4, 1, 2, 50));
    // a normal without spread whose mean is outside
    expectGivesUp(record(bm::dist::Normal, 5, 0, 6, 7, 50));
    // bounds the wrong way round
    expectGivesUp(record(bm::dist::Uniform, 5, 1, 7, 6, 50));
}

TEST(KernmcGiveUp, ANarrowWindowAboveTheLimitIsStillFilled) {
    // probability about 4e-4: some 2500 draws per sample, all redrawn until inside
    const monteRecord r = record(bm::dist::Normal, 0.0005, 1, 0, 0.001, 200);
    ASSERT_GT(bm::monteWindowProbability(r), bm::kMinimumWindowProbability);
    std::int16_t status = -1;
    const auto samples = drawSamples(r, 8, &status);
    ASSERT_EQ(status, bm::mcstatus::Ok);
    for (float x : samples) {
        EXPECT_GE(x, r.minimum);
        EXPECT_LE(x, r.maximum);
    }
}

TEST(KernmcStatus, ParametersADistributionCannotTake) {
    std::int16_t status = -1;
    auto samples = drawSamples(record(bm::dist::Lognormal, -2, 1, -3, -1, 5), 1, &status);
    EXPECT_EQ(status, bm::mcstatus::BadParameters);
    EXPECT_TRUE(std::isnan(samples[0]));
    drawSamples(record(bm::dist::Loguniform, 1, 1, 0, 2, 5), 1, &status);
    EXPECT_EQ(status, bm::mcstatus::BadParameters);
    drawSamples(record(bm::dist::Exponential, -1, 1, 0, 2, 5), 1, &status);
    EXPECT_EQ(status, bm::mcstatus::BadParameters);
    monteRecord nanBound = record(bm::dist::Uniform, 1, 1, 0, 2, 5);
    nanBound.maximum = std::numeric_limits<float>::quiet_NaN();
    drawSamples(nanBound, 1, &status);
    EXPECT_EQ(status, bm::mcstatus::BadParameters);
}

TEST(KernmcStatus, UnknownCodesAndCounts) {
    std::int16_t status = -1;
    drawSamples(record(0, 1, 1, 0, 2, 3), 1, &status);
    EXPECT_EQ(status, bm::mcstatus::UnknownDistribution);
    drawSamples(record(8, 1, 1, 0, 2, 3), 1, &status);
    EXPECT_EQ(status, bm::mcstatus::UnknownDistribution);

    float sentinel[2] = {-7.25f, -7.25f};
    monteRecord negative = record(bm::dist::Normal, 1, 1, 0, 2, -1);
    EXPECT_EQ(bm::monteCarlo(negative, sentinel[0]), bm::mcstatus::BadCount);
    monteRecord none = record(bm::dist::Normal, 1, 1, 0, 2, 0);
    EXPECT_EQ(bm::monteCarlo(none, sentinel[0]), bm::mcstatus::Ok);
    EXPECT_EQ(sentinel[0], -7.25f);
    EXPECT_EQ(sentinel[1], -7.25f);
}

TEST(KernmcDegenerate, ZeroWidthWindowsAndZeroSpread) {
    for (std::int16_t code : {bm::dist::Uniform, bm::dist::Triangle, bm::dist::Loguniform}) {
        const auto s = drawSamples(record(code, 3, 1, 3, 3, 10), 3);
        for (float x : s) EXPECT_EQ(x, 3.0f) << "distribution " << code;
    }
    const auto normal = drawSamples(record(bm::dist::Normal, 4, 0, 3, 5, 10), 3);
    for (float x : normal) EXPECT_EQ(x, 4.0f);
    const auto gumbel = drawSamples(record(bm::dist::Gumbel, 4, 0, 3, 5, 10), 3);
    for (float x : gumbel) EXPECT_EQ(x, 4.0f);
}

TEST(KernmcSeed, TheSameSeedRepeatsAndAnotherDiffers) {
    const monteRecord r = record(bm::dist::Normal, 10, 4, 0, 20, 100);
    const auto a = drawSamples(r, 12345);
    const auto b = drawSamples(r, 12345);
    const auto c = drawSamples(r, 54321);
    EXPECT_EQ(a, b);
    EXPECT_NE(a, c);
    bm::reseedMonteCarloFromDevice();
    std::vector<float> d(100);
    ASSERT_EQ(bm::monteCarlo(r, d[0]), bm::mcstatus::Ok);
    EXPECT_NE(a, d);
}

TEST(KernmcSeed, ConsecutiveCallsContinueTheStream) {
    // A second call without a new seed gives new values, as a second press of F7 should.
    const monteRecord r = record(bm::dist::Uniform, 5, 1, 0, 10, 50);
    bm::seedMonteCarlo(99);
    std::vector<float> first(50), second(50);
    ASSERT_EQ(bm::monteCarlo(r, first[0]), bm::mcstatus::Ok);
    ASSERT_EQ(bm::monteCarlo(r, second[0]), bm::mcstatus::Ok);
    EXPECT_NE(first, second);
}

}  // namespace
