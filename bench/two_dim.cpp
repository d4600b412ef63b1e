// Two-dimensional driver on whole grids of an infinite aquifer: the strip
// source (cnrml_IL, a 256-point transit integral per point) on 101 x 51 points
// and 11 times, and the same domain with each count halved and doubled to see
// how the cost follows the grid. The other sources on the base grid for
// comparison. "per_point" is the cost of one grid point.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "kernels/gauss_legendre.h"
#include "model/data_set.h"
#include "montecarlo/pass/calculation_pass.h"
#include "saturated/two_dim_parameters.h"
#include "saturated/two_dim_solution.h"
#include "driver_support.h"

namespace {

using benchsupport::providePointsFile;
using benchsupport::perPoint;
using benchsupport::SilentInterface;
using benchsupport::spread;

bm::DataSet model(const char* aquifer, const char* contaminant, int nx, int ny, int nt) {
    return benchsupport::twoDimModel(aquifer, contaminant, nx, ny, nt);
}

void runGrid(benchmark::State& state, bm::DataSet d) {
    providePointsFile();
    SilentInterface ui;
    double points = 0;
    for (auto _ : state) {
        bm::TwoDimParameters p;
        bm::fillTwoDimParameters(d, p, false, 1);
        benchmark::DoNotOptimize(bm::solveTwoDimensional(d, p, false, 1, ui));
        points += static_cast<double>(d.numXTerms) * d.numYTerms * d.numTTerms;
    }
    state.counters["points"] = static_cast<double>(d.numXTerms) * d.numYTerms * d.numTTerms;
    state.counters["per_point"] = perPoint(points);
}

// Arguments: nx, ny, nt.
void BM_StripGrid(benchmark::State& state) {
    runGrid(state, model("Infinite", "Finite / Line", static_cast<int>(state.range(0)),
                         static_cast<int>(state.range(1)), static_cast<int>(state.range(2))));
}
BENCHMARK(BM_StripGrid)
    ->Args({101, 51, 11})
    ->Args({51, 51, 11})
    ->Args({201, 51, 11})
    ->Args({101, 26, 11})
    ->Args({101, 101, 11})
    ->Args({101, 51, 6})
    ->Args({101, 51, 21})
    ->Unit(benchmark::kMillisecond);

void BM_GaussianGrid(benchmark::State& state) { runGrid(state, model("Infinite", "Gaussian", 101, 51, 11)); }
BENCHMARK(BM_GaussianGrid)->Unit(benchmark::kMillisecond);

void BM_PointGrid(benchmark::State& state) { runGrid(state, model("Infinite", "Continuous Point", 101, 51, 11)); }
BENCHMARK(BM_PointGrid)->Unit(benchmark::kMillisecond);

void BM_FiniteWidthGrid(benchmark::State& state) { runGrid(state, model("Finite", "Finite Line", 101, 51, 11)); }
BENCHMARK(BM_FiniteWidthGrid)->Unit(benchmark::kMillisecond);

// The library alone over the base grid's points, without the driver: the
// difference to BM_StripGrid/101/51/11 is what the driver adds per point.
void BM_StripLibraryOnly(benchmark::State& state) {
    bm::DataSet d = model("Infinite", "Finite Line", 101, 51, 11);
    std::vector<double> nodes, weights;
    bm::gaussLegendre(256, nodes, weights);
    bm::TwoDimParameters p;
    bm::fillTwoDimParameters(d, p, false, 1);
    double points = 0;
    for (auto _ : state) {
        for (int j = 0; j < 11; ++j)
            for (int i = 0; i < 101; ++i)
                for (int k = 0; k < 51; ++k) {
                    double c = 0;
                    bm::cnrml_IL(p, 10.0 * j, 1.0 * i, -25.0 + k, c, nodes.data(), weights.data());
                    benchmark::DoNotOptimize(c);
                }
        points += 101.0 * 51 * 11;
    }
    state.counters["per_point"] = perPoint(points);
}
BENCHMARK(BM_StripLibraryOnly)->Unit(benchmark::kMillisecond);

}  // namespace
