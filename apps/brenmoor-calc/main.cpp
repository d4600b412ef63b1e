#include <cstdio>
#include <string>
#include <vector>

#include "apps/brenmoor-calc/batch_calculator.h"
#include "model/app_state.h"
#include "montecarlo/pass/ordered_batches.h"
#include "shell/screen/built_in_kinds.h"

int main(int argc, char** argv) {
    std::vector<std::string> arguments(argv + 1, argv + argc);
    bm::BatchOptions options;
    std::string error;
    if (!bm::parseBatchArguments(arguments, options, error)) {
        std::fprintf(stderr, "brenmoor-calc: %s\n\n%s", error.c_str(), bm::batchUsageText().c_str());
        return bm::kExitUsage;
    }
    if (options.help) {
        std::fputs(bm::batchUsageText().c_str(), stdout);
        return bm::kExitDone;
    }
    bm::setCalculationThreads(options.threads);
    bm::registerBuiltInKinds();
    bm::theAppState().appPath = bm::programDirectory();
    bm::theAppState().gaussPointsFile = bm::theAppState().appPath + "/glq.pts";
    bm::StreamUserInterface messages(stderr);
    bm::setUserInterface(&messages);
    return bm::runBatch(options, messages, stdout, stderr);
}
