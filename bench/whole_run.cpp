// Whole runs as a user starts them: a model's data file (bench/grids, the
// sample models with the values below) read and calculated by the batch
// calculator's own path (runBatch, as brenmoor-calc calls it) and its output
// file written to /dev/null, on eight grids: the
// 2-D infinite strip, finite-width strip, Gaussian and point sources on
// x 10:1010:10, y 0:1000:20, t 0:1100:100 (101 x 51 x 12 points), the 3-D
// infinite and finite patch and point source on x 10:1010:50, y 0:1000:50,
// z 0:100:10, t 0:1000:200 (21 x 21 x 11 x 6), and the 1-D finite Cauchy
// column on x 0:100:1, t 0:100:1 (101 x 101). Time ranges start at 0, as
// the models' validation asks.
// Seepage velocity 1 (Darcy velocity 0.25, porosity 0.25), dispersions 10, 2
// and 0.2, no decay, the source at y = 500 (z = 50), 200 wide, 20 high,
// standard deviation 50; the column: Darcy velocity 0.125, porosity 0.25,
// dispersion 1, decay rate 0.01. "us_per_point" is the run less the same
// model on a start-up grid (the first value of each range and both ends of
// x: two points), per grid point. Each runs on one thread (threads:1) and on
// all cores (threads:0).

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>

#include "apps/brenmoor-calc/batch_calculator.h"
#include "driver_support.h"
#include "files/data_file.h"
#include "model/data_set.h"
#include "montecarlo/pass/ordered_batches.h"
#include "shell/screen/built_in_kinds.h"

namespace {

// The grid's data file and its start-up file (the first value of each range,
// both ends of x: two points), in bench/grids.
std::string gridFile(const std::string& name) { return std::string(BRENMOOR_GRID_DIR) + "/" + name; }

// The output file goes to standard output, here a stream into /dev/null (a
// device is no target for the calculator).
int runOnce(const std::string& path, bm::StreamUserInterface& ui) {
    static std::FILE* const nowhere = std::fopen("/dev/null", "wb");
    bm::BatchOptions options;
    options.dataFile = path;
    options.outputPath = std::string(1, '-');  // (an assignment from "-" trips a false -Wrestrict here)
    bm::BatchStreams streams;
    streams.standardOutput = nowhere;
    return bm::runBatch(options, ui, streams);
}

double secondsOf(const std::string& path, bm::StreamUserInterface& ui) {
    const auto start = std::chrono::steady_clock::now();
    runOnce(path, ui);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The grid's point count, from the data file the run saves.
double pointsOf(const std::string& path, bm::StreamUserInterface& ui) {
    bm::BatchOptions options;
    options.dataFile = path;
    options.savePath = (std::filesystem::temp_directory_path() / "brenmoor_bench_points.saved").string();
    bm::runBatch(options, ui, bm::BatchStreams{});
    bm::DataSet d;
    bm::readDataFile(d, options.savePath);
    std::filesystem::remove(options.savePath);
    double points = static_cast<double>(d.numXTerms) * d.numTTerms;
    if (d.modelType != "One Dimensional") points *= d.numYTerms;
    if (d.modelType == "Three Dimensional") points *= d.numZTerms;
    return points;
}

// The benchmark's argument is the calculation threads: 1, or 0 for all cores.
void wholeRun(benchmark::State& state, const std::string& name) {
    const bm::ScopedCalculationThreads threads(static_cast<int>(state.range(0)));
    bm::registerBuiltInKinds();  // as brenmoor-calc's main does
    benchsupport::providePointsFile();
    benchsupport::SilentInterface ui;
    bm::setUserInterface(&ui);
    const std::string grid = gridFile(name), single = gridFile("start_up_" + name);
    if (runOnce(grid, ui) != bm::kExitDone || runOnce(single, ui) != bm::kExitDone) {
        state.SkipWithError("the run did not finish");
        return;
    }
    double startUp = 1e9;
    for (int i = 0; i < 3; ++i) startUp = std::min(startUp, secondsOf(single, ui));
    const double points = pointsOf(grid, ui), startUpPoints = pointsOf(single, ui);
    double best = 1e9;
    for (auto _ : state) best = std::min(best, secondsOf(grid, ui));
    state.counters["points"] = points;
    state.counters["start_up_ms"] = startUp * 1e3;
    state.counters["us_per_point"] = (best - startUp) / (points - startUpPoints) * 1e6;
    state.counters["threads"] = bm::calculationThreads();
}

void BM_WholeRun2dInfiniteStrip(benchmark::State& s) { wholeRun(s, "strip.two"); }
void BM_WholeRun2dFiniteStrip(benchmark::State& s) { wholeRun(s, "finite_strip.two"); }
void BM_WholeRun2dGaussian(benchmark::State& s) { wholeRun(s, "gaussian.two"); }
void BM_WholeRun2dPoint(benchmark::State& s) { wholeRun(s, "point.two"); }
void BM_WholeRun3dInfinitePatch(benchmark::State& s) { wholeRun(s, "patch.tri"); }
void BM_WholeRun3dFinitePatch(benchmark::State& s) { wholeRun(s, "finite_patch.tri"); }
void BM_WholeRun3dPoint(benchmark::State& s) { wholeRun(s, "point.tri"); }
void BM_WholeRun1dFiniteCauchy(benchmark::State& s) { wholeRun(s, "column.one"); }

BENCHMARK(BM_WholeRun2dInfiniteStrip)->ArgName("threads")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_WholeRun2dFiniteStrip)->ArgName("threads")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_WholeRun2dGaussian)->ArgName("threads")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_WholeRun2dPoint)->ArgName("threads")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_WholeRun3dInfinitePatch)->ArgName("threads")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_WholeRun3dFinitePatch)->ArgName("threads")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_WholeRun3dPoint)->ArgName("threads")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_WholeRun1dFiniteCauchy)->ArgName("threads")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
