#pragma once
// A one-dimensional model as the screen would leave it in the DataSet, and the
// closed form of the semi-infinite Dirichlet problem evaluated with the
// standard library's erfc, as an independent yardstick for the driver tests.

#include <cmath>
#include <string>

#include <gtest/gtest.h>

#include "model/data_set.h"
#include "shell/base/runtime_error.h"
#include "montecarlo/pass/calculation_pass.h"

namespace bm::testkit {

// Velocity 1, dispersion 0.5, porosity 1, retardation 1, half-life ln 2 / 0.1,
// x 0:10:1, t 0:5:1, one inflow term (time 0, concentration 1).
inline DataSet oneDimModel(const std::string& aquifer, const std::string& contaminant) {
    DataSet d;
    d.modelType = "One Dimensional";
    d.aquiferType = aquifer;
    d.contaminantType = contaminant;
    d.calculationMode = "Regular";
    d.velocity = "1";
    d.dispersionX = "0.5";
    d.halfLife = "6.931471805599453";
    d.porosity = "1";
    d.retardation = "1";
    d.xRange = "0:10:1";
    d.timeRange = "0:5:1";
    d.mcAtX = "10";
    d.mcAtT = "5";
    d.superpositionIndex = 1;
    d.terms.redim(1);
    d.terms(1).time = "0";
    d.terms(1).concentration = "1";
    parseCoordinates(d);
    return d;
}

// C/Co of the semi-infinite aquifer with a Dirichlet inlet and decay lambda.
inline double semiInfiniteDirichletReference(double V, double D, double lambda, double x, double t) {
    if (t == 0) return x == 0 ? 1 : 0;
    const double U = std::sqrt(V * V + 4 * D * lambda);
    const double S = 2 * std::sqrt(D * t);
    return 0.5 * (std::exp((V - U) * x / (2 * D)) * std::erfc((x - U * t) / S) +
                  std::exp((V + U) * x / (2 * D)) * std::erfc((x + U * t) / S));
}

// Runs f and expects run-time error `number` from it.
template <class F>
void expectRunTimeError(int number, F f) {
    try {
        f();
        ADD_FAILURE() << "no run-time error, expected " << number;
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), number);
    }
}

}  // namespace bm::testkit
