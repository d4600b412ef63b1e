// cnrml_3IL: the patch source in an aquifer unbounded in y and z.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "kernels/gauss_legendre.h"
#include "kernels/kern3d.h"
#include "kernels/tests/kern3d_reference.h"
#include "shell/base/runtime_error.h"
#include "testing/is_close.h"

using namespace bm;
using kern3dref::decayOf;
using kern3dref::Worst;

namespace {


// The 1-based lists the program builds from the points file: five header
// lines, 128 positive nodes, 128 weights, each mirrored into the next slot.
struct ProgramRule {
    std::vector<double> nodes = std::vector<double>(257), weights = std::vector<double>(257);
    ProgramRule() {
        std::istringstream in(gaussPointsFileText());
        std::string line;
        for (int i = 0; i < 5; ++i) std::getline(in, line);
        for (int i = 1; i <= 255; i += 2) {
            in >> nodes[i];
            nodes[i + 1] = -nodes[i];
        }
        for (int i = 1; i <= 255; i += 2) {
            in >> weights[i];
            weights[i + 1] = weights[i];
        }
    }
    const double* firstNode() const { return &nodes[1]; }
    const double* firstWeight() const { return &weights[1]; }
};

const ProgramRule& rule() {
    static const ProgramRule r;
    return r;
}

double patch(const ThreeDimParameters& p, double t, double x, double y, double z) {
    double c = -1;
    cnrml_3IL(p, t, x, y, z, c, rule().firstNode(), rule().firstWeight());
    return c;
}

ThreeDimParameters medium(double v, double dx, double dy, double dz, double halfLife, double recharge = 0) {
    ThreeDimParameters p = kern3dref::withMedium({}, v, dx, dy, dz, halfLife, recharge);
    p.porosity = 0.25;
    p.aquiferThickness = 10;
    p.sourceYc = 1;
    p.sourceZc = -0.5;
    p.sourceWidth = 10;
    p.sourceHeight = 4;
    return p;
}


// The Green's-function time integral, adaptively, in the Ogata-Banks variable.
double reference(const ThreeDimParameters& p, double t, double x, double y, double z) {
    const kern3dref::Medium m{p.effectiveVelocity, p.effectiveDispersionX, p.effectiveDispersionY,
                              p.effectiveDispersionZ, decayOf(p)};
    const double y1 = p.sourceYc - p.sourceWidth / 2, y2 = p.sourceYc + p.sourceWidth / 2;
    const double z1 = p.sourceZc - p.sourceHeight / 2, z2 = p.sourceZc + p.sourceHeight / 2;
    const auto fy = kern3dref::freeShare(y, y1, y2, m.dy);
    const auto fz = kern3dref::freeShare(z, z1, z2, m.dz);
    const double ratio = std::sqrt(m.dy / m.dz);  // z lengths in units of the y spreading
    return kern3dref::patchIntegral(
        m, x, t, [&](double tau) { return fy(tau) * fz(tau); },
        {std::fabs(y - y1), std::fabs(y - y2), std::fabs(z - z1) * ratio, std::fabs(z - z2) * ratio}, m.dy);
}


void compareGrid(const ThreeDimParameters& p, const std::vector<double>& xs, const std::vector<double>& ys,
                 const std::vector<double>& zs, const std::vector<double>& ts, Worst& worst, int& significant) {
    for (double t : ts)
        for (double x : xs)
            for (double y : ys)
                for (double z : zs) {
                    const double got = patch(p, t, x, y, z);
                    const double expected = reference(p, t, x, y, z);
                    worst.add(got, expected);
                    if (expected > 1e-3) ++significant;
                    EXPECT_CLOSE(got, expected, 1e-5, 1e-6) << "t=" << t << " x=" << x << " y=" << y << " z=" << z;
                }
}

}  // namespace

TEST(Kern3dPatch, MatchesAdaptiveGreensFunctionIntegralModerateDispersion) {
    Worst worst{"3IL moderate dispersion, no decay"};
    int significant = 0;
    const ThreeDimParameters p = medium(0.5, 1.0, 0.1, 0.01, 1e300);
    compareGrid(p, {0.01, 1, 10, 40}, {1, 6, 9}, {-0.5, 1.5, 3}, {0.1, 10, 100, 1e4}, worst, significant);
    EXPECT_GT(significant, 30);  // the grid is not all zeros
}

