#include "model/data_set.h"

#include "model/model_kinds.h"

namespace bm {

DataSet::DataSet() {
    terms.redim(1);
    chemicalName.redim(1);
    decayRate.redim(1);
    yieldFactor.redim(1);
    resultsInPoint.redim(1);
    suppositionTime.redim(1);
    suppositionConcentration.redim(1);
    chemicalTermConcentration.redim(1);
    chemicalSuperpositionIndex.redim(1);
}

DataSet& theDataSet() {
    static DataSet instance;
    return instance;
}

void clearDataSet(DataSet& d) {
    for (std::string* s : {&d.calculationMode, &d.currentFileName, &d.description, &d.author, &d.title, &d.comments,
                           &d.lengthUnit, &d.timeUnit, &d.concentrationUnit, &d.xRange, &d.yRange, &d.zRange,
                           &d.timeRange, &d.sourceXc, &d.sourceYc, &d.sourceZc, &d.sourceWidth, &d.sourceHeight,
                           &d.sourceStdDev, &d.mcAtX, &d.mcAtY, &d.mcAtZ, &d.mcAtT, &d.velocity, &d.halfLife,
                           &d.porosity, &d.dispersionX, &d.dispersionY, &d.dispersionZ, &d.injectionRate,
                           &d.netRecharge, &d.aquiferThickness, &d.retardation, &d.sourceMagnitude, &d.velocityX,
                           &d.velocityY, &d.sourceDecayRate, &d.dispersionRatio, &d.bulkDensity, &d.saturation,
                           &d.distributionCoefficient})
        s->clear();
    d.superpositionIndex = 0;
    d.runStopped = false;
    d.mcPointChanged.fill(false);
    d.numXTerms = d.numYTerms = d.numZTerms = d.numTTerms = 0;
    d.terms.redim(1);
    d.numChemicals = 0;
    d.chemicalName.redim(1);
    d.decayRate.redim(1);
    d.yieldFactor.redim(1);
    d.resultsInPoint.redim(1);
    d.suppositionTime.redim(1);
    d.suppositionConcentration.redim(1);
    d.chemicalTermConcentration.redim(1);
    d.chemicalSuperpositionIndex.redim(1);
}

void clearMonteCarloCounters(DataSet& d, std::string_view modelType) {
    if (const auto kind = modelKindOf(modelType, d.multiChemical);
        kind && static_cast<int>(*kind) < kMonteStoreCount) {
        MonteBlock& store = d.monteStore(*kind);
        store.monteRowCount = 0;
        store.monteResultRowCount = 0;
        store.monteIterations = 0;
    }
    d.monteIterations = 0;
    d.multiChemical = false;
}

void setMcPointChanged(DataSet& d, std::string_view modelType, bool value) {
    if (const auto kind = modelKindOf(modelType, d.multiChemical)) d.mcPointChanged[static_cast<std::size_t>(*kind)] = value;
}

bool mcPointChangedOf(const DataSet& d, std::string_view modelType) {
    const auto kind = modelKindOf(modelType, d.multiChemical);
    return kind && d.mcPointChanged[static_cast<std::size_t>(*kind)];
}

void closeModel(DataSet& d, std::string_view kind) {
    if (kind != "Complete" && kind != "Partial") return;
    setMcPointChanged(d, d.modelType, false);
    const std::string modelType = d.modelType;
    clearDataSet(d);
    clearMonteCarloCounters(d, modelType);
    if (kind == "Complete") {
        d.aquiferType.clear();
        d.contaminantType.clear();
        // The unsaturated and time-varying workbenches keep their model word.
        const ModelKindInfo* row = modelKindInfo(d.modelType, false);
        if (!row || row->isSaturated()) d.modelType.clear();
    }
}

void copyMonteCarloStore(DataSet& d, ModelKind kind, bool storeIntoWorkingSet) {
    if (static_cast<int>(kind) >= kMonteStoreCount) return;
    MonteBlock& s = d.monteStore(kind);
    if (storeIntoWorkingSet) {
        d.monteRowCount = s.monteRowCount;
        d.monteResultRowCount = s.monteResultRowCount;
        d.monteIterations = s.monteIterations;
        d.InputTGData = s.InputTGData;
        d.ResultTGData = s.ResultTGData;
        d.MonteSamples = s.MonteSamples;
    } else {
        s.monteRowCount = d.monteRowCount;
        s.monteResultRowCount = d.monteResultRowCount;
        s.monteIterations = d.monteIterations;
        s.InputTGData = d.InputTGData;
        s.ResultTGData = d.ResultTGData;
        s.MonteSamples = d.MonteSamples;
    }
}

void copyMonteCarloStore(DataSet& d, bool storeIntoWorkingSet) {
    if (const auto kind = modelKindOf(d.modelType, d.multiChemical)) copyMonteCarloStore(d, *kind, storeIntoWorkingSet);
}

std::int16_t settleSuperpositionIndex(DataSet& d) {
    if (d.superpositionIndex <= 0) d.superpositionIndex = 1;
    if (d.terms.ub() != d.superpositionIndex) d.terms.redimPreserve(d.superpositionIndex);
    return d.superpositionIndex;
}

}  // namespace bm
