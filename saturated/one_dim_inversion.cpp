#include "saturated/one_dim_inversion.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstring>
#include <optional>

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

// What the sum over the nodes starts from: the line, the pole's residue and
// the first node's three exponentials with the factors that advance them.
struct Line {
    bool cauchy = false;
    double c = 0, u = 0, Ru = 0, pole = 0;
    Contour contour;
    double y0 = 0;
    Complex toOutlet, roundTrip, weight;
    Complex toOutletStep, roundTripStep, weightTurn;
    double weightFall = 0, weightFallStep = 0;
};

Line lineFor(const InversionPlace& place, double t) {
    const double V = place.V, D = place.D, lambda = place.lambda, x = place.x;
    const double U = place.U, excess = place.excess, h = place.h, l = place.l;
    Line line;
    line.cauchy = place.cauchy;
    line.c = place.c;
    line.u = place.u;
    line.Ru = place.Ru;

    // The pole's part in closed form.
    line.pole = 0.5 * line.Ru * expErfc(-excess * x / (2.0 * D), (x - U * t) / (2.0 * std::sqrt(D * t)));

    line.contour = contourFor(V, D, lambda, x, t);
    if (line.contour.nodes == 0) return line;  // the pole's part alone: nothing to advance along the line
    // Along the line sigma = sigma0 + i y_j, y_j = (j + 1/2) step, the three
    // exponentials advance by fixed factors: the reflections' by a rotation,
    // the Gaussian weight by a factor whose modulus falls geometrically.
    const Contour& contour = line.contour;
    const double dy = contour.step;
    line.y0 = 0.5 * dy;
    line.toOutlet = std::polar(std::exp(-2.0 * contour.sigma0 * (l - h)), -2.0 * line.y0 * (l - h));
    line.roundTrip = std::polar(std::exp(-2.0 * contour.sigma0 * l), -2.0 * line.y0 * l);
    line.toOutletStep = std::polar(1.0, -2.0 * dy * (l - h));
    line.roundTripStep = std::polar(1.0, -2.0 * dy * l);
    line.weight = std::polar(std::exp(contour.height - t * line.y0 * line.y0), contour.slope * line.y0);
    line.weightTurn = std::polar(1.0, contour.slope * dy);
    line.weightFall = std::exp(-2.0 * t * dy * dy);  // |w_{j+1} / w_j| = exp(-t dy^2 (2j + 2))
    line.weightFallStep = line.weightFall;
    return line;
}

// The solution lies in [0, 1] (a maximum principle); a rounding just past
// either end must not reach the caller's test of those bounds.
double ratioOf(const Line& line, double sum) {
    return std::clamp(line.pole + sum * line.contour.step / kPi, 0.0, 1.0);
}

// The midpoint sum, node by node in complex arithmetic.
double nodeByNodeSum(Line line) {
    const Contour& contour = line.contour;
    const double dy = contour.step;
    const double c = line.c, u = line.u;
    double sum = 0.0;
    for (int j = 0; j < contour.nodes; ++j) {
        const Complex sigma(contour.sigma0, line.y0 + j * dy);
        const Complex plus = sigma + c, minus = sigma - c;  // rho = minus / plus
        const Complex R = line.cauchy
                              ? divide(2.0 * c * (plus + minus * line.toOutlet), plus * plus - minus * minus * line.roundTrip)
                              : divide(plus + minus * line.toOutlet, plus + minus * line.roundTrip);
        // (R - R(u)) / (sigma - u) + R / (sigma + u) over one denominator
        const Complex remainder = divide((R - line.Ru) * (sigma + u) + R * (sigma - u), (sigma - u) * (sigma + u));
        sum += (line.weight * remainder).real();
        line.toOutlet *= line.toOutletStep;
        line.roundTrip *= line.roundTripStep;
        line.weight *= line.weightTurn * line.weightFall;
        line.weightFall *= line.weightFallStep;
    }
    return sum;
}

