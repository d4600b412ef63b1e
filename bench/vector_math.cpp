// Cost per value of the kernels' array exponentials on this processor's
// variant: SLEEF's exp (and our expm1 built on it) against our own FMA
// exponentials that the point source's sums use, over arguments spread as a
// kernel's exponents are (-42 .. 0) and across the whole range.

#include <benchmark/benchmark.h>

#include <vector>

#include "kernels/vector_math.h"

namespace {

using namespace bm;

constexpr int kValues = 4096;

std::vector<double> arguments(double from, double to) {
    std::vector<double> x(kValues);
    for (int i = 0; i < kValues; ++i) x[static_cast<std::size_t>(i)] = from + (to - from) * ((i * 37) % kValues) / kValues;
    return x;
}

template <class Run>
void perValue(benchmark::State& state, Run run) {
    for (auto _ : state) run();
    state.SetItemsProcessed(state.iterations() * kValues);
}

void BM_SleefExp(benchmark::State& state) {
    const std::vector<double> x = arguments(-42, 0);
    std::vector<double> out(kValues);
    perValue(state, [&] { vmath::exp(x.data(), out.data(), kValues); benchmark::DoNotOptimize(out.data()); });
}
BENCHMARK(BM_SleefExp);

void BM_QuickExp(benchmark::State& state) {
    const std::vector<double> x = arguments(-42, 0);
    std::vector<double> out(kValues);
    perValue(state, [&] { vmath::quickExp(x.data(), out.data(), kValues); benchmark::DoNotOptimize(out.data()); });
}
BENCHMARK(BM_QuickExp);

void BM_QuickExpWholeRange(benchmark::State& state) {
    const std::vector<double> x = arguments(-700, 700);
    std::vector<double> out(kValues);
    perValue(state, [&] { vmath::quickExp(x.data(), out.data(), kValues); benchmark::DoNotOptimize(out.data()); });
}
BENCHMARK(BM_QuickExpWholeRange);

void BM_SleefExpAndExpm1(benchmark::State& state) {
    const std::vector<double> x = arguments(-5, 0);
    std::vector<double> e(kValues), m(kValues);
    perValue(state, [&] {
        vmath::expAndExpm1(x.data(), e.data(), m.data(), kValues);
        benchmark::DoNotOptimize(m.data());
    });
}
BENCHMARK(BM_SleefExpAndExpm1);

void BM_QuickExpAndExpm1(benchmark::State& state) {
    const std::vector<double> x = arguments(-5, 0);
    std::vector<double> e(kValues), m(kValues);
    perValue(state, [&] {
        vmath::quickExpAndExpm1(x.data(), e.data(), m.data(), kValues);
        benchmark::DoNotOptimize(m.data());
    });
}
BENCHMARK(BM_QuickExpAndExpm1);

}  // namespace
