#pragma once
// Numerical pieces shared by the two- and three-dimensional kernels.
//
// A source plane x = 0 held at a profile f(y) (and f(z)) feeds the aquifer x > 0.
// The operator splits, so the concentration is the time integral of the
// first-passage density of the x-motion times the lateral spreading of the
// profile:
//
//   C = integral over 0 < tau < t of  x / sqrt(4 pi D tau^3)
//         * exp(-(x - v tau)^2 / (4 D tau) - k tau) * G(tau) d tau,
//
// G(tau) being the profile smoothed by lateral dispersion over tau (a product of
// y and z factors in three dimensions). With s = x / (2 sqrt(D tau)) and
// U = sqrt(v^2 + 4 D k) the decay folds into the Gaussian and
//
//   C = exp((v - U) x / (2 D)) * 2/sqrt(pi) * integral over s > s0 of
//         exp(-(s - e/s)^2) G(s) ds,     e = x U / (4 D),  s0 = x / (2 sqrt(D t)).
//
// The integrand lives on |s - e/s| < 6.5 (outside it the Gaussian is below
// 1e-18) and s > 1e-12; all its features (the Gaussian, the error-function steps
// of G) have a width of order one in ln s or scale with the width of its
// support, so the integral is taken in w = ln s with the 256-point
// Gauss-Legendre rule, one application per stretch of kTransitPanelLength in w
// (the whole range is at most 30 long, so one application in practice; it
// reaches 1e-12 against adaptive quadrature). The same form covers every time,
// from the first arrival to the steady state, where a rule over [0, t] in tau
// would need many sub-intervals to catch a sharp arrival.

#include <cmath>
#include <cstdint>

#include "kernels/erfc_scaled.h"

namespace bm::green {

inline constexpr int kRulePoints = 256;
inline constexpr double kTwoOverSqrtPi = 1.1283791670955125739;
inline constexpr double kPi = 3.14159265358979323846;

using bm::erfcx;
using bm::expErfc;

// First-order loss rate: ln 2 / halfLife plus, when recharge is not 0, the
// dilution recharge / (porosity * thickness). Checked arithmetic (a zero
// half-life, or recharge with a zero thickness, is division by zero).
double lossRate(double halfLife, double recharge, double porosity, double thickness);

// (v - u) x / (2 d) and (v + u) x / (2 d), u = sqrt(v^2 + 4 d k), without the
// cancellation of v against u when d k is small beside v^2.
double lowerExponent(double x, double v, double d, double k, double u);
double upperExponent(double x, double v, double d, double k, double u);

// One-dimensional semi-infinite Dirichlet solution with loss: C/C0 at x > 0,
// t > 0 of dC/dt = D C'' - v C' - k C, C(0, t) = 1, with u = sqrt(v^2 + 4 D k).
// Its steady state, exp(lowerExponent), bounds it from above.
double semiInfiniteDirichlet(double x, double t, double v, double d, double k, double u);

// The integration range of the transit integral for x > 0, t > 0.
struct TransitRange {
    double logPrefactor = 0;  // (v - U) x / (2 D)
    double e = 0;             // x U / (4 D)
    double wLo = 0, wHi = 0;  // range in w = ln s
    int panels = 0;           // 0: nothing arrives (the result is below 1e-18)
};
inline constexpr double kTransitPanelLength = 30.0;
// Nodes where exp(-z^2) < 4e-18 are skipped: with G <= 1 they add less than
// 4e-18 times the length of the support in s, which is at most 6.5.
inline constexpr double kNegligibleGauss = 40.0;
// v, d: longitudinal velocity and dispersion, k the loss rate, u = sqrt(v^2 + 4 d k).
TransitRange transitRange(double x, double t, double v, double d, double k, double u);
// The integral itself is vectorTransitIntegral (transit_nodes.h).

// An aquifer bounded by no-flux walls in one lateral direction, of width W,
// with a source strip a..b (local coordinates, clipped to 0..W) and a point at
// local coordinate y (folded into 0..W by the mirror images of the walls).
struct WalledAquifer {
    double low = 0;    // wall at the low end, in the user's coordinates
    double width = 0;  // W
    double a = 0, b = 0;
    bool sourceInside = false;  // the clipped strip is not empty
};
// The aquifer spans rangeMin..rangeMax, or 0..rangeMax when the extent is 0.
// Division by a zero width is raised when the factor is built, not here.
WalledAquifer walledAquifer(double rangeMin, double rangeMax, double sourceCentre, double sourceWidth);
// Local coordinate of a user coordinate, folded by the walls' mirrors into 0..W.
double foldIntoAquifer(const WalledAquifer& aquifer, double y);

// The cosine-series coefficients of a strip a..b between walls at 0 and W, at
// the point y: c_m cos(m pi y / W), c_m = 2 (sin(m pi b / W) - sin(m pi a / W))
// / (m pi), for m = 1, 2, ... in turn, the angles advanced by rotation.
class StripModes {
public:
    StripModes(double width, double a, double b, double y);
    double next();

private:
    struct Turn {
        double c, s, cm = 1.0, sm = 0.0;
        explicit Turn(double angle) : c(std::cos(angle)), s(std::sin(angle)) {}
        void advance() {
            const double t = cm * c - sm * s;
            sm = sm * c + cm * s;
            cm = t;
        }
    };
    Turn a_, b_, y_;
    int m_ = 0;
};

// The 256-point Gauss-Legendre rule, built at its first use, for kernels
// that are handed no rule of their own.
const double* builtinNodes();
const double* builtinWeights();

}  // namespace bm::green
