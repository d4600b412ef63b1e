// The operations of the chain solution and their edge cases, with values
// worked out by hand.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "model/data_set.h"
#include "shell/base/runtime_error.h"
#include "species/matrix_operations.h"
#include "species/tests/matrix_test_support.h"
#include "testing/is_close.h"
#include "shell/base/raised_error.h"

using namespace bm;
using namespace bm::matrixtest;

namespace {

using bm::raisedError;

DataSet chemicals(int n) {
    DataSet data;
    data.numChemicals = static_cast<std::int16_t>(n);
    return data;
}

List<double> flat(std::initializer_list<double> values) {
    List<double> list(static_cast<int>(values.size()));
    int i = 1;
    for (double v : values) list(i++) = v;
    return list;
}

}  // namespace

// --- layouts ---

TEST(MatrixLayout, SquareMatrixRunsDownTheColumns) {
    SquareMatrix a(3);
    EXPECT_EQ(a.ub(), 3);
    EXPECT_EQ(a.stride(), 4);
    a(2, 3) = 7.0;
    EXPECT_EQ(a.data()[3 * 4 + 2], 7.0);
    EXPECT_EQ(raisedError([&] { a(4, 1) = 1.0; }), err::SubscriptOutOfRange);
    EXPECT_EQ(raisedError([&] { a(1, -1) = 1.0; }), err::SubscriptOutOfRange);
    a.redim(1);
    EXPECT_EQ(a(1, 1), 0.0);
}

// --- one chemical ---

TEST(EigenDecompose, OneChemicalIsItsOwnEigenpair) {
    SquareMatrix a(1);
    a(1, 1) = -0.3;
    SquareMatrix balanced = a;
    std::int16_t low = 0, igh = 0;
    List<double> scale;
    balanceMatrix(1, 1, balanced, low, igh, scale);
    EXPECT_EQ(low, 1);
    EXPECT_EQ(igh, 1);
    EXPECT_EQ(scale(1), 1.0);

    const DataSet data = chemicals(1);
    List<double> values, vectors, inverse;
    EXPECT_TRUE(eigenDecompose(data.numChemicals, a, values, vectors));
    ASSERT_EQ(values.ub(), 1);
    ASSERT_EQ(vectors.ub(), 1);
    EXPECT_EQ(values(1), -0.3);
    EXPECT_EQ(vectors(1), 1.0);
    EXPECT_TRUE(invertEigenMatrix(data.numChemicals, vectors, inverse));
    ASSERT_EQ(inverse.ub(), 1);
    EXPECT_EQ(inverse(1), 1.0);
}

// --- chains ---

TEST(EigenDecompose, TwoChemicalChainByHand) {
    // A = ((-0.1, 0), (0.1, -0.2)): Z = ((1, 0), (1, 1)), Z^-1 = ((1, 0), (-1, 1)).
    const SquareMatrix a = chainMatrix({0.1, 0.2}, {1.0, 1.0});
    DataSet data = chemicals(2);
    List<double> values, vectors, inverse;
    ASSERT_TRUE(eigenDecompose(data.numChemicals, a, values, vectors));
    EXPECT_EQ(values(1), -0.1);
    EXPECT_EQ(values(2), -0.2);
    EXPECT_CLOSE(vectors(1), 1.0, 0.0, 0.0);
    EXPECT_CLOSE(vectors(2), 0.0, 0.0, 0.0);
    EXPECT_CLOSE(vectors(3), 1.0, 1e-15, 0.0);
    EXPECT_CLOSE(vectors(4), 1.0, 0.0, 0.0);
    ASSERT_TRUE(invertEigenMatrix(data.numChemicals, vectors, inverse));
    EXPECT_CLOSE(inverse(1), 1.0, 1e-15, 0.0);
    EXPECT_CLOSE(inverse(2), 0.0, 0.0, 1e-15);
    EXPECT_CLOSE(inverse(3), -1.0, 1e-15, 0.0);
    EXPECT_CLOSE(inverse(4), 1.0, 1e-15, 0.0);

    // c = (1, 0) gives b = (1, -1): the daughter is U1 - U2.
    data.suppositionConcentration.redim(2);
    data.suppositionConcentration(1) = "1";
    data.suppositionConcentration(2) = "0";
    EXPECT_TRUE(transformConcentrations(2, inverse, data.suppositionConcentration, data.chemicalTermConcentration));
    ASSERT_EQ(data.chemicalTermConcentration.ub(), 2);
    EXPECT_EQ(data.chemicalTermConcentration(1), "1");
    EXPECT_EQ(data.chemicalTermConcentration(2), "-1");
}

