#include "apps/brenmoor-calc/batch_calculator.h"

#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <stdexcept>

#include "apps/brenmoor-calc/batch_chemical.h"
#include "apps/brenmoor-calc/batch_outputs.h"
#include "apps/brenmoor-calc/batch_targets.h"
#include "files/code_page.h"
#include "files/data_file.h"
#include "files/safe_save.h"
#include "kernels/kernmc.h"
#include "model/data_set.h"
#include "model/number_text.h"
#include "montecarlo/pass/monte_setup.h"
#include "shell/base/error_handler.h"

namespace bm {

namespace {

bool takeValue(const std::vector<std::string>& args, std::size_t& i, std::string& value, std::string& error) {
    if (!value.empty()) {
        error = "option " + args[i] + " is given twice";
        return false;
    }
    if (i + 1 >= args.size() || args[i + 1].empty()) {
        error = "option " + args[i] + " needs a value";
        return false;
    }
    value = args[++i];
    return true;
}

// The most calculation threads asked for on the command line.
constexpr int kMostThreads = 1024;

// A text that is a whole number from `least` to `most`.
bool wholeNumberIn(const std::string& text, int least, int most) {
    if (!isNumeric(text)) return false;
    const double value = textValue(text);
    return value >= least && value <= most && value == static_cast<int>(value);
}

// A model kind in words, for the refusal of kinds this calculator cannot do yet.
std::string kindWords(const DataSet& data) {
    std::string words = data.modelType.empty() ? std::string("(no model type)") : data.modelType;
    if (data.multiChemical) words += " multiple-chemical";
    return words;
}

[[noreturn]] void raiseStandardOutputError(int error) {
    const std::string reason = error != 0 ? std::strerror(error) : "the stream failed";
    if (error == ENOSPC || error == EDQUOT || error == EFBIG)
        raiseError(err::DiskFull, "Disk full: standard output cannot be written (" + reason + ")");
    raiseError(err::PathFileAccessError, "Path/File access error: standard output cannot be written (" + reason + ")");
}

// Writes to standard output, checked: a full disk, a closed stream or a reader
// that has gone is an error like that of any other write.
void writeStandardOutput(const BatchStreams& streams, const std::string& bytes) {
    if (streams.standardOutputClosed) raiseStandardOutputError(EBADF);
    errno = 0;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), streams.standardOutput) == bytes.size();
    const bool flushed = std::fflush(streams.standardOutput) == 0;
    if (!written || !flushed || std::ferror(streams.standardOutput)) raiseStandardOutputError(errno);
}

// The handler's report of an error; a bounds error gets its line as well (the
// stream interface writes what the handler passes over).
int reportFailure(const RuntimeError& error, const std::string& context, const std::string& extra,
                  UserInterface& ui) {
    handleError(error, context, extra, ui);
    return kExitRuntimeError;
}

// A calculation step under the handler: every error it raises reported, a
// failed allocation as "Out Of Memory". False when it raised.
template <class Step>
bool guarded(Step step, const std::string& context, UserInterface& ui) {
    try {
        step();
        return true;
    } catch (const RuntimeError& e) {
        reportFailure(e, context, "", ui);
    } catch (const std::bad_alloc&) {
        reportFailure(RuntimeError(err::OutOfMemory), context, "", ui);
    } catch (const std::length_error&) {
        reportFailure(RuntimeError(err::OutOfMemory), context, "", ui);
    } catch (const std::exception& e) {
        reportFailure(RuntimeError(err::InvalidProcedureCall, e.what()), context, "", ui);
    }
    return false;
}

// A grid that claims fewer than no points is no result to write.
bool countsAreWhole(const DataSet& data) {
    return data.numXTerms >= 0 && data.numYTerms >= 0 && data.numZTerms >= 0 && data.numTTerms >= 0;
}

}  // namespace

