// The four one-dimensional kernels against the finite-difference reference of
// the transport equation they solve, with and without decay, and their
// required special cases.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "kernels/kern1d.h"
#include "saturated/one_dim_cauchy_grid.h"
#include "saturated/one_dim_inversion.h"
#include "saturated/one_dim_finite_series.h"
#include "saturated/one_dim_kernels.h"
#include "shell/base/runtime_error.h"
#include "testing/is_close.h"
#include "transport_fd_reference.h"

namespace bm {
namespace {

using testkit::FdProblem;
using testkit::fdSolution;

constexpr double kV = 1.0;
constexpr double kD = 0.5;
constexpr double kL = 10.0;
constexpr double kDecay = 0.1;
const double kNoDecayHalfLife = std::numeric_limits<double>::infinity();  // ln 2 / inf is exactly 0

OneDimParameters parametersWith(double halfLife) {
    OneDimParameters p;
    p.effectiveVelocity = kV;
    p.effectiveDispersion = kD;
    p.effectiveHalfLife = halfLife;
    return p;
}

List<double> dirichletRoots(double V, double D, double L) {
    List<double> roots(kRootCount);
    EXPECT_EQ(root1(V * L / (2 * D), roots(1)), 1);
    return roots;
}

List<double> cauchyRoots(double V, double D, double L) {
    List<double> roots(kRootCount);
    root3(V * 0.25 * L / D, D / (L * V), roots(1));
    return roots;
}

// The accuracy asked of every kernel: 1e-6 absolute, and 1e-5 relative where C/Co > 1e-3.
void expectAccurate(double value, double reference, const std::string& where) {
    EXPECT_LE(std::fabs(value - reference), 1e-6) << where << " value " << value << " reference " << reference;
    if (reference > 1e-3) {
        EXPECT_LE(std::fabs(value - reference), 1e-5 * reference)
            << where << " value " << value << " reference " << reference;
    }
}

template <class Kernel>
void compareWithFd(const FdProblem& problem, const std::vector<double>& xs, const std::vector<double>& ts,
                   Kernel kernel, const char* name) {
    const auto reference = fdSolution(problem, xs, ts);
    for (std::size_t k = 0; k < ts.size(); ++k) {
        for (std::size_t i = 0; i < xs.size(); ++i) {
            expectAccurate(kernel(xs[i], ts[k]), reference[k][i],
                           std::string(name) + " x=" + std::to_string(xs[i]) + " t=" + std::to_string(ts[k]));
        }
    }
}

const std::vector<double> kFiniteXs = {0, 0.5, 1, 2, 3, 4.5, 7.5, 9, 10};
const std::vector<double> kFiniteTs = {0.5, 2, 5, 12};
const std::vector<double> kLongXs = {0, 0.5, 1, 2, 3, 4.5, 7.5, 10, 15};
const std::vector<double> kLongTs = {0.5, 2, 5, 8};

FdProblem finiteProblem(bool cauchy, double decay) {
    FdProblem p;
    p.velocity = kV;
    p.dispersion = kD;
    p.decay = decay;
    p.cauchy = cauchy;
    p.length = kL;
    p.cells = 100;
    p.timeStep = 0.02;
    return p;
}

FdProblem longProblem(bool cauchy, double decay) {
    FdProblem p = finiteProblem(cauchy, decay);
    p.length = 40;  // the plume of t = 8 stays far from this end (erfc(8) there)
    p.cells = 400;
    return p;
}

TEST(OneDimKernels, FiniteDirichletWithDecayMatchesFiniteDifferences) {
    const auto p = parametersWith(std::log(2.0) / kDecay);
    const auto roots = dirichletRoots(kV, kD, kL);
    compareWithFd(finiteProblem(false, kDecay), kFiniteXs, kFiniteTs, [&](double x, double t) {
        double c = -1;
        EXPECT_TRUE(finiteDirichletRatio(p, kL, x, t, roots, c));
        return c;
    }, "finite Dirichlet");
}

TEST(OneDimKernels, FiniteDirichletWithVanishingDecayMatchesTheConservativeSolution) {
    // A half-life of 1e30 keeps lambda above 0: the series runs and solves the problem without decay.
    const auto p = parametersWith(1e30);
    const auto roots = dirichletRoots(kV, kD, kL);
    compareWithFd(finiteProblem(false, 0.0), kFiniteXs, kFiniteTs, [&](double x, double t) {
        double c = -1;
        finiteDirichletRatio(p, kL, x, t, roots, c);
        return c;
    }, "finite Dirichlet, no decay");
}

TEST(OneDimKernels, FiniteDirichletWithLambdaExactlyZeroIsOneEverywhere) {
    const auto p = parametersWith(kNoDecayHalfLife);
    const auto roots = dirichletRoots(kV, kD, kL);
    for (double t : {1e-6, 0.5, 3.0, 1e4})
        for (double x : {0.0, 0.1, 5.0, 10.0, 40.0}) {
            double c = -1;
            EXPECT_TRUE(finiteDirichletRatio(p, kL, x, t, roots, c));
            EXPECT_EQ(c, 1.0) << x << " " << t;
        }
}

TEST(OneDimKernels, FiniteCauchyWithDecayMatchesFiniteDifferences) {
    const auto p = parametersWith(std::log(2.0) / kDecay);
    const auto roots = cauchyRoots(kV, kD, kL);
    compareWithFd(finiteProblem(true, kDecay), kFiniteXs, kFiniteTs, [&](double x, double t) {
        double c = -1;
        EXPECT_TRUE(finiteCauchyRatio(p, kL, x, t, roots, c));
        return c;
    }, "finite Cauchy");
}

TEST(OneDimKernels, FiniteCauchyWithoutDecayMatchesFiniteDifferences) {
    const auto p = parametersWith(kNoDecayHalfLife);
    const auto roots = cauchyRoots(kV, kD, kL);
    compareWithFd(finiteProblem(true, 0.0), kFiniteXs, kFiniteTs, [&](double x, double t) {
        double c = -1;
        // without decay the series tests C alone and spends its 500 terms
        EXPECT_FALSE(finiteCauchyRatio(p, kL, x, t, roots, c));
        return c;
    }, "finite Cauchy, no decay");
}

TEST(OneDimKernels, SemiInfiniteDirichletMatchesFiniteDifferences) {
    for (double decay : {kDecay, 0.0}) {
        const auto p = parametersWith(decay == 0.0 ? kNoDecayHalfLife : std::log(2.0) / decay);
        compareWithFd(longProblem(false, decay), kLongXs, kLongTs, [&](double x, double t) {
            double c = -1;
            EXPECT_TRUE(semiInfiniteDirichletRatio(p, x, t, c));
            return c;
        }, decay == 0.0 ? "semi-infinite Dirichlet, no decay" : "semi-infinite Dirichlet");
    }
}

TEST(OneDimKernels, SemiInfiniteCauchyWithDecayMatchesFiniteDifferences) {
    const auto p = parametersWith(std::log(2.0) / kDecay);
    compareWithFd(longProblem(true, kDecay), kLongXs, kLongTs, [&](double x, double t) {
        double c = -1;
        EXPECT_TRUE(semiInfiniteCauchyRatio(p, x, t, c));
        return c;
    }, "semi-infinite Cauchy");
}

TEST(OneDimKernels, SemiInfiniteCauchyWithoutDecayKeepsItsWholeFirstTerm) {
    // Without decay the kernel is the solution of the problem plus the half of
    // erfc((x - Vt)/S) its first term keeps, with pi read as 3.14159.
    const auto p = parametersWith(kNoDecayHalfLife);
    const auto reference = fdSolution(longProblem(true, 0.0), kLongXs, kLongTs);
    for (std::size_t k = 0; k < kLongTs.size(); ++k) {
        for (std::size_t i = 0; i < kLongXs.size(); ++i) {
            const double x = kLongXs[i], t = kLongTs[k];
            const double S = 2 * std::sqrt(kD * t);
            const double gauss = std::exp(-(x - kV * t) * (x - kV * t) / (4 * kD * t)) * kV * std::sqrt(t / kD);
            const double expected = reference[k][i] + 0.5 * std::erfc((x - kV * t) / S) +
                                    gauss * (1 / std::sqrt(3.14159) - 1 / std::sqrt(M_PI));
            double c = -1;
            EXPECT_TRUE(semiInfiniteCauchyRatio(p, x, t, c));
            expectAccurate(c, expected, "x=" + std::to_string(x) + " t=" + std::to_string(t));
        }
    }
}

TEST(OneDimKernels, FiniteKernelsMatchFiniteDifferencesInAShortSlowAquifer) {
    // A second set: slower flow, stronger decay, a shorter aquifer.
    OneDimParameters p;
    p.effectiveVelocity = 0.3;
    p.effectiveDispersion = 0.2;
    p.effectiveHalfLife = std::log(2.0) / 0.3;
    const double L = 4.0;
    FdProblem problem;
    problem.velocity = 0.3;
    problem.dispersion = 0.2;
    problem.decay = 0.3;
    problem.length = L;
    problem.cells = 100;
    problem.timeStep = 0.02;
    const std::vector<double> xs = {0, 0.2, 0.6, 1.2, 2.4, 3.2, 4.0};
    const std::vector<double> ts = {0.3, 1.5, 6};
    const auto dRoots = dirichletRoots(0.3, 0.2, L);
    compareWithFd(problem, xs, ts, [&](double x, double t) {
        double c = -1;
        finiteDirichletRatio(p, L, x, t, dRoots, c);
        return c;
    }, "finite Dirichlet, second set");
    problem.cauchy = true;
    const auto cRoots = cauchyRoots(0.3, 0.2, L);
    compareWithFd(problem, xs, ts, [&](double x, double t) {
        double c = -1;
        finiteCauchyRatio(p, L, x, t, cRoots, c);
        return c;
    }, "finite Cauchy, second set");
}

TEST(OneDimKernels, TimeZeroIsTheInletAloneInEveryKernel) {
    const auto dRoots = dirichletRoots(kV, kD, kL);
    const auto cRoots = cauchyRoots(kV, kD, kL);
    for (double halfLife : {std::log(2.0) / kDecay, kNoDecayHalfLife, 1e30}) {
        const auto p = parametersWith(halfLife);
        for (double x : {0.0, 1e-9, 2.0, 5.0, 10.0}) {
            const double expected = x == 0.0 ? 1.0 : 0.0;
            double c = -1;
            EXPECT_TRUE(finiteDirichletRatio(p, kL, x, 0.0, dRoots, c));
            EXPECT_EQ(c, expected);
            c = -1;
            EXPECT_TRUE(finiteCauchyRatio(p, kL, x, 0.0, cRoots, c));
            EXPECT_EQ(c, expected);
            c = -1;
            EXPECT_TRUE(semiInfiniteDirichletRatio(p, x, 0.0, c));
            EXPECT_EQ(c, expected);
            c = -1;
            EXPECT_TRUE(semiInfiniteCauchyRatio(p, x, 0.0, c));
            EXPECT_EQ(c, expected);
        }
    }
}

TEST(OneDimKernels, FiniteCauchyMovesTheMidPointAndNothingElse) {
    const auto p = parametersWith(std::log(2.0) / kDecay);
    const auto roots = cauchyRoots(kV, kD, kL);
    double atMid = 0, atMoved = 0;
    finiteCauchyRatio(p, kL, kL / 2, 3.0, roots, atMid);
    finiteCauchyRatio(p, kL, kL / 2 * 1.001, 3.0, roots, atMoved);
    EXPECT_EQ(atMid, atMoved);
    // the neighbours stay where they are
    for (double x : {kL / 2 * (1 - 1e-12), kL / 2 * (1 + 1e-12), 4.0}) {
        double c = 0, moved = 0;
        finiteCauchyRatio(p, kL, x, 3.0, roots, c);
        finiteCauchyRatio(p, kL, x * 1.001, 3.0, roots, moved);
        EXPECT_NE(c, moved) << x;
    }
    // the Dirichlet kernel does not move it
    const auto dRoots = dirichletRoots(kV, kD, kL);
    double dMid = 0, dMoved = 0;
    finiteDirichletRatio(p, kL, kL / 2, 3.0, dRoots, dMid);
    finiteDirichletRatio(p, kL, kL / 2 * 1.001, 3.0, dRoots, dMoved);
    EXPECT_NE(dMid, dMoved);
}

TEST(OneDimKernels, FiniteCauchyRunningOutOfTermsInDecayIsATypeMismatch) {
    // At a time this short the terms fall too slowly for 500 of them.
    const auto roots = cauchyRoots(kV, kD, kL);
    double c = 0;
    try {
        finiteCauchyRatio(parametersWith(std::log(2.0) / kDecay), kL, 2.0, 1e-4, roots, c);
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::TypeMismatch);
    }
    // without decay the same shortfall is only reported by the flag
    EXPECT_FALSE(finiteCauchyRatio(parametersWith(kNoDecayHalfLife), kL, 2.0, 1e-4, roots, c));
    // the Dirichlet series reports it by its flag too
    const auto dRoots = dirichletRoots(kV, kD, kL);
    EXPECT_FALSE(finiteDirichletRatio(parametersWith(std::log(2.0) / kDecay), kL, 2.0, 1e-4, dRoots, c));
}

TEST(OneDimKernels, ZeroHalfLifeIsADivisionByZero) {
    double c = 0;
    try {
        semiInfiniteDirichletRatio(parametersWith(0.0), 1.0, 1.0, c);
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::DivisionByZero);
    }
}

}  // namespace
}  // namespace bm

