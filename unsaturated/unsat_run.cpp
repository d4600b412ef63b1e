#include "unsaturated/unsat_run.h"

#include "model/number_text.h"
#include "unsaturated/unsat_output.h"
#include "unsaturated/unsat_parameters.h"
#include "unsaturated/unsat_radicand.h"
#include "unsaturated/unsat_rows.h"
#include "unsaturated/unsat_solution.h"
#include "unsaturated/unsat_variants.h"

namespace bm {

namespace {

double solve(DataSet& data, UnsatParameters& parameters, bool simulate, int, UserInterface& ui) {
    return solveUnsaturated(data, parameters, simulate, ui);
}

}  // namespace

std::vector<std::string> unsatInputRows(const DataSet& d) {
    return {d.velocity, d.dispersionX, d.halfLife,    d.xRange,   d.timeRange,
            std::to_string(d.superpositionIndex),     d.mcAtX,    d.mcAtT,
            d.bulkDensity, d.distributionCoefficient, d.porosity, d.saturation,
            d.sourceDecayRate};
}

bool unsatSimulationRefused(const DataSet& data, int iterations, UserInterface& ui) {
    if (data.contaminantType == kUnsatDirichlet) return false;
    for (int i = 1; i <= iterations - 1; ++i) {
        UnsatParameters p;
        fillUnsatParameters(data, p, true, i);
        if (unsatRadicandNegative(p.percolationRate, p.dispersion, p.halfLife, p.bulkDensity, p.distributionCoefficient,
                                  p.porosity, p.saturation, p.sourceDecayRate, ui))
            return true;
    }
    return false;
}

KindCalculation unsaturatedCalculation() {
    KindCalculation k;
    k.kind = ModelKind::Unsaturated;
    k.validate = validateUnsaturatedInputs;
    k.inputRows = unsatInputRows;
    k.refuses = unsatSimulationRefused;
    k.iterate = fillThenSolve<UnsatParameters>(fillUnsatParameters, solve);
    k.resultGridBounds = [](const DataSet& d) { return std::vector<int>{d.resultUnsat.ub(0), d.resultUnsat.ub(1)}; };
    k.regularOutput = unsatPlotText;
    k.simulationOutput = unsatMonteCarloText;
    k.monteVariants = [](const DataSet& data) { return unsaturatedVariants(data); };
    return k;
}

void registerUnsaturatedKind() { registerKindCalculation(unsaturatedCalculation()); }

}  // namespace bm
