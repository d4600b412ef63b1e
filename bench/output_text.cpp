// The texts a finished run writes, without the run: the output file (as the
// batch calculator composes it, code page included) and the data file with
// its results, of three bench/grids models calculated once: the 3-D point
// source (21 x 21 x 11 x 6), the 2-D point source (101 x 51 x 12) and the 1-D
// finite Cauchy column (101 x 101), on one thread. items_per_second counts
// result values: 1e9 / items_per_second is the nanoseconds a value.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "apps/brenmoor-calc/batch_calculator.h"
#include "apps/brenmoor-calc/batch_outputs.h"
#include "driver_support.h"
#include "files/code_page.h"
#include "files/data_file.h"
#include "model/data_set.h"
#include "montecarlo/pass/ordered_batches.h"
#include "shell/screen/built_in_kinds.h"

namespace {

// The model of a bench grid with its results, read back from the data file
// the batch calculator saves.
bm::DataSet calculated(const std::string& name) {
    bm::registerBuiltInKinds();
    benchsupport::providePointsFile();
    static benchsupport::SilentInterface ui;
    bm::setUserInterface(&ui);
    bm::BatchOptions options;
    options.dataFile = std::string(BRENMOOR_GRID_DIR) + "/" + name;
    options.savePath = (std::filesystem::temp_directory_path() / ("brenmoor_bench_text_" + name)).string();
    bm::DataSet d;
    if (bm::runBatch(options, ui, bm::BatchStreams{}) != bm::kExitDone) return d;
    bm::readDataFile(d, options.savePath);
    std::filesystem::remove(options.savePath);
    return d;
}

double valuesOf(const bm::DataSet& d) {
    double values = static_cast<double>(d.numXTerms) * d.numTTerms;
    if (d.modelType != "One Dimensional") values *= d.numYTerms;
    if (d.modelType == "Three Dimensional") values *= d.numZTerms;
    return values;
}

template <class Text>
void textOf(benchmark::State& state, const std::string& name, Text text) {
    const bm::ScopedCalculationThreads threads(1);
    bm::DataSet d = calculated(name);  // composeDataFile takes it to write
    const double values = valuesOf(d);
    if (values <= 0) {
        state.SkipWithError("the run did not finish");
        return;
    }
    std::size_t bytes = 0;
    for (auto _ : state) {
        const std::string written = text(d);
        bytes = written.size();
        benchmark::DoNotOptimize(written.data());
    }
    state.counters["bytes"] = static_cast<double>(bytes);
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * values));
}

std::string outputFile(bm::DataSet& d) {
    return bm::utf8ToWindows1252(bm::batchOutputText(d).value_or(std::string()));
}
std::string dataFile(bm::DataSet& d) { return bm::utf8ToWindows1252(bm::composeDataFile(d)); }

void BM_OutputFile3dPoint(benchmark::State& s) { textOf(s, "point.tri", outputFile); }
void BM_OutputFile2dPoint(benchmark::State& s) { textOf(s, "point.two", outputFile); }
void BM_OutputFile1dColumn(benchmark::State& s) { textOf(s, "column.one", outputFile); }
void BM_DataFile3dPoint(benchmark::State& s) { textOf(s, "point.tri", dataFile); }
void BM_DataFile2dPoint(benchmark::State& s) { textOf(s, "point.two", dataFile); }
void BM_DataFile1dColumn(benchmark::State& s) { textOf(s, "column.one", dataFile); }

BENCHMARK(BM_OutputFile3dPoint)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_OutputFile2dPoint)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_OutputFile1dColumn)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DataFile3dPoint)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DataFile2dPoint)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DataFile1dColumn)->Unit(benchmark::kMillisecond);

}  // namespace
