#pragma once
// kernvar: transport in a uniform two-dimensional flow whose dispersion grows
// with the travel time of the contaminant. The program hands the library one
// packed record (laid out byte for byte as below), a time, a point, the
// dispersion measure alpha of that time and a prefactor; every routine answers
// one concentration. All arithmetic of the closed forms is single precision, as
// the record is; the time integrals of the continuous sources accumulate their
// sums in double.
//
// Physics, with u = velocityX, v = velocityY (already divided by porosity),
// R retardation, mu decay, a dispersionRatio, Do maximumDispersivity,
// Dm molecularDiffusion, k meanTravelTime and |V| = sqrt(u^2 + v^2):
//
//   DL(s) = Dm + Do |V| f(s),  DT(s) = a DL(s)   (DL along x, DT along y)
//   f: Constant 1, Linear s/k, Asymptotic s/(k + s), Exponential 1 - exp(-s/k)
//   alpha(t) = (1/R) * integral_0^t DL(s) ds
//
//   point, instantaneous: C = (M/R) / (4 pi sqrt(a) alpha)
//                             * exp(-(x - ut/R)^2/(4 alpha) - (y - vt/R)^2/(4 a alpha) - mu t)
//   point, initial distribution: the same without 1/R
//   point, continuous (rate M): integral over the elapsed time s in (0, t) of the
//                             instantaneous solution at s, alpha taken at s
//   line (uniform along y):  C = (M/R) / sqrt(4 pi alpha) * exp(-(x - ut/R)^2/(4 alpha) - mu t),
//                             without 1/R for the initial distribution, the time
//                             integral of it for the continuous line
//
// The prefactor `factor` the program passes holds a/(4 pi R) M for the point
// sources (a/(4 pi) M for the initial one) and M/(sqrt(4 pi) R) for the line
// sources; each routine divides out what its formula does not contain.

#include <cstddef>
#include <cstdint>

namespace bm {

// The record, with the natural alignment of its 16-bit integers and 32-bit floats.
struct kernvarRecord {
    std::int16_t contaminantSource;   // source code, see varsource
    float magnitude;                  // M: mass, initial mass or mass rate
    std::int16_t dispersionFunction;  // see varfunction
    float retardation;                // R
    float velocityX;                  // u (seepage velocity)
    float velocityY;                  // v (0 for a line source)
    float decay;                      // mu, first-order
    float dispersionRatio;            // a = DT / DL
    float maximumDispersivity;        // Do (a length)
    float molecularDiffusion;         // Dm
    float meanTravelTime;             // k
    float xMinimum;
    float xMaximum;
    float xInterval;
    std::int16_t xCount;
    float yMinimum;
    float yMaximum;
    float yInterval;
    std::int16_t yCount;
    float timeMinimum;
    float timeMaximum;
    float timeInterval;
    std::int16_t timeCount;
};

static_assert(sizeof(float) == 4);
static_assert(offsetof(kernvarRecord, contaminantSource) == 0);
static_assert(offsetof(kernvarRecord, magnitude) == 4);
static_assert(offsetof(kernvarRecord, dispersionFunction) == 8);
static_assert(offsetof(kernvarRecord, retardation) == 12);
static_assert(offsetof(kernvarRecord, velocityX) == 16);
static_assert(offsetof(kernvarRecord, velocityY) == 20);
static_assert(offsetof(kernvarRecord, decay) == 24);
static_assert(offsetof(kernvarRecord, dispersionRatio) == 28);
static_assert(offsetof(kernvarRecord, maximumDispersivity) == 32);
static_assert(offsetof(kernvarRecord, molecularDiffusion) == 36);
static_assert(offsetof(kernvarRecord, meanTravelTime) == 40);
static_assert(offsetof(kernvarRecord, xMinimum) == 44);
static_assert(offsetof(kernvarRecord, xMaximum) == 48);
static_assert(offsetof(kernvarRecord, xInterval) == 52);
static_assert(offsetof(kernvarRecord, xCount) == 56);
static_assert(offsetof(kernvarRecord, yMinimum) == 60);
static_assert(offsetof(kernvarRecord, yMaximum) == 64);
static_assert(offsetof(kernvarRecord, yInterval) == 68);
static_assert(offsetof(kernvarRecord, yCount) == 72);
static_assert(offsetof(kernvarRecord, timeMinimum) == 76);
static_assert(offsetof(kernvarRecord, timeMaximum) == 80);
static_assert(offsetof(kernvarRecord, timeInterval) == 84);
static_assert(offsetof(kernvarRecord, timeCount) == 88);
static_assert(sizeof(kernvarRecord) == 92);

// Source codes.
namespace varsource {
inline constexpr std::int16_t PointInstantaneous = 1;
inline constexpr std::int16_t PointContinuous = 2;
inline constexpr std::int16_t PointInitial = 3;
inline constexpr std::int16_t LineInstantaneous = 4;
inline constexpr std::int16_t LineContinuous = 5;
inline constexpr std::int16_t LineInitial = 6;
}  // namespace varsource

// Dispersion function codes.
namespace varfunction {
inline constexpr std::int16_t Constant = 1;
inline constexpr std::int16_t Linear = 2;
inline constexpr std::int16_t Asymptotic = 3;
inline constexpr std::int16_t Exponential = 4;
}  // namespace varfunction

// The dispersion measure (1/R) * integral_0^t DL(s) ds; 0 for t <= 0.
// Faults: "Linear" with k = 0 and R = 0 divide by zero (11); an unknown
// function code is an invalid call (5); "Asymptotic" with 0 < -k < t takes the
// logarithm of a negative (5). "Asymptotic" and "Exponential" with k = 0 are
// the constant function.
float alpha_t(const kernvarRecord& record, float t);

// Value i (from 1) of each list = minimum + (i - 1) * interval, for the record's
// counts; a null pointer skips that list.
void initialize_t_x_y(const kernvarRecord& record, float* firstTime, float* firstX, float* firstY);

// One concentration each. t <= 0 gives 0 (nothing released yet, or the release
// itself, which has no finite value at the origin). A point source with
// dispersionRatio 0, and any source with no dispersion at all (Dm = 0 and
// Do |V| = 0) at t > 0, is a division by zero (11); a negative alpha is an
// invalid call (5). A value too large for a float is an overflow (6).
float point_instan_injection(const kernvarRecord& record, float t, float x, float y, float alpha, float factor);
float point_initial_concentration(const kernvarRecord& record, float t, float x, float y, float alpha, float factor);
float line_instan_injection(const kernvarRecord& record, float t, float x, float alpha, float factor);
float line_initial_concentration(const kernvarRecord& record, float t, float x, float alpha, float factor);

// The continuous sources integrate over the elapsed time since release, 0 to t,
// in `steps` steps of `timeStep` (the last step ends at t), each step by an
// adaptive Gauss-Kronrod rule, with extra breakpoints around the advective
// arrival at the point. alpha (the value at t) is not needed: every released
// parcel spreads with its own elapsed time.
float point_contin_injection(const kernvarRecord& record, float t, float x, float y, float alpha, float factor,
                             float timeStep, std::int16_t steps);
float line_contin_injection(const kernvarRecord& record, float t, float x, float alpha, float factor, float timeStep,
                            std::int16_t steps);

}  // namespace bm
