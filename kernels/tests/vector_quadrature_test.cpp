// The quadrature kernels evaluate their rule's nodes in vectors, keep what a
// grid's inner loops share, and skip nodes whose contribution is nothing.
// Checked here: the array functions (both instruction sets) against long
// double; the interval masses against erf and erfc in long double; the strip,
// Gaussian, patch and finite-width kernels against the same rule summed node
// by node in long double, the point kernel against the adaptive integral;
// and results that do not depend on what was computed before.
//
// Bounds: the array functions within 2 ulp wherever the result is a normal
// double (erfcTail within 6); the interval masses within 4e-16 absolute, and
// 2e-15 relative (plus the tail cut at the reach) where no two nearly equal
// tails cancel; the kernels within 1e-12 relative or 1e-16 absolute of the
// plain rule sum (the nodes left out add less than 1e-17, the rest is
// rounding), the point kernel within 1e-11 of the adaptive integral.

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "kernels/gauss_legendre.h"
#include "kernels/green_integrals.h"
#include "kernels/interval_masses.h"
#include "kernels/kern2d.h"
#include "kernels/kern3d.h"
#include "kernels/kern3d_functions.h"
#include "kernels/kern3d_quadrature.h"
#include "kernels/tests/kern2d_reference.h"
#include "kernels/vector_math.h"
#include "testing/is_close.h"

using namespace bm;

namespace {

using Real = long double;

double ulpsApart(double got, long double exact) {
    const double e = static_cast<double>(exact);
    const double ulp = std::nextafter(std::fabs(e), HUGE_VAL) - std::fabs(e);
    return static_cast<double>(std::fabs(static_cast<long double>(got) - exact) / ulp);
}

struct ArrayCase {
    const char* name;
    vmath::ArrayFunction vmath::Functions::*function;
    long double (*exact)(long double);
    double from, to, ulps;
};

const ArrayCase kArrayCases[] = {
    {"exp", &vmath::Functions::exp, [](long double x) { return std::exp(x); }, -745.0, 709.0, 2.0},
    {"expm1", &vmath::Functions::expm1, [](long double x) { return std::expm1(x); }, -50.0, 709.0, 2.0},
    {"erfcTail", &vmath::Functions::erfcTail, [](long double x) { return std::erfc(x); }, 0.0, 6.5, 6.0},
    {"erfSmall", &vmath::Functions::erfSmall, [](long double x) { return std::erf(x); }, 0.0, 0.5, 2.0},
    {"quickExp", &vmath::Functions::quickExp, [](long double x) { return std::exp(x); }, -745.0, 709.0, 1.0},
};

std::vector<const vmath::Functions*> variants() {
    std::vector<const vmath::Functions*> out{&vmath::baselineFunctions()};
    if (vmath::avx2Functions() != nullptr) out.push_back(vmath::avx2Functions());
    return out;
}

}  // namespace

TEST(VectorMath, EveryFunctionOfEveryInstructionSetIsWithinItsBound) {
    std::mt19937_64 random(11);
    for (const vmath::Functions* set : variants()) {
        for (const ArrayCase& c : kArrayCases) {
            std::uniform_real_distribution<double> spread(c.from, c.to);
            std::vector<double> x(4099);
            for (std::size_t i = 0; i < x.size(); ++i) x[i] = i % 3 == 0 ? spread(random) : spread(random) * 1e-3;
            x[0] = 0.0;
            x[1] = c.to;
            x[2] = 1e-300;
            std::vector<double> out(x.size());
            (set->*c.function)(x.data(), out.data(), static_cast<int>(x.size()));
            double worst = 0.0;
            for (std::size_t i = 0; i < x.size(); ++i) {
                const long double exact = c.exact(x[i]);
                if (std::fabs(exact) < DBL_MIN) {
                    EXPECT_LE(std::fabs(static_cast<long double>(out[i]) - exact), 2 * DBL_MIN);
                    continue;
                }
                worst = std::max(worst, ulpsApart(out[i], exact));
            }
            EXPECT_LE(worst, c.ulps) << set->name << " " << c.name;
            std::printf("%s %s: %.2f ulp at most\n", set->name, c.name, worst);
        }
    }
}

