// The Monte Carlo sequence on the saturated screen: Generate opens the
// simulation screen, the user picks and generates, Exit hands the choice
// back; the selected fields lock, the panel says "Monte Carlo", and
// Calculate! runs once per sample at the selected point.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "input_form_test_models.h"
#include "monte_carlo_user.h"
#include "kernels/kernmc.h"
#include "model/number_text.h"
#include "montecarlo/monte_carlo_form_model.h"
#include "montecarlo/pass/monte_setup.h"
#include "testing/is_close.h"
#include "testing/one_dim_test_model.h"

namespace bm {
namespace {

using testkit::Screen;
using testkit::UserOnTheScreen;

const std::string kVelocity = "Ground Water Darcy Velocity (V)";
const std::string kInflow = "Contaminant Conc. at Inflow Boundary";

void useScreen(Screen& s, const UserOnTheScreen& user) {
    s.host.monteCarloAvailable = true;
    s.host.onMonteCarloScreen = [&] { user(s.data, s.ui); };
    s.form.menuMonteCarloClick(monteCarloItem::Generate);
}

TEST(InputFormMonteCarlo, AVaryingFieldLocksAndThePanelSaysMonteCarlo) {
    Screen s(testkit::oneDimScreenModel());
    useScreen(s, {{{kVelocity, "0.2", "0.4", "0.001", "20", "Uniform", 0}}});
    EXPECT_EQ(s.host.monteCarloScreens, 1);
    EXPECT_EQ(s.form.row(0).text.substr(0, 11), "Monte Carlo");
    EXPECT_EQ(s.form.row(0).text, "Monte Carlo" + std::string(500, ' ') + "|0.3: 1");
    EXPECT_TRUE(s.form.rowLocked(0));
    EXPECT_EQ(s.form.monteCarloCaption, "Monte Carlo");
    EXPECT_EQ(s.form.resultCaption, "Monte Carlo Computed at");
    EXPECT_EQ(s.form.hintFor(HintPlace::MonteCarloElastic),
              " Atleast one of the variables is using values from the Monte Carlo simulation.");
    // Fresh samples leave the results stale.
    EXPECT_TRUE(s.data.mcPointChanged[static_cast<std::size_t>(ModelKind::OneDimensional)]);

    s.ui.messages.clear();
    EXPECT_FALSE(s.form.rowClicked(0));
    ASSERT_EQ(s.ui.messages.size(), 1u);
    EXPECT_EQ(s.ui.messages[0].title, "Read Only");
    EXPECT_EQ(s.ui.messages[0].text, "Monte Carlo selected values for  Ground Water Darcy Velocity (V) are read "
                                     "only.\r\rTo unselect a monte carlo option please use Generate from the Monte "
                                     "Carlo menu.");
    EXPECT_FALSE(s.form.rowKeyPress(0));
    EXPECT_TRUE(s.form.rowClicked(1));  // the dispersion stays editable
}

TEST(InputFormMonteCarlo, AStatisticIsAPlainNumberAndTheRunStaysRegular) {
    Screen s(testkit::oneDimScreenModel());
    useScreen(s, {{{kVelocity, "0.2", "0.4", "0.001", "20", "Uniform", 4}}});  // the minimum
    double minimum = s.data.MonteSamples(1, 1, 1);
    for (int i = 2; i <= 21; ++i) minimum = std::min(minimum, s.data.MonteSamples(1, i, 1));
    EXPECT_EQ(s.form.row(0).text, formatNumber(generalText(static_cast<float>(minimum))));
    EXPECT_FALSE(s.form.rowLocked(0));
    EXPECT_EQ(s.form.monteCarloCaption, "");
    s.form.mnuFileClick(topMenu::Calculate);
    EXPECT_EQ(s.data.calculationMode.find("Monte Carlo"), std::string::npos);
}

TEST(InputFormMonteCarlo, CalculateRunsOncePerSampleAtTheSelectedPoint) {
    Screen s(testkit::oneDimScreenModel());
    useScreen(s, {{{kVelocity, "0.2", "0.4", "0.001", "20", "Uniform", 0}}});
    s.form.mnuFileClick(topMenu::Calculate);
    EXPECT_EQ(s.data.calculationMode, "Monte Carlo");
    ASSERT_EQ(s.data.mcResult1D.ub(), 20);  // terms 20: count 21, iterations 1..20
    const double lambda = std::log(2.0) / 10.0;
    for (int i = 1; i <= 20; ++i) {
        const double V = s.data.MonteSamples(1, i, 1) / 0.3;  // Darcy velocity over porosity
        EXPECT_TRUE(testkit::isClose(s.data.mcResult1D(i),
                                     testkit::semiInfiniteDirichletReference(V, 0.5, lambda, 10, 5), 1e-9, 1e-12))
            << i;
    }
    EXPECT_EQ(s.form.resultLabel, "Monte Carlo");
    EXPECT_EQ(s.ui.progress.size(), 20u);
    // Only the simulation's point was computed.
    EXPECT_FALSE(s.data.mcPointChanged[static_cast<std::size_t>(ModelKind::OneDimensional)]);
}

TEST(InputFormMonteCarlo, AVaryingInflowScalesEachResultAndWarnsItIsNotNormalised) {
    Screen s(testkit::oneDimScreenModel());
    useScreen(s, {{{kInflow, "0.5", "1.5", "0.01", "8", "Uniform", 0}}});
    EXPECT_TRUE(s.data.monteCarloModeOn);
    EXPECT_NE(s.data.terms(1).concentration.find("Monte Carlo"), std::string::npos);
    EXPECT_EQ(s.form.cellStyle(0, 1), "MonteCarloStyle1");
    EXPECT_FALSE(s.form.gridBeforeEdit(0, 1));
    EXPECT_EQ(s.ui.lastTitle(), "Read Only");
    s.ui.messages.clear();
    s.form.mnuFileClick(topMenu::Calculate);
    ASSERT_FALSE(s.ui.messages.empty());
    EXPECT_EQ(s.ui.messages[0].title, "Information");
    EXPECT_EQ(s.ui.messages[0].text,
              "Initial Concentration (Co) is selected for Monte Carlo simulation analysis\r\nin this case. Please pay "
              "attention that the computed concentration at the\r\nspecified point is not normalized.");
    const double unit = testkit::semiInfiniteDirichletReference(1.0, 0.5, std::log(2.0) / 10.0, 10, 5);
    ASSERT_EQ(s.data.mcResult1D.ub(), 8);
    for (int i = 1; i <= 8; ++i)
        EXPECT_TRUE(testkit::isClose(s.data.mcResult1D(i), unit * s.data.MonteSamples(1, i, 1), 1e-9, 1e-12)) << i;
}

TEST(InputFormMonteCarlo, StopEndsTheRunBetweenIterationsAndTheNextRunStartsClear) {
    Screen s(testkit::oneDimScreenModel());
    useScreen(s, {{{kVelocity, "0.2", "0.4", "0.001", "10", "Uniform", 0}}});
    s.ui.onProgress = [&](const testkit::ScriptedUserInterface::Progress& p) {
        if (p.done == 3) {
            s.ui.answers.push_back(MessageAnswer::Yes);
            s.form.stopClicked();
        }
    };
    s.form.mnuFileClick(topMenu::Calculate);
    EXPECT_EQ(s.ui.progress.size(), 3u);
    EXPECT_NE(s.data.mcResult1D(3), 0.0);
    EXPECT_EQ(s.data.mcResult1D(4), 0.0);
    EXPECT_FALSE(s.data.stopRequested);
    s.ui.onProgress = nullptr;
    s.ui.progress.clear();
    s.form.mnuFileClick(topMenu::Calculate);
    EXPECT_EQ(s.ui.progress.size(), 10u);
}

TEST(InputFormMonteCarlo, ReturningToNothingEndsTheVariation) {
    Screen s(testkit::oneDimScreenModel());
    useScreen(s, {{{kVelocity, "0.2", "0.4", "0.001", "10", "Uniform", 0}}});
    ASSERT_TRUE(s.form.rowLocked(0));
    // Back on the screen, the same column double-clicked again: "Nothing", the mean.
    s.host.onMonteCarloScreen = [&] {
        std::optional<MonteCarloSetup> setup = monteCarloSetup(s.data);
        ASSERT_TRUE(setup.has_value());
        EXPECT_FALSE(setup->tablesNew);
        EXPECT_EQ(setup->list.meanLB[0], "0.3");  // the constant inside the marker
        MonteCarloFormModel form(s.data, s.ui, std::move(*setup));
        form.load();
        EXPECT_EQ(form.inputGrid[0][0], kVelocity);
        form.resultDoubleClicked(1, 0);
        form.exit();
    };
    s.form.menuMonteCarloClick(monteCarloItem::Generate);
    EXPECT_FALSE(s.form.rowLocked(0));
    EXPECT_EQ(s.form.row(0).text, "0.3");
    EXPECT_EQ(s.form.monteCarloCaption, "");
    EXPECT_EQ(s.form.resultCaption, "Computed at");
}

TEST(InputFormMonteCarlo, ASourceRowVariesWhatItsCaptionSays) {
    // Two dimensions, a finite line: the size row is the width.
    Screen two(testkit::twoDimScreenModel("Infinite", "Finite / Line"));
    useScreen(two, {{{"Width of Contaminant Source (Ws)", "10", "30", "4", "5", "Uniform", 0}}});
    EXPECT_EQ(two.data.sourceWidth.substr(0, 11), "Monte Carlo");
    EXPECT_TRUE(two.form.rowLocked(2));
    EXPECT_EQ(two.data.sourceStdDev, "5");  // the other readings of the row stay as they were
    EXPECT_EQ(two.data.injectionRate, "2");

    // Three dimensions, a point source: the two source rows are the x centre and the injection rate.
    Screen three(testkit::threeDimScreenModel("Infinite", "Continuous / Point"));
    useScreen(three, {{{"Contaminant Injection Rate (Q)", "1", "5", "1", "5", "Uniform", 0}}});
    EXPECT_EQ(three.data.injectionRate.substr(0, 11), "Monte Carlo");
    EXPECT_EQ(three.data.sourceHeight, "4");
    EXPECT_EQ(three.form.monteCarloCaption, "Monte Carlo");
    three.form.mnuFileClick(topMenu::Calculate);
    EXPECT_EQ(three.data.calculationMode, "Monte Carlo");
    EXPECT_EQ(three.data.mcResult3D.ub(), 5);
}

}  // namespace
}  // namespace bm
