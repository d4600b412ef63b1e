// The eigen routines against an independent solver (Eigen 3) and closed forms:
// decay chains, general matrices with real spectra, and general matrices with
// complex pairs for the complex branches of the QR stage.

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "species/matrix_operations.h"
#include "species/tests/matrix_test_support.h"
#include "testing/is_close.h"

using namespace bm;
using namespace bm::matrixtest;

namespace {

struct Decomposition {
    bool converged = false;
    List<double> values, vectors, inverse;
};

Decomposition decompose(const SquareMatrix& a, int n) {
    const auto order = static_cast<std::int16_t>(n);
    Decomposition d;
    d.converged = eigenDecompose(order, a, d.values, d.vectors);
    EXPECT_TRUE(invertEigenMatrix(order, d.vectors, d.inverse));
    return d;
}

// max |A z - lambda z| over a column, relative to |A| max |z|.
double columnResidual(const Eigen::MatrixXd& a, const Eigen::VectorXd& z, double lambda) {
    const Eigen::VectorXd r = a * z - lambda * z;
    const double scale = infinityNorm(a) * z.cwiseAbs().maxCoeff();
    return scale == 0.0 ? r.cwiseAbs().maxCoeff() : r.cwiseAbs().maxCoeff() / scale;
}

// Eigenvector of the chain for rate j: 0 above j, 1 at j, then
// v(i) = y(i) k(i - 1) v(i - 1) / (k(i) - k(j)).
Eigen::MatrixXd chainEigenvectors(const std::vector<double>& k, const std::vector<double>& y) {
    const int n = static_cast<int>(k.size());
    Eigen::MatrixXd z = Eigen::MatrixXd::Zero(n, n);
    for (int j = 0; j < n; ++j) {
        z(j, j) = 1.0;
        for (int i = j + 1; i < n; ++i) z(i, j) = y[static_cast<std::size_t>(i)] * k[static_cast<std::size_t>(i - 1)] * z(i - 1, j) / (k[static_cast<std::size_t>(i)] - k[static_cast<std::size_t>(j)]);
    }
    return z;
}

// Rates log-uniform in 0.005..2, at least 2 % apart; yields in 0.2..1.
void randomChain(int n, std::mt19937& generator, std::vector<double>& k, std::vector<double>& y) {
    std::uniform_real_distribution<double> logRate(std::log(0.005), std::log(2.0));
    std::uniform_real_distribution<double> yield(0.2, 1.0);
    k.clear();
    y.clear();
    while (static_cast<int>(k.size()) < n) {
        const double rate = std::exp(logRate(generator));
        bool apart = true;
        for (double other : k) apart = apart && std::fabs(rate - other) > 0.02 * std::max(rate, other);
        if (!apart) continue;
        k.push_back(rate);
        y.push_back(yield(generator));
    }
}

}  // namespace

TEST(MatrixReference, ChainsDecomposeInChemicalOrderWithUnitLowerTriangularVectors) {
    std::mt19937 generator(20240611u);
    for (int n : {1, 2, 3, 4, 5, 6, 8, 10, 12}) {
        for (int trial = 0; trial < 6; ++trial) {
            std::vector<double> k, y;
            randomChain(n, generator, k, y);
            const SquareMatrix a = chainMatrix(k, y);
            const Eigen::MatrixXd ae = toEigen(a, n);
            const Decomposition d = decompose(a, n);
            ASSERT_TRUE(d.converged);
            ASSERT_EQ(d.values.ub(), n);
            ASSERT_EQ(d.vectors.ub(), n * n);
            ASSERT_EQ(d.inverse.ub(), n * n);

            // -k1, -k2, ... in chemical order; the same set as the reference's.
            std::vector<std::complex<double>> mine;
            for (int i = 1; i <= n; ++i) {
                EXPECT_CLOSE(d.values(i), -k[static_cast<std::size_t>(i - 1)], 1e-14, 0.0);
                mine.emplace_back(d.values(i), 0.0);
            }
            EXPECT_LE(setDistance(mine, referenceEigenvalues(ae)), 1e-12 * infinityNorm(ae));

            const Eigen::MatrixXd z = flatToEigen(d.vectors, n);
            const Eigen::MatrixXd closed = chainEigenvectors(k, y);
            for (int i = 0; i < n; ++i) {
                EXPECT_EQ(z(i, i), 1.0);
                for (int j = i + 1; j < n; ++j) EXPECT_EQ(z(i, j), 0.0) << "above the diagonal at " << i << "," << j;
                for (int j = 0; j < i; ++j) {
                    EXPECT_CLOSE(z(i, j), closed(i, j), 1e-12, 1e-300);
                }
            }
            for (int j = 0; j < n; ++j) {
                const double residual = columnResidual(ae, z.col(j), d.values(j + 1));
                EXPECT_LE(residual, 1e-12);
            }

            const Eigen::MatrixXd inverse = flatToEigen(d.inverse, n);
            const Eigen::MatrixXd identity = z * inverse;
            const double identityError = (identity - Eigen::MatrixXd::Identity(n, n)).cwiseAbs().maxCoeff();
            EXPECT_LE(identityError, 1e-12);
            const Eigen::MatrixXd referenceInverse = Eigen::FullPivLU<Eigen::MatrixXd>(z).inverse();
            EXPECT_LE((inverse - referenceInverse).cwiseAbs().maxCoeff(),
                      1e-12 * std::max(1.0, referenceInverse.cwiseAbs().maxCoeff()));
        }
    }
}

