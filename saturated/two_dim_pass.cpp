#include "saturated/two_dim_pass.h"

#include "saturated/two_dim_parameters.h"
#include "saturated/two_dim_solution.h"

namespace bm {

CalculationPass twoDimensionalPass() {
    CalculationPass pass;
    pass.modelType = "Two Dimensional";
    pass.kind = ModelKind::TwoDimensional;
    pass.inputRows = twoDimInputRows;
    pass.runIteration = [](DataSet& data, bool simulate, int iteration, UserInterface& ui) {
        TwoDimParameters parameters;
        fillTwoDimParameters(data, parameters, simulate, iteration);
        return solveTwoDimensional(data, parameters, simulate, iteration, ui);
    };
    pass.mcResult = &DataSet::mcResult2D;
    return pass;
}

}  // namespace bm
