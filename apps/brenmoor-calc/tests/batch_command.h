#pragma once
// The batch calculator run as a user runs it: `brenmoor-calc OPTIONS --output
// OUTPUT INPUT`, its standard error into batch.err of the test's folder; the
// exit status (-1 when it did not exit).

#include <cstdlib>
#include <string>
#include <sys/wait.h>

#include "testing/test_paths.h"

namespace bm::testkit {

inline int runBatchCommand(const std::string& options, const std::string& input, const std::string& output,
                           const TempDir& dir) {
    const std::string command = std::string(BRENMOOR_CALC_PROGRAM) + " " + options + " --output '" + output + "' '" +
                                input + "' 2>'" + dir.file("batch.err") + "'";
    const int raw = std::system(command.c_str());
    return WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
}

}  // namespace bm::testkit
