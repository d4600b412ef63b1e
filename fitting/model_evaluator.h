#pragma once
// The model of a fit evaluated at the observations: a working copy of the
// model whose varying inputs are written as texts, run through its kind's
// registration with the calculation pass (the same fill and solve as
// Calculate!), one regular run per observed place over the times observed
// there. The coordinate ranges keep their extents (a finite column's length,
// a strip's walls) and only pick the observed point, as a range's Constant.

#include <optional>
#include <vector>

#include "fitting/fit_parameters.h"
#include "fitting/observations.h"
#include "model/data_set.h"
#include "montecarlo/pass/kind_calculation.h"
#include "shell/base/user_interface.h"

namespace bm {

class ModelEvaluator {
public:
    // The model as given (a copy is kept; every Monte Carlo marker of its
    // inputs stands for its value) and the observations. The kind must be
    // registered with the calculation pass.
    ModelEvaluator(const DataSet& model, const KindCalculation& kind, const ObservationSet& observations,
                   std::vector<FitParameterInfo> varying);

    // The model's concentrations at every observation (C/Co, or C in the
    // model's unit as the observations give it) with the varying inputs at
    // `values`; nothing when Stop ended a run. Run-time errors of the
    // calculation propagate.
    std::optional<std::vector<double>> evaluate(const std::vector<double>& values, UserInterface& ui);

    // Whether the kind keeps its results in single precision (the step of the
    // numerical derivatives is chosen for it).
    bool singlePrecision() const { return singlePrecision_; }
    // The model runs made so far.
    long long runs() const { return runs_; }

    // The input texts of `values` (full precision).
    void writeValues(DataSet& data, const std::vector<double>& values) const;

private:
    struct Place {
        double x = 0, y = 0, z = 0;
        std::string timeRange;       // the run's time range
        std::vector<int> timeIndex;  // of each observation's time in the run's list, from 1
        std::vector<int> members;    // the observations at the place
    };
    void plan();
    double resultAt(int timeIndex) const;
    double sourceConcentration() const;

    DataSet work_;
    const KindCalculation& kind_;
    const ObservationSet& observations_;
    std::vector<FitParameterInfo> varying_;
    std::vector<Place> places_;
    int dimension_ = 1;
    bool singlePrecision_ = false;
    long long runs_ = 0;
};

// A range that picks one value as its Constant and keeps the extent of `range`.
std::string pointRange(const std::string& range, double value);

}  // namespace bm
