// MCInputForm without widgets: its layouts (the number-of-chemicals row, the
// rows a chain does without), the count row's rule, holdDataSet's count in
// one dimension and in two, the validation of the shared rows and of both
// tables with their exact messages, a run whose grids and points table agree
// with closed forms, Stop between chemicals, the chemical asked for before
// the results are shown, and the report's chemical properties.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "model/number_text.h"
#include "saturated/form/report_printed.h"
#include "shell/screen/printed_lines.h"
#include "saturated/tests/input_form_test_models.h"
#include "species/form/mc_input_form_model.h"
#include "species/tests/chain_test_model.h"
#include "species/tests/mc_input_test_screen.h"
#include "testing/is_close.h"
#include "testing/one_dim_test_model.h"
#include "testing/test_paths.h"

namespace bm {
namespace {

using testkit::Chain;
using testkit::chainModel;
using testkit::ChainScreen;

// The one-dimensional screen model (V = 0.3 / 0.3 = 1, D = 0.5) as a chain.
DataSet oneDimChain(const Chain& chain = {{0.1, 0.2}, {1, 1}, {1, 0}}) {
    return chainModel(testkit::oneDimScreenModel(), chain);
}

double U(double k, double x, double t) { return testkit::semiInfiniteDirichletReference(1.0, 0.5, k, x, t); }

TEST(MCInputFormModel, EachLayoutHasTheCountRowAndHidesTheHalfLifeAndTheTerms) {
    const struct {
        DataSet model;
        int countRow, halfLifeRow, superpositionRow;
    } layouts[] = {{chainModel(testkit::oneDimScreenModel(), {{0.1, 0.2, 0.3}, {1, 1, 1}, {1, 0, 0}}), 11, 2, 5},
                   {chainModel(testkit::twoDimScreenModel(), {{0.1, 0.2, 0.3}, {1, 1, 1}, {1, 0, 0}}), 19, 6, 7},
                   {chainModel(testkit::threeDimScreenModel(), {{0.1, 0.2, 0.3}, {1, 1, 1}, {1, 0, 0}}), 23, 13, 9}};
    for (const auto& l : layouts) {
        ChainScreen s(l.model);
        const int d = s.form.dimension();
        EXPECT_EQ(MCInputFormModel::chemicalCountRow(d), l.countRow);
        ASSERT_EQ(static_cast<int>(s.form.rows(d).size()), l.countRow + 1);
        const FormRow& count = s.form.row(l.countRow);
        EXPECT_EQ(count.caption, " Number of Chemicals");
        EXPECT_EQ(count.text, "3");
        EXPECT_EQ(count.tab, kBoundaryTab);
        EXPECT_FALSE(s.form.row(l.halfLifeRow).enabled);
        EXPECT_EQ(s.form.row(l.halfLifeRow).field, RowField::halfLife);
        EXPECT_FALSE(s.form.row(l.superpositionRow).enabled);
        EXPECT_EQ(s.form.tables().count(), 3);
        EXPECT_EQ(s.form.tables().chemicalCell(2, 0), "C3");
        EXPECT_EQ(s.form.grid().name, "Input" + std::to_string(d) + "TG");
        EXPECT_EQ(s.form.grid().cells.size(), 3u);
        EXPECT_EQ(s.form.grid().cell(0, 1), "1");
        EXPECT_EQ(s.form.grid().timeHeading, "Time (day)");
        EXPECT_EQ(s.form.grid().concentrationHeading.rfind("Contaminant Conc.", 0), 0u);
        EXPECT_EQ(s.form.tables().rateHeading, "Decay Rate (1/day)");
        EXPECT_EQ(s.form.pointsTable().name, "grd" + std::to_string(d) + "DResults");
        EXPECT_EQ(s.form.pointsTable().concentrationHeading, "Conc. (mg/l)");
        EXPECT_EQ(s.form.windowTitle().rfind("Ground Water Model (Saturated)", 0), 0u);
        EXPECT_TRUE(s.ui.messages.empty());
    }
}

TEST(MCInputFormModel, TheCountRowGrowsAndShrinksTheTablesAndRefusesLessThanOne) {
    ChainScreen s(oneDimChain());
    s.form.rowEdited(11, "4");
    EXPECT_TRUE(s.form.rowLeft(11));
    EXPECT_EQ(s.data.numChemicals, 4);
    EXPECT_EQ(s.form.tables().count(), 4);
    EXPECT_EQ(s.form.grid().cells.size(), 4u);
    EXPECT_EQ(s.form.tables().chemicalCell(1, 0), "C2");
    EXPECT_EQ(s.form.tables().chemicalCell(3, 0), "");

    s.form.rowEdited(11, "0");
    EXPECT_FALSE(s.form.rowLeft(11));
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "Improper input value");
    EXPECT_EQ(s.ui.messages[0].text,
              "'0' is not a valid input value.\r\rThe number of chemicals must be greater than or equal to 1.");
    EXPECT_EQ(s.form.row(11).text, "4");  // its earlier text back
    EXPECT_EQ(s.data.numChemicals, 4);
    EXPECT_EQ(s.form.tables().count(), 4);
    ASSERT_FALSE(s.host.focus.empty());
    EXPECT_EQ(s.host.focus.back().row, 11);

