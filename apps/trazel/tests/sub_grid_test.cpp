// Which nodes of a large grid the overview keeps.
#include "apps/trazel/sub_grid.h"

#include <gtest/gtest.h>

namespace bm::trazel {
namespace {

TEST(SubGrid, EveryKthNodeAndTheLast) {
    const KeptAxis a{10, 4};
    EXPECT_EQ(a.indexes(10), (std::vector<std::size_t>{0, 4, 8, 9}));
    EXPECT_EQ(a.count(), 4u);
    EXPECT_EQ(a.position(8), 2);
    EXPECT_EQ(a.position(9), 3);
    EXPECT_EQ(a.position(5), -1);
    EXPECT_EQ((KeptAxis{9, 4}).indexes(9), (std::vector<std::size_t>{0, 4, 8}));
    EXPECT_EQ((KeptAxis{0, 1}).position(123), 123);  // a size not announced keeps every node
}

TEST(SubGrid, TheSmallestStrideWithinAnAxisLimit) {
    EXPECT_EQ(strideFor(100, 200), 1u);
    EXPECT_EQ(strideFor(10, 4), 3u);  // 0, 3, 6, 9
    for (std::size_t n : {2u, 57u, 1000u, 32765u})
        for (std::size_t most : {2u, 3u, 10u, 1024u}) {
            const std::size_t s = strideFor(n, most);
            EXPECT_LE((KeptAxis{n, s}).count(), std::max(most, std::size_t{2})) << n << " " << most;
            if (s > 1) {
                EXPECT_GT((KeptAxis{n, s - 1}).count(), most) << n << " " << most;
            }
        }
}

TEST(SubGrid, AGridWithinItsBudget) {
    const KeptGrid g = planKeptGrid(4000, 3000, 1, 1024, 256, 250000);
    EXPECT_LE(g.values(), 250000u);
    EXPECT_LE(g.x.count(), 1024u);
    EXPECT_LE(g.y.count(), 1024u);
    EXPECT_GT(g.values(), 250000u / 4);  // not thinned more than needed
    const KeptGrid small = planKeptGrid(50, 40, 10, 1024, 256, 250000);
    EXPECT_TRUE(small.everyNode());
    const KeptGrid volume = planKeptGrid(500, 500, 100, 1024, 256, 1000000);
    EXPECT_LE(volume.values(), 1000000u);
}

}  // namespace
}  // namespace bm::trazel
