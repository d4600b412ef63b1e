#pragma once
// What the two- and three-dimensional driver benchmarks share: a user
// interface that swallows progress, the points file written where the drivers
// find it, and a range text of a given count over a fixed span.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "kernels/gauss_legendre.h"
#include "model/app_state.h"
#include "model/number_text.h"
#include "shell/user_interface.h"

namespace benchsupport {

// Progress goes nowhere; a message would take its default answer.
class SilentInterface : public bm::StreamUserInterface {
public:
    SilentInterface() : bm::StreamUserInterface(stderr) {}
    bm::MessageAnswer showMessage(const bm::MessageRequest& request) override { return bm::defaultAnswer(request); }
};

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
