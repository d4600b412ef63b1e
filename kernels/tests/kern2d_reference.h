#pragma once
// Independent references for the two-dimensional kernels, computed another way:
// the Green's-function time integrals in the original time variable by adaptive
// Gauss-Kronrod (7/15) quadrature at tight tolerance, brute-force image sums,
// and the one-dimensional closed form evaluated with std::erfc.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "kernels/gauss_legendre.h"
#include "kernels/kern2d.h"
#include "shell/base/runtime_error.h"
#include "testing/is_close.h"
#include "shell/base/raised_error.h"
#include "testing/gauss_kronrod.h"

namespace bm::kern2dref {

inline constexpr double kPi = 3.14159265358979323846;

using Integrand = std::function<double(double)>;

// Integral over [0, t] of an integrand that may be sharply peaked anywhere:
// the interval is first cut at t / 2^j and t (1 - 2^-j) (so every scale of tau
// near either end has its own pieces) and around the advective arrival x / v,
// or around t when the arrival is still to come.
inline double integrateTime(const Integrand& f, double t, double peak, double peakWidth, double tol) {
    std::vector<double> cuts{0.0};
    for (int j = 90; j >= 1; --j) cuts.push_back(t * std::ldexp(1.0, -j));
    for (int j = 2; j <= 50; ++j) cuts.push_back(t - t * std::ldexp(1.0, -j));
    if (peak > 0 && peakWidth > 0)
        for (int j = -40; j <= 40; ++j) {
            const double c = std::min(peak, t) + 0.25 * j * peakWidth;
            if (c > 0 && c < t) cuts.push_back(c);
        }
    cuts.push_back(t);
    std::sort(cuts.begin(), cuts.end());
    double sum = 0;
    for (std::size_t i = 1; i < cuts.size(); ++i)
        if (cuts[i] > cuts[i - 1]) sum += testkit::adaptiveGaussKronrod(f, cuts[i - 1], cuts[i], tol);
    return sum;
}

struct Flow {
    double v = 1, dx = 1, dy = 0.1, halfLife = 1e300, recharge = 0, porosity = 0.3, thickness = 10;
    double k() const { return std::log(2.0) / halfLife + (recharge != 0 ? recharge / (porosity * thickness) : 0.0); }
};

inline TwoDimParameters record(const Flow& f) {
    TwoDimParameters p;
    p.effectiveVelocity = f.v;
    p.effectiveDispersionX = f.dx;
    p.effectiveDispersionY = f.dy;
    p.effectiveHalfLife = f.halfLife;
    p.netRecharge = f.recharge;
    p.porosity = f.porosity;
    p.aquiferThickness = f.thickness;
    return p;
}

// The first-passage density of the x-motion with loss, at time tau.
inline double transit(const Flow& f, double x, double tau) {
    if (tau <= 0) return 0.0;
    const double d = x - f.v * tau;
    return x / std::sqrt(4 * kPi * f.dx * tau * tau * tau) * std::exp(-d * d / (4 * f.dx * tau) - f.k() * tau);
}

// Green's-function integral of a source plane with lateral factor G(tau).
inline double planeSource(const Flow& f, double x, double t, const std::function<double(double)>& lateral,
                          double tol = 1e-13) {
    auto integrand = [&](double tau) { return transit(f, x, tau) * lateral(tau); };
    const double peak = f.v > 0 ? x / f.v : 0;
    const double width = f.v > 0 ? std::sqrt(2 * f.dx * peak) / f.v : 0;
    return integrateTime(integrand, t, peak, width, tol);
}

inline double stripLateral(const Flow& f, double y, double y1, double y2, double tau) {
    const double s = 2 * std::sqrt(f.dy * tau);
    return 0.5 * (std::erf((y - y1) / s) - std::erf((y - y2) / s));
}

inline double gaussianLateral(const Flow& f, double y, double yc, double sigma, double tau) {
    const double var = sigma * sigma + 2 * f.dy * tau;
    return sigma / std::sqrt(var) * std::exp(-(y - yc) * (y - yc) / (2 * var));
}

// Strip a..b between walls at 0 and W (local coordinates): the sum of the
// strip and all its mirror images, taken far enough that the rest is < 1e-17.
inline double walledLateral(const Flow& f, double y, double width, double a, double b, double tau) {
    const double spread = 2 * std::sqrt(f.dy * tau);
    const int images = 3 + static_cast<int>(std::ceil(6 * spread / width));
    double sum = 0;
    for (int k = -images; k <= images; ++k) {
        const double shift = 2 * k * width;
        sum += 0.5 * (std::erf((y - shift - a) / spread) - std::erf((y - shift - b) / spread));
        sum += 0.5 * (std::erf((y - shift + b) / spread) - std::erf((y - shift + a) / spread));
    }
    return sum;
}

// The one-dimensional semi-infinite Dirichlet solution with loss k, by std::erfc
// (safe while (v + U) x / (2 D) stays below the overflow of exp).
inline double oneDimensional(double x, double t, double v, double d, double k) {
    if (t <= 0) return x == 0 ? 1.0 : 0.0;
    const double u = std::sqrt(v * v + 4 * d * k);
    const double s = 2 * std::sqrt(d * t);
    return 0.5 * (std::exp((v - u) * x / (2 * d)) * std::erfc((x - u * t) / s) +
                  std::exp((v + u) * x / (2 * d)) * std::erfc((x + u * t) / s));
}

// Continuous point injection: Q' / (4 pi n sqrt(Dx Dy)) times the time integral.
inline double pointSource(const Flow& f, double q, double x, double y, double t, double tol = 1e-13) {
    auto integrand = [&](double tau) {
        if (tau <= 0) return 0.0;
        const double d = x - f.v * tau;
        return std::exp(-d * d / (4 * f.dx * tau) - y * y / (4 * f.dy * tau) - f.k() * tau) / tau;
    };
    const double peak = f.v > 0 && x > 0 ? x / f.v : 0;
    const double width = peak > 0 ? std::sqrt(2 * f.dx * peak) / f.v : 0;
    const double pref = q / (4 * kPi * f.porosity * std::sqrt(f.dx * f.dy));
    return pref * integrateTime(integrand, t, peak, width, tol / std::max(pref, 1e-300));
}

// The built-in rule as the program passes it: 256 entries (nodes, weights).
struct Rule {
    std::vector<double> nodes, weights;
};
inline Rule standardRule() {
    Rule r;
    gaussLegendre(256, r.nodes, r.weights);
    return r;
}
inline const Rule& theRule() {
    static const Rule r = standardRule();
    return r;
}

// The kernels at one point with the standard rule.
inline double finiteAt(const TwoDimParameters& p, double t, double x, double y) {
    double c = -1;
    cnrml_FL(p, t, x, y, c);
    return c;
}
inline double stripAt(const TwoDimParameters& p, double t, double x, double y) {
    double c = -1;
    cnrml_IL(p, t, x, y, c, theRule().nodes.data(), theRule().weights.data());
    return c;
}
inline double gaussianAt(const TwoDimParameters& p, double t, double x, double y) {
    double c = -1;
    cnrml_IG(p, t, x, y, c, theRule().nodes.data(), theRule().weights.data());
    return c;
}
inline double pointAt(const TwoDimParameters& p, double t, double x, double y) {
    double c = -1;
    cnrml_IC(p, t, x, y, c, theRule().nodes.data(), theRule().weights.data());
    return c;
}

using bm::raisedError;

// The accuracy target of the kernels: 1e-6 absolute on C/C0 everywhere and
// 1e-5 relative where C/C0 > 1e-3. Keeps the worst errors seen for the summary.
class Target {
public:
    explicit Target(std::string name) : name_(std::move(name)) {}
    ~Target() {
        std::printf("[ worst    ] %s: %d points, absolute %.2e, relative %.2e\n", name_.c_str(), count_, worstAbs_,
                    worstRel_);
    }
    void check(double got, double reference, const std::string& where) {
        ++count_;
        const double abs = std::fabs(got - reference);
        worstAbs_ = std::max(worstAbs_, abs);
        EXPECT_CLOSE(got, reference, 0.0, 1e-6) << where;
        if (reference > 1e-3) {
            worstRel_ = std::max(worstRel_, abs / reference);
            EXPECT_CLOSE(got, reference, 1e-5, 0.0) << where;
        }
    }

private:
    std::string name_;
    int count_ = 0;
    double worstAbs_ = 0, worstRel_ = 0;
};

}  // namespace bm::kern2dref