TEST(VectorMath, ExpAndExpm1AtOnceAreEachOfThem) {
    std::vector<double> x(1001);
    for (std::size_t i = 0; i < x.size(); ++i) x[i] = -60.0 + 0.12 * static_cast<double>(i) + 1e-3;
    for (const vmath::Functions* set : variants()) {
        std::vector<double> e(x.size()), m(x.size()), e1(x.size()), m1(x.size());
        set->expAndExpm1(x.data(), e.data(), m.data(), static_cast<int>(x.size()));
        set->exp(x.data(), e1.data(), static_cast<int>(x.size()));
        set->expm1(x.data(), m1.data(), static_cast<int>(x.size()));
        EXPECT_EQ(e, e1) << set->name;
        EXPECT_EQ(m, m1) << set->name;
    }
}

TEST(VectorMath, ALanesExpm1DoesNotDependOnItsNeighbours) {
    // Runs of small arguments (the series), of large ones (the exponential)
    // and the two mixed, against each argument taken alone.
    std::vector<double> x;
    for (int run = 0; run < 40; ++run)
        for (int i = 0; i < 1 + run % 13; ++i) {
            const double small = 0.49 * std::sin(0.7 * run + i), large = (run % 2 ? 1.0 : -1.0) * (0.5 + 0.37 * i);
            x.push_back(run % 3 == 0 ? small : run % 3 == 1 ? large : (i % 2 ? small : large));
        }
    for (const vmath::Functions* set : variants()) {
        std::vector<double> m(x.size()), e(x.size()), m2(x.size());
        set->expm1(x.data(), m.data(), static_cast<int>(x.size()));
        set->expAndExpm1(x.data(), e.data(), m2.data(), static_cast<int>(x.size()));
        for (std::size_t i = 0; i < x.size(); ++i) {
            double alone = 0.0, aloneE = 0.0, aloneM = 0.0;
            set->expm1(&x[i], &alone, 1);
            set->expAndExpm1(&x[i], &aloneE, &aloneM, 1);
            EXPECT_EQ(m[i], alone) << set->name << " at " << x[i];
            EXPECT_EQ(m2[i], aloneM) << set->name << " at " << x[i];
            EXPECT_EQ(e[i], aloneE) << set->name << " at " << x[i];
            EXPECT_LE(ulpsApart(m[i], std::expm1(static_cast<long double>(x[i]))), 2.0) << set->name << " at " << x[i];
        }
    }
}

TEST(VectorMath, EveryInstructionSetGivesTheSameBits) {
    // A result file must not depend on the processor it was computed on.
    if (vmath::avx2Functions() == nullptr) GTEST_SKIP() << "this processor has only the baseline variant";
    const vmath::Functions& base = vmath::baselineFunctions();
    const vmath::Functions& avx2 = *vmath::avx2Functions();
    std::mt19937_64 random(29);
    for (const ArrayCase& c : kArrayCases) {
        std::uniform_real_distribution<double> spread(c.from, c.to);
        std::vector<double> x(1 << 18);
        for (std::size_t i = 0; i < x.size(); ++i) x[i] = i % 4 == 0 ? spread(random) * 1e-6 : spread(random);
        std::vector<double> a(x.size()), b(x.size());
        (base.*c.function)(x.data(), a.data(), static_cast<int>(x.size()));
        (avx2.*c.function)(x.data(), b.data(), static_cast<int>(x.size()));
        std::size_t differing = 0;
        for (std::size_t i = 0; i < x.size(); ++i)
            if (std::memcmp(&a[i], &b[i], sizeof(double)) != 0) ++differing;
        EXPECT_EQ(differing, 0u) << c.name;
    }
    std::vector<double> x(4097), e1(x.size()), m1(x.size()), e2(x.size()), m2(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) x[i] = -40.0 + 0.02 * static_cast<double>(i);
    base.expAndExpm1(x.data(), e1.data(), m1.data(), static_cast<int>(x.size()));
    avx2.expAndExpm1(x.data(), e2.data(), m2.data(), static_cast<int>(x.size()));
    EXPECT_EQ(0, std::memcmp(e1.data(), e2.data(), e1.size() * sizeof(double)));
    EXPECT_EQ(0, std::memcmp(m1.data(), m2.data(), m1.size() * sizeof(double)));
}

