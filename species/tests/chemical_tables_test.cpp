// The chemicals' tables of a decay chain's screen without widgets: the count
// row, the tables growing and shrinking, the copies to and from the DataSet,
// the cells a marker locks, the checks before a run with their exact
// messages in their order, and the points table.

#include <gtest/gtest.h>

#include <string>

#include "species/form/chemical_tables.h"
#include "testing/scripted_user_interface.h"

namespace bm {
namespace {

using testkit::ScriptedUserInterface;

const std::string kMarker = std::string(15, ' ') + "Monte Carlo" + std::string(50, ' ') + "|0.2: 3";

// Three chemicals that pass every check; the time range runs from 0 to 100.
ChemicalTables validChain() {
    ChemicalTables t;
    t.resize(3);
    t.chemicals = {{"TCE", "0.1", "1"}, {"DCE", "0.2", "0.5"}, {"VC", "0.3", "0.8"}};
    t.sources.cells = {{"0", "10"}, {"0", "0"}, {"0", "0"}};
    return t;
}

struct Refusal {
    std::string title, text;
    ChainValue value;
    int chemical;
};

void expectRefused(ChemicalTables& t, const Refusal& r) {
    ScriptedUserInterface ui;
    ChainFailure failure;
    EXPECT_FALSE(t.accepted("0:100:10", ui, failure));
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].icon, MessageIcon::Critical);
    EXPECT_EQ(ui.messages[0].title, r.title);
    EXPECT_EQ(ui.messages[0].text, r.text);
    EXPECT_EQ(failure.value, r.value);
    EXPECT_EQ(failure.chemical, r.chemical);
}

TEST(ChemicalTables, StartWithOneEmptyRowAndTheLayoutsNames) {
    ChemicalTables t;
    EXPECT_EQ(t.count(), 1);
    EXPECT_EQ(t.sources.cells.size(), 1u);
    EXPECT_EQ(t.sources.name, "Input1TG");
    EXPECT_EQ(ChemicalTables::chemicalTableName(2), "ChemicalInput2TG");
    EXPECT_EQ(ChemicalTables::chemicalStyleName(1), "MonteCarloStyle4");
    EXPECT_EQ(ChemicalTables::chemicalStyleName(3), "MonteCarloStyle6");
    EXPECT_EQ(ChemicalTables::resultsTableName(3), "grd3DResults");
    t.setLayout(3);
    EXPECT_EQ(t.sources.name, "Input3TG");
    EXPECT_EQ(t.sources.styleName, "MonteCarloStyle3");
    t.setUnitHeadings("yr");
    EXPECT_EQ(t.rateHeading, "Decay Rate (1/yr)");
}

TEST(ChemicalTables, GrowWithEmptyRowsAndShrinkKeepingTheFirstRows) {
    ChemicalTables t = validChain();
    t.resize(5);
    ASSERT_EQ(t.count(), 5);
    EXPECT_EQ(t.chemicalCell(2, 0), "VC");
    EXPECT_EQ(t.chemicalCell(4, 0), "");
    EXPECT_EQ(t.sources.cell(4, 1), "");
    t.resize(2);
    ASSERT_EQ(t.count(), 2);
    ASSERT_EQ(t.sources.cells.size(), 2u);
    EXPECT_EQ(t.chemicalCell(1, 1), "0.2");
    EXPECT_EQ(t.sources.cell(0, 1), "10");
    t.resize(0);  // a table always has a row
    EXPECT_EQ(t.count(), 1);
    EXPECT_EQ(t.chemicalCell(0, 0), "TCE");
}

TEST(ChemicalTables, TheCountRowSetsTheNumberOfChemicalsAndResizesBothTables) {
    DataSet data;
    data.numChemicals = 3;
    ChemicalTables t = validChain();
    ScriptedUserInterface ui;
    EXPECT_TRUE(t.countLeft(data, "4", ui));
    EXPECT_EQ(data.numChemicals, 4);
    EXPECT_EQ(t.count(), 4);
    EXPECT_EQ(t.sources.cells.size(), 4u);
    EXPECT_TRUE(ui.messages.empty());
    EXPECT_TRUE(t.countLeft(data, "2", ui));
    EXPECT_EQ(t.count(), 2);
    EXPECT_EQ(t.chemicalCell(1, 0), "DCE");
}

