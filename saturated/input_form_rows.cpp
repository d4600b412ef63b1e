#include "saturated/input_form_rows.h"

namespace bm {

namespace {

using F = RowField;
using K = RowKind;
using U = UnitKind;

const std::vector<RowDefinition> kOneDim = {
    {F::velocity, K::Value, kVelocityCaption, U::Velocity, kFieldTab},                  // 0
    {F::dispersionX, K::Value, kDispersion1DCaption, U::Diffusivity, kFieldTab},        // 1
    {F::halfLife, K::Value, kHalfLifeCaption, U::Time, kFieldTab},                      // 2
    {F::xRange, K::Range, kXRangeCaption, U::Length, kCoordinatesTab},                  // 3
    {F::timeRange, K::Range, kTimeRangeCaption, U::Time, kCoordinatesTab},              // 4
    {F::superpositionIndex, K::SuperpositionIndex, kSuperpositionCaption, U::None, kBoundaryTab},  // 5
    {F::mcAtX, K::Point, kPointXCaption, U::Length, kCoordinatesTab},                   // 6
    {F::mcAtT, K::Point, kPointTCaption, U::Time, kCoordinatesTab},                     // 7
    {F::porosity, K::Value, kPorosityCaption, U::None, kFieldTab},                      // 8
    {F::concentrationCaption, K::ConcentrationCaption, kConcentrationRowCaption, U::None, kCoordinatesTab},  // 9
    {F::retardation, K::Value, kRetardationCaption, U::None, kFieldTab},                // 10
};

const std::vector<RowDefinition> kTwoDim = {
    {F::xRange, K::Range, kXRangeCaption, U::Length, kCoordinatesTab},                  // 0
    {F::yRange, K::Range, kYRangeCaption, U::Length, kCoordinatesTab},                  // 1
    {F::twoDimSource, K::Value, nullptr, U::Length, kBoundaryTab},                      // 2
    {F::timeRange, K::Range, kTimeRangeCaption, U::Time, kCoordinatesTab},              // 3
    {F::velocity, K::Value, kVelocityCaption, U::Velocity, kFieldTab},                  // 4
    {F::dispersionX, K::Value, kDispersionXCaption, U::Diffusivity, kFieldTab},         // 5
    {F::halfLife, K::Value, kHalfLifeCaption, U::Time, kFieldTab},                      // 6
    {F::superpositionIndex, K::SuperpositionIndex, kSuperpositionCaption, U::None, kBoundaryTab},  // 7
    {F::dispersionY, K::Value, kDispersionYCaption, U::Diffusivity, kFieldTab},         // 8
    {F::porosity, K::Value, kPorosityCaption, U::None, kFieldTab},                      // 9
    {F::sourceXc, K::Value, kSourceXcCaption, U::Length, kBoundaryTab},                 // 10
    {F::sourceYc, K::Value, kSourceYcCaption, U::Length, kBoundaryTab},                 // 11
    {F::mcAtY, K::Point, kPointYCaption, U::Length, kCoordinatesTab},                   // 12
    {F::mcAtX, K::Point, kPointXCaption, U::Length, kCoordinatesTab},                   // 13
    {F::mcAtT, K::Point, kPointTCaption, U::Time, kCoordinatesTab},                     // 14
    {F::netRecharge, K::Value, kNetRechargeCaption, U::Velocity, kFieldTab},            // 15
    {F::aquiferThickness, K::Value, kThicknessCaption, U::Length, kFieldTab},           // 16
    {F::concentrationCaption, K::ConcentrationCaption, kConcentrationRowCaption, U::None, kCoordinatesTab},  // 17
    {F::retardation, K::Value, kRetardationCaption, U::None, kFieldTab},                // 18
};

const std::vector<RowDefinition> kThreeDim = {
    {F::xRange, K::Range, kXRangeCaption, U::Length, kCoordinatesTab},                  // 0
    {F::yRange, K::Range, kYRangeCaption, U::Length, kCoordinatesTab},                  // 1
    {F::zRange, K::Range, kZRangeCaption, U::Length, kCoordinatesTab},                  // 2
    {F::timeRange, K::Range, kTimeRangeCaption, U::Time, kCoordinatesTab},              // 3
    {F::threeDimSourceA, K::Value, nullptr, U::Length, kBoundaryTab},                   // 4
    {F::sourceYc, K::Value, kSourceYcCaption, U::Length, kBoundaryTab},                 // 5
    {F::sourceZc, K::Value, kSourceZcCaption, U::Length, kBoundaryTab},                 // 6
    {F::threeDimSourceB, K::Value, nullptr, U::Length, kBoundaryTab},                   // 7
    {F::velocity, K::Value, kVelocityCaption, U::Velocity, kFieldTab},                  // 8
    {F::superpositionIndex, K::SuperpositionIndex, kSuperpositionCaption, U::None, kBoundaryTab},  // 9
    {F::dispersionX, K::Value, kDispersionXCaption, U::Diffusivity, kFieldTab},         // 10
    {F::dispersionY, K::Value, kDispersionYCaption, U::Diffusivity, kFieldTab},         // 11
    {F::dispersionZ, K::Value, kDispersionZCaption, U::Diffusivity, kFieldTab},         // 12
    {F::halfLife, K::Value, kHalfLifeCaption, U::Time, kFieldTab},                      // 13
    {F::porosity, K::Value, kPorosityCaption, U::None, kFieldTab},                      // 14
    {F::mcAtT, K::Point, kPointTCaption, U::Time, kCoordinatesTab},                     // 15
    {F::mcAtX, K::Point, kPointXCaption, U::Length, kCoordinatesTab},                   // 16
    {F::mcAtY, K::Point, kPointYCaption, U::Length, kCoordinatesTab},                   // 17
    {F::mcAtZ, K::Point, kPointZCaption, U::Length, kCoordinatesTab},                   // 18
    {F::netRecharge, K::Value, kNetRechargeCaption, U::Velocity, kFieldTab},            // 19
    {F::aquiferThickness, K::Value, kThicknessCaption, U::Length, kFieldTab},           // 20
    {F::concentrationCaption, K::ConcentrationCaption, kConcentrationRowCaption, U::None, kCoordinatesTab},  // 21
    {F::retardation, K::Value, kRetardationCaption, U::None, kFieldTab},                // 22
};

const std::vector<RowDefinition> kNone;

}  // namespace

const std::vector<RowDefinition>& rowDefinitions(int dimension) {
    switch (dimension) {
    case 1: return kOneDim;
    case 2: return kTwoDim;
    case 3: return kThreeDim;
    default: return kNone;
    }
}

const DimensionRows& dimensionRows(int dimension) {
    static const DimensionRows one = [] {
        DimensionRows r;
        r.x = 3; r.t = 4; r.mcX = 6; r.mcT = 7; r.superposition = 5; r.concentrationCaption = 9;
        r.retardation = 10; r.last = 10;
        return r;
    }();
    static const DimensionRows two = [] {
        DimensionRows r;
        r.x = 0; r.y = 1; r.t = 3; r.mcY = 12; r.mcX = 13; r.mcT = 14; r.superposition = 7;
        r.concentrationCaption = 17; r.retardation = 18; r.last = 18;
        return r;
    }();
    static const DimensionRows three = [] {
        DimensionRows r;
        r.x = 0; r.y = 1; r.z = 2; r.t = 3; r.mcT = 15; r.mcX = 16; r.mcY = 17; r.mcZ = 18; r.superposition = 9;
        r.concentrationCaption = 21; r.retardation = 22; r.last = 22;
        return r;
    }();
    static const DimensionRows none;
    switch (dimension) {
    case 1: return one;
    case 2: return two;
    case 3: return three;
    default: return none;
    }
}

}  // namespace bm
