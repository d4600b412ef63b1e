#include "apps/brenmoor-calc/batch_outputs.h"

#include <new>

#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "saturated/calculation_run.h"
#include "saturated/input_validation.h"
#include "saturated/output_file.h"
#include "shell/error_handler.h"
#include "timevarying/var_output.h"
#include "timevarying/var_solution.h"
#include "unsaturated/unsat_output.h"
#include "unsaturated/unsat_radicand.h"

namespace bm {

namespace {

bool isSimulation(const DataSet& data) { return contains(data.calculationMode, "Monte Carlo"); }

// The time-varying driver carries its own loop over iterations.
BatchRunResult runTimeVarying(DataSet& data, UserInterface& ui) {
    data.stopRequested = false;
    try {
        solveTimeVarying(data, ui);
    } catch (const RuntimeError& e) {
        handleError(e, "Calculate", "", ui);
        return {};
    } catch (const std::bad_alloc&) {
        handleError(err::OutOfMemory, "Calculate", "", ui);
        return {};
    }
    if (data.dataState == kParametersChanged) data.dataState = kNeedsSaving;
    return {true};
}

// The unsaturated screen's last check: with a decaying source and no value
// under simulation, the square root of the solution must have a real argument.
bool unsaturatedRadicandAccepted(const DataSet& d, UserInterface& ui) {
    if (d.contaminantType == "Dirichlet") return true;
    for (const std::string* field : {&d.velocity, &d.dispersionX, &d.halfLife, &d.bulkDensity, &d.distributionCoefficient,
                                     &d.porosity, &d.saturation, &d.sourceDecayRate})
        if (contains(*field, "Monte")) return true;
    return !unsatRadicandNegative(textValue(d.velocity), textValue(d.dispersionX), textValue(d.halfLife),
                                  textValue(d.bulkDensity), textValue(d.distributionCoefficient), textValue(d.porosity),
                                  textValue(d.saturation), textValue(d.sourceDecayRate), ui);
}

}  // namespace

bool batchAcceptsInput(DataSet& data, UserInterface& ui) {
    if (isUnsaturatedType(data.modelType)) return unsaturatedRadicandAccepted(data, ui);
    // The saturated screen's validation, rule by rule, with its messages.
    if (saturatedDimension(data.modelType) != 0) return validateDataSet(data, ui);
    return true;
}

bool batchCanCalculate(const DataSet& data) {
    if (data.multiChemical) return false;
    if (data.modelType == "Time Varying") return true;
    return calculationPassFor(data.modelType) != nullptr;
}

std::optional<BatchRunResult> runBatchModel(DataSet& data, UserInterface& ui) {
    if (!batchCanCalculate(data)) return std::nullopt;
    if (data.modelType == "Time Varying") return runTimeVarying(data, ui);
    // A marker in the first boundary term means the inflow concentration varies.
    data.monteCarloModeOn = data.terms.ub() >= 1 && holdsMonteMarker(data.terms(1).concentration);
    const CalculationOutcome outcome = runCalculation(data, ui);
    return BatchRunResult{outcome.finished && !outcome.stopped};
}

std::optional<std::string> batchOutputText(const DataSet& data) {
    if (data.multiChemical) return std::nullopt;
    const bool simulation = isSimulation(data);
    if (const int dimension = saturatedDimension(data.modelType)) {
        return simulation ? monteCarloOutputText(data, dimension) : regularOutputText(data, dimension);
    }
    if (isUnsaturatedType(data.modelType)) return simulation ? unsatMonteCarloText(data) : unsatPlotText(data);
    if (data.modelType == "Time Varying") {
        return simulation ? timeVaryingMonteCarloOutputText(data) : timeVaryingOutputText(data);
    }
    return std::nullopt;
}

}  // namespace bm
