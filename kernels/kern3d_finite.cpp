#include "kernels/kern3d_finite.h"

#include <algorithm>
#include <cmath>

#include "kernels/interval_masses.h"
#include "kernels/kern3d_effective.h"
#include "kernels/kern3d_nodes.h"
#include "kernels/kern3d_quadrature.h"
#include "kernels/recent_cache.h"
#include "kernels/vector_math.h"
#include "kernels/kern3d_functions.h"
#include "shell/base/checked_math.h"

namespace bm::k3 {

namespace {

constexpr double kPi = 3.14159265358979323846;
// Bound on the whole neglected tail of the double series (absolute, on C/C0).
constexpr double kTailTolerance = 1e-9;
// Inside the image integral, a transverse share switches from mirror images to
// its cosine series in time once pi^2 D tau / W^2 reaches this (the spread
// 2 sqrt(D tau) is then a fifth of the extent): the series then needs at most
// 21 terms for 1e-18, and below it the patch and the four nearest images are
// exact to 1e-12 or better.
constexpr double kSeriesFrom = kPi * kPi * 0.01;
constexpr int kTimeSeriesTerms = 32;
// Modes of the double series worth one node of the image integral. The mode
// count is an upper bound, and most high modes have reached their steady value
// (one exponential), so a mode costs far less than a node's exponentials and
// erfc differences: measured, the series stays the cheaper path up to about six
// counted modes per node.
constexpr double kModesPerNode = 6.0;
// A series asked for by name is still refused beyond this many modes.
constexpr double kMostForcedModes = 2e5;

// Cosine coefficients of a patch, kept while the geometry stays the same.
struct CoefficientCache {
    double width = -1.0, p1 = 0.0, p2 = 0.0;
    int filled = -1;
    double c[kMostModes + 1];

    const double* upTo(const Strip& s, int count) {
        if (!(s.width == width && s.p1 == p1 && s.p2 == p2)) {
            filled = -1;
            width = s.width;
            p1 = s.p1;
            p2 = s.p2;
        }
        for (int m = filled + 1; m <= count; ++m) {
            if (m == 0) {
                c[0] = (s.p2 - s.p1) * s.invWidth;
            } else {
                // 2 (sin(m pi p2/W) - sin(m pi p1/W)) / (m pi), as a product so that
                // a narrow patch keeps its relative accuracy.
                const double w = m * kPi * s.invWidth;
                c[m] = 4.0 / (m * kPi) * std::cos(0.5 * w * (s.p1 + s.p2)) * std::sin(0.5 * w * (s.p2 - s.p1));
            }
        }
        filled = std::max(filled, count);
        return c;
    }
};

thread_local CoefficientCache yCoefficients, zCoefficients;
thread_local double yCosines[kMostModes + 1], zCosines[kMostModes + 1];

// cos(m pi y / W) for m = 0..count by rotation (error growing like m * eps).
void fillCosines(double* out, const Strip& s, double y, int count) {
    const double angle = kPi * y * s.invWidth;
    const double c1 = std::cos(angle), s1 = std::sin(angle);
    double c = 1.0, sn = 0.0;
    for (int m = 0; m <= count; ++m) {
        out[m] = c;
        const double next = c * c1 - sn * s1;
        sn = sn * c1 + c * s1;
        c = next;
    }
}

// Largest |A_m| of a patch of extent share w/W: A_0 = w/W, and for m >= 1
// |A_m| <= min(4 / (m pi), 2 w / W).
double largestCoefficient(const Strip& s) {
    if (s.full) return 1.0;
    const double share = (s.p2 - s.p1) * s.invWidth;
    return std::max(share, std::min(4.0 / kPi, 2.0 * share));
}

struct Problem {
    double t, x, v, dx, dy, dz, decay;
    Strip ys, zs;
    double y, z;  // folded
    double cy, cz;  // 1 / (2 sqrt(D))
};

// The semi-infinite column with decay k under a unit step: the one-dimensional
// Dirichlet solution (exp((v-U)x/(2Dx)) erfc((x-Ut)/s) + exp((v+U)x/(2Dx)) erfc((x+Ut)/s)) / 2.
struct ModeResponse {
    double t, x, v, dx, h, invS, fourDx;

