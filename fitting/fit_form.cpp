#include "fitting/fit_form.h"

#include <set>
#include <tuple>

#include "fitting/fit_parameters.h"
#include "fitting/fit_plot_file.h"
#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "shell/base/runtime_error.h"

namespace bm {

namespace {

void show(UserInterface& ui, const std::string& text) {
    ui.message(MessageIcon::Exclamation, MessageButtons::Ok, kFitTitle, text);
}

// A bound as typed: empty for none; false after the message for a text that is no number.
bool boundOf(const std::string& typed, const std::string& name, const char* which, std::optional<double>& bound,
             UserInterface& ui) {
    const std::string text = trim(typed);
    if (text.empty()) return true;
    if (!isNumeric(text)) {
        show(ui, std::string("The ") + which + " bound of " + name + " (\"" + text + "\") is not a number.");
        return false;
    }
    bound = textValue(text);
    return true;
}

}  // namespace

FitForm::FitForm(const DataSet& model, UserInterface& ui) : model_(model), ui_(ui) {
    for (const FitParameterInfo& parameter : fitParametersOf(model_)) {
        FitInputRow row;
        row.name = parameter.name;
        row.start = trim(fitParameterText(model_, parameter));
        row.enabled = !holdsMonteMarker(row.start);
        if (!row.enabled) row.start = "Monte Carlo";
        rows.push_back(row);
    }
}

bool FitForm::chooseObservations(const std::string& path) {
    const ObservationReading reading = readObservations(path, observationDimension(model_));
    if (!reading.set) {
        show(ui_, reading.problem.text);
        return false;
    }
    observationFile_ = path;
    observations_ = reading.set;
    report_.reset();
    return true;
}

std::string FitForm::observationSummary() const {
    if (!observations_) return "No observations chosen.";
    std::set<std::tuple<double, double, double>> places;
    for (const Observation& o : observations_->points) places.insert({o.x, o.y, o.z});
    const std::size_t n = observations_->points.size();
    return std::to_string(n) + (n == 1 ? " observation of " : " observations of ") +
           (observations_->relative ? "C/Co" : "C") + " at " + std::to_string(places.size()) +
           (places.size() == 1 ? " place" : " places") + (observations_->weighted ? ", weighted" : "");
}

bool FitForm::run(const std::function<void(int, double)>& progress, const std::function<bool()>& keepGoing) {
    if (!observations_) {
        show(ui_, "Choose the file of observed concentrations first.");
        return false;
    }
    FitRequest request;
    for (const FitInputRow& row : rows) {
        if (!row.vary || !row.enabled) continue;
        VaryingInput input{row.name, {}, {}, row.logScale};
        if (!boundOf(row.lower, row.name, "lower", input.lower, ui_) ||
            !boundOf(row.upper, row.name, "upper", input.upper, ui_))
            return false;
        request.inputs.push_back(input);
    }
    FitControl control;
    control.iterationDone = [&](int iteration, double sum) {
        if (progress) progress(iteration, sum);
        return !keepGoing || keepGoing();
    };
    control.keepGoing = keepGoing;
    running_ = true;
    FitReport result;
    try {
        result = fitModel(model_, *observations_, request, ui_, control);
    } catch (const RuntimeError& error) {
        result.ending = FitEnding::Failed;
        result.problem = "The model could not be calculated: error " + std::to_string(error.number()) + ".";
    }
    running_ = false;
    if (result.ending == FitEnding::Refused || result.ending == FitEnding::Failed) {
        show(ui_, result.problem);
        if (result.ending == FitEnding::Refused) return false;
    }
    report_ = std::move(result);
    return true;
}

std::string FitForm::reportText() const { return report_ ? fitReportText(*report_, model_) : std::string(); }

std::vector<FitCurve> FitForm::curves() const {
    if (!report_ || !report_->fitted()) return {};
    try {
        return fittedCurves(model_, *report_, ui_);
    } catch (const RuntimeError&) {
        return {};
    }
}

bool FitForm::writePlot(const std::string& path) const {
    if (!canPlot()) return false;
    std::optional<FitPlot> plot;
    try {
        plot = fitPlotOf(model_, *report_, ui_);
    } catch (const RuntimeError& error) {
        show(ui_, "The fitted curves could not be calculated: error " + std::to_string(error.number()) + ".");
        return false;
    }
    if (!plot) return false;
    writeFitPlot(path, *plot);
    return true;
}

bool FitForm::canApply() const { return report_ && report_->fitted() && !report_->estimates.empty(); }

void FitForm::apply(DataSet& target) const {
    if (canApply()) applyEstimates(target, *report_);
}

}  // namespace bm
