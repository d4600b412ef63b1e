#pragma once
// Fitting a single-chemical model to observed concentrations: weighted least
// squares over the inputs the user lets vary, solved by Levenberg-Marquardt
// (Ceres Solver) with central-difference derivatives of the model as its
// kind calculates it. The model given is never changed; the estimates come
// back in a report with their standard errors, 95 % confidence intervals,
// correlations, the goodness of fit, every residual, how the solver ended and
// the warnings of an ill-posed problem.

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "fitting/observations.h"
#include "model/data_set.h"
#include "shell/base/user_interface.h"

namespace bm {

// An input let vary: its name as the data file labels it, optional bounds,
// and whether the solver works on its logarithm.
struct VaryingInput {
    std::string name;
    std::optional<double> lower, upper;
    bool logScale = false;
};

struct FitRequest {
    std::vector<VaryingInput> inputs;
    int maxIterations = 100;
};

struct FitEstimate {
    std::string name;      // the data file's label
    double start = 0;      // the model's value
    double value = 0;      // the estimate
    double standardError = 0;
    double lower95 = 0, upper95 = 0;
    std::optional<double> lowerBound, upperBound;  // as the solver had them (an implied 0 included)
    bool logScale = false;
    bool onBound = false;
};

enum class FitEnding { Refused, Converged, IterationLimit, Stopped, Failed };

struct FitReport {
    FitEnding ending = FitEnding::Refused;
    std::string problem;  // why the fit was refused, as its message says
    std::vector<FitEstimate> estimates;
    std::vector<std::vector<double>> covariance, correlation;  // empty when singular
    bool singular = false;
    double conditionNumber = 0;

    int observations = 0;
    int degreesOfFreedom = 0;
    double tQuantile = 0;             // two-sided 95 % of Student's t with the degrees of freedom
    double weightedSumOfSquares = 0;  // sum of w (C - model)^2
    double residualStandardError = 0; // sqrt(weightedSumOfSquares / degreesOfFreedom)
    double rmse = 0;                  // of the unweighted residuals
    double rSquared = 0;              // 1 - SSres / SStot, unweighted
    bool relative = false;            // the observations were C/Co
    ObservationSet observed;          // the observations fitted
    int dimension = 1;                // their axes in space
    std::vector<double> modelled, residuals;  // per observation: the model, observed - model

    int iterations = 0;
    long long modelRuns = 0;
    std::string stopReason;
    std::vector<std::string> warnings;

    bool fitted() const { return ending != FitEnding::Refused && ending != FitEnding::Failed; }
};

// What a running fit tells its caller and asks it: after each solver
// iteration (its number and the weighted sum of squares) and between model
// runs (so that a Stop button can be read). Either returns false to stop.
struct FitControl {
    std::function<bool(int iteration, double sumOfSquares)> iterationDone;
    std::function<bool()> keepGoing;
};

// The checks before a fit, as the report's problem when refused: a kind the
// pass calculates with one chemical, known and distinct names, no Monte Carlo
// marker in a varying row, numeric starts inside their bounds, bounds in
// order (above 0 on a log scale), C/Co observations only where the model
// computes relative concentrations, every observation inside the model's
// domain, more observations than inputs let vary.
std::string fitProblem(const DataSet& model, const ObservationSet& observations, const FitRequest& request);

// Runs the fit. The model's calculation messages go to `ui`; its progress does not.
FitReport fitModel(const DataSet& model, const ObservationSet& observations, const FitRequest& request,
                   UserInterface& ui, const FitControl& control = {});

// The model with the estimates in its input rows, as the rows hold them (seven significant digits).
void applyEstimates(DataSet& model, const FitReport& report);

// The report as text: the estimates table, the correlations, the fit's
// figures, how the solver ended, the warnings and every residual.
std::string fitReportText(const FitReport& report, const DataSet& model);

// The two-sided 95 % quantile of Student's t with `degreesOfFreedom` (>= 1).
double studentT95(int degreesOfFreedom);

}  // namespace bm