std::string batchUsageText() {
    return "Usage: brenmoor-calc [--save FILE] [--output FILE] [--chemical N] [--generate [--seed N]]\n"
           "                    [--threads N] DATAFILE\n"
           "       brenmoor-calc --fit OBS --vary NAME[=LO:HI][,...] [--log NAME,...] [--plot FILE]\n"
           "                    [--save FILE] DATAFILE\n"
           "\n"
           "Reads a Brenmoor data file (.one .two .tri .mc1 .mc2 .mc3 .u1d .mcu .var),\n"
           "runs the calculation exactly as Calculate! does on that model, and writes:\n"
           "  --save FILE     the data file with its inputs and the new results\n"
           "  --output FILE   the output file (the grid, or the Monte Carlo iterations\n"
           "                  after a simulation), as the Results view writes it\n"
           "  --chemical N    in a multiple-chemical model, the chemical whose results\n"
           "                  the output file shows (default: the file's own choice)\n"
           "  --generate      draw new Monte Carlo samples from the file's variant table\n"
           "                  (with the checks of the simulation screen) before\n"
           "                  calculating; without it the file's samples are used\n"
           "  --seed N        seed the sample generator: the same seed and file give\n"
           "                  the same samples\n"
           "  --threads N     the threads the calculation spreads over (default: all\n"
           "                  cores); the results are the same with any number\n"
           + fitUsageText() +
           "  --help          this text\n"
           "FILE may be - for standard output. With neither --save nor --output the\n"
           "output file goes to standard output. A FILE must be a file or a new name: a\n"
           "folder, a named pipe or a device is refused, and so are --save and --output\n"
           "naming one file and --output naming the data file. No file is replaced\n"
           "until every output asked for is complete.\n"
           "\n"
           "Every message box of the run is written to standard error as TITLE: TEXT;\n"
           "an error that the workbench passes over in silence gets a line too.\n"
           "\n"
           "Exit status: 0 everything asked for was written; 1 wrong command line;\n"
           "2 input refused (the validator's message); 3 run-time error (a file that\n"
           "cannot be read or written, standard output included, an arithmetic fault,\n"
           "a run stopped, any error message of the run); 4 a model kind this version\n"
           "cannot calculate.\n";
}

bool parseBatchArguments(const std::vector<std::string>& args, BatchOptions& options, std::string& error) {
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--help" || a == "-h") {
            options.help = true;
        } else if (a == "--save") {
            if (!takeValue(args, i, options.savePath, error)) return false;
        } else if (a == "--output") {
            if (!takeValue(args, i, options.outputPath, error)) return false;
        } else if (a == "--chemical") {
            std::string n;
            if (options.chemical != 0) {
                error = "option --chemical is given twice";
                return false;
            }
            if (!takeValue(args, i, n, error)) return false;
            if (!wholeNumberIn(n, 1, 32767)) {
                error = "--chemical needs a whole number from 1";
                return false;
            }
            options.chemical = static_cast<int>(textValue(n));
        } else if (a == "--generate") {
            options.generate = true;
        } else if (a == "--seed") {
            std::string n;
            if (!takeValue(args, i, n, error)) return false;
            const std::string digits = trim(n);
            if (digits.empty() || digits.size() > 19 || digits.find_first_not_of("0123456789") != std::string::npos) {
                error = "--seed needs a whole number from 0";
                return false;
            }
            options.seed = std::stoull(digits);
        } else if (a == "--threads") {
            std::string n;
            if (!takeValue(args, i, n, error)) return false;
            if (!wholeNumberIn(n, 1, kMostThreads)) {
                error = "--threads needs a whole number from 1 to " + std::to_string(kMostThreads);
                return false;
            }
            options.threads = static_cast<int>(textValue(n));
        } else if (const int taken = takeFitOption(args, i, options.fit, error); taken != 0) {
            if (taken < 0) return false;
        } else if (a.size() > 1 && a[0] == '-' && a != "-") {
            error = "unknown option " + a;
            return false;
        } else if (options.dataFile.empty()) {
            options.dataFile = a;
        } else {
            error = "only one data file can be calculated at a time";
            return false;
        }
    }
    if (!options.help && options.dataFile.empty()) {
        error = "no data file given";
        return false;
    }
    if (!checkFitOptions(options.fit, error)) return false;
    if (options.savePath == "-" && options.outputPath == "-") {
        error = "--save and --output both name standard output";
        return false;
    }
    return true;
}

