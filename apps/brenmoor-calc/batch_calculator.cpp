#include "apps/brenmoor-calc/batch_calculator.h"

#include <unistd.h>

#include <climits>
#include <exception>

#include "apps/brenmoor-calc/batch_chemical.h"
#include "apps/brenmoor-calc/batch_outputs.h"
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
    if (i + 1 >= args.size()) {
        error = "option " + args[i] + " needs a value";
        return false;
    }
    value = args[++i];
    return true;
}

// A model kind in words, for the refusal of kinds this calculator cannot do yet.
std::string kindWords(const DataSet& data) {
    std::string words = data.modelType.empty() ? std::string("(no model type)") : data.modelType;
    if (data.multiChemical) words += " multiple-chemical";
    return words;
}

// Writes bytes to a path ("-" is standard output); run-time errors as the writers raise them.
void deliver(const std::string& path, const std::string& utf8, std::FILE* standardOutput) {
    const std::string bytes = utf8ToWindows1252(utf8);
    if (path == "-") {
        std::fwrite(bytes.data(), 1, bytes.size(), standardOutput);
        std::fflush(standardOutput);
        return;
    }
    replaceFileContents(path, bytes);
}

}  // namespace

std::string batchUsageText() {
    return "Usage: brenmoor-calc [--save FILE] [--output FILE] [--chemical N] [--generate [--seed N]] DATAFILE\n"
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
           "  --help          this text\n"
           "FILE may be - for standard output. With neither --save nor --output the\n"
           "output file goes to standard output. A file is replaced only once the new\n"
           "one is complete.\n"
           "\n"
           "Every message box of the run is written to standard error as TITLE: TEXT.\n"
           "\n"
           "Exit status: 0 done; 1 wrong command line; 2 input refused (the validator's\n"
           "message); 3 run-time error (a file that cannot be read or written, an\n"
           "arithmetic fault, a run stopped); 4 a model kind this version cannot calculate.\n";
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
            if (!takeValue(args, i, n, error)) return false;
            if (!isNumeric(n) || textValue(n) < 1 || textValue(n) > 32767 || textValue(n) != static_cast<int>(textValue(n))) {
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
    if (!options.savePath.empty() && options.savePath == options.outputPath && options.savePath != "-") {
        error = "--save and --output name the same file";
        return false;
    }
    return true;
}

int runBatch(const BatchOptions& options, UserInterface& ui, std::FILE* standardOutput, std::FILE* diagnostics) {
    DataSet data;
    try {
        readDataFile(data, options.dataFile);
    } catch (const RuntimeError& e) {
        // A bounds error, which the handler passes over in silence, means a
        // file of no recognised format, as when the workbench opens it.
        if (e.number() == err::SubscriptOutOfRange)
            handleError(err::InputPastEndOfFile, "File Error", options.dataFile, ui);
        else
            handleError(e, "File Error", options.dataFile, ui);
        return kExitRuntimeError;
    } catch (const std::exception&) {
        handleError(err::OutOfMemory, "File Error", options.dataFile, ui);
        return kExitRuntimeError;
    }
    if (!batchCanCalculate(data)) {
        std::fprintf(diagnostics, "brenmoor-calc: the %s model of %s cannot be calculated by this version.\n",
                     kindWords(data).c_str(), options.dataFile.c_str());
        return kExitNotCalculable;
    }
    if (!chooseBatchChemical(data, options.chemical, ui)) return kExitUsage;

    if (options.seed) seedMonteCarlo(*options.seed);
    if (options.generate) {
        const std::optional<GenerationOutcome> generated = generateStoredVariants(data, ui);
        if (generated == GenerationOutcome::Refused) return kExitInputRefused;
        if (generated == GenerationOutcome::Failed) return kExitRuntimeError;
    }

    if (!batchAcceptsInput(data, ui)) return kExitInputRefused;

    const auto run = runBatchModel(data, ui);
    if (!run || !run->finished) return kExitRuntimeError;

    const bool toStandardOutput = options.savePath.empty() && options.outputPath.empty();
    const std::string outputPath = toStandardOutput ? std::string("-") : options.outputPath;
    std::string target;
    try {
        if (!options.savePath.empty()) {
            target = options.savePath;
            if (options.savePath == "-") deliver("-", composeDataFile(data), standardOutput);
            else writeDataFile(data, options.savePath);
        }
        if (!outputPath.empty()) {
            target = outputPath;
            const auto text = batchOutputText(data);
            deliver(outputPath, text.value_or(std::string()), standardOutput);
        }
    } catch (const RuntimeError& e) {
        handleError(e, "File Error", target, ui);
        return kExitRuntimeError;
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
