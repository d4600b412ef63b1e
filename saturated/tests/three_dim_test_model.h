#pragma once
// Three-dimensional models as the screen would leave them in the DataSet, and
// their record set field by field.

#include <string>

#include "kernels/kern3d.h"
#include "model/data_set.h"
#include "montecarlo/pass/calculation_pass.h"
#include "two_dim_test_support.h"

namespace bm::testkit {

// Velocity 0.3 over porosity 0.3 (effective 1), Dx 1, Dy 0.1, Dz 0.05,
// retardation 1, half-life 50, no recharge (thickness 10), x 0:40:10,
// y -10:10:5, z -4:4:2, t 0:30:10, a patch 6 wide and 4 high at (y 1, z 0),
// the selected point (20, 0, 0, 30), one inflow term.
inline DataSet threeDimModel(const std::string& aquifer, const std::string& contaminant) {
    DataSet d;
    d.modelType = "Three Dimensional";
    d.aquiferType = aquifer;
    d.contaminantType = contaminant;
    d.calculationMode = "Regular";
    d.velocity = "0.3";
    d.porosity = "0.3";
    d.retardation = "1";
    d.dispersionX = "1";
    d.dispersionY = "0.1";
    d.dispersionZ = "0.05";
    d.halfLife = "50";
    d.netRecharge = "0";
    d.aquiferThickness = "10";
    d.sourceXc = "0";
    d.sourceYc = "1";
    d.sourceZc = "0";
    d.sourceWidth = "6";
    d.sourceHeight = "4";
    d.injectionRate = "0.5";
    d.xRange = "0:40:10";
    d.yRange = "-10:10:5";
    d.zRange = "-4:4:2";
    d.timeRange = "0:30:10";
    d.mcAtX = "20";
    d.mcAtY = "0";
    d.mcAtZ = "0";
    d.mcAtT = "30";
    d.superpositionIndex = 1;
    d.terms.redim(1);
    d.terms(1).time = "0";
    d.terms(1).concentration = "1";
    parseCoordinates(d);
    return d;
}

// The record of threeDimModel set field by field (not through the filler).
inline ThreeDimParameters threeDimRecord() {
    ThreeDimParameters p;
    p.xMin = 0, p.xMax = 40, p.xInterval = 10;
    p.yMin = -10, p.yMax = 10, p.yInterval = 5;
    p.zMin = -4, p.zMax = 4, p.zInterval = 2;
    p.tMin = 0, p.tMax = 30, p.tInterval = 10;
    p.sourceXc = 0;
    p.sourceYc = 1;
    p.sourceZc = 0;
    p.sourceWidth = 6;
    p.sourceHeight = 4;
    p.injectionRate = 0.5;
    p.porosity = 0.3;
    p.effectiveVelocity = 1;
    p.effectiveDispersionX = 1;
    p.effectiveDispersionY = 0.1;
    p.effectiveDispersionZ = 0.05;
    p.effectiveHalfLife = 50;
    p.netRecharge = 0;
    p.aquiferThickness = 10;
    return p;
}

}  // namespace bm::testkit
