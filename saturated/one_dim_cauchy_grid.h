#pragma once
// The terms of the finite Cauchy series over the x and t lists of one grid,
// shared by all the grid's threads.
//
// A term is A C, A = exp(-beta^2 D t / L^2) / W depending on t alone and
// C = (cos y beta + sin y aL) beta, y = beta x / L, on x alone. Each time keeps
// its A as far as the series is sure to stop at every x (|A C| is at most
// |A| beta (beta + |aL|)); each x keeps its C as far as the points have asked.
// Both are found by the first thread that needs them. A point of the grid
// sums these parts in the order of the series, so that its value is the
// series' own, whatever points came before and on whatever thread. Where the
// bound of the series' rounding already exceeds the tolerance part way
// through (ahead of a sharp front, most of the points there after a term or
// two), the point goes to the inversion without the rest of the series: the
// time's parts show that the rest could neither overflow nor run out of terms.
// Points of other x or t (a later inflow term, the selected point) are left
// to the series itself.

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "saturated/one_dim_kernels.h"
#include "saturated/one_dim_parameters.h"

namespace bm {

class CauchyGridTerms {
public:
    // Holds nothing where the parameters fall outside V > 0, D > 0, L > 0,
    // lambda >= 0 (all finite) or a quantity the series shares would fail.
    // Of a very long list of x or t only the first kMostHeld values are held,
    // and times only as long as they hold kMostTimeTerms terms in all.
    CauchyGridTerms(const OneDimParameters& parameters, double length, const Eigenvalues& roots,
                    const std::vector<double>& xs, const std::vector<double>& ts);
    ~CauchyGridTerms();
    CauchyGridTerms(const CauchyGridTerms&) = delete;
    CauchyGridTerms& operator=(const CauchyGridTerms&) = delete;

    static constexpr std::size_t kMostHeld = 1024;
    static constexpr std::size_t kMostTimeTerms = std::size_t{1} << 18;

    struct Time;
    struct Place;
    // The entries of t and of x (after the mid-point nudge), or null.
    // `hint` (the caller's own) is where the last was found: a grid asks for
    // the same time and the next x, again and again.
    const Time* time(double t, std::size_t& hint) const;
    const Place* place(double x, std::size_t& hint) const;
    const Time* time(double t) const {
        std::size_t hint = 0;
        return time(t, hint);
    }
    const Place* place(double x) const {
        std::size_t hint = 0;
        return place(x, hint);
    }

    // The series at a held point, as finiteCauchyRatio gives it (its flag),
    // or nothing where the kept parts did not reach its end.
    std::optional<bool> ratio(const Time& time, const Place& place, double x, double t, double& result) const;

private:
    // The entry of `value` among `entries`, its parts started by the first
    // thread that asks; null where not held.
    template <class Entry>
    const Entry* started(const std::unordered_map<std::uint64_t, std::size_t>& at, Entry* entries,
                         double Entry::*valueOf, double value, std::size_t& hint) const;
    void start(Time& time) const;
    void start(Place& place) const;
    // Finds the parts of `place` up to at least term `needed`; returns how
    // many it holds.
    int grow(const Place& place, int needed) const;

    double V_ = 0, D_ = 0, L_ = 0, lambda_ = 0, M_ = 0, U_ = 0, Q_ = 0, aL_ = 0;
    Eigenvalues roots_;
    std::unique_ptr<Time[]> times_;    // as many as timeAt_ holds, in the grid's order
    std::unique_ptr<Place[]> places_;  // as many as placeAt_ holds, in the grid's order
    std::unordered_map<std::uint64_t, std::size_t> timeAt_, placeAt_;  // by the value's bits
    mutable std::atomic<std::size_t> timeTermsHeld_ = 0;
};

}  // namespace bm