TEST(EigenDecompose, ChainOfFourIsUnitLowerTriangularRowAfterRow) {
    // k = (1, 0.5, 0.25, 2), y = (-, 1, 0.5, 1). Column j of Z:
    // Z(i, j) = y(i) k(i - 1) Z(i - 1, j) / (k(i) - k(j)) below the diagonal.
    const SquareMatrix a = chainMatrix({1.0, 0.5, 0.25, 2.0}, {1.0, 1.0, 0.5, 1.0});
    const DataSet data = chemicals(4);
    List<double> values, vectors;
    ASSERT_TRUE(eigenDecompose(data.numChemicals, a, values, vectors));
    EXPECT_EQ(values(1), -1.0);
    EXPECT_EQ(values(2), -0.5);
    EXPECT_EQ(values(3), -0.25);
    EXPECT_EQ(values(4), -2.0);
    const double z21 = 1.0 * 1.0 / (0.5 - 1.0);               // -2
    const double z31 = 0.5 * 0.5 * z21 / (0.25 - 1.0);        // 2/3
    const double z41 = 1.0 * 0.25 * z31 / (2.0 - 1.0);        // 1/6
    const double z32 = 0.5 * 0.5 / (0.25 - 0.5);              // -1
    const double z42 = 1.0 * 0.25 * z32 / (2.0 - 0.5);        // -1/6
    const double z43 = 1.0 * 0.25 / (2.0 - 0.25);             // 1/7
    const double expected[4][4] = {{1, 0, 0, 0}, {z21, 1, 0, 0}, {z31, z32, 1, 0}, {z41, z42, z43, 1}};
    for (int i = 1; i <= 4; ++i)
        for (int j = 1; j <= 4; ++j) EXPECT_CLOSE(vectors((i - 1) * 4 + j), expected[i - 1][j - 1], 1e-14, 1e-16);
}

TEST(TransformConcentrations, ChemicalWithoutSourceStillGetsATerm) {
    // c = (2, 0, 0): b = Z^-1 c has every element non-zero once chemical 1 has mass.
    const std::vector<double> k{0.3, 0.1, 0.05}, y{1.0, 0.8, 0.6};
    DataSet data = chemicals(3);
    List<double> values, vectors, inverse;
    ASSERT_TRUE(eigenDecompose(data.numChemicals, chainMatrix(k, y), values, vectors));
    ASSERT_TRUE(invertEigenMatrix(data.numChemicals, vectors, inverse));
    data.suppositionConcentration.redim(3);
    data.suppositionConcentration(1) = "2";
    data.suppositionConcentration(2) = "0";
    data.suppositionConcentration(3) = " 0 ";
    ASSERT_TRUE(transformConcentrations(3, inverse, data.suppositionConcentration, data.chemicalTermConcentration));

    // Z from its closed form, b by forward substitution of Z b = c.
    const double z21 = y[1] * k[0] / (k[1] - k[0]);
    const double z31 = y[2] * k[1] * z21 / (k[2] - k[0]);
    const double z32 = y[2] * k[1] / (k[2] - k[1]);
    const double b1 = 2.0;
    const double b2 = -z21 * b1;
    const double b3 = -z31 * b1 - z32 * b2;
    EXPECT_CLOSE(std::stod(data.chemicalTermConcentration(1)), b1, 1e-14, 0.0);
    EXPECT_CLOSE(std::stod(data.chemicalTermConcentration(2)), b2, 1e-13, 0.0);
    EXPECT_CLOSE(std::stod(data.chemicalTermConcentration(3)), b3, 1e-13, 0.0);
    EXPECT_NE(b2, 0.0);
    EXPECT_NE(b3, 0.0);
}

TEST(TransformConcentrations, TextThatIsNoNumberIsATypeError) {
    DataSet data = chemicals(2);
    data.suppositionConcentration.redim(2);
    data.suppositionConcentration(1) = "1";
    data.suppositionConcentration(2) = "Monte|1:2";
    data.chemicalTermConcentration.redim(2);
    data.chemicalTermConcentration(1) = "kept";
    const List<double> identity = flat({1, 0, 0, 1});
    EXPECT_EQ(raisedError([&] { transformConcentrations(2, identity, data.suppositionConcentration, data.chemicalTermConcentration); }), err::TypeMismatch);
    EXPECT_EQ(data.chemicalTermConcentration(1), "kept");
}

