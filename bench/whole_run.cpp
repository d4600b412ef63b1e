// Whole runs as a user starts them: a model written as a data file, read and
// calculated by the batch calculator's own path (runBatch, as brenmoor-calc
// calls it) and its output file written to /dev/null, on eight grids: the
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
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "apps/brenmoor-calc/batch_calculator.h"
#include "driver_support.h"
#include "files/data_file.h"
#include "model/data_set.h"
#include "montecarlo/pass/ordered_batches.h"
#include "shell/screen/built_in_kinds.h"

namespace {

struct Grid {
    const char* sample;  // the sample model the file starts from
    const char* aquifer;
    const char* contaminant;
    const char* x;
    const char* y;  // "" for the column
    const char* z;  // "" below three dimensions
    const char* t;
};

// A sample's line starting with `label` replaced by label + value, within the
// "Coor Data" block or outside it.
void setLine(std::vector<std::string>& lines, const std::string& label, const std::string& value, bool coordinate) {
    bool inCoordinates = false;
    for (std::string& line : lines) {
        if (line.rfind("Coor Data", 0) == 0) inCoordinates = true;
        if (line.rfind("Properties:", 0) == 0) inCoordinates = false;
        if (inCoordinates == coordinate && line.rfind(label, 0) == 0) {
            line = label + value;
            return;
        }
    }
}

std::string firstOf(const std::string& range) { return range.substr(0, range.find(':')); }
std::string lastOf(const std::string& range) {
    const auto from = range.find(':') + 1;
    return range.substr(from, range.find(':', from) - from);
}

// The data file text of a grid (or of its first point alone).
std::string modelText(const Grid& g, bool onePoint) {
    std::ifstream in(std::string(BRENMOOR_SAMPLE_DIR) + "/" + g.sample, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
    }
    // The start-up grid: the first of each range, but both ends of x (a
    // finite column needs its length).
    auto range = [&](const char* r) {
        const std::string first = firstOf(r);
        return onePoint ? first + ":" + first + ":1:" + first : std::string(r) + ":" + first;
    };
    const std::string xFirst = firstOf(g.x), xLast = lastOf(g.x);
    const std::string xEnds =
        xFirst + ":" + xLast + ":" + bm::generalText(std::stod(xLast) - std::stod(xFirst)) + ":" + xFirst;
    setLine(lines, "Aquifer: ", g.aquifer, false);
    setLine(lines, "Contaminant: ", g.contaminant, false);
    setLine(lines, "X: ", onePoint ? xEnds : range(g.x), true);
    setLine(lines, "Time: ", range(g.t), true);
    setLine(lines, "Monte Carlo simulation at x: ", firstOf(g.x), true);
    setLine(lines, "Monte Carlo simulation at t: ", firstOf(g.t), true);
    const bool column = *g.y == '\0';
    if (column) {
        setLine(lines, "Velocity: ", "0.125", false);
        setLine(lines, "HalfLife: ", "69.3147180559945", false);  // decay rate 0.01
        setLine(lines, "Dispersion_X: ", "1", false);
        setLine(lines, "Retardation Coefficient (R): ", "1", false);
        // One boundary term.
        setLine(lines, "Superposition Index: ", "1", false);
        const auto second = std::find(lines.begin(), lines.end(), "T 2: 365");
        if (second != lines.end()) lines.erase(second, second + 3);
    } else {
        setLine(lines, "Y: ", range(g.y), true);
        setLine(lines, "Yc: ", "500", true);
        setLine(lines, "Monte Carlo simulation at y: ", firstOf(g.y), true);
        setLine(lines, "Velocity: ", "0.25", false);
        setLine(lines, "HalfLife: ", "1E+300", false);  // no decay
        setLine(lines, "Dispersion_X: ", "10", false);
        setLine(lines, "Dispersion_y: ", "2", false);
        setLine(lines, "Width: ", "200", false);
        setLine(lines, "Standard Deviation: ", "50", false);
        setLine(lines, "Injection Rate: ", "1", false);
        setLine(lines, "Retardation Coefficient (R): ", "1", false);
    }
    if (*g.z != '\0') {
        setLine(lines, "Z: ", range(g.z), true);
        setLine(lines, "Zc: ", "50", true);
        setLine(lines, "Monte Carlo simulation at z: ", firstOf(g.z), true);
        setLine(lines, "Dispersion_z: ", "0.2", false);
        setLine(lines, "Height: ", "20", false);
    }
    setLine(lines, "Aquifer Porosity: ", "0.25", false);
    std::string text;
    for (const std::string& line : lines) text += line + "\r\n";
    return text;
}

std::string writeModel(const Grid& g, bool onePoint, const std::string& name) {
    const std::string path = (std::filesystem::temp_directory_path() / ("brenmoor_bench_" + name)).string();
    std::ofstream(path, std::ios::binary) << modelText(g, onePoint);
    return path;
}

// The output file goes to standard output, here a stream into /dev/null (a
// device is no target for the calculator).
int runOnce(const std::string& path, bm::StreamUserInterface& ui) {
    static std::FILE* const nowhere = std::fopen("/dev/null", "wb");
    bm::BatchOptions options;
    options.dataFile = path;
    options.outputPath = "-";
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
    options.savePath = path + ".saved";
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
void wholeRun(benchmark::State& state, const Grid& g, const std::string& name) {
    const bm::ScopedCalculationThreads threads(static_cast<int>(state.range(0)));
    bm::registerBuiltInKinds();  // as brenmoor-calc's main does
    benchsupport::providePointsFile();
    benchsupport::SilentInterface ui;
    bm::setUserInterface(&ui);
    const std::string grid = writeModel(g, false, name), single = writeModel(g, true, "start_up_" + name);
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

const Grid kStrip{"sample1.two", "Infinite", "Finite / Line", "10:1010:10", "0:1000:20", "", "0:1100:100"};
const Grid kFiniteStrip{"sample1.two", "Finite", "Finite / Line", "10:1010:10", "0:1000:20", "", "0:1100:100"};
const Grid kGaussian{"sample1.two", "Infinite", "Gaussian", "10:1010:10", "0:1000:20", "", "0:1100:100"};
const Grid kPoint2d{"sample1.two", "Infinite", "Continuous / Point", "10:1010:10", "0:1000:20", "", "0:1100:100"};
const Grid kPatch{"sample1.tri", "Infinite", "Finite / Patch", "10:1010:50", "0:1000:50", "0:100:10", "0:1000:200"};
const Grid kFinitePatch{"sample1.tri", "Finite", "Finite / Patch", "10:1010:50", "0:1000:50", "0:100:10", "0:1000:200"};
const Grid kPoint3d{"sample1.tri", "Infinite", "Continuous / Point", "10:1010:50", "0:1000:50", "0:100:10", "0:1000:200"};
const Grid kColumn{"sample1.one", "Finite", "Cauchy", "0:100:1", "", "", "0:100:1"};

void BM_WholeRun2dInfiniteStrip(benchmark::State& s) { wholeRun(s, kStrip, "strip.two"); }
void BM_WholeRun2dFiniteStrip(benchmark::State& s) { wholeRun(s, kFiniteStrip, "finite_strip.two"); }
void BM_WholeRun2dGaussian(benchmark::State& s) { wholeRun(s, kGaussian, "gaussian.two"); }
void BM_WholeRun2dPoint(benchmark::State& s) { wholeRun(s, kPoint2d, "point.two"); }
void BM_WholeRun3dInfinitePatch(benchmark::State& s) { wholeRun(s, kPatch, "patch.tri"); }
void BM_WholeRun3dFinitePatch(benchmark::State& s) { wholeRun(s, kFinitePatch, "finite_patch.tri"); }
void BM_WholeRun3dPoint(benchmark::State& s) { wholeRun(s, kPoint3d, "point.tri"); }
void BM_WholeRun1dFiniteCauchy(benchmark::State& s) { wholeRun(s, kColumn, "column.one"); }

BENCHMARK(BM_WholeRun2dInfiniteStrip)->ArgName("threads")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_WholeRun2dFiniteStrip)->ArgName("threads")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_WholeRun2dGaussian)->ArgName("threads")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_WholeRun2dPoint)->ArgName("threads")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_WholeRun3dInfinitePatch)->ArgName("threads")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_WholeRun3dFinitePatch)->ArgName("threads")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_WholeRun3dPoint)->ArgName("threads")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_WholeRun1dFiniteCauchy)->ArgName("threads")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