TEST(VectorMath, QuickExponentialsAreWithinTheirBoundsOverTheWholeRange) {
    // exp within 1 ulp, expm1 within 2, both where our own formula serves
    // (|x| < 708) and where SLEEF takes over, lane by lane in mixed vectors,
    // at the edges of every reduction step (x near k ln 2 / 2) and near 0.
    std::mt19937_64 random(41);
    std::uniform_real_distribution<double> whole(-745.0, 709.0), near(-1.0, 1.0);
    std::vector<double> x;
    for (int i = 0; i < 200000; ++i) x.push_back(whole(random));
    for (int k = -2040; k <= 2040; ++k)
        for (double nudge : {-1e-12, 0.0, 1e-12}) x.push_back(k * 0.34657359027997264 + nudge);
    for (int i = 0; i < 20000; ++i) x.push_back(near(random) * std::pow(10.0, -(i % 17)));
    for (double edge : {707.9, 708.0, 708.1, -708.0, -708.1, -745.0, 709.7, 0.0, -0.0}) x.push_back(edge);
    for (const vmath::Functions* set : variants()) {
        std::vector<double> e(x.size()), m(x.size()), alone(x.size());
        set->quickExpAndExpm1(x.data(), e.data(), m.data(), static_cast<int>(x.size()));
        set->quickExp(x.data(), alone.data(), static_cast<int>(x.size()));
        double worstExp = 0.0, worstExpm1 = 0.0;
        for (std::size_t i = 0; i < x.size(); ++i) {
            const long double exact = std::exp(static_cast<long double>(x[i]));
            EXPECT_EQ(e[i], alone[i]) << set->name << " at " << x[i];
            if (exact < DBL_MIN) {
                EXPECT_LE(std::fabs(static_cast<long double>(e[i]) - exact), 2 * DBL_MIN) << x[i];
            } else {
                worstExp = std::max(worstExp, ulpsApart(e[i], exact));
            }
            worstExpm1 = std::max(worstExpm1, ulpsApart(m[i], std::expm1(static_cast<long double>(x[i]))));
        }
        EXPECT_LE(worstExp, 1.0) << set->name;
        EXPECT_LE(worstExpm1, 2.0) << set->name;
        std::printf("%s quick exp %.3f ulp, expm1 %.3f ulp at most\n", set->name, worstExp, worstExpm1);
    }
}

TEST(VectorMath, QuickExponentialsGiveTheSameBitsOnEveryInstructionSet) {
    if (vmath::avx2Functions() == nullptr) GTEST_SKIP() << "this processor has only the baseline variant";
    std::mt19937_64 random(43);
    std::uniform_real_distribution<double> whole(-750.0, 712.0);
    std::vector<double> x(1 << 16);
    for (std::size_t i = 0; i < x.size(); ++i) x[i] = i % 5 == 0 ? whole(random) * 1e-3 : whole(random);
    std::vector<double> e1(x.size()), m1(x.size()), e2(x.size()), m2(x.size());
    vmath::baselineFunctions().quickExpAndExpm1(x.data(), e1.data(), m1.data(), static_cast<int>(x.size()));
    vmath::avx2Functions()->quickExpAndExpm1(x.data(), e2.data(), m2.data(), static_cast<int>(x.size()));
    EXPECT_EQ(0, std::memcmp(e1.data(), e2.data(), e1.size() * sizeof(double)));
    EXPECT_EQ(0, std::memcmp(m1.data(), m2.data(), m1.size() * sizeof(double)));
}

namespace {

// The point source's sums term by term in long double: the terms as the
// kernel states them, added in order.
long double peakedByNode(const vmath::PeakedTerms& t, const std::vector<double>& nodes,
                         const std::vector<double>& weights) {
    long double sum = 0;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const long double u = std::expm1(std::fabs(static_cast<long double>(t.scale) * nodes[i] + t.offset));
        sum += weights[i] * std::exp(-t.q * u * u / (1 + u));
    }
    return sum;
}

