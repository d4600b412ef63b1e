#pragma once
// kern3d: the three-dimensional solutions. Each returns C/C0 at one point and
// time for the effective velocity v, dispersions Dx, Dy, Dz and half-life of the
// record, solving
//
//   dC/dt = Dx C_xx + Dy C_yy + Dz C_zz - v C_x - lambda' C,   C(x, y, z, 0) = 0,
//   lambda' = ln 2 / effectiveHalfLife + q / (n B)   (the second term only when q != 0),
//
// q the net recharge, n the porosity, B the aquifer thickness: clean recharge
// dilutes the plume like a first-order loss.
//
// - cnrml_3FL: aquifer bounded by no-flux walls at the ends of the y and z
//   ranges, semi-infinite in x, C = C0 on the patch of the plane x = 0. A double
//   cosine series across width and height, each mode a semi-infinite column;
//   where the series would need too many modes (close to the inlet), the time
//   integral of the image sources instead.
// - cnrml_3IL: the same patch in an aquifer unbounded in y and z: the time
//   integral of the column's flux response times the transverse shares, on the
//   256-point Gauss-Legendre rule the program passes (applied on several
//   panels where one application is not accurate enough).
// - cnrml_3IC: continuous injection of water at rate Q carrying C0 at the origin
//   of the shifted coordinates of an infinite medium, source (Q C0 / n) delta^3:
//   closed form in error functions.
//
// Patch: Y1..Y2 = Yc -+ Ws/2, Z1..Z2 = Zc -+ Hs/2 (a negative size spans the same
// interval). At x = 0 the patch kernels return the boundary profile itself: 1 on
// the patch, edges included, 0 elsewhere, for every t >= 0; for x > 0 they return
// 0 at t <= 0, and 0 for x < 0 (upstream of the inlet plane). A zero dispersion,
// width or height, a zero half-life or a zero porosity where the formulas divide
// by it is run-time error 11 (6 for 0/0); no kernel returns a NaN.
//
// No call allocates or touches a file. What a grid's inner loops share is kept
// per thread in fixed storage, each value a pure function of its key, so a
// result never depends on the calls before it nor on the thread: the finite
// aquifer's cosine coefficients (keyed on the geometry) and its modes' column
// responses (on x and t), the time integral's nodes (kern3d_nodes.h, on the
// column and t), and the transverse shares (by direction, and each edge's
// tails by distance, edge_tails.h).

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "kernels/fixed_text.h"

namespace bm {

// The record as the library sees it: little-endian numbers, single-byte texts
// blank-padded to their fixed lengths.
#pragma pack(push, 1)
struct ThreeDimParameters {
    double xMin = 0, xMax = 0, xInterval = 0;
    double yMin = 0, yMax = 0, yInterval = 0;
    double zMin = 0, zMax = 0, zInterval = 0;
    double tMin = 0, tMax = 0, tInterval = 0;
    double sourceXc = 0;
    double sourceYc = 0;
    double sourceZc = 0;
    double sourceWidth = 0;
    double sourceHeight = 0;
    double injectionRate = 0;
    double porosity = 0;
    unsigned char reserved152[8] = {};
    double effectiveVelocity = 0;
    double effectiveDispersionX = 0;
    double effectiveDispersionY = 0;
    double effectiveDispersionZ = 0;
    double effectiveHalfLife = 0;
    double netRecharge = 0;
    double aquiferThickness = 0;
    char reservedText216[15];
    char reservedText231[15];
    char reservedText246[15];
    char reservedText261[20];
    char aquiferCode[20];
    char reservedText301[480];
    char contaminantCode[30];
    unsigned char padding811 = 0;