TEST(ChemicalTables, ACountBelowOneIsRefusedAndChangesNothing) {
    for (const std::string typed : {"0", "-2", "abc", ""}) {
        DataSet data;
        data.numChemicals = 3;
        ChemicalTables t = validChain();
        ScriptedUserInterface ui;
        EXPECT_FALSE(t.countLeft(data, typed, ui)) << typed;
        EXPECT_EQ(data.numChemicals, 3);
        EXPECT_EQ(t.count(), 3);
        ASSERT_EQ(ui.messages.size(), 1u);
        EXPECT_EQ(ui.messages[0].icon, MessageIcon::Exclamation);
        EXPECT_EQ(ui.messages[0].title, "Improper input value");
        EXPECT_EQ(ui.messages[0].text, "'" + typed +
                                           "' is not a valid input value.\r\rThe number of chemicals must be greater "
                                           "than or equal to 1.");
    }
}

TEST(ChemicalTables, CopyTheChemicalListsBothWays) {
    DataSet data;
    data.numChemicals = 2;
    for (List<std::string>* list : {&data.chemicalName, &data.decayRate, &data.yieldFactor, &data.suppositionTime,
                                    &data.suppositionConcentration})
        list->redim(2);
    data.chemicalName(1) = "A";
    data.chemicalName(2) = "B";
    data.decayRate(2) = "0.5";
    data.yieldFactor(2) = "0.7";
    data.suppositionTime(1) = "0";
    data.suppositionConcentration(1) = kMarker;
    ChemicalTables t;
    t.fromDataSet(data);
    ASSERT_EQ(t.count(), 2);
    EXPECT_EQ(t.chemicalCell(1, 0), "B");
    EXPECT_EQ(t.chemicalCell(1, 1), "0.5");
    EXPECT_EQ(t.chemicalCell(1, 2), "0.7");
    EXPECT_EQ(t.sources.cell(0, 1), kMarker);

    t.resize(3);  // the count row said 3: the lists follow numChemicals
    t.chemicals[2] = {"C", "0.9", "1"};
    t.sources.cells[2] = {"5", "2"};
    data.numChemicals = 3;
    t.toDataSet(data);
    ASSERT_EQ(data.chemicalName.ub(), 3);
    EXPECT_EQ(data.chemicalName(3), "C");
    EXPECT_EQ(data.decayRate(3), "0.9");
    EXPECT_EQ(data.suppositionTime(3), "5");
    EXPECT_EQ(data.suppositionConcentration(3), "2");
    EXPECT_EQ(data.suppositionConcentration(1), kMarker);

    data.numChemicals = 4;  // a count typed but not yet left: the row the tables lack is empty
    t.toDataSet(data);
    ASSERT_EQ(data.chemicalName.ub(), 4);
    EXPECT_EQ(data.chemicalName(4), "");
}

TEST(ChemicalTables, AMarkerCellIsReadOnlyAndDrawnInTheTablesStyle) {
    ChemicalTables t = validChain();
    t.chemicals[1].rate = kMarker;
    t.sources.cells[2].concentration = kMarker;
    t.setLayout(2);
    ScriptedUserInterface ui;
    EXPECT_TRUE(t.chemicalBeforeEdit(1, 0, ui));
    EXPECT_TRUE(ui.messages.empty());
    EXPECT_FALSE(t.chemicalBeforeEdit(1, 1, ui));
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Read Only");
    EXPECT_EQ(ui.messages[0].text,
              "Monte Carlo selected values for Contaminant Conc. at Inflow Boundary are read only.\r\rTo unselect a "
              "monte carlo option please use Generate from the Monte Carlo menu.");
    EXPECT_FALSE(t.sourceBeforeEdit(2, 1, ui));
    EXPECT_EQ(ui.messages.size(), 2u);
    EXPECT_FALSE(t.chemicalEdited(1, 1, "7"));
    EXPECT_EQ(t.chemicals[1].rate, kMarker);
    EXPECT_FALSE(t.sourceEdited(2, 1, "7"));
    EXPECT_TRUE(t.chemicalEdited(1, 2, "0.25"));
    EXPECT_EQ(t.chemicals[1].yield, "0.25");
    EXPECT_FALSE(t.chemicalEdited(1, 2, "0.25"));  // the same text is no change
    EXPECT_EQ(t.chemicalStyle(1, 1), "MonteCarloStyle5");
    EXPECT_EQ(t.chemicalStyle(1, 2), "");
    EXPECT_EQ(t.sourceStyle(2, 1), "MonteCarloStyle2");
    EXPECT_TRUE(t.holdMarker());
    EXPECT_FALSE(validChain().holdMarker());
}

