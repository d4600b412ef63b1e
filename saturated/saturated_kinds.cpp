#include "saturated/saturated_kinds.h"

#include "model/number_text.h"
#include "saturated/input_validation.h"
#include "saturated/one_dim_parameters.h"
#include "saturated/one_dim_solution.h"
#include "saturated/output_file.h"
#include "saturated/saturated_variants.h"
#include "saturated/three_dim_parameters.h"
#include "saturated/three_dim_solution.h"
#include "saturated/two_dim_parameters.h"
#include "saturated/two_dim_solution.h"

namespace bm {

namespace {

std::string indexText(std::int16_t value) { return std::to_string(value); }

// Row 2 of the two-dimensional screen holds what its caption says: the width
// for a finite aquifer or a finite line, the standard deviation for a Gaussian
// source, otherwise the injection rate of a point.
const std::string& twoDimSourceValue(const DataSet& data) {
    const std::string aquifer = toLower(trim(data.aquiferType));
    const std::string contaminant = toUpper(data.contaminantType);
    if (aquifer == "finite" || contains(contaminant, "LINE")) return data.sourceWidth;
    if (contains(contaminant, "GAUSS")) return data.sourceStdDev;
    return data.injectionRate;
}

bool finitePatch(const DataSet& data) { return contains(data.contaminantType, "Finite"); }

double solveOneDim(DataSet& data, OneDimParameters& parameters, bool simulate, int, UserInterface& ui) {
    return solveOneDimensional(data, parameters, simulate, ui);
}

}  // namespace

std::vector<std::string> oneDimInputRows(const DataSet& d) {
    return {d.velocity, d.dispersionX, d.halfLife, d.xRange, d.timeRange, indexText(d.superpositionIndex),
            d.mcAtX,    d.mcAtT,       d.porosity, d.retardation};
}

std::vector<std::string> twoDimInputRows(const DataSet& d) {
    return {d.xRange,      d.yRange,      twoDimSourceValue(d), d.timeRange, d.velocity, d.dispersionX,
            d.halfLife,    indexText(d.superpositionIndex),     d.dispersionY, d.porosity, d.sourceXc,
            d.sourceYc,    d.mcAtY,       d.mcAtX,              d.mcAtT,     d.netRecharge, d.aquiferThickness,
            d.retardation};
}

std::vector<std::string> threeDimInputRows(const DataSet& d) {
    const bool patch = finitePatch(d);
    return {d.xRange,      d.yRange,      d.zRange,      d.timeRange,  patch ? d.sourceWidth : d.sourceXc,
            d.sourceYc,    d.sourceZc,    patch ? d.sourceHeight : d.injectionRate,    d.velocity,
            indexText(d.superpositionIndex),            d.dispersionX, d.dispersionY, d.dispersionZ,
            d.halfLife,    d.porosity,    d.mcAtT,       d.mcAtX,      d.mcAtY,      d.mcAtZ,
            d.netRecharge, d.aquiferThickness,           d.retardation};
}

KindCalculation saturatedCalculation(int dimension) {
    KindCalculation k;
    k.kind = saturatedKindInfo(dimension, false).kind;
    k.validate = validateSaturatedInputs;
    k.regularOutput = [dimension](const DataSet& data) { return regularOutputText(data, dimension); };
    k.simulationOutput = [dimension](const DataSet& data) { return monteCarloOutputText(data, dimension); };
    k.monteVariants = [dimension](const DataSet& data) { return saturatedVariants(data, dimension); };
    switch (dimension) {
    case 2:
        k.inputRows = twoDimInputRows;
        k.iterate = fillThenSolve<TwoDimParameters>(fillTwoDimParameters, solveTwoDimensional);
        k.resultGridBounds = [](const DataSet& d) {
            return std::vector<int>{d.result2D.ub(0), d.result2D.ub(1), d.result2D.ub(2)};
        };
        break;
    case 3:
        k.inputRows = threeDimInputRows;
        k.iterate = fillThenSolve<ThreeDimParameters>(fillThreeDimParameters, solveThreeDimensional);
        k.resultGridBounds = [](const DataSet& d) {
            return std::vector<int>{d.result3D.ub(0), d.result3D.ub(1), d.result3D.ub(2), d.result3D.ub(3)};
        };
        break;
    default:
        k.inputRows = oneDimInputRows;
        k.iterate = fillThenSolve<OneDimParameters>(fillOneDimParameters, solveOneDim);
        k.resultGridBounds = [](const DataSet& d) { return std::vector<int>{d.result1D.ub(0), d.result1D.ub(1)}; };
        break;
    }
    return k;
}

void registerSaturatedKinds() {
    for (int dimension = 1; dimension <= 3; ++dimension) registerKindCalculation(saturatedCalculation(dimension));
}

}  // namespace bm
