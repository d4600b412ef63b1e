// The decomposition a Monte Carlo run with a sampled decay chain repeats once
// per iteration: eigenDecompose + invertEigenMatrix, for a chain of n chemicals.

#include <benchmark/benchmark.h>

#include "species/matrix_operations.h"

namespace {

// A chain with distinct rates, each chemical feeding the next.
bm::SquareMatrix chainOf(int n) {
    bm::SquareMatrix a(n);
    for (int i = 1; i <= n; ++i) {
        const double rate = 0.05 * i + 0.01 * (i % 3);
        a(i, i) = -rate;
        if (i > 1) a(i, i - 1) = 0.5 * (0.05 * (i - 1) + 0.01 * ((i - 1) % 3));
    }
    return a;
}

// A general matrix with complex pairs (no isolation, full QR work).
bm::SquareMatrix generalOf(int n) {
    bm::SquareMatrix a(n);
    unsigned state = 12345u;
    for (int j = 1; j <= n; ++j)
        for (int i = 1; i <= n; ++i) {
            state = state * 1103515245u + 12345u;
            a(i, j) = static_cast<double>((state >> 8) % 2001u) / 1000.0 - 1.0;
        }
    return a;
}

void runDecomposition(benchmark::State& state, const bm::SquareMatrix& a) {
    const auto n = static_cast<std::int16_t>(state.range(0));
    bm::List<double> values, vectors, inverse;
    for (auto _ : state) {
        bool ok = bm::eigenDecompose(n, a, values, vectors);
        ok = bm::invertEigenMatrix(n, vectors, inverse) && ok;
        benchmark::DoNotOptimize(ok);
        benchmark::DoNotOptimize(inverse.data());
    }
}

void BM_ChainDecomposeInvert(benchmark::State& state) {
    runDecomposition(state, chainOf(static_cast<int>(state.range(0))));
}

void BM_GeneralDecomposeInvert(benchmark::State& state) {
    runDecomposition(state, generalOf(static_cast<int>(state.range(0))));
}

}  // namespace

BENCHMARK(BM_ChainDecomposeInvert)->Arg(5)->Arg(50);
BENCHMARK(BM_GeneralDecomposeInvert)->Arg(5)->Arg(50);
