#pragma once
// kernmc: the random samples of a Monte Carlo variant. One call fills `count`
// floats from one of seven distributions, every value inside [minimum, maximum]
// (a draw outside is drawn again). The generator is a 64-bit Mersenne twister of
// the library's own, seeded from the system's random device on first use; the
// program keeps no seed, tests fix one with seedMonteCarlo.

#include <cstddef>
#include <cstdint>

namespace bm {

// The record the program hands over, laid out byte for byte as the library reads it.
#pragma pack(push, 1)
struct monteRecord {
    std::int32_t count;         // number of samples to write
    float mean;
    float standardDeviation;    // square root of the variance, rounded to float
    float variance;
    float minimum;
    float maximum;
    std::int16_t distribution;  // code, see below
};
#pragma pack(pop)

static_assert(sizeof(monteRecord) == 26);
static_assert(offsetof(monteRecord, count) == 0);
static_assert(offsetof(monteRecord, mean) == 4);
static_assert(offsetof(monteRecord, standardDeviation) == 8);
static_assert(offsetof(monteRecord, variance) == 12);
static_assert(offsetof(monteRecord, minimum) == 16);
static_assert(offsetof(monteRecord, maximum) == 20);
static_assert(offsetof(monteRecord, distribution) == 24);
static_assert(sizeof(float) == 4);

// Distribution codes.
namespace dist {
inline constexpr std::int16_t Normal = 1;       // mean, standardDeviation
inline constexpr std::int16_t Lognormal = 2;    // arithmetic mean m and variance s2 of the variable
inline constexpr std::int16_t Uniform = 3;      // minimum, maximum
inline constexpr std::int16_t Exponential = 4;  // mean (rate 1/mean)
inline constexpr std::int16_t Gumbel = 5;       // largest value: mean, standardDeviation
inline constexpr std::int16_t Triangle = 6;     // minimum, maximum, mode 3*mean - min - max held in [min, max]
inline constexpr std::int16_t Loguniform = 7;   // exp of uniform on [ln minimum, ln maximum]
}  // namespace dist

// Results of monteCarlo.
namespace mcstatus {
inline constexpr std::int16_t Ok = 0;
inline constexpr std::int16_t BadCount = 1;             // count below 0: nothing written
inline constexpr std::int16_t UnknownDistribution = 2;  // code outside 1..7
inline constexpr std::int16_t BadParameters = 3;        // a parameter the distribution cannot take
                                                        // (lognormal or exponential mean <= 0,
                                                        // loguniform minimum <= 0, negative spread,
                                                        // a value that is not finite)
inline constexpr std::int16_t WindowEmpty = 4;          // [minimum, maximum] holds almost none of the
                                                        // distribution's probability: given up
}  // namespace mcstatus

// A window holding less than this share of the distribution is refused
// outright: a sample would need more than ten thousand draws on average.
inline constexpr double kMinimumWindowProbability = 1e-4;
// The most draws spent on one sample before giving up.
inline constexpr long kMaximumTriesPerSample = 10'000'000;

// Writes record.count floats from firstSample on (element 1 of the program's
// sample buffer). On any status but Ok every one of the count floats is a
// quiet NaN, so that nothing can take them for samples.
std::int16_t monteCarlo(const monteRecord& record, float& firstSample);

// The probability that the untruncated distribution of the record falls in
// [minimum, maximum]; NaN when the parameters are not ones it can take.
double monteWindowProbability(const monteRecord& record);

// Fixes the generator's state (tests, benchmarks).
void seedMonteCarlo(std::uint64_t seed);
// Back to a fresh seed from the system's random device.
void reseedMonteCarloFromDevice();

}  // namespace bm
