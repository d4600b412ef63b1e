#pragma once
// What the fit's plot shows: at each observed place, the fitted model's
// breakthrough curve (concentration against time) with the observations
// made there, and the residuals.

#include <string>
#include <vector>

#include "fitting/fitter.h"
#include "model/data_set.h"
#include "shell/base/user_interface.h"

namespace bm {

struct FitCurve {
    std::string place;                   // "x = 3", "x = 100, y = 0", ...
    std::vector<double> times, values;   // the fitted model
    std::vector<double> observedTimes, observedValues;
};

// The curves of the first `places` observed places at `points` times up
// to the last observed time, with the estimates in the model's rows. Run-time
// errors of the calculation propagate.
std::vector<FitCurve> fittedCurves(const DataSet& model, const FitReport& report, UserInterface& ui, int points = 101,
                                   int places = 8);

}  // namespace bm
