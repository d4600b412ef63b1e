#include "kernels/kern2d.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>

#include "kernels/green_integrals.h"
#include "kernels/edge_tails.h"
#include "kernels/interval_masses.h"
#include "kernels/recent_cache.h"
#include "kernels/transit_nodes.h"
#include "kernels/vector_math.h"
#include "kernels/walled_strip.h"
#include "shell/base/checked_math.h"

namespace bm {

static_assert(green::kMostGroupNodes <= kMostEdgeNodes);
static_assert(green::kMostGroupNodes <= green::kMostStripNodes);

TwoDimParameters::TwoDimParameters() {
    std::memset(static_cast<void*>(this), 0, sizeof *this);
    setFixedText(reservedText184, "");
    setFixedText(reservedText199, "");
    setFixedText(reservedText214, "");
    setFixedText(reservedText229, "");
    setFixedText(aquiferCode, "");
    setFixedText(contaminantCode, "");
}

namespace {

// Absolute accuracy asked of the finite-width cosine series (the whole tail).
constexpr double kSeriesTolerance = 1e-11;
// The finite-width series is summed in closed form up to this many modes;
// beyond, the image-source integral is cheaper.
constexpr double kMostSeriesModes = 100;
// Below this the one-dimensional bound says the plume has not arrived.
constexpr double kNothingArrived = 1e-16;
// Lateral factors below erfc(6.3) or exp(-44) (about 1e-19) are nothing.
constexpr double kLateralReach = 6.3;
constexpr double kLateralExponent = 44.0;
// Half-width of the Gaussian support of the point-source integrand, in its
// exponent: exp(-42) is 6e-19.
constexpr double kPointReach = 42.0;
constexpr double kPointPanelLength = 30.0;

// The record's transport values: v, Dx, Dy, loss rate k and U = sqrt(v^2 + 4 Dx k).
// A zero dispersion divides by zero here, a negative one has no square root,
// so the formulas below may divide by Dx and Dy freely.
struct Transport {
    double v, dx, dy, k, u, sqrtDx, sqrtDy;
};

Transport transport(const TwoDimParameters& p) {
    Transport c;
    c.v = p.effectiveVelocity;
    c.dx = p.effectiveDispersionX;
    c.dy = p.effectiveDispersionY;
    c.sqrtDx = fp::sqrt(c.dx);
    c.sqrtDy = fp::sqrt(c.dy);
    fp::div(1.0, c.dx);
    fp::div(1.0, c.dy);
    c.k = green::lossRate(p.effectiveHalfLife, p.netRecharge, p.porosity, p.aquiferThickness);
    c.u = fp::sqrt(fp::add(fp::mul(c.v, c.v), fp::mul(4.0 * c.dx, c.k)));
    return c;
}

// d * scale, with 0 for d = 0 even when the scale has overflowed (x tiny).
double scaled(double d, double scale) { return d == 0.0 ? 0.0 : d * scale; }

// The finite-width series: sum over modes m of c_m cos(m pi y / W) times the
// one-dimensional solution with loss k + Dy (m pi / W)^2. Stops when the bound
// on the whole remaining tail, sum of |c_m| exp(-(U_m - v) x / (2 Dx)) (each
// mode's steady amplitude bounds its transient), is below the tolerance.
// The modes' one-dimensional solutions and the count needed depend on x and
// t, not on y; the coefficients c_m cos(m pi y / W) depend on y, not on x
// and t. A grid's y loop asks for the same x and t over and over, and for
// the same y at every x and t: both are kept on each thread.
constexpr int kMostModes = static_cast<int>(kMostSeriesModes) + 20;

struct SeriesModes {
    int count = 0;  // modes 1 .. count are summed
    bool converged = false;
    double solution[kMostModes + 2];  // index m: mode m's one-dimensional solution
};

// What the finite-width kernel needs at one x and t, whatever y is.
struct ColumnKey {
    double x, t, v, dx, dy, k, width, a, b;
    bool operator==(const ColumnKey&) const = default;
};

struct Column {
    double ceiling = 0.0;  // the one-dimensional solution, above every mode's sum
    bool series = false;   // the closed-form series; else the image sources
    green::TransitRange range;  // the image sources' transit range
    SeriesModes modes;          // the series' modes, when `series`
};

thread_local RecentCache<ColumnKey, Column, 4> theColumns;

void fillSeriesModes(SeriesModes& out, const green::WalledAquifer& aq, double x, double t, const Transport& c,
                     int modeLimit) {
    const double w = aq.width;
    const double modeRate = c.dy * (green::kPi / w) * (green::kPi / w);
    const double mean = (aq.b - aq.a) / w;
    const double bound = std::min(4.0 / green::kPi, 2.0 * mean);
    auto lossOf = [&](int m) { return c.k + modeRate * m * m; };
    auto rootOf = [&](int m) { return std::sqrt(c.v * c.v + 4.0 * c.dx * lossOf(m)); };
    // (U_m - v) x / (2 Dx): minus the exponent of the mode's steady amplitude.
    auto steadyExponent = [&](int m, double um) { return -green::lowerExponent(x, c.v, c.dx, lossOf(m), um); };

    double um = c.u;
    out.solution[0] = green::semiInfiniteDirichlet(x, t, c.v, c.dx, c.k, um);
    out.count = 0;
    out.converged = false;
    double em = steadyExponent(0, um);
    for (int m = 1; m <= modeLimit + 1; ++m) {
        const double un = rootOf(m);
        const double en = steadyExponent(m, un);
        const double tail = std::min(4.0 / (m * green::kPi), bound) * std::exp(-en) / -std::expm1(-(en - em));
        if (tail <= kSeriesTolerance) {
            out.converged = true;
            break;
        }
        if (m > modeLimit) break;
        out.solution[m] = green::semiInfiniteDirichlet(x, t, c.v, c.dx, lossOf(m), un);
        out.count = m;
        um = un;
        em = en;
    }
}

// The coefficients c_m cos(m pi y / W) of one point, m = 1 .. made, made on
// demand in the order the rotations give them (so that the same point always
// gets the same bits), kept in a small table by y.
struct PointCoefficients {
    double width = 0, a = 0, b = 0, y = 0;
    bool used = false;
    int made = 0;
    std::optional<green::StripModes> rotations;
    double value[kMostModes + 1];

