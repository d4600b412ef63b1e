// The Monte Carlo sequence on the decay chain's screen: the simulation
// screen lists every chemical's yield factor, decay rate and concentration
// after the shared rows; the selections come back into each chemical's own
// cells of the tables (markers in the tables' style, statistics as numbers);
// and Calculate! then runs the simulation, every chemical per sample.

#include <gtest/gtest.h>

#include <algorithm>

#include "model/number_text.h"
#include "montecarlo/pass/monte_setup.h"
#include "saturated/tests/input_form_test_models.h"
#include "saturated/tests/monte_carlo_user.h"
#include "species/tests/chain_test_model.h"
#include "species/tests/mc_input_test_screen.h"
#include "testing/is_close.h"
#include "testing/one_dim_test_model.h"

namespace bm {
namespace {

using testkit::ChainScreen;

std::string chemicalMarker(const std::string& mean, int row) {
    return std::string(15, ' ') + "Monte Carlo" + std::string(50, ' ') + "|" + mean + ": " + std::to_string(row);
}

DataSet threeChemicals() {
    return testkit::chainModel(testkit::oneDimScreenModel(), {{0.1, 0.2, 0.3}, {1, 0.8, 0.5}, {1, 0.5, 0}});
}

TEST(MCInputFormMonteCarlo, TheSimulationScreenListsEveryChemicalsValues) {
    ChainScreen s(threeChemicals());
    s.form.holdDataSet();
    const std::optional<MonteCarloSetup> setup = monteCarloSetup(s.data);
    ASSERT_TRUE(setup.has_value());
    const std::vector<std::string>& names = setup->list.variantLB1;
    const std::vector<std::string> expectedTail = {
        "C1's Yield Factor", "C1's Decay Rate", "C1's Concentration", "C2's Yield Factor", "C2's Decay Rate",
        "C2's Concentration", "C3's Yield Factor", "C3's Decay Rate", "C3's Concentration", "--REMOVE--"};
    ASSERT_GE(names.size(), expectedTail.size());
    EXPECT_TRUE(std::equal(expectedTail.begin(), expectedTail.end(), names.end() - 10));
    EXPECT_EQ(std::count(names.begin(), names.end(), "Contaminant Half-Life"), 0);
    const std::vector<std::string>& means = setup->list.meanLB;
    EXPECT_EQ(means[names.size() - 6], "0.2");  // C2's decay rate
    EXPECT_EQ(means[names.size() - 5], "0.5");  // C2's concentration
}

TEST(MCInputFormMonteCarlo, SelectionsComeBackIntoEachChemicalsCells) {
    ChainScreen s(threeChemicals());
    s.host.monteCarloAvailable = true;
    const testkit::UserOnTheScreen user{{{"C1's Concentration", "0.5", "1.5", "0.01", "12", "Uniform", 0},
                                         {"C2's Decay Rate", "0.15", "0.25", "0.0001", "", "Uniform", 0},
                                         {"C3's Yield Factor", "0.4", "0.6", "0.001", "", "Uniform", 0},
                                         {"C2's Concentration", "0.4", "0.6", "0.001", "", "Uniform", 4}}};
    s.host.onMonteCarloScreen = [&] { user(s.data, s.ui); };
    s.form.menuMonteCarloClick(monteCarloItem::Generate);
    ASSERT_EQ(s.host.monteCarloScreens, 1);
    for (const auto& m : s.ui.messages) ADD_FAILURE() << m.title << ": " << m.text;

    const ChemicalTables& t = s.form.tables();
    EXPECT_EQ(t.sources.cells[0].concentration, chemicalMarker("1", 1));
    EXPECT_EQ(t.chemicals[1].rate, chemicalMarker("0.2", 2));
    EXPECT_EQ(t.chemicals[2].yield, chemicalMarker("0.5", 3));
    // A statistic is a plain number: the smallest sample lies in the range typed.
    const std::string& minimum = t.sources.cells[1].concentration;
    ASSERT_TRUE(isNumeric(minimum)) << minimum;
    EXPECT_GE(numericValue(minimum), 0.4);
    EXPECT_LE(numericValue(minimum), 0.6);
    // What was not selected stays as typed.
    EXPECT_EQ(t.chemicals[0].rate, "0.1");
    EXPECT_EQ(t.chemicals[2].rate, "0.3");
    EXPECT_EQ(t.sources.cells[2].concentration, "0");

    EXPECT_EQ(s.form.chemicalStyle(1, 1), "MonteCarloStyle4");
    EXPECT_EQ(s.form.chemicalStyle(2, 2), "MonteCarloStyle4");
    EXPECT_EQ(s.form.chemicalStyle(0, 1), "");
    EXPECT_EQ(s.form.cellStyle(0, 1), "MonteCarloStyle1");
    EXPECT_EQ(s.form.monteCarloCaption, "Monte Carlo");
    EXPECT_EQ(s.form.resultCaption, "Monte Carlo Computed at");
    EXPECT_TRUE(s.form.row(6).enabled);  // the point rows

    // A marker cell is read only.
    EXPECT_FALSE(s.form.chemicalBeforeEdit(1, 1));
    EXPECT_EQ(s.ui.lastTitle(), "Read Only");
    s.ui.messages.clear();

    // The run is a simulation over the samples; the first chemical, which no
    // other feeds, is its sampled source times its unit solution.
    s.form.calculate();
    for (const auto& m : s.ui.messages)
        if (m.title != "Information") ADD_FAILURE() << m.title << ": " << m.text;
    EXPECT_EQ(s.data.calculationMode, "Monte Carlo");
    const Array<double, 2>& runs = s.data.chemMcResult1D;
    ASSERT_EQ(runs.ub(0), 3);
    ASSERT_EQ(runs.ub(1), 12);  // the 12 runs typed (13 samples, the last never used)
    const double unit = testkit::semiInfiniteDirichletReference(1.0, 0.5, 0.1, 10, 5);
    for (int m = 1; m <= 12; ++m) EXPECT_CLOSE(runs(1, m), s.data.MonteSamples(1, m, 1) * unit, 1e-9, 1e-14) << m;
    ASSERT_EQ(s.form.pointsTable().rows.size(), 3u);
    EXPECT_EQ(s.form.pointsTable().rows[0].second, "Monte Carlo");
}

}  // namespace
}  // namespace bm
