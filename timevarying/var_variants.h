#pragma once
// The inputs of the time-varying model that a Monte Carlo simulation may vary.
// Their names are the captions of the rows of the time-varying screen: the
// simulation's selections find their rows by these texts, so the screen shows
// exactly these captions.

#include <string>
#include <string_view>
#include <vector>

#include "model/data_set.h"
#include "montecarlo/monte_variants.h"

namespace bm {

inline constexpr const char* kVelocityXCaption = " Steady-state Darcy Velocity in X-Direction (u)";
inline constexpr const char* kVelocityYCaption = " Steady-state Darcy Velocity in Y-Direction (v)";
inline constexpr const char* kMolecularDiffusionCaption = " Molecular Diffusion (Dm)";
inline constexpr const char* kVarRetardationCaption = " Retardation Coefficient (R)";
inline constexpr const char* kDispersionRatioCaption = " Dispersion Ratio Coefficient (a)";
inline constexpr const char* kMaximumDiffusionCaption = " Maximum Diffusion Coefficient (Do)";
inline constexpr const char* kDecayCoefficientCaption = " First-Order Decay Coefficient (mu)";
inline constexpr const char* kMeanTravelTimeCaption = " Mean Travel Time (k)";
inline constexpr const char* kVarPorosityCaption = " Aquifer Porosity (n)";

// The caption of the mass row for a contaminant source; empty for a source the model does not know.
std::string massRowCaption(std::string_view contaminantType);

// u; v for a point source; Dm, R, a, Do, mu; k unless the dispersion function
// is constant; the mass; porosity.
std::vector<MonteVariant> timeVaryingVariants(const DataSet& data);

}  // namespace bm