TEST(Kern3dPatch, MatchesAdaptiveGreensFunctionIntegralLargeDispersionDecayAndRecharge) {
    Worst worst{"3IL large dispersion, decay and recharge"};
    int significant = 0;
    const ThreeDimParameters p = medium(0.1, 50.0, 20.0, 10.0, 50.0, 0.002);
    compareGrid(p, {0.001, 2, 30, 200}, {1, 6, 40}, {-0.5, 1.5, 20}, {0.05, 3, 60, 2000}, worst, significant);
    EXPECT_GT(significant, 30);
}

TEST(Kern3dPatch, MatchesAdaptiveIntegralForSharpFrontsLongAfterArrival) {
    // Peclet numbers of 1e3..1e5: the arrival is a narrow peak in time, and at
    // t = 1e5 it occupies a millionth of [0, t].
    Worst worst{"3IL small dispersion, long times"};
    int significant = 0;
    const ThreeDimParameters p = medium(2.0, 1e-3, 1e-4, 1e-5, 1e3);
    compareGrid(p, {0.5, 20, 200}, {1, 6, 6.2}, {-0.5, 1.5, 1.6}, {0.3, 12, 150, 1e5}, worst, significant);
    EXPECT_GT(significant, 20);
}

TEST(Kern3dPatch, OneRuleApplicationOverTheWholeTimeWouldNotDo) {
    // The case above at x = 20, t = 1e5, on one application of the 256-point rule
    // over [0, t] in tau: the arrival peak (width 7e-4 around tau = 10) falls
    // between the nodes, and the answer is grossly wrong. The kernel is not.
    const ThreeDimParameters p = medium(2.0, 1e-3, 1e-4, 1e-5, 1e3);
    const double t = 1e5, x = 20, y = 3, z = 0;
    const double expected = reference(p, t, x, y, z);
    ASSERT_GT(expected, 0.1);
    const double lambda = decayOf(p), dx = p.effectiveDispersionX;
    double once = 0;
    for (int i = 1; i <= 256; ++i) {
        const double tau = 0.5 * t * (1 + rule().nodes[i]);
        const double flux = x / std::sqrt(4 * kern3dref::kPi * dx * tau * tau * tau) *
                            std::exp(-(x - 2.0 * tau) * (x - 2.0 * tau) / (4 * dx * tau) - lambda * tau);
        const double share = kern3dref::share(y - (1 - 5), (1 + 5) - y, 1 / (2 * std::sqrt(1e-4 * tau))) *
                             kern3dref::share(z - (-0.5 - 2), (-0.5 + 2) - z, 1 / (2 * std::sqrt(1e-5 * tau)));
        once += 0.5 * t * rule().weights[i] * flux * share;
    }
    EXPECT_GT(std::fabs(once - expected), 1e-2);
    EXPECT_CLOSE(patch(p, t, x, y, z), expected, 1e-5, 1e-6);
}

TEST(Kern3dPatch, PatchWiderThanThePlumeIsTheOneDimensionalColumn) {
    Worst worst{"3IL full-width patch vs 1-D Dirichlet"};
    for (const auto& base : {medium(0.3, 0.7, 0.05, 0.01, 200, 0.004), medium(0.0, 2.0, 0.5, 0.1, 1e300),
                             medium(5.0, 0.01, 0.001, 0.001, 1e300)}) {
        ThreeDimParameters p = base;
        p.sourceWidth = 1e5;
        p.sourceHeight = 1e5;
        const double lambda = decayOf(p);
        for (double t : {0.5, 30.0, 300.0, 1e5})
            for (double x : {0.05, 5.0, 50.0}) {
                const double expected = kern3dref::columnStep(x, t, p.effectiveVelocity, p.effectiveDispersionX, lambda);
                const double got = patch(p, t, x, 2.0, -1.0);
                worst.add(got, expected);
                EXPECT_CLOSE(got, expected, 1e-5, 1e-6) << "v=" << p.effectiveVelocity << " t=" << t << " x=" << x;
            }
    }
}

