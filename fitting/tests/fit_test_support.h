#pragma once
// Models and synthetic observations for the fit tests: observations made from
// known inputs (the closed form of the semi-infinite column, or a regular
// Calculate! run over a grid) with Gaussian noise of fixed seeds.

#include <random>
#include <string>
#include <vector>

#include "files/data_file.h"
#include "fitting/fit_parameters.h"
#include "fitting/fitter.h"
#include "model/data_set.h"
#include "testing/observed_column.h"
#include "testing/one_dim_test_model.h"
#include "model/number_text.h"
#include "testing/scripted_user_interface.h"
#include "testing/test_paths.h"

namespace bm::testkit {

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

#include "montecarlo/pass/calculation_pass.h"
#include "testing/points_file.h"

namespace bm::testkit {

// The model's own values at every point of its grid, from a regular
// Calculate! run over the whole grid (not the fit's point runs): observations
// at the grid points whose (x, y, z) index pairs are listed, at every time.
struct GridPoint {
    int i = 1, j = 1, k = 1;
};
inline ObservationSet gridObservations(DataSet model, const std::vector<GridPoint>& places, double sigma, unsigned seed,
                                       bool relative = true) {
    ScriptedUserInterface ui;
    const CalculationOutcome outcome = runCalculation(model, ui);
    EXPECT_TRUE(outcome.finished);
    std::mt19937_64 generator(seed);
    std::normal_distribution<double> noise(0.0, sigma);
    ObservationSet set;
    set.relative = relative;
    set.fileName = "synthetic";
    const BlockLayout layout = blockLayoutOf(model.modelType);
    int line = 2;
    const bool var = layout == BlockLayout::TimeVarying;
    const int nt = var ? model.numTTerms : model.tValues.ub();
    for (const GridPoint& p : places)
        for (int t = 1; t <= nt; ++t) {
            Observation o;
            o.line = line++;
            double value = 0;
            if (var) {
                o.x = model.varXValues(p.i);
                o.y = model.varYValues(p.j);
                o.t = model.varTValues(t);
                value = model.resultVar((t - 1) * model.numXTerms * model.numYTerms + (p.i - 1) * model.numYTerms + p.j);
            } else {
                o.x = model.xValues(p.i);
                o.t = model.tValues(t);
                if (layout == BlockLayout::TwoDimensional) {
                    o.y = model.yValues(p.j);
                    value = model.result2D(p.i, p.j, t);
                } else if (layout == BlockLayout::ThreeDimensional) {
                    o.y = model.yValues(p.j);
                    o.z = model.zValues(p.k);
                    value = model.result3D(p.i, p.j, p.k, t);
                } else if (layout == BlockLayout::Unsaturated) {
                    value = model.resultUnsat(p.i, t);
                } else {
                    value = model.result1D(p.i, t);
                }
            }
            if (!relative && !var) value *= textValue(model.terms(1).concentration);
            o.concentration = value + (sigma > 0 ? noise(generator) : 0.0);
            set.points.push_back(o);
        }
    return set;
}

}  // namespace bm::testkit
