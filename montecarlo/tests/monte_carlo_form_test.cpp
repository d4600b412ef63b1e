// The simulation screen as data: its set-up from the open model, the edit
// rules of the variant grid with their messages, Generate with its panel
// caption, the double-click selection, the reports, and Exit copying the
// tables back into the model's block.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kernels/kernmc.h"
#include "model/number_text.h"
#include "montecarlo/monte_carlo_form_model.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/monte_setup.h"
#include "testing/one_dim_test_model.h"
#include "testing/scripted_user_interface.h"

namespace bm {
namespace {

using testkit::ScriptedUserInterface;

const std::string kVelocity = "Ground Water Darcy Velocity (V)";
const std::string kDispersion = "Longitudinal Dispersion Coefficient (D)";
const std::string kInflow = "Contaminant Conc. at Inflow Boundary";

struct RecordingFormHost : MonteCarloFormHost {
    int changes = 0, closes = 0;
    std::vector<std::string> printed;
    std::vector<int> columns;
    std::vector<std::pair<std::string, std::string>> shown;
    void formChanged() override { ++changes; }
    bool printReport(const std::vector<std::string>& lines, const std::vector<int>& tabColumns) override {
        printed = lines;
        columns = tabColumns;
        return true;
    }
    void showFile(const std::string& path, const std::string& kind) override { shown.emplace_back(path, kind); }
    void closeForm() override { ++closes; }
};

struct FormTest : ::testing::Test {
    DataSet data = testkit::oneDimModel("Semi-Infinite", "Dirichlet");
    ScriptedUserInterface ui;
    RecordingFormHost host;
    std::unique_ptr<MonteCarloFormModel> form;