    double operator()(double k) const {
        const double u2 = v * v + fourDx * k;
        if (u2 < 0.0) return columnStepResponse(makeColumn(x, v, dx, k), t);
        const double u = std::sqrt(u2);
        // v - U and v + U without cancellation (U^2 - v^2 = 4 Dx k).
        double vMinusU, vPlusU;
        if (v >= 0.0) {
            vPlusU = v + u;
            vMinusU = vPlusU > 0.0 ? -fourDx * k / vPlusU : 0.0;
        } else {
            vMinusU = v - u;
            vPlusU = fourDx * k / (u - v);
        }
        const double b1 = (x - u * t) * invS;
        if (b1 < -6.5) {
            // erfc(b1) is 2 to the last bit; the second product lies below
            // exp(-(x - v t)^2 / (4 Dx t) - k t).
            const double q = x - v * t;
            if (-q * q / (fourDx * t) - k * t < -50.0) return std::exp(vMinusU * h);
        }
        const double b2 = (x + u * t) * invS;
        return 0.5 * (expErfc(vMinusU * h, b1) + expErfc(vPlusU * h, b2));
    }
};

// The K of the series and the number of modes it takes; `modes` is huge when
// the series is out of reach.
struct SeriesPlan {
    double bigK = 0, alpha = 0, beta = 0;
    double modes = 0;
};

SeriesPlan planSeries(const Problem& pr) {
    SeriesPlan sp;
    const bool yModes = !pr.ys.full, zModes = !pr.zs.full;
    if (!yModes && !zModes) {
        sp.modes = 1;
        return sp;
    }
    sp.alpha = pr.dy * kPi * kPi * pr.ys.invWidth * pr.ys.invWidth;
    sp.beta = pr.dz * kPi * kPi * pr.zs.invWidth * pr.zs.invWidth;
    const double alpha = sp.alpha, beta = sp.beta;
    const double e = largestCoefficient(pr.ys) * largestCoefficient(pr.zs);
    const double fourDx = 4.0 * pr.dx, v = pr.v, x = pr.x;

    auto density = [&](double k) {  // P(K)
        if (yModes && zModes) return kPi / (4.0 * std::sqrt(alpha * beta)) + (1.0 / std::sqrt(alpha) + 1.0 / std::sqrt(beta)) / std::sqrt(k) + 1.0 / k;
        const double g = yModes ? alpha : beta;
        return 1.0 / std::sqrt(g * k) + 1.0 / k;
    };
    auto count = [&](double k) {  // lattice points inside the ellipse, bounded above
        if (yModes && zModes) return kPi * k / (4.0 * std::sqrt(alpha * beta)) + std::sqrt(k / alpha) + std::sqrt(k / beta) + 1.0;
        return std::sqrt(k / (yModes ? alpha : beta)) + 1.0;
    };
    // U - v for the decay lambda' + K, and the bound's factor beside g.
    auto rise = [&](double k, double& u) {
        const double s = pr.decay + k;
        u = std::sqrt(v * v + fourDx * s);
        return v >= 0.0 ? fourDx * s / (u + v) : u - v;
    };
    auto logBound = [&](double k) {
        double u;
        const double r = rise(k, u);
        return std::log(e * density(k) * (k + u / x + 2.0 * pr.dx / (x * x))) - x * r / (2.0 * pr.dx);
    };

    const double smallest = yModes && zModes ? std::min(alpha, beta) : (yModes ? alpha : beta);
    const double kMin = std::max(0.0, -(pr.decay + v * v / fourDx)) + 0.5 * smallest;
    const double logTol = std::log(kTailTolerance);
    double k = kMin;
    for (int it = 0; it < 8; ++it) {
        double u;
        rise(k, u);
        // Solve x (U - v) / (2 Dx) = ln(E P (K + U/x + 2Dx/x^2) / tol) for U, then K.
        const double need = 2.0 * pr.dx / x * (std::log(e * density(k) * (k + u / x + 2.0 * pr.dx / (x * x))) - logTol);
        const double next = need * (need + 2.0 * v) / fourDx - pr.decay;
        k = std::max(kMin, next);
    }
    for (int it = 0; it < 200 && !(logBound(k) <= logTol); ++it) k *= 1.25;
    sp.bigK = k;
    sp.modes = count(k);
    const double mostM = yModes ? std::sqrt(k / alpha) : 0.0;
    const double mostN = zModes ? std::sqrt(k / beta) : 0.0;
    if (!(logBound(k) <= logTol) || !(mostM < kMostModes) || !(mostN < kMostModes)) sp.modes = HUGE_VAL;
    return sp;
}

// The modes' column responses in the order seriesSum takes them, kept for the
// last two columns and times on each thread: they depend on x, t and the
// flow, not on y or z, and a grid's y and z loops need them again and again.
constexpr int kMostKeptModes = 16384;

struct ModesKey {
    double t, x, v, dx, decay, alpha, beta, bigK;
    int mostM, mostN;
    bool yFull, zFull;
    bool operator==(const ModesKey&) const = default;
};

struct KeptModes {
    int count = 0;
    double response[kMostKeptModes];
};

thread_local RecentCache<ModesKey, KeptModes, 2> theKeptModes;

// Calls visit(m, n, k) for every mode of the series, m outer, n inner.
template <class Visit>
void forEachMode(const Problem& pr, const SeriesPlan& sp, int mostM, Visit&& visit) {
    for (int m = 0; m <= mostM; ++m) {
        const double km = sp.alpha * m * m;
        const int nTop = pr.zs.full ? 0 : static_cast<int>(std::sqrt(std::max(0.0, sp.bigK - km) / sp.beta));
        for (int n = 0; n <= nTop; ++n) visit(m, n, pr.decay + km + sp.beta * n * n);
    }
}

double seriesSum(const Problem& pr, const SeriesPlan& sp) {
    const ModeResponse mode{pr.t, pr.x, pr.v, pr.dx, pr.x / (2.0 * pr.dx), 1.0 / (2.0 * std::sqrt(pr.dx * pr.t)),
                            4.0 * pr.dx};
    if (pr.ys.full && pr.zs.full) return mode(pr.decay);
    const int mostM = pr.ys.full ? 0 : static_cast<int>(std::sqrt(sp.bigK / sp.alpha));
    const int mostN = pr.zs.full ? 0 : static_cast<int>(std::sqrt(sp.bigK / sp.beta));
    const double* a = yCoefficients.upTo(pr.ys, mostM);
    const double* b = zCoefficients.upTo(pr.zs, mostN);
    fillCosines(yCosines, pr.ys, pr.y, mostM);
    fillCosines(zCosines, pr.zs, pr.z, mostN);

    const ModesKey key{pr.t, pr.x, pr.v, pr.dx, pr.decay, sp.alpha, sp.beta, sp.bigK, mostM, mostN, pr.ys.full, pr.zs.full};
    KeptModes* kept = theKeptModes.find(key);
    if (kept == nullptr && sp.modes <= kMostKeptModes) {
        int count = 0;
        forEachMode(pr, sp, mostM, [&](int, int, double) { ++count; });
        if (count <= kMostKeptModes) {
            kept = &theKeptModes.claim(key);
            kept->count = 0;
            forEachMode(pr, sp, mostM, [&](int, int, double k) { kept->response[kept->count++] = mode(k); });
        }
    }
    double sum = 0.0;
    int index = 0;
    forEachMode(pr, sp, mostM, [&](int m, int n, double k) {
        const int at = index++;
        const double am = (pr.ys.full ? 1.0 : a[m]) * yCosines[m];
        if (am == 0.0) return;
        const double bn = (pr.zs.full ? 1.0 : b[n]) * zCosines[n];
        if (bn == 0.0) return;
        sum += am * bn * (kept != nullptr ? kept->response[at] : mode(k));
    });
    return sum;
}

// The share of one direction's patch, with its images, after each node's
// travel time.
struct FiniteShare {
    const Strip* s;
    double y, c, rate;  // rate = pi^2 D / W^2
    const double* coef;
    double cosines[kTimeSeriesTerms + 1];