    s.form.rowEdited(11, "1");
    EXPECT_TRUE(s.form.rowLeft(11));
    EXPECT_EQ(s.form.tables().count(), 1);
    EXPECT_EQ(s.form.tables().chemicalCell(0, 0), "C1");
}

TEST(MCInputFormModel, OneDimensionReadsTheCountAgainAndTwoKeepsTheValueOfTheLostFocus) {
    ChainScreen one(oneDimChain({{0.1, 0.2, 0.3}, {1, 1, 1}, {1, 0, 0}}));
    one.form.rowEdited(11, "2");  // typed, the focus still on the row
    ASSERT_TRUE(one.form.holdDataSet());
    EXPECT_EQ(one.data.numChemicals, 2);
    EXPECT_EQ(one.data.chemicalName.ub(), 2);
    EXPECT_EQ(one.data.chemicalSuperpositionIndex.ub(), 2);

    ChainScreen two(chainModel(testkit::twoDimScreenModel(), {{0.1, 0.2, 0.3}, {1, 1, 1}, {1, 0, 0}}));
    two.form.rowEdited(19, "2");
    ASSERT_TRUE(two.form.holdDataSet());
    EXPECT_EQ(two.data.numChemicals, 3);
    EXPECT_EQ(two.data.chemicalName.ub(), 3);
    EXPECT_EQ(two.data.chemicalName(3), "C3");
}

TEST(MCInputFormModel, ARunTimeErrorInHoldDataSetIsReportedWithTheScreensWords) {
    ChainScreen s(oneDimChain());
    s.form.row(3).text = "0:1:0.00001";  // more x terms than a counter holds
    EXPECT_FALSE(s.form.holdDataSet());
    ASSERT_EQ(s.ui.messages.size(), 2u);
    EXPECT_EQ(s.ui.messages[0].title, "Overflow");
    EXPECT_EQ(s.ui.messages[1].title, "brenmoor");
    EXPECT_EQ(s.ui.messages[1].text, "Error in HoldDataset()");
}

TEST(MCInputFormModel, HoldDataSetCopiesTheTablesIntoTheChemicalLists) {
    ChainScreen s(oneDimChain());
    s.form.chemicalEdited(1, 0, "DCE");
    s.form.chemicalEdited(1, 2, "0.7");
    s.form.gridEdited(1, 0, "2");
    s.form.gridEdited(1, 1, "0.5");
    EXPECT_EQ(s.data.dataState, kParametersChanged);
    ASSERT_TRUE(s.form.holdDataSet());
    EXPECT_EQ(s.data.chemicalName(2), "DCE");
    EXPECT_EQ(s.data.yieldFactor(2), "0.7");
    EXPECT_EQ(s.data.suppositionTime(2), "2");
    EXPECT_EQ(s.data.suppositionConcentration(2), "0.5");
    EXPECT_EQ(s.data.chemicalSuperpositionIndex(2), s.data.superpositionIndex);
}

TEST(MCInputFormModel, AValidChainPassesAndAYieldOfZeroToo) {
    ChainScreen s(oneDimChain({{0.1, 0.2, 0.3}, {1, 0, 1}, {1, 0, 0}}));
    EXPECT_TRUE(s.form.validate());
    EXPECT_TRUE(s.ui.messages.empty());
}

TEST(MCInputFormModel, TheSharedRowsAreCheckedBeforeTheTables) {
    ChainScreen s(oneDimChain());
    s.form.row(0).text = "";
    s.form.tables().chemicals[0].name = "";
    EXPECT_FALSE(s.form.validate());
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "No input data");
    EXPECT_EQ(s.ui.messages[0].text,
              "No input value has been given for " + s.form.row(0).caption + ".\r\rPlease give a proper input value.");
    ASSERT_FALSE(s.host.focus.empty());
    EXPECT_EQ(s.host.focus.back().row, 0);
}

