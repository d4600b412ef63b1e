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
    double x = 0, y = 0, z = 0;          // the place (0 on an axis the model lacks)
    std::vector<double> times, values;   // the fitted model
    std::vector<double> observedTimes, observedValues;
    std::vector<int> members;            // the observations made there, as indexes into the report's
};

// A place as the fit shows it: "x = 50", "x = 50, y = 0" or "x = 50, y = 0, z = 2.5".
std::string placeText(double x, double y, double z, int dimension);

// The curves of the first `places` observed places (in the order of their
// coordinates) at `points` times up to the last observed time, with the
// estimates in the model's rows; empty when Stop ended the run. Run-time
// errors of the calculation propagate.
std::vector<FitCurve> fittedCurves(const DataSet& model, const FitReport& report, UserInterface& ui, int points = 101,
                                   int places = 8);

}  // namespace bm
