#include <gtest/gtest.h>

// The two records' headers serve one source file together (the multi-species
// code needs both).
#include "kernels/kern2d.h"
#include "kernels/kern3d.h"

using namespace bm;

TEST(KernelRecords, BothRecordsShareTheFixedTextRules) {
    TwoDimParameters two;
    ThreeDimParameters three;
    setFixedText(two.aquiferCode, "Finite");
    setFixedText(three.aquiferCode, "Finite");
    EXPECT_EQ(fixedText(two.aquiferCode), fixedText(three.aquiferCode));
    EXPECT_EQ(fixedText(two.aquiferCode).size(), 20u);
}