TEST(EigenDecompose, ZeroYieldInsideTheChainChangesTheOrder) {
    // Chemical 2 gets nothing from chemical 1: the balancing isolates rows in
    // another order and the eigenvalues arrive as -k2, -k3, -k1. No column has
    // a non-zero diagonal element, so all keep their Euclidean length.
    const double k1 = 0.4, k2 = 0.1, k3 = 0.3, y3 = 0.5;
    const SquareMatrix a = chainMatrix({k1, k2, k3}, {1.0, 0.0, y3});
    const DataSet data = chemicals(3);
    List<double> values, vectors;
    ASSERT_TRUE(eigenDecompose(data.numChemicals, a, values, vectors));
    EXPECT_EQ(values(1), -k2);
    EXPECT_EQ(values(2), -k3);
    EXPECT_EQ(values(3), -k1);

    // Column 1: the vector of -k2, (0, 1, y3 k2 / (k3 - k2)) of length 1.
    const double tail = y3 * k2 / (k3 - k2);
    const double length = std::sqrt(1.0 + tail * tail);
    const double expected[3][3] = {{0, 0, 1}, {1 / length, 0, 0}, {tail / length, 1, 0}};
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= 3; ++j) EXPECT_CLOSE(vectors((i - 1) * 3 + j), expected[i - 1][j - 1], 1e-14, 1e-300);
    EXPECT_EQ(vectors(1), 0.0);  // R(1, 1)
}

TEST(EigenDecompose, EqualRatesGiveANearlySingularEigenMatrixWithoutComplaint) {
    // k1 = k2: a defective matrix. The back-substitution meets a zero
    // denominator and replaces it by a tiny number, so the two vectors of the
    // balanced matrix are almost parallel; scaled to a unit diagonal that is
    // Z = ((1, 0), (a, 1)) with a huge a.
    const SquareMatrix a = chainMatrix({0.1, 0.1}, {1.0, 1.0});
    const DataSet data = chemicals(2);
    List<double> values, vectors, inverse;
    ASSERT_TRUE(eigenDecompose(data.numChemicals, a, values, vectors));
    EXPECT_EQ(values(1), -0.1);
    EXPECT_EQ(values(2), -0.1);
    EXPECT_EQ(vectors(1), 1.0);
    EXPECT_EQ(vectors(2), 0.0);
    const double big = vectors(3);
    EXPECT_GT(std::fabs(big), 1e16);
    EXPECT_EQ(vectors(4), 1.0);

    // The elimination takes a as the first pivot (rows exchanged), leaving
    // (1/a, 1/a; -1/a, -1/a); the second pivot -1/a does not register against
    // 1, so the matrix counts as singular. The caller gets that, and true.
    List<double> copy = vectors;
    EXPECT_FALSE(invertInPlace(2, copy));
    ASSERT_TRUE(invertEigenMatrix(data.numChemicals, vectors, inverse));
    EXPECT_CLOSE(inverse(1), 1.0 / big, 1e-15, 0.0);
    EXPECT_CLOSE(inverse(2), 1.0 / big, 1e-15, 0.0);
    EXPECT_CLOSE(inverse(3), -1.0 / big, 1e-15, 0.0);
    EXPECT_CLOSE(inverse(4), -1.0 / big, 1e-15, 0.0);
}

TEST(EigenDecompose, EigenvalueBelowEpsTimesTheNormBecomesZero) {
    // A = ((-1, 0), (1, -k2)): the norm (greatest column sum) is 2, so the cut
    // lies at 2 * 2.220446049250313e-16 = 4.440892098500626e-16.
    const DataSet data = chemicals(2);
    List<double> values, vectors;
    ASSERT_TRUE(eigenDecompose(data.numChemicals, chainMatrix({1.0, 4.44e-16}, {1.0, 1.0}), values, vectors));
    EXPECT_EQ(values(1), -1.0);
    EXPECT_EQ(values(2), 0.0);
    EXPECT_FALSE(std::signbit(values(2)));
    ASSERT_TRUE(eigenDecompose(data.numChemicals, chainMatrix({1.0, 4.45e-16}, {1.0, 1.0}), values, vectors));
    EXPECT_EQ(values(2), -4.45e-16);
    ASSERT_TRUE(eigenDecompose(data.numChemicals, chainMatrix({1.0, 1e-17}, {1.0, 1.0}), values, vectors));
    EXPECT_EQ(values(2), 0.0);
}

