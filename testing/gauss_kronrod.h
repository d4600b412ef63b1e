#pragma once
// The numerical-integration oracle of the reference solutions: the Gauss-
// Kronrod 7/15 rule on a panel, with |K15 - G7| as its error estimate, and two
// ways of making it adaptive: local halving of a panel until its estimate
// meets its share of the tolerance, and global refinement of the panel with the
// largest estimate until the estimates sum to the tolerance. Any floating type
// (double, long double).

#include <algorithm>
#include <cmath>
#include <vector>

namespace bm::testkit {

// Kronrod 15 points on [-1, 1] (positive half, the centre last) and weights;
// the Gauss 7 weights belong to the odd entries (1, 3, 5, 7). The classical table.
inline constexpr long double kKronrodNodes[8] = {
    0.991455371120812639206854697526329L, 0.949107912342758524526189684047851L, 0.864864423359769072789712788640926L,
    0.741531185599394439863864773280788L, 0.586087235467691130294144845693013L, 0.405845151377397166906606412076961L,
    0.207784955007898467600689403773245L, 0.0L};
inline constexpr long double kKronrodWeights[8] = {
    0.022935322010529224963732008058970L, 0.063092092629978553290700663189204L, 0.104790010322250183839876322541518L,
    0.140653259715525918745189590510238L, 0.169004726639267902826583426598550L, 0.190350578064785409913256402421014L,
    0.204432940075298892414161999234649L, 0.209482141084727828012999174891714L};
inline constexpr long double kGaussWeights[4] = {0.129484966168869693270611432679082L, 0.279705391489276667901467771423780L,
                                                 0.381830050505118944950369775488975L, 0.417959183673469387755102040816327L};

template <class Real>
struct KronrodPanel {
    Real a, b, value, error;
};

// The rule on [a, b]: the Kronrod value and its error estimate |K15 - G7|.
template <class Real, class F>
KronrodPanel<Real> kronrodPanel(const F& f, Real a, Real b) {
    const Real centre = (a + b) / 2, half = (b - a) / 2;
    const Real fc = f(centre);
    Real kronrod = Real(kKronrodWeights[7]) * fc, gauss = Real(kGaussWeights[3]) * fc;
    for (int i = 0; i < 7; ++i) {
        const Real pair = f(centre - half * Real(kKronrodNodes[i])) + f(centre + half * Real(kKronrodNodes[i]));
        kronrod += Real(kKronrodWeights[i]) * pair;
        if (i % 2 == 1) gauss += Real(kGaussWeights[i / 2]) * pair;
    }
    return {a, b, kronrod * half, std::fabs(kronrod - gauss) * half};
}

// When local halving stops besides the tolerance: at a depth, when the
// estimate is below the rounding of the panel's own value (relative), or when
// a budget of evaluations (15 a panel) is spent.
struct HalvingLimits {
    int maxDepth = 40;
    double relativeFloor = 0.0;
    long* budget = nullptr;
};

// Local adaptivity: a panel whose estimate misses the tolerance is halved,
// each half getting half the tolerance.
template <class Real, class F>
Real adaptiveGaussKronrod(const F& f, Real a, Real b, Real tolerance, HalvingLimits limits = {}, int depth = 0) {
    const KronrodPanel<Real> p = kronrodPanel(f, a, b);
    if (limits.budget) *limits.budget -= 15;
    if (p.error <= tolerance || p.error <= Real(limits.relativeFloor) * std::fabs(p.value) ||
        depth >= limits.maxDepth || (limits.budget && *limits.budget <= 0))
        return p.value;
    const Real middle = (a + b) / 2;
    return adaptiveGaussKronrod(f, a, middle, tolerance / 2, limits, depth + 1) +
           adaptiveGaussKronrod(f, middle, b, tolerance / 2, limits, depth + 1);
}

// Global adaptivity: `panels` equal panels, then the panel of largest estimate
// split until the estimates sum to the tolerance (or no panel can be split, or
// `maxSplits` were made). |K15 - G7| overstates the error of K15 by orders of
// magnitude on smooth panels, so the result is better than asked.
template <class Real, class F>
Real globalGaussKronrod(const F& f, Real a, Real b, Real tolerance, int panels, int maxSplits = 20000) {
    std::vector<KronrodPanel<Real>> list;
    const Real width = (b - a) / panels;
    for (int k = 0; k < panels; ++k) list.push_back(kronrodPanel(f, a + k * width, k + 1 == panels ? b : a + (k + 1) * width));
    for (int split = 0; split < maxSplits; ++split) {
        Real total = 0;
        std::size_t worst = 0;
        for (std::size_t i = 0; i < list.size(); ++i) {
            total += list[i].error;
            if (list[i].error > list[worst].error) worst = i;
        }
        if (total <= tolerance) break;
        const KronrodPanel<Real> p = list[worst];
        const Real centre = (p.a + p.b) / 2;
        if (!(centre > p.a && centre < p.b)) break;  // no room left to split
        list[worst] = kronrodPanel(f, p.a, centre);
        list.push_back(kronrodPanel(f, centre, p.b));
    }
    Real sum = 0;
    for (const KronrodPanel<Real>& p : list) sum += p.value;
    return sum;
}

}  // namespace bm::testkit
