// kern1d: one exerfc call in its two regimes, sweeps of exerfc over the
// arguments the kernels pass, and one table of 500 eigenvalues.

#include <benchmark/benchmark.h>

#include <cmath>
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

// (a, b) pairs of one region of the argument plane whose result is a finite
// double (a pair that truly overflows is a run-time error, not a value).
std::vector<std::pair<double, double>> sweep(double aLow, double aHigh, double bLow, double bHigh) {
    std::vector<std::pair<double, double>> pairs;
    constexpr int kSteps = 64;
    for (int i = 0; i < kSteps; ++i)
        for (int j = 0; j < kSteps; ++j) {
            const double a = aLow + (aHigh - aLow) * i / (kSteps - 1);
            const double b = bLow + (bHigh - bLow) * j / (kSteps - 1);
            // log of exp(a) erfc(b) is about a - b^2 - log(b sqrt(pi)) for large b, at most a + log 2
            const double logResult = b > 1 ? a - b * b - std::log(b * 1.7724538509055159) : a + 0.7;
            if (logResult < 700) pairs.emplace_back(a, b);
        }
    return pairs;
}

void runSweep(benchmark::State& state, const std::vector<std::pair<double, double>>& pairs) {
    double r = 0;
    std::size_t k = 0;
    for (auto _ : state) {
        const auto& [a, b] = pairs[k];
        bm::exerfc(a, b, r);
        benchmark::DoNotOptimize(r);
        k = k + 1 == pairs.size() ? 0 : k + 1;
    }
    state.counters["pairs"] = static_cast<double>(pairs.size());
}

// The whole range the one-dimensional kernels use: a from -800 to 800, b from
// -30 to 100, taken as one sweep.
void BM_ExerfcSweepWholeRange(benchmark::State& state) { runSweep(state, sweep(-800, 800, -30, 100)); }
BENCHMARK(BM_ExerfcSweepWholeRange);

// b below 26: erfc(b) is a normal double and exp(a) is taken apart (in two
// halves where it alone would overflow).
void BM_ExerfcSweepDirect(benchmark::State& state) { runSweep(state, sweep(-700, 700, -6, 25.9)); }
BENCHMARK(BM_ExerfcSweepDirect);

// b of 26 and more with a large a: exp(a) and erfc(b) alone are infinity and
// 0, so the product is formed as exp(a - b^2) erfcx(b) with the exponent in
// two parts. The overflow-avoiding region.
void BM_ExerfcSweepOverflowAvoiding(benchmark::State& state) { runSweep(state, sweep(710, 5000, 26, 80)); }
BENCHMARK(BM_ExerfcSweepOverflowAvoiding);

// Negative b: erfc near 2, the result is exp(a) times it.
void BM_ExerfcSweepNegative(benchmark::State& state) { runSweep(state, sweep(-800, 700, -30, -0.01)); }
BENCHMARK(BM_ExerfcSweepNegative);

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