TEST(RealGeneralEigen, ModulusAndDampingRatioAreKept) {
    // -1 +- 2i: modulus sqrt 5, damping ratio 1 / sqrt 5.
    SquareMatrix a(2), z;
    a(1, 1) = -1.0;
    a(1, 2) = -2.0;
    a(2, 1) = 2.0;
    a(2, 2) = -1.0;
    List<double> wr, wi, fv1, fv2;
    std::int16_t ierr = -1;
    ASSERT_TRUE(realGeneralEigen(true, 2, 2, a, wr, wi, z, fv1, fv2, ierr));
    EXPECT_EQ(ierr, 0);
    for (int i = 1; i <= 2; ++i) {
        EXPECT_CLOSE(wr(i), -1.0, 1e-15, 0.0);
        EXPECT_CLOSE(std::fabs(wi(i)), 2.0, 1e-15, 0.0);
        EXPECT_CLOSE(fv1(i), std::sqrt(5.0), 1e-15, 0.0);
        EXPECT_CLOSE(fv2(i), 1.0 / std::sqrt(5.0), 1e-15, 0.0);
    }
    EXPECT_GT(wi(1), 0.0);
    // A converged complex pair is no failure of the decomposition.
    const DataSet data = chemicals(2);
    SquareMatrix rotation(2);
    rotation(1, 2) = -1.0;
    rotation(2, 1) = 1.0;
    List<double> values, vectors;
    EXPECT_TRUE(eigenDecompose(data.numChemicals, rotation, values, vectors));
    EXPECT_EQ(values(1), 0.0);
    EXPECT_EQ(values(2), 0.0);
}

TEST(RealGeneralEigen, ZeroEigenvalueHasModulusZeroAndDampingOne) {
    SquareMatrix a(2), z;
    a(1, 1) = -1.0;
    a(2, 1) = 1.0;  // the second diagonal element is 0
    List<double> wr, wi, fv1, fv2;
    std::int16_t ierr = -1;
    ASSERT_TRUE(realGeneralEigen(true, 2, 2, a, wr, wi, z, fv1, fv2, ierr));
    int zero = wr(1) == 0.0 ? 1 : 2;
    EXPECT_EQ(wr(zero), 0.0);
    EXPECT_EQ(fv1(zero), 0.0);
    EXPECT_EQ(fv2(zero), 1.0);
    EXPECT_EQ(wr(3 - zero), -1.0);
    EXPECT_EQ(fv1(3 - zero), 1.0);
    EXPECT_EQ(fv2(3 - zero), 1.0);
}

TEST(EigenDecompose, AllZeroMatrix) {
    // Norm 0: every eigenvalue 0, the solver's vectors the identity; the
    // reversal then lays them out as the exchange matrix.
    SquareMatrix a(3), z;
    SquareMatrix work = a;
    List<double> wr, wi, fv1, fv2;
    std::int16_t ierr = -1;
    ASSERT_TRUE(realGeneralEigen(true, 3, 3, work, wr, wi, z, fv1, fv2, ierr));
    for (int i = 1; i <= 3; ++i) {
        EXPECT_EQ(wr(i), 0.0);
        EXPECT_EQ(wi(i), 0.0);
        for (int j = 1; j <= 3; ++j) EXPECT_EQ(z(i, j), i == j ? 1.0 : 0.0);
    }
    const DataSet data = chemicals(3);
    List<double> values, vectors;
    ASSERT_TRUE(eigenDecompose(data.numChemicals, a, values, vectors));
    for (int i = 1; i <= 3; ++i) {
        EXPECT_EQ(values(i), 0.0);
        for (int j = 1; j <= 3; ++j) EXPECT_EQ(vectors((i - 1) * 3 + j), i + j == 4 ? 1.0 : 0.0);
    }
}

