// Cost of the two-dimensional kernels: per call at points spread over a plume,
// a whole 101 x 51 x 11 strip-source grid, and the error-function evaluations
// a strip call cannot avoid (256 nodes, two error functions each) for scale.

#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "kernels/gauss_legendre.h"
#include "kernels/kern2d.h"

namespace {

using namespace bm;

struct Rule {
    std::vector<double> nodes, weights;
    Rule() { gaussLegendre(256, nodes, weights); }
};
const Rule theRule;

TwoDimParameters plume() {
    TwoDimParameters p;
    p.effectiveVelocity = 1;
    p.effectiveDispersionX = 1;
    p.effectiveDispersionY = 0.1;
    p.effectiveHalfLife = 200;
    p.yMin = -25;
    p.yMax = 25;
    p.sourceYc = 0;
    p.sourceWidth = 10;
    p.sourceStdDev = 3;
    p.injectionRate = 0.5;
    p.porosity = 0.3;
    return p;
}

struct Point {
    double t, x, y;
};

// Points over the plume at t = 50: x from the source plane to past the front,
// y across and beside the source.
std::vector<Point> points(double xFrom, double xTo) {
    std::vector<Point> out;
    for (int i = 0; i < 16; ++i)
        for (int j = 0; j < 8; ++j) out.push_back({50, xFrom + (xTo - xFrom) * i / 15.0, -20 + 40.0 * j / 7.0});
    return out;
}

template <class Kernel>
void runPoints(benchmark::State& state, const std::vector<Point>& pts, Kernel kernel) {
    const TwoDimParameters p = plume();
    std::size_t k = 0;
    for (auto _ : state) {
        const Point& q = pts[k++ % pts.size()];
        double c;
        kernel(p, q.t, q.x, q.y, c);
        benchmark::DoNotOptimize(c);
    }
}

void finiteWidth(const TwoDimParameters& p, double t, double x, double y, double& c) { cnrml_FL(p, t, x, y, c); }
void strip(const TwoDimParameters& p, double t, double x, double y, double& c) {
    cnrml_IL(p, t, x, y, c, theRule.nodes.data(), theRule.weights.data());
}
void gaussian(const TwoDimParameters& p, double t, double x, double y, double& c) {
    cnrml_IG(p, t, x, y, c, theRule.nodes.data(), theRule.weights.data());
}
void point(const TwoDimParameters& p, double t, double x, double y, double& c) {
    cnrml_IC(p, t, x, y, c, theRule.nodes.data(), theRule.weights.data());
}

void BM_cnrml_FL_downstream(benchmark::State& state) { runPoints(state, points(5, 80), finiteWidth); }
void BM_cnrml_FL_nearSourcePlane(benchmark::State& state) { runPoints(state, points(0.01, 0.5), finiteWidth); }
void BM_cnrml_IL(benchmark::State& state) { runPoints(state, points(0.5, 80), strip); }
void BM_cnrml_IG(benchmark::State& state) { runPoints(state, points(0.5, 80), gaussian); }
void BM_cnrml_IC(benchmark::State& state) { runPoints(state, points(-10, 80), point); }
BENCHMARK(BM_cnrml_FL_downstream);
BENCHMARK(BM_cnrml_FL_nearSourcePlane);
BENCHMARK(BM_cnrml_IL);
BENCHMARK(BM_cnrml_IG);
BENCHMARK(BM_cnrml_IC);

// Every call at a new x and t (a quasi-random sequence over the plume at
// t = 20 .. 80): nothing a kernel keeps from one call helps the next. The
// cost of a lone call; per node, a 256th of it.
std::vector<Point> freshPoints(double xFrom, double xTo) {
    std::vector<Point> out;
    for (int i = 1; i <= 997; ++i) {
        const double a = std::fmod(i * 0.6180339887498949, 1.0), b = std::fmod(i * 0.7548776662466927, 1.0);
        out.push_back({20.0 + 60.0 * b, xFrom + (xTo - xFrom) * a, -20.0 + 40.0 * std::fmod(i * 0.5698402909980532, 1.0)});
    }
    return out;
}

void BM_cnrml_FL_everyCallNew(benchmark::State& state) { runPoints(state, freshPoints(0.01, 80), finiteWidth); }
void BM_cnrml_IL_everyCallNew(benchmark::State& state) { runPoints(state, freshPoints(0.5, 80), strip); }
void BM_cnrml_IG_everyCallNew(benchmark::State& state) { runPoints(state, freshPoints(0.5, 80), gaussian); }
void BM_cnrml_IC_everyCallNew(benchmark::State& state) { runPoints(state, freshPoints(-10, 80), point); }
BENCHMARK(BM_cnrml_FL_everyCallNew);
BENCHMARK(BM_cnrml_IL_everyCallNew);
BENCHMARK(BM_cnrml_IG_everyCallNew);
BENCHMARK(BM_cnrml_IC_everyCallNew);

// The floor of a strip call: 256 nodes with two error functions each.
void BM_ErrorFunctionsOfOneStripCall(benchmark::State& state) {
    std::vector<double> args(512);
    for (std::size_t i = 0; i < args.size(); ++i) args[i] = 4.0 * std::sin(0.37 * static_cast<double>(i));
    for (auto _ : state) {
        double s = 0;
        for (double a : args) s += a > 0 ? std::erfc(a) : std::erf(a);
        benchmark::DoNotOptimize(s);
    }
}
BENCHMARK(BM_ErrorFunctionsOfOneStripCall);


// The grids of the whole-run benchmarks (bench/grids/*.two): x = 10:1010:10,
// y = 0:1000:20, t = 0:1100:100, in the order a run visits them (y fastest,
// then x, then t), with the aquifer 0 .. 1000 wide and the source at y = 500.
TwoDimParameters wholeRunGrid() {
    TwoDimParameters p;
    p.effectiveVelocity = 1;
    p.effectiveDispersionX = 10;
    p.effectiveDispersionY = 2;
    p.effectiveHalfLife = 1e300;
    p.yMin = 0;
    p.yMax = 1000;
    p.sourceYc = 500;
    p.sourceWidth = 200;
    p.injectionRate = 1;
    p.porosity = 0.25;
    return p;
}

// The rule as the program reads it from its points file: the nodes largest
// first, each followed by its mirror.
struct ProgramRule {
    std::vector<double> nodes, weights;
    ProgramRule() {
        for (int i = 255; i >= 128; --i) {
            for (const double sign : {1.0, -1.0}) nodes.push_back(sign * theRule.nodes[static_cast<std::size_t>(i)]);
            weights.insert(weights.end(), 2, theRule.weights[static_cast<std::size_t>(i)]);
        }
    }
};
const ProgramRule theProgramRule;

// Points of a grid in the order a run visits them: y fastest, then x, then t.
struct GridAxes {
    double t0, dt;
    int nt;
    double x0, dx;
    int nx;
    double y0, dy;
    int ny;
};

template <class Kernel>
void runGrid(benchmark::State& state, const TwoDimParameters& p, const GridAxes& g, Kernel kernel) {
    for (auto _ : state) {
        double sum = 0;
        for (int k = 0; k < g.nt; ++k)
            for (int i = 0; i < g.nx; ++i)
                for (int j = 0; j < g.ny; ++j) {
                    double c;
                    kernel(p, g.t0 + g.dt * k, g.x0 + g.dx * i, g.y0 + g.dy * j, c);
                    sum += c;
                }
        benchmark::DoNotOptimize(sum);
    }
    state.counters["per_point_us"] = benchmark::Counter(g.nt * g.nx * g.ny, benchmark::Counter::kIsIterationInvariantRate |
                                                                                 benchmark::Counter::kInvert);
}

// The grid of a strip-source run: x = 0:100:1, y = -25:25:1, t = 0:100:10.
void BM_StripGrid101x51x11(benchmark::State& state) {
    runGrid(state, plume(), {0, 10, 11, 0, 1, 101, -25, 1, 51}, strip);
}
BENCHMARK(BM_StripGrid101x51x11)->Unit(benchmark::kMillisecond);

template <class Kernel>
void runWholeRunGrid(benchmark::State& state, Kernel kernel) {
    runGrid(state, wholeRunGrid(), {0, 100, 12, 10, 10, 101, 0, 20, 51}, kernel);
}

// The finite-width grid: the image sources up to x = 250, the cosine series beyond.
void BM_FiniteStripRunGrid(benchmark::State& state) { runWholeRunGrid(state, finiteWidth); }
BENCHMARK(BM_FiniteStripRunGrid)->Unit(benchmark::kMillisecond);

// The point-source grid on the program's rule, every point computed (a run
// computes one of each pair mirrored about the source's axis).
void BM_PointRunGrid(benchmark::State& state) {
    runWholeRunGrid(state, [](const TwoDimParameters& p, double t, double x, double y, double& c) {
        cnrml_IC(p, t, x - p.sourceXc, y - p.sourceYc, c, theProgramRule.nodes.data(), theProgramRule.weights.data());
    });
}
BENCHMARK(BM_PointRunGrid)->Unit(benchmark::kMillisecond);

}  // namespace
