#pragma once
// The inputs of the unsaturated model that a Monte Carlo simulation may vary.
// Their names are the captions of the rows of the unsaturated screens: the
// simulation's selections find their rows by these texts, so the screens show
// exactly these captions.

#include <vector>

#include "model/data_set.h"
#include "montecarlo/monte_variants.h"

namespace bm {

inline constexpr const char* kPercolationRateCaption = " Steady-State Percolation Rate (Q)";
inline constexpr const char* kUnsatDispersionCaption = " Dispersion Coefficient (Dv)";
inline constexpr const char* kUnsatHalfLifeCaption = " Contaminant Halflife";
inline constexpr const char* kBulkDensityCaption = " Bulk Density of Unsaturated Zone";
inline constexpr const char* kDistributionCoefficientCaption = " Contaminant Distribution Coefficient (Kd)";
inline constexpr const char* kUnsatPorosityCaption = " Aquifer Porosity (n)";
inline constexpr const char* kSaturationCaption = " Saturation (Sw)";

// Percolation rate, dispersion, half-life, bulk density, distribution
// coefficient, porosity, saturation; the multi-chemical model leaves out the
// half-life, which is then each chemical's own.
std::vector<MonteVariant> unsaturatedVariants(const DataSet& data, bool withHalfLife = true);

}  // namespace bm
