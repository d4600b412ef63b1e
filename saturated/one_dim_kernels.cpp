#include "saturated/one_dim_kernels.h"

#include <bit>
#include <cmath>
#include <numbers>

#include "kernels/kern1d.h"
#include "saturated/one_dim_cauchy_decay.h"
#include "saturated/one_dim_cauchy_grid.h"
#include "saturated/one_dim_finite_series.h"
#include "shell/base/checked_math.h"
#include "shell/base/runtime_error.h"

namespace bm {

using namespace finite_series;

namespace {

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
    x = finite_series::seriesX(x, length);

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
