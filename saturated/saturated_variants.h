#pragma once
// The inputs of the saturated models that a Monte Carlo simulation may vary,
// each named by the caption of its row on the model's screen and bound to the
// DataSet text that row shows (the source rows by their captions).

#include <vector>

#include "model/data_set.h"
#include "montecarlo/monte_variants.h"

namespace bm {

// One dimension: velocity, dispersion, half-life, porosity, retardation.
// Two: velocity, the two dispersions, half-life, porosity, recharge,
// thickness, the source's y centre and size (width, standard deviation or
// injection rate as its caption says), its x centre for a continuous point in
// an infinite aquifer, retardation. Three: velocity, the three dispersions,
// half-life, porosity, recharge, thickness, the y and z centres, the source's
// two rows (width and height of a patch, x centre and injection rate of a
// point), retardation. The multi-chemical models leave out the half-life,
// which is then each chemical's own.
std::vector<MonteVariant> saturatedVariants(const DataSet& data, int dimension, bool withHalfLife = true);

}  // namespace bm
