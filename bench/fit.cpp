// Fitting a model to observations: a one-dimensional column, three inputs, 200
// observations (4 wells, 50 times); a two-dimensional strip, four inputs, 500
// observations (10 wells, 50 times). The observations are the model's own
// values at known inputs with noise of a fixed seed; each fit starts away
// from them.

#include <benchmark/benchmark.h>

#include <random>

#include "driver_support.h"
#include "fitting/fitter.h"
#include "fitting/model_evaluator.h"
#include "montecarlo/pass/kind_calculation.h"
#include "shell/screen/built_in_kinds.h"

namespace {

using namespace bm;

DataSet column() {
    DataSet d;
    d.modelType = "One Dimensional";
    d.aquiferType = "Semi-Infinite";
    d.contaminantType = "Dirichlet";
    d.velocity = "0.5";
    d.dispersionX = "0.8";
    d.halfLife = "40";
    d.porosity = "1";
    d.retardation = "1";
    d.xRange = "0:20:1";
    d.timeRange = "0:50:1";
    d.mcAtX = "10";
    d.mcAtT = "10";
    benchsupport::setInflowTerms(d, 1);
    return d;
}

DataSet strip() {
    DataSet d;
    d.modelType = "Two Dimensional";
    d.aquiferType = "Finite";
    d.contaminantType = "Finite / Line";
    d.velocity = "0.1";
    d.dispersionX = "3.3";
    d.dispersionY = "0.33";
    d.halfLife = "7300";
    d.porosity = "0.3";
    d.retardation = "1";
    d.netRecharge = "0";
    d.aquiferThickness = "10";
    d.sourceWidth = "20";
    d.sourceXc = "0";
    d.sourceYc = "0";
    d.xRange = "0:500:25";
    d.yRange = "-100:100:10";
    d.timeRange = "0:1825:365";
    d.mcAtX = "200";
    d.mcAtY = "0";
    d.mcAtT = "1825";
    benchsupport::setInflowTerms(d, 1);
    return d;
}

// The model's values at wells (x, y) and times t0 + k dt, with noise.
ObservationSet observed(const DataSet& model, const std::vector<std::pair<double, double>>& wells, double t0, double dt,
                        int times, double sigma) {
    ObservationSet set;
    set.relative = true;
    for (const auto& [x, y] : wells)
        for (int k = 0; k < times; ++k) {
            Observation o;
            o.x = x;
            o.y = y;
            o.t = t0 + k * dt;
            set.points.push_back(o);
        }
    benchsupport::SilentInterface ui;
    ModelEvaluator evaluator(model, *kindCalculationOf(model), set, {});
    const std::vector<double> values = *evaluator.evaluate({}, ui);
    std::mt19937_64 generator(7);
    std::normal_distribution<double> noise(0.0, sigma);
    for (std::size_t i = 0; i < values.size(); ++i) set.points[i].concentration = values[i] + noise(generator);
    return set;
}

void runFit(benchmark::State& state, const DataSet& start, const ObservationSet& observations, const FitRequest& request) {
    benchsupport::SilentInterface ui;
    long long runs = 0, iterations = 0;
    for (auto _ : state) {
        const FitReport report = fitModel(start, observations, request, ui);
        if (!report.fitted()) state.SkipWithError(report.problem.c_str());
        runs += report.modelRuns;
        iterations += report.iterations;
        benchmark::DoNotOptimize(report.estimates.data());
    }
    state.counters["model_runs"] = benchmark::Counter(static_cast<double>(runs), benchmark::Counter::kAvgIterations);
    state.counters["solver_iterations"] =
        benchmark::Counter(static_cast<double>(iterations), benchmark::Counter::kAvgIterations);
}

FitRequest vary(std::initializer_list<const char*> names) {
    FitRequest request;
    for (const char* name : names) request.inputs.push_back(VaryingInput{name, {}, {}, false});
    return request;
}

void BM_FitColumnThreeInputs200Observations(benchmark::State& state) {
    registerBuiltInKinds();
    const ObservationSet observations = observed(column(), {{2, 0}, {5, 0}, {9, 0}, {14, 0}}, 1.0, 1.0, 50, 0.01);
    DataSet start = column();
    start.velocity = "0.7";
    start.dispersionX = "0.5";
    start.halfLife = "60";
    runFit(state, start, observations, vary({"Velocity", "Dispersion_X", "HalfLife"}));
}
BENCHMARK(BM_FitColumnThreeInputs200Observations)->Unit(benchmark::kMillisecond);

void BM_FitStripFourInputs500Observations(benchmark::State& state) {
    registerBuiltInKinds();
    std::vector<std::pair<double, double>> wells;
    for (const double x : {50.0, 100.0, 150.0, 200.0, 300.0})
        for (const double y : {0.0, 20.0}) wells.push_back({x, y});
    const ObservationSet observations = observed(strip(), wells, 36.5, 36.5, 50, 0.002);
    DataSet start = strip();
    start.velocity = "0.12";
    start.dispersionX = "2.5";
    start.dispersionY = "0.45";
    start.halfLife = "5000";
    runFit(state, start, observations, vary({"Velocity", "Dispersion_X", "Dispersion_y", "HalfLife"}));
}
BENCHMARK(BM_FitStripFourInputs500Observations)->Unit(benchmark::kMillisecond);

}  // namespace