TEST(MatrixReference, RealSpectrumMatricesDecomposeAndInvert) {
    std::mt19937 generator(7u);
    std::uniform_real_distribution<double> spectrum(-3.0, 3.0);
    for (int n : {2, 3, 4, 5, 7, 10, 15}) {
        for (int trial = 0; trial < 5; ++trial) {
            // S D S^-1 with a well-conditioned S and eigenvalues at least 0.05 apart.
            Eigen::MatrixXd s = randomMatrix(n, generator) + 2.0 * Eigen::MatrixXd::Identity(n, n);
            std::vector<double> lambdas;
            while (static_cast<int>(lambdas.size()) < n) {
                const double v = spectrum(generator);
                bool apart = true;
                for (double other : lambdas) apart = apart && std::fabs(v - other) > 0.05;
                if (apart) lambdas.push_back(v);
            }
            Eigen::VectorXd dv(n);
            for (int i = 0; i < n; ++i) dv(i) = lambdas[static_cast<std::size_t>(i)];
            const Eigen::MatrixXd ae = s * dv.asDiagonal() * s.inverse();
            const SquareMatrix a = fromEigen(ae);
            const SquareMatrix before = a;

            const Decomposition d = decompose(a, n);
            ASSERT_TRUE(d.converged);
            EXPECT_EQ(a, before);  // the caller's matrix stays as it was

            std::vector<std::complex<double>> mine, exact;
            for (int i = 1; i <= n; ++i) mine.emplace_back(d.values(i), 0.0);
            for (double v : lambdas) exact.emplace_back(v, 0.0);
            EXPECT_LE(setDistance(mine, referenceEigenvalues(ae)), 1e-10 * infinityNorm(ae));
            EXPECT_LE(setDistance(mine, exact), 1e-10 * infinityNorm(ae));

            const Eigen::MatrixXd z = flatToEigen(d.vectors, n);
            for (int j = 0; j < n; ++j) {
                if (z(j, j) != 0.0) {
                    EXPECT_EQ(z(j, j), 1.0);
                }
                EXPECT_LE(columnResidual(ae, z.col(j), d.values(j + 1)), 1e-12) << "n " << n << " column " << j;
            }
            const Eigen::MatrixXd inverse = flatToEigen(d.inverse, n);
            const double condition = infinityNorm(z) * infinityNorm(inverse);
            EXPECT_LE((z * inverse - Eigen::MatrixXd::Identity(n, n)).cwiseAbs().maxCoeff(), 1e-14 * condition);
            EXPECT_LE((inverse * z - Eigen::MatrixXd::Identity(n, n)).cwiseAbs().maxCoeff(), 1e-14 * condition);
        }
    }
}

