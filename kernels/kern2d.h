#pragma once
// kern2d: C/C0 at one point and time of two-dimensional transport in a
// saturated aquifer,
//
//   dC/dt = Dx d2C/dx2 + Dy d2C/dy2 - v dC/dx - k C,   C(x, y, 0) = 0,
//
// with k = ln 2 / effectiveHalfLife + netRecharge / (porosity * aquiferThickness)
// (the recharge part only when netRecharge is not 0), for four sources:
//
//   cnrml_FL  aquifer of finite width (no-flux walls at the ends of the y range),
//             strip Yc - W/2 .. Yc + W/2 held at C0 on the plane x = 0;
//   cnrml_IL  infinite width, the same strip on x = 0;
//   cnrml_IG  infinite width, C0 exp(-(y - Yc)^2 / (2 sigma^2)) on x = 0;
//   cnrml_IC  infinite aquifer, water injected at the origin of the (shifted)
//             coordinates at rate Q' per unit thickness carrying C0.
//
// Velocity, dispersions and half-life in the record are the effective values
// (already divided or multiplied by the retardation factor).
//
// Every function writes C/C0 to `result` and returns a status the program does
// not read: 1 when the answer met its accuracy target (1e-6 absolute, 1e-5
// relative above 1e-3; in practice near 1e-10), 0 when it could not be computed
// (no quadrature points given) or the finite-width series ran out of modes.
// At x = 0 the strip, Gaussian and finite-width kernels return the source
// profile itself at every t; at t <= 0 elsewhere 0; upstream (x < 0) 0.
// Arithmetic faults of the formulas themselves (a zero dispersion, a zero
// aquifer width, a zero half-life, recharge with a zero thickness or porosity)
// are raised as run-time errors 11 or 6 through the checked arithmetic, after
// those shortcuts. No call allocates memory or touches a file; the finite-width
// kernel's own 256-point rule is built at its first use, in static storage.
//
// The rule's nodes are evaluated in vectors, and what a grid's inner loop
// shares is kept per thread in fixed storage (transit_nodes.h, edge_tails.h,
// the finite-width modes and the Gaussian's spread): values that depend on x
// and t but not on y, and each edge's tails by distance. Every kept value is
// a pure function of its key, so a result never depends on the calls before
// it, nor on the thread that makes it.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "kernels/fixed_text.h"

namespace bm {

// The record the library receives: packed, little-endian, texts as single-byte
// characters padded with blanks.
#pragma pack(push, 1)
struct TwoDimParameters {
    // Numbers 0, texts blank, reserved bytes 0.
    TwoDimParameters();

    double xMin, xMax, xInterval;
    double yMin, yMax, yInterval;
    double tMin, tMax, tInterval;
    std::uint8_t reserved72[8];
    double sourceXc;
    double sourceYc;
    double sourceWidth;
    double sourceStdDev;
    double injectionRate;
    double porosity;
    std::uint8_t reserved128[8];
    double effectiveVelocity;
    double effectiveDispersionX;
    double effectiveDispersionY;
    double effectiveHalfLife;
    double netRecharge;
    double aquiferThickness;
    char reservedText184[15];
    char reservedText199[15];
    char reservedText214[15];
    char reservedText229[20];
    char aquiferCode[20];
    std::uint8_t padding269[3];
    std::int32_t reserved272;
    char contaminantCode[30];
    std::uint8_t padding306[2];
};
#pragma pack(pop)

static_assert(offsetof(TwoDimParameters, xMin) == 0);
static_assert(offsetof(TwoDimParameters, xMax) == 8);
static_assert(offsetof(TwoDimParameters, xInterval) == 16);
static_assert(offsetof(TwoDimParameters, yMin) == 24);
static_assert(offsetof(TwoDimParameters, yMax) == 32);
static_assert(offsetof(TwoDimParameters, yInterval) == 40);
static_assert(offsetof(TwoDimParameters, tMin) == 48);
static_assert(offsetof(TwoDimParameters, tMax) == 56);
static_assert(offsetof(TwoDimParameters, tInterval) == 64);
static_assert(offsetof(TwoDimParameters, reserved72) == 72);
static_assert(offsetof(TwoDimParameters, sourceXc) == 80);
static_assert(offsetof(TwoDimParameters, sourceYc) == 88);
static_assert(offsetof(TwoDimParameters, sourceWidth) == 96);
static_assert(offsetof(TwoDimParameters, sourceStdDev) == 104);
static_assert(offsetof(TwoDimParameters, injectionRate) == 112);
static_assert(offsetof(TwoDimParameters, porosity) == 120);
static_assert(offsetof(TwoDimParameters, reserved128) == 128);
static_assert(offsetof(TwoDimParameters, effectiveVelocity) == 136);
static_assert(offsetof(TwoDimParameters, effectiveDispersionX) == 144);
static_assert(offsetof(TwoDimParameters, effectiveDispersionY) == 152);
static_assert(offsetof(TwoDimParameters, effectiveHalfLife) == 160);
static_assert(offsetof(TwoDimParameters, netRecharge) == 168);
static_assert(offsetof(TwoDimParameters, aquiferThickness) == 176);
static_assert(offsetof(TwoDimParameters, reservedText184) == 184);
static_assert(offsetof(TwoDimParameters, reservedText199) == 199);
static_assert(offsetof(TwoDimParameters, reservedText214) == 214);
static_assert(offsetof(TwoDimParameters, reservedText229) == 229);
static_assert(offsetof(TwoDimParameters, aquiferCode) == 249);
static_assert(offsetof(TwoDimParameters, padding269) == 269);
static_assert(offsetof(TwoDimParameters, reserved272) == 272);
static_assert(offsetof(TwoDimParameters, contaminantCode) == 276);
static_assert(offsetof(TwoDimParameters, padding306) == 306);
static_assert(sizeof(TwoDimParameters) == 308);

inline constexpr std::int16_t kKernelOk = 1;
inline constexpr std::int16_t kKernelFailed = 0;

// The value cnrml_IC gives at its own source point, where the concentration is
// unbounded: above 1, so that the program's clamp discards it.
inline constexpr double kAtPointSource = 1.0e30;

// What the infinite-width kernels see of y. The strip sees only the offsets
// from its edges, d1 = y - (Yc - W/2) and d2 = y - (Yc + W/2), and gives the
// same bits for (d1, d2) as for (-d2, -d1), the point mirrored about the
// source's axis; the Gaussian sees only y - Yc, and the point source its y
// (already shifted), each the same for the offset and its negative. A grid
// computes such mirrored points once (the tests hold the kernels to it).
struct StripOffsets {
    double d1, d2;
};
StripOffsets stripOffsets(const TwoDimParameters& parameters, double y);
double gaussianOffset(const TwoDimParameters& parameters, double y);

// `nodes` and `weights` point at entry 1 of the 256 nodes and weights of the
// Gauss-Legendre rule on [-1, 1] (in any order).
std::int16_t cnrml_FL(const TwoDimParameters& parameters, double t, double x, double y, double& result);
std::int16_t cnrml_IC(const TwoDimParameters& parameters, double t, double x, double y, double& result,
                      const double* nodes, const double* weights);
std::int16_t cnrml_IL(const TwoDimParameters& parameters, double t, double x, double y, double& result,
                      const double* nodes, const double* weights);
std::int16_t cnrml_IG(const TwoDimParameters& parameters, double t, double x, double y, double& result,
                      const double* nodes, const double* weights);

}  // namespace bm
