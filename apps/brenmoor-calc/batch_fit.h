#pragma once
// brenmoor-calc --fit: the model of the data file fitted to observed
// concentrations. The report goes to standard output; the estimates go into
// the model's input rows, which the calculator then runs and writes as
// --save and --output ask; --plot FILE writes the fit's plot file for the
// plotting utility (the observations over the fitted curves, the residuals).

#include <cstdio>
#include <string>
#include <vector>

#include "fitting/fitter.h"
#include "model/data_set.h"
#include "shell/base/user_interface.h"

namespace bm {

struct BatchFitOptions {
    std::string observations;           // --fit FILE
    std::vector<VaryingInput> inputs;   // --vary NAME[=LO:HI],...  and --log NAME,...
    std::vector<std::string> logNames;
    std::string plotPath;               // --plot FILE
    bool asked() const { return !observations.empty(); }
};

// Takes --fit, --vary, --log or --plot at args[i] (and its value): 1 when taken, 0
// when args[i] is another option, -1 with the reason on a bad value.
int takeFitOption(const std::vector<std::string>& args, std::size_t& i, BatchFitOptions& fit, std::string& error);
// After the whole command line: --vary and --fit go together, --log names
// varying inputs, and --plot goes with --fit to a file.
bool checkFitOptions(BatchFitOptions& fit, std::string& error);

// The lines of the usage text.
std::string fitUsageText();

// Fits the model, writes the report to `report` and the estimates into the
// model's rows, and with --plot the plot file's text into `plotText`:
// kExitDone then, else the exit status (refused input 2, a fit that failed
// or was stopped 3) after the message.
int fitBatchModel(const BatchFitOptions& fit, DataSet& data, UserInterface& ui, std::FILE* report,
                  std::string& plotText);

}  // namespace bm
