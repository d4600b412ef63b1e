// Monte Carlo runs over samples: 32 765 iterations (the most the tables
// allow) of a three-dimensional point source in an infinite aquifer, and
// 10 000 iterations of the one-dimensional Cauchy column (a finite aquifer,
// its eigenvalue series rebuilt for every sample); each with the velocity and
// the longitudinal dispersion varying. The samples are drawn once, outside
// the timing; the drawing of 32 765 samples of one variant (with its
// statistics) is timed on its own. "per_iteration" is the cost of one solver
// call at the simulation's point.

#include <benchmark/benchmark.h>

#include <string>

#include "driver_support.h"
#include "kernels/kernmc.h"
#include "model/data_set.h"
#include "montecarlo/monte_generate.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/calculation_pass.h"
#include "shell/screen/built_in_kinds.h"

namespace {

using benchsupport::perPoint;
using benchsupport::providePointsFile;
using benchsupport::SilentInterface;

void varyVelocityAndDispersion(bm::DataSet& d, int terms) {
    d.velocity = bm::formFieldMarker(d.velocity, 1);
    d.dispersionX = bm::formFieldMarker(d.dispersionX, 2);
    d.monteRowCount = d.monteResultRowCount = 2;
    d.InputTGData.redim({2, 1});
    d.ResultTGData.redim({2, 1});
    const std::string count = std::to_string(terms);
    d.InputTGData(1, 1) = {"Ground Water Darcy Velocity (V)", "0.3", "0.2", "0.4", "0.0009", count, "Normal", true};
    d.InputTGData(2, 1) = {"Longitudinal Dispersion Coefficient", "1.2", "0.6", "2", "0.04", count, "Lognormal", true};
    SilentInterface ui;
    bm::seedMonteCarlo(7);
    bm::generateSamples(d, 1, ui);
}

void run(benchmark::State& state, bm::DataSet& d, bm::ModelKind kind) {
    static const bool registered = [] {
        bm::registerBuiltInKinds();
        return true;
    }();
    (void)registered;
    bm::copyMonteCarloStore(d, kind, false);
    SilentInterface ui;
    int iterations = 0;
    for (auto _ : state) {
        const bm::CalculationOutcome outcome = bm::runCalculation(d, ui);
        if (!outcome.finished || d.calculationMode != "Monte Carlo") state.SkipWithError("the simulation did not run");
        iterations += d.monteStore(kind).monteIterations - 1;
        benchmark::DoNotOptimize(d.currentConcentration);
    }
    state.counters["per_iteration"] = perPoint(iterations);
}

void BM_ThreeDimPointSource32765Iterations(benchmark::State& state) {
    providePointsFile();
    // A point at (50, 0, 0) and time 100 of the three-dimensional driver's model.
    bm::DataSet d = benchsupport::threeDimModel("Infinite", "Continuous / Point", 11, 5, 3, 5);
    d.mcAtX = "50";
    d.mcAtY = "0";
    d.mcAtZ = "0";
    varyVelocityAndDispersion(d, 32765);
    run(state, d, bm::ModelKind::ThreeDimensional);
}
BENCHMARK(BM_ThreeDimPointSource32765Iterations)->Unit(benchmark::kMillisecond);

void BM_OneDimCauchyColumn10000Iterations(benchmark::State& state) {
    // The one-dimensional driver's Cauchy column, 100 long, at x 50 and time 60.
    bm::DataSet d = benchsupport::oneDimModel("Finite", "Cauchy", "0:100:1", "0:100:10", "50", 1);
    d.mcAtT = "60";
    varyVelocityAndDispersion(d, 10000);
    run(state, d, bm::ModelKind::OneDimensional);
}
BENCHMARK(BM_OneDimCauchyColumn10000Iterations)->Unit(benchmark::kMillisecond);

void BM_Generate32765SamplesOfOneVariant(benchmark::State& state) {
    bm::DataSet d;
    d.monteRowCount = d.monteResultRowCount = 1;
    d.InputTGData.redim({1, 1});
    d.ResultTGData.redim({1, 1});
    d.InputTGData(1, 1) = {"Ground Water Darcy Velocity (V)", "0.3", "0.2", "0.4", "0.0009", "32765", "Normal", true};
    SilentInterface ui;
    bm::seedMonteCarlo(7);
    for (auto _ : state) benchmark::DoNotOptimize(bm::generateSamples(d, 1, ui));
}
BENCHMARK(BM_Generate32765SamplesOfOneVariant)->Unit(benchmark::kMillisecond);

}  // namespace
