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

}  // namespace benchsupport
