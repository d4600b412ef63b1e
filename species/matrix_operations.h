#pragma once
// MatrixOperations: the system's only linear algebra. The eigen decomposition
// of the decay-chain matrix (balance, orthogonal reduction to Hessenberg form,
// accumulation, shifted double QR with back-substitution, undoing the
// balancing), the inverse of the eigen matrix and matrix products.
//
// Layouts, all subscripts from 1:
// - square matrix (SquareMatrix): element (i, j) at j * stride + i;
// - flat matrix (List<double>, n * n): element (i, j) at (i - 1) * n + j, row after row;
// - vector (List<double>): n doubles.
// Orders and index arithmetic are 16-bit: n * n past 32767 (n > 181) is error 6.
// Results passed in are re-dimensioned here; work arrays are local. Nothing
// shows a message: failures are the boolean results, the caller owns the words.

#include <cstdint>
#include <string>

#include "model/arrays.h"
#include "species/matrix_square.h"

namespace bm {

// Eigenvalues and eigenvectors of the n by n matrix a (n, the number of chemicals).
// a is left as it is. The pairs come in reverse order of the solver's, which
// for a chain is chemical order (-k1 first); each eigenvector column is scaled
// to a unit diagonal element where that element is not exactly 0. eigenVectors
// is flat. False only when the QR iteration ran out of its budget; the arrays
// are filled all the same. Complex eigenvalues are not reported (real parts only).
bool eigenDecompose(std::int16_t n, const SquareMatrix& a, List<double>& eigenValues, List<double>& eigenVectors);

// inverse = matrix⁻¹ (flat, n by n). Always true: a singular
// matrix leaves in inverse what the elimination left.
bool invertEigenMatrix(std::int16_t n, const List<double>& matrix, List<double>& inverse);

// termTexts(i) = text of (inverse * c)(i), c being the numbers of
// sourceTexts(1..n) by the strict conversion (error 13 for a text that is not
// a number); termTexts is re-dimensioned to n. The chain solution passes the
// chemicals' suppositionConcentration and chemicalTermConcentration. Returns true.
bool transformConcentrations(std::int16_t n, const List<double>& inverse, const List<std::string>& sourceTexts,
                             List<std::string>& termTexts);

// c (m by p) = a (m by k) * b (k by p), all flat; c is re-dimensioned to m * p.
// A column vector is the case p = 1. c must not be a or b.
void matrixProduct(std::int16_t m, std::int16_t k, std::int16_t p, const List<double>& a, const List<double>& b,
                   List<double>& c);

// Gauss-Jordan inversion in place with full pivoting of the flat n by n matrix
// a. False, with a partly eliminated, when a pivot is so small that 1 + pivot
// rounds to 1 (below about 1.1e-16).
bool invertInPlace(std::int16_t n, List<double>& a);

// The real general eigenproblem of the n by n block of a (declared order nm).
// wr, wi: eigenvalues; z: eigenvectors (a complex pair in two columns, real part
// first, for the eigenvalue with wi > 0), each of Euclidean length 1, when
// wantVectors. fv1, fv2 end with modulus and damping ratio of each eigenvalue.
// a is destroyed. Eigenvalues at or below eps times the matrix norm become 0.
// False with ierr = index of the eigenvalue that did not converge, or 10 * n
// when n exceeds nm. A matrix holding an infinity or NaN is error 6.
bool realGeneralEigen(bool wantVectors, std::int16_t nm, std::int16_t n, SquareMatrix& a, List<double>& wr,
                      List<double>& wi, SquareMatrix& z, List<double>& fv1, List<double>& fv2, std::int16_t& ierr);

// The steps. Outputs are re-dimensioned to nm.
// Permutes and scales (powers of 16) a to isolate eigenvalues and even out
// row and column norms; the rest is the block low..igh.
void balanceMatrix(std::int16_t nm, std::int16_t n, SquareMatrix& a, std::int16_t& low, std::int16_t& igh,
                   List<double>& scale);
// Householder reduction of the block low..igh to upper Hessenberg form.
void reduceToHessenberg(std::int16_t nm, std::int16_t n, std::int16_t low, std::int16_t igh, SquareMatrix& a,
                        List<double>& ort);
// z = the orthogonal transformation of reduceToHessenberg (ort is used as work).
void accumulateReduction(std::int16_t nm, std::int16_t n, std::int16_t low, std::int16_t igh, const SquareMatrix& a,
                         List<double>& ort, SquareMatrix& z);
// Eigenvalues of the upper Hessenberg h (destroyed); ierr as realGeneralEigen.
void hessenbergEigenvalues(std::int16_t nm, std::int16_t n, std::int16_t low, std::int16_t igh, SquareMatrix& h,
                           List<double>& wr, List<double>& wi, std::int16_t& ierr);
// Eigenvalues and eigenvectors of h; z comes in with the reduction's
// transformation and leaves with the vectors (not normalised).
void hessenbergEigensystem(std::int16_t nm, std::int16_t n, std::int16_t low, std::int16_t igh, SquareMatrix& h,
                           List<double>& wr, List<double>& wi, SquareMatrix& z, std::int16_t& ierr);
// Back-transformation of columns 1..m of z by the balancing.
void undoBalance(std::int16_t nm, std::int16_t n, std::int16_t low, std::int16_t igh, const List<double>& scale,
                 std::int16_t m, SquareMatrix& z);

// (cr, ci) = (ar, ai) / (br, bi), scaled against overflow.
void complexDivide(double ar, double ai, double br, double bi, double& cr, double& ci);
// |a| if b >= 0, else -|a|.
double signTransfer(double a, double b);
std::int16_t minInteger(std::int16_t a, std::int16_t b);
double maxReal(double a, double b);

}  // namespace bm