long double risingByNode(const vmath::RisingTerms& t, const std::vector<double>& nodes,
                         const std::vector<double>& weights) {
    long double sum = 0;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const long double z = static_cast<long double>(t.scale) * nodes[i] + t.offset;
        sum += weights[i] * std::exp(std::expm1(z) * (t.aOverT / std::exp(z) - t.bT));
    }
    return sum;
}

}  // namespace

TEST(VectorMath, PointSourceSumsEqualTheirTermsAddedInLongDouble) {
    // Within 5e-14 relative: a term's exponent (down to about -42 in the
    // kernel's windows) is within a few ulp, which its exponential turns into
    // a relative error up to 42 times as large; the terms are added in four
    // running sums. Rules of odd lengths take the padded tail; both
    // instruction sets give the same bits.
    std::mt19937_64 random(47);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    double worst = 0.0;
    for (int n : {256, 255, 7, 1}) {
        std::vector<double> nodes, weights;
        gaussLegendre(n, nodes, weights);
        std::shuffle(nodes.begin(), nodes.end(), random);
        for (int trial = 0; trial < 60; ++trial) {
            // Windows as the kernel makes them: the exponent falls to about
            // -42 at the far end (a peak at the centre, cut at a random
            // place on its right; a rise to the end from exp(z) = 1).
            const double q = std::pow(10.0, 6.0 * unit(random) - 3.0);
            const double reach = 2.0 * std::asinh(std::sqrt(42.0 / (4.0 * q)));
            const double cut = reach * (2.0 * unit(random) - 1.0);
            const vmath::PeakedTerms peaked{0.5 * (reach + cut), 0.5 * (cut - reach), q};
            const double aOverT = std::pow(10.0, 6.0 * unit(random) - 3.0), bT = aOverT * unit(random);
            const double edge = std::log1p(std::exp(std::log(42.0 + bT) - std::log(aOverT)));
            const vmath::RisingTerms rising{0.5 * edge, -0.5 * edge, aOverT, bT};
            const long double peakedExact = peakedByNode(peaked, nodes, weights);
            const long double risingExact = risingByNode(rising, nodes, weights);
            std::vector<double> peakedSums, risingSums;
            for (const vmath::Functions* set : variants()) {
                const double p = set->peakedSum(peaked, nodes.data(), weights.data(), n);
                const double r = set->risingSum(rising, nodes.data(), weights.data(), n);
                EXPECT_CLOSE(p, static_cast<double>(peakedExact), 5e-14, 1e-300) << set->name << " n=" << n;
                EXPECT_CLOSE(r, static_cast<double>(risingExact), 5e-14, 1e-300) << set->name << " n=" << n;
                worst = std::max({worst, std::fabs(p / static_cast<double>(peakedExact) - 1),
                                  std::fabs(r / static_cast<double>(risingExact) - 1)});
                peakedSums.push_back(p);
                risingSums.push_back(r);
            }
            for (std::size_t k = 1; k < peakedSums.size(); ++k) {
                EXPECT_EQ(0, std::memcmp(&peakedSums[k], &peakedSums[0], sizeof(double)));
                EXPECT_EQ(0, std::memcmp(&risingSums[k], &risingSums[0], sizeof(double)));
            }
        }
    }
    std::printf("point source sums: %.2g relative at most\n", worst);
}

TEST(VectorMath, PointSourceSumsOverNodesPastTheUnitIntervalStayRight) {
    // Nodes read from a damaged points file may lie outside [-1, 1]: the
    // terms' first exponential then reaches arguments past its own range
    // (here z down to -1200, and |d| up to 709.0) and must take the checked
    // path.
    std::vector<double> nodes, weights;
    gaussLegendre(64, nodes, weights);
    for (double& x : nodes) x *= 3.0;
    const vmath::RisingTerms rising{300.0, -300.0, 2.0, 0.5};
    const vmath::PeakedTerms peaked{236.5, 0.0, 1e-3};  // |d| up to 709.0
    for (const vmath::Functions* set : variants()) {
        const double r = set->risingSum(rising, nodes.data(), weights.data(), 64);
        const double p = set->peakedSum(peaked, nodes.data(), weights.data(), 64);
        EXPECT_CLOSE(r, static_cast<double>(risingByNode(rising, nodes, weights)), 5e-14, 1e-300) << set->name;
        EXPECT_CLOSE(p, static_cast<double>(peakedByNode(peaked, nodes, weights)), 5e-14, 1e-300) << set->name;
    }
}

