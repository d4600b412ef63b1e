#include "kernels/kern3d_quadrature.h"

#include <algorithm>
#include <array>
#include <vector>

#include "kernels/gauss_legendre.h"

namespace bm::k3 {

namespace {

constexpr double kPi = 3.14159265358979323846;
// Drop of the exponent from its peak to the ends of the integrated stretch.
constexpr double kSpan = 46.0;
// Panel lengths. The integrand is analytic in a strip about the real u axis:
// of half-width about 1 for the transverse shares and the walls a e^-u, k e^u,
// and of about 1 / sqrt(curvature) at a sharp peak (the 30 allows for a
// transverse share that narrows the peak further). One application of the
// 256-point rule is then good to about 1e-13 on panels of some tens of units,
// or of a few hundred peak widths; the limits below keep a margin. (Against
// adaptive integration of random cases, one application over the whole
// stretch was in fact always enough.)
constexpr double kSmoothPanel = 40.0;
constexpr double kPeakWidths = 120.0;
constexpr int kMostPanels = 400;
// Below this the whole integral is taken as 0.
constexpr double kNegligibleLog = -57.6;  // ln 1e-25

double dpsi(const Column& c, double u) { return c.a * std::exp(-u) - c.k * std::exp(u) - 0.5; }

double psiAt(const Column& c, double u) {
    const double tau = std::exp(u);
    return c.psi(u, tau);
}

}  // namespace

const double* internalNodes() { return builtinRuleNodes(); }
const double* internalWeights() { return builtinRuleWeights(); }

Column makeColumn(double x, double v, double dx, double decay) {
    Column c;
    c.x = x;
    c.v = v;
    c.dx = dx;
    c.decay = decay;
    c.inv4Dx = 0.25 / dx;
    c.a = x * x * c.inv4Dx;
    c.k = v * v * c.inv4Dx + decay;
    c.lnPref = std::log(x / (2.0 * std::sqrt(kPi * dx)));
    return c;
}

Panels planPanels(const Column& c, double t) {
    Panels plan;
    const double uEnd = std::log(t);
    // The interior maximum of psi solves a e^-u - k e^u = 1/2: the smaller root
    // w = e^u of k w^2 + w/2 - a = 0, written without cancellation.
    double uMax = uEnd;
    const double disc = 1.0 + 16.0 * c.a * c.k;
    if (disc >= 0.0) {
        const double uPeak = std::log(4.0 * c.a / (1.0 + std::sqrt(disc)));
        if (uPeak < uEnd && (c.k >= 0.0 || psiAt(c, uPeak) >= psiAt(c, uEnd))) uMax = uPeak;
    }
    const double psiMax = psiAt(c, uMax);
    if (!(psiMax > -700.0)) return plan;  // nothing has arrived yet
    const double target = psiMax - kSpan;

    // Width of the stretch on each side from the local quadratic (slope and
    // curvature at the maximum), then Newton steps. psi is concave (lambda >= 0):
    // from either side of a root, every Newton iterate after the first lies
    // beyond the root, so the stretch can only come out a little too long.
    const double wallAtMax = c.a * std::exp(-uMax);
    const double curvature = wallAtMax + std::fabs(c.k) * std::exp(uMax);
    const double slope = std::max(0.0, dpsi(c, uMax));
    const double left = 2.0 * kSpan / (slope + std::sqrt(slope * slope + 2.0 * curvature * kSpan));
    double u = uMax - left;
    for (int it = 0; it < 60; ++it) {
        const double f = psiAt(c, u) - target;
        const double d = dpsi(c, u);
        if (!(d > 0.0)) {
            u -= left;
            continue;
        }
        const double step = f / d;
        u -= step;
        if (f <= 0.0 && std::fabs(step) < 0.01 * left) break;
    }
    // Should rounding or a non-concave psi have left the end short, widen it (a
    // value within one unit of the cut is as negligible as the cut).
    for (int it = 0; it < 60 && psiAt(c, u) > target + 1.0; ++it) u -= left * (1 << std::min(it, 20));
    plan.uA = u;

    // Right end: the decline after an interior peak, which ln t may cut first.
    plan.uB = uEnd;
    if (uMax < uEnd && c.k >= 0.0 && psiAt(c, uEnd) < target) {
        const double right = std::sqrt(2.0 * kSpan / curvature);
        u = std::min(uEnd, uMax + right);
        for (int it = 0; it < 60; ++it) {
            const double f = psiAt(c, u) - target;
            const double d = dpsi(c, u);
            if (!(d < 0.0)) {
                u += right;
                if (u >= uEnd) break;
                continue;
            }
            const double step = f / d;
            u -= step;
            if (u >= uEnd || (f <= 0.0 && std::fabs(step) < 0.01 * right)) break;
        }
        for (int it = 0; it < 60 && u < uEnd && psiAt(c, u) > target + 1.0; ++it) u += right * (1 << std::min(it, 20));
        plan.uB = std::min(u, uEnd);
    }

    const double length = plan.uB - plan.uA;
    if (!(length > 0.0) || psiMax + std::log(length + 1.0) < kNegligibleLog) return plan;
    const double panel = std::min(kSmoothPanel, kPeakWidths / std::sqrt(curvature + 30.0));
    plan.count = static_cast<int>(std::min<double>(kMostPanels, std::ceil(length / panel)));
    plan.count = std::max(plan.count, 1);
    plan.psiMax = psiMax;
    plan.empty = false;
    return plan;
}

double columnStepResponse(const Column& column, double t) {
    const Panels plan = planPanels(column, t);
    return timeIntegral(column, plan, internalNodes(), internalWeights(), [](double, double) { return 1.0; });
}

}  // namespace bm::k3
