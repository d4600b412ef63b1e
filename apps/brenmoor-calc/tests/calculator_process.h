#pragma once
// Runs brenmoor-calc as a child process with an argument list (no shell, so
// any file name passes as it is) and a chosen standard output: a file, a
// closed descriptor, /dev/full, or a pipe whose reader has gone.

#include <string>
#include <vector>

namespace bm::testkit {

enum class StandardOutput { File, Closed, FullDevice, PipeWithoutReader };

struct CalculatorRun {
    bool exited = false;  // false: ended by a signal (or never started)
    int status = -1;      // exit status, or the signal's number when !exited
    std::string out, err;
};

// Runs the program in `folder` (relative paths in `arguments` start there),
// waiting at most `seconds` before it is killed. `out` holds standard output
// when it went to a file.
CalculatorRun runCalculator(const std::vector<std::string>& arguments, const std::string& folder,
                            StandardOutput standardOutput = StandardOutput::File, int seconds = 60);

}  // namespace bm::testkit