int calculateBatch(DataSet& data, const BatchOptions& options, StreamUserInterface& ui, std::FILE* diagnostics,
                   std::vector<BatchOutput>& outputs) {
    if (!batchCanCalculate(data)) {
        if (diagnostics)
            std::fprintf(diagnostics, "brenmoor-calc: the %s model of %s cannot be calculated by this version.\n",
                         kindWords(data).c_str(), options.dataFile.c_str());
        return kExitNotCalculable;
    }
    if (!chooseBatchChemical(data, options.chemical, ui)) return kExitUsage;

    if (options.seed) seedMonteCarlo(*options.seed);
    if (options.generate) {
        std::optional<GenerationOutcome> generated;
        if (!guarded([&] { generated = generateStoredVariants(data, ui); }, "Calculate", ui)) return kExitRuntimeError;
        if (generated == GenerationOutcome::Refused) return kExitInputRefused;
        if (generated == GenerationOutcome::Failed) return kExitRuntimeError;
    }

    bool accepted = false;
    if (!guarded([&] { accepted = batchAcceptsInput(data, ui); }, "Calculate", ui)) return kExitRuntimeError;
    if (!accepted) return kExitInputRefused;
    if (ui.troubleCount() > 0) return kExitRuntimeError;

    // A fit's report goes to standard output, unless a file goes there.
    std::string fitReport, fitPlot;
    if (options.fit.asked()) {
        char* buffer = nullptr;
        std::size_t size = 0;
        std::FILE* report = open_memstream(&buffer, &size);
        if (report == nullptr) return reportFailure(RuntimeError(err::OutOfMemory), "Calculate", "", ui);
        int status = kExitRuntimeError;
        guarded([&] { status = fitBatchModel(options.fit, data, ui, report, fitPlot); }, "Calculate", ui);
        std::fclose(report);
        std::string text(buffer, size);
        std::free(buffer);
        if (options.savePath != "-" && options.outputPath != "-") fitReport = std::move(text);
        else if (diagnostics) std::fputs(text.c_str(), diagnostics);
        if (status != kExitDone) return status;
        if (ui.troubleCount() > 0) return kExitRuntimeError;
    }

    bool finished = false;
    if (!guarded([&] { finished = runBatchModel(data, ui).value_or(BatchRunResult{}).finished; }, "Calculate", ui))
        return kExitRuntimeError;
    // An error the run passed over, or a message it went on after, leaves
    // results that nobody asked for.
    if (!finished || ui.troubleCount() > 0) return kExitRuntimeError;
    if (!countsAreWhole(data)) return reportFailure(RuntimeError(err::SubscriptOutOfRange), "Calculate", "", ui);

    const bool toStandardOutput = options.savePath.empty() && options.outputPath.empty() && !options.fit.asked();
    const std::string outputPath = toStandardOutput ? std::string("-") : options.outputPath;
    const bool composed = guarded(
        [&] {
            if (!fitReport.empty()) outputs.push_back({"-", fitReport});
            if (!options.fit.plotPath.empty()) outputs.push_back({options.fit.plotPath, utf8ToWindows1252(fitPlot)});
            if (!options.savePath.empty())
                outputs.push_back({options.savePath, utf8ToWindows1252(composeDataFile(data))});
            if (!outputPath.empty())
                outputs.push_back({outputPath, utf8ToWindows1252(batchOutputText(data).value_or(std::string()))});
        },
        "Calculate", ui);
    if (!composed || ui.troubleCount() > 0) {
        outputs.clear();
        return kExitRuntimeError;
    }
    return kExitDone;
}

int runBatch(const BatchOptions& options, StreamUserInterface& ui, const BatchStreams& streams) {
    const int standardOutputFd = streams.standardOutputClosed ? -1 : ::fileno(streams.standardOutput);
    if (const std::string why = refuseBatchTargets(options, standardOutputFd); !why.empty()) {
        std::fprintf(streams.diagnostics, "brenmoor-calc: %s\n", why.c_str());
        return kExitUsage;
    }

    DataSet data;
    try {
        readDataFile(data, options.dataFile, ExtensionRule::FileNameOwn);
    } catch (const RuntimeError& e) {
        return reportFailure(e, "File Error", options.dataFile, ui);
    } catch (const std::exception&) {
        return reportFailure(RuntimeError(err::OutOfMemory), "File Error", options.dataFile, ui);
    }
    std::vector<BatchOutput> outputs;
    if (const int status = calculateBatch(data, options, ui, streams.diagnostics, outputs); status != kExitDone)
        return status;

    // Then every file complete beside its target, then standard output, and
    // only then the targets replaced. A failure on the way removes the
    // temporary files and leaves every target as it was.
    std::string target;
    try {
        std::vector<std::pair<std::string, PreparedReplacement>> files;
        for (const BatchOutput& o : outputs) {
            target = o.path;
            if (o.path != "-") files.emplace_back(o.path, PreparedReplacement(o.path, o.bytes));
        }
        for (const BatchOutput& o : outputs) {
            if (o.path != "-") continue;
            target = "standard output";
            writeStandardOutput(streams, o.bytes);
        }
        for (auto& [path, file] : files) {
            target = path;
            file.commit();
        }
    } catch (const RuntimeError& e) {
        return reportFailure(e, "File Error", target, ui);
    } catch (const std::exception&) {
        return reportFailure(RuntimeError(err::OutOfMemory), "File Error", target, ui);
    }
    return kExitDone;
}

std::string programDirectory() {
    char buffer[PATH_MAX];
    const ssize_t n = readlink("/proc/self/exe", buffer, sizeof buffer - 1);
    if (n <= 0) return ".";
    std::string path(buffer, static_cast<std::size_t>(n));
    const auto slash = path.find_last_of('/');
    return slash == std::string::npos ? std::string(".") : path.substr(0, slash);
}

}  // namespace bm
