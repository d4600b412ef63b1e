#pragma once
// Unchecked views for the inner loops of the matrix routines. Each routine
// checks once on entry that its arrays hold the order it works on (error 9
// otherwise), then indexes through these.

#include <cmath>

#include "model/arrays.h"
#include "shell/base/runtime_error.h"
#include "species/matrix_square.h"

namespace bm::matrixdetail {

struct SquareView {
    double* p;
    int stride;
    double& operator()(int i, int j) const { return p[j * stride + i]; }
};

inline SquareView viewOf(SquareMatrix& a, int n) {
    if (n > a.ub()) raiseError(err::SubscriptOutOfRange);
    return {a.data(), a.stride()};
}

inline const double* constPointer(const SquareMatrix& a, int n, int& stride) {
    if (n > a.ub()) raiseError(err::SubscriptOutOfRange);
    stride = a.stride();
    return a.data();
}

// Element 0 first, so v[i] is element i.
inline double* viewOf(List<double>& v, int n) {
    if (n > v.ub()) raiseError(err::SubscriptOutOfRange);
    return v.data();
}
inline const double* viewOf(const List<double>& v, int n) {
    if (n > v.ub()) raiseError(err::SubscriptOutOfRange);
    return v.data();
}

// Re-dimensions an output to at least 0..n (a negative n leaves it empty).
inline void redimOutput(List<double>& v, int n) { v.redim(n < 0 ? 0 : n); }
inline void redimOutput(SquareMatrix& a, int n) { a.redim(n < 0 ? 0 : n); }

}  // namespace bm::matrixdetail