namespace bm {
namespace {

// The series with its parts kept by x and t gives the bits it gives without
// them, whatever points came before: x across a line at several times, the
// mid-point, times that come back after others pushed them out, more x than
// the store keeps.
TEST(OneDimKernels, FiniteCauchyWithKeptTermsGivesTheSameBits) {
    for (const double halfLife : {std::log(2.0) / kDecay, kNoDecayHalfLife}) {
        const auto p = parametersWith(halfLife);
        const auto roots = cauchyRoots(kV, kD, kL);
        CauchyTermStore store;
        auto expectSame = [&](double x, double t) {
            double plain = -1, kept = -2;
            const bool plainFlag = finiteCauchyRatio(p, kL, x, t, roots, plain);
            const bool keptFlag = finiteCauchyRatio(p, kL, x, t, roots, kept, &store);
            EXPECT_EQ(plainFlag, keptFlag) << x << " " << t;
            EXPECT_EQ(std::bit_cast<std::uint64_t>(plain), std::bit_cast<std::uint64_t>(kept)) << x << " " << t;
        };
        for (double t : {0.01, 0.3, 2.0, 0.01, 7.5, 40.0, 0.3, 0.004, 0.01})
            for (int i = 0; i <= 20; ++i) expectSame(kL * i / 20.0, t);
        for (int i = 0; i < 2500; ++i) expectSame(kL * (i % 1300) / 1300.0, i % 2 ? 0.05 : 3.0);
    }
}

// A series that runs out of terms with decay is the same error with kept parts.
TEST(OneDimKernels, FiniteCauchyWithKeptTermsRunsOutAsWithout) {
    const auto p = parametersWith(std::log(2.0) / kDecay);
    const auto roots = cauchyRoots(kV, kD, kL);
    CauchyTermStore store;
    double c = 0;
    for (int round = 0; round < 2; ++round) {
        EXPECT_THROW(finiteCauchyRatio(p, kL, 3.0, 1e-4, roots, c), RuntimeError);
        EXPECT_THROW(finiteCauchyRatio(p, kL, 3.0, 1e-4, roots, c, &store), RuntimeError);
    }
}


struct GridCase {
    double V, D, L, halfLife;
};

// What the Cauchy series gives at one point: its value and flag, or its error.
struct Outcome {
    double value = -1.0;
    bool converged = false;
    int error = 0;
};

Outcome outcomeOf(const OneDimParameters& p, double L, double x, double t, const Eigenvalues& roots,
                  CauchyTermStore* store) {
    Outcome outcome;
    try {
        outcome.converged = finiteCauchyRatio(p, L, x, t, roots, outcome.value, store);
    } catch (const RuntimeError& e) {
        outcome.error = e.number();
    }
    return outcome;
}

// The points of a grid whose series' terms all threads share give the bits
// (and flags) of the series evaluated point by point without kept parts,
// ahead of the front (where the inversion takes over, mostly before the
// series is summed) and behind it, with and without decay, at the mid-point
// and at the ends of the aquifer.
TEST(OneDimKernels, FiniteCauchyOverSharedGridTermsGivesTheSameBits) {
    const std::vector<GridCase> cases{{kV, kD, kL, std::log(2.0) / kDecay},
                                      {kV, kD, kL, kNoDecayHalfLife},
                                      {kV, kD, kL, 1e30},
                                      {0.5, 1.0, 100.0, std::log(2.0) / 0.01},
                                      {0.5, 1.0, 100.0, kNoDecayHalfLife},
                                      {2.0, 0.01, 10.0, std::log(2.0) / 0.05}};
    for (const GridCase& g : cases) {
        OneDimParameters p;
        p.effectiveVelocity = g.V;
        p.effectiveDispersion = g.D;
        p.effectiveHalfLife = g.halfLife;
        const RootSequence sequence(g.V * 0.25 * g.L / g.D, g.D / (g.L * g.V));
        const Eigenvalues roots(sequence);
        std::vector<double> xs, ts;
        for (int i = 0; i <= 40; ++i) xs.push_back(g.L * i / 40.0);  // holds L / 2
        for (const double t : {0.0, 0.02, 0.3, 1.0, 2.5, 7.0, 20.0, 55.0, 150.0}) ts.push_back(t * g.L / 10.0);
        const CauchyGridTerms grid(p, g.L, roots, xs, ts);
        CauchyTermStore store(&grid);
        int series = 0, inverted = 0, failed = 0;
        for (const double t : ts)
            for (const double x : xs) {
                if (t > 0.0) {
                    ASSERT_NE(grid.time(t), nullptr) << t;
                    ASSERT_NE(grid.place(finite_series::seriesX(x, g.L)), nullptr) << x;
                }
                const Outcome plain = outcomeOf(p, g.L, x, t, roots, nullptr);
                const Outcome shared = outcomeOf(p, g.L, x, t, roots, &store);
                const auto where = [&] {
                    return ::testing::Message() << g.V << " " << g.D << " " << g.halfLife << " x " << x << " t " << t;
                };
                EXPECT_EQ(plain.error, shared.error) << where();
                EXPECT_EQ(plain.converged, shared.converged) << where();
                EXPECT_EQ(std::bit_cast<std::uint64_t>(plain.value), std::bit_cast<std::uint64_t>(shared.value))
                    << where() << ": " << plain.value << " " << shared.value;
                if (plain.error != 0) ++failed;
                if (plain.error == 0 && t > 0.0 && x < g.L) {
                    const double lambda = std::log(2.0) / g.halfLife;
                    const double xi = finite_series::seriesX(x, g.L);
                    const double byInversion = finiteRatioByInversion(true, g.V, g.D, g.L, lambda, xi, t);
                    ++(byInversion == plain.value ? inverted : series);
                }
            }
        // both ways of evaluating were met
        EXPECT_GT(series, 20) << g.V << " " << g.D << " " << g.halfLife;
        EXPECT_GT(inverted, 20) << g.V << " " << g.D << " " << g.halfLife;
        // the steepest column runs out of terms at its earliest time
        EXPECT_EQ(failed > 0, g.D == 0.01) << failed;
    }
}

// A series that runs out of terms with decay is the same error with shared grid terms.
TEST(OneDimKernels, FiniteCauchyOverSharedGridTermsRunsOutAsWithout) {
    const auto p = parametersWith(std::log(2.0) / kDecay);
    const RootSequence sequence(kV * 0.25 * kL / kD, kD / (kL * kV));
    const Eigenvalues roots(sequence);
    const CauchyGridTerms grid(p, kL, roots, {0.0, 3.0, kL}, {1e-4, 1.0});
    ASSERT_NE(grid.time(1e-4), nullptr);
    CauchyTermStore store(&grid);
    for (const double x : {0.0, 3.0, kL}) {
        double c = 0;
        try {
            finiteCauchyRatio(p, kL, x, 1e-4, roots, c, &store);
            ADD_FAILURE() << "no error at " << x;
        } catch (const RuntimeError& e) {
            EXPECT_EQ(e.number(), err::TypeMismatch);
        }
    }
}


// A grid longer than the terms hold keeps only its first x and its times
// as far as their budget allows; the rest are left to the series itself,
// with the same bits.
TEST(OneDimKernels, FiniteCauchyBeyondTheHeldGridTermsGivesTheSameBits) {
    const auto p = parametersWith(kNoDecayHalfLife);  // 500 terms to every time
    const RootSequence sequence(kV * 0.25 * kL / kD, kD / (kL * kV));
    const Eigenvalues roots(sequence);
    std::vector<double> xs, ts;
    for (std::size_t i = 0; i < CauchyGridTerms::kMostHeld + 100; ++i) xs.push_back(kL * i / 1200.0);
    const std::size_t timesHeld = CauchyGridTerms::kMostTimeTerms / kRootCount;
    for (std::size_t k = 1; k <= timesHeld + 50; ++k) ts.push_back(0.01 * k);
    const CauchyGridTerms grid(p, kL, roots, xs, ts);
    CauchyTermStore store(&grid);
    EXPECT_NE(grid.place(xs[CauchyGridTerms::kMostHeld - 1]), nullptr);
    EXPECT_EQ(grid.place(xs[CauchyGridTerms::kMostHeld]), nullptr);
    int timesLeft = 0;
    for (const double t : ts) {
        if (grid.time(t) == nullptr) ++timesLeft;
        for (const double x : {xs[3], xs[CauchyGridTerms::kMostHeld + 20]}) {
            double plain = -1, shared = -2;
            EXPECT_EQ(finiteCauchyRatio(p, kL, x, t, roots, plain), finiteCauchyRatio(p, kL, x, t, roots, shared, &store));
            ASSERT_EQ(std::bit_cast<std::uint64_t>(plain), std::bit_cast<std::uint64_t>(shared)) << x << " " << t;
        }
    }
    EXPECT_EQ(timesLeft, static_cast<int>(ts.size() - timesHeld));
}

}  // namespace
}  // namespace bm