TEST(VectorMath, ShortAndOddArraysAndArraysInPlace) {
    for (const vmath::Functions* set : variants()) {
        for (int n : {0, 1, 2, 3, 5, 7, 9}) {
            std::vector<double> x(static_cast<std::size_t>(n) + 1, 99.0), in(x);
            for (int i = 0; i < n; ++i) x[static_cast<std::size_t>(i)] = in[static_cast<std::size_t>(i)] = 0.1 * i;
            set->exp(x.data(), x.data(), n);
            for (int i = 0; i < n; ++i) EXPECT_CLOSE(x[static_cast<std::size_t>(i)], std::exp(0.1 * i), 4.5e-16, 0);
            EXPECT_EQ(x[static_cast<std::size_t>(n)], 99.0) << "nothing past the end is written";
        }
    }
}

TEST(IntervalMasses, MatchErfInLongDoubleInBothTails) {
    std::mt19937_64 random(12);
    std::uniform_real_distribution<double> end(-9.0, 9.0);
    std::vector<double> p(5000), q(5000), out(5000);
    for (std::size_t i = 0; i < p.size(); ++i) {
        double a = end(random), b = i % 4 == 0 ? a - std::fabs(end(random)) * 1e-6 : end(random);
        if (a < b) std::swap(a, b);
        p[i] = a;
        q[i] = b;
    }
    for (const double reach : {kPlanarReach, kSpatialReach}) {
        const long double cut = std::erfc(static_cast<long double>(reach)) / 2;
        intervalMasses(p.data(), q.data(), out.data(), static_cast<int>(p.size()), reach);
        for (std::size_t i = 0; i < p.size(); ++i) {
            const Real a = p[i], b = q[i];
            const Real exact = b >= 0 ? (std::erfc(b) - std::erfc(a)) / 2
                               : a <= 0 ? (std::erfc(-a) - std::erfc(-b)) / 2
                                        : (std::erf(a) - std::erf(b)) / 2;
            EXPECT_LE(std::fabs(out[i] - exact), 4e-16L + cut) << p[i] << " " << q[i];
            const bool beyondReach = b >= reach || a <= -reach || (a >= reach && b <= -reach);
            const Real nearTail = b >= 0 ? std::erfc(b) : std::erfc(-a);
            const Real farTail = b >= 0 ? std::erfc(a) : std::erfc(-b);
            const bool cancels = (b >= 0 || a <= 0) && farTail > nearTail / 2;
            if (!beyondReach && !cancels) {
                EXPECT_LE(std::fabs(out[i] - exact), 2e-15L * exact + cut) << p[i] << " " << q[i];
            }
        }
    }
}

