#include "species/chain/chain_kinds.h"

#include <algorithm>
#include <string>

#include "model/number_text.h"
#include "model/ranges.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/monte_variants.h"
#include "species/chain/chain_solution.h"
#include "species/chain/chain_validation.h"

namespace bm {

namespace {

constexpr ModelKind kChainKinds[] = {ModelKind::MultiOneDimensional, ModelKind::MultiTwoDimensional,
                                     ModelKind::MultiThreeDimensional, ModelKind::MultiUnsaturated};

const KindCalculation* singleOf(ModelKind chainKind) { return kindCalculationFor(singleSpeciesKind(chainKind)); }

// The unsaturated writers read the ordinary lists: the selected chemical's
// grid and simulation values are copied into them (the saturated writers read
// the chemicals' arrays themselves).
DataSet withSelectedChemical(const DataSet& d, ModelKind chainKind) {
    DataSet shown = d;
    if (chainKind != ModelKind::MultiUnsaturated) return shown;
    const int c = d.selectedChemical < 1 ? 1 : d.selectedChemical;
    const Array<double, 3>& grid = d.chemResultUnsat;
    if (c <= grid.ub(0) && grid.ub(1) >= 0 && grid.ub(2) >= 0) {
        shown.resultUnsat.redim({grid.ub(1), grid.ub(2)});
        for (int x = 0; x <= grid.ub(1); ++x)
            for (int t = 0; t <= grid.ub(2); ++t) shown.resultUnsat(x, t) = grid(c, x, t);
    }
    const Array<double, 2>& runs = d.chemMcResultUnsat;
    if (c <= runs.ub(0) && runs.ub(1) >= 0) {
        shown.mcResultUnsat.redim(runs.ub(1));
        for (int i = 0; i <= runs.ub(1); ++i) shown.mcResultUnsat(i) = runs(c, i);
    }
    return shown;
}

}  // namespace

std::vector<std::string> chainInputRows(const DataSet& d, ModelKind chainKind) {
    std::vector<std::string> rows;
    if (const KindCalculation* single = singleOf(chainKind); single && single->inputRows) {
        rows = single->inputRows(d);
        const auto halfLife = std::find(rows.begin(), rows.end(), d.halfLife);
        if (halfLife != rows.end()) rows.erase(halfLife);
    }
    for (int i = 1; i <= d.numChemicals; ++i)
        for (const List<std::string>* list : {&d.decayRate, &d.yieldFactor, &d.suppositionTime, &d.suppositionConcentration})
            if (i <= list->ub()) rows.push_back((*list)(i));
    return rows;
}

bool chainInputsAccepted(DataSet& data, ModelKind chainKind, UserInterface& ui) {
    const KindCalculation* single = singleOf(chainKind);
    if (data.numChemicals < 1) {
        ui.message(MessageIcon::Critical, MessageButtons::Ok, "Improper input data",
                   "The number of chemicals must be greater than or equal to 1.");
        return false;
    }
    // The unsaturated chain's rows have checks of their own, put in at
    // registration over these (the tables' checks among them).
    if (chainKind == ModelKind::MultiUnsaturated) return chainTablesAccepted(data, ui);
    if (single && single->validate) {
        // The shared inputs go through the single-species rules on a probe:
        // a valid half-life and one term at the start of the time range stand
        // in for the chain's table, which has rules of its own.
        DataSet probe = data;
        probe.multiChemical = false;
        probe.halfLife = std::string("1");  // (assigning the literal trips a false -Wrestrict of GCC 12)
        double tMin = 0, tMax = 0, interval = 0, constant = 0;
        parseRange(data.timeRange, tMin, tMax, interval, constant);
        probe.superpositionIndex = 1;
        probe.terms.redim(1);
        probe.terms(1) = Term{generalText(tMin), "1"};
        if (!single->validate(probe, ui)) return false;
        data.mcAtX = probe.mcAtX;
        data.mcAtY = probe.mcAtY;
        data.mcAtZ = probe.mcAtZ;
        data.mcAtT = probe.mcAtT;
    }
    return chainTablesAccepted(data, ui);
}

KindCalculation chainCalculation(ModelKind chainKind) {
    KindCalculation k;
    k.kind = chainKind;
    k.validate = [chainKind](DataSet& data, UserInterface& ui) { return chainInputsAccepted(data, chainKind, ui); };
    k.inputRows = [chainKind](const DataSet& data) { return chainInputRows(data, chainKind); };
    k.scalesByInflowSamples = false;
    k.chemicalVariants = [](const DataSet& data) { return chemicalVariants(data, &DataSet::suppositionConcentration); };
    k.ownPass = [chainKind](DataSet& data, bool simulate, UserInterface& ui) {
        prepareChemicals(data, chainTransform(), simulate, ui);
        return runChemicalsRegular(data, chainKind, simulate, ui);
    };
    k.results = [chainKind](DataSet& data, int chemical) {
        return IterationResults(chemicalMonteCarloResults(data, chainKind), chemical);
    };
    if (const KindCalculation* single = singleOf(chainKind)) {
        k.resultGridBounds = single->resultGridBounds;
        if (const auto variants = single->monteVariants) {
            // A chain has a rate per chemical in place of the half-life row.
            k.monteVariants = [variants](const DataSet& data) {
                std::vector<MonteVariant> list = variants(data);
                DataSet& fields = const_cast<DataSet&>(data);  // only compared, never written
                std::erase_if(list, [&](const MonteVariant& v) { return v.field && v.field(fields) == &fields.halfLife; });
                return list;
            };
        }
        const auto regular = single->regularOutput;
        const auto simulation = single->simulationOutput;
        if (regular)
            k.regularOutput = [regular, chainKind](const DataSet& d) { return regular(withSelectedChemical(d, chainKind)); };
        if (simulation)
            k.simulationOutput = [simulation, chainKind](const DataSet& d) {
                return simulation(withSelectedChemical(d, chainKind));
            };
    }
    return k;
}

void registerChainKinds() {
    for (ModelKind kind : kChainKinds) registerKindCalculation(chainCalculation(kind));
}

}  // namespace bm
