#include "saturated/one_dim_kernels.h"

#include <bit>
#include <cmath>
#include <limits>
#include <numbers>
#include <atomic>
#include <mutex>

#include "kernels/kern1d.h"
#include "saturated/one_dim_cauchy_decay.h"
#include "saturated/one_dim_inversion.h"
#include "shell/base/checked_math.h"
#include "shell/base/runtime_error.h"

namespace bm {

namespace {

// The closed forms are used as they stand wherever their rounding error in
// double precision, bounded per call from the magnitudes they combine, stays
// below this; elsewhere the same solution comes from a form that does not cancel.
constexpr double kRoundingTolerance = 1e-12;
constexpr double kEpsilon = std::numeric_limits<double>::epsilon();
// exp of more than this overflows, or nearly: the series form is beyond use there.
constexpr double kLargestExponent = 700.0;

// Quantities shared by the two finite-aquifer series.
struct FiniteShared {
    double a;    // V / (2D)
    double aL;   // a L
    double aL2;  // (a L)^2
    double L2;   // L^2
    double B;    // lambda L^2 / D
    double G;    // V^2 t / (4D)
};

FiniteShared finiteShared(double V, double D, double L, double lambda, double t) {
    FiniteShared s{};
    s.a = fp::div(V, 2.0 * D);
    s.aL = fp::mul(s.a, L);
    s.aL2 = fp::mul(s.aL, s.aL);
    s.L2 = fp::mul(L, L);
    s.B = fp::div(fp::mul(lambda * L, L), D);
    s.G = fp::div(fp::mul(V * V, t), 4.0 * D);
    return s;
}

// Quantities shared by the two semi-infinite solutions.
struct SemiInfiniteShared {
    double V;       // effective velocity
    double D;       // effective dispersion
    double lambda;  // decay rate
    double S;       // 2 sqrt(D t)
    double U;       // sqrt(4 D lambda + V^2)
    double h;       // x / (2D)
};

SemiInfiniteShared semiInfiniteShared(const OneDimParameters& parameters, double x, double t);

// One term exp(a) erfc(b) of a closed form, with the size of the error its
// arguments carry: |a| (or the size of the parts a was formed from) for the
// exponent, b^2 for the erfc's tail.
struct ErfcTerm {
    double exponentSize;
    double b;
    double value;

    // Relative rounding error of the value, in units of epsilon.
    double conditioning() const {
        const double tail = b > 0.0 ? 6.0 * b * b : std::fabs(b);
        return 8.0 + 2.0 * std::fabs(exponentSize) + tail;
    }
};

// The semi-infinite Cauchy solution with decay ends in (bracket) V^2 / (4 lambda D),
// whose bracket cancels to order lambda: its terms' rounding is multiplied by
// the amplification. True when that bound exceeds the tolerance where the
// form without cancellation applies.
bool cauchyDecayTooInexact(const SemiInfiniteShared& s, double x, double t, double ratio, double amplification,
                           const ErfcTerm& e1, const ErfcTerm& e2, const ErfcTerm& e3) {
    const bool covered =
        s.V > 0.0 && s.D > 0.0 && s.lambda > 0.0 && x >= 0.0 && t > 0.0 && std::isfinite(x) && std::isfinite(t);
    if (!covered) return false;
    const double bracket = std::fabs(ratio - 1.0) * e2.value * e2.conditioning() + 4.0 * ratio * e2.value +
                           2.0 * e1.value * e1.conditioning() + (ratio + 1.0) * e3.value * e3.conditioning();
    return !(kEpsilon * bracket * amplification <= kRoundingTolerance);  // a NaN bound is no bound
}

// Value at t = 0: the inlet alone carries the source.
double initialRatio(double x) { return x == 0.0 ? 1.0 : 0.0; }

// What the evaluation of a finite-aquifer series leaves uncertain in its sum.
struct SeriesErrors {
    double spread = 0.0;    // the terms' rounding, in units of epsilon
    double envelope = 0.0;  // size of the last term without its sine and cosine factors
    double beta = 0.0;      // its eigenvalue
    double damping = 0.0;   // and its exponent b D t / L^2
    bool stopped = false;   // the series left by its tolerance test, not by running out