TEST(MCInputFormModel, TheInputsTableComesBeforeTheChemicalsTableAndTheFocusGoesToTheCell) {
    ChainScreen s(oneDimChain());
    s.form.tables().chemicals[0].name = "";
    s.form.gridEdited(1, 0, "9");  // outside the time range 0 to 5
    EXPECT_FALSE(s.form.validate());
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].icon, MessageIcon::Critical);
    EXPECT_EQ(s.ui.messages[0].title, "Improper input data");
    EXPECT_EQ(s.ui.messages[0].text,
              "Input value given for the time must be between  0 and 5\r\rPlease give a proper input value for it.");
    ASSERT_FALSE(s.host.focus.empty());
    EXPECT_TRUE(s.host.focus.back().grid);
    EXPECT_FALSE(s.host.focus.back().chemicalTable);
    EXPECT_EQ(s.host.focus.back().gridRow, 1);
    EXPECT_EQ(s.host.focus.back().gridColumn, 0);
    EXPECT_EQ(s.host.focus.back().tab, kBoundaryTab);

    s.ui.messages.clear();
    s.form.gridEdited(1, 0, "5");  // the maximum is allowed
    EXPECT_FALSE(s.form.validate());
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "No input data");
    EXPECT_EQ(s.ui.messages[0].text,
              "Not all values have been given for chemical names.\r\rPlease give proper chemical names.");
    EXPECT_TRUE(s.host.focus.back().chemicalTable);
    EXPECT_EQ(s.host.focus.back().gridRow, 0);
    EXPECT_EQ(s.host.focus.back().gridColumn, 0);
    EXPECT_EQ(s.form.tables().currentRow, 0);
}

TEST(MCInputFormModel, EqualRatesAreRefused) {
    ChainScreen s(oneDimChain());
    s.form.chemicalEdited(1, 1, "0.10000001");
    EXPECT_FALSE(s.form.validate());
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].text,
              "The decay rate of chemical C1 is the same as that of chemical C2\r\rThis will result in incorrect "
              "solution. Please give the proper values\rfor the decay rates.");
}