TEST(Kern3dPatch, PureAdvectionSeparatesIntoTwoStripFactors) {
    // With Dx -> 0 every parcel reaches x at tau = x / v, and the patch becomes
    // the product of the two strips' spreading over that travel time, each a
    // strip factor of its own, times the decay over it. At Peclet 1e10 the
    // difference is of order 1/Pe.
    Worst worst{"3IL separated strips at Pe 1e10"};
    ThreeDimParameters p = medium(1.0, 1e-9, 0.01, 0.001, 70);
    const double x = 10, tau = x / p.effectiveVelocity;
    const double y1 = p.sourceYc - 5, y2 = p.sourceYc + 5, z1 = p.sourceZc - 2, z2 = p.sourceZc + 2;
    for (double y : {1.0, 5.5, 6.0, 6.4, 8.0})
        for (double z : {-0.5, 1.3, 1.5, 1.8}) {
            const double stripY = 0.5 * (std::erf((y2 - y) / (2 * std::sqrt(0.01 * tau))) + std::erf((y - y1) / (2 * std::sqrt(0.01 * tau))));
            const double stripZ = 0.5 * (std::erf((z2 - z) / (2 * std::sqrt(0.001 * tau))) + std::erf((z - z1) / (2 * std::sqrt(0.001 * tau))));
            const double expected = std::exp(-decayOf(p) * tau) * stripY * stripZ;
            const double got = patch(p, 50.0, x, y, z);
            worst.add(got, expected);
            EXPECT_CLOSE(got, expected, 1e-5, 1e-6) << "y=" << y << " z=" << z;
        }
    // Before the front has arrived nothing is there.
    EXPECT_CLOSE(patch(p, 9.9, x, 1.0, -0.5), 0.0, 0, 1e-12);
}

TEST(Kern3dPatch, InletPlaneCarriesTheBoundaryProfileAtEveryTime) {
    const ThreeDimParameters p = medium(0.5, 1.0, 0.1, 0.01, 100);
    // Patch: y in [-4, 6], z in [-2.5, 1.5], edges included.
    for (double t : {0.0, 1e-9, 3.0, 1e6}) {
        EXPECT_EQ(patch(p, t, 0, 1, 0), 1.0);
        EXPECT_EQ(patch(p, t, 0, -4, 1.5), 1.0);
        EXPECT_EQ(patch(p, t, 0, 6, -2.5), 1.0);
        EXPECT_EQ(patch(p, t, 0, 6.0001, 0), 0.0);
        EXPECT_EQ(patch(p, t, 0, 1, -2.5001), 0.0);
    }
    // At t = 0 nothing has entered; upstream of the inlet plane there is nothing.
    EXPECT_EQ(patch(p, 0.0, 1e-6, 1, 0), 0.0);
    EXPECT_EQ(patch(p, 0.0, 5, 1, 0), 0.0);
    EXPECT_EQ(patch(p, 10.0, -0.1, 1, 0), 0.0);
    EXPECT_EQ(patch(p, 10.0, -1e-300, 1, 0), 0.0);
    // Just inside the aquifer the value approaches the profile.
    EXPECT_CLOSE(patch(p, 10.0, 1e-9, 1, 0), 1.0, 0, 1e-6);
    EXPECT_CLOSE(patch(p, 10.0, 1e-9, 6, 0), 0.5, 0, 1e-6);
}

TEST(Kern3dPatch, NodesMayComeInAnyOrder) {
    // The generator's ascending order gives the same value as the program's mirrored pairs.
    std::vector<double> x, w;
    gaussLegendre(256, x, w);
    const ThreeDimParameters p = medium(0.5, 1.0, 0.1, 0.01, 300);
    double a = 0, b = 0;
    cnrml_3IL(p, 40, 12, 2, 0.5, a, x.data(), w.data());
    b = patch(p, 40, 12, 2, 0.5);
    EXPECT_CLOSE(a, b, 1e-13, 1e-16);
}

TEST(Kern3dPatch, DivisionsByZeroOfTheFormulasAreRunTimeErrors) {
    const auto call = [](const ThreeDimParameters& p) { patch(p, 10, 1, 0, 0); };
    const ThreeDimParameters base = medium(0.5, 1.0, 0.1, 0.01, 100, 0.01);
    kern3dref::expectSharedDivisionFaults(base, call);
    EXPECT_EQ(kern3dref::errorAfter(base, [](ThreeDimParameters& p) { p.porosity = 0; }, call), 11);
    // A patch without width lets nothing in, without a fault.
    EXPECT_EQ(kern3dref::errorAfter(base, [](ThreeDimParameters& p) { p.sourceWidth = 0; }, call), 0);
    ThreeDimParameters p = base;
    p.sourceWidth = 0;
    EXPECT_EQ(patch(p, 10, 1, 1, -0.5), 0.0);
}

TEST(Kern3dPatch, AbsurdInputsGiveNumbersOrErrorsNeverNaN) {
    kern3dref::expectNumbersOrErrors(
        [](double v, double x, double t) {
            double c = -1;
            cnrml_3IL(medium(v, 1e-3, 1e-4, 1e-5, 10), t, x, 1, 0, c, rule().firstNode(), rule().firstWeight());
            return c;
        },
        true, 0.0, 1.0 + 1e-9);
}