TEST(EigenDecompose, ExhaustedBudgetIsFalseAndTheArraysAreStillFilled) {
    // Eigenvalues 1 and -1 twice each, both defective (one eigenvector each),
    // and 0: the double-shift iteration converges only linearly on such a
    // matrix and 30 n steps are not enough.
    const double m[5][5] = {{0, 0, -2, 0, -1}, {-1, 0, 0, 0, 0}, {0, 0, 0, 0, 0}, {0, 1, 0, 0, 0}, {-2, 0, 1, -1, 0}};
    SquareMatrix a(5);
    for (int i = 1; i <= 5; ++i)
        for (int j = 1; j <= 5; ++j) a(i, j) = m[i - 1][j - 1];
    const Eigen::MatrixXd ae = toEigen(a, 5);
    const Eigen::MatrixXd shifted = ae - Eigen::MatrixXd::Identity(5, 5);
    ASSERT_EQ(Eigen::FullPivLU<Eigen::MatrixXd>(shifted).rank(), 4);            // one eigenvector for 1
    ASSERT_EQ(Eigen::FullPivLU<Eigen::MatrixXd>(shifted * shifted).rank(), 3);  // multiplicity 2

    SquareMatrix work = a, z;
    List<double> wr, wi, fv1, fv2;
    std::int16_t ierr = 0;
    // Row 3 is zero: the balancing isolates its eigenvalue 0 at the bottom and
    // leaves the block 1..4, none of whose eigenvalues converges: the one
    // sought when the budget runs out is the fourth.
    EXPECT_FALSE(realGeneralEigen(true, 5, 5, work, wr, wi, z, fv1, fv2, ierr));
    EXPECT_EQ(ierr, 4);

    const DataSet data = chemicals(5);
    List<double> values, vectors;
    EXPECT_FALSE(eigenDecompose(data.numChemicals, a, values, vectors));
    EXPECT_EQ(values.ub(), 5);
    EXPECT_EQ(vectors.ub(), 25);
    double sum = 0.0;
    for (int i = 1; i <= 25; ++i) sum += std::fabs(vectors(i));
    EXPECT_GT(sum, 0.0);
}

TEST(HessenbergEigenvalues, NaNNeverConvergesAndReportsTheEigenvalueSought) {
    SquareMatrix h(3), z(3);
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= 3; ++j) h(i, j) = std::numeric_limits<double>::quiet_NaN();
    SquareMatrix h2 = h;
    List<double> wr, wi;
    std::int16_t ierr = 0;
    hessenbergEigenvalues(3, 3, 1, 3, h, wr, wi, ierr);
    EXPECT_EQ(ierr, 3);
    for (int i = 1; i <= 3; ++i) z(i, i) = 1.0;
    hessenbergEigensystem(3, 3, 1, 3, h2, wr, wi, z, ierr);
    EXPECT_EQ(ierr, 3);
}

TEST(RealGeneralEigen, InfinityOrNaNIsAnOverflow) {
    const DataSet data = chemicals(2);
    List<double> values, vectors;
    SquareMatrix a = chainMatrix({0.1, 0.2}, {1.0, 1.0});
    a(2, 1) = std::numeric_limits<double>::infinity();
    EXPECT_EQ(raisedError([&] { eigenDecompose(data.numChemicals, a, values, vectors); }), err::Overflow);
    a(2, 1) = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(raisedError([&] { eigenDecompose(data.numChemicals, a, values, vectors); }), err::Overflow);
}

TEST(RealGeneralEigen, ElementsTooFarApartToBalanceAreAnOverflow) {
    // Row 1 against column 1 is 1e300 against 5e-324: the power of 16 that
    // would even them out lies beyond the range of a double.
    const DataSet data = chemicals(2);
    SquareMatrix a(2);
    a(1, 1) = 1.0;
    a(1, 2) = 1e300;
    a(2, 1) = 4.9e-324;
    a(2, 2) = 1.0;
    List<double> values, vectors;
    EXPECT_EQ(raisedError([&] { eigenDecompose(data.numChemicals, a, values, vectors); }), err::Overflow);
}

TEST(RealGeneralEigen, OrderAboveTheDeclaredOneIsRefused) {
    SquareMatrix a(3), z;
    List<double> wr, wi, fv1, fv2;
    std::int16_t ierr = 0;
    EXPECT_FALSE(realGeneralEigen(true, 2, 3, a, wr, wi, z, fv1, fv2, ierr));
    EXPECT_EQ(ierr, 30);
}

TEST(EigenDecompose, MatrixSmallerThanTheChemicalCountIsASubscriptError) {
    const DataSet data = chemicals(3);
    List<double> values, vectors;
    EXPECT_EQ(raisedError([&] { eigenDecompose(data.numChemicals, SquareMatrix(2), values, vectors); }), err::SubscriptOutOfRange);
}

// --- the 16-bit index arithmetic ---

