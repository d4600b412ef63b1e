// What the model takes back from the simulation screen: a statistic as a
// plain number, the mean for "Nothing", and for "Variants" the marker of the
// field's place; fields no longer selected go back to their constants.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "montecarlo/monte_apply.h"
#include "montecarlo/tests/monte_table_fixture.h"

namespace bm {
namespace {

const std::string kVelocity = "Ground Water Darcy Velocity (V)";
const std::string kPorosity = "Aquifer Porosity (n)";
const std::string kInflow = "Contaminant Conc. at Inflow Boundary";

struct ApplyTest : ::testing::Test {
    DataSet data;
    MonteBlock block;
    std::vector<MonteVariant> variants;

    void SetUp() override {
        data.modelType = "One Dimensional";
        data.velocity = "0.3";
        data.porosity = "0.25";
        data.superpositionIndex = 1;
        data.terms.redim(1);
        data.terms(1) = {"0", "1"};
        variants = {fieldVariant(" " + kVelocity, &DataSet::velocity), fieldVariant(kPorosity, &DataSet::porosity),
                    inflowVariant()};
        testkit::makeMonteTables(data, 4);
        block.InputTGData = data.InputTGData;
        block.ResultTGData = data.ResultTGData;
        block.monteRowCount = block.monteResultRowCount = 4;
    }
    // A generated row: its input and its summary.
    void generated(int row, const std::string& name, const std::string& mean, const std::string& selection) {
        block.InputTGData(row, 1) = testkit::variantRow(name, mean, "0.1", "0.9", "0.01", "10", "Normal");
        MonteResultRow& r = block.ResultTGData(row, 1);
        r.variant = name;
        r.arithmeticMean = "0.41";
        r.geometricMean = "0.4";
        r.median = "0.39";
        r.minimum = "0.12";
        r.maximum = "0.87";
        r.standardDeviation = "0.07";
        r.inUse = true;
        r.selection = selection;
    }
};

TEST_F(ApplyTest, EachStatisticIsWrittenAsAPlainNumber) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"Minimum", "0.12"},          {"Maximum", "0.87"},        {"Standard Deviation", "0.07"},
        {"Arithematic Mean", "0.41"}, {"Geometric Mean", "0.4"}, {"Median", "0.39"}};
    for (const auto& [selection, shown] : cases) {
        generated(1, kVelocity, "0.35", selection);
        const SelectionOutcome outcome = applySelections(data, block, variants);
        EXPECT_EQ(data.velocity, shown) << selection;
        EXPECT_FALSE(outcome.fieldVaries);
    }
}

TEST_F(ApplyTest, NothingWritesTheInputMean) {
    generated(2, kPorosity, "0.35", "Nothing");
    applySelections(data, block, variants);
    EXPECT_EQ(data.porosity, "0.35");
    EXPECT_EQ(data.velocity, "0.3");  // not in the tables: untouched
}

TEST_F(ApplyTest, VariantsWritesTheFieldMarkerWithTheMeanAndTheRow) {
    generated(3, kPorosity, " 0.35 ", "variants");
    const SelectionOutcome outcome = applySelections(data, block, variants);
    EXPECT_EQ(data.porosity, "Monte Carlo" + std::string(500, ' ') + "|0.35: 3");
    EXPECT_TRUE(outcome.fieldVaries);
    EXPECT_FALSE(outcome.inflowVaries);
    EXPECT_FALSE(data.monteCarloModeOn);
}

TEST_F(ApplyTest, TheInflowConcentrationTakesTheBoundaryCellMarkerAndTurnsTheModeOn) {
    generated(4, kInflow, "1", "Variant");
    const SelectionOutcome outcome = applySelections(data, block, variants);
    EXPECT_EQ(data.terms(1).concentration, std::string(30, ' ') + "Monte Carlo" + std::string(30, ' ') + "|1: 4");
    EXPECT_TRUE(outcome.inflowVaries);
    EXPECT_TRUE(data.monteCarloModeOn);

    block.ResultTGData(4, 1).selection = "Median";
    applySelections(data, block, variants);
    EXPECT_EQ(data.terms(1).concentration, "0.39");
    EXPECT_FALSE(data.monteCarloModeOn);
}

