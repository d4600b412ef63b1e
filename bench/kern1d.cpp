// kern1d: one exerfc call in its two regimes, and one table of 500 eigenvalues.

#include <benchmark/benchmark.h>

#include <vector>

#include "kernels/kern1d.h"

namespace {

void BM_ExerfcModerate(benchmark::State& state) {
    double r = 0;
    double b = 0.1;
    for (auto _ : state) {
        bm::exerfc(1.5, b, r);
        benchmark::DoNotOptimize(r);
        b = b < 20 ? b + 0.37 : 0.1;
    }
}
BENCHMARK(BM_ExerfcModerate);

void BM_ExerfcLargeArguments(benchmark::State& state) {
    double r = 0;
    double b = 26.5;
    for (auto _ : state) {
        bm::exerfc(800.0, b, r);
        benchmark::DoNotOptimize(r);
        b = b < 40 ? b + 0.37 : 26.5;
    }
}
BENCHMARK(BM_ExerfcLargeArguments);

void BM_Root1(benchmark::State& state) {
    std::vector<double> roots(bm::kRootCount);
    for (auto _ : state) {
        bm::root1(25.0, roots[0]);
        benchmark::DoNotOptimize(roots.data());
    }
}
BENCHMARK(BM_Root1)->Unit(benchmark::kMicrosecond);

void BM_Root3(benchmark::State& state) {
    std::vector<double> roots(bm::kRootCount);
    for (auto _ : state) {
        bm::root3(12.5, 0.02, roots[0]);
        benchmark::DoNotOptimize(roots.data());
    }
}
BENCHMARK(BM_Root3)->Unit(benchmark::kMicrosecond);

}  // namespace
