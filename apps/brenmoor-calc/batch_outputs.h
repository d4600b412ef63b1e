#pragma once
// What the batch calculator does with each model kind: how it runs, and the
// output file it writes (the regular file, or the Monte Carlo file after a
// simulation).

#include <optional>
#include <string>

#include "model/data_set.h"
#include "shell/user_interface.h"

namespace bm {

struct BatchRunResult {
    bool finished = false;  // ran to its end without a run-time error or a Stop
};

// Runs the model as Calculate! does on its screen; run-time errors are reported
// through the handler. Nothing for a kind the calculator cannot do.
std::optional<BatchRunResult> runBatchModel(DataSet& data, UserInterface& ui);

// The output text of the model in `data`, or nothing for a kind without a writer.
std::optional<std::string> batchOutputText(const DataSet& data);

// The screen's checks before a run that the batch calculator repeats; false
// after the refusing message has been shown.
bool batchAcceptsInput(DataSet& data, UserInterface& ui);

// Whether the batch calculator can calculate and write the model.
bool batchCanCalculate(const DataSet& data);

}  // namespace bm