    void open() {
        std::optional<MonteCarloSetup> setup = monteCarloSetup(data);
        ASSERT_TRUE(setup.has_value());
        form = std::make_unique<MonteCarloFormModel>(data, ui, std::move(*setup));
        form->setHost(&host);
        form->load();
    }
    // A row filled as the user fills it: the variant picked, then each cell typed.
    void fill(int row, const std::string& variant, const std::string& minimum, const std::string& maximum,
              const std::string& variance, const std::string& terms, const std::string& distribution) {
        form->inputCellEdited(row, 0, variant);
        form->inputCellEdited(row, 2, minimum);
        form->inputCellEdited(row, 3, maximum);
        form->inputCellEdited(row, 4, variance);
        if (!terms.empty()) form->inputCellEdited(row, 5, terms);
        form->inputCellEdited(row, 6, distribution);
    }
};

// ---------------------------------------------------------------- set-up

TEST_F(FormTest, TheSetUpNamesTheModelAndListsItsVariantsWithTheirPresentValues) {
    open();
    EXPECT_EQ(form->title, "Monte Carlo Simulation (One Dimensional)");
    EXPECT_EQ(form->panelCaption, "AQUIFER: Semi-Infinite  CONTAMINANT: Dirichlet");
    EXPECT_EQ(form->variantChoices(),
              (std::vector<std::string>{kVelocity, kDispersion, "Contaminant Half-Life", "Aquifer Porosity (n)",
                                        "Retardation Coefficient (R)", kInflow, "--REMOVE--"}));
    EXPECT_EQ(form->setup().list.meanLB,
              (std::vector<std::string>{"1", "0.5", "6.931471805599453", "1", "1", "1", "--REMOVE--"}));
    EXPECT_FALSE(form->setup().previousTables);
}

TEST_F(FormTest, NewTablesHaveARowPerListEntryAndSelectNothing) {
    open();
    EXPECT_EQ(data.monteRowCount, 7);
    EXPECT_EQ(data.monteResultRowCount, 7);
    EXPECT_EQ(data.InputTGData.ub(0), 7);
    EXPECT_EQ(data.InputTGData.ub(1), 1);
    for (int r = 1; r <= 7; ++r) EXPECT_EQ(data.ResultTGData(r, 1).selection, "Nothing");
    EXPECT_EQ(form->rowCount(), 7);
    for (const auto& row : form->inputGrid)
        for (const std::string& cell : row) EXPECT_EQ(cell, "");
}

TEST_F(FormTest, MoreThanOneInflowTermHasNoInflowVariant) {
    data.superpositionIndex = 2;
    data.terms.redim(2);
    data.terms(2) = {"3", "0.5"};
    open();
    EXPECT_EQ(form->variantChoices().size(), 6u);
    EXPECT_EQ(form->variantChoices()[4], "Retardation Coefficient (R)");
    EXPECT_EQ(form->variantChoices()[5], "--REMOVE--");
}

TEST_F(FormTest, AFieldUnderSimulationIsListedWithTheConstantItStandsFor) {
    data.velocity = formFieldMarker("1.25", 1);
    open();
    EXPECT_EQ(form->setup().list.meanLB[0], "1.25");
}

TEST(MonteCarloSetUp, TheTimeVaryingScreenNamesItsSourceAndFunction) {
    DataSet d;
    d.modelType = "Time Varying";
    d.aquiferType = "Asymptotic";
    d.contaminantType = "Line (continuous)";
    const std::optional<MonteCarloSetup> setup = monteCarloSetup(d);
    ASSERT_TRUE(setup.has_value());
    EXPECT_EQ(setup->title, "Monte Carlo Simulation (Variable Dispersion)");
    EXPECT_EQ(setup->panelCaption, "CONTAMINANT SOURCE: Line (continuous)  DISPERSION COEFFICIENT: Asymptotic");
    // No inflow concentration: the time-varying model has no inflow terms.
    for (const std::string& name : setup->list.variantLB1) EXPECT_NE(name, kInflow);
    EXPECT_EQ(setup->list.variantLB1.back(), "--REMOVE--");
}

TEST(MonteCarloSetUp, TheUnsaturatedScreenListsItsRowsThenTheInflow) {
    DataSet d;
    d.modelType = "Unsaturated One Dimensional";
    d.aquiferType = "Semi-Infinite";
    d.contaminantType = "Dirichlet";
    d.superpositionIndex = 1;
    d.terms.redim(1);
    d.terms(1) = {"0", "4"};
    const std::optional<MonteCarloSetup> setup = monteCarloSetup(d);
    ASSERT_TRUE(setup.has_value());
    EXPECT_EQ(setup->title, "Monte Carlo Simulation (Unsaturated One Dimensional)");
    ASSERT_EQ(setup->list.variantLB1.size(), 9u);
    EXPECT_EQ(setup->list.variantLB1[0], "Steady-State Percolation Rate (Q)");
    EXPECT_EQ(setup->list.variantLB1[7], kInflow);
    EXPECT_EQ(setup->list.meanLB[7], "4");
}

TEST(MonteCarloSetUp, AnUnknownModelHasNoSetUp) {
    DataSet d;
    d.modelType = "Nothing Known";
    EXPECT_FALSE(monteCarloSetup(d).has_value());
}

TEST_F(FormTest, TablesOfTheSameLengthAreKeptAndAChangedVariableCountRebuildsThem) {
    open();
    fill(1, kVelocity, "0.5", "2", "0.04", "10", "Normal");
    form->exit();
    EXPECT_EQ(host.closes, 1);
    open();
    EXPECT_TRUE(form->setup().previousTables);
    EXPECT_FALSE(form->setup().tablesNew);
    EXPECT_EQ(form->inputGrid[0][0], kVelocity);
    form->exit();

    // A second inflow term drops the inflow variant: the list is one shorter and the tables start afresh.
    data.superpositionIndex = 2;
    data.terms.redim(2);
    data.terms(2) = {"3", "0.5"};
    open();
    EXPECT_TRUE(form->setup().previousTables);
    EXPECT_EQ(data.monteRowCount, 6);
    EXPECT_EQ(form->inputGrid[0][0], "");
}

// ---------------------------------------------------------------- editing the variant grid

TEST_F(FormTest, PickingAVariantFillsItsMeanAndTheTablesTerms) {
    open();
    form->inputCellEdited(1, 0, kVelocity);
    EXPECT_EQ(form->inputGrid[0][1], "1");
    EXPECT_EQ(form->inputGrid[0][5], "");  // no terms anywhere yet
    form->inputCellEdited(1, 5, "25");
    form->inputCellEdited(2, 0, kDispersion);
    EXPECT_EQ(form->inputGrid[1][1], "0.5");
    EXPECT_EQ(form->inputGrid[1][5], "25");
    EXPECT_TRUE(ui.messages.empty());
}

TEST_F(FormTest, TheSameVariantTwiceIsRefusedAndItsRowBlanked) {
    open();
    form->inputCellEdited(1, 0, kVelocity);
    form->inputCellEdited(3, 0, " " + kVelocity + " ");
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Information");
    EXPECT_EQ(ui.messages[0].text, "You have selected " + kVelocity + ", please select other parameter!");
    for (const std::string& cell : form->inputGrid[2]) EXPECT_EQ(cell, "");
    EXPECT_EQ(form->inputGrid[0][0], kVelocity);
}

TEST_F(FormTest, ACellOfARowWithoutVariantIsRefused) {
    open();
    form->inputCellEdited(2, 3, "4");
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Information");
    EXPECT_EQ(ui.messages[0].text, "Please select a parameter from variant list first!");
    EXPECT_EQ(form->inputGrid[1][3], "");
}

TEST_F(FormTest, ANonNumericValueIsRefusedAndBlanked) {
    open();
    form->inputCellEdited(1, 0, kVelocity);
    form->inputCellEdited(1, 2, "abc");
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Invalid Input Data");
    EXPECT_EQ(ui.messages[0].icon, MessageIcon::Critical);
    EXPECT_EQ(ui.messages[0].text, "abc is not a proper input value.\r\rPlease give a numeric input.");
    EXPECT_EQ(form->inputGrid[0][2], "");
}

TEST_F(FormTest, ANonNumericTermsCellTakesTheTablesTermsBack) {
    open();
    form->inputCellEdited(1, 0, kVelocity);
    form->inputCellEdited(1, 5, "40");
    form->inputCellEdited(2, 0, kDispersion);
    form->inputCellEdited(2, 5, "x7");
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(form->inputGrid[1][5], "40");
}

TEST_F(FormTest, TermsAreOneNumberForTheWholeTable) {
    open();
    form->inputCellEdited(1, 0, kVelocity);
    form->inputCellEdited(2, 0, kDispersion);
    form->inputCellEdited(2, 5, "60");
    EXPECT_EQ(form->inputGrid[0][5], "60");
    EXPECT_EQ(form->inputGrid[1][5], "60");
    EXPECT_EQ(form->inputGrid[2][5], "");  // a row without variant keeps none
}

TEST_F(FormTest, RemoveClearsTheRowInBothGridsAndTables) {
    open();
    seedMonteCarlo(11);
    fill(1, kVelocity, "0.5", "2", "0.04", "10", "Normal");
    ASSERT_EQ(form->generate(), GenerationOutcome::Generated);
    EXPECT_EQ(form->resultGrid[0][0], kVelocity);
    form->inputCellEdited(1, 0, "--REMOVE--");
    for (const std::string& cell : form->inputGrid[0]) EXPECT_EQ(cell, "");
    for (const std::string& cell : form->resultGrid[0]) EXPECT_EQ(cell, "");
    EXPECT_FALSE(data.InputTGData(1, 1).inUse);
    EXPECT_FALSE(data.ResultTGData(1, 1).inUse);
    EXPECT_EQ(data.InputTGData(1, 1).variant, "");
}

TEST_F(FormTest, HintsFollowThePointer) {
    open();
    const std::vector<std::string> input = {"Select a parameter",
                                            "Input/modify the mean",
                                            "Input/modify the minimum value",
                                            "Input/modify the maximum value",
                                            "Input/modify the variance",
                                            "Input/modify the number of terms",
                                            "Select a distribution"};
    for (int c = 0; c < 7; ++c) {
        form->inputColumnHovered(c);
        EXPECT_EQ(form->helpPanel, input[static_cast<std::size_t>(c)]);
    }
    form->resultColumnHovered(0);
    EXPECT_EQ(form->helpPanel, "Select/unselect the Variant by double clicking mouse.");
    form->resultColumnHovered(1);
    EXPECT_EQ(form->helpPanel, "Select/unselect the Arithimetic mean by double clicking mouse.");
}

// ---------------------------------------------------------------- Generate

TEST_F(FormTest, GenerateSaysPleaseWaitThenShowsTheSummary) {
    open();
    fill(1, kVelocity, "0.5", "2", "0.04", "10", "Uniform");
    std::vector<std::string> captions;
    ui.onProcessEvents = [&] { captions.push_back(form->panelCaption); };
    seedMonteCarlo(3);
    EXPECT_EQ(form->generate(), GenerationOutcome::Generated);
    ASSERT_FALSE(captions.empty());
    EXPECT_EQ(captions.front(), " Please Wait...");
    EXPECT_EQ(form->panelCaption, "AQUIFER: Semi-Infinite  CONTAMINANT: Dirichlet");
    EXPECT_TRUE(data.monteFreshFlag);
    EXPECT_EQ(data.monteIterations, 11);

    // The summary in the screen's column order, of the samples that were drawn.
    std::vector<double> drawn;
    for (int i = 1; i <= 11; ++i) drawn.push_back(data.MonteSamples(1, i, 1));
    const auto [lo, hi] = std::minmax_element(drawn.begin(), drawn.end());
    const auto& row = form->resultGrid[0];
    EXPECT_EQ(row[0], kVelocity);
    EXPECT_EQ(row[4], formatNumber(generalText(static_cast<float>(*lo))));
    EXPECT_EQ(row[5], formatNumber(generalText(static_cast<float>(*hi))));
    for (double v : drawn) {
        EXPECT_GE(v, 0.5);
        EXPECT_LE(v, 2.0);
    }
}

TEST_F(FormTest, AFailedCheckLeavesEverythingAsItWas) {
    open();
    fill(1, kVelocity, "0.5", "2", "0", "10", "Normal");
    ui.messages.clear();
    EXPECT_EQ(form->generate(), GenerationOutcome::Refused);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Improper Input Data");
    EXPECT_EQ(ui.messages[0].text, "Zero input value.\r\r The variance value of " + kVelocity +
                                       " has been given as zero.");
    EXPECT_EQ(form->resultGrid[0][0], "");
    EXPECT_FALSE(data.monteFreshFlag);
}

TEST_F(FormTest, NothingSelectedIsANoticeAndTheScreenStaysUsable) {
    open();
    EXPECT_EQ(form->generate(), GenerationOutcome::NothingInUse);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].title, "Error Information");
    EXPECT_EQ(ui.messages[0].text, "No variable selected for Monte Carlo Analysis!");
    EXPECT_EQ(form->panelCaption, "AQUIFER: Semi-Infinite  CONTAMINANT: Dirichlet");
    fill(1, kVelocity, "0.5", "2", "0.04", "10", "Normal");
    EXPECT_EQ(form->generate(), GenerationOutcome::Generated);
}

