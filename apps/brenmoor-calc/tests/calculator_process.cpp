#include "calculator_process.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "testing/test_paths.h"

namespace bm::testkit {

CalculatorRun runCalculator(const std::vector<std::string>& arguments, const std::string& folder,
                            StandardOutput standardOutput, int seconds) {
    const TempDir streams;
    const std::string outPath = streams.file("stdout"), errPath = streams.file("stderr");
    int pipeEnds[2] = {-1, -1};
    if (standardOutput == StandardOutput::PipeWithoutReader) {
        if (::pipe(pipeEnds) != 0) return {};
        ::close(pipeEnds[0]);  // the reader is gone before the first byte
    }

    std::vector<std::string> words = {BRENMOOR_CALC_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& w : words) argv.push_back(w.data());
    argv.push_back(nullptr);

    const pid_t child = ::fork();
    if (child == 0) {
        if (::chdir(folder.c_str()) != 0) ::_exit(127);
        const int err = ::open(errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        ::dup2(err, 2);
        switch (standardOutput) {
        case StandardOutput::File: ::dup2(::open(outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644), 1); break;
        case StandardOutput::Closed: ::close(1); break;
        case StandardOutput::FullDevice: ::dup2(::open("/dev/full", O_WRONLY), 1); break;
        case StandardOutput::PipeWithoutReader: ::dup2(pipeEnds[1], 1); break;
        }
        // The program decides for itself what a broken pipe means.
        ::signal(SIGPIPE, SIG_DFL);
        ::execv(argv[0], argv.data());
        ::_exit(127);
    }
    if (pipeEnds[1] >= 0) ::close(pipeEnds[1]);
    CalculatorRun run;
    int raw = 0;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    while (::waitpid(child, &raw, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > deadline) {
            ::kill(child, SIGKILL);
            ::waitpid(child, &raw, 0);
            break;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    run.exited = WIFEXITED(raw);
    run.status = run.exited ? WEXITSTATUS(raw) : WTERMSIG(raw);
    if (std::filesystem::exists(outPath)) run.out = readFileBytes(outPath);
    run.err = readFileBytes(errPath);
    return run;
}

}  // namespace bm::testkit