TEST(MatrixOperations, OrderAbove181OverflowsTheIndexArithmetic) {
    // 181 * 181 = 32761 fits in 16 bits, 182 * 182 = 33124 does not.
    std::vector<double> k, y;
    for (int i = 1; i <= 182; ++i) {
        k.push_back(0.01 * i);
        y.push_back(0.01);
    }
    const SquareMatrix big = chainMatrix(k, y);
    List<double> values, vectors, inverse;

    const DataSet fits = chemicals(181);
    EXPECT_TRUE(eigenDecompose(fits.numChemicals, big, values, vectors));
    EXPECT_EQ(vectors.ub(), 32761);
    EXPECT_EQ(values(1), -0.01);
    EXPECT_EQ(values(181), -1.81);
    EXPECT_TRUE(invertEigenMatrix(fits.numChemicals, vectors, inverse));
    EXPECT_EQ(inverse.ub(), 32761);

    const DataSet overflows = chemicals(182);
    EXPECT_EQ(raisedError([&] { eigenDecompose(overflows.numChemicals, big, values, vectors); }), err::Overflow);
    List<double> large(32767);
    EXPECT_EQ(raisedError([&] { invertEigenMatrix(overflows.numChemicals, large, inverse); }), err::Overflow);
    EXPECT_EQ(raisedError([&] { invertInPlace(182, large); }), err::Overflow);
    List<double> product;
    EXPECT_EQ(raisedError([&] { matrixProduct(182, 182, 1, large, large, product); }), err::Overflow);
    // A long vector is no square: 182 by 1 times 1 by 1 is fine.
    List<double> column(182), one = flat({2.0});
    for (int i = 1; i <= 182; ++i) column(i) = i;
    matrixProduct(182, 1, 1, column, one, product);
    EXPECT_EQ(product.ub(), 182);
    EXPECT_EQ(product(182), 364.0);
}

// --- products and inverses ---

TEST(MatrixProduct, RowAfterRowProducts) {
    // (1 2 3; 4 5 6) (7 8; 9 10; 11 12) = (58 64; 139 154).
    const List<double> a = flat({1, 2, 3, 4, 5, 6});
    const List<double> b = flat({7, 8, 9, 10, 11, 12});
    List<double> c = flat({9, 9, 9, 9, 9, 9, 9, 9});
    matrixProduct(2, 3, 2, a, b, c);
    ASSERT_EQ(c.ub(), 4);
    EXPECT_EQ(c(1), 58.0);
    EXPECT_EQ(c(2), 64.0);
    EXPECT_EQ(c(3), 139.0);
    EXPECT_EQ(c(4), 154.0);
    // A column vector.
    List<double> w;
    matrixProduct(2, 3, 1, a, flat({1, -1, 2}), w);
    ASSERT_EQ(w.ub(), 2);
    EXPECT_EQ(w(1), 5.0);
    EXPECT_EQ(w(2), 11.0);
}

TEST(MatrixProduct, OverflowOfASumIsAnError) {
    List<double> c;
    EXPECT_EQ(raisedError([&] { matrixProduct(1, 2, 1, flat({1e308, 1e308}), flat({1, 1}), c); }), err::Overflow);
}

TEST(InvertInPlace, TwoByTwoByHand) {
    // (4 7; 2 6)^-1 = (0.6 -0.7; -0.2 0.4).
    List<double> a = flat({4, 7, 2, 6});
    ASSERT_TRUE(invertInPlace(2, a));
    EXPECT_CLOSE(a(1), 0.6, 1e-15, 0.0);
    EXPECT_CLOSE(a(2), -0.7, 1e-15, 0.0);
    EXPECT_CLOSE(a(3), -0.2, 1e-15, 0.0);
    EXPECT_CLOSE(a(4), 0.4, 1e-15, 0.0);
}

TEST(InvertInPlace, FullPivotingUndoesRowAndColumnExchanges) {
    // The largest elements sit off the diagonal so that both exchanges happen.
    std::mt19937 generator(3u);
    for (int n : {3, 4, 6, 9, 20}) {
        Eigen::MatrixXd m = randomMatrix(n, generator);
        for (int i = 0; i < n; ++i) m(i, (i + 1) % n) += 5.0 + i;
        List<double> a = eigenToFlat(m);
        ASSERT_TRUE(invertInPlace(static_cast<std::int16_t>(n), a));
        const Eigen::MatrixXd reference = m.inverse();
        const Eigen::MatrixXd mine = flatToEigen(a, n);
        EXPECT_LE((mine - reference).cwiseAbs().maxCoeff(), 1e-13 * reference.cwiseAbs().maxCoeff()) << "n " << n;
        EXPECT_LE((m * mine - Eigen::MatrixXd::Identity(n, n)).cwiseAbs().maxCoeff(), 1e-13);
    }
}