TEST_F(FormTest, NewSamplesForAModelUnderSimulationNeedASave) {
    data.velocity = formFieldMarker("1", 1);
    data.dataState = kDataUnchanged;
    data.needsDisplayRefresh = true;  // a file just opened
    open();
    EXPECT_TRUE(form->setup().modelUnderSimulation);
    fill(1, kVelocity, "0.5", "2", "0.04", "10", "Normal");
    data.dataState = kDataUnchanged;
    seedMonteCarlo(2);
    form->generate();
    EXPECT_EQ(data.dataState, kParametersChanged);
    EXPECT_FALSE(data.needsDisplayRefresh);
}

TEST_F(FormTest, NewSamplesForAModelOfPlainNumbersChangeNothingYet) {
    open();
    EXPECT_FALSE(form->setup().modelUnderSimulation);
    fill(1, kVelocity, "0.5", "2", "0.04", "10", "Normal");
    data.dataState = kDataUnchanged;
    seedMonteCarlo(2);
    form->generate();
    EXPECT_EQ(data.dataState, kDataUnchanged);
}

// ---------------------------------------------------------------- selection, reports, Exit

TEST_F(FormTest, DoubleClickSelectsAColumnAndTwiceReturnsToNothing) {
    open();
    seedMonteCarlo(5);
    fill(1, kVelocity, "0.5", "2", "0.04", "10", "Normal");
    form->generate();
    EXPECT_EQ(form->selectedColumn(1), -1);
    EXPECT_TRUE(form->resultDoubleClicked(1, 3));
    EXPECT_EQ(data.ResultTGData(1, 1).selection, "Median");
    EXPECT_EQ(form->selectedColumn(1), 3);
    EXPECT_EQ(data.dataState, kParametersChanged);
    EXPECT_TRUE(form->resultDoubleClicked(1, 3));
    EXPECT_EQ(data.ResultTGData(1, 1).selection, "Nothing");
    EXPECT_TRUE(form->resultDoubleClicked(1, 6));
    EXPECT_EQ(data.ResultTGData(1, 1).selection, "Standard Deviation");
    EXPECT_FALSE(form->resultDoubleClicked(2, 0));  // not in use
    EXPECT_EQ(data.ResultTGData(2, 1).selection, "Nothing");
}

