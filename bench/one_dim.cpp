// One-dimensional driver on whole grids: a finite aquifer with a Cauchy inlet
// (500-term eigenvalue series per point) and semi-infinite aquifers (two or
// three exerfc per point). The "per_point" counter is the cost of one grid point.

#include <benchmark/benchmark.h>

#include <limits>

#include "kernels/kern1d.h"
#include "saturated/one_dim_kernels.h"

#include "model/data_set.h"
#include "montecarlo/pass/calculation_pass.h"
#include "montecarlo/pass/ordered_batches.h"
#include "saturated/one_dim_parameters.h"
#include "saturated/one_dim_solution.h"
#include "shell/base/user_interface.h"
#include "driver_support.h"

namespace {

using benchsupport::perPoint;
using benchsupport::SilentInterface;
using benchsupport::oneDimModel;

void runGrid(benchmark::State& state, bm::DataSet d) {
    SilentInterface ui;
    double points = 0;
    for (auto _ : state) {
        bm::OneDimParameters p;
        bm::fillOneDimParameters(d, p, false, 0);
        benchmark::DoNotOptimize(bm::solveOneDimensional(d, p, false, ui));
        points += static_cast<double>(d.numXTerms) * d.numTTerms;
    }
    state.counters["per_point"] = perPoint(points);
}

// The finite Cauchy grid of 101 x 101 points with lambda exactly 0: the
// no-decay series tests its cosine factor alone, which never falls to 1e-20,
// so every point with t > 0 spends all 500 eigenvalue terms. (A half-life
// typed as text cannot make lambda 0, so the record is set directly.)
void BM_FiniteCauchyGrid101x101Full500Terms(benchmark::State& state) {
    bm::DataSet d = oneDimModel("Finite", "Cauchy", "0:100:1", "0:100:1", "50", 1);
    SilentInterface ui;
    bm::OneDimParameters p;
    bm::fillOneDimParameters(d, p, false, 0);
    p.effectiveHalfLife = std::numeric_limits<double>::infinity();
    {
        // the series really runs out at a sample of points
        bm::List<double> roots(bm::kRootCount);
        const double L = p.xMax - p.xMin, V = p.effectiveVelocity, D = p.effectiveDispersion;
        bm::root3(V * 0.25 * L / D, D / (L * V), roots(1));
        for (double x : {0.0, 37.0, 100.0})
            for (double t : {1.0, 50.0, 100.0}) {
                double c = 0;
                if (bm::finiteCauchyRatio(p, L, x, t, roots, c)) {
                    state.SkipWithError("the series converged before its 500 terms");
                    return;
                }
            }
    }
    double points = 0;
    for (auto _ : state) {
        bm::OneDimParameters run = p;
        benchmark::DoNotOptimize(bm::solveOneDimensional(d, run, false, ui));
        points += static_cast<double>(d.numXTerms) * d.numTTerms;
    }
    if (d.numXTerms != 101 || d.numTTerms != 101) state.SkipWithError("the grid is not 101 x 101");
    state.counters["per_point"] = perPoint(points);
}
BENCHMARK(BM_FiniteCauchyGrid101x101Full500Terms)->Unit(benchmark::kMillisecond);

void BM_FiniteCauchyGrid(benchmark::State& state) {
    runGrid(state, oneDimModel("Finite", "Cauchy", "0:100:1", "0:100:10", "50", 1));
}
BENCHMARK(BM_FiniteCauchyGrid)->Unit(benchmark::kMillisecond);

// A half-life of 1e30 keeps lambda above 0: the decay branch's test of the
// whole term lets the series stop early, unlike lambda exactly 0 above.
void BM_FiniteCauchyGridHalfLife1e30(benchmark::State& state) {
    runGrid(state, oneDimModel("Finite", "Cauchy", "0:100:1", "0:100:10", "1e30", 1));
}
BENCHMARK(BM_FiniteCauchyGridHalfLife1e30)->Unit(benchmark::kMillisecond);

// A laboratory column: V L / D = 500 (V = 0.667, D = 0.133, L = 100), decay
// with a half-life of 50, 101 x 101 points up to twice the breakthrough time.
// Ahead of the front the series cancels by up to exp(V L / 2D) = exp(250):
// there the kernel inverts the Laplace transform instead (45% of the points
// here), a few tens of complex evaluations per point.
void BM_FiniteCauchyGridPeclet500(benchmark::State& state) {
    runGrid(state, oneDimModel("Finite", "Cauchy", "0:100:1", "0:300:3", "50", 1, "0.2"));
}
BENCHMARK(BM_FiniteCauchyGridPeclet500)->Unit(benchmark::kMillisecond);

// The same column without decay (the series then spends its 500 terms everywhere).
void BM_FiniteCauchyGridPeclet500NoDecay(benchmark::State& state) {
    bm::DataSet d = oneDimModel("Finite", "Cauchy", "0:100:1", "0:300:3", "50", 1, "0.2");
    SilentInterface ui;
    bm::OneDimParameters p;
    bm::fillOneDimParameters(d, p, false, 0);
    p.effectiveHalfLife = std::numeric_limits<double>::infinity();
    double points = 0;
    for (auto _ : state) {
        bm::OneDimParameters run = p;
        benchmark::DoNotOptimize(bm::solveOneDimensional(d, run, false, ui));
        points += static_cast<double>(d.numXTerms) * d.numTTerms;
    }
    state.counters["per_point"] = perPoint(points);
}
BENCHMARK(BM_FiniteCauchyGridPeclet500NoDecay)->Unit(benchmark::kMillisecond);

// The leachate column of bench/grids/column.one, the calculation alone (no
// file text): V = 0.5, D = 1, lambda = 0.01, L = 100, 101 x 101 points, on
// one thread and on all. About 40 terms a point behind the front; ahead of
// it (more than half the points) the inversion, decided a few terms into
// the series.
void BM_FiniteCauchyColumn101x101(benchmark::State& state) {
    const bm::ScopedCalculationThreads threads(static_cast<int>(state.range(0)));
    bm::DataSet d = oneDimModel("Finite", "Cauchy", "0:100:1", "0:100:1", "69.3147180559945", 1, "1");
    d.velocity = "0.125";
    d.porosity = "0.25";
    d.retardation = "1";
    runGrid(state, d);
    state.counters["threads"] = bm::calculationThreads();
}
BENCHMARK(BM_FiniteCauchyColumn101x101)->ArgName("threads")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);

