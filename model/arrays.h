#pragma once
// Arrays of the program: subscripts from 0 to an upper bound, used from 1 with
// slot 0 left empty, the upper bound being the count. A subscript outside the
// bounds is run-time error 9, as the error handler expects.

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "shell/base/runtime_error.h"

namespace bm {

// One-index array 0..ub.
template <class T>
class List {
public:
    List() = default;
    explicit List(int upperBound) { redim(upperBound); }

    // Fresh array 0..ub, every element reset. A negative bound leaves it empty.
    void redim(int upperBound) {
        data_.assign(upperBound < 0 ? 0 : static_cast<std::size_t>(upperBound) + 1, T{});
    }
    // Keeps the elements that still fit.
    void redimPreserve(int upperBound) {
        data_.resize(upperBound < 0 ? 0 : static_cast<std::size_t>(upperBound) + 1);
    }
    void clear() { data_.clear(); }

    // Upper bound; -1 for an array that was never dimensioned.
    int ub() const { return static_cast<int>(data_.size()) - 1; }
    bool empty() const { return data_.empty(); }

    T& operator()(int i) { check(i); return data_[static_cast<std::size_t>(i)]; }
    const T& operator()(int i) const { check(i); return data_[static_cast<std::size_t>(i)]; }
    T& operator[](int i) { return (*this)(i); }
    const T& operator[](int i) const { return (*this)(i); }

    // Raw storage, slot 0 first (for kernels that take the address of element 1).
    T* data() { return data_.data(); }
    const T* data() const { return data_.data(); }
    const std::vector<T>& vector() const { return data_; }

    bool operator==(const List&) const = default;

private:
    void check(int i) const {
        if (i < 0 || i > ub()) raiseError(err::SubscriptOutOfRange);
    }
    std::vector<T> data_;
};

// N-index array with each subscript 0..ub(d).
template <class T, int N>
class Array {
public:
    using Bounds = std::array<int, N>;

    Array() { ubs_.fill(-1); }

    void redim(const Bounds& upperBounds) {
        ubs_ = upperBounds;
        std::size_t n = 1;
        for (int d = 0; d < N; ++d) n *= ubs_[d] < 0 ? 0 : static_cast<std::size_t>(ubs_[d]) + 1;
        data_.assign(n, T{});
    }
    // Keeps the elements whose subscripts fit in both the old and the new bounds.
    void redimPreserve(const Bounds& upperBounds) {
        Array old = std::move(*this);
        redim(upperBounds);
        if (old.data_.empty() || data_.empty()) return;
        Bounds common{};
        for (int d = 0; d < N; ++d) common[d] = std::min(old.ubs_[d], ubs_[d]);
        for (int d = 0; d < N; ++d)
            if (common[d] < 0) return;
        Bounds idx{};
        while (true) {
            data_[offset(idx)] = old.data_[old.offset(idx)];
            int d = N - 1;
            while (d >= 0 && idx[d] == common[d]) { idx[d] = 0; --d; }
            if (d < 0) break;
            ++idx[d];
        }
    }
    void clear() { ubs_.fill(-1); data_.clear(); }

    int ub(int dimension) const { return ubs_[static_cast<std::size_t>(dimension)]; }
    const Bounds& bounds() const { return ubs_; }
    bool empty() const { return data_.empty(); }

    template <class... I>
    T& operator()(I... i) {
        static_assert(sizeof...(I) == N);
        return data_[checkedOffset(Bounds{static_cast<int>(i)...})];
    }
    template <class... I>
    const T& operator()(I... i) const {
        static_assert(sizeof...(I) == N);
        return data_[checkedOffset(Bounds{static_cast<int>(i)...})];
    }

    bool operator==(const Array&) const = default;

private:
    std::size_t offset(const Bounds& idx) const {
        std::size_t off = 0;
        for (int d = 0; d < N; ++d) off = off * (static_cast<std::size_t>(ubs_[d]) + 1) + static_cast<std::size_t>(idx[d]);
        return off;
    }
    std::size_t checkedOffset(const Bounds& idx) const {
        for (int d = 0; d < N; ++d)
            if (idx[d] < 0 || idx[d] > ubs_[d]) raiseError(err::SubscriptOutOfRange);
        return offset(idx);
    }

    Bounds ubs_{};
    std::vector<T> data_;
};

}  // namespace bm
