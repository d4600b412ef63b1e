#pragma once
// What the batch calculator does with the model of a data file, kind by kind
// through the kinds registered with the calculation pass: whether it can
// calculate it, the checks before the run, the run, and the output file (the
// regular file, or the Monte Carlo file after a simulation).

#include <optional>
#include <string>

#include "model/data_set.h"
#include "shell/base/user_interface.h"

namespace bm {

struct BatchRunResult {
    bool finished = false;  // ran to its end without a run-time error, a Stop or a refusal
};

// Whether a kind is registered for the model (the multi-chemical models are not).
bool batchCanCalculate(const DataSet& data);

// The kind's checks before a run, on the DataSet; false after the refusing
// message has been shown. A kind without checks accepts every input.
bool batchAcceptsInput(DataSet& data, UserInterface& ui);

// Runs the model as Calculate! does on its screen; run-time errors are reported
// through the handler. Nothing for a kind the calculator cannot do.
std::optional<BatchRunResult> runBatchModel(DataSet& data, UserInterface& ui);

// The output text of the model in `data`, or nothing for a kind without a writer.
std::optional<std::string> batchOutputText(const DataSet& data);

}  // namespace bm