namespace {

std::vector<double> ruleNodes, ruleWeights;

void makeRule() {
    if (ruleNodes.empty()) gaussLegendre(256, ruleNodes, ruleWeights);
}

struct Flow2d {
    double v, dx, dy, halfLife;
};

TwoDimParameters parametersOf(const Flow2d& f) {
    TwoDimParameters p;
    p.effectiveVelocity = f.v;
    p.effectiveDispersionX = f.dx;
    p.effectiveDispersionY = f.dy;
    p.effectiveHalfLife = f.halfLife;
    p.sourceYc = 1.0;
    p.sourceWidth = 4.0;
    p.sourceStdDev = 1.5;
    return p;
}

// The transit integral summed node by node in long double, lateral(s) giving G.
template <class Lateral>
double plainTransit(const Flow2d& f, double t, double x, Lateral&& lateral) {
    const double k = 0.69314718055994530942 / f.halfLife;
    const double u = std::sqrt(f.v * f.v + 4.0 * f.dx * k);
    const green::TransitRange r = green::transitRange(x, t, f.v, f.dx, k, u);
    if (r.panels <= 0) return 0.0;
    const Real h = (static_cast<Real>(r.wHi) - r.wLo) / r.panels;
    Real total = 0;
    for (int p = 0; p < r.panels; ++p) {
        const Real mid = r.wLo + (p + 0.5L) * h;
        for (std::size_t i = 0; i < ruleNodes.size(); ++i) {
            const Real s = std::exp(mid + h / 2 * ruleNodes[i]);
            const Real z = s - r.e / s;
            if (z * z > green::kNegligibleGauss) continue;
            total += h / 2 * ruleWeights[i] * s * lateral(s) * std::exp(-z * z);
        }
    }
    return static_cast<double>(green::kTwoOverSqrtPi * std::exp(static_cast<Real>(r.logPrefactor)) * total);
}

const Flow2d kFlows[] = {{1.0, 1.0, 0.1, 200.0}, {0.2, 10.0, 2.0, 1e9}, {1.0, 1e-3, 5e-4, 50.0}, {0.0, 0.5, 0.5, 30.0}};

}  // namespace

TEST(VectorQuadrature, StripAndGaussianKernelsEqualTheirRuleSummedNodeByNode) {
    makeRule();
    for (const Flow2d& f : kFlows) {
        const TwoDimParameters p = parametersOf(f);
        for (double t : {0.01, 3.0, 50.0, 2000.0})
            for (double x : {1e-3, 0.4, 5.0, 40.0})
                for (double y : {-6.0, 0.0, 1.0, 2.9, 3.0, 3.5, 12.0}) {
                    const double scale = std::sqrt(f.dx) / std::sqrt(f.dy) / x;
                    const Real p1 = (y - (p.sourceYc - 2.0)) * scale, p2 = (y - (p.sourceYc + 2.0)) * scale;
                    const double strip = plainTransit(f, t, x, [&](Real s) { return (std::erf(p1 * s) - std::erf(p2 * s)) / 2; });
                    double got = 0;
                    cnrml_IL(p, t, x, y, got, ruleNodes.data(), ruleWeights.data());
                    EXPECT_CLOSE(got, strip, 1e-12, 1e-16) << "strip t=" << t << " x=" << x << " y=" << y << " v=" << f.v;

                    const Real rho = x * std::sqrt(f.dy) / (p.sourceStdDev * std::sqrt(2.0) * std::sqrt(f.dx));
                    const Real gamma = (y - p.sourceYc) * (y - p.sourceYc) / (2 * p.sourceStdDev * p.sourceStdDev);
                    const double gaussian = plainTransit(f, t, x, [&](Real s) {
                        const Real g = 1 / (1 + (rho / s) * (rho / s));
                        return std::sqrt(g) * std::exp(-gamma * g);
                    });
                    cnrml_IG(p, t, x, y, got, ruleNodes.data(), ruleWeights.data());
                    EXPECT_CLOSE(got, gaussian, 1e-12, 1e-16) << "gaussian t=" << t << " x=" << x << " y=" << y << " v=" << f.v;
                }
    }
}

TEST(VectorQuadrature, PointKernelMatchesTheAdaptiveTimeIntegralClosely) {
    // Its nodes' exponents take the kernel's own change of variable; instead
    // of repeating it, against the adaptive integral at 1e-13: both of its
    // forms (the peak inside the time range, the integrand rising to its
    // end) to 1e-11, far inside the kernels' 1e-6 and tight enough to catch
    // any node evaluated wrongly.
    makeRule();
    kern2dref::Flow base;
    base.v = 1, base.dx = 1, base.dy = 0.2, base.porosity = 0.3;
    kern2dref::Flow decaying = base;
    decaying.halfLife = 6;
    kern2dref::Flow still;
    still.v = 0, still.dx = 0.5, still.dy = 0.25;
    int checked = 0;
    for (const kern2dref::Flow& f : {base, decaying, still}) {
        TwoDimParameters p = kern2dref::record(f);
        p.injectionRate = 0.5;
        for (double t : {0.05, 2.0, 30.0, 1000.0})
            for (double x : {-2.0, 0.3, 4.0, 25.0})
                for (double y : {0.0, 0.7, 3.0}) {
                    const double expected = kern2dref::pointSource(f, 0.5, x, y, t);
                    double got = 0;
                    cnrml_IC(p, t, x, y, got, ruleNodes.data(), ruleWeights.data());
                    EXPECT_CLOSE(got, expected, 1e-11, 1e-16) << "t=" << t << " x=" << x << " y=" << y << " v=" << f.v;
                    checked += expected > 1e-6;
                }
    }
    EXPECT_GT(checked, 40);
}

