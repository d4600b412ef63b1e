#include "unsaturated/unsat_run.h"

#include "unsaturated/unsat_parameters.h"
#include "unsaturated/unsat_radicand.h"
#include "unsaturated/unsat_solution.h"

namespace bm {

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

CalculationPass unsaturatedPass() {
    CalculationPass pass;
    pass.modelType = kUnsaturatedModelType;
    pass.kind = ModelKind::Unsaturated;
    pass.inputRows = unsatInputRows;
    pass.runIteration = [](DataSet& data, bool simulate, int iteration, UserInterface& ui) {
        if (simulate && iteration == 1) {
            const int iterations = static_cast<int>(data.monteStore(ModelKind::Unsaturated).monteIterations);
            if (unsatSimulationRefused(data, iterations, ui)) {
                // Ends the pass before its next iteration, with nothing computed.
                data.stopRequested = true;
                return 0.0;
            }
        }
        UnsatParameters parameters;
        fillUnsatParameters(data, parameters, simulate, iteration);
        return solveUnsaturated(data, parameters, simulate, ui);
    };
    pass.mcResult = &DataSet::mcResultUnsat;
    pass.progressOwner = unsatProgressOwnerOf;
    return pass;
}

void registerUnsaturatedPass() {
    registerCalculationPass(unsaturatedPass());
    CalculationPass shortWord = unsaturatedPass();
    shortWord.modelType = "Unsaturated";
    registerCalculationPass(shortWord);
}

}  // namespace bm
