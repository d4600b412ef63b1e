#pragma once
// A high-order reference for one-dimensional transport in a finite aquifer,
//   dC/dt = D C_xx - V C_x - lambda C,  0 < x < L,  C(x, 0) = 0,
// inlet C(0, t) = 1 (Dirichlet) or V C - D C_x = V (Cauchy), dC/dx = 0 at L.
//
// Space: Chebyshev collocation on N + 1 Gauss-Lobatto points (the limit of
// ever higher-order finite differences; its points crowd at both ends, where
// the inlet's layer sits). The two end conditions are solved for the end values,
// which leaves u' = A u + b on the interior points. Time: no stepping at all:
// with u(0) = 0 the system's exact solution is the last column of
// exp([[A, b], [0, 0]] t), taken by scaling and squaring of its Taylor series.
// Everything in long double. Values between the points by barycentric
// interpolation. The only error left is that of the collocation, which falls
// faster than any power of 1/N for t > 0; the tests show it by refinement.

#include <vector>

namespace bm::testkit {

struct SpectralProblem {
    double velocity = 1;
    double dispersion = 1;
    double decay = 0;     // lambda
    bool cauchy = false;  // inlet condition
    double length = 10;
};

// C at every (x, t) pair (result[t index][x index]) on a collocation of
// `intervals` Chebyshev intervals. x in [0, L], t > 0.
std::vector<std::vector<long double>> spectralSolution(const SpectralProblem& problem, int intervals,
                                                       const std::vector<double>& xs, const std::vector<double>& ts);

// exp(M) of a dense square matrix (row-major, n by n) in long double.
std::vector<long double> matrixExponential(const std::vector<long double>& m, int n);

}  // namespace bm::testkit
