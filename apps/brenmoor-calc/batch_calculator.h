#pragma once
// brenmoor-calc: reads a data file, runs the calculation exactly as Calculate!
// would on that model, and writes the data file with its results and/or the
// output file. Every message box of the run goes to the user interface given
// (standard error in the program, as "TITLE: TEXT").

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "apps/brenmoor-calc/batch_fit.h"
#include "model/data_set.h"
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
    bool generate = false;   // new samples from the file's variant table before calculating
    std::optional<std::uint64_t> seed;  // the random generator's seed (else a fresh one)
    int threads = 0;         // calculation threads; 0: all cores
    bool help = false;
    BatchFitOptions fit;
};

// Where the run writes besides its targets.
struct BatchStreams {
    std::FILE* standardOutput = stdout;  // the "-" outputs
    bool standardOutputClosed = false;   // the program started without one
    std::FILE* diagnostics = stderr;     // the calculator's own lines (not message boxes)
};

// Parses the command line (without the program name). False with a reason on
// misuse: an unknown option, a missing or empty value, an option given twice,
// no data file or two.
bool parseBatchArguments(const std::vector<std::string>& arguments, BatchOptions& options, std::string& error);

std::string batchUsageText();

// An output of a run: its target ("-" for standard output) and its bytes as
// they go to disk.
struct BatchOutput {
    std::string path;
    std::string bytes;
};

// The run on a model read already: the kind's checks, the calculation and
// every output made in memory (`outputs`, empty unless the run succeeded).
// Returns the exit status as runBatch does; a model this version cannot
// calculate is told on `diagnostics`.
int calculateBatch(DataSet& data, const BatchOptions& options, StreamUserInterface& ui, std::FILE* diagnostics,
                   std::vector<BatchOutput>& outputs);

// Runs one file; returns the exit status, 0 only when every output asked for
// has been written. The targets are checked first (batch_targets.h); every
// output is then made in memory and written to a temporary file beside its
// target, and the targets are replaced only once all of them and standard
// output have been written. Any error, and any message but a notice, fails
// the run with nothing replaced.
int runBatch(const BatchOptions& options, StreamUserInterface& ui, const BatchStreams& streams);

// The directory of the running program (for glq.pts beside it).
std::string programDirectory();

}  // namespace bm
