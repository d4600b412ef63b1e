// A four-member decay chain on the two-dimensional strip source (101 x 51
// points, 11 times) against four single-species runs of the same grid: the
// chain solves each chemical once and adds the decomposition and the coupling
// of every point, which should cost little beside the solves.

#include <benchmark/benchmark.h>

#include <numbers>
#include <string>

#include "driver_support.h"
#include "model/data_set.h"
#include "montecarlo/pass/calculation_pass.h"
#include "shell/screen/built_in_kinds.h"

namespace {

using benchsupport::perPoint;
using benchsupport::providePointsFile;
using benchsupport::SilentInterface;

constexpr double kRates[] = {0.02, 0.01, 0.005, 0.0025};

bm::DataSet stripModel() { return benchsupport::twoDimModel("Infinite", "Finite / Line", 101, 51, 11); }

void registerKinds() {
    static const bool registered = [] {
        bm::registerBuiltInKinds();
        return true;
    }();
    (void)registered;
    providePointsFile();
}

double gridPoints(const bm::DataSet& d) { return static_cast<double>(d.numXTerms) * d.numYTerms * d.numTTerms; }

void BM_FourSingleSpeciesRuns(benchmark::State& state) {
    registerKinds();
    bm::DataSet d = stripModel();
    SilentInterface ui;
    double points = 0;
    for (auto _ : state) {
        for (double rate : kRates) {
            d.halfLife = bm::generalText(std::numbers::ln2 / rate);
            if (!bm::runCalculation(d, ui).finished) state.SkipWithError("a run did not finish");
            points += gridPoints(d);
        }
        benchmark::DoNotOptimize(d.result2D(1, 1, 1));
    }
    state.counters["per_point"] = perPoint(points);
}
BENCHMARK(BM_FourSingleSpeciesRuns)->Unit(benchmark::kMillisecond);

void BM_FourMemberChain(benchmark::State& state) {
    registerKinds();
    bm::DataSet d = stripModel();
    d.multiChemical = true;
    d.numChemicals = 4;
    for (bm::List<std::string>* list :
         {&d.chemicalName, &d.decayRate, &d.yieldFactor, &d.suppositionTime, &d.suppositionConcentration})
        list->redim(4);
    for (int i = 1; i <= 4; ++i) {
        d.chemicalName(i) = "C" + std::to_string(i);
        d.decayRate(i) = bm::generalText(kRates[i - 1]);
        d.yieldFactor(i) = "0.8";
        d.suppositionTime(i) = "0";
        d.suppositionConcentration(i) = i == 1 ? "1" : "0";
    }
    SilentInterface ui;
    double points = 0;
    for (auto _ : state) {
        if (!bm::runCalculation(d, ui).finished) state.SkipWithError("the chain did not finish");
        points += 4 * gridPoints(d);
        benchmark::DoNotOptimize(d.chemResult2D(4, 1, 1, 1));
    }
    state.counters["per_point"] = perPoint(points);
}
BENCHMARK(BM_FourMemberChain)->Unit(benchmark::kMillisecond);

}  // namespace