TEST(VectorQuadrature, FiniteWidthImageIntegralEqualsItsRuleWithAllImages) {
    // Close to the inlet of a wide aquifer the finite-width kernel takes the
    // transit integral with the walled strip's factor: here against the same
    // rule with the factor summed over 121 mirror pairs in long double.
    makeRule();
    const Flow2d f{1.0, 1.0, 0.5, 200.0};
    TwoDimParameters p = parametersOf(f);
    p.yMin = 0.0;
    p.yMax = 100.0;
    p.sourceYc = 10.0;
    p.sourceWidth = 8.0;
    const Real a = 6, b = 14, w = 100;
    for (double t : {0.5, 10.0, 400.0})
        for (double x : {0.05, 0.3, 1.0})
            for (double y : {0.0, 3.0, 10.0, 14.0, 20.0, 99.0}) {
                const Real zeta = x * std::sqrt(static_cast<Real>(f.dy)) / (2 * std::sqrt(static_cast<Real>(f.dx))) / w;
                const double expected = plainTransit(f, t, x, [&](Real s) {
                    const Real scale = 1 / (2 * (zeta / s) * w);
                    Real sum = 0;
                    for (int j = -60; j <= 60; ++j)
                        for (const Real sign : {1.0L, -1.0L}) {
                            const Real lo = sign > 0 ? a + 2 * j * w : -b + 2 * j * w, hi = sign > 0 ? b + 2 * j * w : -a + 2 * j * w;
                            sum += (std::erf((y - lo) * scale) - std::erf((y - hi) * scale)) / 2;
                        }
                    return sum;
                });
                double got = 0;
                cnrml_FL(p, t, x, y, got);
                EXPECT_CLOSE(got, expected, 1e-12, 1e-16) << "t=" << t << " x=" << x << " y=" << y;
            }
}

namespace {

ThreeDimParameters patchMedium(double v, double dx, double dy, double dz) {
    ThreeDimParameters p;
    p.effectiveVelocity = v;
    p.effectiveDispersionX = dx;
    p.effectiveDispersionY = dy;
    p.effectiveDispersionZ = dz;
    p.effectiveHalfLife = 500.0;
    p.sourceYc = 0.0;
    p.sourceZc = 5.0;
    p.sourceWidth = 10.0;
    p.sourceHeight = 4.0;
    p.yMin = -40.0;
    p.yMax = 40.0;
    p.zMin = 0.0;
    p.zMax = 10.0;
    return p;
}

}  // namespace