    bool holds(const green::WalledAquifer& aq, double at) const {
        return used && std::bit_cast<std::uint64_t>(y) == std::bit_cast<std::uint64_t>(at) &&
               std::bit_cast<std::uint64_t>(width) == std::bit_cast<std::uint64_t>(aq.width) &&
               std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(aq.a) &&
               std::bit_cast<std::uint64_t>(b) == std::bit_cast<std::uint64_t>(aq.b);
    }
};

constexpr int kKeptPointBits = 7;
thread_local PointCoefficients theCoefficients[1 << kKeptPointBits];

const double* pointCoefficients(const green::WalledAquifer& aq, double y, int count) {
    const std::uint64_t hash = std::bit_cast<std::uint64_t>(y) * 0x9E3779B97F4A7C15ull;
    PointCoefficients& kept = theCoefficients[hash >> (64 - kKeptPointBits)];
    if (!kept.holds(aq, y)) {
        kept.width = aq.width;
        kept.a = aq.a;
        kept.b = aq.b;
        kept.y = y;
        kept.used = true;
        kept.made = 0;
        kept.rotations.emplace(aq.width, aq.a, aq.b, y);
    }
    for (; kept.made < count; ++kept.made) kept.value[kept.made + 1] = kept.rotations->next();
    return kept.value;
}

double finiteSeries(const green::WalledAquifer& aq, double y, const SeriesModes& modes) {
    const double mean = (aq.b - aq.a) / aq.width;
    const double* __restrict coefficient = pointCoefficients(aq, y, modes.count);
    const double* __restrict solution = modes.solution;
    double sum = mean * solution[0];
    for (int m = 1; m <= modes.count; ++m) sum += coefficient[m] * solution[m];
    return sum;
}

// The column of (x, t): what can raise a fault is worked out before its entry
// is claimed (the series' modes, filled after, raise none), so that a fault
// leaves nothing half made behind.
const Column& newColumn(const ColumnKey& key, const green::WalledAquifer& aq, const Transport& c) {
    const double x = key.x, t = key.t;
    const double ceiling = green::semiInfiniteDirichlet(x, t, c.v, c.dx, c.k, c.u);
    bool series = false;
    green::TransitRange range;
    if (aq.sourceInside && ceiling > kNothingArrived) {
        // Modes the closed-form series needs for its tail to fall below the
        // tolerance: (U_M - v) x / (2 Dx) >= ln(4 / (pi tol)).
        const double reach = std::log(4.0 / (green::kPi * kSeriesTolerance));
        const double uNeeded = std::max(c.v, 0.0) + 2.0 * c.dx * reach / x;
        const double modes =
            aq.width / green::kPi *
            std::sqrt(std::max(0.0, (uNeeded * uNeeded - c.v * c.v - 4.0 * c.dx * c.k) / (4.0 * c.dx * c.dy)));
        series = modes <= kMostSeriesModes;
        if (!series) range = green::transitRange(x, t, c.v, c.dx, c.k, c.u);
    }
    Column& column = theColumns.claim(key);
    column.ceiling = ceiling;
    column.series = series;
    column.range = range;
    if (series) fillSeriesModes(column.modes, aq, x, t, c, kMostModes);
    return column;
}

// The Gaussian source's spread at each transit node: f = sigma^2 / (sigma^2
// + 2 Dy tau) = 1 / (1 + (rho / s)^2) and sqrt(f), which depend on x and t
// but not on y, kept for the last nodes and rho on each thread.
struct GaussianSpread {
    unsigned long long nodeSet = 0;
    double rho = 0.0;
    double f[green::kMostGroupNodes], root[green::kMostGroupNodes];
};

thread_local GaussianSpread theGaussianSpread;

const GaussianSpread& gaussianSpread(const green::TransitNodes& tn, double rho) {
    GaussianSpread& kept = theGaussianSpread;
    if (kept.nodeSet == tn.nodeSet && kept.rho == rho) return kept;
    // f = s^2 / (s^2 + rho^2), sqrt(f) = s / sqrt(s^2 + rho^2).
    const double* __restrict s = tn.s;
    double* __restrict f = kept.f;
    double* __restrict root = kept.root;
    for (int j = 0; j < tn.count; ++j) {
        root[j] = s[j] / std::sqrt(s[j] * s[j] + rho * rho);
        f[j] = root[j] * root[j];
    }
    kept.nodeSet = tn.nodeSet;
    kept.rho = rho;
    return kept;
}

}  // namespace

std::int16_t cnrml_FL(const TwoDimParameters& parameters, double t, double x, double y, double& result) {
    result = 0.0;
    if (x < 0.0) return kKernelOk;
    const green::WalledAquifer aq =
        green::walledAquifer(parameters.yMin, parameters.yMax, parameters.sourceYc, parameters.sourceWidth);
    const double local = green::foldIntoAquifer(aq, y);
    if (x == 0.0) {
        result = aq.sourceInside && local >= aq.a && local <= aq.b ? 1.0 : 0.0;
        return kKernelOk;
    }
    if (t <= 0.0) return kKernelOk;

    const Transport c = transport(parameters);
    const double inverseWidth = fp::div(1.0, aq.width);
    const ColumnKey key{x, t, c.v, c.dx, c.dy, c.k, aq.width, aq.a, aq.b};
    const Column* column = theColumns.find(key);
    if (column == nullptr) column = &newColumn(key, aq, c);
    if (!aq.sourceInside || !(column->ceiling > kNothingArrived)) return kKernelOk;
    if (column->series) {
        result = fp::checked(finiteSeries(aq, local, column->modes));
        return column->modes.converged ? kKernelOk : kKernelFailed;
    }

    // Image sources: the transit integral with the walled strip's lateral factor,
    // spread sqrt(Dy tau) / W = zeta / s.
    const green::TransitRange& range = column->range;
    const green::WalledStripFactor strip(aq, local);
    const double zeta = x * c.sqrtDy / (2.0 * c.sqrtDx) * inverseWidth;
    const double value = green::vectorTransitIntegral(range, green::builtinNodes(), green::builtinWeights(),
                                                      [&](const green::TransitNodes& tn, double* g) {
                                                          return strip.many(tn.nodeSet, tn.s, tn.count, zeta, g);
                                                      });
    result = fp::checked(value);
    return kKernelOk;
}

namespace {

// The strip's edges y1 = Yc - W/2 and y2 = Yc + W/2.
std::pair<double, double> stripEdges(const TwoDimParameters& parameters) {
    const double half = 0.5 * std::fabs(parameters.sourceWidth);
    return {parameters.sourceYc - half, parameters.sourceYc + half};
}

}  // namespace

StripOffsets stripOffsets(const TwoDimParameters& parameters, double y) {
    const auto [y1, y2] = stripEdges(parameters);
    return {y - y1, y - y2};
}

double gaussianOffset(const TwoDimParameters& parameters, double y) { return y - parameters.sourceYc; }

std::int16_t cnrml_IL(const TwoDimParameters& parameters, double t, double x, double y, double& result,
                      const double* nodes, const double* weights) {
    result = 0.0;
    if (x < 0.0) return kKernelOk;
    const auto [y1, y2] = stripEdges(parameters);
    if (x == 0.0) {
        result = y >= y1 && y <= y2 ? 1.0 : 0.0;
        return kKernelOk;
    }
    if (t <= 0.0) return kKernelOk;
    if (nodes == nullptr || weights == nullptr) return kKernelFailed;

    const Transport c = transport(parameters);
    const green::TransitRange range = green::transitRange(x, t, c.v, c.dx, c.k, c.u);
    // 1 / (2 sqrt(Dy tau)) = scale * s.
    const double scale = c.sqrtDx / c.sqrtDy / x;
    const StripOffsets d = stripOffsets(parameters, y);
    const double p1 = scaled(d.d1, scale), p2 = scaled(d.d2, scale);
    // Beside the strip the lateral factor is largest at the smallest s (the
    // longest spread): below 1e-19 there, nothing reaches the point.
    const double gap = std::max({p2, -p1, 0.0});  // scaled distance to the strip
    if (range.panels == 0 || gap * std::exp(range.wLo) > kLateralReach) return kKernelOk;
    // The strip's edges at scaled distances |p1| and |p2|, the point inside
    // when it lies strictly between them.
    const bool inside = p1 > 0.0 && p2 < 0.0;
    const double nearEdge = std::min(std::fabs(p1), std::fabs(p2)), farEdge = std::max(std::fabs(p1), std::fabs(p2));
    const double value = green::vectorTransitIntegral(range, nodes, weights, [&](const green::TransitNodes& tn, double* g) {
        stripShares(tn.nodeSet, 1.0, tn.s, tn.count, nearEdge, farEdge, inside, kPlanarReach, g);
        return tn.count;
    });
    result = fp::checked(value);
    return kKernelOk;
}


std::int16_t cnrml_IG(const TwoDimParameters& parameters, double t, double x, double y, double& result,
                      const double* nodes, const double* weights) {
    result = 0.0;
    if (x < 0.0) return kKernelOk;
    const double sigma = std::fabs(parameters.sourceStdDev);
    const double offset = gaussianOffset(parameters, y);
    const double inverseTwoVariance = fp::div(1.0, 2.0 * sigma * sigma);
    if (x == 0.0) {
        result = std::exp(-(offset * offset) * inverseTwoVariance);
        return kKernelOk;
    }
    if (t <= 0.0) return kKernelOk;
    if (nodes == nullptr || weights == nullptr) return kKernelFailed;

    const Transport c = transport(parameters);
    const green::TransitRange range = green::transitRange(x, t, c.v, c.dx, c.k, c.u);
    // sigma^2 + 2 Dy tau = sigma^2 (1 + (rho / s)^2), rho = x sqrt(Dy / (2 Dx)) / sigma.
    const double rho = x * c.sqrtDy / (sigma * std::sqrt(2.0) * c.sqrtDx);
    const double gamma = offset * offset * inverseTwoVariance;
    // The lateral factor is largest at the smallest s (the longest spread).
    const double spreadAtLongest = rho / std::exp(range.wLo);
    if (range.panels == 0 || gamma / (1.0 + spreadAtLongest * spreadAtLongest) > kLateralExponent) return kKernelOk;
    const double value = green::vectorTransitIntegral(range, nodes, weights, [&](const green::TransitNodes& tn, double* g) {
        const GaussianSpread& spread = gaussianSpread(tn, rho);
        const double* __restrict f = spread.f;
        const double* __restrict root = spread.root;
        double* __restrict out = g;
        for (int j = 0; j < tn.count; ++j) out[j] = -gamma * f[j];
        vmath::exp(out, out, tn.count);
        for (int j = 0; j < tn.count; ++j) out[j] *= root[j];
        return tn.count;
    });
    result = fp::checked(value);
    return kKernelOk;
}

std::int16_t cnrml_IC(const TwoDimParameters& parameters, double t, double x, double y, double& result,
                      const double* nodes, const double* weights) {
    result = 0.0;
    if (t <= 0.0) return kKernelOk;
    if (x == 0.0 && y == 0.0) {
        result = kAtPointSource;
        return kKernelOk;
    }
    if (nodes == nullptr || weights == nullptr) return kKernelFailed;

    // C/C0 = Q' / (4 pi n sqrt(Dx Dy)) * integral over 0 < tau < t of
    //        exp(-(x - v tau)^2 / (4 Dx tau) - y^2 / (4 Dy tau) - k tau) / tau,
    // = prefactor * exp(v x / (2 Dx)) * integral of exp(phi(w)) dw, w = ln tau,
    // phi = -a e^-w - b e^w, a = (x^2/Dx + y^2/Dy) / 4, b = v^2 / (4 Dx) + k.
    const Transport c = transport(parameters);
    const double prefactor =
        fp::div(parameters.injectionRate, fp::mul(4.0 * green::kPi * parameters.porosity, fp::sqrt(fp::mul(c.dx, c.dy))));
    const double r = std::hypot(x / c.sqrtDx, y / c.sqrtDy);
    if (r == 0.0) {
        result = kAtPointSource;
        return kKernelOk;
    }
    const double logA = 2.0 * std::log(0.5 * r);
    const double b = c.v * c.v / (4.0 * c.dx) + c.k;
    const double logT = std::log(t);

    double exponent = 0, wLo = 0, wHi = 0;
    double centre = 0, q = 0, edge = 0, bT = 0;
    bool peakInside = false;
    if (b > 0.0) {
        const double logB = std::log(b);
        centre = 0.5 * (logA - logB);
        q = std::exp(0.5 * (logA + logB));
        peakInside = centre < logT && q > 1e-200;
    }
    if (peakInside) {
        // phi - phi* = -4 q sinh^2((w - centre) / 2), phi* = -2 q. The exponent
        // v x / (2 Dx) - 2 q = v x / (2 Dx) - r sqrt(b), free of cancellation:
        const double advective = c.v * x / (2.0 * c.dx);
        const double spreadPart = r * std::sqrt(b);
        exponent = advective > 0.0
                       ? -(x * x * c.k / c.dx + y * y * b / c.dy) / (advective + spreadPart)
                       : advective - spreadPart;
        const double halfWidth = 2.0 * std::asinh(std::sqrt(kPointReach / (4.0 * q)));
        wLo = centre - halfWidth;
        wHi = std::min(centre + halfWidth, logT);
    } else {
        // phi rises all the way to w = ln t: with d = ln t - w and tau = e^w,
        // phi - phi* = expm1(-d) (a / tau - b t), which is never above 0.
        exponent = -(x - c.v * t) * (x - c.v * t) / (4.0 * c.dx * t) - y * y / (4.0 * c.dy * t) - c.k * t;
        bT = b * t;
        const double ratio = std::log(kPointReach + std::max(bT, 0.0)) - (logA - logT);
        edge = ratio > 35.0 ? ratio : std::log1p(std::exp(ratio));
        wLo = logT - edge;
        wHi = logT;
    }
    if (exponent < -745.0 || !(wHi > wLo)) return kKernelOk;

    const int panels = std::max(1, static_cast<int>(std::ceil((wHi - wLo) / kPointPanelLength)));
    const double h = (wHi - wLo) / panels, halfH = 0.5 * h;
    constexpr int n = green::kRulePoints;
    // a / t, when it is a normal number and exp(w - ln t) is one at every node.
    const double aOverT = logT - wLo < 700.0 && std::fabs(logA - logT) < 700.0 ? std::exp(logA - logT) : HUGE_VAL;
    double integral = 0.0;
    for (int p = 0; p < panels; ++p) {
        const double mid = wLo + (p + 0.5) * h;
        double sum = 0.0;
        if (peakInside) {
            // 4 sinh^2(d / 2) = u^2 / (1 + u), u = expm1(|d|), d = w - centre.
            sum = vmath::peakedSum({halfH, mid - centre, q}, nodes, weights, n);
        } else if (std::isfinite(aOverT)) {
            // exp(logA - w) = (a / t) / exp(w - ln t).
            sum = vmath::risingSum({halfH, mid - logT, aOverT, bT}, nodes, weights, n);
        } else {
            double phi[n], other[n];
            for (int i = 0; i < n; ++i) {
                const double w = mid + halfH * nodes[i];
                phi[i] = w - logT;
                other[i] = logA - w;
            }
            vmath::expm1(phi, phi, n);
            vmath::exp(other, other, n);
            for (int i = 0; i < n; ++i) phi[i] *= other[i] - bT;
            vmath::exp(phi, phi, n);
            for (int i = 0; i < n; ++i) sum += weights[i] * phi[i];
        }
        integral += halfH * sum;
    }
    result = fp::checked(prefactor * std::exp(exponent) * integral);
    return kKernelOk;
}

}  // namespace bm