TEST(ChemicalTables, AValidChainPassesWithAZeroYieldAZeroTimeAndAZeroLaterSource) {
    ChemicalTables t = validChain();
    t.chemicals[2].yield = "0";
    ScriptedUserInterface ui;
    ChainFailure failure;
    EXPECT_TRUE(t.accepted("0:100:10", ui, failure));
    EXPECT_TRUE(ui.messages.empty());
}

TEST(ChemicalTables, MarkersPassTheValueChecks) {
    ChemicalTables t = validChain();
    t.sources.cells[0] = {kMarker, kMarker};
    t.chemicals[0].rate = kMarker;  // carries 0.2: DCE moves off that rate
    t.chemicals[1].rate = "0.25";
    t.chemicals[2].yield = kMarker;
    ScriptedUserInterface ui;
    ChainFailure failure;
    EXPECT_TRUE(t.accepted("0:100:10", ui, failure));
}

TEST(ChemicalTables, TheInputsTableRulesInTheirOrder) {
    {
        ChemicalTables t = validChain();
        t.sources.cells[1].time = "x";
        expectRefused(t, {"Invalid input format", "The times must be numeric values.\r\rPlease give a proper value for it.",
                          ChainValue::Time, 2});
        EXPECT_EQ(t.sources.currentRow, 1);
        EXPECT_EQ(t.sources.currentColumn, 0);
        EXPECT_TRUE(t.sources.editMode);
    }
    {
        ChemicalTables t = validChain();
        t.sources.cells[0].time = "-1";
        expectRefused(t, {"Improper input data",
                          "The values of time must be greater than zero.\r\rPlease give a proper values for time.",
                          ChainValue::Time, 1});
    }
    {
        ChemicalTables t = validChain();
        t.sources.cells[2].time = "100.5";
        expectRefused(t, {"Improper input data",
                          "Input value given for the time must be between  0 and 100\r\rPlease give a proper input "
                          "value for it.",
                          ChainValue::Time, 3});
    }
    {
        ChemicalTables t = validChain();
        t.sources.cells[2].time = "100";  // the maximum is allowed
        t.sources.cells[1].concentration = "ten";
        expectRefused(t, {"Invalid input format",
                          "The concentration must be numeric values.\r\rPlease give a proper value for it.",
                          ChainValue::Concentration, 2});
        EXPECT_EQ(t.sources.currentColumn, 1);
    }
    {
        ChemicalTables t = validChain();
        t.sources.cells[1].concentration = "-0.5";
        expectRefused(t, {"Improper input data",
                          "The value of concetration must be greater than zero.\r\rPlease give a proper values for it.",
                          ChainValue::Concentration, 2});
    }
    {
        // The inputs table is checked for every chemical before the chemicals' table.
        ChemicalTables t = validChain();
        t.chemicals[0].name = "  ";
        t.sources.cells[2].concentration = "";
        expectRefused(t, {"Invalid input format",
                          "The concentration must be numeric values.\r\rPlease give a proper value for it.",
                          ChainValue::Concentration, 3});
    }
}

