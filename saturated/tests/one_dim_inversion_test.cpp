// The inversion of the finite aquifers' Laplace transform sums its midpoint
// nodes two at a time; the sum node by node in complex arithmetic is the
// plain form of it, and the two must agree to the bit wherever the inversion
// is used: either inlet, with and without decay, short and long columns,
// early and late times, near the inlet and at the outlet.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>

#include "saturated/one_dim_inversion.h"

namespace bm {
namespace {

TEST(OneDimInversion, PairedNodesGiveTheBitsOfNodeByNode) {
    struct Column {
        double V, D, L;
    };
    int odd = 0, even = 0;
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
                        ++(inversionNodeCount(column.V, column.D, lambda, x, t) % 2 ? odd : even);
                    }
    // both an odd and an even number of nodes (a lane left over or not)
    EXPECT_GT(odd, 100);
    EXPECT_GT(even, 100);
}

}  // namespace
}  // namespace bm