    // The terms after a tolerance stop, which an exponential factor of
    // exp(e) may make count: their sizes fall at least as
    // (1 + k pi / beta) r^k with r = exp(-d), d = (2 pi beta + pi^2) D t / L^2.
    // With exact false, r / (1 - r) <= 1 / d stands in for the exponential.
    double tail(bool exact) const {
        if (!stopped || envelope == 0.0) return 0.0;
        constexpr double pi = std::numbers::pi;
        const double step = pi / beta;
        const double d = damping * step * (2.0 + step);
        if (!(d > 0.0)) return std::numeric_limits<double>::infinity();
        if (!exact) {
            const double inverse = 1.0 / d;
            return envelope * inverse * (1.0 + step * (1.0 + inverse));
        }
        const double r = std::exp(-d);
        return envelope * r / (1.0 - r) * (1.0 + step / (1.0 - r));
    }
};

// The finite series end in F - 2 M exp(e) sum (M = 1 for the Dirichlet inlet),
// where the terms of sum are of order 1 and must cancel to exp(-e): the
// rounding of the sum and the terms left out after the tolerance stop are
// multiplied by exp(e); F carries its own exponents (steadySize, in units of
// epsilon relative to F). Where the bound of these errors exceeds the
// tolerance, at points of the aquifer, the inversion gives the solution
// instead. A series that ran out of terms keeps its sum so far: that shortfall
// is what its flag reports.
struct FiniteEnd {
    bool cauchy;
    double V, D, L, lambda, x, t;
    double F, steadySize;
    double multiplier;    // M
    double exponent;      // e = a x - G - lambda t
    double exponentSize;  // |a x| + G + lambda t, for the rounding of e
};

bool covered(const FiniteEnd& end) {
    return end.V > 0.0 && end.D > 0.0 && end.L > 0.0 && end.t > 0.0 && end.x >= 0.0 && end.x <= end.L &&
           end.lambda >= 0.0 && std::isfinite(end.V) && std::isfinite(end.D) && std::isfinite(end.L) &&
           std::isfinite(end.t) && std::isfinite(end.lambda) && std::isfinite(end.exponent);
}

double byInversion(const FiniteEnd& end) {
    return finiteRatioByInversion(end.cauchy, end.V, end.D, end.L, end.lambda, end.x, end.t);
}

// The two parts of the error bound that do not depend on the sum: F's own
// rounding, and the factor 2 M exp(e) that multiplies the sum's.
double steadyError(const FiniteEnd& end) { return kEpsilon * std::fabs(end.F) * end.steadySize; }
double sumScale(const FiniteEnd& end, double factor) { return 2.0 * end.multiplier * factor; }

double finiteResult(const FiniteEnd& end, double sum, const SeriesErrors& errors) {
    const bool inside = covered(end);
    if (inside && end.exponent > kLargestExponent) return byInversion(end);
    const double factor = fp::exp(end.exponent);
    if (inside) {
        const double steady = steadyError(end);
        const double rounding = kEpsilon * (errors.spread + std::fabs(sum) * (2.0 + end.exponentSize));
        const double scale = sumScale(end, factor);
        // (a NaN bound is no bound)
        if (!(steady + scale * (rounding + errors.tail(false)) <= kRoundingTolerance) &&
            !(steady + scale * (rounding + errors.tail(true)) <= kRoundingTolerance))
            return byInversion(end);
    }
    return fp::checked(end.F - 2.0 * end.multiplier * factor * sum);
}

// The bound of finiteResult grows with the spread (every other part of it is
// at least 0, and rounding keeps the order of what it rounds): once
// steady + scale * epsilon * spread alone exceeds the tolerance, the point
// goes to the inversion whatever the rest of the series adds.
bool inversionCertain(double steady, double scale, double spread) {
    return steady + scale * (kEpsilon * spread) > kRoundingTolerance;
}

// The steady part of the Cauchy solution with decay, N / H (U and Q as shared).
double cauchySteady(double V, double D, double L, double U, double Q, double x) {
    const double N = 2.0 * V *
                     (fp::exp(fp::div((V - U) * x, 2.0 * D)) +
                      fp::exp(fp::div((U + V) * x - 2.0 * U * L, 2.0 * D)) * Q);
    const double H = Q * (V - U) * fp::exp(-fp::div(U * L, D)) + (U + V);
    return fp::div(N, H);
}

// How the Cauchy series ends at (x, t); F is 1 without decay (the exact 1).
FiniteEnd cauchyEnd(const FiniteShared& s, double V, double D, double L, double lambda, double M, double U, double F,
                    double x, double t) {
    if (lambda != 0.0)
        return FiniteEnd{.cauchy = true, .V = V, .D = D, .L = L, .lambda = lambda, .x = x, .t = t,
                         .F = F, .steadySize = 4.0 + U * L / D, .multiplier = M,
                         .exponent = s.a * x - s.G - lambda * t,
                         .exponentSize = std::fabs(s.a * x) + s.G + lambda * t};
    return FiniteEnd{.cauchy = true, .V = V, .D = D, .L = L, .lambda = 0.0, .x = x, .t = t,
                     .F = 1.0, .steadySize = 0.0, .multiplier = M, .exponent = s.a * x - s.G,
                     .exponentSize = std::fabs(s.a * x) + s.G};
}

}  // namespace

double decayRateOf(const OneDimParameters& parameters) {
    return fp::div(std::numbers::ln2, parameters.effectiveHalfLife);
}

namespace {

SemiInfiniteShared semiInfiniteShared(const OneDimParameters& parameters, double x, double t) {
    SemiInfiniteShared s{};
    s.V = parameters.effectiveVelocity;
    s.D = parameters.effectiveDispersion;
    s.lambda = decayRateOf(parameters);
    s.S = 2.0 * fp::sqrt(s.D * t);
    s.U = fp::sqrt(4.0 * s.D * s.lambda + s.V * s.V);
    s.h = fp::div(x, 2.0 * s.D);
    return s;
}

}  // namespace

bool finiteDirichletRatio(const OneDimParameters& parameters, double length, double x, double t,
                          const Eigenvalues& rootTable, double& result) {
    if (t == 0.0) {
        result = initialRatio(x);
        return true;
    }
    const double V = parameters.effectiveVelocity;
    const double D = parameters.effectiveDispersion;
    const double L = length;
    const double lambda = decayRateOf(parameters);
    const FiniteShared s = finiteShared(V, D, L, lambda, t);
    double sum = 0.0;
    bool converged = true;

    if (lambda == 0.0) {
        // Without decay the series is never entered: its loop asks for i = 500
        // on entry. The sum stays 0 and the ratio is exactly 1.
        result = fp::checked(1.0 - 2.0 * fp::exp(s.a * x - s.G) * sum);
        return converged;
    }

    int i = 1;
    SeriesErrors errors;
    // The sine's argument carries an error of epsilon beta x / L; the rest of
    // the term, beta P E / W, is at most E / beta (W >= P^2 >= beta^2 P).
    const double position = std::fabs(x / L);
    double spread = 0.0;
    double beta = 0.0, damping = 0.0, W = 1.0, PE = 0.0;  // of the last term
    while (i <= kRootCount) {
        beta = rootTable(i);
        const double b = beta * beta;
        damping = fp::div(b * D * t, s.L2);
        const double E = fp::exp(-damping);
        const double P = b + s.aL2;
        W = (P + s.aL) * (P + s.B);
        PE = P * E;
        const double T = fp::checked(fp::div(std::sin(fp::div(beta * x, L)) * beta, W) * PE);
        sum += T;
        spread += std::fabs(T) * (6.0 + 2.0 * damping) + 2.0 * position * E;
        ++i;
        if (std::fabs(T) <= 1e-30) {
            errors.stopped = true;
            break;
        }
    }
    errors.spread = spread;
    errors.beta = beta;
    errors.damping = damping;
    // At the inlet every sine vanishes: nothing is left out.
    errors.envelope = x == 0.0 ? 0.0 : std::fabs(beta / W) * PE;
    if (i > kRootCount) converged = false;

    const double U = fp::sqrt(4.0 * D * lambda + V * V);
    const double Q = fp::div(U - V, U + V);
    const double F = fp::div(fp::exp(fp::div((V - U) * x, 2.0 * D)) +
                                 fp::exp(fp::div((U + V) * x - 2.0 * U * L, 2.0 * D)) * Q,
                             1.0 + fp::exp(-fp::div(U * L, D)) * Q);
    const FiniteEnd end{.cauchy = false, .V = V, .D = D, .L = L, .lambda = lambda, .x = x, .t = t,
                        .F = F, .steadySize = 4.0 + U * L / D, .multiplier = 1.0,
                        .exponent = s.a * x - s.G - lambda * t,
                        .exponentSize = std::fabs(s.a * x) + s.G + lambda * t};
    result = finiteResult(end, sum, errors);
    return converged;
}

std::vector<CauchyTermStore::XPart>& CauchyTermStore::xParts(double x) {
    if (byX_.size() >= kMostXs && !byX_.contains(std::bit_cast<std::uint64_t>(x))) byX_.clear();
    return byX_[std::bit_cast<std::uint64_t>(x)];
}

std::vector<CauchyTermStore::TPart>& CauchyTermStore::tParts(double t) {
    const auto key = std::bit_cast<std::uint64_t>(t);
    if (std::vector<TPart>* kept = byT_.find(key)) return *kept;
    std::vector<TPart>& parts = byT_.claim(key);
    parts.clear();  // a claimed entry still holds another time's parts
    return parts;
}

bool finiteCauchyRatio(const OneDimParameters& parameters, double length, double x, double t,
                       const Eigenvalues& rootTable, double& result, CauchyTermStore* store) {
    if (t == 0.0) {
        result = initialRatio(x);
        return true;
    }
    // The mid-point of the aquifer is evaluated a little downstream of itself.
    if (x == length / 2.0) x = x * 1.001;

    if (const CauchyGridTerms* grid = store != nullptr ? store->grid() : nullptr) {
        const CauchyGridTerms::Time* time = grid->time(t, store->timeHint);
        const CauchyGridTerms::Place* place = time != nullptr ? grid->place(x, store->placeHint) : nullptr;
        if (place != nullptr)
            if (const std::optional<bool> converged = grid->ratio(*time, *place, x, t, result)) return *converged;
    }

    const double V = parameters.effectiveVelocity;
    const double D = parameters.effectiveDispersion;
    const double L = length;
    const double lambda = decayRateOf(parameters);
    const FiniteShared s = finiteShared(V, D, L, lambda, t);
    const double M = fp::div(V * L, D);

    double sum = 0.0;
    bool converged = true;
    bool ranOut = false;
    double A = 1.0;
    double C = 1.0;
    SeriesErrors errors;
    const double aL = std::fabs(s.aL);
    double spread = 0.0;
    double beta = 0.0, damping = 0.0;  // of the last term
    std::vector<CauchyTermStore::XPart>* const xParts = store ? &store->xParts(x) : nullptr;
    std::vector<CauchyTermStore::TPart>* const tParts = store ? &store->tParts(t) : nullptr;
    int i = 1;
    while (true) {
        // Without decay only C is tested, so in practice all 500 terms run.
        const bool small = lambda != 0.0 ? std::fabs(A * C) <= 1e-20 : std::fabs(C) <= 1e-20;
        if (small) {
            if (i >= kRootCount + 1) ranOut = true;
            errors.stopped = true;
            break;
        }
        if (i > kRootCount) {
            ranOut = true;
            break;
        }
        beta = rootTable(i);
        const double b = beta * beta;
        const auto term = static_cast<std::size_t>(i - 1);
        CauchyTermStore::XPart xPart;
        if (xParts != nullptr && term < xParts->size()) {
            xPart = (*xParts)[term];
        } else {
            xPart.y = fp::div(beta * x, L);
            xPart.c = (std::cos(xPart.y) * beta + std::sin(xPart.y) * s.aL) * beta;
            if (xParts != nullptr) xParts->push_back(xPart);
        }
        CauchyTermStore::TPart tPart;
        if (tParts != nullptr && term < tParts->size()) {
            tPart = (*tParts)[term];
        } else {
            const double P = b + s.aL2;
            const double W = lambda != 0.0 ? (P + M) * (P + s.B) : (P + M) * P;
            tPart.damping = fp::div(b * D * t, s.L2);
            tPart.a = fp::div(fp::exp(-tPart.damping), W);
            if (tParts != nullptr) tParts->push_back(tPart);
        }
        const double y = xPart.y;
        C = xPart.c;
        damping = tPart.damping;
        A = tPart.a;
        sum = fp::checked(sum + A * C);
        // |C| <= beta (beta + aL); its arguments carry errors of epsilon y, A's of epsilon damping
        spread += std::fabs(A) * beta * (beta + aL) * (4.0 + 2.0 * damping + 2.0 * std::fabs(y));
        ++i;
    }
    errors.spread = spread;
    errors.beta = beta;
    errors.damping = damping;
    errors.envelope = std::fabs(A) * beta * (beta + aL);
    if (ranOut) {
        // With decay an unconverged series is a visible failure, as a type mismatch.
        if (lambda != 0.0) raiseError(err::TypeMismatch);
        converged = false;
    }

    if (lambda != 0.0) {
        const double U = fp::sqrt(4.0 * D * lambda + V * V);
        const double Q = fp::div(U - V, U + V);
        const double F = cauchySteady(V, D, L, U, Q, x);
        result = finiteResult(cauchyEnd(s, V, D, L, lambda, M, U, F, x, t), sum, errors);
    } else {
        result = finiteResult(cauchyEnd(s, V, D, L, 0.0, M, 0.0, 1.0, x, t), sum, errors);
    }
    return converged;
}

struct CauchyGridTerms::Time {
    double t = 0.0;
    FiniteShared s{};
    // The parts of terms 1..count: A, its envelope |A| beta (beta + |aL|),
    // the weight 4 + 2 b D t / L^2 of the envelope in the spread, b D t / L^2.
    std::vector<double> a, envelope, weight, damping;
    int count = 0;
    // Every x's series meets its tolerance within count (< 500) terms, and
    // their sum cannot overflow on the way.
    bool stops = false;
};

struct CauchyGridTerms::Place {
    double x = 0.0;
    std::once_flag started;
    bool held = false;  // the steady part was found without a fault
    double F = 1.0;     // the steady part
    InversionPlace inversion;  // what the inversion at x shares over the times
    // The parts C and 2 |y| of terms 1..filled, of room for longest_: found
    // as far as the points ask, one thread at a time; once counted in
    // `filled` a part never changes.
    mutable std::unique_ptr<double[]> c, twoY;
    mutable std::atomic<int> filled = 0;
    mutable std::mutex growing;
};

namespace {

// A term whose envelope is below this leaves every x's series at its
// tolerance: |A C| exceeds the envelope by a few roundings at most.
constexpr double kSureStop = 1e-20 * (1.0 - 1e-12);
// The envelopes of one time add up to less than this: no partial sum overflows.
constexpr double kSafeTotal = 1e300;
// An x's parts grow by at least this many terms at a time.
constexpr int kGrowth = 16;

}  // namespace

CauchyGridTerms::CauchyGridTerms(const OneDimParameters& parameters, double length, const Eigenvalues& roots,
                                 const std::vector<double>& xs, const std::vector<double>& ts)
    : roots_(roots) {
    V_ = parameters.effectiveVelocity;
    D_ = parameters.effectiveDispersion;
    L_ = length;
    const bool plain = V_ > 0.0 && D_ > 0.0 && L_ > 0.0 && std::isfinite(V_) && std::isfinite(D_) && std::isfinite(L_);
    if (!plain) return;
    try {
        lambda_ = decayRateOf(parameters);
        if (!(lambda_ >= 0.0) || !std::isfinite(lambda_)) return;
        M_ = fp::div(V_ * L_, D_);
        aL_ = fp::mul(fp::div(V_, 2.0 * D_), L_);  // as the shared quantities have it
        if (lambda_ != 0.0) {
            U_ = fp::sqrt(4.0 * D_ * lambda_ + V_ * V_);
            Q_ = fp::div(U_ - V_, U_ + V_);
        }
    } catch (const RuntimeError&) {
        return;  // the series raises it at the first point
    }
    for (const double t : ts) {
        const auto key = std::bit_cast<std::uint64_t>(t);
        if (!(t > 0.0) || !std::isfinite(t) || timeAt_.contains(key)) continue;
        Time time;
        time.t = t;
        try {
            time.s = finiteShared(V_, D_, L_, lambda_, t);
            const double aL = std::fabs(time.s.aL);
            double total = 0.0;
            for (int i = 1; i <= kRootCount; ++i) {
                const double beta = roots_(i);
                const double b = beta * beta;
                const double P = b + time.s.aL2;
                const double W = lambda_ != 0.0 ? (P + M_) * (P + time.s.B) : (P + M_) * P;
                const double damping = fp::div(b * D_ * t, time.s.L2);
                const double a = fp::div(fp::exp(-damping), W);
                const double envelope = std::fabs(a) * beta * (beta + aL);
                time.a.push_back(a);
                time.envelope.push_back(envelope);
                time.weight.push_back(4.0 + 2.0 * damping);
                time.damping.push_back(damping);
                total += envelope;
                if (lambda_ != 0.0 && i < kRootCount && envelope <= kSureStop) {
                    time.stops = total < kSafeTotal;
                    break;
                }
            }
        } catch (const RuntimeError&) {
            continue;  // left to the series, which raises it at this time's first point
        }
        time.count = static_cast<int>(time.a.size());
        longest_ = std::max(longest_, time.count);
        timeAt_.emplace(key, times_.size());
        times_.push_back(std::move(time));
    }
    places_ = std::make_unique<Place[]>(xs.size());
    std::size_t held = 0;
    for (double x : xs) {
        // the mid-point's nudge, as the series makes it
        if (x == L_ / 2.0) x = x * 1.001;
        const auto key = std::bit_cast<std::uint64_t>(x);
        if (!(x >= 0.0) || !(x <= L_) || placeAt_.contains(key)) continue;
        places_[held].x = x;
        placeAt_.emplace(key, held++);
    }
}

CauchyGridTerms::~CauchyGridTerms() = default;

const CauchyGridTerms::Time* CauchyGridTerms::time(double t, std::size_t& hint) const {
    const auto key = std::bit_cast<std::uint64_t>(t);
    if (hint < times_.size() && std::bit_cast<std::uint64_t>(times_[hint].t) == key) return &times_[hint];
    const auto found = timeAt_.find(key);
    if (found == timeAt_.end()) return nullptr;
    hint = found->second;
    return &times_[hint];
}

const CauchyGridTerms::Place* CauchyGridTerms::place(double x, std::size_t& hint) const {
    const auto key = std::bit_cast<std::uint64_t>(x);
    std::size_t at = hint + 1;  // the next x of a line, as a rule
    if (!(at < placeAt_.size() && std::bit_cast<std::uint64_t>(places_[at].x) == key)) {
        const auto found = placeAt_.find(key);
        if (found == placeAt_.end()) return nullptr;
        at = found->second;
    }
    hint = at;
    Place& place = places_[at];
    std::call_once(place.started, [&] { start(place); });
    return place.held ? &place : nullptr;
}

void CauchyGridTerms::start(Place& place) const {
    try {
        if (lambda_ != 0.0) place.F = cauchySteady(V_, D_, L_, U_, Q_, place.x);
    } catch (const RuntimeError&) {
        return;  // left to the series
    }
    place.inversion = inversionPlace(true, V_, D_, L_, lambda_, place.x);
    place.c = std::make_unique<double[]>(static_cast<std::size_t>(longest_));
    place.twoY = std::make_unique<double[]>(static_cast<std::size_t>(longest_));
    place.held = true;
}

int CauchyGridTerms::grow(const Place& place, int needed) const {
    const std::lock_guard<std::mutex> lock(place.growing);
    const int filled = place.filled.load(std::memory_order_relaxed);
    if (filled >= needed) return filled;
    const int target = std::min(longest_, std::max(needed, filled + kGrowth));
    for (int i = filled + 1; i <= target; ++i) {
        const double beta = roots_(i);
        const double y = beta * place.x / L_;  // 0 <= x <= L: no fault
        place.c[static_cast<std::size_t>(i - 1)] = (std::cos(y) * beta + std::sin(y) * aL_) * beta;
        place.twoY[static_cast<std::size_t>(i - 1)] = 2.0 * std::fabs(y);
    }
    place.filled.store(target, std::memory_order_release);
    return target;
}

std::optional<bool> CauchyGridTerms::ratio(const Time& time, const Place& place, double x, double t,
                                           double& result) const {
    const FiniteEnd end = cauchyEnd(time.s, V_, D_, L_, lambda_, M_, U_, place.F, x, t);
    const bool decay = lambda_ != 0.0;
    // Where the series is sure to stop, the bound may send the point to the
    // inversion before the series is summed: a spread above `early` is
    // looked at closely.
    double steady = 0.0, scale = 0.0;
    double early = std::numeric_limits<double>::infinity();
    if (decay && time.stops && covered(end)) {
        if (end.exponent > kLargestExponent) {
            result = finiteRatioByInversion(place.inversion, t);
            return true;
        }
        steady = steadyError(end);
        scale = sumScale(end, std::exp(end.exponent));
        if (inversionCertain(steady, scale, 0.0)) {
            result = finiteRatioByInversion(place.inversion, t);
            return true;
        }
        early = (kRoundingTolerance - steady) / (scale * kEpsilon) * (1.0 - 1e-9);
    }

    const double* const a = time.a.data();
    const double* const envelope = time.envelope.data();
    const double* const weight = time.weight.data();
    const double* const c = place.c.get();
    const double* const twoY = place.twoY.get();
    int available = place.filled.load(std::memory_order_acquire);
    double sum = 0.0;
    double spread = 0.0;
    bool small = false;
    int terms = 0;
    while (terms < time.count) {
        const int k = terms++;
        if (k == available) available = grow(place, terms);
        const double product = a[k] * c[k];
        sum = fp::checked(sum + product);
        spread += envelope[k] * (weight[k] + twoY[k]);
        // Without decay only C is tested, so in practice all 500 terms run.
        small = decay ? std::fabs(product) <= 1e-20 : std::fabs(c[k]) <= 1e-20;
        if (small) break;
        if (spread > early && inversionCertain(steady, scale, spread)) {
            result = finiteRatioByInversion(place.inversion, t);
            return true;
        }
    }
    if (!small && terms < kRootCount) return std::nullopt;
    // A stop at the 500th term counts as running out, as in the series.
    const bool ranOut = terms >= kRootCount;
    if (ranOut && decay) raiseError(err::TypeMismatch);
    SeriesErrors errors;
    errors.stopped = small;
    errors.spread = spread;
    errors.beta = roots_(terms);
    errors.damping = time.damping[static_cast<std::size_t>(terms - 1)];
    errors.envelope = envelope[terms - 1];
    result = finiteResult(end, sum, errors);
    return !ranOut;
}

bool semiInfiniteDirichletRatio(const OneDimParameters& parameters, double x, double t, double& result) {
    if (t == 0.0) {
        result = initialRatio(x);
        return true;
    }
    const SemiInfiniteShared s = semiInfiniteShared(parameters, x, t);
    const double V = s.V, D = s.D, U = s.U, S = s.S;
    double e1 = 0.0;
    double e2 = 0.0;
    if (s.lambda == 0.0) {
        exerfc(0.0, fp::div(x - t * V, S), e1);
        exerfc(fp::div(x * V, D), fp::div(x + t * V, S), e2);
    } else {
        exerfc((V - U) * s.h, fp::div(x - U * t, S), e1);
        exerfc((U + V) * s.h, fp::div(x + U * t, S), e2);
    }
    result = fp::checked((e1 + e2) / 2.0);
    return true;
}

bool semiInfiniteCauchyRatio(const OneDimParameters& parameters, double x, double t, double& result) {
    if (t == 0.0) {
        result = initialRatio(x);
        return true;
    }
    const SemiInfiniteShared s = semiInfiniteShared(parameters, x, t);
    const double V = s.V, D = s.D, U = s.U, S = s.S, h = s.h, lambda = s.lambda;
    const double M = fp::div(x * V, D);
    if (lambda == 0.0) {
        double e1 = 0.0;
        double e2 = 0.0;
        exerfc(0.0, fp::div(x - t * V, S), e1);
        exerfc(M, fp::div(t * V + x, S), e2);
        const double P = 0.5 * e2 * (1.0 + fp::div((t * V + x) * V, D));
        const double Z = fp::exp(-fp::div((x - t * V) * (x - t * V), 4.0 * D * t)) * V *
                         fp::sqrt(fp::div(t, D * 3.14159));
        // e1 enters whole, without the one half that e2 carries.
        result = fp::checked(e1 - P + Z);
        return true;
    }
    double e1 = 0.0;
    double e2 = 0.0;
    double e3 = 0.0;
    const double a1 = M - lambda * t, b1 = fp::div(t * V + x, S);
    const double a2 = (V - U) * h, b2 = fp::div(x - U * t, S);
    const double a3 = (U + V) * h, b3 = fp::div(U * t + x, S);
    exerfc(a1, b1, e1);
    exerfc(a2, b2, e2);
    exerfc(a3, b3, e3);
    const double ratio = fp::div(U, V);
    // Unchecked here: a decay rate so small that this overflows is the extreme
    // of the cancellation, which the other form takes over.
    const double amplification = V * V / (4.0 * lambda * D);
    if (cauchyDecayTooInexact(s, x, t, ratio, amplification, {M + lambda * t, b1, e1}, {U * h, b2, e2}, {a3, b3, e3})) {
        result = semiInfiniteCauchyWithDecay(V, D, lambda, x, t);
        return true;
    }
    result = fp::checked(((ratio - 1.0) * e2 + 2.0 * e1 - (ratio + 1.0) * e3) * fp::div(V * V, 4.0 * lambda * D));
    return true;
}

}  // namespace bm
