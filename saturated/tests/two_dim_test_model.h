#pragma once
// Two-dimensional models as the screen would leave them in the DataSet, and
// their record set field by field.

#include <string>

#include "kernels/kern2d.h"
#include "model/data_set.h"
#include "montecarlo/pass/calculation_pass.h"
#include "two_dim_test_support.h"

namespace bm::testkit {

// Velocity 0.3 over porosity 0.3 (effective 1), Dx 1, Dy 0.1, retardation 1,
// half-life 50, no recharge (thickness 10), x 0:40:10, y -10:10:5, t 0:30:10,
// a strip of width 6 at y 1, the selected point (20, 0, 30), one inflow term.
inline DataSet twoDimModel(const std::string& aquifer, const std::string& contaminant) {
    DataSet d;
    d.modelType = "Two Dimensional";
    d.aquiferType = aquifer;
    d.contaminantType = contaminant;
    d.calculationMode = "Regular";
    d.velocity = "0.3";
    d.porosity = "0.3";
    d.retardation = "1";
    d.dispersionX = "1";
    d.dispersionY = "0.1";
    d.halfLife = "50";
    d.netRecharge = "0";
    d.aquiferThickness = "10";
    d.sourceXc = "0";
    d.sourceYc = "1";
    d.sourceWidth = "6";
    d.sourceStdDev = "2";
    d.injectionRate = "0.5";
    d.xRange = "0:40:10";
    d.yRange = "-10:10:5";
    d.timeRange = "0:30:10";
    d.mcAtX = "20";
    d.mcAtY = "0";
    d.mcAtT = "30";
    d.superpositionIndex = 1;
    d.terms.redim(1);
    d.terms(1).time = "0";
    d.terms(1).concentration = "1";
    parseCoordinates(d);
    return d;
}

// The record of twoDimModel set field by field (not through the filler).
inline TwoDimParameters twoDimRecord() {
    TwoDimParameters p;
    p.xMin = 0, p.xMax = 40, p.xInterval = 10;
    p.yMin = -10, p.yMax = 10, p.yInterval = 5;
    p.tMin = 0, p.tMax = 30, p.tInterval = 10;
    p.sourceXc = 0;
    p.sourceYc = 1;
    p.sourceWidth = 6;
    p.sourceStdDev = 2;
    p.injectionRate = 0.5;
    p.porosity = 0.3;
    p.effectiveVelocity = 1;
    p.effectiveDispersionX = 1;
    p.effectiveDispersionY = 0.1;
    p.effectiveHalfLife = 50;
    p.netRecharge = 0;
    p.aquiferThickness = 10;
    return p;
}

}  // namespace bm::testkit