namespace {

// Checks a full solution of realGeneralEigen on the matrix ae; returns the
// number of complex pairs.
int checkGeneralSolution(const Eigen::MatrixXd& ae, double valueTolerance) {
    const int n = static_cast<int>(ae.rows());
    SquareMatrix a = fromEigen(ae);
    SquareMatrix z;
    List<double> wr, wi, fv1, fv2;
    std::int16_t ierr = -1;
    EXPECT_TRUE(realGeneralEigen(true, static_cast<std::int16_t>(n), static_cast<std::int16_t>(n), a, wr, wi, z, fv1,
                                 fv2, ierr));
    EXPECT_EQ(ierr, 0);
    const double norm = infinityNorm(ae);
    std::vector<std::complex<double>> mine;
    for (int i = 1; i <= n; ++i) mine.emplace_back(wr(i), wi(i));
    EXPECT_LE(setDistance(mine, referenceEigenvalues(ae)), valueTolerance * norm) << "n " << n;

    int pairs = 0;
    for (int i = 1; i <= n; ++i) {
        Eigen::VectorXd u(n), v(n);
        for (int j = 1; j <= n; ++j) u(j - 1) = z(j, i);
        if (wi(i) == 0.0) {
            EXPECT_CLOSE(u.norm(), 1.0, 1e-14, 0.0);
            EXPECT_LE(columnResidual(ae, u, wr(i)), 1e-12) << "n " << n << " real vector " << i;
            continue;
        }
        if (wi(i) < 0.0) continue;
        // The pair a +- ib in columns i (real part) and i + 1 (imaginary part):
        // A u = a u - b v and A v = b u + a v.
        ++pairs;
        EXPECT_EQ(wr(i + 1), wr(i));
        EXPECT_EQ(wi(i + 1), -wi(i));
        for (int j = 1; j <= n; ++j) v(j - 1) = z(j, i + 1);
        EXPECT_CLOSE(u.squaredNorm() + v.squaredNorm(), 1.0, 1e-14, 0.0);
        const double scale = norm * std::max(u.cwiseAbs().maxCoeff(), v.cwiseAbs().maxCoeff());
        const Eigen::VectorXd ru = ae * u - (wr(i) * u - wi(i) * v);
        const Eigen::VectorXd rv = ae * v - (wi(i) * u + wr(i) * v);
        EXPECT_LE(ru.cwiseAbs().maxCoeff() / scale, 1e-12) << "n " << n << " pair " << i;
        EXPECT_LE(rv.cwiseAbs().maxCoeff() / scale, 1e-12) << "n " << n << " pair " << i;
    }
    // Modulus and damping ratio of every eigenvalue.
    for (int i = 1; i <= n; ++i) {
        const double modulus = std::hypot(wr(i), wi(i));
        if (modulus == 0.0) continue;
        EXPECT_CLOSE(fv1(i), modulus, 1e-14, 0.0);
        EXPECT_CLOSE(fv2(i), -wr(i) / modulus, 1e-14, 1e-15);
    }
    return pairs;
}

}  // namespace

TEST(MatrixReference, GeneralMatricesWithComplexPairs) {
    std::mt19937 generator(4242u);
    int pairs = 0;
    for (int n : {2, 3, 4, 5, 6, 7, 9, 12, 16, 25, 40}) {
        for (int trial = 0; trial < 4; ++trial) pairs += checkGeneralSolution(randomMatrix(n, generator), 1e-10);
    }
    EXPECT_GT(pairs, 40);  // the complex branches were exercised
}

TEST(MatrixReference, BadlyScaledMatricesAreBalanced) {
    // D A D^-1 with D over twelve decades: only the balancing keeps the
    // residuals at the level of a well-scaled matrix.
    std::mt19937 generator(99u);
    std::uniform_real_distribution<double> decade(-6.0, 6.0);
    for (int n : {3, 5, 8, 13}) {
        for (int trial = 0; trial < 4; ++trial) {
            Eigen::VectorXd d(n);
            for (int i = 0; i < n; ++i) d(i) = std::pow(10.0, decade(generator));
            const Eigen::MatrixXd ae = d.asDiagonal() * randomMatrix(n, generator) * d.cwiseInverse().asDiagonal();
            // Eigenvalues are those of the unscaled matrix; compare at that scale.
            const Eigen::MatrixXd unscaled = d.cwiseInverse().asDiagonal() * ae * d.asDiagonal();
            SquareMatrix a = fromEigen(ae), z;
            List<double> wr, wi, fv1, fv2;
            std::int16_t ierr = 0;
            ASSERT_TRUE(realGeneralEigen(true, static_cast<std::int16_t>(n), static_cast<std::int16_t>(n), a, wr, wi,
                                         z, fv1, fv2, ierr));
            std::vector<std::complex<double>> mine;
            for (int i = 1; i <= n; ++i) mine.emplace_back(wr(i), wi(i));
            EXPECT_LE(setDistance(mine, referenceEigenvalues(unscaled)), 1e-10 * infinityNorm(unscaled));
        }
    }
}

TEST(MatrixReference, MatricesWithIsolatedRowsAndColumns) {
    // A block upper triangular matrix, permuted: the balancing isolates the
    // outer rows and columns and the QR stage works on the block in between.
    std::mt19937 generator(31u);
    int pairs = 0;
    for (int n : {4, 6, 9, 12}) {
        for (int trial = 0; trial < 5; ++trial) {
            Eigen::MatrixXd b = randomMatrix(n, generator);
            const int top = 1 + trial % 2;
            const int bottom = n - 1 - trial % 2;
            for (int j = 0; j < n; ++j)
                for (int i = 0; i < n; ++i) {
                    const bool inBlock = i >= top && i < bottom && j >= top && j < bottom;
                    if (!inBlock && i > j) b(i, j) = 0.0;  // triangular outside the middle block
                }
            std::vector<int> order(static_cast<std::size_t>(n));
            for (int i = 0; i < n; ++i) order[static_cast<std::size_t>(i)] = i;
            std::shuffle(order.begin(), order.end(), generator);
            Eigen::MatrixXd p = Eigen::MatrixXd::Zero(n, n);
            for (int i = 0; i < n; ++i) p(i, order[static_cast<std::size_t>(i)]) = 1.0;
            pairs += checkGeneralSolution(p * b * p.transpose(), 1e-10);
        }
    }
    EXPECT_GT(pairs, 0);
}

