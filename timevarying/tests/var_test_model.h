#pragma once
// A time-varying model for the tests, and its values as the record holds them.

#include <string>

#include "testing/kernvar_reference.h"
#include "model/data_set.h"

namespace var_test {

inline bm::DataSet model(const std::string& source = "Point (instantaneous)",
                         const std::string& function = "Asymptotic") {
    bm::DataSet d;
    d.modelType = "Time Varying";
    d.aquiferType = function;
    d.contaminantType = source;
    d.xRange = "10:30:10";
    d.yRange = "-5:5:5";
    d.timeRange = "20:40:20";
    d.velocityX = "0.3";  // Darcy velocities; porosity 0.3
    d.velocityY = "0.09";
    d.porosity = "0.3";
    d.saturation = "0.01";        // molecular diffusion
    d.retardation = "2";
    d.dispersionRatio = "0.2";
    d.bulkDensity = "5";          // maximum dispersivity
    d.sourceDecayRate = "0.001";
    d.distributionCoefficient = "20";  // mean travel time
    d.sourceMagnitude = "1000";
    d.mcAtX = "20";
    d.mcAtY = "3";
    d.mcAtT = "30";
    return d;
}

// The same model as double values rounded to the record's floats.
inline kernvar_ref::Case caseOf(int function, double porosity = 0.3, bool line = false) {
    kernvar_ref::Case c;
    c.function = function;
    c.R = 2;
    c.u = static_cast<float>(0.3 / porosity);
    c.v = line ? 0.0 : static_cast<float>(0.09 / porosity);
    c.mu = 0.001;
    c.a = 0.2;
    c.Do = 5;
    c.Dm = 0.01;
    c.k = 20;
    c.M = 1000;
    return kernvar_ref::asStored(c);
}

}  // namespace var_test
