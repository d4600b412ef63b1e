#pragma once
// Independent references for the three-dimensional kernels, computed another
// way than the kernels do:
// - the patch integrals by adaptive Gauss-Kronrod (7/15) in the Ogata-Banks
//   variable beta = x / (2 sqrt(Dx tau)), where the column's response is a
//   bump of width about one whatever the Peclet number;
// - the finite aquifer's transverse shares by plain sums of mirror images (or,
//   once the spread passes the extent, a plainly summed cosine series);
// - the one-dimensional Dirichlet column in long double, from erfcl and expl.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <vector>

#include <gtest/gtest.h>

#include "kernels/kern3d.h"
#include "shell/base/runtime_error.h"
#include "shell/base/raised_error.h"
#include "testing/gauss_kronrod.h"

namespace bm::kern3dref {

inline constexpr double kPi = 3.14159265358979323846;

// lambda' of a record, written out: ln 2 / half-life plus q / (n B) with recharge.
inline double decayOf(const ThreeDimParameters& p) {
    return 0.69314718055994530942 / p.effectiveHalfLife +
           (p.netRecharge != 0 ? p.netRecharge / (p.porosity * p.aquiferThickness) : 0.0);
}

// A record with the medium's effective numbers set.
inline ThreeDimParameters withMedium(ThreeDimParameters p, double v, double dx, double dy, double dz, double halfLife,
                                     double recharge) {
    p.effectiveVelocity = v;
    p.effectiveDispersionX = dx;
    p.effectiveDispersionY = dy;
    p.effectiveDispersionZ = dz;
    p.effectiveHalfLife = halfLife;
    p.netRecharge = recharge;
    return p;
}

using KernelCall = std::function<void(const ThreeDimParameters&)>;

// The run-time error number `call` raises on a copy of `base` changed by
// `change`, 0 when it raises none.
inline int errorAfter(const ThreeDimParameters& base, const std::function<void(ThreeDimParameters&)>& change,
                      const KernelCall& call) {
    ThreeDimParameters p = base;
    change(p);
    return raisedError([&] { call(p); });
}

// The faults all three kernels share: a zero Dx, Dy, Dz or half-life is a
// division by zero, and so is the recharge term's n B when either is zero.
inline void expectSharedDivisionFaults(const ThreeDimParameters& base, const KernelCall& call) {
    ASSERT_NE(base.netRecharge, 0.0);
    EXPECT_EQ(errorAfter(base, [](ThreeDimParameters& p) { p.effectiveDispersionX = 0; }, call), 11);
    EXPECT_EQ(errorAfter(base, [](ThreeDimParameters& p) { p.effectiveDispersionY = 0; }, call), 11);
    EXPECT_EQ(errorAfter(base, [](ThreeDimParameters& p) { p.effectiveDispersionZ = 0; }, call), 11);
    EXPECT_EQ(errorAfter(base, [](ThreeDimParameters& p) { p.effectiveHalfLife = 0; }, call), 11);
    EXPECT_EQ(errorAfter(base, [](ThreeDimParameters& p) { p.aquiferThickness = 0; }, call), 11);
    // A negative dispersion: the root of a negative number.
    EXPECT_EQ(errorAfter(base, [](ThreeDimParameters& p) { p.effectiveDispersionY = -0.1; }, call), 5);
    // Without recharge its quotient is never formed: a zero thickness is harmless.
    EXPECT_EQ(errorAfter(base, [](ThreeDimParameters& p) { p.netRecharge = 0, p.aquiferThickness = 0; }, call), 0);
}

// Calls kernel(v, x, t) over absurd velocities, distances (upstream ones too
// when `upstream`) and times: each call either raises a RuntimeError or gives a
// number, never a NaN, within [low, high].
inline void expectNumbersOrErrors(const std::function<double(double v, double x, double t)>& kernel, bool upstream,
                                  double low, double high) {
    for (double v : {-3.0, 0.0, 1e-12, 2.0, 1e8})
        for (double x : {-1e300, -3.0, 1e-300, 1e-170, 1e-12, 3.0, 1e12, 1e300})
            for (double t : {1e-300, 1e-12, 5.0, 1e12, 1e300}) {
                if (x < 0 && !upstream) continue;
                double c = 0;
                try {
                    c = kernel(v, x, t);
                } catch (const RuntimeError&) {
                    continue;
                }
                EXPECT_FALSE(std::isnan(c)) << v << " " << x << " " << t;
                EXPECT_GE(c, low) << v << " " << x << " " << t;
                EXPECT_LE(c, high) << v << " " << x << " " << t;
            }
}

// Worst absolute error, and relative error where the value passes 1e-3, of a
// set of comparisons; printed with the test's output.
struct Worst {
    const char* name;
    double abs = 0, rel = 0;
    int count = 0;
    void add(double got, double expected) {
        ++count;
        abs = std::max(abs, std::fabs(got - expected));
        if (expected > 1e-3) rel = std::max(rel, std::fabs(got - expected) / expected);
    }
    ~Worst() { std::printf("[kern3d accuracy] %s: %d points, worst abs %.2e, worst rel %.2e\n", name, count, abs, rel); }
};

// Adaptive integral over [a, b] with the interval first cut at the given points.
inline double integrate(const std::function<double(double)>& f, double a, double b, std::vector<double> cuts,
                        double tol = 1e-14) {
    cuts.push_back(a);
    cuts.push_back(b);
    std::sort(cuts.begin(), cuts.end());
    double sum = 0.0;
    double prev = a;
    // Halving until the Kronrod estimate meets the tolerance or the rounding of
    // the panel's own value; a budget of evaluations keeps a pathological case finite.
    long budget = 4'000'000;
    const testkit::HalvingLimits limits{36, 1e-14, &budget};
    for (double c : cuts) {
        if (c <= prev || c > b) continue;
        sum += testkit::adaptiveGaussKronrod(f, prev, c, tol, limits);
        prev = c;
    }
    return sum;
}

// (erf(d1 r) + erf(d2 r)) / 2 written plainly.
inline double share(double d1, double d2, double r) { return 0.5 * (std::erf(d1 * r) + std::erf(d2 * r)); }

struct Medium {
    double v = 1, dx = 1, dy = 0.1, dz = 0.01, decay = 0;
};

// Transverse share as a function of tau.
using Transverse = std::function<double(double tau)>;

// The patch integral in beta: C = 2/sqrt(pi) * integral over beta > beta0 of
// exp(-(beta - eps/beta)^2 - lambda a / beta^2) * T(a / beta^2), a = x^2/(4Dx).
// `scales` are the transverse lengths whose spreading sets where T changes
// (distances to patch edges and walls): cuts go at the beta where each is
// reached, together with the column's peak.
inline double patchIntegral(const Medium& m, double x, double t, const Transverse& transverse,
                            const std::vector<double>& scales, double transverseDispersion) {
    const double a = x * x / (4.0 * m.dx);
    const double eps = x * m.v / (4.0 * m.dx);
    const double beta0 = std::sqrt(a / t);
    auto f = [&](double beta) {
        const double d = beta - eps / beta;
        return 2.0 / std::sqrt(kPi) * std::exp(-d * d - m.decay * a / (beta * beta)) * transverse(a / (beta * beta));
    };
    const double peak4 = eps * eps + m.decay * a;
    const double peak = peak4 > 0.0 ? std::pow(peak4, 0.25) : 0.0;
    const double top = std::max(beta0, peak) + 14.0;
    std::vector<double> cuts;
    for (int j = -24; j <= 24; ++j) cuts.push_back(peak + 0.25 * j);
    for (double s : scales) {
        if (s <= 0.0) continue;
        // d / (2 sqrt(D tau)) = 1 at beta = 2 sqrt(D a) / d.
        const double b1 = 2.0 * std::sqrt(transverseDispersion * a) / s;
        for (double f2 : {0.05, 0.1, 0.2, 0.35, 0.5, 0.7, 1.0, 1.4, 2.0, 3.0, 5.0, 10.0}) cuts.push_back(b1 * f2);
    }
    for (double b = beta0; b < top; b *= 1.5) cuts.push_back(b);
    return integrate(f, beta0, top, cuts, 1e-14);
}

// Share of [c1, c2] in the unbounded line.
inline Transverse freeShare(double y, double c1, double c2, double d) {
    return [=](double tau) { return share(y - c1, c2 - y, 1.0 / (2.0 * std::sqrt(d * tau))); };
}

// Share of the patch [p1, p2] of the aquifer [0, w] (no-flux walls) at y in
// [0, w]: mirror images while the spread is below the extent, the cosine series
// of the Neumann problem after.
inline Transverse boundedShare(double y, double p1, double p2, double w, double d) {
    return [=](double tau) {
        const double spread = std::sqrt(d * tau);
        if (spread < w) {
            const double r = 1.0 / (2.0 * spread);
            double s = 0.0;
            const int most = 3 + static_cast<int>(std::ceil(12.0 * spread / w));
            for (int j = -most; j <= most; ++j) {
                s += share(y - (p1 + 2 * j * w), (p2 + 2 * j * w) - y, r);
                s += share(y - (-p2 + 2 * j * w), (-p1 + 2 * j * w) - y, r);
            }
            return s;
        }
        double s = (p2 - p1) / w;
        for (int m = 1; m < 200; ++m) {
            const double decay = std::exp(-d * (m * kPi / w) * (m * kPi / w) * tau);
            if (decay < 1e-22) break;
            s += 2.0 / (m * kPi) * (std::sin(m * kPi * p2 / w) - std::sin(m * kPi * p1 / w)) * std::cos(m * kPi * y / w) *
                 decay;
        }
        return s;
    };
}

// The semi-infinite column with decay k under a unit step at x = 0 (k >= -v^2/(4D)).
inline double columnStep(double x, double t, double v, double d, double k) {
    if (t <= 0) return x == 0 ? 1.0 : 0.0;
    const long double X = x, T = t, V = v, D = d, K = k;
    const long double u = std::sqrt(V * V + 4 * D * K);
    const long double s = 2 * std::sqrt(D * T);
    const long double e1 = std::exp((V - u) * X / (2 * D)) * std::erfc((X - u * T) / s);
    const long double a2 = (V + u) * X / (2 * D);
    const long double b2 = (X + u * T) / s;
    // exp(a2) erfc(b2) = exp(a2 - b2^2) * (exp(b2^2) erfc(b2)) once erfc(b2) would underflow.
    long double e2;
    if (b2 < 100) {
        e2 = std::exp(a2) * std::erfc(b2);
    } else {
        const long double z = 1 / (2 * b2 * b2);
        e2 = std::exp(a2 - b2 * b2) / (b2 * std::sqrt(static_cast<long double>(kPi))) * (1 - z + 3 * z * z - 15 * z * z * z);
    }
    return static_cast<double>((e1 + e2) / 2);
}

}  // namespace bm::kern3dref