void BM_FiniteDirichletGrid(benchmark::State& state) {
    runGrid(state, oneDimModel("Finite", "Dirichlet", "0:100:1", "0:100:10", "50", 1));
}
BENCHMARK(BM_FiniteDirichletGrid)->Unit(benchmark::kMillisecond);

void BM_FiniteCauchyGridThreeTerms(benchmark::State& state) {
    runGrid(state, oneDimModel("Finite", "Cauchy", "0:100:1", "0:100:10", "50", 3));
}
BENCHMARK(BM_FiniteCauchyGridThreeTerms)->Unit(benchmark::kMillisecond);

void BM_SemiInfiniteCauchyGrid(benchmark::State& state) {
    runGrid(state, oneDimModel("Semi-Infinite", "Cauchy", "0:100:1", "0:100:10", "50", 1));
}
BENCHMARK(BM_SemiInfiniteCauchyGrid)->Unit(benchmark::kMillisecond);

// Two later inflow terms: the terms' times and concentrations are texts, read
// once per run rather than at every point.
void BM_SemiInfiniteDirichletGridThreeTerms(benchmark::State& state) {
    runGrid(state, oneDimModel("Semi-Infinite", "Dirichlet", "0:100:1", "0:100:10", "50", 3));
}
BENCHMARK(BM_SemiInfiniteDirichletGridThreeTerms)->Unit(benchmark::kMillisecond);

void BM_SemiInfiniteDirichletGrid(benchmark::State& state) {
    runGrid(state, oneDimModel("Semi-Infinite", "Dirichlet", "0:100:1", "0:100:10", "50", 1));
}
BENCHMARK(BM_SemiInfiniteDirichletGrid)->Unit(benchmark::kMillisecond);

}  // namespace
