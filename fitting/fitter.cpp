#include "fitting/fitter.h"

#include <ceres/ceres.h>
#include <glog/logging.h>

#include <Eigen/Dense>
#include <cmath>
#include <limits>
#include <memory>
#include <set>

#include "fitting/fit_parameters.h"
#include "fitting/model_evaluator.h"
#include "model/model_kinds.h"
#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/kind_calculation.h"
#include "shell/base/runtime_error.h"

namespace bm {

namespace {

// The calculation's messages reach the user, each once however many runs
// raise it; its per-point progress does not (the fit reports its own), and
// events pass only where the fit lets them.
class FitUserInterface : public UserInterface {
public:
    explicit FitUserInterface(UserInterface& ui) : ui_(ui) {}
    MessageAnswer showMessage(const MessageRequest& request) override {
        if (!shown_.insert(request.title + "\n" + request.text).second) return defaultAnswer(request);
        return ui_.showMessage(request);
    }
    std::optional<std::string> askFile(const FileDialogRequest& request) override { return ui_.askFile(request); }
    void setBusy(bool) override {}
    void reportProgress(ProgressOwner, double, double) override {}
    void processEvents() override {}
    bool startProgram(const std::string& program, const std::vector<std::string>& arguments) override {
        return ui_.startProgram(program, arguments);
    }

private:
    UserInterface& ui_;
    std::set<std::string> shown_;
};

// One varying input as the solver sees it: u = value / scale, or ln(value).
struct Variable {
    FitParameterInfo info;
    VaryingInput input;
    double start = 0;
    double scale = 1;
    std::optional<double> lower, upper;  // in values, an implied 0 included

    double value(double u) const { return input.logScale ? std::exp(u) : u * scale; }
    double solverValue(double v) const { return input.logScale ? std::log(v) : v / scale; }
    // d value / d u
    double slope(double u) const { return input.logScale ? std::exp(u) : scale; }
};

std::string number(double value) { return generalText(value); }

// The weighted residuals sqrt(w) (model - observed) and their Jacobian by
// central differences in the solver's variables (one-sided at a bound or
// where the model cannot be calculated on one side).
class ObservationCost final : public ceres::CostFunction {
public:
    ObservationCost(ModelEvaluator& evaluator, const ObservationSet& observations, const std::vector<Variable>& variables,
                    UserInterface& ui, const FitControl& control)
        : evaluator_(evaluator), observations_(observations), variables_(variables), ui_(ui), control_(control) {
        set_num_residuals(static_cast<int>(observations.points.size()));
        mutable_parameter_block_sizes()->push_back(static_cast<int>(variables.size()));
        step_ = evaluator.singlePrecision() ? 1e-3 : 1e-6;
    }

    // Weighted residuals at u; nothing when the model cannot be calculated there.
    std::optional<std::vector<double>> residualsAt(const std::vector<double>& u) const {
        if (stopped_ || (control_.keepGoing && !control_.keepGoing())) {
            stopped_ = true;
            return std::nullopt;
        }
        std::vector<double> values(u.size());
        for (std::size_t k = 0; k < u.size(); ++k) {
            values[k] = variables_[k].value(u[k]);
            if (!std::isfinite(values[k])) return std::nullopt;
        }
        std::optional<std::vector<double>> modelled;
        try {
            modelled = evaluator_.evaluate(values, ui_);
        } catch (const RuntimeError&) {
            return std::nullopt;
        }
        if (!modelled) {
            stopped_ = true;
            return std::nullopt;
        }
        std::vector<double> r(modelled->size());
        for (std::size_t i = 0; i < r.size(); ++i) {
            const Observation& o = observations_.points[i];
            r[i] = std::sqrt(o.weight) * ((*modelled)[i] - o.concentration);
            if (!std::isfinite(r[i])) return std::nullopt;
        }
        return r;
    }

