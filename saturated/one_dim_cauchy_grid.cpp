#include "saturated/one_dim_cauchy_grid.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <cmath>
#include <limits>
#include <mutex>

#include "kernels/kern1d.h"
#include "saturated/one_dim_finite_series.h"
#include "saturated/one_dim_inversion.h"
#include "shell/base/checked_math.h"
#include "shell/base/runtime_error.h"

namespace bm {

using namespace finite_series;

struct CauchyGridTerms::Time {
    double t = 0.0;
    std::once_flag started;
    bool held = false;  // the parts were found without a fault
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
    // The parts C and 2 |y| of terms 1..filled, of room for all 500: found
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

// The position of `value` in the entries `at` holds, the next after `hint`
// first (or `hint` itself), or none.
template <class Entry>
std::optional<std::size_t> entryOf(const std::unordered_map<std::uint64_t, std::size_t>& at, const Entry* entries,
                                   double Entry::*valueOf, double value, std::size_t hint) {
    const auto key = std::bit_cast<std::uint64_t>(value);
    for (const std::size_t near : {hint, hint + 1})
        if (near < at.size() && std::bit_cast<std::uint64_t>(entries[near].*valueOf) == key) return near;
    const auto found = at.find(key);
    if (found == at.end()) return std::nullopt;
    return found->second;
}


// A point's series so far: its sum, the spread of its rounding, the terms
// summed, and whether it stopped at its tolerance or is sure to go to the
// inversion.
struct PointSeries {
    double sum = 0.0;
    double spread = 0.0;
    int terms = 0;
    bool small = false;
    bool inversion = false;
};

// Terms run.terms + 1 .. upTo of a point: the time's A, envelope and weight,
// the x's C and 2 |y|, and the test of the bound (see ratio).
struct Stretch {
    const double *a, *envelope, *weight, *c, *twoY;
    int upTo;
    double early, steady, scale;
};

template <bool kDecay>
void sumStretch(const Stretch& s, PointSeries& run) {
    double sum = run.sum;
    double spread = run.spread;
    int k = run.terms;
    while (k < s.upTo) {
        const double product = s.a[k] * s.c[k];
        sum += product;
        spread += s.envelope[k] * (s.weight[k] + s.twoY[k]);
        // Without decay only C is tested, so in practice all 500 terms run.
        const bool small = kDecay ? std::fabs(product) <= 1e-20 : std::fabs(s.c[k]) <= 1e-20;
        ++k;
        if (small) {
            run.small = true;
            break;
        }
        if (spread > s.early && inversionCertain(s.steady, s.scale, spread)) {
            run.inversion = true;
            break;
        }
    }
    run.sum = sum;
    run.spread = spread;
    run.terms = k;
}

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
    times_ = std::make_unique<Time[]>(std::min(ts.size(), kMostHeld));
    for (const double t : ts) {
        if (timeAt_.size() == kMostHeld) break;
        if (!(t > 0.0) || !std::isfinite(t) || timeAt_.contains(std::bit_cast<std::uint64_t>(t))) continue;
        times_[timeAt_.size()].t = t;
        timeAt_.emplace(std::bit_cast<std::uint64_t>(t), timeAt_.size());
    }
    places_ = std::make_unique<Place[]>(std::min(xs.size(), kMostHeld));
    for (double x : xs) {
        if (placeAt_.size() == kMostHeld) break;
        // the mid-point's nudge, as the series makes it
        x = finite_series::seriesX(x, L_);
        if (!(x >= 0.0) || !(x <= L_) || placeAt_.contains(std::bit_cast<std::uint64_t>(x))) continue;
        places_[placeAt_.size()].x = x;
        placeAt_.emplace(std::bit_cast<std::uint64_t>(x), placeAt_.size());
    }
}

CauchyGridTerms::~CauchyGridTerms() = default;

template <class Entry>
const Entry* CauchyGridTerms::started(const std::unordered_map<std::uint64_t, std::size_t>& at, Entry* entries,
                                      double Entry::*valueOf, double value, std::size_t& hint) const {
    const std::optional<std::size_t> found = entryOf(at, entries, valueOf, value, hint);
    if (!found) return nullptr;
    hint = *found;
    Entry& entry = entries[*found];
    std::call_once(entry.started, [&] { start(entry); });
    return entry.held ? &entry : nullptr;
}

const CauchyGridTerms::Time* CauchyGridTerms::time(double t, std::size_t& hint) const {
    return started(timeAt_, times_.get(), &Time::t, t, hint);
}

const CauchyGridTerms::Place* CauchyGridTerms::place(double x, std::size_t& hint) const {
    return started(placeAt_, places_.get(), &Place::x, x, hint);
}

void CauchyGridTerms::start(Time& time) const {
    // The budget only fills: once it is spent, no later time can be held.
    if (timeTermsHeld_.load(std::memory_order_relaxed) >= kMostTimeTerms) return;
    const double t = time.t;
    try {
        time.s = finiteShared(V_, D_, L_, lambda_, t);
        const double aL = std::fabs(time.s.aL);
        for (std::vector<double>* parts : {&time.a, &time.envelope, &time.weight, &time.damping}) parts->reserve(64);
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
        return;  // left to the series, which raises it at this time's first point
    }
    time.count = static_cast<int>(time.a.size());
    // Past its budget the grid keeps no more times (each is used by one line of x).
    const auto count = static_cast<std::size_t>(time.count);
    if (timeTermsHeld_.fetch_add(count, std::memory_order_relaxed) + count > kMostTimeTerms) {
        for (std::vector<double>* parts : {&time.a, &time.envelope, &time.weight, &time.damping}) *parts = {};
        return;
    }
    time.held = true;
}

void CauchyGridTerms::start(Place& place) const {
    try {
        if (lambda_ != 0.0) place.F = cauchySteady(V_, D_, L_, U_, Q_, place.x);
    } catch (const RuntimeError&) {
        return;  // left to the series
    }
    place.inversion = inversionPlace(true, V_, D_, L_, lambda_, place.x);
    place.c = std::make_unique<double[]>(static_cast<std::size_t>(kRootCount));
    place.twoY = std::make_unique<double[]>(static_cast<std::size_t>(kRootCount));
    place.held = true;
}

int CauchyGridTerms::grow(const Place& place, int needed) const {
    const std::lock_guard<std::mutex> lock(place.growing);
    const int filled = place.filled.load(std::memory_order_relaxed);
    if (filled >= needed) return filled;
    const int target = std::min(kRootCount, std::max(needed, filled + kGrowth));
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

    // Summed in stretches of the parts found so far, finding more between them.
    int available = place.filled.load(std::memory_order_acquire);
    PointSeries run;
    while (run.terms < time.count && !run.small && !run.inversion) {
        if (run.terms == available) available = grow(place, run.terms + 1);
        const Stretch stretch{time.a.data(), time.envelope.data(), time.weight.data(), place.c.get(),
                              place.twoY.get(), std::min(time.count, available), early, steady, scale};
        if (decay)
            sumStretch<true>(stretch, run);
        else
            sumStretch<false>(stretch, run);
    }
    // An overflow is raised as the sum would have raised it on the way (no
    // inversion is decided where one can happen).
    const double sum = fp::checked(run.sum);
    if (run.inversion) {
        result = finiteRatioByInversion(place.inversion, t);
        return true;
    }
    const double spread = run.spread;
    const bool small = run.small;
    const int terms = run.terms;
    if (!small && terms < kRootCount) return std::nullopt;
    // A stop at the 500th term counts as running out, as in the series.
    const bool ranOut = terms >= kRootCount;
    if (ranOut && decay) raiseError(err::TypeMismatch);
    SeriesErrors errors;
    errors.stopped = small;
    errors.spread = spread;
    errors.beta = roots_(terms);
    errors.damping = time.damping[static_cast<std::size_t>(terms - 1)];
    errors.envelope = time.envelope[static_cast<std::size_t>(terms - 1)];
    result = finiteResult(end, sum, errors);
    return !ranOut;
}

}  // namespace bm
