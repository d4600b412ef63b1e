// Three-dimensional driver on whole grids: the patch source of an infinite
// aquifer (cnrml_3IL, a Gauss-Legendre transit integral per point) on
// 21 x 21 x 11 points and 5 times, and the same domain with each count halved
// and doubled to see how the cost follows the grid; the point source and the
// finite aquifer on the base grid; the library alone for the driver's share.
// "per_point" is the cost of one grid point.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "kernels/gauss_legendre.h"
#include "model/data_set.h"
#include "montecarlo/pass/calculation_pass.h"
#include "saturated/three_dim_parameters.h"
#include "saturated/three_dim_solution.h"
#include "driver_support.h"

namespace {

using benchsupport::providePointsFile;
using benchsupport::perPoint;
using benchsupport::SilentInterface;
using benchsupport::spread;
using benchsupport::threeDimModel;

double pointsOf(const bm::DataSet& d) {
    return static_cast<double>(d.numXTerms) * d.numYTerms * d.numZTerms * d.numTTerms;
}

void runGrid(benchmark::State& state, bm::DataSet d) {
    providePointsFile();
    SilentInterface ui;
    double points = 0;
    for (auto _ : state) {
        bm::ThreeDimParameters p;
        bm::fillThreeDimParameters(d, p, false, 1);
        benchmark::DoNotOptimize(bm::solveThreeDimensional(d, p, false, 1, ui));
        points += pointsOf(d);
    }
    state.counters["points"] = pointsOf(d);
    state.counters["per_point"] = perPoint(points);
}

// Arguments: nx, ny, nz, nt.
void BM_PatchGrid(benchmark::State& state) {
    runGrid(state, threeDimModel("Infinite", "Finite", static_cast<int>(state.range(0)), static_cast<int>(state.range(1)),
                         static_cast<int>(state.range(2)), static_cast<int>(state.range(3))));
}
BENCHMARK(BM_PatchGrid)
    ->Args({21, 21, 11, 5})
    ->Args({11, 21, 11, 5})
    ->Args({41, 21, 11, 5})
    ->Args({21, 11, 11, 5})
    ->Args({21, 41, 11, 5})
    ->Args({21, 21, 6, 5})
    ->Args({21, 21, 21, 5})
    ->Args({21, 21, 11, 3})
    ->Args({21, 21, 11, 9})
    ->Unit(benchmark::kMillisecond);

void BM_PointGrid(benchmark::State& state) { runGrid(state, threeDimModel("Infinite", "Continuous Point", 21, 21, 11, 5)); }
BENCHMARK(BM_PointGrid)->Unit(benchmark::kMillisecond);

void BM_FiniteAquiferGrid(benchmark::State& state) { runGrid(state, threeDimModel("Finite", "Finite", 21, 21, 11, 5)); }
BENCHMARK(BM_FiniteAquiferGrid)->Unit(benchmark::kMillisecond);

// The library alone over the base grid's points, without the driver.
void BM_PatchLibraryOnly(benchmark::State& state) {
    bm::DataSet d = threeDimModel("Infinite", "Finite", 21, 21, 11, 5);
    std::vector<double> nodes, weights;
    bm::gaussLegendre(256, nodes, weights);
    bm::ThreeDimParameters p;
    bm::fillThreeDimParameters(d, p, false, 1);
    double points = 0;
    for (auto _ : state) {
        for (int j = 0; j < 5; ++j)
            for (int l = 0; l < 11; ++l)
                for (int i = 0; i < 21; ++i)
                    for (int k = 0; k < 21; ++k) {
                        double c = 0;
                        bm::cnrml_3IL(p, 20.0 + 20.0 * j, 5.0 * i, -25.0 + 2.5 * k, -10.0 + 2.0 * l, c, nodes.data(),
                                      weights.data());
                        benchmark::DoNotOptimize(c);
                    }
        points += 21.0 * 21 * 11 * 5;
    }
    state.counters["per_point"] = perPoint(points);
}
BENCHMARK(BM_PatchLibraryOnly)->Unit(benchmark::kMillisecond);

}  // namespace
