#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <unistd.h>
#include <vector>

#include "apps/brenmoor-calc/batch_calculator.h"
#include "files/temporary_files.h"
#include "model/app_state.h"
#include "montecarlo/pass/ordered_batches.h"
#include "shell/screen/built_in_kinds.h"

namespace {

// A standard stream the program was started without is opened on /dev/null,
// so that no file the run opens takes its number and receives what was meant
// for the stream. Returns whether the stream was open.
bool holdStandardStream(int fd, int flags) {
    if (::fcntl(fd, F_GETFD) != -1) return true;
    const int opened = ::open("/dev/null", flags | O_CLOEXEC);
    if (opened >= 0 && opened != fd) {
        ::dup2(opened, fd);
        ::close(opened);
    }
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    holdStandardStream(STDIN_FILENO, O_RDONLY);
    const bool standardOutputOpen = holdStandardStream(STDOUT_FILENO, O_WRONLY);
    holdStandardStream(STDERR_FILENO, O_WRONLY);
    // A reader of standard output that goes away is a write error to report,
    // not a signal that ends the program without a word.
    std::signal(SIGPIPE, SIG_IGN);
    bm::removeTemporaryFilesOnTermination();

    std::vector<std::string> arguments(argv + 1, argv + argc);
    bm::BatchOptions options;
    std::string error;
    if (!bm::parseBatchArguments(arguments, options, error)) {
        std::fprintf(stderr, "brenmoor-calc: %s\n\n%s", error.c_str(), bm::batchUsageText().c_str());
        return bm::kExitUsage;
    }
    if (options.help) {
        const std::string usage = bm::batchUsageText();
        const bool written = std::fwrite(usage.data(), 1, usage.size(), stdout) == usage.size();
        return written && std::fflush(stdout) == 0 && standardOutputOpen ? bm::kExitDone : bm::kExitRuntimeError;
    }
    bm::setCalculationThreads(options.threads);
    bm::registerBuiltInKinds();
    bm::theAppState().appPath = bm::programDirectory();
    bm::theAppState().gaussPointsFile = bm::theAppState().appPath + "/glq.pts";
    bm::StreamUserInterface messages(stderr);
    bm::setUserInterface(&messages);
    bm::BatchStreams streams;
    streams.standardOutputClosed = !standardOutputOpen;
    return bm::runBatch(options, messages, streams);
}