    // The numbers that determine the shares besides the nodes.
    void numbers(double (&out)[6]) const {
        out[0] = y, out[1] = c, out[2] = rate, out[3] = s->p1, out[4] = s->p2, out[5] = s->width;
    }

    // The cosine series in time at q = exp(-pi^2 D tau / W^2).
    double series(double q) const {
        const double q2 = q * q;
        double qm2 = 1.0, qOdd = q, sum = coef[0];
        for (int m = 1; m <= kTimeSeriesTerms; ++m) {
            qm2 *= qOdd;  // q^(m^2)
            qOdd *= q2;
            if (qm2 < 1e-18) break;
            sum += coef[m] * cosines[m] * qm2;
        }
        return sum;
    }

    // Short spreads: the patch and its four nearest images (mirrors in both
    // walls, shifted by the period 2W), their interval shares in one vector
    // pass; long ones: the series, its exponentials in another.
    void many(const ColumnNodes& nodes, double* out) const {
        if (s->full) {
            for (int j = 0; j < nodes.count; ++j) out[j] = 1.0;
            return;
        }
        constexpr int kChunk = 256, kImages = 5;
        const double w2 = 2.0 * s->width;
        const double images[kImages][2] = {{s->p1 - w2, s->p2 - w2}, {s->p1, s->p2},   {s->p1 + w2, s->p2 + w2},
                                           {-s->p2, -s->p1},          {w2 - s->p2, w2 - s->p1}};
        for (int from = 0; from < nodes.count; from += kChunk) {
            const int to = std::min(nodes.count, from + kChunk);
            double p[kImages * kChunk], q[kImages * kChunk], e[kChunk];
            int serial[kChunk];
            bool imaged[kChunk];
            int pairs = 0, terms = 0;
            for (int j = from; j < to; ++j) {
                const double root = nodes.sqrtTau[j];
                const double theta = rate * root * root;
                out[j] = 0.0;
                imaged[j - from] = theta < kSeriesFrom;
                if (!imaged[j - from]) {
                    serial[terms] = j;
                    e[terms++] = -theta;
                    continue;
                }
                const double r = c / root;
                for (const auto& image : images) {
                    p[pairs] = (y - image[0]) * r;
                    q[pairs++] = (y - image[1]) * r;
                }
            }
            intervalMasses(p, q, p, pairs, kSpatialReach);
            for (int j = from, k = 0; j < to; ++j)
                if (imaged[j - from])
                    for (int i = 0; i < kImages; ++i) out[j] += p[k++];
            vmath::exp(e, e, terms);
            for (int k = 0; k < terms; ++k) out[serial[k]] = series(e[k]);
        }
    }
};

FiniteShare makeShare(const Strip& s, double y, double c, double dispersion, CoefficientCache& cache) {
    FiniteShare share{&s, y, c, dispersion * kPi * kPi * s.invWidth * s.invWidth, nullptr, {}};
    if (!s.full) {
        share.coef = cache.upTo(s, kTimeSeriesTerms);
        fillCosines(share.cosines, s, y, kTimeSeriesTerms);
    }
    return share;
}

thread_local TransverseCache theYShares, theZShares;

}  // namespace

double Strip::fold(double y) const {
    const double period = 2.0 * width;
    double r = std::fmod(y - lo, period);
    if (r < 0.0) r += period;
    if (r > width) r = period - r;
    return r;
}

Strip makeStrip(double rangeMin, double rangeMax, double centre, double size) {
    Strip s;
    double lo = std::min(rangeMin, rangeMax), hi = std::max(rangeMin, rangeMax);
    if (hi - lo == 0.0) {
        lo = std::min(0.0, hi);
        hi = std::max(0.0, hi);
    }
    s.lo = lo;
    s.width = hi - lo;
    s.invWidth = fp::div(1.0, s.width);
    const double half = 0.5 * std::fabs(size);
    s.p1 = std::max(centre - half - lo, 0.0);
    s.p2 = std::min(centre + half - lo, s.width);
    s.empty = s.p1 > s.p2;
    s.full = !s.empty && s.p1 == 0.0 && s.p2 == s.width;
    return s;
}

double finiteAquiferRatio(const ThreeDimParameters& p, double t, double x, double y, double z, FinitePath path,
                          FinitePath* used) {
    Problem pr;
    pr.ys = makeStrip(p.yMin, p.yMax, p.sourceYc, p.sourceWidth);
    pr.zs = makeStrip(p.zMin, p.zMax, p.sourceZc, p.sourceHeight);
    pr.t = t;
    pr.x = x;
    pr.v = p.effectiveVelocity;
    pr.dx = p.effectiveDispersionX;
    pr.dy = p.effectiveDispersionY;
    pr.dz = p.effectiveDispersionZ;
    pr.decay = effectiveDecay(p);
    // The column divides by Dx as the transverse shares divide by Dy and Dz.
    static_cast<void>(halfInverseRoot(pr.dx));
    pr.cy = halfInverseRoot(pr.dy);
    pr.cz = halfInverseRoot(pr.dz);
    pr.y = pr.ys.fold(y);
    pr.z = pr.zs.fold(z);
    if (used) *used = FinitePath::Series;
    // A patch that misses the aquifer, or has no width or height, lets nothing in.
    if (pr.ys.empty || pr.zs.empty || pr.ys.p1 == pr.ys.p2 || pr.zs.p1 == pr.zs.p2) return 0.0;

    const Column column = makeColumn(x, pr.v, pr.dx, pr.decay);
    if (atInlet(column)) return pr.ys.p1 <= pr.y && pr.y <= pr.ys.p2 && pr.zs.p1 <= pr.z && pr.z <= pr.zs.p2 ? 1.0 : 0.0;
    const Panels plan = planPanels(column, t);
    if (plan.empty) return 0.0;  // not even the column's own response has arrived

    const SeriesPlan sp = planSeries(pr);
    const bool series = path == FinitePath::Series ? sp.modes <= kMostForcedModes
                      : path == FinitePath::Images ? false
                                                   : sp.modes <= kModesPerNode * kRulePoints * plan.count;
    if (series) return seriesSum(pr, sp);

    if (used) *used = FinitePath::Images;
    const FiniteShare sy = makeShare(pr.ys, pr.y, pr.cy, pr.dy, yCoefficients);
    const FiniteShare sz = makeShare(pr.zs, pr.z, pr.cz, pr.dz, zCoefficients);
    double yNumbers[6], zNumbers[6];
    sy.numbers(yNumbers);
    sz.numbers(zNumbers);
    return vectorTimeIntegral(column, plan, internalNodes(), internalWeights(), [&](const ColumnNodes& cn, double* out) {
        const double* fy = theYShares.shares(cn, yNumbers, [&](const ColumnNodes& n, double* f) { sy.many(n, f); });
        const double* fz = theZShares.shares(cn, zNumbers, [&](const ColumnNodes& n, double* f) { sz.many(n, f); });
        for (int j = 0; j < cn.count; ++j) out[j] = fy[j] * fz[j];
    });
}

}  // namespace bm::k3