TEST(MatrixReference, EigenvaluesOnlyPathAgreesWithTheFullPath) {
    std::mt19937 generator(5u);
    for (int n : {1, 2, 3, 6, 11, 20}) {
        const Eigen::MatrixXd ae = randomMatrix(n, generator);
        SquareMatrix a1 = fromEigen(ae), a2 = fromEigen(ae), z;
        List<double> wr1, wi1, wr2, wi2, f1, f2;
        std::int16_t ierr1 = -1, ierr2 = -1;
        const auto order = static_cast<std::int16_t>(n);
        ASSERT_TRUE(realGeneralEigen(false, order, order, a1, wr1, wi1, z, f1, f2, ierr1));
        ASSERT_TRUE(realGeneralEigen(true, order, order, a2, wr2, wi2, z, f1, f2, ierr2));
        EXPECT_EQ(ierr1, 0);
        std::vector<std::complex<double>> mine;
        for (int i = 1; i <= n; ++i) {
            mine.emplace_back(wr1(i), wi1(i));
            EXPECT_CLOSE(wr1(i), wr2(i), 1e-13, 1e-13);
            EXPECT_CLOSE(wi1(i), wi2(i), 1e-13, 1e-13);
        }
        EXPECT_LE(setDistance(mine, referenceEigenvalues(ae)), 1e-10 * infinityNorm(ae));
    }
}

TEST(MatrixReference, CyclicShiftNeedsTheExceptionalShifts) {
    // The cyclic shift is orthogonal and already Hessenberg: the ordinary shifts
    // stall on it. Its eigenvalues are the n-th roots of unity.
    for (int n : {3, 4, 5, 6, 8}) {
        Eigen::MatrixXd ae = Eigen::MatrixXd::Zero(n, n);
        for (int i = 1; i < n; ++i) ae(i, i - 1) = 1.0;
        ae(0, n - 1) = 1.0;
        std::vector<std::complex<double>> roots;
        for (int k = 0; k < n; ++k) roots.push_back(std::polar(1.0, 2.0 * std::numbers::pi * k / n));
        SquareMatrix a = fromEigen(ae), z;
        List<double> wr, wi, f1, f2;
        std::int16_t ierr = 0;
        const auto order = static_cast<std::int16_t>(n);
        ASSERT_TRUE(realGeneralEigen(true, order, order, a, wr, wi, z, f1, f2, ierr));
        std::vector<std::complex<double>> mine;
        for (int i = 1; i <= n; ++i) mine.emplace_back(wr(i), wi(i));
        EXPECT_LE(setDistance(mine, roots), 1e-13) << "n " << n;
        checkGeneralSolution(ae, 1e-13);
    }
}

TEST(MatrixReference, RepeatedComplexPairTakesTheSmallDenominator) {
    // (R C; 0 R) with R = (a -b; b a): the pair a +- ib twice, defective. The
    // back-substitution meets a zero complex denominator and replaces it.
    const double re = -0.3, im = 0.7;
    Eigen::MatrixXd ae(4, 4);
    ae << re, -im, 1.0, 0.5,  //
        im, re, 0.25, 1.0,    //
        0.0, 0.0, re, -im,    //
        0.0, 0.0, im, re;
    SquareMatrix a = fromEigen(ae), z;
    List<double> wr, wi, f1, f2;
    std::int16_t ierr = 0;
    ASSERT_TRUE(realGeneralEigen(true, 4, 4, a, wr, wi, z, f1, f2, ierr));
    for (int i = 1; i <= 4; ++i) {
        EXPECT_CLOSE(wr(i), re, 1e-14, 0.0);
        EXPECT_CLOSE(std::fabs(wi(i)), im, 1e-14, 0.0);
        for (int j = 1; j <= 4; ++j) EXPECT_TRUE(std::isfinite(z(j, i)));
    }
    // Each pair's vector still satisfies the eigen equation.
    for (int i = 1; i <= 3; i += 2) {
        ASSERT_GT(wi(i), 0.0);
        Eigen::VectorXd u(4), v(4);
        for (int j = 1; j <= 4; ++j) {
            u(j - 1) = z(j, i);
            v(j - 1) = z(j, i + 1);
        }
        EXPECT_CLOSE(u.squaredNorm() + v.squaredNorm(), 1.0, 1e-14, 0.0);
        EXPECT_LE((ae * u - (wr(i) * u - wi(i) * v)).cwiseAbs().maxCoeff(), 1e-12);
        EXPECT_LE((ae * v - (wi(i) * u + wr(i) * v)).cwiseAbs().maxCoeff(), 1e-12);
    }
}