TEST_F(FormTest, PrintSendsTheReportLinesToTheTwoColumns) {
    open();
    seedMonteCarlo(5);
    fill(1, kVelocity, "0.5", "2", "0.04", "10", "Normal");
    form->generate();
    EXPECT_TRUE(form->print());
    EXPECT_EQ(host.columns, (std::vector<int>{10, 40}));
    ASSERT_GE(host.printed.size(), 3u);
    EXPECT_EQ(host.printed[0], "\tVariant:\t" + kVelocity);
    EXPECT_EQ(host.printed[1], "\tInput Data:");
    EXPECT_EQ(host.printed[2], "\tMean:\t1");
}

TEST_F(FormTest, ViewWritesTheFileAndShowsItOrSaysThereIsNothing) {
    open();
    form->setViewPath(::testing::TempDir() + "monte_form_view.txt");
    EXPECT_FALSE(form->view("Numbers"));
    EXPECT_EQ(ui.lastText(), "No output data to be viewed.");
    seedMonteCarlo(5);
    fill(1, kVelocity, "0.5", "2", "0.04", "10", "Normal");
    form->generate();
    EXPECT_TRUE(form->view("Trazelh"));
    ASSERT_EQ(host.shown.size(), 1u);
    EXPECT_EQ(host.shown[0].second, "Trazelh");
}

TEST_F(FormTest, ExitCopiesTheGridsIntoTheModelsBlock) {
    open();
    seedMonteCarlo(9);
    fill(1, kVelocity, "0.5", "2", "0.04", "10", "Normal");
    fill(2, kInflow, "0.5", "2", "0.04", "", "Lognormal");
    form->generate();
    form->resultDoubleClicked(1, 0);
    form->exit();
    const MonteBlock& block = data.monteStore(ModelKind::OneDimensional);
    EXPECT_EQ(block.monteRowCount, 7);
    EXPECT_EQ(block.monteIterations, 11);
    EXPECT_EQ(block.InputTGData(1, 1).variant, kVelocity);
    EXPECT_EQ(block.InputTGData(2, 1).distribution, "Lognormal");
    EXPECT_EQ(block.InputTGData(2, 1).terms, "10");
    EXPECT_EQ(block.ResultTGData(1, 1).selection, "Variants");
    EXPECT_EQ(block.MonteSamples(2, 4, 1), data.MonteSamples(2, 4, 1));
    EXPECT_EQ(host.closes, 1);
}

}  // namespace
}  // namespace bm
