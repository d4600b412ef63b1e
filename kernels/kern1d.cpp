#include "kernels/kern1d.h"

#include <cmath>

#include "kernels/erfc_scaled.h"
#include "shell/base/runtime_error.h"

namespace bm {

namespace {
constexpr double kPi = 3.14159265358979323846;
}  // namespace

std::int16_t exerfc(double a, double b, double& result) {
    if (std::isnan(a) || std::isnan(b) || a == HUGE_VAL) raiseError(err::Overflow);
    const double r = expErfc(a, b);
    if (std::isinf(r) || std::isnan(r)) raiseError(err::Overflow);
    result = r;
    return 1;
}

namespace {

// One branch (base, base + pi) of the cotangent, base = n pi. With
// beta = base + d the eigenvalue condition beta cot beta - q beta^2 + p times
// sin d (> 0 inside the branch) is
//   h(d) = beta cos d + (p - q beta^2) sin d,
// which has the sign of the condition and no poles.
struct Branch {
    double base;
    double p;
    double q;
};

// d cos d - sin d, whose two parts cancel as d goes to 0.
double cosTermMinusSine(double d) {
    if (d >= 1.0) return d * std::cos(d) - std::sin(d);
    // sum over k >= 1 of (-1)^k 2k d^(2k+1) / (2k+1)!
    const double d2 = d * d;
    double power = d * d2;  // d^(2k+1)
    double factorial = 6.0;  // (2k+1)!
    double sum = 0.0;
    for (int k = 1; k < 30; ++k) {
        const double term = (k % 2 ? -1.0 : 1.0) * 2.0 * k * power / factorial;
        sum += term;
        if (std::fabs(term) <= 1e-18 * std::fabs(sum)) break;
        power *= d2;
        factorial *= (2.0 * k + 2.0) * (2.0 * k + 3.0);
    }
    return sum;
}

void evaluate(const Branch& br, double d, double& h, double& dh) {
    const double beta = br.base + d;
    const double s = std::sin(d);
    const double c = std::cos(d);
    const double k = br.p - br.q * beta * beta;
    if (br.base == 0.0)
        h = cosTermMinusSine(d) + (1.0 + br.p) * s - br.q * beta * beta * s;  // first branch: keep the digits near 0
    else
        h = beta * c + k * s;
    dh = (1.0 + k) * c - (beta + 2.0 * br.q * beta) * s;
}

// The root of h between lo and hi, where h has the sign `sign` at lo and the
// opposite one at hi (the end signs are known, the ends are not evaluated):
// Newton's method, falling back to bisection whenever a step would leave the
// bracket or shrink it too slowly.
double polish(const Branch& br, double lo, double hi, double sign) {
    double d = 0.5 * (lo + hi);
    double dxOld = hi - lo;
    double dx = dxOld;
    double h = 0.0;
    double dh = 0.0;
    evaluate(br, d, h, dh);
    h *= sign;
    dh *= sign;
    for (int iteration = 0; iteration < 400; ++iteration) {
        if (h == 0.0) return d;
        if (h > 0.0)
            lo = d;
        else
            hi = d;
        const bool outside = ((d - hi) * dh - h) * ((d - lo) * dh - h) > 0.0;
        if (outside || std::fabs(2.0 * h) > std::fabs(dxOld * dh) || dh == 0.0) {
            dxOld = dx;
            dx = 0.5 * (hi - lo);
            d = lo + dx;
        } else {
            dxOld = dx;
            dx = h / dh;
            d -= dx;
        }
        const double scale = br.base + std::fabs(d);
        if (std::fabs(dx) <= 1e-16 * scale || hi - lo <= 2e-16 * scale) return d;
        evaluate(br, d, h, dh);
        h *= sign;
        dh *= sign;
    }
    return d;
}

// Sign of h just right of d = 0: +1 in the later branches (the cotangent's
// pole), in the first branch the sign of 1 + p, or of the next term when that is 0.
double signAtStart(const Branch& br) {
    if (br.base > 0.0) return 1.0;
    const double first = 1.0 + br.p;
    if (first != 0.0) return first > 0.0 ? 1.0 : -1.0;
    const double next = -1.0 / 3.0 - br.q;
    return next > 0.0 ? 1.0 : (next < 0.0 ? -1.0 : 0.0);
}

// Roots of one branch, appended to roots[count...] up to kRootCount.
// Returns the number found.
int branchRoots(const Branch& br, double* roots, int& count) {
    const int before = count;
    if (br.q >= 0.0) {
        // The condition falls monotonically across the branch: at most one root,
        // present in the later branches and, in the first, when it starts above 0.
        if (signAtStart(br) > 0.0) roots[count++] = br.base + polish(br, 0.0, kPi, 1.0);
        return count - before;
    }
    // q < 0: -q beta^2 rises, so the branch may hold several roots. Scan it on a
    // fine grid and polish every change of sign.
    constexpr int kSamples = 64;
    double previousD = 0.0;
    double previousSign = signAtStart(br);
    for (int j = 1; j <= kSamples && count < kRootCount; ++j) {
        const double d = kPi * j / kSamples;
        double sign = -1.0;  // at the pole that ends the branch the condition goes to minus infinity
        if (j < kSamples) {
            double h = 0.0;
            double dh = 0.0;
            evaluate(br, d, h, dh);
            sign = h > 0.0 ? 1.0 : (h < 0.0 ? -1.0 : 0.0);
            if (sign == 0.0) {
                roots[count++] = br.base + d;
                previousD = d;
                previousSign = 0.0;
                continue;
            }
        }
        if (previousSign != 0.0 && sign != previousSign) roots[count++] = br.base + polish(br, previousD, d, previousSign);
        previousD = d;
        previousSign = sign;
    }
    return count - before;
}

std::int16_t fillRoots(double p, double q, double* roots) {
    if (!std::isfinite(p) || !std::isfinite(q)) {
        for (int i = 0; i < kRootCount; ++i) roots[i] = 0.0;
        return 0;
    }
    std::int16_t status = 1;
    int count = 0;
    for (int n = 0; count < kRootCount; ++n) {
        const Branch br{n * kPi, p, q};
        const int found = branchRoots(br, roots, count);
        if (found == 0) status = 0;
    }
    return status;
}

}  // namespace

std::int16_t root1(double p, double& firstRoot) { return fillRoots(p, 0.0, &firstRoot); }

RootSequence::RootSequence(double p, double q) : p_(p), q_(q), finite_(std::isfinite(p) && std::isfinite(q)) {}

void RootSequence::extendTo(int count) const {
    // Whole branches, as the table is filled, so that every root is the table's.
    // The roots of a branch are written before the count that publishes them.
    int found = count_.load(std::memory_order_relaxed);
    while (found < count && found < kRootCount) {
        const int before = found;
        branchRoots(Branch{nextBranch_ * kPi, p_, q_}, roots_.data(), found);
        if (nextBranch_ == 0 && found == before) firstBranchEmpty_ = true;
        ++nextBranch_;
        count_.store(found, std::memory_order_release);
    }
}

double RootSequence::rootBeyondFound(int i) const {
    if (i < 1 || i > kRootCount) raiseError(err::SubscriptOutOfRange);
    if (!finite_) return 0.0;
    const std::lock_guard<std::mutex> lock(extending_);
    extendTo(i);
    return roots_[static_cast<std::size_t>(i - 1)];
}

bool RootSequence::firstBranchHoldsRoot() const {
    if (!finite_) return false;
    const std::lock_guard<std::mutex> lock(extending_);
    extendTo(1);
    return !firstBranchEmpty_;
}

std::int16_t root3(double p, double q, double& firstRoot) { return fillRoots(p, q, &firstRoot); }

}  // namespace bm
