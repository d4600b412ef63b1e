#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <utility>

#include "montecarlo/monte_check.h"
#include "montecarlo/tests/monte_table_fixture.h"
#include "testing/scripted_user_interface.h"

namespace {

using bm::DataSet;
using bm::MonteInputRow;
using bm::testkit::ScriptedUserInterface;
using bm::testkit::variantRow;

const std::string kVelocity = "Ground Water Darcy Velocity (V)";

MonteInputRow goodRow(const std::string& name = kVelocity) {
    return variantRow(name, "2", "1", "3", "0.25", "10", "Normal");
}

struct CheckTest : ::testing::Test {
    DataSet data;
    ScriptedUserInterface ui;
    bm::MonteVariantList variants;
    void SetUp() override { bm::testkit::makeMonteTables(data, 4); }
    bool check() { return bm::checkBeforeGeneration(data, variants, 1, ui); }
    void expectRefused(const std::string& text) {
        EXPECT_FALSE(check());
        ASSERT_EQ(ui.messages.size(), 1u);
        EXPECT_EQ(ui.messages[0].title, "Improper Input Data");
        EXPECT_EQ(ui.messages[0].icon, bm::MessageIcon::Critical);
        EXPECT_EQ(ui.messages[0].text, text);
    }
};

std::string improper(const std::string& kind, const std::string& field, const std::string& name = kVelocity) {
    // kind + " input value." + two carriage returns + " The " + field + " value of " + name + ...
    std::string lower = kind;
    for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return kind + " input value.\r\r The " + field + " value of " + name + " has been given as " + lower + ".";
}

TEST_F(CheckTest, AGoodRowPassesSilently) {
    data.InputTGData(1, 1) = goodRow();
    EXPECT_TRUE(check());
    EXPECT_TRUE(ui.messages.empty());
}

TEST_F(CheckTest, VarianceRules) {
    data.InputTGData(1, 1) = goodRow();
    data.InputTGData(1, 1).variance = "  ";
    expectRefused(improper("Nil", "variance"));
}
TEST_F(CheckTest, VarianceZero) {
    data.InputTGData(1, 1) = goodRow();
    data.InputTGData(1, 1).variance = "0";
    expectRefused("Zero input value.\r\r The variance value of Ground Water Darcy Velocity (V) has been given as zero.");
}
TEST_F(CheckTest, VarianceNegative) {
    data.InputTGData(1, 1) = goodRow();
    data.InputTGData(1, 1).variance = "-1";
    expectRefused(improper("Negative", "variance"));
}
TEST_F(CheckTest, MeanMinimumAndMaximumMayBeNeitherEmptyNorZero) {
    const std::pair<std::string MonteInputRow::*, const char*> fields[] = {
        {&MonteInputRow::mean, "mean"}, {&MonteInputRow::minimum, "minimum"}, {&MonteInputRow::maximum, "maximum"}};
    for (const auto& [member, word] : fields) {
        for (const auto& [text, kind] : {std::pair{"", "Nil"}, std::pair{"0", "Zero"}}) {
            ui.messages.clear();
            data.InputTGData(1, 1) = goodRow();
            data.InputTGData(1, 1).*member = text;
            expectRefused(improper(kind, word));
        }
    }
}

const char* const kBoundsTail =
    ": Invalid upper and lower bounds.\r\rThe maximum value must be greater than the mean and the minimum must be "
    "smaller than the mean value of the variant. Please give the appropriate values. ";

TEST_F(CheckTest, MeanOutsideItsBounds) {
    data.InputTGData(1, 1) = goodRow();
    data.InputTGData(1, 1).mean = "5";
    expectRefused(kVelocity + kBoundsTail);
    ui.messages.clear();
    data.InputTGData(1, 1).mean = "0.5";
    expectRefused(kVelocity + kBoundsTail);
}

TEST_F(CheckTest, AMeanOnABoundPasses) {
    data.InputTGData(1, 1) = goodRow();
    data.InputTGData(1, 1).mean = "3";  // = maximum
    EXPECT_TRUE(check());
    data.InputTGData(1, 1).mean = "1";  // = minimum
    EXPECT_TRUE(check());
    EXPECT_TRUE(ui.messages.empty());
}

TEST_F(CheckTest, TermsRules) {
    data.InputTGData(1, 1) = goodRow();
    data.InputTGData(1, 1).terms = "";
    expectRefused(improper("Nil", "number of terms"));
    ui.messages.clear();
    data.InputTGData(1, 1).terms = "0";
    expectRefused(improper("Zero", "number of terms"));
    ui.messages.clear();
    data.InputTGData(1, 1).terms = "-3";
    expectRefused(improper("Negative", "number of terms"));
}

TEST_F(CheckTest, AnUnknownDistribution) {
    data.InputTGData(1, 1) = goodRow();
    data.InputTGData(1, 1).distribution = "Weibull";
    expectRefused("No distribution type has been selected for " + kVelocity +
                  ". \r\rPlease select a valid distribution type for this simulation. ");
    ui.messages.clear();
    data.InputTGData(1, 1).distribution = "";
    expectRefused("No distribution type has been selected for " + kVelocity +
                  ". \r\rPlease select a valid distribution type for this simulation. ");
}

TEST_F(CheckTest, DistributionNamesAreMatchedWithoutCase) {
    for (const char* name : {"Normal", "LOGNORMAL", "Uniform", "exponential", "Gumbel", " Triangle ", "LogUniform"}) {
        data.InputTGData(1, 1) = goodRow();
        data.InputTGData(1, 1).distribution = name;
        EXPECT_TRUE(check()) << name;
    }
    EXPECT_TRUE(ui.messages.empty());
}

TEST_F(CheckTest, RulesComeInTheirOrder) {
    // variance, then mean, then bounds, then terms, then distribution: each time the first one speaks
    MonteInputRow row = variantRow(kVelocity, "0", "", "3", "", "", "Weibull");
    data.InputTGData(1, 1) = row;
    expectRefused(improper("Nil", "variance"));
    ui.messages.clear();
    data.InputTGData(1, 1).variance = "1";
    expectRefused(improper("Zero", "mean"));
    ui.messages.clear();
    data.InputTGData(1, 1).mean = "9";
    expectRefused(improper("Nil", "minimum"));
    ui.messages.clear();
    data.InputTGData(1, 1).minimum = "1";
    expectRefused(kVelocity + kBoundsTail);
    ui.messages.clear();
    data.InputTGData(1, 1).mean = "2";
    expectRefused(improper("Nil", "number of terms"));
    ui.messages.clear();
    data.InputTGData(1, 1).terms = "5";
    EXPECT_FALSE(check());
    EXPECT_EQ(ui.lastText().rfind("No distribution type", 0), 0u);
}

TEST_F(CheckTest, RowsAreCheckedInOrderAndTheFirstFailureEndsIt) {
    data.InputTGData(1, 1) = goodRow();
    data.InputTGData(2, 1) = goodRow("Contaminant Half-Life");
    data.InputTGData(2, 1).mean = "";
    data.InputTGData(3, 1) = goodRow("Aquifer Porosity (n)");
    data.InputTGData(3, 1).variance = "";
    expectRefused(improper("Nil", "mean", "Contaminant Half-Life"));
}

TEST_F(CheckTest, RowsNotInUseAreNotChecked) {
    data.InputTGData(1, 1) = goodRow();
    MonteInputRow stale = variantRow("", "0", "", "", "", "", "");
    data.InputTGData(2, 1) = stale;
    EXPECT_TRUE(check());
    EXPECT_TRUE(ui.messages.empty());
}

TEST_F(CheckTest, AZeroMeanFailsForEveryDistribution) {
    for (const char* name : {"Normal", "Lognormal", "Exponential", "Uniform", "Gumbel", "Triangle", "Loguniform"}) {
        ui.messages.clear();
        data.InputTGData(1, 1) = variantRow(kVelocity, "0", "-1", "1", "0.25", "10", name);
        expectRefused(improper("Zero", "mean"));
    }
}

TEST_F(CheckTest, NoVariableSelectedIsANoticeAndStillPasses) {
    EXPECT_TRUE(check());
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Error Information");
    EXPECT_EQ(ui.messages[0].icon, bm::MessageIcon::Information);
    EXPECT_EQ(ui.messages[0].text, "No variable selected for Monte Carlo Analysis!");
}

TEST_F(CheckTest, TheTablesAreNotTouched) {
    data.InputTGData(1, 1) = goodRow();
    data.InputTGData(1, 1).mean = "9";
    const DataSet before = data;
    EXPECT_FALSE(check());
    EXPECT_TRUE(data.InputTGData == before.InputTGData);
    EXPECT_TRUE(data.ResultTGData == before.ResultTGData);
}

// Soil porosity and water content: variants whose names hold those words.
struct SoilTest : CheckTest {
    void SetUp() override {
        CheckTest::SetUp();
        variants.variantLB1 = {"Infiltration Rate", "Soil Porosity", "Soil Water Content", "--REMOVE--"};
        variants.meanLB = {"0.1", "0.4", "0.2", ""};
    }
};

TEST_F(SoilTest, NeitherSelectedPasses) {
    data.InputTGData(1, 1) = goodRow("Infiltration Rate");
    EXPECT_TRUE(check());
    EXPECT_TRUE(ui.messages.empty());
}

TEST_F(SoilTest, PorosityOnlyAgainstThePresentWaterContent) {
    data.InputTGData(1, 1) = variantRow("Soil Porosity", "0.35", "0.2", "0.45", "0.001", "10", "Normal");
    expectRefused(
        "The minimum value of soil porosity 0.2 is less than the soil water content 0.2!\r\rThe minimum value of "
        "soil porosity must be greater than soil water content 0.2.\rPlease give the appropriate values for soil "
        "porosity.");
    ui.messages.clear();
    data.InputTGData(1, 1).minimum = "0.25";
    EXPECT_TRUE(check());
    EXPECT_TRUE(ui.messages.empty());
}

TEST_F(SoilTest, WaterContentOnlyAgainstThePresentPorosity) {
    data.InputTGData(1, 1) = variantRow("Soil Water Content", "0.3", "0.1", "0.45", "0.001", "10", "Normal");
    expectRefused(
        "The maximum value of soil water content 0.45 is greater than or equal to the soil porosity 0.4!\r\rThe "
        "maximum value of soil water content must be less than soil porosity 0.4.\rPlease give the appropriate "
        "values for soil water content.");
    ui.messages.clear();
    data.InputTGData(1, 1).maximum = "0.39";
    EXPECT_TRUE(check());
}

TEST_F(SoilTest, BothSelected) {
    data.InputTGData(1, 1) = variantRow("Soil Porosity", "0.35", "0.3", "0.45", "0.001", "10", "Normal");
    data.InputTGData(2, 1) = variantRow("Soil Water Content", "0.2", "0.1", "0.3", "0.001", "10", "Normal");
    expectRefused(
        "Soil water content is out of the interval of soil porosity!\r\rThe maximum value of soil water content must "
        "be less than the minimum value of soil porosity.\rPlease give the appropriate values for soil porosity and "
        "soil water content.");
    ui.messages.clear();
    data.InputTGData(2, 1).maximum = "0.29";
    EXPECT_TRUE(check());
}

TEST_F(CheckTest, SoilPairNeedsBothNamesInTheList) {
    variants.variantLB1 = {"Soil Porosity", "--REMOVE--"};
    variants.meanLB = {"0.4", ""};
    data.InputTGData(1, 1) = variantRow("Soil Porosity", "0.35", "0.01", "0.45", "0.001", "10", "Normal");
    EXPECT_TRUE(check());
}

TEST_F(CheckTest, WindVectorAngleStaysIn45To135) {
    const std::string name = "Line Source - Wind Vector Angle";
    data.InputTGData(1, 1) = variantRow(name, "90", "45", "135", "4", "10", "Normal");
    EXPECT_TRUE(check());
    EXPECT_TRUE(ui.messages.empty());
    data.InputTGData(1, 1).minimum = "44";
    expectRefused(
        "The valid range for Line Source - Wind Vector Angle is from 45\u00B0 to 135\u00B0.\r\rPlease change the value to "
        "accomodate this criteria.");
    ui.messages.clear();
    data.InputTGData(1, 1).minimum = "45";
    data.InputTGData(1, 1).maximum = "136";
    EXPECT_FALSE(check());
}

TEST(DistributionCode, CodesFollowTheNamesNotTheListOrder) {
    EXPECT_EQ(bm::distributionCode("Normal"), 1);
    EXPECT_EQ(bm::distributionCode("Lognormal"), 2);
    EXPECT_EQ(bm::distributionCode("Uniform"), 3);
    EXPECT_EQ(bm::distributionCode("Exponential"), 4);
    EXPECT_EQ(bm::distributionCode("Gumbel"), 5);
    EXPECT_EQ(bm::distributionCode("Triangle"), 6);
    EXPECT_EQ(bm::distributionCode("Loguniform"), 7);
    EXPECT_EQ(bm::distributionCode(" gUmBeL "), 5);
    EXPECT_EQ(bm::distributionCode("Weibull"), 0);
    EXPECT_EQ(bm::distributionCode(""), 0);
}

}  // namespace
