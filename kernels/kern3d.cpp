#include "kernels/kern3d.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "kernels/edge_tails.h"
#include "kernels/interval_masses.h"
#include "kernels/kern3d_effective.h"
#include "kernels/kern3d_finite.h"
#include "kernels/kern3d_nodes.h"
#include "kernels/kern3d_quadrature.h"
#include "kernels/kern3d_functions.h"
#include "shell/base/checked_math.h"

namespace bm {

static_assert(k3::kMostGroupNodes <= kMostEdgeNodes);

ThreeDimParameters::ThreeDimParameters() {
    setFixedText(reservedText216, "");
    setFixedText(reservedText231, "");
    setFixedText(reservedText246, "");
    setFixedText(reservedText261, "");
    setFixedText(aquiferCode, "");
    setFixedText(reservedText301, "");
    setFixedText(contaminantCode, "");
}

namespace {

constexpr double kPi = 3.14159265358979323846;

// The patch as an interval in y and one in z (a negative size spans the same).
struct Patch {
    double y1, y2, z1, z2;
    bool contains(double y, double z) const { return y1 <= y && y <= y2 && z1 <= z && z <= z2; }
    PatchEnds endsY(double y) const { return {y - y1, y2 - y}; }
    PatchEnds endsZ(double z) const { return {z - z1, z2 - z}; }
};

Patch patchOf(const ThreeDimParameters& p) {
    const double hw = 0.5 * std::fabs(p.sourceWidth), hh = 0.5 * std::fabs(p.sourceHeight);
    return {p.sourceYc - hw, p.sourceYc + hw, p.sourceZc - hh, p.sourceZc + hh};
}

// Share of the patch's extent d1 + d2 in one transverse direction spread onto
// a point at distances d1 and d2 from its ends, after each node's travel time
// (c = 1 / (2 sqrt(D))): (erf(d1 c / sqrt(tau)) + erf(d2 c / sqrt(tau))) / 2.
void patchShares(const k3::ColumnNodes& nodes, double d1, double d2, double c, double* out) {
    const bool inside = d1 > 0.0 && d2 > 0.0;
    const double nearEdge = std::min(std::fabs(d1), std::fabs(d2)), farEdge = std::max(std::fabs(d1), std::fabs(d2));
    stripShares(nodes.nodeSet, c, nodes.inverseRoot, nodes.count, nearEdge, farEdge, inside, kSpatialReach, out);
}

// The shares of the two directions, each kept while its numbers stay the same.
thread_local k3::TransverseCache theYShares, theZShares;

}  // namespace

std::int16_t cnrml_3FL(const ThreeDimParameters& parameters, double t, double x, double y, double z,
                       double& result) {
    if (x < 0.0 || t < 0.0 || (x > 0.0 && t == 0.0)) {
        result = 0.0;
        return 1;
    }
    if (x == 0.0) {
        // The inlet plane holds the boundary profile: the clipped patch, mirrored
        // like everything else about the walls, edges included.
        const k3::Strip ys = k3::makeStrip(parameters.yMin, parameters.yMax, parameters.sourceYc, parameters.sourceWidth);
        const k3::Strip zs = k3::makeStrip(parameters.zMin, parameters.zMax, parameters.sourceZc, parameters.sourceHeight);
        const double yf = ys.fold(y), zf = zs.fold(z);
        const bool on = !ys.empty && !zs.empty && ys.p1 <= yf && yf <= ys.p2 && zs.p1 <= zf && zf <= zs.p2;
        result = on ? 1.0 : 0.0;
        return 1;
    }
    result = fp::checked(k3::finiteAquiferRatio(parameters, t, x, y, z, k3::FinitePath::Automatic));
    return 1;
}

std::int16_t cnrml_3IL(const ThreeDimParameters& parameters, double t, double x, double y, double z,
                       double& result, const double* nodes, const double* weights) {
    const Patch patch = patchOf(parameters);
    if (x < 0.0 || t < 0.0) {
        result = 0.0;
        return 1;
    }
    if (x == 0.0) {
        result = patch.contains(y, z) ? 1.0 : 0.0;
        return 1;
    }
    if (t == 0.0) {
        result = 0.0;
        return 1;
    }
    const double v = parameters.effectiveVelocity, dx = parameters.effectiveDispersionX;
    const double decay = k3::effectiveDecay(parameters);
    static_cast<void>(k3::halfInverseRoot(dx));  // the column divides by Dx
    const double cy = k3::halfInverseRoot(parameters.effectiveDispersionY);
    const double cz = k3::halfInverseRoot(parameters.effectiveDispersionZ);
    if (patch.y1 == patch.y2 || patch.z1 == patch.z2) {
        result = 0.0;  // a patch without width or height lets nothing in
        return 1;
    }
    if (nodes == nullptr || weights == nullptr) {
        nodes = k3::internalNodes();
        weights = k3::internalWeights();
    }
    const k3::Column column = k3::makeColumn(x, v, dx, decay);
    if (k3::atInlet(column)) {
        result = patch.contains(y, z) ? 1.0 : 0.0;
        return 1;
    }
    const k3::Panels plan = k3::planPanels(column, t);
    const PatchEnds ye = patch.endsY(y), ze = patch.endsZ(z);
    const double dy1 = ye.fromLower, dy2 = ye.toUpper, dz1 = ze.fromLower, dz2 = ze.toUpper;
    result = fp::checked(k3::vectorTimeIntegral(column, plan, nodes, weights, [&](const k3::ColumnNodes& cn, double* out) {
        const double* fy = theYShares.shares(cn, {dy1, dy2, cy}, [&](const k3::ColumnNodes& n, double* f) {
            patchShares(n, dy1, dy2, cy, f);
        });
        const double* fz = theZShares.shares(cn, {dz1, dz2, cz}, [&](const k3::ColumnNodes& n, double* f) {
            patchShares(n, dz1, dz2, cz, f);
        });
        for (int j = 0; j < cn.count; ++j) out[j] = fy[j] * fz[j];
    }));
    return 1;
}

PatchEnds patchEndsY(const ThreeDimParameters& parameters, double y) { return patchOf(parameters).endsY(y); }

PatchEnds patchEndsZ(const ThreeDimParameters& parameters, double z) { return patchOf(parameters).endsZ(z); }

std::int16_t cnrml_3IC(const ThreeDimParameters& parameters, double t, double x, double y, double z,
                       double& result) {
    // At the source itself the concentration is unbounded for every t.
    if (x == 0.0 && y == 0.0 && z == 0.0) {
        result = kUnboundedConcentration;
        return 1;
    }
    if (t <= 0.0) {
        result = 0.0;
        return 1;
    }
    // Scaled coordinates X = x / sqrt(Dx) ...: the injected plume is a function of
    // R = |(X, Y, Z)| and of x. With k = v^2 / (4 Dx) + lambda',
    //
    //   C/C0 = Q / (n sqrt(Dx Dy Dz)) * exp(x v / (2 Dx)) / (8 pi R)
    //          * (exp(-R sqrt k) erfc(R / (2 sqrt t) - sqrt(k t)) + exp(R sqrt k) erfc(R / (2 sqrt t) + sqrt(k t))),
    //
    // the time integral of the instantaneous point source over 0..t in closed form.
    const double v = parameters.effectiveVelocity;
    const double decay = k3::effectiveDecay(parameters);
    const double q = fp::div(parameters.injectionRate, parameters.porosity);
    const double sx = 2.0 * k3::halfInverseRoot(parameters.effectiveDispersionX);
    const double sy = 2.0 * k3::halfInverseRoot(parameters.effectiveDispersionY);
    const double sz = 2.0 * k3::halfInverseRoot(parameters.effectiveDispersionZ);
    const double r = std::hypot(x * sx, y * sy, z * sz);
    if (r == 0.0) {  // closer to the source than a double can tell
        result = kUnboundedConcentration;
        return 1;
    }
    // A decay so negative that k < 0 has no real root here: error 5, as the
    // program's formula for it is the root of a negative number.
    const double rootK = fp::sqrt(0.25 * v * v * sx * sx + decay);
    const double rootT = std::sqrt(t);
    const double drift = 0.5 * x * v * sx * sx;
    const double b = 0.5 * r / rootT;
    const double sum = k3::expErfc(drift - r * rootK, b - rootK * rootT) + k3::expErfc(drift + r * rootK, b + rootK * rootT);
    double c = 0.0;
    if (sum != 0.0) {
        c = q * (sx * sy * sz) / (8.0 * kPi) * sum / r;
        if (std::isinf(c) && c > 0.0) c = kUnboundedConcentration;  // next to the source
    }
    result = fp::checked(c);
    return 1;
}

}  // namespace bm
