#include "testing/transport_chebyshev_reference.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace bm::testkit {

namespace {

using Real = long double;
const Real kPi = 3.14159265358979323846264338327950288L;

using Matrix = std::vector<Real>;  // row-major

Matrix multiply(const Matrix& a, const Matrix& b, int n) {
    Matrix c(static_cast<std::size_t>(n) * n, 0.0L);
    for (int i = 0; i < n; ++i) {
        Real* ci = &c[static_cast<std::size_t>(i) * n];
        for (int k = 0; k < n; ++k) {
            const Real aik = a[static_cast<std::size_t>(i) * n + k];
            if (aik == 0) continue;
            const Real* bk = &b[static_cast<std::size_t>(k) * n];
            for (int j = 0; j < n; ++j) ci[j] += aik * bk[j];
        }
    }
    return c;
}

// Chebyshev-Gauss-Lobatto points of [0, L] (x_0 = 0, x_N = L) and the first
// derivative matrix there, built from the exact differences of the points so
// that no digits are lost where they crowd.
struct Collocation {
    int N;
    std::vector<Real> x;
    Matrix d1;  // (N+1) by (N+1)
    Matrix d2;

    Collocation(int intervals, Real L) : N(intervals), x(intervals + 1), d1((intervals + 1) * (intervals + 1)) {
        const int n = N + 1;
        for (int j = 0; j <= N; ++j) x[j] = L * (1 - std::cos(kPi * j / N)) / 2;
        x[0] = 0;
        x[N] = L;
        auto weight = [&](int j) { return (j == 0 || j == N) ? Real(2) : Real(1); };
        // d/dx = -(2/L) d/ds with s = cos(pi j / N).
        for (int i = 0; i <= N; ++i) {
            Real diagonal = 0;
            for (int j = 0; j <= N; ++j) {
                if (i == j) continue;
                // s_i - s_j = 2 sin(pi (j + i) / 2N) sin(pi (j - i) / 2N)
                const Real ds = 2 * std::sin(kPi * (j + i) / (2 * N)) * std::sin(kPi * (j - i) / (2 * N));
                const Real sign = ((i + j) % 2) ? -1 : 1;
                const Real entry = -(2 / L) * weight(i) / weight(j) * sign / ds;
                d1[static_cast<std::size_t>(i) * n + j] = entry;
                diagonal -= entry;  // rows of a differentiation matrix sum to 0
            }
            d1[static_cast<std::size_t>(i) * n + i] = diagonal;
        }
        d2 = multiply(d1, d1, n);
    }

    Real D1(int i, int j) const { return d1[static_cast<std::size_t>(i) * (N + 1) + j]; }
    Real D2(int i, int j) const { return d2[static_cast<std::size_t>(i) * (N + 1) + j]; }

    // Barycentric interpolation of the point values u at x.
    Real interpolate(const std::vector<Real>& u, Real at) const {
        Real numerator = 0, denominator = 0;
        for (int j = 0; j <= N; ++j) {
            const Real difference = at - x[j];
            if (difference == 0) return u[j];
            const Real w = ((j % 2) ? -1 : 1) * ((j == 0 || j == N) ? Real(0.5) : Real(1)) / difference;
            numerator += w * u[j];
            denominator += w;
        }
        return numerator / denominator;
    }
};

}  // namespace

std::vector<long double> matrixExponential(const std::vector<long double>& m, int n) {
    // Scale to a 1-norm of at most 1, sum the Taylor series to well past the
    // precision (1/25! < 1e-25), square back.
    Real norm = 0;
    for (int j = 0; j < n; ++j) {
        Real column = 0;
        for (int i = 0; i < n; ++i) column += std::fabs(m[static_cast<std::size_t>(i) * n + j]);
        norm = std::max(norm, column);
    }
    int squarings = 0;
    while (norm > 1) {
        norm /= 2;
        ++squarings;
    }
    const Real scale = std::ldexp(Real(1), -squarings);
    const std::size_t size = static_cast<std::size_t>(n) * n;
    // Powers I, x, x^2, x^3, x^4 and x^5 of the scaled matrix.
    std::vector<Matrix> power(6);
    power[0].assign(size, 0.0L);
    for (int i = 0; i < n; ++i) power[0][static_cast<std::size_t>(i) * n + i] = 1;
    power[1] = m;
    for (Real& v : power[1]) v *= scale;
    for (int k = 2; k <= 5; ++k) power[k] = multiply(power[k - 1], power[1], n);
    // sum over k <= 24 of x^k / k! in blocks of five (Paterson-Stockmeyer):
    // B_j = sum_{i < 5} x^i / (5j + i)!, t = B_0 + x^5 (B_1 + x^5 (B_2 + x^5 (B_3 + x^5 B_4))).
    auto block = [&](int j) {
        Matrix b(size, 0.0L);
        for (int i = 0; i < 5; ++i) {
            Real factorial = 1;
            for (int k = 2; k <= 5 * j + i; ++k) factorial *= k;
            for (std::size_t e = 0; e < size; ++e) b[e] += power[i][e] / factorial;
        }
        return b;
    };
    Matrix t = block(4);
    for (int j = 3; j >= 0; --j) {
        t = multiply(power[5], t, n);
        const Matrix b = block(j);
        for (std::size_t e = 0; e < size; ++e) t[e] += b[e];
    }
    for (int s = 0; s < squarings; ++s) t = multiply(t, t, n);
    return t;
}

