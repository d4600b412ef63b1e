// The unsaturated driver on the 101 x 101 grid (depths 0:100:1, times
// 0:100:1): a constant inlet, the same with two later terms superposed, a
// decaying source, and the no-decay form. "per_point" is the cost of one
// grid point; one Monte Carlo iteration (a single point) is timed as well.

#include <benchmark/benchmark.h>

#include "model/data_set.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/calculation_pass.h"
#include "shell/base/user_interface.h"
#include "unsaturated/unsat_parameters.h"
#include "unsaturated/unsat_solution.h"
#include "driver_support.h"

namespace {

using benchsupport::perPoint;
using benchsupport::SilentInterface;

bm::DataSet model(const char* contaminant, const char* halfLife, int terms) {
    bm::DataSet d;
    d.modelType = "Unsaturated One Dimensional";
    d.aquiferType = "Semi-Infinite";
    d.contaminantType = contaminant;
    d.calculationMode = "Regular";
    d.velocity = "0.3";
    d.dispersionX = "1.2";
    d.halfLife = halfLife;
    d.bulkDensity = "1.6";
    d.distributionCoefficient = "0.2";
    d.porosity = "0.4";
    d.saturation = "0.6";
    d.sourceDecayRate = "0.001";
    d.xRange = "0:100:1";
    d.timeRange = "0:100:1";
    d.mcAtX = "50";
    d.mcAtT = "100";
    benchsupport::setInflowTerms(d, terms);
    bm::parseCoordinates(d, 1);
    return d;
}

void runGrid(benchmark::State& state, bm::DataSet d) {
    SilentInterface ui;
    double points = 0;
    for (auto _ : state) {
        bm::UnsatParameters p;
        bm::fillUnsatParameters(d, p, false, 0);
        benchmark::DoNotOptimize(bm::solveUnsaturated(d, p, false, ui));
        points += static_cast<double>(d.numXTerms) * d.numTTerms;
    }
    state.counters["per_point"] = perPoint(points);
}

void BM_UnsatConstantInletGrid(benchmark::State& state) { runGrid(state, model("Dirichlet", "50", 1)); }
BENCHMARK(BM_UnsatConstantInletGrid)->Unit(benchmark::kMillisecond);

void BM_UnsatConstantInletGridThreeTerms(benchmark::State& state) { runGrid(state, model("Dirichlet", "50", 3)); }
BENCHMARK(BM_UnsatConstantInletGridThreeTerms)->Unit(benchmark::kMillisecond);

void BM_UnsatDecayingSourceGrid(benchmark::State& state) { runGrid(state, model("Dirichlet/Exp. Decay", "50", 1)); }
BENCHMARK(BM_UnsatDecayingSourceGrid)->Unit(benchmark::kMillisecond);

void BM_UnsatNoDecayGrid(benchmark::State& state) { runGrid(state, model("Dirichlet", "1e400", 1)); }
BENCHMARK(BM_UnsatNoDecayGrid)->Unit(benchmark::kMillisecond);

void BM_UnsatMonteCarloIteration(benchmark::State& state) {
    bm::DataSet d = model("Dirichlet", "50", 1);
    d.calculationMode = "Monte Carlo";
    d.velocity = bm::formFieldMarker("0.3", 1);
    d.MonteSamples.redim({1, 2, 1});
    d.MonteSamples(1, 1, 1) = 0.25;
    SilentInterface ui;
    for (auto _ : state) {
        bm::UnsatParameters p;
        bm::fillUnsatParameters(d, p, true, 1);
        benchmark::DoNotOptimize(bm::solveUnsaturated(d, p, true, ui));
    }
}
BENCHMARK(BM_UnsatMonteCarloIteration)->Unit(benchmark::kMicrosecond);

}  // namespace
