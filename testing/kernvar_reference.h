#pragma once
// Independent double-precision references for the kernvar tests: the dispersion
// measure by direct quadrature of DL/R, the source formulas written out, and an
// adaptive Simpson rule for the time integrals.

#include <cmath>
#include <functional>
#include <numbers>
#include <vector>

#include "kernels/kernvar.h"

namespace kernvar_ref {

struct Case {
    double R = 2, u = 1, v = 0.3, mu = 0.001, a = 0.2, Do = 5, Dm = 0.01, k = 20, M = 1000;
    int function = 1;
};

inline bm::kernvarRecord recordOf(const Case& c, std::int16_t source) {
    bm::kernvarRecord r{};
    r.contaminantSource = source;
    r.magnitude = static_cast<float>(c.M);
    r.dispersionFunction = static_cast<std::int16_t>(c.function);
    r.retardation = static_cast<float>(c.R);
    r.velocityX = static_cast<float>(c.u);
    r.velocityY = static_cast<float>(c.v);
    r.decay = static_cast<float>(c.mu);
    r.dispersionRatio = static_cast<float>(c.a);
    r.maximumDispersivity = static_cast<float>(c.Do);
    r.molecularDiffusion = static_cast<float>(c.Dm);
    r.meanTravelTime = static_cast<float>(c.k);
    return r;
}

// The case as the record holds it: every value rounded to float.
inline Case asStored(Case c) {
    for (double* p : {&c.R, &c.u, &c.v, &c.mu, &c.a, &c.Do, &c.Dm, &c.k, &c.M}) *p = static_cast<float>(*p);
    return c;
}

// Adaptive Simpson on [a, b], absolute tolerance tol.
inline double simpsonStep(const std::function<double(double)>& f, double a, double b, double fa, double fm, double fb,
                          double whole, double tol, int depth) {
    const double m = 0.5 * (a + b), lm = 0.5 * (a + m), rm = 0.5 * (m + b);
    const double flm = f(lm), frm = f(rm);
    const double left = (m - a) / 6 * (fa + 4 * flm + fm), right = (b - m) / 6 * (fm + 4 * frm + fb);
    const double delta = left + right - whole;
    if (depth <= 0 || std::fabs(delta) <= 15 * tol) return left + right + delta / 15;
    return simpsonStep(f, a, m, fa, flm, fm, left, tol / 2, depth - 1) +
           simpsonStep(f, m, b, fm, frm, fb, right, tol / 2, depth - 1);
}

inline double simpson(const std::function<double(double)>& f, double a, double b, double tol, int depth = 60) {
    const double fa = f(a), fb = f(b), fm = f(0.5 * (a + b));
    return simpsonStep(f, a, b, fa, fm, fb, (b - a) / 6 * (fa + 4 * fm + fb), tol, depth);
}

// Composite: `pieces` equal parts, each adaptive; tolerance relative to a coarse estimate.
inline double integrate(const std::function<double(double)>& f, double a, double b, int pieces, double rtol) {
    const double h = (b - a) / pieces;
    double coarse = 0;
    for (int i = 0; i < pieces; ++i) {
        const double x0 = a + i * h;
        coarse += std::fabs(h / 6 * (f(x0) + 4 * f(x0 + h / 2) + f(x0 + h)));
    }
    const double tol = std::max(rtol * coarse / pieces, 1e-300);
    double sum = 0;
    for (int i = 0; i < pieces; ++i) sum += simpson(f, a + i * h, a + (i + 1) * h, tol);
    return sum;
}

// The growth function f(s).
inline double growth(const Case& c, double s) {
    switch (c.function) {
    case 2: return s / c.k;
    case 3: return c.k == 0 ? 1.0 : s / (c.k + s);
    case 4: return c.k == 0 ? 1.0 : -std::expm1(-s / c.k);
    default: return 1.0;
    }
}

inline double speed(const Case& c) { return std::sqrt(c.u * c.u + c.v * c.v); }
inline double DL(const Case& c, double s) { return c.Dm + c.Do * speed(c) * growth(c, s); }

// alpha(t) by quadrature of DL/R.
inline double alphaByQuadrature(const Case& c, double t) {
    if (t <= 0) return 0;
    return integrate([&](double s) { return DL(c, s) / c.R; }, 0.0, t, 64, 1e-14);
}

// alpha(t) in long double from the antiderivatives written out (for the fast
// references of the time integrals; checked against the quadrature above).
inline double alphaLong(const Case& c, double t) {
    if (t <= 0) return 0;
    const long double T = t, K = c.k;
    long double F = T;
    if (c.function == 2) F = T * T / (2 * K);
    if (c.function == 3 && c.k != 0) F = T - K * std::log1p(T / K);
    if (c.function == 4 && c.k != 0) F = T - K * (1 - std::exp(-T / K));
    return static_cast<double>((c.Dm * T + c.Do * speed(c) * F) / c.R);
}

// The instantaneous solutions in double for a given alpha. withR: divide by R.
inline double pointValue(const Case& c, double t, double x, double y, double alpha, bool withR) {
    if (t <= 0) return 0;
    const double m = withR ? c.M / c.R : c.M;
    const double dx = x - c.u * t / c.R, dy = y - c.v * t / c.R;
    return m / (4 * std::numbers::pi * std::sqrt(c.a) * alpha) *
           std::exp(-dx * dx / (4 * alpha) - dy * dy / (4 * c.a * alpha) - c.mu * t);
}

inline double lineValue(const Case& c, double t, double x, double alpha, bool withR) {
    if (t <= 0) return 0;
    const double m = withR ? c.M / c.R : c.M;
    const double dx = x - c.u * t / c.R;
    return m / std::sqrt(4 * std::numbers::pi * alpha) * std::exp(-dx * dx / (4 * alpha) - c.mu * t);
}

// The continuous sources by brute force over the elapsed time.
inline double pointContinuous(const Case& c, double t, double x, double y) {
    return integrate([&](double s) { return s <= 0 ? 0.0 : pointValue(c, s, x, y, alphaLong(c, s), true); }, 0.0, t,
                     4000, 1e-11);
}

inline double lineContinuous(const Case& c, double t, double x) {
    return integrate([&](double s) { return s <= 0 ? 0.0 : lineValue(c, s, x, alphaLong(c, s), true); }, 0.0, t, 4000,
                     1e-11);
}

// The prefactors the program passes (4 pi as the float 12.566372).
inline float pointFactor(const bm::kernvarRecord& r) {
    return r.dispersionRatio * r.magnitude / (r.retardation * 12.566372f);
}
inline float pointInitialFactor(const bm::kernvarRecord& r) { return r.dispersionRatio * r.magnitude / 12.566372f; }
inline float lineFactor(const bm::kernvarRecord& r) {
    return r.magnitude / (std::pow(12.566372f, 0.5f) * r.retardation);
}

}  // namespace kernvar_ref
