#include "montecarlo/pass/kind_calculation.h"

#include <map>

namespace bm {

namespace {

// Node-based, so that a registration found once stays where it is.
std::map<ModelKind, KindCalculation>& registry() {
    static std::map<ModelKind, KindCalculation> kinds;
    return kinds;
}

}  // namespace

void registerKindCalculation(KindCalculation calculation) {
    const ModelKind kind = calculation.kind;
    registry()[kind] = std::move(calculation);
}

const KindCalculation* kindCalculationFor(ModelKind kind) {
    const auto found = registry().find(kind);
    return found == registry().end() ? nullptr : &found->second;
}

const KindCalculation* kindCalculationOf(const DataSet& data) {
    const std::optional<ModelKind> kind = modelKindOf(data.modelType, data.multiChemical);
    return kind ? kindCalculationFor(*kind) : nullptr;
}

IterationResults kindResults(const KindCalculation& calculation, DataSet& data, int chemical) {
    if (calculation.results) return calculation.results(data, chemical);
    return modelKindInfo(calculation.kind).monteCarloResults(data, chemical);
}

}  // namespace bm
