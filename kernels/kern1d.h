#pragma once
// kern1d: the numerical library behind the one-dimensional solutions.
//
// exerfc gives exp(a) * erfc(b) without ever forming the two factors apart
// where one of them would overflow or underflow. root1 and root3 give the
// eigenvalues of the finite-aquifer series:
//
//   Dirichlet inlet, dC/dx = 0 at L:  beta * cot(beta) + p = 0,            p = V L / (2 D)
//   Cauchy inlet,    dC/dx = 0 at L:  beta * cot(beta) - q beta^2 + p = 0, p = V L / (4 D), q = D / (L V)
//
// Both come from the substitution C = exp(V x / (2D) - V^2 t / (4D) - lambda t) w,
// which leaves w_t = D w_xx with the Robin condition w_x + a w = 0 at x = L
// (a = V / (2D)) and w = 0 (Dirichlet) or w_x = a w (Cauchy) at x = 0. The
// eigenfunctions are sin(beta x / L) and beta cos(beta x / L) + aL sin(beta x / L).

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>

namespace bm {

// Number of eigenvalues the finite-aquifer series use.
inline constexpr int kRootCount = 500;

// result = exp(a) * erfc(b), relative accuracy about 1e-15 wherever the result
// is a normal double. A result too large for a double is run-time error 6, as
// is a NaN argument. Returns 1; the callers do not look at it.
std::int16_t exerfc(double a, double b, double& result);

// Fills firstRoot and the kRootCount - 1 doubles behind it with the first
// kRootCount positive roots of beta cot beta + p = 0, ascending, one in each
// branch (n pi, (n + 1) pi) of the cotangent. Returns 0 when a branch holds no
// root (p <= -1 leaves the first branch empty; the table then continues with
// the later branches), 1 otherwise.
std::int16_t root1(double p, double& firstRoot);

// The same for beta cot beta - q beta^2 + p = 0. With q >= 0 each branch holds
// exactly one root; with q < 0 a branch may hold several and all are taken in
// ascending order. Returns 0 when the first branch holds none, 1 otherwise.
std::int16_t root3(double p, double q, double& firstRoot);

// The roots of root1 (q = 0) or root3 worked out branch by branch as they are
// asked for: root i is the value the whole table holds at i, but a series that
// ends after a few terms pays only for the branches it reached (a simulation
// calls the finite-aquifer series once per sample, at one point). The threads
// of a grid share one sequence: a root already found is read without a lock,
// and the one thread that finds further branches holds the lock meanwhile.
class RootSequence {
public:
    RootSequence(double p, double q);
    // Root i, 1 <= i <= kRootCount.
    double operator()(int i) const {
        if (i >= 1 && i <= count_.load(std::memory_order_acquire)) return roots_[static_cast<std::size_t>(i - 1)];
        return rootBeyondFound(i);
    }
    // root1's status: false when the first branch holds no root.
    bool firstBranchHoldsRoot() const;

private:
    double rootBeyondFound(int i) const;
    void extendTo(int count) const;  // with extending_ held
    double p_, q_;
    bool finite_;
    // A cache: the roots found so far (the first count_, never changed once
    // counted) and the next branch to search.
    mutable std::array<double, kRootCount> roots_{};
    mutable std::atomic<int> count_ = 0;
    mutable int nextBranch_ = 0;
    mutable bool firstBranchEmpty_ = false;
    mutable std::mutex extending_;
};

}  // namespace bm