TEST_F(ApplyTest, NamesMatchTrimmedAndWithoutCase) {
    generated(1, "  ground water darcy velocity (v) ", "0.35", "MAXIMUM");
    applySelections(data, block, variants);
    EXPECT_EQ(data.velocity, "0.87");
}

TEST_F(ApplyTest, AFieldNoLongerSelectedGoesBackToItsConstant) {
    data.velocity = "Monte Carlo" + std::string(500, ' ') + "|0.45: 1";
    data.terms(1).concentration = std::string(30, ' ') + "Monte Carlo" + std::string(30, ' ') + "|2: 2";
    data.monteCarloModeOn = true;
    const SelectionOutcome outcome = applySelections(data, block, variants);  // nothing in use
    EXPECT_EQ(data.velocity, "0.45");
    EXPECT_EQ(data.terms(1).concentration, "2");
    EXPECT_FALSE(outcome.fieldVaries);
    EXPECT_FALSE(data.monteCarloModeOn);
}

TEST_F(ApplyTest, ASelectionTheModelDoesNotKnowLeavesTheField) {
    generated(1, kVelocity, "0.35", "Something else");
    applySelections(data, block, variants);
    EXPECT_EQ(data.velocity, "0.3");
}

TEST_F(ApplyTest, TheTwoAndThreeDimensionalInflowCellHasTwentyBlanks) {
    data.modelType = "Two Dimensional";
    generated(4, kInflow, "1", "Variants");
    applySelections(data, block, variants);
    EXPECT_EQ(data.terms(1).concentration, std::string(20, ' ') + "Monte Carlo" + std::string(20, ' ') + "|1: 4");
}

TEST(ChemicalVariants, EachChemicalOffersItsYieldDecayAndConcentrationAndTakesTheChemicalMarker) {
    DataSet data;
    data.modelType = "One Dimensional";
    data.numChemicals = 2;
    for (List<std::string>* column : {&data.chemicalName, &data.yieldFactor, &data.decayRate,
                                      &data.suppositionConcentration})
        column->redim(2);
    data.chemicalName(1) = " TCE ";
    data.chemicalName(2) = "DCE";
    data.yieldFactor(2) = "0.7";
    data.decayRate(2) = "0.01";
    data.suppositionConcentration(2) = "5";
    const std::vector<MonteVariant> list = chemicalVariants(data, &DataSet::suppositionConcentration);
    ASSERT_EQ(list.size(), 6u);
    EXPECT_EQ(list[0].name, "TCE's Yield Factor");
    EXPECT_EQ(list[1].name, "TCE's Decay Rate");
    EXPECT_EQ(list[2].name, "TCE's Concentration");
    EXPECT_EQ(list[5].name, "DCE's Concentration");
    EXPECT_EQ(*list[3].field(data), "0.7");
    EXPECT_EQ(*list[4].field(data), "0.01");
    EXPECT_EQ(*list[5].field(data), "5");
    for (const MonteVariant& v : list) EXPECT_EQ(v.place, MarkerPlace::ChemicalCell);

    MonteBlock block;
    testkit::makeMonteTables(data, 6);
    block.InputTGData = data.InputTGData;
    block.ResultTGData = data.ResultTGData;
    block.monteRowCount = block.monteResultRowCount = 6;
    block.InputTGData(6, 1) = testkit::variantRow("DCE's Concentration", "5", "1", "9", "1", "10", "Normal");
    block.ResultTGData(6, 1).variant = "DCE's Concentration";
    block.ResultTGData(6, 1).inUse = true;
    block.ResultTGData(6, 1).selection = "Variants";
    const SelectionOutcome outcome = applySelections(data, block, list);
    EXPECT_EQ(data.suppositionConcentration(2), std::string(15, ' ') + "Monte Carlo" + std::string(50, ' ') + "|5: 6");
    EXPECT_TRUE(outcome.chemicalVaries);
    EXPECT_TRUE(data.monteCarloModeOn);
}

}  // namespace
}  // namespace bm