// The same sum with several nodes at a time in the lanes of a vector: the
// three exponentials are advanced node by node as above and kept, then each
// node's term is formed in the lanes by the very operations (and order) of
// the complex arithmetic above, so that where every term is finite the sum
// has the same bits. (Complex multiplication differs from the plain formula
// only where both its parts come out NaN, and a NaN would reach the sum.)
// No multiply and add are fused into one step here, on any processor.
constexpr int kLanes = 4;
// (The lanes never leave this file, so a wider vector's calling convention is no concern.)
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wpsabi"
#endif
using Lanes = double __attribute__((vector_size(kLanes * sizeof(double))));

struct LaneComplex {
    Lanes re, im;
};

constexpr int kMostLaneNodes = 128;  // (a line with lambda >= 0 has at most 67)

// Lanes j .. j + kLanes - 1 of a row.
inline Lanes lanesAt(const double* row, int j) {
    Lanes v;
    std::memcpy(&v, row + j, sizeof v);
    return v;
}

#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__)
// AVX2 where the processor has it (four lanes in one register), else SSE2.
#define BM_LANE_TARGETS __attribute__((target_clones("avx2", "default")))
#else
#define BM_LANE_TARGETS
#endif

BM_LANE_TARGETS std::optional<double> laneSum(const Line& line) {
    const Contour& contour = line.contour;
    const int nodes = contour.nodes;
    if (nodes > kMostLaneNodes) return std::nullopt;
    const int padded = (nodes + kLanes - 1) / kLanes * kLanes;
    double outletRe[kMostLaneNodes], outletIm[kMostLaneNodes], tripRe[kMostLaneNodes], tripIm[kMostLaneNodes];
    double weightRe[kMostLaneNodes], weightIm[kMostLaneNodes], ys[kMostLaneNodes];
    const double dy = contour.step;
    // The exponentials advanced as above, by the plain formula of the complex
    // product (the same bits, or a NaN that reaches the sum).
    double outR = line.toOutlet.real(), outI = line.toOutlet.imag();
    double tripR = line.roundTrip.real(), tripI = line.roundTrip.imag();
    double wR = line.weight.real(), wI = line.weight.imag();
    const double outStepR = line.toOutletStep.real(), outStepI = line.toOutletStep.imag();
    const double tripStepR = line.roundTripStep.real(), tripStepI = line.roundTripStep.imag();
    const double turnR = line.weightTurn.real(), turnI = line.weightTurn.imag();
    double fall = line.weightFall;
    for (int j = 0; j < padded; ++j) {
        outletRe[j] = outR, outletIm[j] = outI;
        tripRe[j] = tripR, tripIm[j] = tripI;
        weightRe[j] = wR, weightIm[j] = wI;
        ys[j] = line.y0 + j * dy;
        const double nextOutR = outR * outStepR - outI * outStepI, nextOutI = outR * outStepI + outI * outStepR;
        const double nextTripR = tripR * tripStepR - tripI * tripStepI, nextTripI = tripR * tripStepI + tripI * tripStepR;
        const double byR = turnR * fall, byI = turnI * fall;
        const double nextWR = wR * byR - wI * byI, nextWI = wR * byI + wI * byR;
        outR = nextOutR, outI = nextOutI, tripR = nextTripR, tripI = nextTripI, wR = nextWR, wI = nextWI;
        fall *= line.weightFallStep;
    }
    const auto times = [](const LaneComplex& a, const LaneComplex& b) {
        return LaneComplex{a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
    };
    const auto plus = [](const LaneComplex& a, const LaneComplex& b) { return LaneComplex{a.re + b.re, a.im + b.im}; };
    const auto minus = [](const LaneComplex& a, const LaneComplex& b) { return LaneComplex{a.re - b.re, a.im - b.im}; };
    const auto over = [](const LaneComplex& a, const LaneComplex& b) {
        const Lanes scale = 1.0 / (b.re * b.re + b.im * b.im);
        return LaneComplex{(a.re * b.re + a.im * b.im) * scale, (a.im * b.re - a.re * b.im) * scale};
    };
    const Lanes zero{};
    const Lanes sigma0 = zero + contour.sigma0;
    const double twoC = 2.0 * line.c;
    double terms[kMostLaneNodes];
    for (int j = 0; j < padded; j += kLanes) {
        const Lanes y = lanesAt(ys, j);
        const LaneComplex sPlusC{sigma0 + line.c, y}, sMinusC{sigma0 - line.c, y};
        const LaneComplex out{lanesAt(outletRe, j), lanesAt(outletIm, j)};
        const LaneComplex trip{lanesAt(tripRe, j), lanesAt(tripIm, j)};
        LaneComplex R;
        if (line.cauchy) {
            const LaneComplex inner = plus(sPlusC, times(sMinusC, out));
            R = over(LaneComplex{inner.re * twoC, inner.im * twoC},
                     minus(times(sPlusC, sPlusC), times(times(sMinusC, sMinusC), trip)));
        } else {
            R = over(plus(sPlusC, times(sMinusC, out)), plus(sPlusC, times(sMinusC, trip)));
        }
        const LaneComplex above{sigma0 + line.u, y}, below{sigma0 - line.u, y};
        const LaneComplex remainder =
            over(plus(times(LaneComplex{R.re - line.Ru, R.im}, above), times(R, below)), times(below, above));
        const Lanes term = lanesAt(weightRe, j) * remainder.re - lanesAt(weightIm, j) * remainder.im;
        std::memcpy(terms + j, &term, sizeof term);
    }
    double sum = 0.0;
    for (int j = 0; j < nodes; ++j) sum += terms[j];
    if (!std::isfinite(sum)) return std::nullopt;
    return sum;
}

}  // namespace

