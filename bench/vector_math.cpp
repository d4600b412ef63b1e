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

// One of this processor's array functions over arguments from .. to, per value.
void arrayFunction(benchmark::State& state, vmath::ArrayFunction vmath::Functions::*function, double from, double to) {
    const std::vector<double> x = arguments(from, to);
    std::vector<double> out(kValues);
    for (auto _ : state) {
        (vmath::functions().*function)(x.data(), out.data(), kValues);
        benchmark::DoNotOptimize(out.data());
    }
    state.SetItemsProcessed(state.iterations() * kValues);
}

// One of its functions giving exp and expm1 at once.
void pairFunction(benchmark::State& state, vmath::PairFunction vmath::Functions::*function, double from, double to) {
    const std::vector<double> x = arguments(from, to);
    std::vector<double> e(kValues), m(kValues);
    for (auto _ : state) {
        (vmath::functions().*function)(x.data(), e.data(), m.data(), kValues);
        benchmark::DoNotOptimize(m.data());
    }
    state.SetItemsProcessed(state.iterations() * kValues);
}

BENCHMARK_CAPTURE(arrayFunction, SleefExp, &vmath::Functions::exp, -42.0, 0.0);
BENCHMARK_CAPTURE(arrayFunction, QuickExp, &vmath::Functions::quickExp, -42.0, 0.0);
BENCHMARK_CAPTURE(arrayFunction, QuickExpWholeRange, &vmath::Functions::quickExp, -700.0, 700.0);
BENCHMARK_CAPTURE(pairFunction, SleefExpAndExpm1, &vmath::Functions::expAndExpm1, -5.0, 0.0);
BENCHMARK_CAPTURE(pairFunction, QuickExpAndExpm1, &vmath::Functions::quickExpAndExpm1, -5.0, 0.0);

}  // namespace
