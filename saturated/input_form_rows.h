#pragma once
// The three row lists of the saturated model screen (Text1, Text2, Text3): for
// each row its caption, the dimension of its unit, the tab that holds it, what
// kind of entry it is, and the DataSet field it shows. The row numbers are the
// ones the calculation, the validation and the reports use.

#include <string>
#include <vector>

#include "model/data_set.h"
#include "model/model_kinds.h"
#include "model/units.h"

namespace bm {

// The tabs of each dimension's tab set, by their tag.
inline constexpr int kCoordinatesTab = 0;
inline constexpr int kBoundaryTab = 1;
inline constexpr int kFieldTab = 2;
inline constexpr const char* kTabCaptions[3] = {"Coor&dinates", "&Boundary Conditions", "Fi&eld and Chemical Constants"};

enum class RowKind {
    Value,                 // a number as typed
    Range,                 // a range text
    SuperpositionIndex,    // the number of inflow terms
    Point,                 // mcAtX, mcAtY, mcAtZ, mcAtT: the selected point
    ConcentrationCaption,  // the caption in front of the result label; no entry
    ChemicalCount,         // the number of chemicals of a decay chain
};

// What a row shows: a field of the DataSet, or one of the rows whose field
// depends on the source (two dimensions row 2, three dimensions rows 4 and 7).
enum class RowField {
    xRange, yRange, zRange, timeRange,
    velocity, dispersionX, dispersionY, dispersionZ, halfLife, porosity, retardation,
    netRecharge, aquiferThickness,
    sourceXc, sourceYc, sourceZc,
    mcAtX, mcAtY, mcAtZ, mcAtT,
    superpositionIndex,
    concentrationCaption,
    chemicalCount,     // numChemicals, kept by the screen
    twoDimSource,      // sourceWidth, sourceStdDev or injectionRate by its caption
    threeDimSourceA,   // sourceWidth, or sourceXc
    threeDimSourceB,   // sourceHeight, or injectionRate
};

struct RowDefinition {
    RowField field;
    RowKind kind;
    const char* caption;  // nullptr: set by the source of the model (setDisplay)
    UnitKind unit;
    int tab;
};

// The rows of a dimension (1, 2 or 3), numbered from 0.
const std::vector<RowDefinition>& rowDefinitions(int dimension);

// Row numbers the rules refer to.
struct DimensionRows {
    int x = -1, y = -1, z = -1, t = -1;          // ranges
    int mcX = -1, mcY = -1, mcZ = -1, mcT = -1;  // the selected point
    int superposition = -1;
    int concentrationCaption = -1;
    int retardation = -1;
    int last = -1;  // highest row number
};
const DimensionRows& dimensionRows(int dimension);

// Captions the screens share with the variant list of the Monte Carlo set-up.
inline constexpr const char* kVelocityCaption = " Ground Water Darcy Velocity (V)";
inline constexpr const char* kDispersion1DCaption = " Longitudinal Dispersion Coefficient (D)";
inline constexpr const char* kDispersionXCaption = " Longitudinal Dispersion Coefficient (Dx)";
inline constexpr const char* kDispersionYCaption = " Lateral Dispersion Coefficient (Dy)";
inline constexpr const char* kDispersionZCaption = " Vertical Dispersion Coefficient (Dz)";
inline constexpr const char* kHalfLifeCaption = " Contaminant Half-Life";
inline constexpr const char* kPorosityCaption = " Aquifer Porosity (n)";
inline constexpr const char* kRetardationCaption = " Retardation Coefficient (R)";
inline constexpr const char* kNetRechargeCaption = " Net Recharge (q)";
inline constexpr const char* kThicknessCaption = " Effective Aquifer Thickness (B)";
inline constexpr const char* kSourceXcCaption = " Center of Contaminant Source in X Direction (Xc)";
inline constexpr const char* kSourceYcCaption = " Center of Contaminant Source in Y Direction (Yc)";
inline constexpr const char* kSourceZcCaption = " Center of Contaminant Source in Z Direction (Zc)";
inline constexpr const char* kXRangeCaption = " X Coordinate Range (x)";
inline constexpr const char* kYRangeCaption = " Y Coordinate Range (y)";
inline constexpr const char* kZRangeCaption = " Z Coordinate Range (z)";
inline constexpr const char* kTimeRangeCaption = " Time Range (t)";
inline constexpr const char* kSuperpositionCaption = " Superposition Index";
inline constexpr const char* kPointXCaption = " Computation Point x";
inline constexpr const char* kPointYCaption = " Computation Point y";
inline constexpr const char* kPointZCaption = " Computation Point z";
inline constexpr const char* kPointTCaption = " Computation Time t";
inline constexpr const char* kConcentrationRowCaption = " Concentration (C/Co)";

}  // namespace bm
