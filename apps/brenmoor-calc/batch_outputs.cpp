#include "apps/brenmoor-calc/batch_outputs.h"

#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/calculation_pass.h"
#include "montecarlo/pass/kind_calculation.h"

namespace bm {

bool batchCanCalculate(const DataSet& data) { return kindCalculationOf(data) != nullptr; }

bool batchAcceptsInput(DataSet& data, UserInterface& ui) {
    const KindCalculation* kind = kindCalculationOf(data);
    return !kind || !kind->validate || kind->validate(data, ui);
}

std::optional<BatchRunResult> runBatchModel(DataSet& data, UserInterface& ui) {
    if (!batchCanCalculate(data)) return std::nullopt;
    // A marker in the first boundary term means the inflow concentration varies.
    data.monteCarloModeOn = data.terms.ub() >= 1 && holdsMonteMarker(data.terms(1).concentration);
    const CalculationOutcome outcome = runCalculation(data, ui);
    return BatchRunResult{outcome.finished && !outcome.stopped};
}

std::optional<std::string> batchOutputText(const DataSet& data) {
    const KindCalculation* kind = kindCalculationOf(data);
    if (!kind) return std::nullopt;
    const auto& writer = contains(data.calculationMode, "Monte Carlo") ? kind->simulationOutput : kind->regularOutput;
    if (!writer) return std::nullopt;
    return writer(data);
}

}  // namespace bm
