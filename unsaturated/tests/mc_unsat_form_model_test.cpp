// MCUnsatForm without its widgets: the rows of a chain (no half-life, no
// superposition index, the number of chemicals), its tables into and out of
// the DataSet, the checks that differ from the single-chemical screen, the
// square root's test for each chemical's rate, and the report.

#include <gtest/gtest.h>

#include "montecarlo/pass/kind_calculation.h"
#include "shell/screen/printed_lines.h"
#include "unsat_test_screen.h"
#include "unsaturated/form/mc_unsat_form_model.h"
#include "unsaturated/form/unsat_report.h"

namespace bm {
namespace {

using Screen = testkit::UnsatScreen<MCUnsatFormModel>;

const char* const kProper = "\r\rPlease give a proper input value.";

using testkit::unsatChainModel;

using testkit::expectAccepted;
using testkit::expectRefused;

TEST(MCUnsatForm, AChainHasNoHalfLifeNorTermsButItsNumberOfChemicals) {
    Screen s(unsatChainModel());
    EXPECT_FALSE(s.form.row(unsatrow::HalfLife).inUse);
    EXPECT_FALSE(s.form.row(unsatrow::Superposition).inUse);
    EXPECT_TRUE(s.form.row(unsatrow::Chemicals).inUse);
    EXPECT_EQ(s.form.row(unsatrow::Chemicals).caption, " Number of Chemicals");
    EXPECT_EQ(s.form.row(unsatrow::Chemicals).text, "2");
    ASSERT_EQ(s.form.tables().count(), 2);
    EXPECT_EQ(s.form.tables().chemicals[1].name, "Daughter");
    EXPECT_EQ(s.form.tables().chemicals[1].rate, "0.001");
    EXPECT_EQ(s.form.grid().cells[0].concentration, "1");  // Input1TG is the inputs table
    EXPECT_EQ(s.form.tables().rateHeading, "Decay Rate (1/day)");
    EXPECT_EQ(s.form.windowTitle(), "Ground Water Model (Unsaturated)");
    // The Monte Carlo screen offers the constants without the half-life.
    const KindCalculation* kind = kindCalculationOf(s.data);
    ASSERT_NE(kind, nullptr);
    for (const MonteVariant& v : kind->monteVariants(s.data)) EXPECT_NE(v.name, "Contaminant Halflife");
}

TEST(MCUnsatForm, TheNumberOfChemicalsResizesTheTables) {
    Screen s(unsatChainModel());
    s.type(unsatrow::Chemicals, "3");
    EXPECT_TRUE(s.form.rowLeft(unsatrow::Chemicals));
    EXPECT_EQ(s.form.tables().count(), 3);
    EXPECT_EQ(s.form.tables().chemicals[0].name, "Parent");  // kept
    s.type(unsatrow::Chemicals, "0");
    EXPECT_FALSE(s.form.rowLeft(unsatrow::Chemicals));
    EXPECT_EQ(s.ui.messages.back().title, "Improper input value");
    EXPECT_EQ(s.form.row(unsatrow::Chemicals).text, "3");  // the earlier text back
}

TEST(MCUnsatForm, HoldDataSetPutsTheTablesIntoTheChemicalLists) {
    Screen s(unsatChainModel());
    s.form.chemicalEdited(1, 1, "0.0015");
    s.form.gridEdited(1, 1, "0.2");
    ASSERT_TRUE(s.form.holdDataSet());
    EXPECT_EQ(s.data.decayRate(2), "0.0015");
    EXPECT_EQ(s.data.suppositionConcentration(2), "0.2");
    EXPECT_EQ(s.data.numChemicals, 2);
    Screen again(s.data);
    EXPECT_EQ(again.form.tables().chemicals[1].rate, "0.0015");
}

TEST(MCUnsatForm, TheCompleteChainPassesWithoutHalfLifeOrTerms) {
    Screen s(unsatChainModel());
    expectAccepted(s);
}

TEST(MCUnsatForm, TheNumberOfChemicalsIsAWholeNumberOfAtLeastOne) {
    Screen s(unsatChainModel());
    s.type(unsatrow::Chemicals, " ");
    expectRefused(s, "No input data", std::string("No input value has been given for  Number of Chemicals.") + kProper);
    s.type(unsatrow::Chemicals, "1.5");
    expectRefused(s, "Improper input data", std::string("The input value for  Number of Chemicalsis not a integer.") + kProper);
    s.type(unsatrow::Chemicals, "0");
    expectRefused(s, "Improper input data", std::string("The input value for  Number of Chemicalsis less than one.") + kProper);
    // An empty row before it speaks first.
    s.type(unsatrow::Percolation, "");
    expectRefused(s, "No input data",
                  std::string("No input value has been given for  Steady-State Percolation Rate (Q).") + kProper);
}

TEST(MCUnsatForm, TheTablesAreCheckedWhereTheTermsWouldBe) {
    Screen s(unsatChainModel());
    s.form.chemicalEdited(1, 0, " ");
    expectRefused(s, "No input data", "Not all values have been given for chemical names.\r\rPlease give proper chemical names.");
    EXPECT_EQ(s.ui.messages[0].icon, MessageIcon::Critical);
    ASSERT_FALSE(s.host.focus.empty());
    EXPECT_TRUE(s.host.focus.back().chemicalTable);
    EXPECT_EQ(s.host.focus.back().gridRow, 1);
    // After the time range's checks: a time range that does not start at zero speaks first.
    s.type(unsatrow::Time, "5:730:73:365");
    expectRefused(s, "Invalid input format", "Time Range (t) should start zero.\r\rPlease set Tmin as zero!");
    // Before the selected point's.
    Screen t(unsatChainModel());
    t.form.chemicalEdited(0, 1, "0.002");
    t.form.chemicalEdited(1, 1, "0.002");
    t.type(unsatrow::PointX, "50");
    s.ui.messages.clear();
    EXPECT_FALSE(t.form.validate());
    EXPECT_EQ(t.ui.messages.back().text.rfind("The decay rate of chemical Parent is the same as that of chemical Daughter", 0),
              0u);
}

// gamma = 0.0013 per day, R = 1.76190, V^2 = 2.2676e-5, 4 Dv = 0.04:
// parent (0.002 - 0.0022905) * 0.04 + 2.2676e-5 = +1.1e-5, daughter
// (0.001 - 0.0022905) * 0.04 + 2.2676e-5 = -2.9e-5: the daughter's is negative.
TEST(MCUnsatForm, EachChemicalsRateGoesThroughTheSquareRootsTest) {
    Screen s(unsatChainModel());
    s.type(unsatrow::SourceDecay, "0.0013");
    s.ui.messages.clear();
    EXPECT_FALSE(s.form.validate());
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "Improper input data");
    EXPECT_NE(s.ui.messages[0].text.find("is less than zero."), std::string::npos);
    // With the daughter as fast as 0.0015: (0.0015 - 0.0022905) * 0.04 + 2.2676e-5 = -9.0e-6, still refused;
    // at 0.0018: (0.0018 - 0.0022905) * 0.04 + 2.2676e-5 = +3.1e-6, accepted.
    s.form.chemicalEdited(1, 1, "0.0015");
    EXPECT_FALSE(s.form.validate());
    s.form.chemicalEdited(1, 1, "0.0018");
    expectAccepted(s);
    // A rate under Monte Carlo control is left to the simulation.
    s.form.tables().chemicals[1].rate = "Monte Carlo" + std::string(300, ' ') + "|0.0001: 1";
    expectAccepted(s);
}

TEST(MCUnsatForm, TheBatchCalculatorRunsTheSameChecks) {
    DataSet d = unsatChainModel();
    d.sourceDecayRate = "0.0013";
    testkit::ScriptedUserInterface ui;
    const KindCalculation* kind = kindCalculationOf(d);
    ASSERT_NE(kind, nullptr);
    EXPECT_FALSE(kind->validate(d, ui));
    EXPECT_EQ(ui.messages.back().title, "Improper input data");
    d = unsatChainModel();
    d.saturation = "0.7";
    EXPECT_FALSE(kind->validate(d, ui));
    EXPECT_EQ(ui.lastText(), " Saturation (Sw) is larger than  Aquifer Porosity (n)." + std::string(kProper));
    d = unsatChainModel();
    EXPECT_TRUE(kind->validate(d, ui));
}

TEST(MCUnsatForm, TheReportHasTheChemicalsInPlaceOfTheHalfLife) {
    Screen s(unsatChainModel());
    ASSERT_TRUE(s.form.holdDataSet());
    const std::string text = printedReportText(unsatReportLines(s.data, s.form.rows()));
    EXPECT_EQ(text.find("HalfLife"), std::string::npos);
    EXPECT_NE(text.find("Chemical Properties\nChemical Name Decay rate (1/Days)  Effective yield factor (M/M)\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("\nDaughter"), std::string::npos);
    EXPECT_NE(text.find("  Source Concentration Decay Rate: "), std::string::npos);
    // The results chemical after chemical, at the end.
    EXPECT_NE(text.find("\nChemical" + std::string(49 - 8, ' ') + "Conc. (mg/l)\n  Parent"), std::string::npos) << text;
}

TEST(MCUnsatForm, GraphAndViewAskForTheChemicalFirst) {
    Screen s(unsatChainModel());
    s.host.chemicalPicked = 0;  // the picker closed without a choice
    s.form.menuResultsClick(resultsItem::View);
    EXPECT_EQ(s.host.chemicalPickers, 1);
    EXPECT_TRUE(s.ui.messages.empty());  // nothing else happens
}

}  // namespace
}  // namespace bm
