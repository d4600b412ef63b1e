#pragma once
// What a model kind brings to the one calculation pass, and the registry of
// the kinds that can be calculated. The pass (calculation_pass.h) knows no
// kind: it scans the kind's input rows for "Monte", lays out its grid, runs
// its iterations (fill, then solve at the grid or at the simulation's point),
// stores each value in the kind's results of the chemical, and hands the
// finished run to the kind's statistics. The batch calculator validates and
// writes through the same registration.
//
// The built-in kinds register explicitly (registerBuiltInKinds, called by the
// programs and the tests); a new kind registers its own KindCalculation.

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "model/data_set.h"
#include "model/model_kinds.h"
#include "montecarlo/monte_variants.h"
#include "shell/base/user_interface.h"

namespace bm {

struct PassResult;  // calculation_pass.h

struct KindCalculation {
    ModelKind kind = ModelKind::OneDimensional;

    // The checks before a run on the DataSet alone, for the batch calculator
    // (a screen validates its own rows): false after the refusing message.
    // Empty: every input is accepted.
    std::function<bool(DataSet&, UserInterface&)> validate;

    // The texts of the kind's input rows, in row order; any of them holding
    // "Monte" makes the run a simulation.
    std::function<std::vector<std::string>(const DataSet&)> inputRows;

    // The calculation's parse step: the counts and Constants of the kind's
    // coordinate ranges (x, then y and z as its dimension has them, then t).
    // A kind whose driver counts its own lists turns it off.
    bool parsesCoordinates = true;

    // The grid laid out once before the iterations (lists, counts, result
    // grid); empty for a driver that lays out its grid at every call.
    std::function<void(DataSet&, bool simulate, UserInterface&)> layOutGrid;

    // A simulation refused before anything is computed: true after the
    // refusing message; the results stay at zero. Asked at the first
    // iteration (after its Stop test). Empty: never refused.
    std::function<bool(const DataSet&, int iterations, UserInterface&)> refuses;

    // One iteration: fills the kind's record from the DataSet (samples of
    // iteration i when simulating) and solves, over the grid in a regular run
    // or at the simulation's point. The value to store, or nothing when Stop
    // ended the solve inside its grid (the pass then ends as stopped).
    std::function<std::optional<double>(DataSet&, bool simulate, int iteration, UserInterface&)> iterate;

    // Each iteration's unit result is scaled by the sample of a varying inflow
    // concentration (the solution is linear in it).
    bool scalesByInflowSamples = true;
    // After a finished simulation, given n (the statistics step). Empty: none.
    std::function<void(DataSet&, int n, UserInterface&)> statistics;

    // The results of a chemical, one value per iteration. Empty: the model-kind
    // table's lists.
    std::function<IterationResults(DataSet&, int chemical)> results;
    // The upper bounds of the regular result grid in axis order (x, y, z as the
    // dimension has them, then t), for telling whether it fits the inputs.
    std::function<std::vector<int>(const DataSet&)> resultGridBounds;

    // The output file after a regular run and after a simulation.
    std::function<std::string(const DataSet&)> regularOutput;
    std::function<std::string(const DataSet&)> simulationOutput;

    // The inputs the simulation screen offers to vary, named by their rows'
    // captions, in the order it lists them (the inflow concentration follows
    // them on its own). Empty: the kind offers none.
    std::function<std::vector<MonteVariant>(const DataSet&)> monteVariants;
    // Listed after the inflow concentration: the chemicals' values of a
    // multi-chemical kind (chemicalVariants of monte_variants.h).
    std::function<std::vector<MonteVariant>(const DataSet&)> chemicalVariants;

    // A kind that solves several problems per run (a decay chain solves one
    // per chemical and couples them) runs its own loop once the mode scan has
    // told a regular run from a simulation. Empty: the pass's loop.
    std::function<PassResult(DataSet&, bool simulate, UserInterface&)> ownPass;
};

// An iteration made of a fill and a solve over the kind's parameter record:
// fill(data, record, simulate, iteration), then
// solve(data, record, simulate, iteration, ui) gives the value.
template <class Record, class Fill, class Solve>
std::function<std::optional<double>(DataSet&, bool, int, UserInterface&)> fillThenSolve(Fill fill, Solve solve) {
    return [fill, solve](DataSet& data, bool simulate, int iteration, UserInterface& ui) -> std::optional<double> {
        Record record;
        fill(data, record, simulate, iteration);
        return solve(data, record, simulate, iteration, ui);
    };
}

// Adds a kind, or replaces the registration of the same kind.
void registerKindCalculation(KindCalculation calculation);
// The registration of a kind, or nullptr.
const KindCalculation* kindCalculationFor(ModelKind kind);
// The registration of the open model's kind (modelType and multiChemical), or nullptr.
const KindCalculation* kindCalculationOf(const DataSet& data);

// The results of a chemical through the kind's registration.
IterationResults kindResults(const KindCalculation& calculation, DataSet& data, int chemical = 1);

}  // namespace bm
