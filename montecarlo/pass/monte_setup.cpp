#include "montecarlo/pass/monte_setup.h"

#include "montecarlo/pass/kind_calculation.h"

namespace bm {

namespace {

std::vector<MonteVariant> listed(const std::function<std::vector<MonteVariant>(const DataSet&)>& list,
                                 const DataSet& data) {
    return list ? list(data) : std::vector<MonteVariant>{};
}

}  // namespace

std::optional<MonteCarloSetup> monteCarloSetup(DataSet& data) {
    const KindCalculation* kind = kindCalculationOf(data);
    if (!kind) return std::nullopt;
    return buildMonteCarloSetup(data, kind->kind, listed(kind->monteVariants, data),
                                listed(kind->chemicalVariants, data));
}

std::vector<MonteVariant> monteVariantsOf(DataSet& data) {
    const KindCalculation* kind = kindCalculationOf(data);
    if (!kind) return {};
    return listedVariants(data, kind->kind, listed(kind->monteVariants, data), listed(kind->chemicalVariants, data));
}

SelectionOutcome applyMonteCarloSelections(DataSet& data) {
    const KindCalculation* kind = kindCalculationOf(data);
    if (!kind) return {};
    const std::vector<MonteVariant> variants = monteVariantsOf(data);
    if (data.monteFreshFlag) setMcPointChanged(data, data.modelType, true);
    return applySelections(data, data.monteStore(kind->kind), variants);
}

std::optional<GenerationOutcome> generateStoredVariants(DataSet& data, UserInterface& ui) {
    const std::optional<MonteCarloSetup> setup = monteCarloSetup(data);
    if (!setup) return std::nullopt;
    // The table as the file keeps it, whatever the length of today's list.
    copyMonteCarloStore(data, setup->kind, true);
    const GenerationOutcome outcome = generateSimulation(data, setup->list, 1, ui);
    if (outcome == GenerationOutcome::Refused || outcome == GenerationOutcome::Failed) return outcome;
    copyMonteCarloStore(data, setup->kind, false);
    applySelections(data, data.monteStore(setup->kind), setup->variants);
    return outcome;
}

}  // namespace bm