    // The Jacobian of the weighted residuals in u (column-major, n x p); nothing when a column fails.
    std::optional<Eigen::MatrixXd> jacobianAt(const std::vector<double>& u, const std::vector<double>& r0) const {
        const std::size_t n = r0.size(), p = u.size();
        Eigen::MatrixXd J(n, p);
        for (std::size_t k = 0; k < p; ++k) {
            const double h = step_ * std::max(1.0, std::fabs(u[k]));
            std::vector<double> up = u, down = u;
            up[k] += h;
            down[k] -= h;
            const bool upInside = inside(k, up[k]), downInside = inside(k, down[k]);
            std::optional<std::vector<double>> rUp, rDown;
            if (upInside) rUp = residualsAt(up);
            if (downInside) rDown = residualsAt(down);
            for (std::size_t i = 0; i < n; ++i) {
                if (rUp && rDown) J(i, k) = ((*rUp)[i] - (*rDown)[i]) / (2 * h);
                else if (rUp) J(i, k) = ((*rUp)[i] - r0[i]) / h;
                else if (rDown) J(i, k) = (r0[i] - (*rDown)[i]) / h;
                else return std::nullopt;
            }
            if (stopped_) return std::nullopt;
        }
        return J;
    }

    // Stop was asked for: every later evaluation fails at once.
    bool stopped() const { return stopped_; }

    bool Evaluate(double const* const* parameters, double* residuals, double** jacobians) const override {
        const std::size_t p = variables_.size();
        const std::vector<double> u(parameters[0], parameters[0] + p);
        const auto r = residualsAt(u);
        if (!r) return false;
        std::copy(r->begin(), r->end(), residuals);
        if (jacobians != nullptr && jacobians[0] != nullptr) {
            const auto J = jacobianAt(u, *r);
            if (!J) return false;
            for (Eigen::Index i = 0; i < J->rows(); ++i)
                for (Eigen::Index k = 0; k < J->cols(); ++k) jacobians[0][i * J->cols() + k] = (*J)(i, k);
        }
        return true;
    }

private:
    bool inside(std::size_t k, double u) const {
        const Variable& v = variables_[k];
        const double value = v.value(u);
        if (v.lower && value < *v.lower) return false;
        if (v.upper && value > *v.upper) return false;
        return true;
    }

