#pragma once
// brenmoor-calc: reads a data file, runs the calculation exactly as Calculate!
// would on that model, and writes the data file with its results and/or the
// output file. Every message box of the run goes to the user interface given
// (standard error in the program, as "TITLE: TEXT").

#include <cstdio>
#include <string>
#include <vector>

#include "apps/brenmoor-calc/batch_fit.h"
#include "shell/base/user_interface.h"

namespace bm {

inline constexpr int kExitDone = 0;
inline constexpr int kExitUsage = 1;
inline constexpr int kExitInputRefused = 2;
inline constexpr int kExitRuntimeError = 3;
inline constexpr int kExitNotCalculable = 4;

struct BatchOptions {
    std::string dataFile;
    std::string savePath;    // "-" is standard output
    std::string outputPath;  // "-" is standard output
    int chemical = 0;        // 0: the file's own choice
    bool help = false;
    BatchFitOptions fit;
};

// Parses the command line (without the program name). False with a reason on misuse.
bool parseBatchArguments(const std::vector<std::string>& arguments, BatchOptions& options, std::string& error);

std::string batchUsageText();

// Runs one file; returns the exit status. Diagnostics of the calculator itself
// (not message boxes) go to `diagnostics`; "-" outputs go to `standardOutput`.
int runBatch(const BatchOptions& options, UserInterface& ui, std::FILE* standardOutput, std::FILE* diagnostics);

// The directory of the running program (for glq.pts beside it).
std::string programDirectory();

}  // namespace bm
