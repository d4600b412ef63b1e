#pragma once
// The square matrix of the eigen routines: n by n doubles with subscripts 0..n
// in both directions, used from 1 (row 0 and column 0 exist and stay untouched).
// The row subscript runs contiguously, so element (i, j) lies at j * stride + i,
// stride being n + 1. A subscript outside the bounds is run-time error 9.

#include <cstddef>
#include <vector>

#include "shell/base/runtime_error.h"

namespace bm {

class SquareMatrix {
public:
    SquareMatrix() = default;
    explicit SquareMatrix(int n) { redim(n); }

    // Fresh matrix 0..n by 0..n, all 0. A negative order leaves it empty.
    void redim(int n) {
        ub_ = n < 0 ? -1 : n;
        const std::size_t side = static_cast<std::size_t>(ub_ + 1);
        data_.assign(side * side, 0.0);
    }
    void clear() { ub_ = -1; data_.clear(); }

    // The order n; -1 for a matrix that was never dimensioned.
    int ub() const { return ub_; }
    int stride() const { return ub_ + 1; }
    bool empty() const { return data_.empty(); }

    double& operator()(int i, int j) { return data_[offset(i, j)]; }
    const double& operator()(int i, int j) const { return data_[offset(i, j)]; }

    // Raw storage, element (0, 0) first, columns one after the other.
    double* data() { return data_.data(); }
    const double* data() const { return data_.data(); }

    bool operator==(const SquareMatrix&) const = default;

private:
    std::size_t offset(int i, int j) const {
        if (i < 0 || i > ub_ || j < 0 || j > ub_) raiseError(err::SubscriptOutOfRange);
        return static_cast<std::size_t>(j) * static_cast<std::size_t>(ub_ + 1) + static_cast<std::size_t>(i);
    }

    int ub_ = -1;
    std::vector<double> data_;
};

}  // namespace bm