    ModelEvaluator& evaluator_;
    const ObservationSet& observations_;
    const std::vector<Variable>& variables_;
    UserInterface& ui_;
    const FitControl& control_;
    double step_ = 1e-6;
    mutable bool stopped_ = false;
};

class IterationReporter final : public ceres::IterationCallback {
public:
    IterationReporter(const FitControl& control, const ObservationCost& cost) : control_(control), cost_(cost) {}
    ceres::CallbackReturnType operator()(const ceres::IterationSummary& summary) override {
        if (cost_.stopped()) {
            stopped = true;
            return ceres::SOLVER_ABORT;
        }
        if (control_.iterationDone && !control_.iterationDone(summary.iteration, 2.0 * summary.cost)) {
            stopped = true;
            return ceres::SOLVER_ABORT;
        }
        return ceres::SOLVER_CONTINUE;
    }
    bool stopped = false;

private:
    const FitControl& control_;
    const ObservationCost& cost_;
};

// The variables of a request, or the problem that refuses it.
std::string variablesOf(const DataSet& model, const FitRequest& request, std::vector<Variable>& variables) {
    const std::vector<FitParameterInfo> known = fitParametersOf(model);
    std::set<std::string> seen;
    for (const VaryingInput& input : request.inputs) {
        const FitParameterInfo* info = findFitParameter(known, input.name);
        if (info == nullptr) {
            std::string names;
            for (const FitParameterInfo& k : known) names += (names.empty() ? "" : ", ") + k.name;
            return "The model has no input named \"" + input.name + "\" that a fit can vary. It can vary: " + names + ".";
        }
        if (!seen.insert(info->name).second) return info->name + " is named twice.";
        const std::string& text = fitParameterText(model, *info);
        if (holdsMonteMarker(text))
            return info->name + " holds a Monte Carlo marker: a row under Monte Carlo cannot vary in a fit.";
        if (!isNumeric(text)) return info->name + " holds no number to start the fit from (\"" + trim(text) + "\").";
        Variable v{*info, input, textValue(text), 1.0, input.lower, input.upper};
        v.scale = v.start != 0.0 ? std::fabs(v.start) : 1.0;
        if (v.lower && v.upper && !(*v.lower < *v.upper))
            return "The lower bound of " + info->name + " (" + number(*v.lower) + ") must lie below its upper bound (" +
                   number(*v.upper) + ").";
        if ((v.lower && v.start < *v.lower) || (v.upper && v.start > *v.upper))
            return "The model's " + info->name + " (" + number(v.start) + ") lies outside the bounds given for it.";
        if (input.logScale && !(v.start > 0.0))
            return info->name + " must be above 0 to vary on a log scale (it is " + number(v.start) + ").";
        if (input.logScale && v.lower && !(*v.lower > 0.0))
            return "On a log scale the lower bound of " + info->name + " must be above 0.";
        // A physical input that must be positive keeps above zero.
        if (info->positive && !v.lower && v.start > 0.0 && !input.logScale) v.lower = 0.0;
        variables.push_back(v);
    }
    if (variables.empty()) return "Choose at least one input to vary.";
    return {};
}

// Why the fit cannot be made (empty when it can), with the inputs it varies.
std::string checkedVariables(const DataSet& model, const ObservationSet& observations, const FitRequest& request,
                             std::vector<Variable>& variables) {
    const KindCalculation* kind = kindCalculationOf(model);
    if (kind == nullptr || model.multiChemical)
        return "Only a single-chemical model that this program calculates can be fitted to observations.";
    if (std::string problem = variablesOf(model, request, variables); !problem.empty()) return problem;
    if (observations.relative && blockLayoutOf(model.modelType) == BlockLayout::TimeVarying)
        return "The time-varying model computes concentrations, not C/Co: name the observation column C.";
    if (std::string outside = observationsOutsideDomain(observations, model); !outside.empty()) return outside;
    const std::size_t n = observations.points.size(), p = variables.size();
    if (n <= p)
        return std::to_string(n) + (n == 1 ? " observation" : " observations") + " cannot determine " +
               std::to_string(p) + (p == 1 ? " input" : " inputs") + ": give at least " + std::to_string(p + 1) +
               " observations.";
    return {};
}

}  // namespace

std::string fitProblem(const DataSet& model, const ObservationSet& observations, const FitRequest& request) {
    std::vector<Variable> variables;
    return checkedVariables(model, observations, request, variables);
}

FitReport fitModel(const DataSet& model, const ObservationSet& observations, const FitRequest& request,
                   UserInterface& ui, const FitControl& control) {
    FitReport report;
    report.relative = observations.relative;
    report.observed = observations;
    report.dimension = observationDimension(model);
    report.observations = static_cast<int>(observations.points.size());
    std::vector<Variable> variables;
    report.problem = checkedVariables(model, observations, request, variables);
    if (!report.problem.empty()) return report;
    std::vector<FitParameterInfo> infos;
    for (const Variable& v : variables) infos.push_back(v.info);

    // The solver's own log lines would only repeat what the report says.
    FLAGS_minloglevel = google::GLOG_FATAL;
    FitUserInterface quiet(ui);
    ModelEvaluator evaluator(model, *kindCalculationOf(model), observations, infos);
    auto* cost = new ObservationCost(evaluator, observations, variables, quiet, control);
    const std::size_t p = variables.size(), n = observations.points.size();
    std::vector<double> u(p);
    for (std::size_t k = 0; k < p; ++k) u[k] = variables[k].solverValue(variables[k].start);

    if (!cost->residualsAt(u)) {
        report.ending = FitEnding::Failed;
        report.problem = cost->stopped() ? "The fit was stopped before it began."
                                         : "The model cannot be calculated at its own values: check its inputs with "
                                           "Calculate! first.";
        delete cost;
        return report;
    }

    ceres::Problem::Options problemOptions;
    problemOptions.cost_function_ownership = ceres::TAKE_OWNERSHIP;
    ceres::Problem problem(problemOptions);
    problem.AddResidualBlock(cost, nullptr, u.data());
    for (std::size_t k = 0; k < p; ++k) {
        const Variable& v = variables[k];
        if (v.lower) problem.SetParameterLowerBound(u.data(), static_cast<int>(k), v.solverValue(*v.lower));
        if (v.upper) problem.SetParameterUpperBound(u.data(), static_cast<int>(k), v.solverValue(*v.upper));
    }

    IterationReporter reporter(control, *cost);
    ceres::Solver::Options options;
    options.minimizer_type = ceres::TRUST_REGION;
    options.trust_region_strategy_type = ceres::LEVENBERG_MARQUARDT;
    options.linear_solver_type = ceres::DENSE_QR;
    options.max_num_iterations = request.maxIterations;
    options.function_tolerance = 1e-12;
    options.gradient_tolerance = 1e-14;
    options.parameter_tolerance = 1e-12;
    options.logging_type = ceres::SILENT;
    options.minimizer_progress_to_stdout = false;
    options.num_threads = 1;
    options.update_state_every_iteration = true;
    options.callbacks.push_back(&reporter);
    ceres::Solver::Summary summary;
    ceres::Solve(options, &problem, &summary);
    const bool stoppedInside = cost->stopped();
    report.iterations = std::max(0, static_cast<int>(summary.iterations.size()) - 1);

    if (stoppedInside || reporter.stopped || summary.termination_type == ceres::USER_FAILURE) {
        report.ending = FitEnding::Stopped;
        report.stopReason = "Stopped by the user after " + std::to_string(report.iterations) + " iterations.";
    } else if (summary.termination_type == ceres::CONVERGENCE || summary.termination_type == ceres::USER_SUCCESS) {
        report.ending = FitEnding::Converged;
        report.stopReason = "Converged after " + std::to_string(report.iterations) + " iterations: " + summary.message;
    } else if (summary.termination_type == ceres::NO_CONVERGENCE) {
        report.ending = FitEnding::IterationLimit;
        report.stopReason = "Stopped at the limit of " + std::to_string(request.maxIterations) +
                            " iterations without converging.";
        report.warnings.push_back("The fit did not converge: the estimates are where the solver stopped.");
    } else {
        report.ending = FitEnding::Failed;
        report.problem = "The solver failed: " + summary.message;
        report.stopReason = report.problem;
        return report;
    }

    // The figures at the estimates: residuals and a fresh Jacobian.
    FitControl noStop;
    ObservationCost final(evaluator, observations, variables, quiet, noStop);
    const auto r = final.residualsAt(u);
    if (!r) {
        report.ending = FitEnding::Failed;
        report.problem = "The model cannot be calculated at the estimates.";
        return report;
    }
    report.modelled.resize(n);
    report.residuals.resize(n);
    double mean = 0.0;
    for (const Observation& o : observations.points) mean += o.concentration;
    mean /= static_cast<double>(n);
    double ssRes = 0.0, ssTot = 0.0;
    for (std::size_t i = 0; i < n; ++i) {
        const Observation& o = observations.points[i];
        report.modelled[i] = o.concentration + (*r)[i] / std::sqrt(o.weight);
        report.residuals[i] = o.concentration - report.modelled[i];
        report.weightedSumOfSquares += (*r)[i] * (*r)[i];
        ssRes += report.residuals[i] * report.residuals[i];
        ssTot += (o.concentration - mean) * (o.concentration - mean);
    }
    report.degreesOfFreedom = static_cast<int>(n - p);
    report.residualStandardError = std::sqrt(report.weightedSumOfSquares / report.degreesOfFreedom);
    report.rmse = std::sqrt(ssRes / static_cast<double>(n));
    report.rSquared = ssTot > 0.0 ? 1.0 - ssRes / ssTot : 0.0;
    report.tQuantile = studentT95(report.degreesOfFreedom);
    report.modelRuns = evaluator.runs();

    for (std::size_t k = 0; k < p; ++k) {
        const Variable& v = variables[k];
        FitEstimate e;
        e.name = v.info.name;
        e.start = v.start;
        e.value = v.value(u[k]);
        e.lowerBound = v.lower;
        e.upperBound = v.upper;
        e.logScale = v.input.logScale;
        const auto near = [&](double bound) { return std::fabs(e.value - bound) <= 1e-6 * std::max(std::fabs(bound), std::fabs(v.scale)); };
        e.onBound = (v.lower && near(*v.lower)) || (v.upper && near(*v.upper));
        if (e.onBound)
            report.warnings.push_back(e.name + " ended on its bound (" + number(v.lower && near(*v.lower) ? *v.lower : *v.upper) +
                                      "): its standard error and interval do not hold.");
        report.estimates.push_back(e);
    }

    // Covariance s^2 (J^T W J)^-1 in the inputs' own units, from the Jacobian in u.
    const auto Ju = final.jacobianAt(u, *r);
    if (!Ju) {
        report.singular = true;
        report.warnings.push_back("The model cannot be calculated around the estimates: no standard errors.");
        return report;
    }
    Eigen::MatrixXd J = *Ju;
    for (std::size_t k = 0; k < p; ++k) J.col(static_cast<Eigen::Index>(k)) /= variables[k].slope(u[k]);
    const Eigen::MatrixXd A = J.transpose() * J;
    Eigen::VectorXd d = A.diagonal().cwiseSqrt();
    const double s2 = report.weightedSumOfSquares / report.degreesOfFreedom;
    bool zeroColumn = false;
    for (Eigen::Index k = 0; k < d.size(); ++k)
        if (!(d(k) > 0.0)) zeroColumn = true;
    double ratio = 0.0;
    Eigen::MatrixXd scaled;
    if (!zeroColumn) {
        scaled = d.cwiseInverse().asDiagonal() * A * d.cwiseInverse().asDiagonal();
        Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> eigen(scaled);
        const double largest = eigen.eigenvalues().maxCoeff(), smallest = eigen.eigenvalues().minCoeff();
        ratio = smallest / largest;
        report.conditionNumber = ratio > 0.0 ? 1.0 / ratio : std::numeric_limits<double>::infinity();
    }
    if (zeroColumn || ratio < 1e-14) {
        report.singular = true;
        std::string names;
        for (std::size_t k = 0; k < p; ++k)
            if (zeroColumn ? !(d(static_cast<Eigen::Index>(k)) > 0.0) : true)
                names += (names.empty() ? "" : ", ") + variables[k].info.name;
        report.warnings.push_back("The covariance matrix is singular: the observations cannot determine " + names +
                                  (zeroColumn ? " (the model does not change with it)" : " separately") +
                                  "; no standard errors.");
        return report;
    }
    if (ratio < 1e-10)
        report.warnings.push_back("The covariance matrix is nearly singular (condition number " +
                                  number(report.conditionNumber) + "): the standard errors are unreliable.");
    const Eigen::MatrixXd inverseScaled = scaled.ldlt().solve(Eigen::MatrixXd::Identity(static_cast<Eigen::Index>(p), static_cast<Eigen::Index>(p)));
    const Eigen::MatrixXd covariance = s2 * d.cwiseInverse().asDiagonal() * inverseScaled * d.cwiseInverse().asDiagonal();
    report.covariance.assign(p, std::vector<double>(p));
    report.correlation.assign(p, std::vector<double>(p));
    for (std::size_t a = 0; a < p; ++a)
        for (std::size_t b = 0; b < p; ++b) {
            const auto ia = static_cast<Eigen::Index>(a), ib = static_cast<Eigen::Index>(b);
            report.covariance[a][b] = covariance(ia, ib);
            report.correlation[a][b] = covariance(ia, ib) / std::sqrt(covariance(ia, ia) * covariance(ib, ib));
        }
    for (std::size_t k = 0; k < p; ++k) {
        FitEstimate& e = report.estimates[k];
        e.standardError = std::sqrt(report.covariance[k][k]);
        e.lower95 = e.value - report.tQuantile * e.standardError;
        e.upper95 = e.value + report.tQuantile * e.standardError;
    }
    for (std::size_t a = 0; a < p; ++a)
        for (std::size_t b = a + 1; b < p; ++b)
            if (std::fabs(report.correlation[a][b]) > 0.95)
                report.warnings.push_back(report.estimates[a].name + " and " + report.estimates[b].name +
                                          " are correlated (" + number(std::round(report.correlation[a][b] * 1000) / 1000) +
                                          "): the observations barely tell them apart.");
    return report;
}

void applyEstimates(DataSet& model, const FitReport& report) {
    const std::vector<FitParameterInfo> known = fitParametersOf(model);
    for (const FitEstimate& e : report.estimates)
        if (const FitParameterInfo* info = findFitParameter(known, e.name))
            fitParameterText(model, *info) = fittedValueText(e.value);
}

}  // namespace bm
