// The time-varying library: one call of each source (and of alpha_t) for each
// dispersion function, and a 51 x 51 x 5 grid of the continuous point source,
// as the kernel loop alone and through the whole time-varying driver.

#include <benchmark/benchmark.h>

#include <cstdio>

#include "kernels/kernvar.h"
#include "model/data_set.h"
#include "shell/base/user_interface.h"
#include "timevarying/var_solution.h"

namespace {

bm::kernvarRecord record(int function) {
    bm::kernvarRecord r{};
    r.magnitude = 1000;
    r.dispersionFunction = static_cast<std::int16_t>(function);
    r.retardation = 2;
    r.velocityX = 1;
    r.velocityY = 0.3f;
    r.decay = 0.001f;
    r.dispersionRatio = 0.2f;
    r.maximumDispersivity = 5;
    r.molecularDiffusion = 0.01f;
    r.meanTravelTime = 20;
    return r;
}

constexpr float kT = 50, kX = 20, kY = 5;
float pointFactor(const bm::kernvarRecord& r) { return r.dispersionRatio * r.magnitude / (r.retardation * 12.566372f); }
float lineFactor(const bm::kernvarRecord& r) { return r.magnitude / (3.5449078f * r.retardation); }

void BM_alpha_t(benchmark::State& state) {
    const bm::kernvarRecord r = record(static_cast<int>(state.range(0)));
    float t = kT;
    for (auto _ : state) {
        benchmark::DoNotOptimize(t);
        benchmark::DoNotOptimize(bm::alpha_t(r, t));
    }
}

void BM_point_instan_injection(benchmark::State& state) {
    const bm::kernvarRecord r = record(static_cast<int>(state.range(0)));
    const float alpha = bm::alpha_t(r, kT), factor = pointFactor(r);
    float x = kX;
    for (auto _ : state) {
        benchmark::DoNotOptimize(x);
        benchmark::DoNotOptimize(bm::point_instan_injection(r, kT, x, kY, alpha, factor));
    }
}

void BM_point_initial_concentration(benchmark::State& state) {
    const bm::kernvarRecord r = record(static_cast<int>(state.range(0)));
    const float alpha = bm::alpha_t(r, kT), factor = r.dispersionRatio * r.magnitude / 12.566372f;
    float x = kX;
    for (auto _ : state) {
        benchmark::DoNotOptimize(x);
        benchmark::DoNotOptimize(bm::point_initial_concentration(r, kT, x, kY, alpha, factor));
    }
}

void BM_point_contin_injection(benchmark::State& state) {
    const bm::kernvarRecord r = record(static_cast<int>(state.range(0)));
    const float alpha = bm::alpha_t(r, kT), factor = pointFactor(r);
    float x = kX;
    for (auto _ : state) {
        benchmark::DoNotOptimize(x);
        benchmark::DoNotOptimize(bm::point_contin_injection(r, kT, x, kY, alpha, factor, kT / 100, 100));
    }
}

void BM_line_instan_injection(benchmark::State& state) {
    bm::kernvarRecord r = record(static_cast<int>(state.range(0)));
    r.velocityY = 0;
    const float alpha = bm::alpha_t(r, kT), factor = lineFactor(r);
    float x = kX;
    for (auto _ : state) {
        benchmark::DoNotOptimize(x);
        benchmark::DoNotOptimize(bm::line_instan_injection(r, kT, x, alpha, factor));
    }
}

void BM_line_initial_concentration(benchmark::State& state) {
    bm::kernvarRecord r = record(static_cast<int>(state.range(0)));
    r.velocityY = 0;
    const float alpha = bm::alpha_t(r, kT), factor = lineFactor(r);
    float x = kX;
    for (auto _ : state) {
        benchmark::DoNotOptimize(x);
        benchmark::DoNotOptimize(bm::line_initial_concentration(r, kT, x, alpha, factor));
    }
}

void BM_line_contin_injection(benchmark::State& state) {
    bm::kernvarRecord r = record(static_cast<int>(state.range(0)));
    r.velocityY = 0;
    const float alpha = bm::alpha_t(r, kT), factor = lineFactor(r);
    float x = kX;
    for (auto _ : state) {
        benchmark::DoNotOptimize(x);
        benchmark::DoNotOptimize(bm::line_contin_injection(r, kT, x, alpha, factor, kT / 100, 100));
    }
}

// 51 x 51 points (x 0.5..100.5 by 2, y -50..50 by 2) at 5 times (20..100 by 20).
void BM_ContinuousPointGrid(benchmark::State& state) {
    const bm::kernvarRecord r = record(static_cast<int>(state.range(0)));
    const float factor = pointFactor(r);
    for (auto _ : state) {
        double sum = 0;
        for (int k = 1; k <= 5; ++k) {
            const float t = 20.0f * k, alpha = bm::alpha_t(r, t);
            for (int i = 1; i <= 51; ++i)
                for (int j = 1; j <= 51; ++j)
                    sum += bm::point_contin_injection(r, t, 0.5f + 2.0f * (i - 1), -50.0f + 2.0f * (j - 1), alpha,
                                                      factor, t / 100, 100);
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * 51 * 51 * 5);
}

const char* const kFunctions[] = {"", "Constant", "Linear", "Asymptotic", "Exponential"};

// The same grid through the driver: record, lists, flat list, selected point.
void BM_ContinuousPointGridDriver(benchmark::State& state) {
    bm::DataSet d;
    d.modelType = "Time Varying";
    d.aquiferType = kFunctions[state.range(0)];
    d.contaminantType = "Point (continuous)";
    d.xRange = "0.5:100.5:2";
    d.yRange = "-50:50:2";
    d.timeRange = "20:100:20";
    d.velocityX = "0.3";
    d.velocityY = "0.09";
    d.porosity = "0.3";
    d.saturation = "0.01";
    d.retardation = "2";
    d.dispersionRatio = "0.2";
    d.bulkDensity = "5";
    d.sourceDecayRate = "0.001";
    d.distributionCoefficient = "20";
    d.sourceMagnitude = "1000";
    bm::StreamUserInterface quiet(stderr);
    for (auto _ : state) benchmark::DoNotOptimize(bm::solveTimeVarying(d, quiet));
    state.SetItemsProcessed(state.iterations() * 51 * 51 * 5);
}

}  // namespace

BENCHMARK(BM_alpha_t)->DenseRange(1, 4);
BENCHMARK(BM_point_instan_injection)->DenseRange(1, 4);
BENCHMARK(BM_point_initial_concentration)->DenseRange(1, 4);
BENCHMARK(BM_point_contin_injection)->DenseRange(1, 4)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_line_instan_injection)->DenseRange(1, 4);
BENCHMARK(BM_line_initial_concentration)->DenseRange(1, 4);
BENCHMARK(BM_line_contin_injection)->DenseRange(1, 4)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ContinuousPointGrid)->DenseRange(1, 4)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ContinuousPointGridDriver)->Arg(3)->Unit(benchmark::kMillisecond);
