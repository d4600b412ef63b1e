#pragma once
// Test support for the matrix routines: chain matrices, conversions to and
// from Eigen (the independent solver of the tests), residuals.

#include <Eigen/Dense>

#include <algorithm>
#include <cmath>
#include <complex>
#include <functional>
#include <random>
#include <vector>

#include "model/arrays.h"
#include "species/matrix_square.h"

namespace bm::matrixtest {

// The decay-chain matrix written directly: -k(i) on the diagonal, y(i) * k(i - 1) below it.
inline SquareMatrix chainMatrix(const std::vector<double>& rates, const std::vector<double>& yields) {
    const int n = static_cast<int>(rates.size());
    SquareMatrix a(n);
    for (int i = 1; i <= n; ++i) {
        a(i, i) = -rates[static_cast<std::size_t>(i - 1)];
        if (i > 1) a(i, i - 1) = yields[static_cast<std::size_t>(i - 1)] * rates[static_cast<std::size_t>(i - 2)];
    }
    return a;
}

inline Eigen::MatrixXd toEigen(const SquareMatrix& a, int n) {
    Eigen::MatrixXd m(n, n);
    for (int i = 1; i <= n; ++i)
        for (int j = 1; j <= n; ++j) m(i - 1, j - 1) = a(i, j);
    return m;
}

inline SquareMatrix fromEigen(const Eigen::MatrixXd& m) {
    const int n = static_cast<int>(m.rows());
    SquareMatrix a(n);
    for (int i = 1; i <= n; ++i)
        for (int j = 1; j <= n; ++j) a(i, j) = m(i - 1, j - 1);
    return a;
}

// A flat matrix (row after row, from 1) as an Eigen matrix.
inline Eigen::MatrixXd flatToEigen(const List<double>& flat, int n) {
    Eigen::MatrixXd m(n, n);
    for (int i = 1; i <= n; ++i)
        for (int j = 1; j <= n; ++j) m(i - 1, j - 1) = flat((i - 1) * n + j);
    return m;
}

inline List<double> eigenToFlat(const Eigen::MatrixXd& m) {
    const int n = static_cast<int>(m.rows());
    List<double> flat(n * n);
    for (int i = 1; i <= n; ++i)
        for (int j = 1; j <= n; ++j) flat((i - 1) * n + j) = m(i - 1, j - 1);
    return flat;
}

// Eigenvalues of the independent solver, sorted by real part, then imaginary part.
inline std::vector<std::complex<double>> referenceEigenvalues(const Eigen::MatrixXd& m) {
    Eigen::EigenSolver<Eigen::MatrixXd> solver(m, false);
    std::vector<std::complex<double>> values(solver.eigenvalues().data(),
                                             solver.eigenvalues().data() + solver.eigenvalues().size());
    std::sort(values.begin(), values.end(), [](auto a, auto b) {
        return a.real() != b.real() ? a.real() < b.real() : a.imag() < b.imag();
    });
    return values;
}

// The greatest distance from each value to its nearest partner in the other
// set, matching each partner once (sets of a few dozen values).
inline double setDistance(std::vector<std::complex<double>> mine, std::vector<std::complex<double>> reference) {
    double worst = 0.0;
    for (const auto& v : mine) {
        auto best = std::min_element(reference.begin(), reference.end(),
                                     [&](auto a, auto b) { return std::abs(a - v) < std::abs(b - v); });
        if (best == reference.end()) return INFINITY;
        worst = std::max(worst, std::abs(*best - v));
        reference.erase(best);
    }
    return reference.empty() ? worst : INFINITY;
}

inline double infinityNorm(const Eigen::MatrixXd& m) { return m.cwiseAbs().rowwise().sum().maxCoeff(); }

// A matrix with uniform elements in -1..1.
inline Eigen::MatrixXd randomMatrix(int n, std::mt19937& generator) {
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    Eigen::MatrixXd m(n, n);
    for (int j = 0; j < n; ++j)
        for (int i = 0; i < n; ++i) m(i, j) = u(generator);
    return m;
}

}  // namespace bm::matrixtest