TEST(VectorQuadrature, PatchKernelEqualsItsRuleSummedNodeByNode) {
    // The scalar time integral with the scalar shares: the same rule and
    // the same node skips, one node at a time.
    for (const ThreeDimParameters& p : {patchMedium(0.3, 3.0, 0.3, 0.03), patchMedium(1.0, 1e-3, 1e-4, 1e-5),
                                        patchMedium(0.0, 1.0, 1.0, 1.0)}) {
        const double decay = 0.69314718055994530942 / p.effectiveHalfLife;
        const double cy = 0.5 / std::sqrt(p.effectiveDispersionY), cz = 0.5 / std::sqrt(p.effectiveDispersionZ);
        for (double t : {0.5, 30.0, 365.0, 5000.0})
            for (double x : {0.01, 2.0, 60.0})
                for (double z : {0.0, 4.0, 7.5})
                    for (double y : {-20.0, -5.0, 0.0, 4.9, 12.0}) {
                        const k3::Column column = k3::makeColumn(x, p.effectiveVelocity, p.effectiveDispersionX, decay);
                        const k3::Panels plan = k3::planPanels(column, t);
                        const double expected = k3::timeIntegral(
                            column, plan, k3::internalNodes(), k3::internalWeights(), [&](double sqrtTau, double) {
                                return k3::intervalShare(y + 5.0, 5.0 - y, cy / sqrtTau) *
                                       k3::intervalShare(z - 3.0, 7.0 - z, cz / sqrtTau);
                            });
                        double got = 0;
                        cnrml_3IL(p, t, x, y, z, got, k3::internalNodes(), k3::internalWeights());
                        EXPECT_CLOSE(got, expected, 1e-12, 1e-16) << "t=" << t << " x=" << x << " y=" << y << " z=" << z;
                    }
    }
}

namespace {

// Every kernel over a small grid, y innermost (as the program loops), or in
// a scrambled order with other parameters in between.
std::vector<double> gridValues(bool scrambled) {
    makeRule();
    struct Point {
        int kernel;
        double t, x, y, z;
    };
    std::vector<Point> points;
    for (int kernel = 0; kernel < 7; ++kernel)
        for (double t : {20.0, 300.0})
            for (double x : {0.2, 6.0, 45.0})
                for (double z : {2.0, 5.0})
                    for (double y : {-8.0, 0.0, 1.0, 3.0, 9.0}) points.push_back({kernel, t, x, y, z});
    std::vector<std::size_t> order(points.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
    if (scrambled) std::shuffle(order.begin(), order.end(), std::mt19937_64(3));
    TwoDimParameters p2 = parametersOf(kFlows[0]);
    p2.yMin = -30;
    p2.yMax = 30;
    p2.injectionRate = 1.0;
    p2.porosity = 0.3;
    const ThreeDimParameters p3 = patchMedium(0.3, 3.0, 0.3, 0.03);
    TwoDimParameters other2 = parametersOf(kFlows[1]);
    std::vector<double> out(points.size());
    for (std::size_t i : order) {
        const Point& q = points[i];
        double c = 0, noise = 0;
        switch (q.kernel) {
        case 0: cnrml_IL(p2, q.t, q.x, q.y, c, ruleNodes.data(), ruleWeights.data()); break;
        case 1: cnrml_IG(p2, q.t, q.x, q.y, c, ruleNodes.data(), ruleWeights.data()); break;
        case 2: cnrml_IC(p2, q.t, q.x, q.y, c, ruleNodes.data(), ruleWeights.data()); break;
        case 3: cnrml_FL(p2, q.t, q.x, q.y, c); break;
        case 4: cnrml_3IL(p3, q.t, q.x, q.y, q.z, c, k3::internalNodes(), k3::internalWeights()); break;
        case 5: cnrml_3FL(p3, q.t, q.x, q.y, q.z, c); break;
        default: cnrml_3FL(p3, q.t, 0.01 * q.x, q.y, q.z, c); break;
        }
        if (scrambled) {
            cnrml_IL(other2, q.t + 1, q.x, q.y, noise, ruleNodes.data(), ruleWeights.data());
            cnrml_3IL(p3, q.t + 1, q.x, q.y, q.z + 1, noise, k3::internalNodes(), k3::internalWeights());
        }
        out[i] = c;
    }
    return out;
}

}  // namespace

TEST(VectorQuadrature, ResultsDoNotDependOnWhatWasComputedBefore) {
    const std::vector<double> inOrder = gridValues(false), scrambled = gridValues(true);
    ASSERT_EQ(inOrder.size(), scrambled.size());
    int nonZero = 0;
    for (std::size_t i = 0; i < inOrder.size(); ++i) {
        EXPECT_EQ(inOrder[i], scrambled[i]) << "point " << i;
        nonZero += inOrder[i] != 0.0;
    }
    EXPECT_GT(nonZero, static_cast<int>(inOrder.size()) / 2);
}
