#include "saturated/three_dim_pass.h"

#include "saturated/three_dim_parameters.h"
#include "saturated/three_dim_solution.h"

namespace bm {

CalculationPass threeDimensionalPass() {
    CalculationPass pass;
    pass.modelType = "Three Dimensional";
    pass.kind = ModelKind::ThreeDimensional;
    pass.inputRows = threeDimInputRows;
    pass.runIteration = [](DataSet& data, bool simulate, int iteration, UserInterface& ui) {
        ThreeDimParameters parameters;
        fillThreeDimParameters(data, parameters, simulate, iteration);
        return solveThreeDimensional(data, parameters, simulate, iteration, ui);
    };
    pass.mcResult = &DataSet::mcResult3D;
    return pass;
}

}  // namespace bm