TEST(MCInputFormModel, CalculateGivesEachChemicalsGridAndItsPointConcentration) {
    // k1 = 0.1, k2 = 0.2, y2 = 1, c = (1, 0): C1 = U1 and C2 = U1 - U2.
    ChainScreen s(oneDimChain());
    EXPECT_TRUE(s.form.calculate());
    ASSERT_TRUE(s.ui.messages.empty()) << s.ui.lastText();
    ASSERT_EQ(s.data.chemResult1D.ub(0), 2);
    for (int t = 1; t <= 6; ++t)
        for (int x = 1; x <= 11; ++x) {
            const double xv = x - 1, tv = t - 1;
            EXPECT_CLOSE(s.data.chemResult1D(1, x, t), U(0.1, xv, tv), 1e-9, 1e-12) << x << "," << t;
            EXPECT_CLOSE(s.data.chemResult1D(2, x, t), U(0.1, xv, tv) - U(0.2, xv, tv), 1e-9, 1e-12) << x << "," << t;
        }
    EXPECT_EQ(s.ui.progress.size(), 2u * 66u);  // each chemical's grid, point by point
    EXPECT_EQ(s.ui.progress.front().owner, ProgressOwner::MultiChemicalForm);
    // The point's values are coupled from the text the solver leaves of each
    // chemical's relative concentration there, which the number format rounds.
    const auto shown = [](double v) { return textValue(formatNumber(v)); };
    const PointResultsTable points = s.form.pointsTable();
    ASSERT_EQ(points.rows.size(), 2u);
    EXPECT_EQ(points.rows[0].first, "C1");
    EXPECT_EQ(points.rows[0].second, formatNumber(shown(U(0.1, 10, 5))));
    EXPECT_EQ(points.rows[1].second, formatNumber(shown(U(0.1, 10, 5)) - shown(U(0.2, 10, 5))));
    EXPECT_EQ(s.form.resultLabel, "Regular");
    EXPECT_EQ(s.form.resultCaption, "Computed at");
}

TEST(MCInputFormModel, StopEndsTheRunAfterTheChemicalAtHandUncoupled) {
    ChainScreen s(oneDimChain({{0.1, 0.2, 0.3}, {1, 1, 1}, {1, 0, 0}}));
    s.ui.onProgress = [&](const testkit::ScriptedUserInterface::Progress&) {
        if (s.ui.progress.size() == 66 + 10) {  // the second chemical's tenth point
            s.ui.answers.push_back(MessageAnswer::Yes);
            s.form.stopClicked();
        }
    };
    s.form.calculate();
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "Stop Calculation");
    EXPECT_EQ(s.ui.messages[0].text,
              "Do you want to stop computation process?\r\n\r\nIf YES is selected the output viewed through the Results "
              "menu would not be correct.");
    // The second chemical's grid ran to its end; the third never started.
    EXPECT_EQ(s.ui.progress.size(), 2u * 66u);
    EXPECT_FALSE(s.data.stopRequestedMulti);
    EXPECT_FALSE(s.data.stopRequested);
    EXPECT_TRUE(s.data.runStopped);
    // chemResult holds b(1) U1 of the first chemical, not coupled back; the
    // second was solved but not stored.
    ASSERT_EQ(s.data.chemResult1D.ub(0), 3);
    const double b1 = textValue(s.data.chemicalTermConcentration(1));
    EXPECT_CLOSE(b1, 1.0, 1e-12, 0);  // Z has a unit diagonal and c1 = 1
    EXPECT_CLOSE(s.data.chemResult1D(1, 4, 3), b1 * U(0.1, 3, 2), 1e-9, 0);
    EXPECT_EQ(s.data.chemResult1D(2, 4, 3), 0.0);
    EXPECT_FALSE(s.form.stopVisible);
    EXPECT_TRUE(s.form.mainEnabled);

    // The next run goes to its end.
    s.ui.onProgress = nullptr;
    s.ui.messages.clear();
    s.form.calculate();
    EXPECT_TRUE(s.ui.messages.empty());
    EXPECT_EQ(s.ui.progress.size(), 2u * 66u + 3u * 66u);
}

struct Shown : ::testing::Test {
    testkit::TempDir dir;
    ChainScreen s{oneDimChain()};
    void SetUp() override {
        s.state.temporaryDataPath = dir.path().string();
        s.form.calculate();
        ASSERT_TRUE(s.ui.messages.empty());
        testkit::writeFileBytes(dir.path() / "editor", "#!/bin/sh\n");
        s.state.textEditorPath = dir.file("editor");
    }
};

