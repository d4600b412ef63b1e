#include "saturated/one_dim_inversion.h"

#include <algorithm>
#include <cmath>
#include <complex>

#include "kernels/erfc_scaled.h"

namespace bm {

namespace {

using Complex = std::complex<double>;

constexpr double kPi = 3.14159265358979323846;

// The line never comes closer to the imaginary axis (where the eigenvalues of
// the series sit as poles) than 1.5 / sqrt t: closer, the strip of analyticity
// would need many more nodes; farther, the integrand grows by exp(a^2) over
// its value on the saddle.
constexpr double kLeastHeight = 1.5;
// Discretisation and truncation each below exp(-42) (6e-19) of the integrand's
// height.
constexpr double kDigits = 42.0;
// Half-width of the strip used in the error estimate, in units of 1/sqrt t.
constexpr double kWidestStrip = 6.0;

// The vertical line Re sigma = sigma0 and its midpoint rule.
struct Contour {
    double sigma0 = 0;  // Re sigma on the line
    double slope = 0;   // 2 t (sigma0 - saddle): the phase of the exponential grows as slope * y
    double height = 0;  // real part of the exponent on the real axis (<= 2.25)
    double step = 0;    // node spacing in Im sigma
    int nodes = 0;      // nodes at (j + 1/2) step, j = 0 .. nodes - 1
};

Contour contourFor(double V, double D, double lambda, double x, double t) {
    Contour c;
    const double rootT = std::sqrt(t);
    const double saddle = x / (2.0 * t * std::sqrt(D));  // of exp(s t - sigma h)
    const double b = saddle * rootT;
    const double a = std::max(b, kLeastHeight);
    c.sigma0 = a / rootT;
    c.slope = 2.0 * t * (c.sigma0 - saddle);
    const double front = x - V * t;
    // exponent at the saddle, -(x - V t)^2 / 4Dt - lambda t, plus the climb to sigma0
    c.height = -front * front / (4.0 * D * t) - lambda * t + (a - b) * (a - b);
    const double needed = kDigits + c.height;
    if (needed <= 0.0) return c;  // the whole integral is below exp(-42)
    // Midpoint rule on an analytic function of y in the strip |Im y| < d:
    // error ~ exp(height + d^2 t + d (2 t sigma0 - h) - 2 pi d / step).
    const double strip = std::min(0.5 * a, kWidestStrip);  // d sqrt t
    const double scaledStep = 2.0 * kPi * strip / (needed + strip * strip + 2.0 * strip * (a - b));
    const double reach = std::sqrt(needed);  // exp(height - t y^2) below exp(-42) beyond
    c.step = scaledStep / rootT;
    c.nodes = static_cast<int>(std::ceil(reach / scaledStep));
    return c;
}

// a / b, without the care for infinities of the library's complex division
// (nothing here comes near the ends of the range).
Complex divide(const Complex& a, const Complex& b) {
    const double scale = 1.0 / std::norm(b);
    return Complex((a.real() * b.real() + a.imag() * b.imag()) * scale,
                   (a.imag() * b.real() - a.real() * b.imag()) * scale);
}

}  // namespace

int inversionNodeCount(double V, double D, double lambda, double x, double t) {
    return contourFor(V, D, lambda, x, t).nodes;
}

double finiteRatioByInversion(bool cauchy, double V, double D, double L, double lambda, double x, double t) {
    const double rootD = std::sqrt(D);
    const double U = std::sqrt(V * V + 4.0 * D * lambda);
    const double excess = 4.0 * D * lambda / (U + V);  // U - V without cancellation
    const double c = V / (2.0 * rootD);
    const double u = U / (2.0 * rootD);
    const double h = x / rootD;
    const double l = L / rootD;

    // R at the pole sigma = u, where rho = (U - V) / (U + V): the steady part
    // is exp((V - U) x / 2D) R(u).
    const double rhoU = excess / (U + V);
    const double nearU = std::exp(-U * (L - x) / D);
    const double farU = std::exp(-U * L / D);
    const double Ru = cauchy ? (2.0 * V / (U + V)) * (1.0 + rhoU * nearU) / (1.0 - rhoU * rhoU * farU)
                             : (1.0 + rhoU * nearU) / (1.0 + rhoU * farU);

    // The pole's part in closed form.
    const double pole = 0.5 * Ru * expErfc(-excess * x / (2.0 * D), (x - U * t) / (2.0 * std::sqrt(D * t)));

    const Contour contour = contourFor(V, D, lambda, x, t);
    // Along the line sigma = sigma0 + i y_j, y_j = (j + 1/2) step, the three
    // exponentials advance by fixed factors: the reflections' by a rotation,
    // the Gaussian weight by a factor whose modulus falls geometrically.
    const double dy = contour.step;
    const double y0 = 0.5 * dy;
    Complex toOutlet = std::polar(std::exp(-2.0 * contour.sigma0 * (l - h)), -2.0 * y0 * (l - h));
    Complex roundTrip = std::polar(std::exp(-2.0 * contour.sigma0 * l), -2.0 * y0 * l);
    const Complex toOutletStep = std::polar(1.0, -2.0 * dy * (l - h));
    const Complex roundTripStep = std::polar(1.0, -2.0 * dy * l);
    Complex weight = std::polar(std::exp(contour.height - t * y0 * y0), contour.slope * y0);
    const Complex weightTurn = std::polar(1.0, contour.slope * dy);
    double weightFall = std::exp(-2.0 * t * dy * dy);  // |w_{j+1} / w_j| = exp(-t dy^2 (2j + 2))
    const double weightFallStep = weightFall;
    double sum = 0.0;
    for (int j = 0; j < contour.nodes; ++j) {
        const Complex sigma(contour.sigma0, y0 + j * dy);
        const Complex plus = sigma + c, minus = sigma - c;  // rho = minus / plus
        const Complex R = cauchy ? divide(2.0 * c * (plus + minus * toOutlet), plus * plus - minus * minus * roundTrip)
                                 : divide(plus + minus * toOutlet, plus + minus * roundTrip);
        // (R - R(u)) / (sigma - u) + R / (sigma + u) over one denominator
        const Complex remainder = divide((R - Ru) * (sigma + u) + R * (sigma - u), (sigma - u) * (sigma + u));
        sum += (weight * remainder).real();
        toOutlet *= toOutletStep;
        roundTrip *= roundTripStep;
        weight *= weightTurn * weightFall;
        weightFall *= weightFallStep;
    }
    // The solution lies in [0, 1] (a maximum principle); a rounding just past
    // either end must not reach the caller's test of those bounds.
    return std::clamp(pole + sum * contour.step / kPi, 0.0, 1.0);
}

}  // namespace bm