TEST(InvertInPlace, SingularMatrixIsFalse) {
    List<double> a = flat({1, 2, 2, 4});
    EXPECT_FALSE(invertInPlace(2, a));
}

TEST(InvertInPlace, PivotThatDoesNotRegisterAgainstOneIsTakenForZero) {
    // 1 + 1e-16 rounds to 1; 1 + 1.2e-16 does not.
    List<double> tiny = flat({1e-16, 0, 0, 1e-16});
    EXPECT_FALSE(invertInPlace(2, tiny));
    EXPECT_EQ(tiny(1), 1e-16);  // refused at the first pivot, untouched
    List<double> second = flat({1, 0, 0, 1e-17});
    EXPECT_FALSE(invertInPlace(2, second));
    List<double> small = flat({1.2e-16, 0, 0, 1.2e-16});
    ASSERT_TRUE(invertInPlace(2, small));
    EXPECT_CLOSE(small(1), 1.0 / 1.2e-16, 1e-15, 0.0);
    EXPECT_CLOSE(small(4), 1.0 / 1.2e-16, 1e-15, 0.0);
}

TEST(InvertEigenMatrix, SingularInputIsPassedOnAsTheEliminationLeftIt) {
    // (1 2; 2 4): pivot 4 at (2, 2), both exchanged to the front, then
    // (0.25 0.5; -0.5 0) and a zero pivot. The result is still true.
    const DataSet data = chemicals(2);
    const List<double> singular = flat({1, 2, 2, 4});
    List<double> inverse;
    EXPECT_TRUE(invertEigenMatrix(data.numChemicals, singular, inverse));
    ASSERT_EQ(inverse.ub(), 4);
    EXPECT_EQ(inverse(1), 0.25);
    EXPECT_EQ(inverse(2), 0.5);
    EXPECT_EQ(inverse(3), -0.5);
    EXPECT_EQ(inverse(4), 0.0);
    EXPECT_EQ(singular(4), 4.0);  // the input is not touched
}

// --- the steps ---

TEST(BalanceMatrix, ScalesByPowersOfSixteen) {
    // Off-diagonal elements eight decades apart.
    SquareMatrix a(3);
    const double m[3][3] = {{1, 1e4, 2}, {1e-4, 2, 3e-4}, {3, 1e3, 1}};
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= 3; ++j) a(i, j) = m[i - 1][j - 1];
    SquareMatrix b = a;
    std::int16_t low = 0, igh = 0;
    List<double> scale;
    balanceMatrix(3, 3, b, low, igh, scale);
    EXPECT_EQ(low, 1);
    EXPECT_EQ(igh, 3);
    bool scaled = false;
    for (int i = 1; i <= 3; ++i) {
        int exponent = 0;
        EXPECT_EQ(std::frexp(scale(i), &exponent), 0.5);  // a power of 2 ...
        EXPECT_EQ((exponent - 1) % 4, 0);                 // ... of 16
        scaled = scaled || scale(i) != 1.0;
    }
    EXPECT_TRUE(scaled);
    // The balanced matrix is D^-1 A D, exactly.
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= 3; ++j) EXPECT_EQ(b(i, j), a(i, j) / scale(i) * scale(j));
    // Row 2 and column 2 no longer differ by decades.
    const double column = std::fabs(b(1, 2)) + std::fabs(b(3, 2));
    const double row = std::fabs(b(2, 1)) + std::fabs(b(2, 3));
    EXPECT_LT(std::max(column, row) / std::min(column, row), 256.0);
}

