// The operations the chain solution calls: the eigen decomposition in chemical
// order, the inverse of the eigen matrix, the transformed source
// concentrations, and the flat-matrix product and inversion.

#include "species/matrix_operations.h"

#include <cmath>
#include <utility>
#include <vector>

#include "model/number_text.h"
#include "shell/base/checked_math.h"
#include "species/matrix_views.h"

namespace bm {

using matrixdetail::SquareView;
using matrixdetail::viewOf;

namespace {

// The size of a flat n by n matrix; its products are the 16-bit index arithmetic.
std::int16_t flatSize(long long rows, long long columns) { return checkedInt16(rows * columns); }

}  // namespace

bool eigenDecompose(std::int16_t n, const SquareMatrix& a, List<double>& eigenValues, List<double>& eigenVectors) {
    eigenValues.redim(n);
    eigenVectors.redim(flatSize(n, n));
    SquareMatrix work(n);
    SquareMatrix z(n);
    List<double> wr(n), wi(n), fv1(n), fv2(n);

    // The caller's matrix stays as it is.
    int aStride = 0;
    const double* ap = matrixdetail::constPointer(a, n, aStride);
    const SquareView w = viewOf(work, n);
    for (int j = 1; j <= n; ++j)
        for (int i = 1; i <= n; ++i) w(i, j) = ap[j * aStride + i];

    std::int16_t ierr = 0;
    const bool converged = realGeneralEigen(true, n, n, work, wr, wi, z, fv1, fv2, ierr);

    // Reverse the pairs: balancing a chain matrix isolates row 1 first, which
    // leaves the chemicals in reverse order. Done also after a failure, on what
    // the solver left.
    SquareMatrix reversed(n);
    List<double> values(n);
    const SquareView zv = viewOf(z, n);
    const SquareView rv = viewOf(reversed, n);
    for (int i = 1; i <= n; ++i) {
        const int from = n - i + 1;
        for (int j = 1; j <= n; ++j) rv(j, i) = zv(j, from);
        values(i) = wr(from);
    }
    // Unit diagonal where the diagonal element is not exactly 0.
    for (int i = 1; i <= n; ++i) {
        const double diagonal = rv(i, i);
        if (diagonal == 0.0) continue;
        for (int j = 1; j <= n; ++j) rv(j, i) = fp::div(rv(j, i), diagonal);
    }
    double* flat = viewOf(eigenVectors, n * n);
    for (int i = 1; i <= n; ++i)
        for (int j = 1; j <= n; ++j) flat[(i - 1) * n + j] = rv(i, j);
    for (int i = 1; i <= n; ++i) eigenValues(i) = values(i);
    return converged;
}

bool invertEigenMatrix(std::int16_t n, const List<double>& matrix, List<double>& inverse) {
    const std::int16_t size = flatSize(n, n);
    inverse.redim(size);
    List<double> work(size);
    const double* in = viewOf(matrix, size);
    for (int i = 1; i <= size; ++i) work(i) = in[i];
    // A singular matrix is passed on as the elimination left it: the caller
    // cannot tell, by design of the chain solution.
    (void)invertInPlace(n, work);
    for (int i = 1; i <= size; ++i) inverse(i) = work(i);
    return true;
}

bool transformConcentrations(std::int16_t n, const List<double>& inverse, const List<std::string>& sourceTexts,
                             List<std::string>& termTexts) {
    List<double> sources(n);
    for (int i = 1; i <= n; ++i) sources(i) = numericValue(sourceTexts(i));
    termTexts.redim(n);
    List<double> terms;
    matrixProduct(n, n, 1, inverse, sources, terms);
    for (int i = 1; i <= n; ++i) termTexts(i) = generalText(terms(i));
    return true;
}

void matrixProduct(std::int16_t m, std::int16_t k, std::int16_t p, const List<double>& a, const List<double>& b,
                   List<double>& c) {
    const std::int16_t cSize = flatSize(m, p);
    const double* av = viewOf(a, flatSize(m, k));
    const double* bv = viewOf(b, flatSize(k, p));
    c.redim(cSize);
    double* cv = c.data();
    for (int i = 1; i <= m; ++i) {
        for (int j = 1; j <= p; ++j) {
            const int at = (i - 1) * p + j;
            cv[at] = 0.0;
            for (int l = 1; l <= k; ++l) cv[at] += av[(i - 1) * k + l] * bv[(l - 1) * p + j];
            cv[at] = fp::checked(cv[at]);
        }
    }
}

bool invertInPlace(std::int16_t n, List<double>& a) {
    double* v = viewOf(a, flatSize(n, n));
    const auto at = [v, n](int i, int j) -> double& { return v[(i - 1) * n + j]; };
    const auto swapRows = [&](int r1, int r2) {
        for (int j = 1; j <= n; ++j) std::swap(at(r1, j), at(r2, j));
    };
    const auto swapColumns = [&](int c1, int c2) {
        for (int i = 1; i <= n; ++i) std::swap(at(i, c1), at(i, c2));
    };
    std::vector<std::int16_t> pivotRow(static_cast<std::size_t>(n < 0 ? 0 : n) + 1);
    std::vector<std::int16_t> pivotColumn(pivotRow.size());

    for (int k = 1; k <= n; ++k) {
        double big = 0.0;
        int row = k, column = k;
        for (int i = k; i <= n; ++i)
            for (int j = k; j <= n; ++j)
                if (std::fabs(at(i, j)) > big) {
                    big = std::fabs(at(i, j));
                    row = i;
                    column = j;
                }
        pivotRow[static_cast<std::size_t>(k)] = static_cast<std::int16_t>(row);
        pivotColumn[static_cast<std::size_t>(k)] = static_cast<std::int16_t>(column);
        // A pivot that does not register against 1 is taken for zero.
        volatile double onePlusBig = big + 1.0;
        if (onePlusBig == 1.0) return false;

        if (row != k) swapRows(k, row);
        if (column != k) swapColumns(k, column);
        at(k, k) = 1.0 / at(k, k);
        const double pivot = at(k, k);
        for (int j = 1; j <= n; ++j)
            if (j != k) at(k, j) = pivot * at(k, j);
        const double* pivotRowData = &at(k, 0);
        for (int i = 1; i <= n; ++i) {
            if (i == k) continue;
            double* rowData = &at(i, 0);
            const double factor = rowData[k];
            for (int j = 1; j < k; ++j) rowData[j] = rowData[j] - factor * pivotRowData[j];
            for (int j = k + 1; j <= n; ++j) rowData[j] = rowData[j] - factor * pivotRowData[j];
        }
        for (int i = 1; i <= n; ++i)
            if (i != k) at(i, k) = -at(i, k) * pivot;
    }
    // Undo the exchanges in reverse: a row exchange of the matrix is a column
    // exchange of its inverse and the other way round.
    for (int k = n; k >= 1; --k) {
        const int column = pivotColumn[static_cast<std::size_t>(k)];
        const int row = pivotRow[static_cast<std::size_t>(k)];
        if (column != k) swapRows(k, column);
        if (row != k) swapColumns(k, row);
    }
    // An element that overflowed is the overflow of the elimination.
    for (int i = 1; i <= n * n; ++i) (void)fp::checked(v[i]);
    return true;
}

double signTransfer(double a, double b) { return b >= 0.0 ? std::fabs(a) : -std::fabs(a); }

std::int16_t minInteger(std::int16_t a, std::int16_t b) { return a < b ? a : b; }

double maxReal(double a, double b) { return a > b ? a : b; }

}  // namespace bm
