#include "transport_green_reference.h"

#include <cmath>
#include <vector>

namespace bm::testkit {

namespace {

using Real = long double;
const Real kPi = 3.14159265358979323846264338327950288L;
const Real kSqrtPi = std::sqrt(kPi);

// Kronrod 15 points (positive half, the centre last) and weights; the Gauss 7
// weights belong to the odd entries (1, 3, 5, 7).
const Real kNodes[8] = {0.991455371120812639206854697526329L, 0.949107912342758524526189684047851L,
                        0.864864423359769072789712788640926L, 0.741531185599394439863864773280788L,
                        0.586087235467691130294144845693013L, 0.405845151377397166906606412076961L,
                        0.207784955007898467600689403773245L, 0.0L};
const Real kKronrod[8] = {0.022935322010529224963732008058970L, 0.063092092629978553290700663189204L,
                          0.104790010322250183839876322541518L, 0.140653259715525918745189590510238L,
                          0.169004726639267902826583426598550L, 0.190350578064785409913256402421014L,
                          0.204432940075298892414161999234649L, 0.209482141084727828012999174891714L};
const Real kGauss[4] = {0.129484966168869693270611432679082L, 0.279705391489276667901467771423780L,
                        0.381830050505118944950369775488975L, 0.417959183673469387755102040816327L};

struct Panel {
    Real a, b, value, error;
};

Panel kronrodPanel(const std::function<Real(Real)>& f, Real a, Real b) {
    const Real centre = (a + b) / 2, half = (b - a) / 2;
    Real kronrod = 0, gauss = 0;
    for (int i = 0; i < 8; ++i) {
        const Real value = i == 7 ? f(centre) : f(centre - half * kNodes[i]) + f(centre + half * kNodes[i]);
        kronrod += kKronrod[i] * value;
        if (i % 2 == 1) gauss += kGauss[i / 2] * value;
    }
    return {a, b, kronrod * half, std::fabs(kronrod - gauss) * half};
}

// The integral over u in (0, sqrt t) with tau = u^2, which takes the
// 1/sqrt(tau) of the Cauchy pulse at x = 0 out of the integrand; the pulse's
// peak near tau = x / V is a panel boundary.
Real timeIntegral(const std::function<Real(Real)>& pulse, double V, double lambda, double x, double t) {
    const Real top = std::sqrt(Real(t));
    auto integrand = [&](Real u) {
        const Real tau = u * u;
        return 2 * u * std::exp(-Real(lambda) * tau) * pulse(tau);
    };
    constexpr Real kTolerance = 1e-17L;
    const Real peak = V > 0 ? std::sqrt(Real(x) / V) : top;
    if (peak > 0 && peak < top)
        return integrate(integrand, 0, peak, kTolerance / 2) + integrate(integrand, peak, top, kTolerance / 2);
    return integrate(integrand, 0, top, kTolerance);
}

}  // namespace

long double erfcxLong(long double x) {
    if (x < 0) return 2 * std::exp(x * x) - erfcxLong(-x);
    if (x < 2) {
        // erf(x) = 2/sqrt(pi) exp(-x^2) sum 2^n x^(2n+1) / (2n+1)!!, all terms positive
        Real term = x, sum = x;
        for (int n = 1; n < 1000; ++n) {
            term *= 2 * x * x / (2 * n + 1);
            sum += term;
            if (term < 1e-22L * sum) break;
        }
        return std::exp(x * x) - 2 / kSqrtPi * sum;
    }
    // erfcx(x) = 1 / (sqrt(pi) K), K = x + (1/2)/(x + (2/2)/(x + (3/2)/(x + ...))), by modified Lentz.
    Real f = x, c = x, d = 0;
    for (int j = 1; j < 100000; ++j) {
        const Real a = j / 2.0L;
        d = x + a * d;
        c = x + a / c;
        d = 1 / d;
        const Real delta = c * d;
        f *= delta;
        if (std::fabs(delta - 1) < 1e-21L) break;
    }
    return 1 / (kSqrtPi * f);
}

long double erfcLong(long double x) {
    if (x < 0) return 2 - erfcLong(-x);
    return std::exp(-x * x) * erfcxLong(x);
}

long double integrate(const std::function<long double(long double)>& f, long double a, long double b,
                      long double tolerance, int panels) {
    // Global adaptivity: split the panel of largest error estimate until the
    // estimates sum to the tolerance. |K15 - G7| overstates the error of K15
    // by orders of magnitude on smooth panels, so the result is better than asked.
    std::vector<Panel> list;
    const Real width = (b - a) / panels;
    for (int k = 0; k < panels; ++k)
        list.push_back(kronrodPanel(f, a + k * width, k + 1 == panels ? b : a + (k + 1) * width));
    for (int split = 0; split < 20000; ++split) {
        Real total = 0;
        std::size_t worst = 0;
        for (std::size_t i = 0; i < list.size(); ++i) {
            total += list[i].error;
            if (list[i].error > list[worst].error) worst = i;
        }
        if (total <= tolerance) break;
        const Panel p = list[worst];
        const Real centre = (p.a + p.b) / 2;
        if (!(centre > p.a && centre < p.b)) break;  // no room left to split
        list[worst] = kronrodPanel(f, p.a, centre);
        list.push_back(kronrodPanel(f, centre, p.b));
    }
    Real sum = 0;
    for (const Panel& p : list) sum += p.value;
    return sum;
}

long double dirichletPulse(long double V, long double D, long double x, long double tau) {
    const Real xi = (x - V * tau) / (2 * std::sqrt(D * tau));
    return x / (2 * std::sqrt(kPi * D * tau * tau * tau)) * std::exp(-xi * xi);
}

long double cauchyPulse(long double V, long double D, long double x, long double tau) {
    const Real root = 2 * std::sqrt(D * tau);
    const Real xi = (x - V * tau) / root, eta = (x + V * tau) / root;
    return std::exp(-xi * xi) * (V / std::sqrt(kPi * D * tau) - V * V / (2 * D) * erfcxLong(eta));
}

long double semiInfiniteDirichletByQuadrature(double V, double D, double lambda, double x, double t) {
    if (t == 0) return x == 0 ? 1 : 0;
    if (x == 0) return 1;  // the inlet itself
    return timeIntegral([&](Real tau) { return dirichletPulse(V, D, x, tau); }, V, lambda, x, t);
}

long double semiInfiniteCauchyByQuadrature(double V, double D, double lambda, double x, double t) {
    if (t == 0) return 0;
    return timeIntegral([&](Real tau) { return cauchyPulse(V, D, x, tau); }, V, lambda, x, t);
}

long double semiInfiniteDirichletClosedForm(double V, double D, double lambda, double x, double t) {
    if (t == 0) return x == 0 ? 1 : 0;
    const Real v = V, d = D, X = x, T = t;
    const Real U = std::sqrt(v * v + 4 * d * Real(lambda));
    const Real S = 2 * std::sqrt(d * T);
    const Real near = std::exp((v - U) * X / (2 * d)) * erfcLong((X - U * T) / S);
    const Real eta = (X + U * T) / S;  // >= 0: exp((V + U) x / 2D) erfc(eta) as one exponential times erfcx
    const Real far = std::exp((v + U) * X / (2 * d) - eta * eta) * erfcxLong(eta);
    return (near + far) / 2;
}

}  // namespace bm::testkit
