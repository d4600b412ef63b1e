// root1 and root3: each root substituted into its equation in long double,
// compared with a long double bisection of its branch, and counted one per
// branch of the cotangent.

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "kernels/kern1d.h"
#include "testing/is_close.h"

namespace bm {
namespace {

using Real = long double;
const Real kPiL = 3.14159265358979323846264338327950288L;

// beta cot beta - q beta^2 + p and its derivative, in long double.
Real condition(Real beta, Real p, Real q) { return beta * std::cos(beta) / std::sin(beta) - q * beta * beta + p; }
Real conditionSlope(Real beta, Real q) {
    const Real s = std::sin(beta);
    return std::cos(beta) / s - beta / (s * s) - 2 * q * beta;
}

// The root in branch n by bisection on beta = n pi + d, d in (0, pi): the
// condition falls from +inf (or 1 + p in the first branch) to -inf.
Real bisectBranch(int n, Real p, Real q) {
    Real lo = 0;
    Real hi = kPiL;
    for (int i = 0; i < 200; ++i) {
        const Real mid = 0.5L * (lo + hi);
        const Real beta = n * kPiL + mid;
        const Real f = beta * std::cos(mid) / std::sin(mid) - q * beta * beta + p;  // cot has period pi
        (f > 0 ? lo : hi) = mid;
    }
    return n * kPiL + 0.5L * (lo + hi);
}

void checkMonotoneCase(double p, double q, bool useRoot1) {
    std::vector<double> roots(kRootCount, -1.0);
    const int status = useRoot1 ? root1(p, roots[0]) : root3(p, q, roots[0]);
    EXPECT_EQ(status, 1) << "p=" << p << " q=" << q;
    for (int i = 0; i < kRootCount; ++i) {
        const double beta = roots[static_cast<std::size_t>(i)];
        // one root per branch, in order: root i lies in (i pi, (i+1) pi)
        ASSERT_GT(beta, i * M_PI * (1 - 1e-15)) << i;
        ASSERT_LT(beta, (i + 1) * M_PI * (1 + 1e-15)) << i;
        if (i > 0) {
            ASSERT_GT(beta, roots[static_cast<std::size_t>(i - 1)]);
        }
        // substitution: the Newton correction the residual implies is below 1e-12 beta
        const Real f = condition(beta, p, q);
        const Real correction = f / conditionSlope(beta, q);
        EXPECT_LE(std::fabs(static_cast<double>(correction)), 1e-12 * beta) << "i=" << i << " p=" << p;
        // an independent bisection of the branch
        EXPECT_CLOSE(beta, static_cast<double>(bisectBranch(i, p, q)), 1e-12, 0.0) << "i=" << i << " p=" << p;
    }
}

TEST(Kern1dRoots, Root1OneRootPerBranch) {
    for (double p : {0.0, 1e-9, 0.05, 0.5, 1.0, 5.0, 50.0, 1e3, 1e6, -0.5, -0.999}) checkMonotoneCase(p, 0.0, true);
}

TEST(Kern1dRoots, Root1WithoutAdvectionIsTheOddHalfMultiples) {
    std::vector<double> roots(kRootCount);
    EXPECT_EQ(root1(0.0, roots[0]), 1);
    for (int i = 0; i < kRootCount; ++i) EXPECT_CLOSE(roots[static_cast<std::size_t>(i)], (i + 0.5) * M_PI, 1e-14, 0.0);
}

TEST(Kern1dRoots, Root3OneRootPerBranch) {
    // The finite Cauchy series: p = VL/(4D), q = D/(LV), so p q = 1/4.
    for (double p : {1e-6, 0.01, 0.25, 2.5, 25.0, 2500.0, 1e6}) checkMonotoneCase(p, 0.25 / p, false);
    // q alone, and q = 0 equal to root1
    checkMonotoneCase(0.3, 2.0, false);
    checkMonotoneCase(3.0, 0.0, false);
}

TEST(Kern1dRoots, Root1FailsOnlyWhenTheFirstBranchIsEmpty) {
    // beta cot beta <= 1 on (0, pi): with p <= -1 the first branch holds no root.
    for (double p : {-1.0, -1.5, -40.0}) {
        std::vector<double> roots(kRootCount);
        EXPECT_EQ(root1(p, roots[0]), 0) << p;
        // the table goes on with the later branches, one root each
        for (int i = 0; i < kRootCount; ++i) {
            const double beta = roots[static_cast<std::size_t>(i)];
            EXPECT_GT(beta, (i + 1) * M_PI);
            EXPECT_LT(beta, (i + 2) * M_PI);
            EXPECT_CLOSE(beta, static_cast<double>(bisectBranch(i + 1, p, 0)), 1e-12, 0.0);
        }
    }
}

TEST(Kern1dRoots, Root3WithNegativeVelocityFindsEveryRootInOrder) {
    // V < 0 makes p and q negative; -q beta^2 then rises, so count the roots of
    // the first 500 independently by a fine scan of the pole-free form.
    const double p = -0.3;
    const double q = 0.25 / p;
    std::vector<double> roots(kRootCount);
    root3(p, q, roots[0]);
    const double top = roots.back();
    int expected = 0;
    const int steps = 400;
    for (int n = 0; n * M_PI < top + 1e-9; ++n) {
        // sign of beta cos beta + (p - q beta^2) sin beta, scanned inside the branch
        auto h = [&](Real d) {
            const Real beta = n * kPiL + d;
            return beta * std::cos(d) + (p - q * beta * beta) * std::sin(d);
        };
        Real previous = n == 0 ? (1 + p > 0 ? 1 : -1) : 1;
        for (int j = 1; j <= steps; ++j) {
            const Real d = kPiL * j / steps;
            const Real leftEnd = n * kPiL + kPiL * (j - 1) / steps;
            if (leftEnd > top) break;  // a change of sign further on lies beyond the 500th root
            const Real value = j == steps ? Real(-1) : h(d);
            if ((value > 0) != (previous > 0)) ++expected;
            previous = value;
        }
    }
    EXPECT_EQ(expected, kRootCount);
    for (int i = 0; i < kRootCount; ++i) {
        const double beta = roots[static_cast<std::size_t>(i)];
        if (i > 0) {
            EXPECT_GT(beta, roots[static_cast<std::size_t>(i - 1)]);
        }
        const Real correction = condition(beta, p, q) / conditionSlope(beta, q);
        EXPECT_LE(std::fabs(static_cast<double>(correction)), 1e-12 * beta) << i;
    }
}

// The pole-free form of the condition, beta cos beta + (p - q beta^2) sin beta:
// the condition times sin beta, whose sign is fixed inside each branch.
Real poleFree(Real beta, Real p, Real q) { return beta * std::cos(beta) + (p - q * beta * beta) * std::sin(beta); }

TEST(Kern1dRoots, EachRootIsBracketedToTwelveDigitsInsideItsOwnBranch) {
    // The tables the finite kernels use in their accuracy tests and the batch
    // calculator's tests (p = V L / 2D, or V L / 4D with q = D / (L V)), and a
    // sharp front. A change of sign of the pole-free form within 1e-12 of each
    // root, inside the branch (i pi, (i + 1) pi), proves a root there.
    struct Table {
        bool dirichlet;
        double p, q;
    };
    const std::vector<Table> tables = {{true, 10, 0},    {true, 3, 0},     {true, 0.125, 0},   {true, 100, 0},
                                       {true, 5, 0},     {false, 5, 0.05}, {false, 1.5, 1.0 / 6}, {false, 0.0625, 4},
                                       {false, 50, 0.005}, {false, 2.5, 0.1}};
    for (const Table& t : tables) {
        std::vector<double> roots(kRootCount, -1.0);
        const int status = t.dirichlet ? root1(t.p, roots[0]) : root3(t.p, t.q, roots[0]);
        EXPECT_EQ(status, 1);
        for (int i = 0; i < kRootCount; ++i) {
            const Real beta = roots[static_cast<std::size_t>(i)];
            ASSERT_GT(beta, i * kPiL) << "root " << i << " p " << t.p;
            ASSERT_LT(beta, (i + 1) * kPiL) << "root " << i << " p " << t.p;
            const Real below = poleFree(beta * (1 - 1e-12L), t.p, t.q);
            const Real above = poleFree(beta * (1 + 1e-12L), t.p, t.q);
            EXPECT_LE(below * above, 0) << "no change of sign around root " << i << " p " << t.p << " q " << t.q;
            // and the residual: the Newton step it implies is below 1e-12 beta
            EXPECT_LE(std::fabs(static_cast<double>(condition(beta, t.p, t.q) / conditionSlope(beta, t.q))),
                      1e-12 * static_cast<double>(beta))
                << "root " << i << " p " << t.p;
        }
    }
}

TEST(RootSequence, AsksOnlyForWhatItNeedsAndGivesTheTablesValues) {
    struct Case {
        double p, q;
    };
    // Dirichlet and Cauchy tables, an empty first branch (p <= -1), several
    // roots to a branch (q < 0), and asked for out of order.
    for (const Case& c : std::vector<Case>{{10, 0}, {-2, 0}, {-1, 0}, {5, 0.05}, {0.0625, 4}, {3, -0.02}}) {
        std::vector<double> table(kRootCount, -1.0);
        const int status = c.q == 0 ? root1(c.p, table[0]) : root3(c.p, c.q, table[0]);
        const RootSequence lazy(c.p, c.q);
        EXPECT_EQ(lazy(7), table[6]) << c.p << " " << c.q;
        EXPECT_EQ(lazy(3), table[2]);
        if (c.q == 0) {
            EXPECT_EQ(lazy.firstBranchHoldsRoot(), status == 1) << c.p;
        }
        for (int i = 1; i <= kRootCount; ++i) ASSERT_EQ(lazy(i), table[static_cast<std::size_t>(i - 1)]) << i;
    }
    const RootSequence none(std::nan(""), 0.0);
    EXPECT_FALSE(none.firstBranchHoldsRoot());
    EXPECT_EQ(none(1), 0.0);
}

}  // namespace
}  // namespace bm
