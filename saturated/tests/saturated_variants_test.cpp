// The saturated models' lists of inputs that a simulation may vary: names as
// the screen's row captions read (trimmed), in the screen's order, each bound
// to the DataSet text the row shows.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "saturated/saturated_variants.h"
#include "saturated/tests/input_form_test_models.h"

namespace {

using bm::DataSet;
using bm::MonteVariant;

std::vector<std::string> names(const std::vector<MonteVariant>& list) {
    std::vector<std::string> out;
    for (const MonteVariant& v : list) out.push_back(v.name);
    return out;
}

// The value each variant reads from the model.
std::vector<std::string> values(DataSet& data, const std::vector<MonteVariant>& list) {
    std::vector<std::string> out;
    for (const MonteVariant& v : list) out.push_back(v.field && v.field(data) ? *v.field(data) : "(none)");
    return out;
}

TEST(SaturatedVariants, OneDimensionInTheScreensOrder) {
    DataSet d = bm::testkit::oneDimScreenModel();
    const auto list = bm::saturatedVariants(d, 1);
    EXPECT_EQ(names(list), (std::vector<std::string>{"Ground Water Darcy Velocity (V)",
                                                     "Longitudinal Dispersion Coefficient (D)", "Contaminant Half-Life",
                                                     "Aquifer Porosity (n)", "Retardation Coefficient (R)"}));
    EXPECT_EQ(values(d, list), (std::vector<std::string>{"0.3", "0.5", "10", "0.3", "1"}));
    for (const MonteVariant& v : list) EXPECT_EQ(v.place, bm::MarkerPlace::FormField);
}

TEST(SaturatedVariants, TheBindingWritesTheModelsField) {
    DataSet d = bm::testkit::oneDimScreenModel();
    const auto list = bm::saturatedVariants(d, 1);
    *list[1].field(d) = "0.75";
    EXPECT_EQ(d.dispersionX, "0.75");
}

TEST(SaturatedVariants, MultiChemicalModelsLeaveOutTheHalfLife) {
    DataSet d = bm::testkit::oneDimScreenModel();
    EXPECT_EQ(names(bm::saturatedVariants(d, 1, false)),
              (std::vector<std::string>{"Ground Water Darcy Velocity (V)", "Longitudinal Dispersion Coefficient (D)",
                                        "Aquifer Porosity (n)", "Retardation Coefficient (R)"}));
    DataSet three = bm::testkit::threeDimScreenModel();
    for (const std::string& name : names(bm::saturatedVariants(three, 3, false)))
        EXPECT_NE(name, "Contaminant Half-Life");
}

const std::vector<std::string> kTwoDimHead = {
    "Ground Water Darcy Velocity (V)",   "Longitudinal Dispersion Coefficient (Dx)",
    "Lateral Dispersion Coefficient (Dy)", "Contaminant Half-Life",
    "Aquifer Porosity (n)",              "Net Recharge (q)",
    "Effective Aquifer Thickness (B)",   "Center of Contaminant Source in Y Direction (Yc)"};

std::vector<std::string> twoDim(std::vector<std::string> tail) {
    std::vector<std::string> all = kTwoDimHead;
    all.insert(all.end(), tail.begin(), tail.end());
    return all;
}

TEST(SaturatedVariants, TwoDimensionsFiniteLineHasItsWidthAndNoXCentre) {
    DataSet d = bm::testkit::twoDimScreenModel("Infinite", "Finite / Line");
    const auto list = bm::saturatedVariants(d, 2);
    EXPECT_EQ(names(list), twoDim({"Width of Contaminant Source (Ws)", "Retardation Coefficient (R)"}));
    EXPECT_EQ(values(d, list)[8], "20");  // sourceWidth
}

TEST(SaturatedVariants, TwoDimensionsGaussianTakesTheStandardDeviation) {
    DataSet d = bm::testkit::twoDimScreenModel("Infinite", "Gaussian");
    const auto list = bm::saturatedVariants(d, 2);
    EXPECT_EQ(names(list), twoDim({"Standard Deviation of Gaussian Distribution", "Retardation Coefficient (R)"}));
    EXPECT_EQ(values(d, list)[8], "5");  // sourceStdDev
}

TEST(SaturatedVariants, TwoDimensionsContinuousPointInAnInfiniteAquiferAddsItsXCentre) {
    for (const char* point : {"Continuous Point", "Continuous / Point"}) {
        DataSet d = bm::testkit::twoDimScreenModel("Infinite", point);
        d.sourceXc = "7";
        const auto list = bm::saturatedVariants(d, 2);
        EXPECT_EQ(names(list), twoDim({"Fluid Injection Rate Per Unit Aquifer Thickness (Q')",
                                       "Center of Contaminant Source in X Direction (Xc)",
                                       "Retardation Coefficient (R)"}))
            << point;
        EXPECT_EQ(values(d, list)[8], "2");  // injectionRate
        EXPECT_EQ(values(d, list)[9], "7");  // sourceXc
    }
}

TEST(SaturatedVariants, TwoDimensionsFiniteAquiferIsSizedByItsWidth) {
    DataSet d = bm::testkit::twoDimScreenModel("Finite", "Continuous / Point");
    EXPECT_EQ(names(bm::saturatedVariants(d, 2)),
              twoDim({"Width of Contaminant Source (Ws)", "Retardation Coefficient (R)"}));
}

const std::vector<std::string> kThreeDimHead = {"Ground Water Darcy Velocity (V)",
                                                "Longitudinal Dispersion Coefficient (Dx)",
                                                "Lateral Dispersion Coefficient (Dy)",
                                                "Vertical Dispersion Coefficient (Dz)",
                                                "Contaminant Half-Life",
                                                "Aquifer Porosity (n)",
                                                "Net Recharge (q)",
                                                "Effective Aquifer Thickness (B)",
                                                "Center of Contaminant Source in Y Direction (Yc)",
                                                "Center of Contaminant Source in Z Direction (Zc)"};

TEST(SaturatedVariants, ThreeDimensionsPatchVariesWidthAndHeight) {
    DataSet d = bm::testkit::threeDimScreenModel("Infinite", "Finite / Patch");
    const auto list = bm::saturatedVariants(d, 3);
    std::vector<std::string> expected = kThreeDimHead;
    expected.insert(expected.end(), {"Width of Contaminant Source (Ws)", "Height of Contaminant Source (Hs)",
                                     "Retardation Coefficient (R)"});
    EXPECT_EQ(names(list), expected);
    const auto v = values(d, list);
    EXPECT_EQ(v[10], "10");  // sourceWidth
    EXPECT_EQ(v[11], "4");   // sourceHeight
}

TEST(SaturatedVariants, ThreeDimensionsPointVariesXCentreAndInjectionRate) {
    DataSet d = bm::testkit::threeDimScreenModel("Infinite", "Continuous / Point");
    d.sourceXc = "12";
    const auto list = bm::saturatedVariants(d, 3);
    std::vector<std::string> expected = kThreeDimHead;
    expected.insert(expected.end(), {"Center of Contaminant Source in X Direction (Xc)",
                                     "Contaminant Injection Rate (Q)", "Retardation Coefficient (R)"});
    EXPECT_EQ(names(list), expected);
    const auto v = values(d, list);
    EXPECT_EQ(v[10], "12");  // sourceXc
    EXPECT_EQ(v[11], "3");   // injectionRate
}

}  // namespace