int inversionNodeCount(double V, double D, double lambda, double x, double t) {
    return contourFor(V, D, lambda, x, t).nodes;
}

InversionPlace inversionPlace(bool cauchy, double V, double D, double L, double lambda, double x) {
    InversionPlace place{.cauchy = cauchy, .V = V, .D = D, .L = L, .lambda = lambda, .x = x};
    const double rootD = std::sqrt(D);
    const double U = std::sqrt(V * V + 4.0 * D * lambda);
    const double excess = 4.0 * D * lambda / (U + V);  // U - V without cancellation
    place.U = U;
    place.excess = excess;
    place.c = V / (2.0 * rootD);
    place.u = U / (2.0 * rootD);
    place.h = x / rootD;
    place.l = L / rootD;

    // R at the pole sigma = u, where rho = (U - V) / (U + V): the steady part
    // is exp((V - U) x / 2D) R(u).
    const double rhoU = excess / (U + V);
    const double nearU = std::exp(-U * (L - x) / D);
    const double farU = std::exp(-U * L / D);
    place.Ru = cauchy ? (2.0 * V / (U + V)) * (1.0 + rhoU * nearU) / (1.0 - rhoU * rhoU * farU)
                      : (1.0 + rhoU * nearU) / (1.0 + rhoU * farU);
    return place;
}

double finiteRatioByInversion(const InversionPlace& place, double t) {
    const Line line = lineFor(place, t);
    const std::optional<double> sum = laneSum(line);
    return ratioOf(line, sum ? *sum : nodeByNodeSum(line));
}

double finiteRatioByInversion(bool cauchy, double V, double D, double L, double lambda, double x, double t) {
    return finiteRatioByInversion(inversionPlace(cauchy, V, D, L, lambda, x), t);
}

double finiteRatioByInversionNodeByNode(bool cauchy, double V, double D, double L, double lambda, double x, double t) {
    const Line line = lineFor(inversionPlace(cauchy, V, D, L, lambda, x), t);
    return ratioOf(line, nodeByNodeSum(line));
}

}  // namespace bm
