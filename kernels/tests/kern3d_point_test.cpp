// cnrml_3IC: continuous injection at a point of an infinite medium.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <random>
#include <vector>

#include "kernels/kern3d.h"
#include "kernels/tests/kern3d_reference.h"
#include "shell/base/runtime_error.h"
#include "testing/is_close.h"

using namespace bm;
using kern3dref::decayOf;
using kern3dref::Worst;

namespace {

constexpr double kPi = kern3dref::kPi;

double point(const ThreeDimParameters& p, double t, double x, double y, double z) {
    double c = -1;
    cnrml_3IC(p, t, x, y, z, c);
    return c;
}

ThreeDimParameters injection(double v, double dx, double dy, double dz, double halfLife, double recharge = 0) {
    ThreeDimParameters p = kern3dref::withMedium({}, v, dx, dy, dz, halfLife, recharge);
    p.porosity = 0.3;
    p.aquiferThickness = 12;
    p.injectionRate = 0.02;
    return p;
}


// (Q / n) times the time integral of the instantaneous point source's Green's
// function, adaptively in tau.
double reference(const ThreeDimParameters& p, double t, double x, double y, double z) {
    const double v = p.effectiveVelocity, dx = p.effectiveDispersionX, dy = p.effectiveDispersionY,
                 dz = p.effectiveDispersionZ, lambda = decayOf(p);
    auto green = [&](double tau) {
        if (tau <= 0) return 0.0;
        const double e = (x - v * tau) * (x - v * tau) / (4 * dx * tau) + y * y / (4 * dy * tau) + z * z / (4 * dz * tau) +
                         lambda * tau;
        return std::exp(-e) / (std::pow(4 * kPi * tau, 1.5) * std::sqrt(dx * dy * dz));
    };
    std::vector<double> cuts;
    for (double c = t; c > 1e-12 * t; c /= 1.3) cuts.push_back(c);
    return p.injectionRate / p.porosity * kern3dref::integrate(green, 0.0, t, cuts, 1e-16);
}


}  // namespace

TEST(Kern3dPoint, MatchesTheTimeIntegralOfTheInstantaneousSource) {
    Worst worst{"3IC vs adaptive Green's-function integral"};
    int significant = 0;
    for (const auto& p : {injection(0.5, 1.0, 0.1, 0.05, 1e300), injection(0.05, 20.0, 8.0, 3.0, 30, 0.004),
                          injection(2.0, 0.01, 0.002, 0.0005, 500)}) {
        for (double t : {0.05, 3.0, 60.0, 2000.0})
            for (double x : {-0.5, 0.02, 1.0, 8.0, 60.0})
                for (double y : {0.0, 0.3, 2.0})
                    for (double z : {0.0, 0.1, 1.0}) {
                        if (x == 0 && y == 0 && z == 0) continue;
                        const double expected = reference(p, t, x, y, z);
                        const double got = point(p, t, x, y, z);
                        worst.add(got, expected);
                        if (expected > 1e-3) ++significant;
                        EXPECT_CLOSE(got, expected, 1e-5, 1e-6) << "v=" << p.effectiveVelocity << " t=" << t << " x=" << x
                                                                 << " y=" << y << " z=" << z;
                    }
    }
    EXPECT_GT(significant, 40);
}

TEST(Kern3dPoint, LongRunsReachTheClassicalSteadyPlume) {
    // C = Q / (4 pi n sqrt(Dy Dz) r') exp((x v - r' sqrt(v^2 + 4 lambda Dx)) / (2 Dx)),
    // r' = sqrt(x^2 + y^2 Dx / Dy + z^2 Dx / Dz).
    Worst worst{"3IC steady state"};
    for (const auto& p : {injection(0.5, 1.0, 0.1, 0.05, 1e300), injection(0.2, 3.0, 0.5, 0.2, 100, 0.01)}) {
        const double v = p.effectiveVelocity, dx = p.effectiveDispersionX, dy = p.effectiveDispersionY,
                     dz = p.effectiveDispersionZ, lambda = decayOf(p);
        for (double x : {-2.0, 0.5, 10.0, 80.0})
            for (double y : {0.0, 1.0})
                for (double z : {0.0, 0.4}) {
                    const double r = std::sqrt(x * x + y * y * dx / dy + z * z * dx / dz);
                    const double expected = p.injectionRate / (4 * kPi * p.porosity * std::sqrt(dy * dz) * r) *
                                            std::exp((x * v - r * std::sqrt(v * v + 4 * lambda * dx)) / (2 * dx));
                    const double got = point(p, 1e9, x, y, z);
                    worst.add(got, expected);
                    EXPECT_CLOSE(got, expected, 1e-9, 1e-12) << "x=" << x << " y=" << y << " z=" << z;
                }
    }
}