TEST(BalanceMatrix, IsolatedRowsGoToTheBottomAndColumnsToTheLeft) {
    // Row 1 of a lower bidiagonal matrix has nothing off the diagonal: it is
    // isolated first, and so on, leaving nothing to scale.
    SquareMatrix a = chainMatrix({0.1, 0.2, 0.3}, {1.0, 1.0, 1.0});
    std::int16_t low = 0, igh = 0;
    List<double> scale;
    balanceMatrix(3, 3, a, low, igh, scale);
    EXPECT_EQ(low, 1);
    EXPECT_EQ(igh, 1);
    // Upper triangular, chemicals in reverse order.
    EXPECT_EQ(a(1, 1), -0.3);
    EXPECT_EQ(a(2, 2), -0.2);
    EXPECT_EQ(a(3, 3), -0.1);
    EXPECT_EQ(a(2, 1), 0.0);
    EXPECT_EQ(a(3, 1), 0.0);
    EXPECT_EQ(a(3, 2), 0.0);

    // Column 1 has nothing off the diagonal: it is pushed to the left.
    SquareMatrix c(3);
    c(1, 1) = 5.0;
    c(2, 2) = 1.0;
    c(2, 3) = 2.0;
    c(3, 2) = 3.0;
    c(1, 2) = 7.0;
    balanceMatrix(3, 3, c, low, igh, scale);
    EXPECT_EQ(low, 2);
    EXPECT_EQ(igh, 3);
    EXPECT_EQ(scale(1), 1.0);
}

TEST(UndoBalance, NoColumnsLeavesZAlone) {
    SquareMatrix z(2);
    z(1, 2) = 3.0;
    const SquareMatrix before = z;
    undoBalance(2, 2, 1, 1, flat({1, 2}), 0, z);
    EXPECT_EQ(z, before);
}

TEST(UndoBalance, ScalesTheBlockAndExchangesTheIsolatedRows) {
    // Block 2..2 scaled by 16; row 1 exchanged with row 3 (scale(1) = 3);
    // row 3 stays (scale(3) = 3).
    SquareMatrix z(3);
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= 3; ++j) z(i, j) = 10.0 * i + j;
    undoBalance(3, 3, 2, 2, flat({3, 16, 3}), 3, z);
    for (int j = 1; j <= 3; ++j) {
        EXPECT_EQ(z(1, j), 30.0 + j);
        EXPECT_EQ(z(2, j), 20.0 + j);  // low == igh: no scaling
        EXPECT_EQ(z(3, j), 10.0 + j);
    }
    SquareMatrix w(3);
    for (int i = 1; i <= 3; ++i) w(i, 1) = 1.0;
    undoBalance(3, 3, 1, 2, flat({16, 0.5, 3}), 1, w);
    EXPECT_EQ(w(1, 1), 16.0);
    EXPECT_EQ(w(2, 1), 0.5);
    EXPECT_EQ(w(3, 1), 1.0);
}

TEST(ReduceToHessenberg, SimilarityToUpperHessenbergForm) {
    // Q' A Q = H with Q from accumulateReduction.
    std::mt19937 generator(11u);
    const int n = 6;
    const Eigen::MatrixXd ae = randomMatrix(n, generator);
    SquareMatrix h = fromEigen(ae), q;
    List<double> ort;
    reduceToHessenberg(n, n, 1, n, h, ort);
    accumulateReduction(n, n, 1, n, h, ort, q);
    const Eigen::MatrixXd qe = toEigen(q, n);
    EXPECT_LE((qe.transpose() * qe - Eigen::MatrixXd::Identity(n, n)).cwiseAbs().maxCoeff(), 1e-14);
    const Eigen::MatrixXd he = qe.transpose() * ae * qe;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            if (i > j + 1) {
                EXPECT_LE(std::fabs(he(i, j)), 1e-14);
            } else {
                EXPECT_CLOSE(he(i, j), h(i + 1, j + 1), 1e-12, 1e-14);
            }
        }
}

TEST(MatrixHelpers, ComplexDivisionAndSmallFunctions) {
    double cr = 0, ci = 0;
    complexDivide(1, 2, 3, 4, cr, ci);  // (1 + 2i) / (3 + 4i) = (11 + 2i) / 25
    EXPECT_CLOSE(cr, 0.44, 1e-15, 0.0);
    EXPECT_CLOSE(ci, 0.08, 1e-15, 0.0);
    complexDivide(1e300, 1e300, 1e300, -1e300, cr, ci);  // (1 + i) / (1 - i) = i, without overflow
    EXPECT_CLOSE(cr, 0.0, 0.0, 1e-15);
    EXPECT_CLOSE(ci, 1.0, 1e-15, 0.0);
    EXPECT_EQ(signTransfer(-3.0, 0.0), 3.0);
    EXPECT_EQ(signTransfer(-3.0, 2.0), 3.0);
    EXPECT_EQ(signTransfer(3.0, -0.5), -3.0);
    EXPECT_EQ(minInteger(4, -2), -2);
    EXPECT_EQ(maxReal(-1.5, 2.5), 2.5);
}
