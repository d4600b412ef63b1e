#include "montecarlo/monte_variants.h"

#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/monte_selection.h"

namespace bm {

MonteVariant fieldVariant(const std::string& caption, std::string DataSet::*field) {
    return {trim(caption), [field](DataSet& data) { return &(data.*field); }, MarkerPlace::FormField};
}

MonteVariant inflowVariant() {
    return {kInflowVariant,
            [](DataSet& data) { return data.terms.ub() >= 1 ? &data.terms(1).concentration : nullptr; },
            MarkerPlace::BoundaryCell};
}

std::vector<MonteVariant> chemicalVariants(const DataSet& data, List<std::string> DataSet::*concentration) {
    std::vector<MonteVariant> list;
    const auto cell = [](List<std::string> DataSet::*column, int chemical) {
        return [column, chemical](DataSet& d) {
            List<std::string>& cells = d.*column;
            return chemical <= cells.ub() ? &cells(chemical) : nullptr;
        };
    };
    for (int c = 1; c <= data.numChemicals && c <= data.chemicalName.ub(); ++c) {
        const std::string name = trim(data.chemicalName(c));
        list.push_back({name + "'s Yield Factor", cell(&DataSet::yieldFactor, c), MarkerPlace::ChemicalCell});
        list.push_back({name + "'s Decay Rate", cell(&DataSet::decayRate, c), MarkerPlace::ChemicalCell});
        list.push_back({name + "'s Concentration", cell(concentration, c), MarkerPlace::ChemicalCell});
    }
    return list;
}

void makeNewMonteTables(DataSet& data, int rows) {
    data.monteRowCount = static_cast<std::int16_t>(rows);
    data.monteResultRowCount = static_cast<std::int16_t>(rows);
    data.InputTGData.redim({rows, 1});
    data.ResultTGData.redim({rows, 1});
    for (int r = 0; r <= rows; ++r)
        for (int c = 0; c <= 1; ++c) data.ResultTGData(r, c).selection = kNothingSelected;
}

std::vector<MonteVariant> listedVariants(const DataSet& data, ModelKind kind, std::vector<MonteVariant> fields,
                                         std::vector<MonteVariant> chemicals) {
    std::vector<MonteVariant> list = std::move(fields);
    const bool timeVarying = modelKindInfo(kind).family == ModelFamily::TimeVarying;
    if (!timeVarying && data.superpositionIndex == 1) list.push_back(inflowVariant());
    for (MonteVariant& v : chemicals) list.push_back(std::move(v));
    return list;
}

MonteCarloSetup buildMonteCarloSetup(DataSet& data, ModelKind kind, std::vector<MonteVariant> fields,
                                     std::vector<MonteVariant> chemicals) {
    MonteCarloSetup setup;
    setup.kind = kind;
    copyMonteCarloStore(data, kind, true);
    setup.previousTables = data.monteResultRowCount != 0 || data.monteRowCount != 0;

    const bool timeVarying = modelKindInfo(kind).family == ModelFamily::TimeVarying;
    if (timeVarying) {
        setup.title = "Monte Carlo Simulation (Variable Dispersion)";
        setup.panelCaption = "CONTAMINANT SOURCE: " + data.contaminantType + "  DISPERSION COEFFICIENT: " + data.aquiferType;
    } else {
        setup.title = "Monte Carlo Simulation (" + data.modelType + ")";
        setup.panelCaption = "AQUIFER: " + data.aquiferType + "  CONTAMINANT: " + data.contaminantType;
    }

    setup.variants = listedVariants(data, kind, std::move(fields), std::move(chemicals));

    setup.modelUnderSimulation = data.monteCarloModeOn;
    for (const MonteVariant& v : setup.variants) {
        const std::string* text = v.field ? v.field(data) : nullptr;
        if (text && holdsMonteMarker(*text)) setup.modelUnderSimulation = true;
        setup.list.variantLB1.push_back(v.name);
        // A varying value is listed with the constant it stands for.
        setup.list.meanLB.push_back(text ? trim(valueOfCell(*text)) : std::string());
    }
    setup.list.variantLB1.push_back(kRemoveVariant);
    setup.list.meanLB.push_back(kRemoveVariant);

    setup.tablesNew = static_cast<int>(setup.list.meanLB.size()) != data.monteRowCount;
    if (setup.tablesNew) {
        data.monteRowCount = static_cast<std::int16_t>(setup.list.meanLB.size());
        data.monteResultRowCount = data.monteRowCount;
    }
    return setup;
}

}  // namespace bm
