#pragma once
// The batch calculator run on a file a screen saved or read, its output file
// written to `output` and its messages to "batch.err" in the folder: the
// comparison of a screen's run with the batch calculator's.

#include <cstdlib>
#include <string>
#include <sys/wait.h>

#include "testing/test_paths.h"

namespace bm::testkit {

inline int runBatch(const std::string& input, const std::string& output, const TempDir& dir) {
    const std::string command = std::string(BRENMOOR_CALC_PROGRAM) + " --output '" + output + "' '" + input + "' 2>'" +
                                dir.file("batch.err") + "'";
    const int raw = std::system(command.c_str());
    return WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
}

}  // namespace bm::testkit
