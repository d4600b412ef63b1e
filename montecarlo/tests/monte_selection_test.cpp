#include <gtest/gtest.h>

#include <set>
#include <string>

#include "model/number_text.h"
#include "montecarlo/monte_selection.h"
#include "montecarlo/tests/monte_table_fixture.h"

namespace {

using bm::DataSet;

struct SelectionTest : ::testing::Test {
    DataSet data;
    void SetUp() override {
        bm::testkit::makeMonteTables(data, 3);
        data.ResultTGData(1, 1).inUse = true;
        data.ResultTGData(1, 1).variant = "Contaminant Half-Life";
    }
    const std::string& selection() { return data.ResultTGData(1, 1).selection; }
};

TEST_F(SelectionTest, DoubleClickingTheSameCellTwiceReturnsToNothing) {
    EXPECT_TRUE(bm::toggleResultSelection(data, 1, 1, "Median"));
    EXPECT_EQ(selection(), "Median");
    EXPECT_TRUE(bm::toggleResultSelection(data, 1, 1, "Median"));
    EXPECT_EQ(selection(), "Nothing");
}

TEST_F(SelectionTest, AnotherColumnTakesOver) {
    bm::toggleResultSelection(data, 1, 1, "Arithematic Mean");
    bm::toggleResultSelection(data, 1, 1, "Maximum");
    EXPECT_EQ(selection(), "Maximum");
}

TEST_F(SelectionTest, TheFirstColumnSelectsAllSamples) {
    bm::toggleResultSelection(data, 1, 1, "Variants");
    EXPECT_EQ(selection(), "Variants");
}

TEST_F(SelectionTest, TheDeviationColumnIsKnownByItsWord) {
    bm::toggleResultSelection(data, 1, 1, "Standard Deviation");
    EXPECT_EQ(selection(), "Standard Deviation");
    bm::toggleResultSelection(data, 1, 1, "Standard Deviation");
    EXPECT_EQ(selection(), "Nothing");
    data.ResultTGData(1, 1).selection = "standard Deviation";  // as an old file may hold it
    bm::toggleResultSelection(data, 1, 1, "Standard Deviation");
    EXPECT_EQ(selection(), "Nothing");
}

TEST_F(SelectionTest, ADoubleClickMarksTheDataChanged) {
    data.dataState = bm::kNeedsSaving;
    bm::toggleResultSelection(data, 1, 1, "Minimum");
    EXPECT_EQ(data.dataState, bm::kParametersChanged);
}

TEST_F(SelectionTest, ARowNotInUseIgnoresTheClick) {
    EXPECT_FALSE(bm::toggleResultSelection(data, 2, 1, "Median"));
    EXPECT_EQ(data.ResultTGData(2, 1).selection, "Nothing");
    EXPECT_EQ(data.dataState, bm::kDataUnchanged);
    EXPECT_FALSE(bm::toggleResultSelection(data, 9, 1, "Median"));  // beyond the table
    EXPECT_FALSE(bm::toggleResultSelection(data, 1, 5, "Median"));
}

TEST(ResultColumns, EveryCaptionIsAKeyTheModelFormKnows) {
    // what the model form recognises, after lower-casing
    const std::set<std::string> keys = {"minimum", "maximum", "standard deviation", "arithematic mean",
                                        "geometric mean", "median", "variant", "variants", "nothing"};
    for (const char* caption : bm::kResultColumnCaptions) EXPECT_TRUE(keys.count(bm::toLower(caption))) << caption;
    EXPECT_TRUE(keys.count(bm::toLower(bm::kNothingSelected)));
    EXPECT_EQ(std::string(bm::kResultColumnCaptions[0]), "Variants");
    EXPECT_EQ(std::string(bm::kResultColumnCaptions[6]), "Standard Deviation");
}

}  // namespace
