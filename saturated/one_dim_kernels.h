#pragma once
// The four closed-form solutions of one-dimensional transport with first-order
// decay, C/Co at one x and one t:
//
//   dC/dt = D d2C/dx2 - V dC/dx - lambda C,   C(x, 0) = 0,
//
// with the inlet held at Co (Dirichlet) or fed a flux V Co (Cauchy), and either
// a finite aquifer of length L closed by dC/dx = 0 or a semi-infinite one.
// V, D and the half-life are the record's effective values; lambda is
// ln 2 / effectiveHalfLife. Each returns true when its series met its
// tolerance (or needed none) and false when 500 terms were spent.
//
// The closed forms are evaluated as they stand wherever a bound of their
// double-precision error, taken per call from the magnitudes they combine,
// is below 1e-12. Where it is not (ahead of a sharp front the finite series
// cancel by exp(V (2x - Vt) / 4D), and the semi-infinite Cauchy solution with
// decay by V^2 / (4 lambda D)) the same solution comes from a form without the
// cancellation: the finite aquifers by inversion of their Laplace transform
// (one_dim_inversion.h), the semi-infinite Cauchy column by its
// cancellation-free form (one_dim_cauchy_decay.h). The flags, the run-time
// errors of the series and the special cases stay those of the closed forms.

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "kernels/kern1d.h"
#include "kernels/recent_cache.h"
#include "model/arrays.h"
#include "saturated/one_dim_parameters.h"

namespace bm {

// ln 2 / effectiveHalfLife (a zero half-life is error 11).
double decayRateOf(const OneDimParameters& parameters);

// The eigenvalues of a finite-aquifer series by index from 1: a table filled
// beforehand, or kern1d's roots worked out as far as the series reaches.
class Eigenvalues {
public:
    Eigenvalues(const List<double>& table) : table_(&table) {}  // NOLINT: a table stands for its eigenvalues
    explicit Eigenvalues(const RootSequence& roots) : roots_(&roots) {}
    double operator()(int i) const { return table_ ? (*table_)(i) : (*roots_)(i); }

private:
    const List<double>* table_ = nullptr;
    const RootSequence* roots_ = nullptr;
};

// rootTable: eigenvalues 1..500 of root1(V L / (2D)). Without decay
// (lambda exactly 0) the series is not run and the result is exactly 1.
bool finiteDirichletRatio(const OneDimParameters& parameters, double length, double x, double t,
                          const Eigenvalues& rootTable, double& result);

class CauchyGridTerms;

// What the terms of the finite Cauchy series share over a grid, kept by one
// thread for one model (one set of parameters, aquifer length and
// eigenvalues): each term's x part, (cos y beta + sin y aL) beta with
// y = beta x / L, by x, and its time part, exp(-beta^2 D t / L^2) / W, by t.
// A kept part is the value the series would compute in its place, so a
// result never depends on the points computed before it. The points of the
// grid itself take their parts from the terms all its threads share, when
// the store is given them.
class CauchyTermStore {
public:
    struct XPart {
        double y, c;
    };
    struct TPart {
        double damping, a;
    };
    CauchyTermStore() = default;
    explicit CauchyTermStore(const CauchyGridTerms* grid) : grid_(grid) {}
    const CauchyGridTerms* grid() const { return grid_; }
    // Where this thread last found its time and x among the grid's.
    std::size_t timeHint = 0, placeHint = 0;
    // The parts kept for x and for t (empty at first, filled by the series
    // as it reaches further terms); references that stay valid until the
    // next call.
    std::vector<XPart>& xParts(double x);
    std::vector<TPart>& tParts(double t);

private:
    // The parts of more x than this are let go and started again (a line of
    // x of a grid is kept whole up to this length).
    static constexpr std::size_t kMostXs = 1024;
    const CauchyGridTerms* grid_ = nullptr;
    std::unordered_map<std::uint64_t, std::vector<XPart>> byX_;
    RecentCache<std::uint64_t, std::vector<TPart>, 4> byT_;  // keyed by the time's bits
};

// rootTable: eigenvalues 1..500 of root3(V L / (4D), D / (L V)). The mid-point
// x = L/2 is evaluated at 1.001 L/2. With decay, 500 terms without meeting the
// tolerance are run-time error 13; without decay they are reported by the flag.
// With a store the terms' parts come from it (or from the grid's terms it is
// given) where it holds them.
bool finiteCauchyRatio(const OneDimParameters& parameters, double length, double x, double t,
                       const Eigenvalues& rootTable, double& result, CauchyTermStore* store = nullptr);

bool semiInfiniteDirichletRatio(const OneDimParameters& parameters, double x, double t, double& result);

// Without decay the first term enters as erfc((x - Vt) / S) itself, without the
// factor one half, and pi as 3.14159.
bool semiInfiniteCauchyRatio(const OneDimParameters& parameters, double x, double t, double& result);

}  // namespace bm
