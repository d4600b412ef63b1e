// Writing and reading the largest data file kind: a three-dimensional grid.

#include <benchmark/benchmark.h>

#include "files/code_page.h"
#include "files/data_file.h"

namespace {

bm::DataSet threeDimensionalModel(int n) {
    bm::DataSet d;
    d.modelType = "Three Dimensional";
    d.calculationMode = "Regular";
    for (bm::List<double>* axis : {&d.xValues, &d.yValues, &d.zValues}) {
        axis->redim(n);
        for (int i = 1; i <= n; ++i) (*axis)(i) = i * 2.5;
    }
    d.tValues.redim(10);
    for (int i = 1; i <= 10; ++i) d.tValues(i) = i * 100.0;
    d.result3D.redim({n, n, n, 10});
    for (int x = 1; x <= n; ++x)
        for (int y = 1; y <= n; ++y)
            for (int z = 1; z <= n; ++z)
                for (int t = 1; t <= 10; ++t) d.result3D(x, y, z, t) = 1.0 / (x + y * 0.37 + z * 0.011 + t);
    return d;
}

void composeThreeDimensional(benchmark::State& state) {
    bm::DataSet d = threeDimensionalModel(static_cast<int>(state.range(0)));
    std::size_t bytes = 0;
    for (auto _ : state) {
        const std::string text = bm::utf8ToWindows1252(bm::composeDataFile(d));
        bytes = text.size();
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}

void parseThreeDimensional(benchmark::State& state) {
    bm::DataSet d = threeDimensionalModel(static_cast<int>(state.range(0)));
    const std::string text = bm::composeDataFile(d);
    for (auto _ : state) {
        bm::DataSet back;
        bm::parseDataFile(back, bm::windows1252ToUtf8(bm::utf8ToWindows1252(text)), "bench.tri");
        benchmark::DoNotOptimize(back.result3D);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

}  // namespace

BENCHMARK(composeThreeDimensional)->Arg(10)->Arg(40)->Unit(benchmark::kMillisecond);
BENCHMARK(parseThreeDimensional)->Arg(10)->Arg(40)->Unit(benchmark::kMillisecond);
