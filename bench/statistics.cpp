// The summary of the largest sample a variant can have (32 765 terms, so
// 32 766 values), and the draws of each distribution.

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "kernels/kernmc.h"
#include "model/arrays.h"
#include "montecarlo/monte_statistics.h"

namespace {

constexpr int kLargestSample = 32766;

void BM_ComputeStatistics(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    bm::List<float> samples(n);
    std::mt19937 engine(1);
    std::lognormal_distribution<float> draw(0.0f, 0.5f);
    for (int i = 1; i <= n; ++i) samples(i) = draw(engine);
    float maximum, minimum, median, mean, geometric, variance, deviation;
    for (auto _ : state) {
        bm::ComputeStatistics(static_cast<std::int16_t>(n), samples, maximum, minimum, median, mean, geometric,
                              variance, deviation);
        benchmark::DoNotOptimize(median);
    }
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_ComputeStatistics)->Arg(kLargestSample)->Arg(1001)->Unit(benchmark::kMicrosecond);

// Parameters of a velocity-like variant: mean 2, variance 0.25, bounds 1 to 3.
void BM_monteCarlo(benchmark::State& state) {
    bm::monteRecord record{};
    record.count = 10000;
    record.mean = 2.0f;
    record.variance = 0.25f;
    record.standardDeviation = 0.5f;
    record.minimum = 1.0f;
    record.maximum = 3.0f;
    record.distribution = static_cast<std::int16_t>(state.range(0));
    std::vector<float> buffer(static_cast<std::size_t>(record.count));
    bm::seedMonteCarlo(7);
    for (auto _ : state) {
        const auto status = bm::monteCarlo(record, buffer[0]);
        benchmark::DoNotOptimize(status);
        benchmark::DoNotOptimize(buffer.data());
    }
    static const char* const names[] = {"", "normal", "lognormal", "uniform", "exponential", "gumbel", "triangle",
                                        "loguniform"};
    state.SetLabel(names[state.range(0)]);
    state.SetItemsProcessed(state.iterations() * record.count);
}
BENCHMARK(BM_monteCarlo)->DenseRange(1, 7)->Unit(benchmark::kMicrosecond);

}  // namespace
