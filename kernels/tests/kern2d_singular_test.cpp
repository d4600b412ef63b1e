// Singular and absurd input to the two-dimensional kernels: the program's own
// divisions by zero become run-time errors 11 (or 6 for 0/0), and no input
// hangs a kernel, crashes it or slips a NaN through.

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>

#include "kernels/kern2d.h"
#include "kernels/tests/kern2d_reference.h"
#include "shell/base/runtime_error.h"

using namespace bm;
using namespace bm::kern2dref;

namespace {

using Kernel = std::function<void(const TwoDimParameters&, double, double, double, double&)>;

const std::vector<std::pair<const char*, Kernel>>& kernels() {
    static const std::vector<std::pair<const char*, Kernel>> all = {
        {"cnrml_FL", [](const TwoDimParameters& p, double t, double x, double y, double& c) { cnrml_FL(p, t, x, y, c); }},
        {"cnrml_IL",
         [](const TwoDimParameters& p, double t, double x, double y, double& c) {
             cnrml_IL(p, t, x, y, c, theRule().nodes.data(), theRule().weights.data());
         }},
        {"cnrml_IG",
         [](const TwoDimParameters& p, double t, double x, double y, double& c) {
             cnrml_IG(p, t, x, y, c, theRule().nodes.data(), theRule().weights.data());
         }},
        {"cnrml_IC",
         [](const TwoDimParameters& p, double t, double x, double y, double& c) {
             cnrml_IC(p, t, x, y, c, theRule().nodes.data(), theRule().weights.data());
         }},
    };
    return all;
}

TwoDimParameters sensible() {
    Flow f;
    f.v = 1, f.dx = 1, f.dy = 0.2, f.halfLife = 10;
    TwoDimParameters p = record(f);
    p.yMin = 0, p.yMax = 10, p.sourceYc = 5, p.sourceWidth = 2, p.sourceStdDev = 1, p.injectionRate = 0.5;
    return p;
}

// The error number a call raises at (t, x, y) = (2, 1, 5.2), 0 for none.
int errorOf(const Kernel& kernel, const TwoDimParameters& p) {
    double c = 0;
    return raisedError([&] { kernel(p, 2, 1, 5.2, c); });
}

}  // namespace

TEST(Kern2dSingular, SensibleInputRaisesNothing) {
    for (const auto& [name, kernel] : kernels()) EXPECT_EQ(errorOf(kernel, sensible()), 0) << name;
}

TEST(Kern2dSingular, ZeroDispersionIsDivisionByZero) {
    for (const auto& [name, kernel] : kernels()) {
        TwoDimParameters p = sensible();
        p.effectiveDispersionX = 0;
        EXPECT_EQ(errorOf(kernel, p), 11) << name << " Dx";
        p = sensible();
        p.effectiveDispersionY = 0;
        EXPECT_EQ(errorOf(kernel, p), 11) << name << " Dy";
    }
}

TEST(Kern2dSingular, ZeroThicknessOrPorosityWithRechargeIsDivisionByZero) {
    for (const auto& [name, kernel] : kernels()) {
        TwoDimParameters p = sensible();
        p.netRecharge = 0.01;
        p.aquiferThickness = 0;
        EXPECT_EQ(errorOf(kernel, p), 11) << name;
        // Without recharge the thickness plays no part.
        p.netRecharge = 0;
        EXPECT_EQ(errorOf(kernel, p), 0) << name;
    }
    for (const auto& [name, kernel] : kernels()) {
        if (std::string(name) == "cnrml_IC") continue;  // divides by the porosity anyway
        TwoDimParameters p = sensible();
        p.porosity = 0;
        EXPECT_EQ(errorOf(kernel, p), 0) << name;
        p.netRecharge = 0.01;
        EXPECT_EQ(errorOf(kernel, p), 11) << name;
    }
}

TEST(Kern2dSingular, ZeroHalfLifeIsDivisionByZeroAndNegativeDispersionIllegal) {
    for (const auto& [name, kernel] : kernels()) {
        TwoDimParameters p = sensible();
        p.effectiveHalfLife = 0;
        EXPECT_EQ(errorOf(kernel, p), 11) << name;
        p = sensible();
        p.effectiveDispersionY = -1;
        EXPECT_EQ(errorOf(kernel, p), 5) << name;
    }
}

TEST(Kern2dSingular, ZeroWidthAquiferIsTheProgramsFault) {
    TwoDimParameters p = sensible();
    p.yMin = p.yMax = 0;
    EXPECT_EQ(errorOf(kernels()[0].second, p), 11);
}

TEST(Kern2dSingular, AbsurdInputEndsWithAValueOrAnError) {
    // Magnitudes from 1e-30 to 1e30 (times and positions wider still): every
    // call returns a finite value or raises a run-time error; none hangs.
    std::mt19937_64 random(20240521);
    auto magnitude = [&](double lo, double hi) {
        return std::exp(std::uniform_real_distribution<double>(std::log(lo), std::log(hi))(random));
    };
    auto sign = [&] { return std::uniform_int_distribution<int>(0, 9)(random) == 0 ? -1.0 : 1.0; };
    int values = 0, errors = 0;
    for (int i = 0; i < 150; ++i) {
        TwoDimParameters p;
        p.effectiveVelocity = sign() * magnitude(1e-30, 1e30);
        p.effectiveDispersionX = magnitude(1e-30, 1e30);
        p.effectiveDispersionY = magnitude(1e-30, 1e30);
        p.effectiveHalfLife = magnitude(1e-30, 1e300);
        p.netRecharge = i % 2 ? magnitude(1e-30, 1e30) : 0.0;
        p.porosity = magnitude(1e-3, 1);
        p.aquiferThickness = magnitude(1e-10, 1e10);
        p.yMin = -magnitude(1e-30, 1e30);
        p.yMax = magnitude(1e-30, 1e30);
        p.sourceYc = sign() * magnitude(1e-30, 1e30);
        p.sourceWidth = magnitude(1e-30, 1e30);
        p.sourceStdDev = magnitude(1e-30, 1e30);
        p.injectionRate = magnitude(1e-30, 1e30);
        const double t = magnitude(1e-30, 1e300), x = sign() * magnitude(1e-300, 1e300),
                     y = sign() * magnitude(1e-300, 1e300);
        for (const auto& [name, kernel] : kernels()) {
            double c = 0;
            try {
                kernel(p, t, x, y, c);
                EXPECT_TRUE(std::isfinite(c)) << name << " case " << i;
                ++values;
            } catch (const RuntimeError& e) {
                EXPECT_TRUE(e.number() == 5 || e.number() == 6 || e.number() == 11) << name << " " << e.number();
                ++errors;
            }
        }
    }
    EXPECT_GT(values, errors);
}