    // Every text blank, every number zero.
    ThreeDimParameters();
};
#pragma pack(pop)

static_assert(sizeof(ThreeDimParameters) == 812);
static_assert(offsetof(ThreeDimParameters, xMin) == 0);
static_assert(offsetof(ThreeDimParameters, xMax) == 8);
static_assert(offsetof(ThreeDimParameters, xInterval) == 16);
static_assert(offsetof(ThreeDimParameters, yMin) == 24);
static_assert(offsetof(ThreeDimParameters, yMax) == 32);
static_assert(offsetof(ThreeDimParameters, yInterval) == 40);
static_assert(offsetof(ThreeDimParameters, zMin) == 48);
static_assert(offsetof(ThreeDimParameters, zMax) == 56);
static_assert(offsetof(ThreeDimParameters, zInterval) == 64);
static_assert(offsetof(ThreeDimParameters, tMin) == 72);
static_assert(offsetof(ThreeDimParameters, tMax) == 80);
static_assert(offsetof(ThreeDimParameters, tInterval) == 88);
static_assert(offsetof(ThreeDimParameters, sourceXc) == 96);
static_assert(offsetof(ThreeDimParameters, sourceYc) == 104);
static_assert(offsetof(ThreeDimParameters, sourceZc) == 112);
static_assert(offsetof(ThreeDimParameters, sourceWidth) == 120);
static_assert(offsetof(ThreeDimParameters, sourceHeight) == 128);
static_assert(offsetof(ThreeDimParameters, injectionRate) == 136);
static_assert(offsetof(ThreeDimParameters, porosity) == 144);
static_assert(offsetof(ThreeDimParameters, reserved152) == 152);
static_assert(offsetof(ThreeDimParameters, effectiveVelocity) == 160);
static_assert(offsetof(ThreeDimParameters, effectiveDispersionX) == 168);
static_assert(offsetof(ThreeDimParameters, effectiveDispersionY) == 176);
static_assert(offsetof(ThreeDimParameters, effectiveDispersionZ) == 184);
static_assert(offsetof(ThreeDimParameters, effectiveHalfLife) == 192);
static_assert(offsetof(ThreeDimParameters, netRecharge) == 200);
static_assert(offsetof(ThreeDimParameters, aquiferThickness) == 208);
static_assert(offsetof(ThreeDimParameters, reservedText216) == 216);
static_assert(offsetof(ThreeDimParameters, reservedText231) == 231);
static_assert(offsetof(ThreeDimParameters, reservedText246) == 246);
static_assert(offsetof(ThreeDimParameters, reservedText261) == 261);
static_assert(offsetof(ThreeDimParameters, aquiferCode) == 281);
static_assert(offsetof(ThreeDimParameters, reservedText301) == 301);
static_assert(offsetof(ThreeDimParameters, contaminantCode) == 781);
static_assert(offsetof(ThreeDimParameters, padding811) == 811);
static_assert(sizeof(double) == 8);

// What cnrml_3IC returns at its own source point, where the concentration is
// unbounded: a constant above 1, which the program's clamp turns into 0.
inline constexpr double kUnboundedConcentration = 1.0e30;

// The status returned is 1; the program does not read it.
std::int16_t cnrml_3FL(const ThreeDimParameters& parameters, double t, double x, double y, double z,
                       double& result);
std::int16_t cnrml_3IC(const ThreeDimParameters& parameters, double t, double x, double y, double z,
                       double& result);
// nodes and weights: entry 1 of the program's 1-based lists of the 256-point
// Gauss-Legendre rule on [-1, 1] (any order of the nodes).
std::int16_t cnrml_3IL(const ThreeDimParameters& parameters, double t, double x, double y, double z,
                       double& result, const double* nodes, const double* weights);

// The distances from a coordinate to the two ends of cnrml_3IL's patch across
// y (or z): y less the lower end, the upper end less y. The kernel sees a
// coordinate only through this pair and takes it as a set (which end is
// which plays no part), so two points whose pairs are the same but swapped,
// mirror images about the patch's centre, get the very same value.
struct PatchEnds {
    double fromLower, toUpper;
};
PatchEnds patchEndsY(const ThreeDimParameters& parameters, double y);
PatchEnds patchEndsZ(const ThreeDimParameters& parameters, double z);

}  // namespace bm
