// The finite-aquifer kernels where fronts are sharp, V L / D from 1 to 1e5,
// against two references that share nothing with them:
//   the Chebyshev collocation with the exact exponential in time
//     (transport_chebyshev_reference), its convergence shown by refinement;
//   the semi-infinite solution plus its reflection at the outlet in long
//     double (transport_image_reference), exact to exp(-V L / D), itself
//     checked against the collocation here.
// Lengths are in units of L and times in units of L / V (V = L = 1, D = 1 / Pe).
// Where a series ahead of a sharp front would cancel by exp(V (2x - Vt) / 4D)
// the kernels must still give C/Co to 1e-9.

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "one_dim_accuracy_helpers.h"
#include "saturated/one_dim_kernels.h"
#include "shell/base/runtime_error.h"
#include "transport_image_reference.h"
#include "testing/transport_chebyshev_reference.h"

namespace bm {
namespace {

using namespace testkit;

constexpr double kV = 1.0;
constexpr double kL = 1.0;

const std::vector<double> kFractions = {0, 0.02, 0.1, 0.25, 0.4, 0.5, 0.6, 0.75, 0.9, 0.97, 0.99, 1};
// Early to late; every time a multiple of the first, which the collocation steps by.
const std::vector<double> kTimes = {0.05, 0.1, 0.2, 0.3, 0.5, 0.7, 0.9, 1.0, 1.1, 1.3, 1.6, 2.5, 5};

// A decay case: the half-life the kernel gets and the decay rate of the
// reference it is compared with. A weak decay is compared with the solution
// without decay, from which it differs by less than lambda t (the slack).
struct DecayCase {
    std::string name;
    double referenceLambda;
    double halfLife;
    double slackRate;  // lambda of the kernel where the reference has none
};

std::vector<DecayCase> decayCases(bool cauchy, double D, double referenceLambda) {
    if (referenceLambda != 0)
        return {{"decay " + std::to_string(referenceLambda), referenceLambda, halfLifeOf(referenceLambda), 0}};
    const double weak = 1e-17 * kV * kV / D;
    std::vector<DecayCase> cases = {{"half-life 1e30", 0, 1e30, std::log(2.0) / 1e30},
                                    {"decay 1e-17 V^2/D", 0, halfLifeOf(weak), weak}};
    // Without decay the Dirichlet kernel is exactly 1 (its stated branch); the Cauchy one is the solution.
    if (cauchy) cases.push_back({"no decay", 0, kNoDecayHalfLife, 0});
    return cases;
}

// The kernel at (x, t), through the record the driver would build.
double kernel(bool cauchy, const OneDimParameters& p, const List<double>& roots, double x, double t) {
    double c = -1;
    if (cauchy)
        finiteCauchyRatio(p, kL, x, t, roots, c);
    else
        finiteDirichletRatio(p, kL, x, t, roots, c);
    return c;
}

// The Cauchy kernel evaluates the mid-point at 1.001 L/2: so does each reference.
double referenceX(bool cauchy, double x) { return cauchy && x == kL / 2 ? x * 1.001 : x; }

// Whether 500 terms carry the series to its tolerance at t: the last one's
// factor exp(-beta^2 D t / L^2) below 1e-22. Where they do not, the kernels
// keep the series' sum so far (with decay the Cauchy one stops with error 13),
// as their flags report; those points are not compared.
bool seriesConverges(const List<double>& roots, double D, double t) {
    const double last = roots(kRootCount);
    return last * last * D * t / (kL * kL) >= 50;
}

struct Refinement {
    double peclet;
    int coarse, fine;  // Chebyshev intervals
};

// Kernels against the collocation for one inlet, at each V L / D and decay
// rate; where V L / D >= 60 the reflection reference is checked on the same points.
void compareWithCollocation(bool cauchy, const std::vector<Refinement>& refinements,
                            const std::vector<double>& referenceLambdas) {
    const std::string inlet = cauchy ? "finite Cauchy" : "finite Dirichlet";
    Deviation vouched{inlet + " vs collocation, 1e-9"};
    Deviation target{inlet + " vs collocation, 1e-6 abs / 1e-5 rel"};
    target.absoluteBound = 1e-6;
    target.relativeBound = 1e-5;
    Deviation reflection{"reflection vs collocation (" + inlet + ")"};
    reflection.absoluteBound = reflection.relativeBound = 1e-12;
    for (const Refinement& r : refinements) {
        const double D = kV * kL / r.peclet;
        const auto roots = finiteRoots(cauchy, kV, D, kL);
        std::vector<double> xs;
        for (double f : kFractions) xs.push_back(referenceX(cauchy, f * kL));
        for (double referenceLambda : referenceLambdas) {
            const SpectralProblem problem{kV, D, referenceLambda, cauchy, kL};
            const auto coarse = spectralSolution(problem, r.coarse, xs, kTimes);
            const auto fine = spectralSolution(problem, r.fine, xs, kTimes);
            double change = 0;
            for (std::size_t k = 0; k < kTimes.size(); ++k)
                for (std::size_t i = 0; i < xs.size(); ++i)
                    change = std::max(change, static_cast<double>(std::fabs(fine[k][i] - coarse[k][i])));
            // The collocation vouches for 1e-9 when its last refinement moved it by far less.
            Deviation& deviation = change <= 1e-11 ? vouched : target;
            std::printf("[ accuracy ] collocation V L / D = %g, lambda %g, %s: N %d -> %d changes it by %.1e\n",
                        r.peclet, referenceLambda, cauchy ? "Cauchy" : "Dirichlet", r.coarse, r.fine, change);
            for (const DecayCase& decay : decayCases(cauchy, D, referenceLambda)) {
                const auto p = kernelParameters(kV, D, decay.halfLife);
                for (std::size_t k = 0; k < kTimes.size(); ++k) {
                    const double t = kTimes[k];
                    ASSERT_TRUE(seriesConverges(roots, D, t));
                    for (std::size_t i = 0; i < xs.size(); ++i) {
                        const double x = kFractions[i] * kL;
                        const std::string where =
                            "VL/D=" + std::to_string(r.peclet) + " " + decay.name + " " + at(x, t);
                        deviation.check(kernel(cauchy, p, roots, x, t), static_cast<double>(fine[k][i]), where,
                                        decay.slackRate * t);
                    }
                }
            }
            if (r.peclet >= 60) {
                for (std::size_t k = 0; k < kTimes.size(); ++k)
                    for (std::size_t i = 0; i < xs.size(); ++i)
                        reflection.check(static_cast<double>(
                                             finiteByReflection(cauchy, kV, D, referenceLambda, kL, xs[i], kTimes[k])),
                                         static_cast<double>(fine[k][i]),
                                         "VL/D=" + std::to_string(r.peclet) + " " + at(xs[i], kTimes[k]));
            }
        }
    }
    EXPECT_EQ(target.compared, 0) << "a collocation did not converge to vouch for 1e-9";
}

const std::vector<Refinement> kModerate = {{1, 24, 32},  {5, 32, 40},   {20, 48, 64},
                                           {50, 64, 80}, {100, 80, 96}, {200, 112, 128}};
const std::vector<Refinement> kSharp = {{500, 144, 176}, {1000, 192, 224}};

TEST(OneDimSharpFronts, FiniteDirichletAgreesWithTheCollocationForVLOverDUpTo200) {
    compareWithCollocation(false, kModerate, {0.05, 0});
}

TEST(OneDimSharpFronts, FiniteCauchyAgreesWithTheCollocationForVLOverDUpTo200) {
    compareWithCollocation(true, kModerate, {0.05, 0});
}

TEST(OneDimSharpFronts, FiniteDirichletAgreesWithTheCollocationForVLOverD500And1000) {
    compareWithCollocation(false, kSharp, {0.05, 0});
}

TEST(OneDimSharpFronts, FiniteCauchyAgreesWithTheCollocationForVLOverD500And1000) {
    compareWithCollocation(true, kSharp, {0.05, 0});
}

// Times crowded around the outlet's breakthrough at t = L / V.
const std::vector<double> kBreakthroughTimes = {0.05, 0.2,  0.5, 0.9, 0.97, 0.99, 1.0,
                                                1.01, 1.03, 1.1, 1.5, 2.0,  2.5,  5};

TEST(OneDimSharpFronts, FiniteKernelsAgreeWithTheReflectionUpToVLOverD1e5) {
    // Beyond what the collocation can resolve, the first reflection is exact
    // to exp(-V L / D). Decay up to 2 V / L, and the weak and vanishing rates.
    for (bool cauchy : {false, true}) {
        const std::string inlet = cauchy ? "finite Cauchy" : "finite Dirichlet";
        Deviation exact{inlet + " vs reflection, V L / D 200 .. 1e5"};
        Deviation weak{inlet + " (lambda ~ 0) vs reflection without decay"};
        int skipped = 0;
        for (double peclet : {200.0, 1000.0, 1e4, 1e5}) {
            const double D = kV * kL / peclet;
            const auto roots = finiteRoots(cauchy, kV, D, kL);
            for (double referenceLambda : {0.0, 0.05, 2.0}) {
                for (const DecayCase& decay : decayCases(cauchy, D, referenceLambda)) {
                    const auto p = kernelParameters(kV, D, decay.halfLife);
                    Deviation& deviation = decay.slackRate == 0 ? exact : weak;
                    for (double t : kBreakthroughTimes) {
                        if (!seriesConverges(roots, D, t)) {
                            skipped += static_cast<int>(kFractions.size());
                            continue;
                        }
                        for (double f : kFractions) {
                            const double x = f * kL;
                            const double reference = static_cast<double>(
                                finiteByReflection(cauchy, kV, D, referenceLambda, kL, referenceX(cauchy, x), t));
                            deviation.check(kernel(cauchy, p, roots, x, t), reference,
                                            "VL/D=" + std::to_string(peclet) + " " + decay.name + " " + at(x, t),
                                            decay.slackRate * t);
                        }
                    }
                }
            }
        }
        std::printf("[ accuracy ] %s: %d points with a series short of its tolerance not compared\n", inlet.c_str(),
                    skipped);
    }
}

// ---------------------------------------------------------------------------
// The formulas as they stand, evaluated in double exactly as the kernels
// evaluate them where their rounding is harmless.

struct Stated {
    double V, D, L, lambda;
};

double statedFiniteDirichlet(const Stated& s, const List<double>& roots, double x, double t) {
    const double V = s.V, D = s.D, L = s.L, lambda = s.lambda;
    const double a = V / (2.0 * D), aL = a * L, aL2 = aL * aL, L2 = L * L;
    const double B = lambda * L * L / D, G = V * V * t / (4.0 * D);
    double sum = 0.0;
    for (int i = 1; i <= kRootCount; ++i) {
        const double beta = roots(i), b = beta * beta;
        const double E = std::exp(-(b * D * t / L2));
        const double P = b + aL2;
        const double W = (P + aL) * (P + B);
        const double T = std::sin(beta * x / L) * beta / W * (P * E);
        sum += T;
        if (std::fabs(T) <= 1e-30) break;
    }
    const double U = std::sqrt(4.0 * D * lambda + V * V);
    const double Q = (U - V) / (U + V);
    const double F = (std::exp((V - U) * x / (2.0 * D)) + std::exp(((U + V) * x - 2.0 * U * L) / (2.0 * D)) * Q) /
                     (1.0 + std::exp(-(U * L / D)) * Q);
    return F - 2.0 * std::exp(a * x - G - lambda * t) * sum;
}

double statedFiniteCauchy(const Stated& s, const List<double>& roots, double x, double t) {
    const double V = s.V, D = s.D, L = s.L, lambda = s.lambda;
    if (x == L / 2.0) x = x * 1.001;
    const double a = V / (2.0 * D), aL = a * L, aL2 = aL * aL, L2 = L * L;
    const double B = lambda * L * L / D, G = V * V * t / (4.0 * D), M = V * L / D;
    double sum = 0.0, A = 1.0, C = 1.0;
    for (int i = 1; i <= kRootCount; ++i) {
        if (lambda != 0.0 ? std::fabs(A * C) <= 1e-20 : std::fabs(C) <= 1e-20) break;
        const double beta = roots(i), b = beta * beta, y = beta * x / L;
        C = (std::cos(y) * beta + std::sin(y) * aL) * beta;
        const double P = b + aL2;
        const double W = lambda != 0.0 ? (P + M) * (P + B) : (P + M) * P;
        A = std::exp(-(b * D * t / L2)) / W;
        sum = sum + A * C;
    }
    if (lambda == 0.0) return 1.0 - 2.0 * M * std::exp(a * x - G) * sum;
    const double U = std::sqrt(4.0 * D * lambda + V * V);
    const double Q = (U - V) / (U + V);
    const double N =
        2.0 * V * (std::exp((V - U) * x / (2.0 * D)) + std::exp(((U + V) * x - 2.0 * U * L) / (2.0 * D)) * Q);
    const double H = Q * (V - U) * std::exp(-(U * L / D)) + (U + V);
    return N / H - 2.0 * M * std::exp(a * x - G - lambda * t) * sum;
}

double statedSemiInfiniteCauchy(double V, double D, double lambda, double x, double t) {
    const double S = 2.0 * std::sqrt(D * t), U = std::sqrt(4.0 * D * lambda + V * V), h = x / (2.0 * D);
    const double M = x * V / D;
    double e1 = 0, e2 = 0, e3 = 0;
    exerfc(M - lambda * t, (t * V + x) / S, e1);
    exerfc((V - U) * h, (x - U * t) / S, e2);
    exerfc((U + V) * h, (U * t + x) / S, e3);
    const double ratio = U / V;
    return ((ratio - 1.0) * e2 + 2.0 * e1 - (ratio + 1.0) * e3) * (V * V / (4.0 * lambda * D));
}

TEST(OneDimSharpFronts, WellConditionedPointsKeepTheStatedFormulasBitForBit) {
    // Where nothing cancels (V L / D of a few, or well behind the front, where
    // exp(V (2x - Vt) / 4D - lambda t) < exp(-5)) the kernels are the formulas
    // as they stand, to the last bit. So are points beyond the outlet, which a
    // range not starting at 0 reaches and which the formulas alone describe.
    int compared = 0;
    for (bool cauchy : {false, true})
        for (double peclet : {0.5, 2.0, 5.0, 20.0, 80.0, 200.0})
            for (double lambda : {0.0, 0.05, 1.0}) {
                if (!cauchy && lambda == 0) continue;
                const double D = kV * kL / peclet;
                const auto roots = finiteRoots(cauchy, kV, D, kL);
                const auto p = kernelParameters(kV, D, halfLifeOf(lambda));
                const Stated s{kV, D, kL, lambda};
                for (double t : kTimes)
                    for (double f : {0.0, 0.1, 0.25, 0.5, 0.75, 0.9, 1.0, 1.2, 1.5}) {
                        const double x = f * kL;
                        const double exponent = kV * (2 * x - kV * t) / (4 * D) - lambda * t;
                        const bool wellConditioned = peclet <= 5 || exponent < -5 || x > kL;
                        if (!wellConditioned) continue;
                        const double stated =
                            cauchy ? statedFiniteCauchy(s, roots, x, t) : statedFiniteDirichlet(s, roots, x, t);
                        EXPECT_EQ(kernel(cauchy, p, roots, x, t), stated)
                            << (cauchy ? "Cauchy" : "Dirichlet") << " VL/D=" << peclet << " lambda " << lambda << " "
                            << at(x, t);
                        ++compared;
                    }
            }
    // The semi-infinite Cauchy solution with decay where V^2 / (4 lambda D) is small.
    for (double lambda : {0.05, 0.5, 5.0})
        for (double t : {0.01, 0.5, 2.0, 8.0})
            for (double x : {0.0, 0.3, 1.0, 4.0, 10.0}) {
                double value = -1;
                semiInfiniteCauchyRatio(kernelParameters(1.0, 0.5, halfLifeOf(lambda)), x, t, value);
                EXPECT_EQ(value, statedSemiInfiniteCauchy(1.0, 0.5, lambda, x, t))
                    << "lambda " << lambda << " " << at(x, t);
                ++compared;
            }
    std::printf("[ accuracy ] %d well-conditioned values equal to the stated formulas bit for bit\n", compared);
    EXPECT_GT(compared, 1000);
}

TEST(OneDimSharpFronts, StatedFormulasFailWhereTheKernelsHold) {
    // The reason for all this: ahead of a sharp front the formulas as they
    // stand are wrong by far more than the kernels' target while staying inside
    // [0, 1], where no clamp could notice; the kernels are not.
    for (bool cauchy : {false, true}) {
        const double peclet = 200, D = kV * kL / peclet, lambda = 0.05;
        const auto roots = finiteRoots(cauchy, kV, D, kL);
        const auto p = kernelParameters(kV, D, halfLifeOf(lambda));
        const Stated s{kV, D, kL, lambda};
        double statedWorst = 0, kernelWorst = 0;
        for (double t : {0.1, 0.2, 0.3, 0.5})
            for (double f : {0.6, 0.75, 0.9, 0.97, 1.0}) {
                const double x = f * kL;
                const double reference =
                    static_cast<double>(finiteByReflection(cauchy, kV, D, lambda, kL, referenceX(cauchy, x), t));
                const double stated =
                    cauchy ? statedFiniteCauchy(s, roots, x, t) : statedFiniteDirichlet(s, roots, x, t);
                statedWorst = std::max(statedWorst, std::fabs(stated - reference));
                kernelWorst = std::max(kernelWorst, std::fabs(kernel(cauchy, p, roots, x, t) - reference));
            }
        std::printf(
            "[ accuracy ] %s at V L / D = 200 ahead of the front: formula as stated off by %.1e, kernel by %.1e\n",
            cauchy ? "finite Cauchy" : "finite Dirichlet", statedWorst, kernelWorst);
        EXPECT_GT(statedWorst, 1e-3);
        EXPECT_LE(kernelWorst, 1e-12);
    }
    // A half-life typed as 1e30 to mean no decay, in the semi-infinite Cauchy solution.
    const double lambda = std::log(2.0) / 1e30;
    double value = -1;
    semiInfiniteCauchyRatio(kernelParameters(1.0, 0.5, 1e30), 2.0, 3.0, value);
    const double reference = static_cast<double>(semiInfiniteCauchyClosedForm(1.0, 0.5, 0.0, 2.0, 3.0));
    const double stated = statedSemiInfiniteCauchy(1.0, 0.5, lambda, 2.0, 3.0);
    std::printf(
        "[ accuracy ] semi-infinite Cauchy, half-life 1e30: formula as stated %.3g, kernel %.15g, solution %.15g\n",
        stated, value, reference);
    EXPECT_GT(std::fabs(stated - reference), 1e-2);
    EXPECT_LE(std::fabs(value - reference), 1e-14);
}

TEST(OneDimSharpFronts, SeriesFactorBeyondTheDoublesGivesTheSolution) {
    // At V L / D = 3000 and t = 0.1 L / V the factor exp(V (2x - Vt) / 4D)
    // is exp(1425) at the outlet: the formula as it stands overflows (error 6),
    // the kernels give the solution, which there is 0 to many digits.
    const double peclet = 3000, D = kV * kL / peclet, t = 0.1;
    for (bool cauchy : {false, true})
        for (double lambda : {0.0, 0.05}) {
            if (!cauchy && lambda == 0) continue;
            const auto roots = finiteRoots(cauchy, kV, D, kL);
            ASSERT_TRUE(seriesConverges(roots, D, t));
            const auto p = kernelParameters(kV, D, halfLifeOf(lambda));
            for (double x : {0.5, 0.8, 1.0}) {
                double value = -1;
                EXPECT_NO_THROW(cauchy ? finiteCauchyRatio(p, kL, x, t, roots, value)
                                       : finiteDirichletRatio(p, kL, x, t, roots, value));
                const double reference =
                    static_cast<double>(finiteByReflection(cauchy, kV, D, lambda, kL, referenceX(cauchy, x), t));
                EXPECT_LE(std::fabs(value - reference), 1e-15) << at(x, t);
                const double exponent = kV * (2 * x - kV * t) / (4 * D) - lambda * t;
                if (exponent > 710) {
                    const Stated s{kV, D, kL, lambda};
                    EXPECT_TRUE(std::isinf(std::exp(exponent)));
                    const double stated =
                        cauchy ? statedFiniteCauchy(s, roots, x, t) : statedFiniteDirichlet(s, roots, x, t);
                    EXPECT_FALSE(std::isfinite(stated)) << at(x, t);
                }
            }
        }
}

TEST(OneDimSharpFronts, AccuratePathsKeepTheFlagsAndTheTypeMismatch) {
    // The flags are the series' own: the no-decay Cauchy series spends its 500
    // terms (false), the others meet their tolerance (true), whichever form
    // gives the value; a decaying Cauchy series short of terms is still error 13.
    const double peclet = 1000, D = kV * kL / peclet;
    const auto cRoots = finiteRoots(true, kV, D, kL);
    const auto dRoots = finiteRoots(false, kV, D, kL);
    double c = -1;
    EXPECT_FALSE(finiteCauchyRatio(kernelParameters(kV, D, kNoDecayHalfLife), kL, 0.9, 0.5, cRoots, c));
    EXPECT_TRUE(finiteCauchyRatio(kernelParameters(kV, D, halfLifeOf(0.05)), kL, 0.9, 0.5, cRoots, c));
    EXPECT_TRUE(finiteDirichletRatio(kernelParameters(kV, D, halfLifeOf(0.05)), kL, 0.9, 0.5, dRoots, c));
    EXPECT_FALSE(finiteDirichletRatio(kernelParameters(kV, D, halfLifeOf(0.05)), kL, 0.9, 1e-4, dRoots, c));
    try {
        finiteCauchyRatio(kernelParameters(kV, D, halfLifeOf(0.05)), kL, 0.9, 1e-4, cRoots, c);
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), err::TypeMismatch);
    }
}

}  // namespace
}  // namespace bm