TEST_F(Shown, ViewAsksForTheChemicalAndWritesItsOutput) {
    s.host.chemicalPicked = 2;
    s.form.menuResultsClick(resultsItem::View);
    EXPECT_EQ(s.host.chemicalPickers, 1);
    EXPECT_EQ(s.data.selectedChemical, 2);
    ASSERT_EQ(s.ui.programStarts.size(), 1u);
    const std::string file = testkit::readFileBytes(dir.file("brenmoor.plt"));
    EXPECT_NE(file.find("Model: One Dimensional - Chemical C2\r\n"), std::string::npos) << file.substr(0, 200);
}

TEST_F(Shown, WithoutAChemicalNothingIsShown) {
    s.data.selectedChemical = 1;
    s.form.menuResultsClick(resultsItem::Graph);
    EXPECT_EQ(s.host.chemicalPickers, 1);
    EXPECT_EQ(s.data.selectedChemical, 0);
    EXPECT_TRUE(s.ui.programStarts.empty());
    EXPECT_TRUE(s.ui.messages.empty());
}

TEST(MCInputFormModel, AUnitChangeRelabelsTheTablesHeadings) {
    ChainScreen s(oneDimChain());
    s.form.menuUnitsClick(UnitMenu::Time, 40);
    EXPECT_EQ(s.form.tables().rateHeading, "Decay Rate (1/sec)");
    EXPECT_EQ(s.form.grid().timeHeading, "Time (sec)");
    s.form.menuUnitsClick(UnitMenu::Concentration, 30);
    EXPECT_EQ(s.form.grid().concentrationHeading, "Contaminant Conc. at Inflow Boundary (ppm)");
    EXPECT_EQ(s.form.pointsTable().concentrationHeading, "Conc. (ppm)");
    EXPECT_EQ(s.form.tables().chemicalCell(1, 1), "0.2");  // a unit converts nothing
}

TEST(MCInputFormModel, TheReportListsTheChemicalPropertiesInPlaceOfTheHalfLife) {
    ChainScreen s(oneDimChain());
    s.form.calculate();
    ASSERT_TRUE(s.form.holdDataSet());
    std::vector<std::string> lines;
    for (const PrintedLine& line : printedReportLines(s.form)) lines.push_back(printedLineText(line));
    const auto at = std::find(lines.begin(), lines.end(), "Chemical Properties");
    ASSERT_NE(at, lines.end());
    ASSERT_LT(at + 3, lines.end());
    EXPECT_EQ(*(at + 1), "Chemical Name Decay rate (1/" + reportUnitName(UnitMenu::Time, "day") +
                             ")  Effective yield factor (M/M)");
    // Each value stands under the first letter of its heading's words.
    const std::string& heading = *(at + 1);
    const std::size_t rate = heading.find("Decay rate"), yield = heading.find("Effective");
    EXPECT_EQ(*(at + 2), "C1" + std::string(rate - 2, ' ') + "0.1" + std::string(yield - rate - 3, ' ') + "1");
    EXPECT_EQ(*(at + 3), "C2" + std::string(rate - 2, ' ') + "0.2" + std::string(yield - rate - 3, ' ') + "1");
    // The results, chemical after chemical, as the points table shows them.
    ASSERT_GE(lines.size(), 3u);
    EXPECT_EQ(lines[lines.size() - 3], "Chemical" + std::string(41, ' ') + "Conc. (" +
                                           reportUnitName(UnitMenu::Concentration, "mg/l") + ")");
    const auto shown = [](double v) { return textValue(formatNumber(v)); };
    EXPECT_EQ(lines[lines.size() - 2], "  C1" + std::string(45, ' ') + formatNumber(shown(U(0.1, 10, 5))));
    EXPECT_EQ(lines[lines.size() - 1],
              "  C2" + std::string(45, ' ') + formatNumber(shown(U(0.1, 10, 5)) - shown(U(0.2, 10, 5))));
    for (const std::string& l : lines) {
        EXPECT_EQ(l.find("HalfLife"), std::string::npos) << l;
        EXPECT_EQ(l.find("Superposition Index"), std::string::npos) << l;
    }
}

}  // namespace
}  // namespace bm
