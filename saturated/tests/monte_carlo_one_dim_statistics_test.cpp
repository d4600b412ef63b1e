// Ten thousand iterations of a one-dimensional simulation with the velocity,
// the dispersion and the inflow concentration varying: every iteration and
// the statistics of the whole run agree with the closed form evaluated on the
// same samples outside the pass, and summarised here on their own.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

#include "kernels/kernmc.h"
#include "montecarlo/monte_generate.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/calculation_pass.h"
#include "montecarlo/tests/monte_table_fixture.h"
#include "testing/is_close.h"
#include "testing/one_dim_test_model.h"
#include "testing/scripted_user_interface.h"

namespace bm {
namespace {

struct Summary {
    double mean = 0, deviation = 0, minimum = 0, maximum = 0, median = 0;
};

Summary summarise(std::vector<double> v) {
    Summary s;
    const double n = static_cast<double>(v.size());
    s.mean = std::accumulate(v.begin(), v.end(), 0.0) / n;
    double squares = 0;
    for (double x : v) squares += (x - s.mean) * (x - s.mean);
    s.deviation = std::sqrt(squares / (n - 1));
    std::sort(v.begin(), v.end());
    s.minimum = v.front();
    s.maximum = v.back();
    s.median = v[v.size() / 2];
    return s;
}

TEST(OneDimSimulation, TenThousandIterationsAgreeWithTheClosedFormOnTheSameSamples) {
    constexpr int kTerms = 10000;
    DataSet d = testkit::oneDimModel("Semi-Infinite", "Dirichlet");
    d.porosity = "0.25";
    d.mcAtX = "6";
    d.mcAtT = "4";
    d.velocity = formFieldMarker("0.25", 1);
    d.dispersionX = formFieldMarker("0.5", 2);
    d.terms(1).concentration = boundaryCellMarkerFor(d.modelType, "10", 3);
    d.monteCarloModeOn = true;

    testkit::makeMonteTables(d, 3);
    const std::string terms = std::to_string(kTerms);
    d.InputTGData(1, 1) = testkit::variantRow("Ground Water Darcy Velocity (V)", "0.25", "0.15", "0.35", "0.0016", terms, "Normal");
    d.InputTGData(2, 1) = testkit::variantRow("Longitudinal Dispersion Coefficient (D)", "0.5", "0.2", "1", "0.01", terms, "Lognormal");
    d.InputTGData(3, 1) = testkit::variantRow("Contaminant Conc. at Inflow Boundary", "10", "5", "15", "4", terms, "Triangle");
    testkit::ScriptedUserInterface ui;
    seedMonteCarlo(20261124);
    ASSERT_EQ(generateSamples(d, 1, ui), GenerationOutcome::Generated);
    copyMonteCarloStore(d, ModelKind::OneDimensional, false);

    const CalculationOutcome run = runCalculation(d, ui);
    ASSERT_TRUE(run.finished);
    EXPECT_FALSE(run.stopped);
    EXPECT_EQ(d.calculationMode, "Monte Carlo");
    ASSERT_EQ(d.mcResult1D.ub(), kTerms);
    EXPECT_EQ(ui.progress.size(), static_cast<std::size_t>(kTerms));

    // The closed form on the same samples: seepage velocity = Darcy velocity / porosity;
    // the solution is linear in the inflow concentration.
    const double lambda = std::log(2.0) / 6.931471805599453;
    std::vector<double> independent, computed;
    for (int i = 1; i <= kTerms; ++i) {
        const double V = d.MonteSamples(1, i, 1) / 0.25;
        const double D = d.MonteSamples(2, i, 1);
        const double C0 = d.MonteSamples(3, i, 1);
        const double c = C0 * testkit::semiInfiniteDirichletReference(V, D, lambda, 6, 4);
        independent.push_back(c);
        computed.push_back(d.mcResult1D(i));
        ASSERT_TRUE(testkit::isClose(d.mcResult1D(i), c, 1e-9, 1e-13)) << "iteration " << i;
    }
    const Summary a = summarise(computed), b = summarise(independent);
    EXPECT_TRUE(testkit::isClose(a.mean, b.mean, 1e-10, 0));
    EXPECT_TRUE(testkit::isClose(a.deviation, b.deviation, 1e-9, 0));
    EXPECT_TRUE(testkit::isClose(a.minimum, b.minimum, 1e-9, 0));
    EXPECT_TRUE(testkit::isClose(a.maximum, b.maximum, 1e-9, 0));
    EXPECT_TRUE(testkit::isClose(a.median, b.median, 1e-9, 0));
    // The run really varied: the concentrations spread well beyond rounding.
    EXPECT_GT(b.deviation, 0.05 * b.mean);
    // The last sample of each variant is drawn but never run.
    EXPECT_EQ(d.MonteSamples.ub(1), kTerms + 1);
}

}  // namespace
}  // namespace bm
