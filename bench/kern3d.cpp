// Cost of the three-dimensional kernels: one call at a typical point, and the
// 21 x 21 x 11 points x 5 times grid a three-dimensional run computes.

#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "kernels/gauss_legendre.h"
#include "kernels/kern3d.h"

using namespace bm;

namespace {

// The program's 1-based lists: each positive node followed by its mirror.
struct Rule {
    std::vector<double> nodes = std::vector<double>(257), weights = std::vector<double>(257);
    Rule() {
        std::vector<double> x, w;
        gaussLegendre(256, x, w);
        for (int i = 1, j = 255; i <= 255; i += 2, --j) {
            nodes[i] = x[j];
            nodes[i + 1] = -x[j];
            weights[i] = weights[i + 1] = w[j];
        }
    }
};
const Rule& rule() {
    static const Rule r;
    return r;
}

// A plume from a 20 m x 5 m patch in a sandy aquifer: effective velocity
// 0.3 m/d, dispersions 3, 0.3 and 0.03 m2/d, half-life 3 years, a little recharge.
ThreeDimParameters field() {
    ThreeDimParameters p;
    p.yMin = -50;
    p.yMax = 50;
    p.zMin = 0;
    p.zMax = 10;
    p.effectiveVelocity = 0.3;
    p.effectiveDispersionX = 3.0;
    p.effectiveDispersionY = 0.3;
    p.effectiveDispersionZ = 0.03;
    p.effectiveHalfLife = 1095;
    p.netRecharge = 0.0005;
    p.porosity = 0.3;
    p.aquiferThickness = 10;
    p.sourceYc = 0;
    p.sourceZc = 5;
    p.sourceWidth = 20;
    p.sourceHeight = 5;
    p.injectionRate = 1.0;
    return p;
}

template <class Kernel>
void grid(benchmark::State& state, const ThreeDimParameters& p, Kernel kernel) {
    for (auto _ : state) {
        double sum = 0;
        for (int it = 1; it <= 5; ++it)
            for (int iz = 0; iz <= 10; ++iz)
                for (int ix = 0; ix <= 20; ++ix)
                    for (int iy = 0; iy <= 20; ++iy) {
                        double c;
                        kernel(p, 100.0 * it, 10.0 * ix, -50.0 + 5.0 * iy, 1.0 * iz, c);
                        sum += c;
                    }
        benchmark::DoNotOptimize(sum);
    }
    state.counters["points"] = 21 * 21 * 11 * 5;
    state.counters["per_point_us"] =
        benchmark::Counter(21.0 * 21 * 11 * 5, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void patch(const ThreeDimParameters& p, double t, double x, double y, double z, double& c) {
    cnrml_3IL(p, t, x, y, z, c, &rule().nodes[1], &rule().weights[1]);
}
void finite(const ThreeDimParameters& p, double t, double x, double y, double z, double& c) { cnrml_3FL(p, t, x, y, z, c); }
void point(const ThreeDimParameters& p, double t, double x, double y, double z, double& c) { cnrml_3IC(p, t, x, y, z, c); }

template <class Kernel>
void onePoint(benchmark::State& state, const ThreeDimParameters& p, Kernel kernel, double t, double x, double y,
              double z) {
    double c = 0;
    for (auto _ : state) {
        kernel(p, t, x, y, z, c);
        benchmark::DoNotOptimize(c);
    }
}

// A sharp front (Peclet number 2e4 at 60 m) long after it has passed.
ThreeDimParameters sharp() {
    ThreeDimParameters p = field();
    p.effectiveDispersionX = 0.003;
    p.effectiveDispersionY = 3e-4;
    p.effectiveDispersionZ = 3e-5;
    return p;
}

void BM_PatchPoint(benchmark::State& state) { onePoint(state, field(), patch, 365, 60, 8, 4); }
void BM_PatchPointSharpFrontLongTime(benchmark::State& state) { onePoint(state, sharp(), patch, 36500, 60, 8, 4); }
void BM_PatchGrid(benchmark::State& state) { grid(state, field(), patch); }
// Close to the inlet (image integral) and far down the aquifer (cosine series).
void BM_FinitePointNearInlet(benchmark::State& state) { onePoint(state, field(), finite, 365, 2, 8, 4); }
void BM_FinitePointFarDown(benchmark::State& state) { onePoint(state, field(), finite, 3650, 600, 8, 4); }
void BM_FiniteGrid(benchmark::State& state) { grid(state, field(), finite); }
void BM_InjectionPoint(benchmark::State& state) { onePoint(state, field(), point, 365, 60, 8, 4); }
void BM_InjectionGrid(benchmark::State& state) { grid(state, field(), point); }

// Every call at a new x and t (a quasi-random sequence over the plume): no
// kept value helps the next call. The cost of a lone call.
template <class Kernel>
void everyCallNew(benchmark::State& state, const ThreeDimParameters& p, Kernel kernel) {
    std::size_t i = 0;
    for (auto _ : state) {
        ++i;
        const double a = std::fmod(i * 0.6180339887498949, 1.0), b = std::fmod(i * 0.7548776662466927, 1.0);
        double c = 0;
        kernel(p, 50.0 + 600.0 * b, 0.5 + 120.0 * a, -20.0 + 40.0 * std::fmod(i * 0.5698402909980532, 1.0),
               10.0 * std::fmod(i * 0.4142135623730950, 1.0), c);
        benchmark::DoNotOptimize(c);
    }
}
void BM_PatchEveryCallNew(benchmark::State& state) { everyCallNew(state, field(), patch); }
void BM_FiniteEveryCallNew(benchmark::State& state) { everyCallNew(state, field(), finite); }
BENCHMARK(BM_PatchEveryCallNew);
BENCHMARK(BM_FiniteEveryCallNew);

BENCHMARK(BM_PatchPoint);
BENCHMARK(BM_PatchPointSharpFrontLongTime);
BENCHMARK(BM_PatchGrid)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FinitePointNearInlet);
BENCHMARK(BM_FinitePointFarDown);
BENCHMARK(BM_FiniteGrid)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_InjectionPoint);
BENCHMARK(BM_InjectionGrid)->Unit(benchmark::kMillisecond);

// The floor the patch kernel is measured against: one application of the rule
// with four erf and two exp per node.
void BM_ErfFloorOfOneRuleApplication(benchmark::State& state) {
    double s = 0.37;
    for (auto _ : state) {
        double sum = 0;
        for (int i = 1; i <= 256; ++i) {
            const double r = s + rule().nodes[i];
            sum += std::exp(-r) * std::exp(r * 0.5) * (std::erf(r) + std::erf(2 * r)) * (std::erf(3 * r) + std::erf(0.5 * r));
        }
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(BM_ErfFloorOfOneRuleApplication);

}  // namespace
