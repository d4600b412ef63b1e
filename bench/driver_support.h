#pragma once
// What the driver benchmarks share: a user interface that swallows progress,
// the per-point counter, the inflow terms of a model, the points file written
// where the drivers find it, and a range text of a given count over a span.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "kernels/gauss_legendre.h"
#include "model/app_state.h"
#include "model/data_set.h"
#include "model/number_text.h"
#include "montecarlo/pass/calculation_pass.h"
#include "shell/base/user_interface.h"

namespace benchsupport {

// Progress goes nowhere; a message would take its default answer.
class SilentInterface : public bm::StreamUserInterface {
public:
    SilentInterface() : bm::StreamUserInterface(stderr) {}
    bm::MessageAnswer showMessage(const bm::MessageRequest& request) override { return bm::defaultAnswer(request); }
};

// The cost of one grid point, from the points computed over all iterations.
inline benchmark::Counter perPoint(double points) {
    return benchmark::Counter(points, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

// `count` inflow terms: term k starts at 10 (k - 1) with concentration k.
inline void setInflowTerms(bm::DataSet& d, int count) {
    d.superpositionIndex = static_cast<std::int16_t>(count);
    d.terms.redim(count);
    for (int k = 1; k <= count; ++k) {
        d.terms(k).time = std::to_string(10 * (k - 1));
        d.terms(k).concentration = std::to_string(k);
    }
}

// The points file, written once into the temporary folder as the build writes it.
inline void providePointsFile() {
    static const std::string path = [] {
        const auto file = std::filesystem::temp_directory_path() / "brenmoor_bench_glq.pts";
        std::ofstream(file, std::ios::binary) << bm::gaussPointsFileText();
        return file.string();
    }();
    bm::theAppState().gaussPointsFile = path;
}

// A range of `count` values spread over minimum..maximum.
inline std::string spread(double minimum, double maximum, int count) {
    return bm::formatNumber(minimum) + ":" + bm::formatNumber(maximum) + ":" +
           bm::formatNumber((maximum - minimum) / (count - 1));
}

// A one-dimensional model: velocity 0.3, porosity 0.3, retardation 1.5,
// the selected point at x 50 and t 100, `terms` inflow terms.
inline bm::DataSet oneDimModel(const char* aquifer, const char* contaminant, const char* xRange, const char* timeRange,
                  const char* halfLife, int terms, const char* dispersion = "1.2") {
    bm::DataSet d;
    d.modelType = "One Dimensional";
    d.aquiferType = aquifer;
    d.contaminantType = contaminant;
    d.calculationMode = "Regular";
    d.velocity = "0.3";
    d.porosity = "0.3";
    d.retardation = "1.5";
    d.dispersionX = dispersion;
    d.halfLife = halfLife;
    d.xRange = xRange;
    d.timeRange = timeRange;
    d.mcAtX = "50";
    d.mcAtT = "100";
    setInflowTerms(d, terms);
    bm::parseCoordinates(d, 1);
    return d;
}

// A two-dimensional model over 0..100 x -25..25 and times 0..100, the source
// at the origin (a strip 10 wide, a Gaussian of deviation 3, or a point injecting 0.5).
inline bm::DataSet twoDimModel(const char* aquifer, const char* contaminant, int nx, int ny, int nt) {
    bm::DataSet d;
    d.modelType = "Two Dimensional";
    d.aquiferType = aquifer;
    d.contaminantType = contaminant;
    d.calculationMode = "Regular";
    d.velocity = "0.3";
    d.porosity = "0.3";
    d.retardation = "1.5";
    d.dispersionX = "1.2";
    d.dispersionY = "0.12";
    d.halfLife = "200";
    d.netRecharge = "0";
    d.aquiferThickness = "10";
    d.sourceXc = "0";
    d.sourceYc = "0";
    d.sourceWidth = "10";
    d.sourceStdDev = "3";
    d.injectionRate = "0.5";
    d.xRange = spread(0, 100, nx);
    d.yRange = spread(-25, 25, ny);
    d.timeRange = spread(0, 100, nt);
    d.mcAtX = "50";
    d.mcAtY = "0";
    d.mcAtT = "100";
    d.superpositionIndex = 1;
    d.terms.redim(1);
    d.terms(1) = {"0", "1"};
    bm::parseCoordinates(d, 2);
    return d;
}

// A three-dimensional model over 0..100 x -25..25 x -10..10 and times 20..100,
// the source at the origin (a patch 10 by 4, or a point injecting 0.5).
inline bm::DataSet threeDimModel(const char* aquifer, const char* contaminant, int nx, int ny, int nz, int nt) {
    bm::DataSet d = twoDimModel(aquifer, contaminant, nx, ny, nt);
    d.modelType = "Three Dimensional";
    d.dispersionZ = "0.012";
    d.aquiferThickness = "20";
    d.sourceZc = "0";
    d.sourceHeight = "4";
    d.zRange = spread(-10, 10, nz);
    d.timeRange = spread(20, 100, nt);
    d.mcAtZ = "0";
    bm::parseCoordinates(d, 3);
    return d;
}

}  // namespace benchsupport
