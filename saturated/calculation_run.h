#pragma once
// The calculation run of the saturated model screen, without its screen: the
// pass of one dimension (regular run or Monte Carlo simulation), the Stop
// button's question, and calculateRoutine with its error path.
//
// A dimension plugs in through a CalculationPass: the texts of its input rows
// (scanned for "Monte"), the function that fills its parameters record and runs
// its driver for one iteration, its mcResult list and its model kind. The one-
// dimensional pass is built in; the two- and three-dimensional ones are added
// with registerCalculationPass (see builtInCalculationPasses in the source).

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "model/arrays.h"
#include "model/data_set.h"
#include "shell/user_interface.h"

namespace bm {

struct CalculationPass {
    // The modelType word this pass answers to ("One Dimensional").
    std::string modelType;
    // Whose model store gives monteIterations, and whose stale flag
    // (mcPointChanged) a finished or stopped pass clears.
    ModelKind kind = ModelKind::OneDimensional;
    // The texts of the dimension's input rows, in row order.
    std::function<std::vector<std::string>(const DataSet&)> inputRows;
    // Fills the dimension's parameters record for iteration i (simulate tells
    // whether MonteMarkers are read as samples) and runs its driver; returns the
    // driver's value.
    std::function<double(DataSet&, bool simulate, int iteration, UserInterface&)> runIteration;
    // The dimension's list of iteration results, 0 .. n - 1.
    List<double> DataSet::*mcResult = &DataSet::mcResult1D;
    // Statistics of a finished simulation, given n; not called in a regular run
    // nor after Stop. Empty: nothing to do.
    std::function<void(DataSet&, int n, UserInterface&)> statistics;
    // The screen whose bar shows a simulation's iterations; empty: the saturated
    // screens' (inputForm, or MCInputForm in a multi-chemical model).
    std::function<ProgressOwner(const DataSet&)> progressOwner;
};

// The input rows of the saturated screen as DataSet texts, without the
// concentration caption row: one dimension rows 0..10 without 9, two
// dimensions 0..18 without 17, three dimensions 0..22 without 21.
std::vector<std::string> oneDimInputRows(const DataSet& data);
std::vector<std::string> twoDimInputRows(const DataSet& data);
std::vector<std::string> threeDimInputRows(const DataSet& data);

// The one-dimensional pass: fillOneDimParameters + solveOneDimensional.
CalculationPass oneDimensionalPass();

// Adds a pass, or replaces the one of the same modelType.
void registerCalculationPass(CalculationPass pass);
// The pass of a modelType (exact word), or nullptr.
const CalculationPass* calculationPassFor(std::string_view modelType);

enum class PassEnding { Finished, Stopped };

// The pass of one dimension: the mode scan, the iterations with the Stop test at
// the top of each, the boundary-concentration scaling and the statistics hook.
// Run-time errors propagate.
PassEnding runCalculationPass(DataSet& data, const CalculationPass& pass, UserInterface& ui);

// A varying inflow concentration: when the first term's text holds a marker,
// each iteration's unit result is multiplied by that iteration's sample of the
// marker's row (the solution is linear in the inflow concentration).
void scaleByBoundarySamples(DataSet& data, List<double>& results, int iterations);

struct CalculationOutcome {
    bool finished = false;     // the pass ran to its end or to a Stop, without a run-time error
    bool stopped = false;      // Stop ended the pass between iterations (a Stop inside a grid ends the driver only)
    std::string resultLabel;   // text of the dimension's result label (LabelResult1D ...)
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
// pass of modelType, clears the kind's stale flag, sets the label, clears
// stopRequested again. A run-time error goes to handleError and the outcome is
// not finished. A modelType without a pass runs nothing and is not finished.
CalculationOutcome calculateRoutine(DataSet& data, UserInterface& ui);
CalculationOutcome calculateRoutine(DataSet& data, UserInterface& ui, const CalculationPass& pass);

// The calculation's parse step: the counts and Constants of the coordinates of
// the model type (x and t; y for two, y and z for three dimensions) and a
// cleared currentConcentration.
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