TEST(Kern3dPoint, DissolvedMassIsTheInjectedMassLessDecay) {
    // The integral of C/C0 over space is (Q / n) * integral of exp(-lambda' s) over
    // 0..t. C depends on x and on R = |(x/sqrt(Dx), y/sqrt(Dy), z/sqrt(Dz))|, so in
    // scaled spherical coordinates the volume integral is
    // 2 pi sqrt(Dx Dy Dz) * integral over theta in [0, pi], R > 0 of C R^2 sin(theta).
    for (const auto& p : {injection(0.2, 1.0, 0.3, 0.1, 1e300), injection(0.1, 2.0, 0.5, 0.2, 40, 0.005)}) {
        const double dx = p.effectiveDispersionX, dy = p.effectiveDispersionY, dz = p.effectiveDispersionZ;
        const double lambda = decayOf(p);
        for (double t : {5.0, 50.0}) {
            const double top = std::fabs(p.effectiveVelocity) * t / std::sqrt(dx) + 16 * std::sqrt(t);
            std::vector<double> rCuts;
            for (double r = top; r > 1e-6; r /= 1.5) rCuts.push_back(r);
            auto shell = [&](double theta) {
                auto radial = [&](double r) {
                    if (r == 0) return 0.0;
                    const double c = point(p, t, std::sqrt(dx) * r * std::cos(theta), std::sqrt(dy) * r * std::sin(theta), 0.0);
                    return c * r * r;
                };
                return kern3dref::integrate(radial, 0.0, top, rCuts, 1e-12) * std::sin(theta);
            };
            std::vector<double> thetaCuts;
            for (int i = 1; i < 16; ++i) thetaCuts.push_back(kPi * i / 16);
            const double mass = 2 * kPi * std::sqrt(dx * dy * dz) * kern3dref::integrate(shell, 0.0, kPi, thetaCuts, 1e-10);
            const double injected = p.injectionRate / p.porosity * (lambda > 1e-200 ? -std::expm1(-lambda * t) / lambda : t);
            std::printf("[kern3d accuracy] 3IC mass balance t=%g lambda'=%g: relative error %.2e\n", t, lambda,
                        std::fabs(mass - injected) / injected);
            EXPECT_CLOSE(mass, injected, 1e-7, 0) << "t=" << t << " lambda=" << lambda;
        }
    }
}

TEST(Kern3dPoint, TheSourcePointItselfIsAboveOneWithoutAFault) {
    ThreeDimParameters p = injection(0.5, 1.0, 0.1, 0.05, 100);
    for (double t : {0.0, 1e-6, 10.0, 1e9}) {
        const double c = point(p, t, 0.0, 0.0, 0.0);
        EXPECT_GT(c, 1.0);
        EXPECT_FALSE(std::isinf(c));
        EXPECT_EQ(c, kUnboundedConcentration);
    }
    // Even where every formula would divide by zero, the source point is no fault.
    p.effectiveDispersionX = 0;
    p.porosity = 0;
    EXPECT_EQ(point(p, 10.0, 0.0, -0.0, 0.0), kUnboundedConcentration);
    // Next to it the value is large, finite and above 1.
    p = injection(0.5, 1.0, 0.1, 0.05, 100);
    for (double d : {1e-6, 1e-100, 1e-200, 1e-310}) {
        const double c = point(p, 10.0, d, 0.0, 0.0);
        EXPECT_GT(c, 1.0) << d;
        EXPECT_FALSE(std::isnan(c)) << d;
        EXPECT_FALSE(std::isinf(c)) << d;
    }
}

