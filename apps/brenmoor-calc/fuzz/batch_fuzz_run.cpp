#include "apps/brenmoor-calc/fuzz/batch_fuzz_run.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <exception>

#include "apps/brenmoor-calc/batch_calculator.h"
#include "files/code_page.h"
#include "files/data_file.h"
#include "model/app_state.h"
#include "model/ranges.h"
#include "shell/base/runtime_error.h"
#include "shell/screen/built_in_kinds.h"

namespace bm {

namespace {

constexpr std::int64_t kMostPoints = 400;
constexpr std::int32_t kMostIterations = 40;

std::int64_t termsOf(const std::string& range) {
    try {
        return std::max<std::int64_t>(1, std::abs(static_cast<std::int64_t>(parseRange(range).terms)));
    } catch (const RuntimeError&) {
        return 1;  // the run raises the same error at once
    }
}

// Whether the model's grid and simulation stay within the fuzzer's budget.
bool withinBudget(const DataSet& d) {
    const std::int64_t points = termsOf(d.xRange) * termsOf(d.yRange) * termsOf(d.zRange) * termsOf(d.timeRange);
    return points <= kMostPoints && d.monteIterations <= kMostIterations && d.superpositionIndex <= 20;
}

// As in the program, the process-wide interface is the run's own while it lasts.
class RunsInterface {
public:
    explicit RunsInterface(UserInterface& run) : before_(ui()) { setUserInterface(&run); }
    ~RunsInterface() { setUserInterface(&before_); }
    RunsInterface(const RunsInterface&) = delete;
    RunsInterface& operator=(const RunsInterface&) = delete;

private:
    UserInterface& before_;
};

// A count line of the output block ("Number of x terms: -3"); the same words
// elsewhere, in a title or a Monte Carlo record, are the user's own text. Every
// line of the input block has a label, so none is the block's end marker.
bool savesANegativeCount(const std::string& saved) {
    const std::size_t begin = saved.find("\r\n[End Input Data]\r\n");
    const std::size_t end = saved.find("\r\n[End Output Data]\r\n", begin);
    if (begin == std::string::npos || end == std::string::npos) return false;
    const std::string block = saved.substr(begin, end - begin);
    for (const char axis : {'x', 'y', 'z', 't'})
        if (block.find(std::string("\nNumber of ") + axis + " terms: -") != std::string::npos) return true;
    return false;
}

}  // namespace

void prepareBatchFuzzing(const std::string& pointsFile) {
    static const bool prepared = [&] {
        registerBuiltInKinds();
        theAppState().gaussPointsFile = pointsFile;
        return true;
    }();
    (void)prepared;
}

std::string batchFuzzViolation(const std::string& bytes) {
    static const char* const names[] = {"f.one", "f.two", "f.tri", "f.mc1", "f.mc2", "f.mc3", "f.u1d", "f.mcu", "f.var"};
    try {
        DataSet data;
        try {
            parseDataFile(data, windows1252ToUtf8(bytes), names[bytes.size() % 9], ExtensionRule::FileNameOwn);
        } catch (const RuntimeError&) {
            return {};  // refused by the reader: the reader's own fuzzer covers it
        }
        if (!withinBudget(data)) return {};
        BatchOptions options;
        options.dataFile = names[bytes.size() % 9];
        options.savePath = "saved";
        options.outputPath = "output";
        StreamUserInterface quiet(nullptr);
        const RunsInterface installed(quiet);
        std::vector<BatchOutput> outputs;
        const int status = calculateBatch(data, options, quiet, nullptr, outputs);
        if (status == kExitDone) {
            if (quiet.troubleCount() > 0) return "exit 0 after an error's line";
            if (outputs.size() != 2) return "exit 0 without both outputs";
            if (outputs[0].bytes.find("[End File]") == std::string::npos) return "exit 0 with an incomplete data file";
            if (savesANegativeCount(outputs[0].bytes)) return "exit 0 with a negative count saved";
        } else if (status != kExitNotCalculable) {
            if (quiet.troubleCount() == 0) return "exit " + std::to_string(status) + " without a message";
            if (!outputs.empty()) return "a failed run kept its outputs";
        }
    } catch (const std::exception& e) {
        return std::string("an exception escaped: ") + e.what();
    } catch (...) {
        return "an exception escaped";
    }
    return {};
}

}  // namespace bm
