#pragma once
// Models and synthetic observations for the fit tests: observations made from
// known inputs (the closed form of the semi-infinite column, or a regular
// Calculate! run over a grid) with Gaussian noise of fixed seeds.

#include <random>
#include <string>
#include <vector>

#include "files/data_file.h"
#include "fitting/fitter.h"
#include "model/data_set.h"
#include "testing/one_dim_test_model.h"
#include "testing/test_paths.h"

namespace bm::testkit {

// A semi-infinite Dirichlet column: Darcy velocity 0.5, porosity 1,
// retardation 1, dispersion 0.8, half-life 40.
inline DataSet fitColumn() {
    DataSet d = oneDimModel("Semi-Infinite", "Dirichlet");
    d.velocity = "0.5";
    d.dispersionX = "0.8";
    d.halfLife = "40";
    d.xRange = "0:20:1";
    d.timeRange = "0:40:1";
    d.concentrationUnit = "mg/l";
    return d;
}

// Its C/Co at (x, t) from the closed form.
inline double columnRatio(double V, double D, double halfLife, double x, double t) {
    return semiInfiniteDirichletReference(V, D, std::log(2.0) / halfLife, x, t);
}

// Observations at the wells xs, times t0, t0 + dt, ... (count of them), of
// value(x, t) plus noise of standard deviation sigma (seeded).
template <class Value>
ObservationSet observationsOf(const std::vector<double>& xs, double t0, double dt, int count, Value value,
                              double sigma, unsigned seed, bool relative = true) {
    std::mt19937_64 generator(seed);
    std::normal_distribution<double> noise(0.0, sigma);
    ObservationSet set;
    set.relative = relative;
    set.fileName = "synthetic";
    int line = 2;
    for (const double x : xs)
        for (int k = 0; k < count; ++k) {
            Observation o;
            o.x = x;
            o.t = t0 + k * dt;
            o.concentration = value(x, o.t) + (sigma > 0 ? noise(generator) : 0.0);
            o.line = line++;
            set.points.push_back(o);
        }
    return set;
}

inline DataSet sampleModel(const std::string& extension) {
    DataSet d;
    readDataFile(d, (sourceDir() / "data" / "sampldat" / ("sample1" + extension)).string());
    return d;
}

inline FitRequest vary(std::initializer_list<std::string> names) {
    FitRequest request;
    for (const std::string& name : names) request.inputs.push_back(VaryingInput{name, {}, {}, false});
    return request;
}

}  // namespace bm::testkit