TEST(Kern3dPoint, NothingBeforeTheInjectionStarts) {
    const ThreeDimParameters p = injection(0.5, 1.0, 0.1, 0.05, 100);
    EXPECT_EQ(point(p, 0.0, 1.0, 0.0, 0.0), 0.0);
    EXPECT_EQ(point(p, 0.0, -1e-9, 0.0, 0.0), 0.0);
    EXPECT_EQ(point(p, -5.0, 1.0, 0.0, 0.0), 0.0);
}

TEST(Kern3dPoint, DivisionsByZeroOfTheFormulasAreRunTimeErrors) {
    using kern3dref::errorAfter;
    const auto call = [](const ThreeDimParameters& p) { point(p, 10, 1, 0.5, 0.2); };
    const ThreeDimParameters base = injection(0.5, 1.0, 0.1, 0.05, 100, 0.01);
    kern3dref::expectSharedDivisionFaults(base, call);
    EXPECT_EQ(errorAfter(base, [](ThreeDimParameters& p) { p.porosity = 0; }, call), 11);
    // 0 / 0
    EXPECT_EQ(errorAfter(base, [](ThreeDimParameters& p) { p.porosity = 0, p.injectionRate = 0, p.netRecharge = 0; }, call), 6);
    // Growth so strong that v^2/(4 Dx) + lambda' < 0: the root of a negative number.
    EXPECT_EQ(errorAfter(base, [](ThreeDimParameters& p) { p.netRecharge = 0, p.effectiveHalfLife = -1; }, call), 5);
    // No injection, no plume, no fault.
    EXPECT_EQ(errorAfter(base, [](ThreeDimParameters& p) { p.injectionRate = 0; }, call), 0);
    ThreeDimParameters p = base;
    p.injectionRate = 0;
    EXPECT_EQ(point(p, 10, 1, 0.5, 0.2), 0.0);
}

TEST(Kern3dPoint, AbsurdInputsGiveNumbersOrErrorsNeverNaN) {
    // Next to the source the value may pass 1, up to the constant of the source point.
    kern3dref::expectNumbersOrErrors(
        [](double v, double x, double t) { return point(injection(v, 1e-3, 1e-4, 1e-5, 10), t, x, 1e-3, 0); }, true, 0.0,
        kUnboundedConcentration);
}

// The plume is the same on both sides of the planes y = 0 and z = 0 through
// the source, to the last bit (the grid computes mirrored points once).
TEST(Kern3dPoint, MirroredOffsetsGiveTheSameBits) {
    std::mt19937_64 random(20261125);
    auto between = [&](double low, double high) {
        return std::exp(std::uniform_real_distribution<double>(std::log(low), std::log(high))(random));
    };
    int nonZero = 0;
    for (int i = 0; i < 4000; ++i) {
        ThreeDimParameters p;
        p.effectiveVelocity = i % 7 == 0 ? 0.0 : between(1e-3, 10);
        p.effectiveDispersionX = between(1e-3, 50);
        p.effectiveDispersionY = p.effectiveDispersionX * between(1e-2, 1);
        p.effectiveDispersionZ = p.effectiveDispersionY * between(1e-2, 1);
        p.effectiveHalfLife = i % 3 == 0 ? 1e300 : between(1, 1e4);
        p.porosity = between(0.05, 0.5);
        p.injectionRate = between(1e-3, 10);
        const double t = between(1e-2, 1e4);
        const double x = (i % 4 == 0 ? -1 : 1) * between(1e-2, 2e3);
        const double y = between(1e-3, 2e3), z = between(1e-3, 2e2);
        double c[4];
        cnrml_3IC(p, t, x, y, z, c[0]);
        cnrml_3IC(p, t, x, -y, z, c[1]);
        cnrml_3IC(p, t, x, y, -z, c[2]);
        cnrml_3IC(p, t, x, -y, -z, c[3]);
        for (int m = 1; m < 4; ++m) EXPECT_EQ(std::bit_cast<std::uint64_t>(c[m]), std::bit_cast<std::uint64_t>(c[0])) << i;
        if (c[0] > 1e-12) ++nonZero;
    }
    EXPECT_GT(nonZero, 500);  // the comparison saw real plumes, not only zeros
}
