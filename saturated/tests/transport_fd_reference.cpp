#include "transport_fd_reference.h"

#include <cmath>
#include <stdexcept>

namespace bm::testkit {

namespace {

// Tridiagonal system with constant coefficients, factored once (Thomas).
struct Tridiagonal {
    std::vector<double> lower, diagonal, upper;
    std::vector<double> cPrime, denominator;

    void factor() {
        const std::size_t n = diagonal.size();
        cPrime.assign(n, 0);
        denominator.assign(n, 0);
        denominator[0] = diagonal[0];
        cPrime[0] = upper[0] / denominator[0];
        for (std::size_t i = 1; i < n; ++i) {
            denominator[i] = diagonal[i] - lower[i] * cPrime[i - 1];
            cPrime[i] = upper[i] / denominator[i];
        }
    }
    void solve(std::vector<double>& rhs) const {
        const std::size_t n = diagonal.size();
        rhs[0] /= denominator[0];
        for (std::size_t i = 1; i < n; ++i) rhs[i] = (rhs[i] - lower[i] * rhs[i - 1]) / denominator[i];
        for (std::size_t i = n - 1; i-- > 0;) rhs[i] -= cPrime[i] * rhs[i + 1];
    }
};

// One grid: unknowns are nodes first..N (first = 0 for Cauchy, 1 for Dirichlet).
// The semi-discrete system is u' = A u + b.
struct Grid {
    int cells;
    double h;
    int first;
    std::vector<double> lo, di, up, b;  // rows of A and b

    Grid(const FdProblem& p, int n) : cells(n), h(p.length / n), first(p.cauchy ? 0 : 1) {
        const double D = p.dispersion, V = p.velocity, L = p.decay;
        const int m = cells + 1 - first;
        lo.assign(m, 0);
        di.assign(m, 0);
        up.assign(m, 0);
        b.assign(m, 0);
        const double west = D / (h * h) + V / (2 * h);
        const double east = D / (h * h) - V / (2 * h);
        const double centre = -2 * D / (h * h) - L;
        for (int r = 0; r < m; ++r) {
            const int node = r + first;
            lo[r] = west;
            up[r] = east;
            di[r] = centre;
            if (node == 0) {
                // ghost from V C - D C_x = V: C_-1 = C_1 - 2h (V/D)(C_0 - 1)
                lo[r] = 0;
                up[r] = 2 * D / (h * h);
                di[r] = -2 * D / (h * h) - (2 * V / h + V * V / D) - L;
                b[r] = 2 * V / h + V * V / D;
            } else if (node == 1 && first == 1) {
                b[r] = west;  // C_0 = 1
                lo[r] = 0;
            }
            if (node == cells) {
                // ghost from dC/dx = 0: C_N+1 = C_N-1
                lo[r] = 2 * D / (h * h);
                up[r] = 0;
            }
        }
    }

    // (I - theta dt A) matrix.
    Tridiagonal implicitPart(double theta, double dt) const {
        Tridiagonal t;
        const std::size_t m = di.size();
        t.lower.resize(m);
        t.diagonal.resize(m);
        t.upper.resize(m);
        for (std::size_t r = 0; r < m; ++r) {
            t.lower[r] = -theta * dt * lo[r];
            t.diagonal[r] = 1 - theta * dt * di[r];
            t.upper[r] = -theta * dt * up[r];
        }
        t.factor();
        return t;
    }

    // rhs = u + (1 - theta) dt A u + dt b
    void explicitPart(const std::vector<double>& u, double theta, double dt, std::vector<double>& rhs) const {
        const std::size_t m = di.size();
        for (std::size_t r = 0; r < m; ++r) {
            double au = di[r] * u[r];
            if (r > 0) au += lo[r] * u[r - 1];
            if (r + 1 < m) au += up[r] * u[r + 1];
            rhs[r] = u[r] + (1 - theta) * dt * au + dt * b[r];
        }
    }

    double valueAt(const std::vector<double>& u, double x) const {
        const long node = std::lround(x / h);
        if (std::fabs(node * h - x) > 1e-9 * (1 + std::fabs(x))) throw std::invalid_argument("x is not a node");
        if (node < first) return 1.0;  // the Dirichlet inlet
        return u[static_cast<std::size_t>(node - first)];
    }
};

std::vector<std::vector<double>> solveOnGrid(const FdProblem& p, int refinement, const std::vector<double>& xs,
                                             const std::vector<double>& ts) {
    const Grid g(p, p.cells * refinement);
    const double dt = p.timeStep / refinement;
    std::vector<double> u(g.di.size(), 0.0), rhs(u.size());
    std::vector<std::vector<double>> out(ts.size(), std::vector<double>(xs.size()));

    // Four implicit Euler half steps, then Crank-Nicolson.
    const Tridiagonal euler = g.implicitPart(1.0, dt / 2);
    for (int s = 0; s < 4; ++s) {
        g.explicitPart(u, 1.0, dt / 2, rhs);
        euler.solve(rhs);
        u.swap(rhs);
    }
    long step = 2;
    const Tridiagonal cn = g.implicitPart(0.5, dt);
    for (std::size_t k = 0; k < ts.size(); ++k) {
        const long target = std::lround(ts[k] / dt);
        if (std::fabs(target * dt - ts[k]) > 1e-9 * ts[k] || target < step) throw std::invalid_argument("bad time");
        for (; step < target; ++step) {
            g.explicitPart(u, 0.5, dt, rhs);
            cn.solve(rhs);
            u.swap(rhs);
        }
        for (std::size_t i = 0; i < xs.size(); ++i) out[k][i] = g.valueAt(u, xs[i]);
    }
    return out;
}

}  // namespace

std::vector<std::vector<double>> fdSolution(const FdProblem& problem, const std::vector<double>& xs,
                                            const std::vector<double>& ts) {
    const auto c1 = solveOnGrid(problem, 1, xs, ts);
    const auto c2 = solveOnGrid(problem, 2, xs, ts);
    const auto c4 = solveOnGrid(problem, 4, xs, ts);
    auto out = c1;
    for (std::size_t k = 0; k < ts.size(); ++k) {
        for (std::size_t i = 0; i < xs.size(); ++i) {
            // errors go as h^2 + dt^2 (both halved together), then as the fourth powers
            const double r12 = (4 * c2[k][i] - c1[k][i]) / 3;
            const double r24 = (4 * c4[k][i] - c2[k][i]) / 3;
            out[k][i] = (16 * r24 - r12) / 15;
        }
    }
    return out;
}

}  // namespace bm::testkit
