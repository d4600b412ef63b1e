#include "unsaturated/unsat_parameters.h"

#include "model/data_set.h"
#include "model/number_text.h"
#include "model/ranges.h"
#include "montecarlo/monte_marker.h"

namespace bm {

namespace {

// Both screens read their samples from the working set, which holds the table
// of the model that is open.
void fillFromWorkingSet(const DataSet& data, UnsatParameters& p, bool monteCarlo, int iteration) {
    // A single depth means the column from the surface down to it.
    assignRange(data.xRange, p.xMin, p.xMax, p.xInterval);
    assignRange(data.timeRange, p.tMin, p.tMax, p.tInterval);

    p.percolationRate = fieldValue(data, data.velocity, monteCarlo, iteration);
    p.dispersion = fieldValue(data, data.dispersionX, monteCarlo, iteration);
    p.halfLife = fieldValue(data, data.halfLife, monteCarlo, iteration);
    p.bulkDensity = fieldValue(data, data.bulkDensity, monteCarlo, iteration);
    p.distributionCoefficient = fieldValue(data, data.distributionCoefficient, monteCarlo, iteration);
    p.porosity = fieldValue(data, data.porosity, monteCarlo, iteration);
    p.saturation = fieldValue(data, data.saturation, monteCarlo, iteration);
    p.sourceDecayRate = data.contaminantType != kUnsatDirichlet ? textValue(data.sourceDecayRate) : 0.0;

    std::string co = data.terms.ub() >= 1 ? data.terms(1).concentration : std::string();
    if (monteCarlo) co = valueOfCell(co);  // a marker stands for the number it carries
    p.sourceConcentration = textValue(co);
    p.iteration = monteCarlo ? iteration : 0;
}

}  // namespace

void fillUnsatParameters(const DataSet& data, UnsatParameters& parameters, bool monteCarlo, int iteration) {
    fillFromWorkingSet(data, parameters, monteCarlo, iteration);
}

void fillUnsatChemicalParameters(const DataSet& data, UnsatParameters& parameters, bool monteCarlo, int iteration) {
    fillFromWorkingSet(data, parameters, monteCarlo, iteration);
}

}  // namespace bm
