// The unsaturated model's inputs that a simulation may vary: the captions of
// the unsaturated screens' rows, in their order, bound to the DataSet fields.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "unsat_reference.h"
#include "unsaturated/unsat_variants.h"

namespace bm {
namespace {

TEST(UnsatVariants, SevenRowsInTheScreensOrder) {
    DataSet d = testkit::unsatModel(testkit::UnsatInputs{}, "0:10:1", "0:50:10");
    d.velocity = "0.05";
    d.dispersionX = "0.2";
    d.halfLife = "30";
    d.bulkDensity = "1.6";
    d.distributionCoefficient = "0.4";
    d.porosity = "0.35";
    d.saturation = "0.6";
    const std::vector<MonteVariant> list = unsaturatedVariants(d);
    const std::vector<std::string> expected = {"Steady-State Percolation Rate (Q)",
                                               "Dispersion Coefficient (Dv)",
                                               "Contaminant Halflife",
                                               "Bulk Density of Unsaturated Zone",
                                               "Contaminant Distribution Coefficient (Kd)",
                                               "Aquifer Porosity (n)",
                                               "Saturation (Sw)"};
    const std::vector<std::string> values = {"0.05", "0.2", "30", "1.6", "0.4", "0.35", "0.6"};
    ASSERT_EQ(list.size(), expected.size());
    for (std::size_t i = 0; i < list.size(); ++i) {
        EXPECT_EQ(list[i].name, expected[i]);
        EXPECT_EQ(*list[i].field(d), values[i]) << expected[i];
        EXPECT_EQ(list[i].place, MarkerPlace::FormField);
    }
}

TEST(UnsatVariants, TheMultiChemicalScreenLeavesOutTheHalfLife) {
    DataSet d;
    const std::vector<MonteVariant> list = unsaturatedVariants(d, false);
    ASSERT_EQ(list.size(), 6u);
    for (const MonteVariant& v : list) EXPECT_NE(v.name, "Contaminant Halflife");
}

}  // namespace
}  // namespace bm
