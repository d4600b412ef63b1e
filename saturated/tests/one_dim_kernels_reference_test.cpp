// The four one-dimensional kernels against independent long double references,
// to 1e-9 in C/Co (absolute, and relative where C/Co > 1e-3):
//   semi-infinite aquifers: the time integral of the inlet's pulse response by
//     adaptive quadrature, and the Dirichlet closed form with the test's own erfc;
//   finite aquifers: a Chebyshev collocation of the transport equation with the
//     exact exponential in time, whose own convergence is shown by refinement.
// Each test prints the largest deviation it met.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "kernels/kern1d.h"
#include "one_dim_accuracy_helpers.h"
#include "saturated/one_dim_kernels.h"
#include "testing/transport_green_reference.h"
#include "testing/transport_chebyshev_reference.h"

namespace bm {
namespace {

using Real = long double;
using namespace testkit;

const double kNoDecay = kNoDecayHalfLife;

OneDimParameters parameters(double V, double D, double halfLife) { return kernelParameters(V, D, halfLife); }

// ---------------------------------------------------------------------------
// The references' own checks.

TEST(OneDimReferences, OwnErfcAgreesWithTheLongDoubleLibrary) {
    for (Real x : {-6.0L, -2.0L, -0.3L, 0.0L, 1e-6L, 0.4L, 1.0L, 1.99L, 2.0L, 2.01L, 3.5L, 7.0L, 26.0L, 60.0L}) {
        const Real library = std::erfc(x);
        EXPECT_LE(std::fabs(erfcLong(x) - library), 1e-16L * library) << static_cast<double>(x);
    }
}

TEST(OneDimReferences, QuadratureAndClosedFormOfTheDirichletColumnAgree) {
    // Two evaluations that share nothing but the problem they solve.
    for (double lambda : {0.0, 0.1, 1.0})
        for (double x : {0.3, 1.0, 4.0, 12.0})
            for (double t : {0.05, 1.0, 9.0}) {
                const Real q = semiInfiniteDirichletByQuadrature(1.0, 0.5, lambda, x, t);
                const Real c = semiInfiniteDirichletClosedForm(1.0, 0.5, lambda, x, t);
                EXPECT_LE(std::fabs(static_cast<double>(q - c)), 1e-15) << at(x, t) << " lambda " << lambda;
            }
}

TEST(OneDimReferences, SpectralSolutionOfALongAquiferIsTheSemiInfiniteOne) {
    // Over an aquifer of 20 the far end is out of the plume's reach by t = 2
    // (erfc(9) there), so the collocation must give the semi-infinite values.
    const std::vector<double> xs = {0, 0.5, 1, 2, 3, 5, 8};
    const std::vector<double> ts = {0.5, 1, 2};
    for (bool cauchy : {false, true}) {
        const SpectralProblem problem{1.0, 0.5, 0.1, cauchy, 20.0};
        const auto c = spectralSolution(problem, 112, xs, ts);
        for (std::size_t k = 0; k < ts.size(); ++k)
            for (std::size_t i = 0; i < xs.size(); ++i) {
                const Real expected = cauchy ? semiInfiniteCauchyByQuadrature(1.0, 0.5, 0.1, xs[i], ts[k])
                                             : semiInfiniteDirichletByQuadrature(1.0, 0.5, 0.1, xs[i], ts[k]);
                EXPECT_LE(std::fabs(static_cast<double>(c[k][i] - expected)), 1e-11)
                    << (cauchy ? "Cauchy " : "Dirichlet ") << at(xs[i], ts[k]);
            }
    }
}

TEST(OneDimReferences, MatrixExponentialOfAKnownMatrix) {
    // exp([[a, b], [0, c]]) = [[e^a, b (e^a - e^c) / (a - c)], [0, e^c]], stiff enough to need squaring.
    const Real a = -300, b = 7, c = -0.5;
    const auto e = matrixExponential({a, b, 0, c}, 2);
    EXPECT_LE(std::fabs(e[0] - std::exp(a)), 1e-30L);
    EXPECT_LE(std::fabs(e[1] - b * (std::exp(a) - std::exp(c)) / (a - c)) / std::fabs(e[1]), 1e-16L);
    EXPECT_EQ(e[2], 0);
    EXPECT_LE(std::fabs(e[3] - std::exp(c)) / std::exp(c), 1e-16L);
}

// ---------------------------------------------------------------------------
// Semi-infinite aquifers.

struct SemiInfiniteCase {
    double V, D, lambda;
};

// Ordinary columns, a dispersion-dominated one, and a sharp front (V x / D up
// to 4000, where exerfc works far outside the range of exp and erfc apart).
const std::vector<SemiInfiniteCase> kSemiInfiniteCases = {
    {1.0, 0.5, 0.1}, {1.0, 0.5, 0.0}, {0.3, 2.0, 0.02}, {0.01, 1.0, 0.5}, {5.0, 0.05, 1.0}, {5.0, 0.05, 0.0}};
const std::vector<double> kSemiInfiniteXs = {0, 0.01, 0.5, 1, 2, 5, 10, 20, 40};
const std::vector<double> kSemiInfiniteTs = {0.01, 0.5, 2, 8, 50};

TEST(OneDimKernelAccuracy, SemiInfiniteDirichletAgreesWithThePulseIntegral) {
    Deviation byQuadrature{"semi-infinite Dirichlet vs pulse integral"};
    Deviation byClosedForm{"semi-infinite Dirichlet vs long double closed form"};
    for (const auto& c : kSemiInfiniteCases) {
        const auto p = parameters(c.V, c.D, halfLifeOf(c.lambda));
        for (double t : kSemiInfiniteTs)
            for (double x : kSemiInfiniteXs) {
                double value = -1;
                EXPECT_TRUE(semiInfiniteDirichletRatio(p, x, t, value));
                const std::string where = at(x, t) + " V=" + std::to_string(c.V) + " lambda=" + std::to_string(c.lambda);
                byQuadrature.check(value, semiInfiniteDirichletByQuadrature(c.V, c.D, c.lambda, x, t), where);
                byClosedForm.check(value, semiInfiniteDirichletClosedForm(c.V, c.D, c.lambda, x, t), where);
            }
    }
}

TEST(OneDimKernelAccuracy, SemiInfiniteCauchyWithDecayAgreesWithThePulseIntegral) {
    Deviation deviation{"semi-infinite Cauchy (decay) vs pulse integral"};
    for (const auto& c : kSemiInfiniteCases) {
        if (c.lambda == 0) continue;
        const auto p = parameters(c.V, c.D, halfLifeOf(c.lambda));
        for (double t : kSemiInfiniteTs)
            for (double x : kSemiInfiniteXs) {
                double value = -1;
                EXPECT_TRUE(semiInfiniteCauchyRatio(p, x, t, value));
                deviation.check(value, semiInfiniteCauchyByQuadrature(c.V, c.D, c.lambda, x, t),
                                at(x, t) + " V=" + std::to_string(c.V));
            }
    }
}

// The no-decay Cauchy kernel as its formula stands: erfc((x - Vt)/S) whole,
// minus half of exp(xV/D) erfc((x + Vt)/S) (1 + (x + Vt) V/D), plus the
// Gaussian with pi read as 3.14159; here in long double with this file's erfc.
Real cauchyNoDecayAsStated(double V, double D, double x, double t) {
    const Real v = V, d = D, X = x, T = t;
    const Real S = 2 * std::sqrt(d * T);
    const Real e1 = erfcLong((X - v * T) / S);
    const Real eta = (X + v * T) / S;
    const Real e2 = std::exp(X * v / d - eta * eta) * erfcxLong(eta);
    const Real P = 0.5L * e2 * (1 + (T * v + X) * v / d);
    const Real Z = std::exp(-(X - T * v) * (X - T * v) / (4 * d * T)) * v * std::sqrt(T / (d * 3.14159L));
    return e1 - P + Z;
}

TEST(OneDimKernelAccuracy, SemiInfiniteCauchyWithoutDecayIsItsStatedFormula) {
    Deviation asStated{"semi-infinite Cauchy (no decay) vs its formula, long double"};
    Deviation physical{"semi-infinite Cauchy (no decay) vs pulse integral + offset"};
    const Real pi = 3.14159265358979323846264338327950288L;
    for (const auto& c : kSemiInfiniteCases) {
        if (c.lambda != 0) continue;
        const auto p = parameters(c.V, c.D, kNoDecay);
        for (double t : kSemiInfiniteTs)
            for (double x : kSemiInfiniteXs) {
                double value = -1;
                EXPECT_TRUE(semiInfiniteCauchyRatio(p, x, t, value));
                asStated.check(value, cauchyNoDecayAsStated(c.V, c.D, x, t), at(x, t));
                // The solution of the problem, plus the half of erfc((x - Vt)/S)
                // the whole first term keeps, plus the Gaussian's change by 3.14159.
                const Real S = 2 * std::sqrt(Real(c.D) * t);
                const Real xi = (x - Real(c.V) * t) / S;
                const Real offset = erfcLong(xi) / 2 + std::exp(-xi * xi) * Real(c.V) * std::sqrt(Real(t) / c.D) *
                                                           (1 / std::sqrt(3.14159L) - 1 / std::sqrt(pi));
                physical.check(value, semiInfiniteCauchyByQuadrature(c.V, c.D, 0, x, t) + offset, at(x, t));
            }
    }
}

TEST(OneDimKernelAccuracy, SemiInfiniteCauchyWithWeakDecayAgreesWithThePulseIntegral) {
    // The decay formula ends in (...) V^2 / (4 lambda D), whose bracket cancels
    // as lambda falls; the kernel must still give the solution with decay, down
    // to lambda = 1e-15 V^2 / D, and with half-lives of 1e30 and 1e308 typed to
    // mean "no decay" (with the latter V^2 / (4 lambda D) is beyond the doubles
    // for V = 5, D = 0.05: no overflow may come of it).
    for (const auto& c :
         {SemiInfiniteCase{1.0, 0.5, 0}, SemiInfiniteCase{0.3, 2.0, 0}, SemiInfiniteCase{5.0, 0.05, 0}}) {
        Deviation deviation{"semi-infinite Cauchy, weak decay, V=" + std::to_string(c.V) + " D=" + std::to_string(c.D)};
        for (double scaled : {1e-2, 1e-4, 1e-6, 1e-8, 1e-10, 1e-12, 1e-15, -1.0, -2.0}) {
            const double halfLife = scaled == -1.0   ? 1e30
                                    : scaled == -2.0 ? 1e308
                                                     : std::log(2.0) / (scaled * c.V * c.V / c.D);
            const double lambda = std::log(2.0) / halfLife;
            const auto p = parameters(c.V, c.D, halfLife);
            for (double t : kSemiInfiniteTs)
                for (double x : kSemiInfiniteXs) {
                    double value = -1;
                    EXPECT_TRUE(semiInfiniteCauchyRatio(p, x, t, value));
                    deviation.check(value, static_cast<double>(semiInfiniteCauchyByQuadrature(c.V, c.D, lambda, x, t)),
                                    at(x, t) + " lambda " + std::to_string(lambda));
                }
        }
    }
}

// ---------------------------------------------------------------------------
// Finite aquifers.

struct FiniteCase {
    double V, D, L;
    std::vector<int> refinements;  // Chebyshev intervals, coarse to fine
};

// An advective aquifer (V L / D = 20), a short slow one and a dispersive one.
const std::vector<FiniteCase> kFiniteCases = {
    {1.0, 0.5, 10.0, {48, 60, 72}}, {0.3, 0.2, 4.0, {40, 48, 56}}, {0.1, 2.0, 5.0, {24, 32, 40}}};
const std::vector<double> kFractions = {0, 0.05, 0.1, 0.2, 0.33, 0.45, 0.5, 0.75, 0.9, 1};
const std::vector<double> kFiniteTs = {0.25, 0.5, 2, 5, 12};

// The reference on the finest collocation, after showing that the two finest
// differ by far less than the accuracy asked of the kernels.
std::vector<std::vector<Real>> convergedReference(const FiniteCase& c, double lambda, bool cauchy,
                                                  const std::vector<double>& xs) {
    const SpectralProblem problem{c.V, c.D, lambda, cauchy, c.L};
    std::vector<std::vector<std::vector<Real>>> levels;
    for (int n : c.refinements) levels.push_back(spectralSolution(problem, n, xs, kFiniteTs));
    double change = 0;
    const auto& fine = levels.back();
    const auto& next = levels[levels.size() - 2];
    for (std::size_t k = 0; k < kFiniteTs.size(); ++k)
        for (std::size_t i = 0; i < xs.size(); ++i)
            change = std::max(change, static_cast<double>(std::fabs(fine[k][i] - next[k][i])));
    EXPECT_LE(change, 1e-11) << "the reference has not converged";
    std::printf("[ accuracy ] reference V=%g D=%g L=%g lambda=%g %s: last refinement changes it by %.1e\n", c.V, c.D,
                c.L, lambda, cauchy ? "Cauchy" : "Dirichlet", change);
    return fine;
}

template <class Kernel>
void compareFinite(const char* name, bool cauchy, double lambda, double halfLife, Kernel kernel) {
    Deviation deviation{name};
    for (const auto& c : kFiniteCases) {
        std::vector<double> xs;
        for (double f : kFractions) xs.push_back(f * c.L);
        // The Cauchy kernel evaluates the mid-point at 1.001 L/2: so does the reference.
        std::vector<double> referenceXs = xs;
        if (cauchy)
            for (double& x : referenceXs)
                if (x == c.L / 2) x *= 1.001;
        const auto reference = convergedReference(c, lambda, cauchy, referenceXs);
        const auto p = parameters(c.V, c.D, halfLife);
        List<double> roots(kRootCount);
        if (cauchy)
            root3(c.V * 0.25 * c.L / c.D, c.D / (c.L * c.V), roots(1));
        else
            EXPECT_EQ(root1(c.V * c.L / (2 * c.D), roots(1)), 1);
        for (std::size_t k = 0; k < kFiniteTs.size(); ++k)
            for (std::size_t i = 0; i < xs.size(); ++i)
                deviation.check(kernel(p, c.L, xs[i], kFiniteTs[k], roots), reference[k][i],
                                at(xs[i], kFiniteTs[k]) + " L=" + std::to_string(c.L));
    }
}

double finiteDirichlet(const OneDimParameters& p, double L, double x, double t, const List<double>& roots) {
    double c = -1;
    EXPECT_TRUE(finiteDirichletRatio(p, L, x, t, roots, c)) << at(x, t);
    return c;
}

double finiteCauchy(const OneDimParameters& p, double L, double x, double t, const List<double>& roots) {
    double c = -1;
    finiteCauchyRatio(p, L, x, t, roots, c);
    return c;
}

TEST(OneDimKernelAccuracy, FiniteDirichletWithDecayAgreesWithTheCollocation) {
    compareFinite("finite Dirichlet (decay 0.1) vs collocation", false, 0.1, halfLifeOf(0.1), finiteDirichlet);
}

TEST(OneDimKernelAccuracy, FiniteDirichletWithVanishingDecayAgreesWithTheCollocation) {
    // A half-life of 1e30 keeps lambda above 0, so the series runs (lambda = 0
    // exactly gives 1 everywhere, as the kernel's tests show).
    compareFinite("finite Dirichlet (half-life 1e30) vs collocation", false, std::log(2.0) / 1e30, 1e30,
                  finiteDirichlet);
}

TEST(OneDimKernelAccuracy, FiniteCauchyWithDecayAgreesWithTheCollocation) {
    compareFinite("finite Cauchy (decay 0.1) vs collocation", true, 0.1, halfLifeOf(0.1), finiteCauchy);
}

TEST(OneDimKernelAccuracy, FiniteCauchyWithoutDecayAgreesWithTheCollocation) {
    compareFinite("finite Cauchy (no decay) vs collocation", true, 0.0, kNoDecay, finiteCauchy);
}

TEST(OneDimKernelAccuracy, FiniteKernelsHoldTheirAccuracyWhereTheSeriesCancels) {
    // The finite series end in F - 2 exp(a x - G - lambda t) sum (a = V/2D,
    // G = V^2 t / 4D): in a sharp-fronted aquifer (here V L / D = 200) the
    // factor reaches 1e21 and the sum cancels to match; the kernels must not
    // carry that cancellation into C/Co.
    const FiniteCase c{2.0, 0.1, 10.0, {112, 128}};
    const double lambda = 0.05;
    const std::vector<double> xs = {0.5, 1, 2, 3.3, 7.5, 10};
    const std::vector<double> ts = {1, 2, 4, 5, 12};
    const auto p = parameters(c.V, c.D, halfLifeOf(lambda));
    for (bool cauchy : {false, true}) {
        Deviation deviation{std::string(cauchy ? "finite Cauchy" : "finite Dirichlet") + " at V L / D = 200"};
        const SpectralProblem problem{c.V, c.D, lambda, cauchy, c.L};
        const auto coarse = spectralSolution(problem, c.refinements[0], xs, ts);
        const auto reference = spectralSolution(problem, c.refinements[1], xs, ts);
        const auto roots = finiteRoots(cauchy, c.V, c.D, c.L);
        for (std::size_t k = 0; k < ts.size(); ++k)
            for (std::size_t i = 0; i < xs.size(); ++i) {
                EXPECT_LE(std::fabs(static_cast<double>(reference[k][i] - coarse[k][i])), 1e-11);
                const double x = xs[i], t = ts[k];
                const double value = cauchy ? finiteCauchy(p, c.L, x, t, roots) : finiteDirichlet(p, c.L, x, t, roots);
                deviation.check(value, static_cast<double>(reference[k][i]), at(x, t));
            }
    }
}

}  // namespace
}  // namespace bm