std::vector<std::vector<long double>> spectralSolution(const SpectralProblem& p, int intervals,
                                                       const std::vector<double>& xs, const std::vector<double>& ts) {
    const Real V = p.velocity, D = p.dispersion, lambda = p.decay, L = p.length;
    const Collocation c(intervals, L);
    const int N = intervals;
    const int m = N - 1;  // interior points 1..N-1

    // End values as affine functions of the interior values:
    //   u_0 = alpha0 + sum beta0_k u_k,  u_N = alphaN + sum betaN_k u_k.
    Real alpha0 = 0, alphaN = 0;
    std::vector<Real> beta0(static_cast<std::size_t>(N + 1), 0.0L), betaN(static_cast<std::size_t>(N + 1), 0.0L);
    if (!p.cauchy) {
        // u_0 = 1; sum_j D1(N, j) u_j = 0 gives u_N.
        alpha0 = 1;
        alphaN = -c.D1(N, 0) / c.D1(N, N);
        for (int k = 1; k < N; ++k) betaN[k] = -c.D1(N, k) / c.D1(N, N);
    } else {
        // V u_0 - D sum_j D1(0, j) u_j = V and sum_j D1(N, j) u_j = 0, solved for u_0 and u_N.
        const Real a11 = V - D * c.D1(0, 0), a12 = -D * c.D1(0, N);
        const Real a21 = c.D1(N, 0), a22 = c.D1(N, N);
        const Real det = a11 * a22 - a12 * a21;
        // right-hand sides r1 = V + D sum D1(0,k) u_k, r2 = -sum D1(N,k) u_k
        alpha0 = a22 * V / det;
        alphaN = -a21 * V / det;
        for (int k = 1; k < N; ++k) {
            const Real r1k = D * c.D1(0, k), r2k = -c.D1(N, k);
            beta0[k] = (a22 * r1k - a12 * r2k) / det;
            betaN[k] = (a11 * r2k - a21 * r1k) / det;
        }
    }

    // Augmented system [[A, b], [0, 0]] of size m + 1 on the interior points.
    const int n = m + 1;
    Matrix augmented(static_cast<std::size_t>(n) * n, 0.0L);
    auto op = [&](int i, int j) { return D * c.D2(i, j) - V * c.D1(i, j) - (i == j ? lambda : Real(0)); };
    for (int i = 1; i < N; ++i) {
        const std::size_t row = static_cast<std::size_t>(i - 1) * n;
        const Real toStart = op(i, 0), toEnd = op(i, N);
        for (int k = 1; k < N; ++k) augmented[row + (k - 1)] = op(i, k) + toStart * beta0[k] + toEnd * betaN[k];
        augmented[row + m] = toStart * alpha0 + toEnd * alphaN;
    }

    // The state [u; 1] moves over a step h by exp(augmented h). The smallest
    // time is the step; later times that are whole multiples of it are reached
    // by repeated steps, others by their own exponential.
    auto exponentialAt = [&](double t) {
        Matrix scaled(augmented);
        for (Real& v : scaled) v *= t;
        return matrixExponential(scaled, n);
    };
    auto propagate = [&](const Matrix& e, const std::vector<Real>& state) {
        std::vector<Real> next(static_cast<std::size_t>(n), 0.0L);
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j) next[i] += e[static_cast<std::size_t>(i) * n + j] * state[j];
        return next;
    };
    double step = 0;
    for (double t : ts) {
        if (!(t > 0)) throw std::invalid_argument("t must be positive");
        step = step == 0 ? t : std::min(step, t);
    }
    const Matrix stepExponential = exponentialAt(step);

    std::vector<std::vector<long double>> out(ts.size(), std::vector<long double>(xs.size()));
    for (std::size_t k = 0; k < ts.size(); ++k) {
        std::vector<Real> state(static_cast<std::size_t>(n), 0.0L);
        state[m] = 1;  // u(0) = 0
        const double steps = ts[k] / step;
        const long whole = std::lround(steps);
        if (std::fabs(steps - whole) <= 1e-12 * steps) {
            for (long s = 0; s < whole; ++s) state = propagate(stepExponential, state);
        } else {
            state = propagate(exponentialAt(ts[k]), state);
        }
        std::vector<Real> u(static_cast<std::size_t>(N + 1));
        for (int i = 1; i < N; ++i) u[i] = state[i - 1];
        u[0] = alpha0;
        u[N] = alphaN;
        for (int j = 1; j < N; ++j) {
            u[0] += beta0[j] * u[j];
            u[N] += betaN[j] * u[j];
        }
        for (std::size_t i = 0; i < xs.size(); ++i) {
            if (xs[i] < 0 || xs[i] > p.length) throw std::invalid_argument("x outside the aquifer");
            out[k][i] = c.interpolate(u, xs[i]);
        }
    }
    return out;
}

}  // namespace bm::testkit
