#include "unsaturated/form/unsat_kind_checks.h"

#include "montecarlo/pass/kind_calculation.h"
#include "species/chain/chain_validation.h"
#include "unsaturated/unsat_rows.h"

namespace bm {

void registerUnsaturatedChainChecks() {
    const KindCalculation* chain = kindCalculationFor(ModelKind::MultiUnsaturated);
    if (!chain) return;
    KindCalculation k = *chain;
    k.validate = [](DataSet& data, UserInterface& ui) {
        return validateMultiUnsaturatedInputs(
            data, [&data](UserInterface& tablesUi) { return chainTablesAccepted(data, tablesUi); }, ui);
    };
    registerKindCalculation(std::move(k));
}

}  // namespace bm
