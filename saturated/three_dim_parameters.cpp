#include "saturated/three_dim_parameters.h"

#include <string>

#include "model/data_set.h"
#include "montecarlo/monte_marker.h"
#include "model/ranges.h"
#include "shell/base/checked_math.h"

namespace bm {

void fillThreeDimParameters(const DataSet& data, ThreeDimParameters& parameters, bool monteCarlo, int iteration) {
    parameters = ThreeDimParameters{};

    assignRange(data.xRange, parameters.xMin, parameters.xMax, parameters.xInterval);
    assignRange(data.yRange, parameters.yMin, parameters.yMax, parameters.yInterval);
    assignRange(data.zRange, parameters.zMin, parameters.zMax, parameters.zInterval);
    assignRange(data.timeRange, parameters.tMin, parameters.tMax, parameters.tInterval);

    auto value = [&](const std::string& text) { return fieldValue(data, text, monteCarlo, iteration); };
    parameters.sourceYc = value(data.sourceYc);
    parameters.sourceXc = value(data.sourceXc);
    parameters.sourceZc = value(data.sourceZc);
    parameters.sourceWidth = value(data.sourceWidth);
    parameters.sourceHeight = value(data.sourceHeight);
    const double halfLife = value(data.halfLife);
    const double velocity = value(data.velocity);
    parameters.injectionRate = value(data.injectionRate);
    parameters.porosity = value(data.porosity);
    const double dispersionX = value(data.dispersionX);
    const double dispersionY = value(data.dispersionY);
    const double dispersionZ = value(data.dispersionZ);
    parameters.netRecharge = value(data.netRecharge);
    parameters.aquiferThickness = value(data.aquiferThickness);
    const double retardation = value(data.retardation);

    // Retardation lengthens the half-life rather than shortening the decay
    // rate, so the library reads its effect in the one number it uses.
    parameters.effectiveVelocity = fp::div(velocity, parameters.porosity);
    parameters.effectiveDispersionX = fp::div(dispersionX, retardation);
    parameters.effectiveDispersionY = fp::div(dispersionY, retardation);
    parameters.effectiveDispersionZ = fp::div(dispersionZ, retardation);
    parameters.effectiveVelocity = fp::div(parameters.effectiveVelocity, retardation);
    parameters.effectiveHalfLife = fp::mul(retardation, halfLife);

    setFixedText(parameters.aquiferCode, data.aquiferType);
    setFixedText(parameters.contaminantCode, data.contaminantType);
}

}  // namespace bm
