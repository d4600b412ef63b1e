#include "saturated/one_dim_parameters.h"

#include "model/data_set.h"
#include "model/number_text.h"
#include "model/ranges.h"
#include "montecarlo/monte_marker.h"
#include "shell/base/checked_math.h"

namespace bm {

std::int16_t boundaryTypeOf(std::string_view contaminantType) {
    return toUpper(contaminantType.substr(0, 9)) == "DIRICHLET" ? kDirichletBoundary : kCauchyBoundary;
}

void fillOneDimParameters(const DataSet& data, OneDimParameters& parameters, bool monteCarlo, int iteration) {
    parameters.boundaryType = boundaryTypeOf(data.contaminantType);
    parameters.aquiferCode = data.aquiferType.substr(0, kAquiferCodeLength);

    // A single number x means the column from 0 to x.
    assignRange(data.xRange, parameters.xMin, parameters.xMax, parameters.xInterval);
    assignRange(data.timeRange, parameters.tMin, parameters.tMax, parameters.tInterval);

    const double halfLife = fieldValue(data, data.halfLife, monteCarlo, iteration);
    const double dispersion = fieldValue(data, data.dispersionX, monteCarlo, iteration);
    const double velocity = fieldValue(data, data.velocity, monteCarlo, iteration);
    const double porosity = fieldValue(data, data.porosity, monteCarlo, iteration);
    const double retardation = fieldValue(data, data.retardation, monteCarlo, iteration);

    // Retardation lengthens the half-life rather than shortening the decay
    // rate, so the kernels read its effect in the one number they use.
    parameters.effectiveVelocity = fp::div(velocity, porosity);
    parameters.effectiveDispersion = fp::div(dispersion, retardation);
    parameters.effectiveVelocity = fp::div(parameters.effectiveVelocity, retardation);
    parameters.effectiveHalfLife = fp::mul(retardation, halfLife);
    parameters.iteration = monteCarlo ? iteration : 0;
}

}  // namespace bm
