#pragma once
// The one calculation pass of every model kind, regular run and Monte Carlo
// simulation alike, and the steps around it: calculateRoutine with its error
// path, Calculate! without a screen (runCalculation), the Stop button's
// question and the result label. What differs between kinds comes from their
// registration (kind_calculation.h) and the model-kind table.

#include <string>
#include <string_view>

#include "model/data_set.h"
#include "montecarlo/pass/kind_calculation.h"
#include "shell/base/user_interface.h"

namespace bm {

enum class PassEnding {
    Finished,  // every iteration ran
    Stopped,   // Stop ended the pass between iterations or inside a grid
    Refused,   // the kind refused the simulation before computing anything
};

struct PassResult {
    PassEnding ending = PassEnding::Finished;
    int iterations = 0;      // n: the simulation's count, or 2 in a regular run (the loop runs n - 1 times)
    int stored = 0;          // iterations whose value was stored
    double lastValue = 0.0;  // the last value stored (0 when none)
};

// The pass: "Regular", or "Monte Carlo" when an input row of the kind holds
// "Monte" or monteCarloModeOn is set; n - 1 iterations (n the kind's
// monteIterations in a simulation, else 2, so a regular run is the same loop
// run once), each with the Stop test at its top, its value stored in the
// results of chemical 1, the progress bar advanced in a simulation; then the
// inflow-sample scaling and the statistics of a finished simulation.
// Run-time errors propagate.
PassResult runCalculationPass(DataSet& data, const KindCalculation& kind, UserInterface& ui);

// A varying inflow concentration: when the first term's text holds a marker,
// each iteration's unit result is multiplied by that iteration's sample of the
// marker's row (the solution is linear in the inflow concentration).
void scaleByBoundarySamples(DataSet& data, IterationResults& results, int iterations);

struct CalculationOutcome {
    bool finished = false;     // the pass ran to its end, a Stop or a refusal, without a run-time error
    bool stopped = false;      // Stop ended the pass, or the kind refused the simulation
    std::string resultLabel;   // text of the result label (LabelResult1D ...)
    std::string resultCaption; // "Computed at" or "Monte Carlo Computed at"
};

// Result label after a run: "Monte Carlo" when calculationMode holds
// "Monte Carlo", else the current concentration through formatNumber.
std::string resultLabelAfterRun(const DataSet& data);
// Caption in front of it.
std::string resultCaptionAfterRun(const DataSet& data);
// The label as the screen refreshes it from calculationMode: the text as it
// stands when it holds an "R" or an "M" ("Regular", "Monte Carlo"), else the
// number it holds through formatNumber.
std::string resultLabelFromMode(std::string_view calculationMode);

// calculateRoutine: clears stopRequested, lets events through once, runs the
// pass of the kind, clears the kind's stale flag, sets the label, clears
// stopRequested again. A run-time error goes to handleError and the outcome is
// not finished. A model without a registered kind runs nothing and is not finished.
// `context` is where the error report says the error struck.
CalculationOutcome calculateRoutine(DataSet& data, UserInterface& ui, const std::string& context = "Calculate");
CalculationOutcome calculateRoutine(DataSet& data, UserInterface& ui, const KindCalculation& kind,
                                    const std::string& context = "Calculate");

// The calculation's parse step: the counts and Constants of the coordinate
// ranges of a model of `dimension` (x and t; y for two, y and z for three) and
// a cleared currentConcentration.
void parseCoordinates(DataSet& data, int dimension);
// The parse step of the open model as its kind has it (the dimension of its
// row of the model-kind table; none for a kind that counts its own lists); a
// model whose kind is not registered counts x and t.
void parseCoordinates(DataSet& data);

// Calculate! without a screen, for the batch calculator (validation is the
// caller's): the busy pointer, the notice about a varying initial
// concentration, the parse step, calculateRoutine, a dataState of 1 turned into
// 2 at the end of a finished run, and the pointer restored.
CalculationOutcome runCalculation(DataSet& data, UserInterface& ui);

// The Stop button: asks "Stop Calculation" (Yes/No, No the default); Yes sets
// stopRequested, No clears it. The busy pointer comes back either way.
void stopButtonClicked(DataSet& data, UserInterface& ui);

inline constexpr const char* kStopTitle = "Stop Calculation";
inline constexpr const char* kStopText =
    "Do you want to stop computation process?\r\n\r\nIf YES is selected the output viewed through the Results menu "
    "would not be correct.";
inline constexpr const char* kInitialConcentrationTitle = "Information";
inline constexpr const char* kInitialConcentrationText =
    "Initial Concentration (Co) is selected for Monte Carlo simulation analysis\r\nin this case. Please pay "
    "attention that the computed concentration at the\r\nspecified point is not normalized.";

}  // namespace bm
