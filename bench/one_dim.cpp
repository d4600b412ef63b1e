// One-dimensional driver on whole grids: a finite aquifer with a Cauchy inlet
// (500-term eigenvalue series per point) and semi-infinite aquifers (two or
// three exerfc per point). The "per_point" counter is the cost of one grid point.

#include <benchmark/benchmark.h>

#include "model/data_set.h"
#include "saturated/calculation_run.h"
#include "saturated/one_dim_parameters.h"
#include "saturated/one_dim_solution.h"
#include "shell/user_interface.h"

namespace {

// Progress goes nowhere; a message would take its default answer.
class SilentInterface : public bm::StreamUserInterface {
public:
    SilentInterface() : bm::StreamUserInterface(stderr) {}
    bm::MessageAnswer showMessage(const bm::MessageRequest& request) override { return bm::defaultAnswer(request); }
};

bm::DataSet model(const char* aquifer, const char* contaminant, const char* xRange, const char* timeRange,
                  const char* halfLife, int terms) {
    bm::DataSet d;
    d.modelType = "One Dimensional";
    d.aquiferType = aquifer;
    d.contaminantType = contaminant;
    d.calculationMode = "Regular";
    d.velocity = "0.3";
    d.porosity = "0.3";
    d.retardation = "1.5";
    d.dispersionX = "1.2";
    d.halfLife = halfLife;
    d.xRange = xRange;
    d.timeRange = timeRange;
    d.mcAtX = "50";
    d.mcAtT = "100";
    d.superpositionIndex = static_cast<std::int16_t>(terms);
    d.terms.redim(terms);
    for (int k = 1; k <= terms; ++k) {
        d.terms(k).time = std::to_string(10 * (k - 1));
        d.terms(k).concentration = std::to_string(k);
    }
    bm::parseCoordinates(d);
    return d;
}

void runGrid(benchmark::State& state, bm::DataSet d) {
    SilentInterface ui;
    double points = 0;
    for (auto _ : state) {
        bm::OneDimParameters p;
        bm::fillOneDimParameters(d, p, false, 0);
        benchmark::DoNotOptimize(bm::solveOneDimensional(d, p, false, ui));
        points += static_cast<double>(d.numXTerms) * d.numTTerms;
    }
    state.counters["per_point"] = benchmark::Counter(points, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void BM_FiniteCauchyGrid(benchmark::State& state) {
    runGrid(state, model("Finite", "Cauchy", "0:100:1", "0:100:10", "50", 1));
}
BENCHMARK(BM_FiniteCauchyGrid)->Unit(benchmark::kMillisecond);

void BM_FiniteCauchyGridNoDecay(benchmark::State& state) {
    runGrid(state, model("Finite", "Cauchy", "0:100:1", "0:100:10", "1e30", 1));
}
BENCHMARK(BM_FiniteCauchyGridNoDecay)->Unit(benchmark::kMillisecond);

void BM_FiniteDirichletGrid(benchmark::State& state) {
    runGrid(state, model("Finite", "Dirichlet", "0:100:1", "0:100:10", "50", 1));
}
BENCHMARK(BM_FiniteDirichletGrid)->Unit(benchmark::kMillisecond);

void BM_FiniteCauchyGridThreeTerms(benchmark::State& state) {
    runGrid(state, model("Finite", "Cauchy", "0:100:1", "0:100:10", "50", 3));
}
BENCHMARK(BM_FiniteCauchyGridThreeTerms)->Unit(benchmark::kMillisecond);

void BM_SemiInfiniteCauchyGrid(benchmark::State& state) {
    runGrid(state, model("Semi-Infinite", "Cauchy", "0:100:1", "0:100:10", "50", 1));
}
BENCHMARK(BM_SemiInfiniteCauchyGrid)->Unit(benchmark::kMillisecond);

void BM_SemiInfiniteDirichletGrid(benchmark::State& state) {
    runGrid(state, model("Semi-Infinite", "Dirichlet", "0:100:1", "0:100:10", "50", 1));
}
BENCHMARK(BM_SemiInfiniteDirichletGrid)->Unit(benchmark::kMillisecond);

}  // namespace
