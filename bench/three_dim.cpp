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

bm::DataSet model(const char* aquifer, const char* contaminant, int nx, int ny, int nz, int nt) {
    bm::DataSet d;
    d.modelType = "Three Dimensional";
    d.aquiferType = aquifer;
    d.contaminantType = contaminant;
    d.calculationMode = "Regular";
    d.velocity = "0.3";
    d.porosity = "0.3";
    d.retardation = "1.5";
    d.dispersionX = "1.2";
    d.dispersionY = "0.12";
    d.dispersionZ = "0.012";
    d.halfLife = "200";
    d.netRecharge = "0";
    d.aquiferThickness = "20";
    d.sourceXc = "0";
    d.sourceYc = "0";
    d.sourceZc = "0";
    d.sourceWidth = "10";
    d.sourceHeight = "4";
    d.injectionRate = "0.5";
    d.xRange = spread(0, 100, nx);
    d.yRange = spread(-25, 25, ny);
    d.zRange = spread(-10, 10, nz);
    d.timeRange = spread(20, 100, nt);
    d.mcAtX = "50";
    d.mcAtY = "0";
    d.mcAtZ = "0";
    d.mcAtT = "100";
    d.superpositionIndex = 1;
    d.terms.redim(1);
    d.terms(1) = {"0", "1"};
    bm::parseCoordinates(d, 3);
    return d;
}

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
    runGrid(state, model("Infinite", "Finite", static_cast<int>(state.range(0)), static_cast<int>(state.range(1)),
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

void BM_PointGrid(benchmark::State& state) { runGrid(state, model("Infinite", "Continuous Point", 21, 21, 11, 5)); }
BENCHMARK(BM_PointGrid)->Unit(benchmark::kMillisecond);

void BM_FiniteAquiferGrid(benchmark::State& state) { runGrid(state, model("Finite", "Finite", 21, 21, 11, 5)); }
BENCHMARK(BM_FiniteAquiferGrid)->Unit(benchmark::kMillisecond);

// The library alone over the base grid's points, without the driver.
void BM_PatchLibraryOnly(benchmark::State& state) {
    bm::DataSet d = model("Infinite", "Finite", 21, 21, 11, 5);
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