TEST(ChemicalTables, TheChemicalsTableRulesInTheirOrder) {
    {
        ChemicalTables t = validChain();
        t.chemicals[1].name = " ";
        t.chemicals[0].rate = "x";  // chemical 1's rate fails before chemical 2's name
        expectRefused(t, {"Invalid input format",
                          "The destruction rates must be numeric values.\r\rPlease give a proper value for it.",
                          ChainValue::Rate, 1});
        EXPECT_EQ(t.currentRow, 0);
        EXPECT_EQ(t.currentColumn, 1);
        EXPECT_TRUE(t.editMode);
    }
    {
        ChemicalTables t = validChain();
        t.chemicals[1].name = " ";
        expectRefused(t, {"No input data",
                          "Not all values have been given for chemical names.\r\rPlease give proper chemical names.",
                          ChainValue::Name, 2});
        EXPECT_EQ(t.currentColumn, 0);
    }
    for (const std::string rate : {"0", "-0.1"}) {
        ChemicalTables t = validChain();
        t.chemicals[2].rate = rate;
        expectRefused(t, {"Improper input data",
                          "The value of destruction rates must be greater than zero.\r\rPlease give a proper values for "
                          "destruction rates.",
                          ChainValue::Rate, 3});
    }
    {
        ChemicalTables t = validChain();
        t.chemicals[1].yield = "half";
        expectRefused(t, {"Invalid input format",
                          "The yield facotrs must be numeric values.\r\rPlease give a proper value for it.",
                          ChainValue::Yield, 2});
        EXPECT_EQ(t.currentColumn, 2);
    }
    {
        ChemicalTables t = validChain();
        t.chemicals[1].yield = "-0.01";
        expectRefused(t, {"Improper input data",
                          "The value of yield facotrs must be greater than zero.\r\rPlease give a proper value for it.",
                          ChainValue::Yield, 2});
    }
}

TEST(ChemicalTables, RatesAlikeInSevenDigitsAreRefusedAsEqual) {
    ChemicalTables t = validChain();
    t.chemicals[2].rate = "0.10000001";
    expectRefused(t, {"Improper input data",
                      "The decay rate of chemical TCE is the same as that of chemical VC\r\rThis will result in "
                      "incorrect solution. Please give the proper values\rfor the decay rates.",
                      ChainValue::Rate, 3});
    // A marker counts as the number it carries (0.2, DCE's rate).
    ChemicalTables m = validChain();
    m.chemicals[2].rate = kMarker;
    expectRefused(m, {"Improper input data",
                      "The decay rate of chemical DCE is the same as that of chemical VC\r\rThis will result in "
                      "incorrect solution. Please give the proper values\rfor the decay rates.",
                      ChainValue::Rate, 3});
    ChemicalTables apart = validChain();
    apart.chemicals[2].rate = "0.1000002";  // differs in the seventh digit
    ScriptedUserInterface ui;
    ChainFailure failure;
    EXPECT_TRUE(apart.accepted("0:100:10", ui, failure));
}

TEST(ChemicalTables, ThePointsTableShowsEachChemicalsResult) {
    DataSet data;
    data.numChemicals = 3;
    data.chemicalName.redim(3);
    data.resultsInPoint.redim(3);
    data.chemicalName(1) = "TCE";
    data.chemicalName(2) = "DCE";
    data.chemicalName(3) = "VC";
    data.resultsInPoint(1) = "0.123456789";  // 0.1 to 1: "0.#####"
    data.resultsInPoint(2) = "1.5E-05";      // below 0.001: "#.####e+###"
    data.resultsInPoint(3) = "Monte Carlo";
    const PointResultsTable table = pointResults(data, 2, "ppm");
    EXPECT_EQ(table.name, "grd2DResults");
    EXPECT_EQ(table.chemicalHeading, "Chemical");
    EXPECT_EQ(table.concentrationHeading, "Conc. (ppm)");
    ASSERT_EQ(table.rows.size(), 3u);
    EXPECT_EQ(table.rows[0].first, "TCE");
    EXPECT_EQ(table.rows[0].second, "0.12346");
    EXPECT_EQ(table.rows[1].second, "1.5e-5");
    EXPECT_EQ(table.rows[2].first, "VC");
    EXPECT_EQ(table.rows[2].second, "Monte Carlo");
}

}  // namespace
}  // namespace bm
