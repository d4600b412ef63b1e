// The inversion of the finite aquifers' Laplace transform sums its midpoint
// nodes four at a time in vector lanes; the sum node by node in complex arithmetic is the
// plain form of it, and the two must agree to the bit wherever the inversion
// is used: either inlet, with and without decay, short and long columns,
// early and late times, near the inlet and at the outlet.

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>

#include "saturated/one_dim_inversion.h"

namespace bm {
namespace {

TEST(OneDimInversion, NodesInLanesGiveTheBitsOfNodeByNode) {
    struct Column {
        double V, D, L;
    };
    std::array<int, 4> leftOver{};  // counts of each number of nodes left after the whole lanes
    for (const Column& column : {Column{0.5, 1.0, 100.0}, Column{1.0, 0.5, 10.0}, Column{1.0, 1e-3, 1.0},
                                 Column{2.0, 0.01, 10.0}, Column{0.05, 3.0, 7.0}})
        for (const double lambda : {0.0, 1e-9, 0.01, 0.5})
            for (const bool cauchy : {false, true})
                for (int i = 0; i <= 16; ++i)
                    for (const double tFraction : {1e-4, 0.01, 0.1, 0.5, 1.0, 3.0}) {
                        const double x = column.L * i / 16.0;
                        const double t = tFraction * column.L / column.V;
                        const double paired = finiteRatioByInversion(cauchy, column.V, column.D, column.L, lambda, x, t);
                        const double single =
                            finiteRatioByInversionNodeByNode(cauchy, column.V, column.D, column.L, lambda, x, t);
                        ASSERT_EQ(std::bit_cast<std::uint64_t>(paired), std::bit_cast<std::uint64_t>(single))
                            << column.V << " " << column.D << " " << column.L << " lambda " << lambda << " cauchy "
                            << cauchy << " x " << x << " t " << t << ": " << paired << " " << single;
                        ++leftOver[static_cast<std::size_t>(inversionNodeCount(column.V, column.D, lambda, x, t) % 4)];
                    }
    // every number of nodes left over after the whole lanes, none to three
    for (std::size_t r = 0; r < leftOver.size(); ++r) EXPECT_GT(leftOver[r], 40) << r;
}

}  // namespace
}  // namespace bm
