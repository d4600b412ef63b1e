#include "apps/brenmoor-calc/batch_fit.h"

#include "apps/brenmoor-calc/batch_calculator.h"
#include "fitting/fit_parameters.h"
#include "fitting/fit_plot_file.h"
#include "model/number_text.h"

namespace bm {

namespace {

std::vector<std::string> listOf(const std::string& text) {
    std::vector<std::string> items;
    std::size_t start = 0;
    while (start <= text.size()) {
        const std::size_t comma = text.find(',', start);
        const std::string item = trim(text.substr(start, comma == std::string::npos ? std::string::npos : comma - start));
        if (!item.empty()) items.push_back(item);
        if (comma == std::string::npos) break;
        start = comma + 1;
    }
    return items;
}

bool boundOf(const std::string& text, std::optional<double>& bound, std::string& error) {
    const std::string t = trim(text);
    if (t.empty()) return true;
    if (!isNumeric(t)) {
        error = "--vary: the bound \"" + t + "\" is not a number";
        return false;
    }
    bound = textValue(t);
    return true;
}

// NAME, or NAME=LO:HI with either bound left out.
bool varyingInputOf(const std::string& item, VaryingInput& input, std::string& error) {
    const std::size_t equals = item.find('=');
    input.name = trim(item.substr(0, equals));
    if (equals == std::string::npos) return true;
    const std::string bounds = item.substr(equals + 1);
    const std::size_t colon = bounds.find(':');
    if (colon == std::string::npos) {
        error = "--vary: bounds are given as " + input.name + "=LO:HI";
        return false;
    }
    return boundOf(bounds.substr(0, colon), input.lower, error) && boundOf(bounds.substr(colon + 1), input.upper, error);
}

}  // namespace

int takeFitOption(const std::vector<std::string>& args, std::size_t& i, BatchFitOptions& fit, std::string& error) {
    const std::string& a = args[i];
    if (a != "--fit" && a != "--vary" && a != "--log" && a != "--plot") return 0;
    if (i + 1 >= args.size()) {
        error = "option " + a + " needs a value";
        return -1;
    }
    const std::string value = args[++i];
    if (a == "--plot") {
        fit.plotPath = value;
        return 1;
    }
    if (a == "--fit") {
        fit.observations = value;
        return 1;
    }
    if (a == "--log") {
        for (const std::string& name : listOf(value)) fit.logNames.push_back(name);
        return 1;
    }
    for (const std::string& item : listOf(value)) {
        VaryingInput input;
        if (!varyingInputOf(item, input, error)) return -1;
        fit.inputs.push_back(input);
    }
    return 1;
}

bool checkFitOptions(BatchFitOptions& fit, std::string& error) {
    if (fit.asked() && fit.inputs.empty()) {
        error = "--fit needs --vary NAME[,NAME...]";
        return false;
    }
    if (!fit.asked() && (!fit.inputs.empty() || !fit.logNames.empty() || !fit.plotPath.empty())) {
        error = "--vary, --log and --plot go with --fit OBSERVATIONS";
        return false;
    }
    if (fit.plotPath == "-") {
        error = "--plot needs a file name";
        return false;
    }
    for (const std::string& name : fit.logNames) {
        bool found = false;
        for (VaryingInput& input : fit.inputs)
            if (toLower(input.name) == toLower(name)) input.logScale = found = true;
        if (!found) {
            error = "--log names " + name + ", which --vary does not";
            return false;
        }
    }
    return true;
}

std::string fitUsageText() {
    return "  --fit OBS       fit the model to the observed concentrations of OBS (a CSV\n"
           "                  or blank-separated text whose first line names x, y, z as\n"
           "                  the model needs them, t, C or C/Co, and optionally w), print\n"
           "                  the report, and put the estimates into the input rows that\n"
           "                  --save writes (then run with them)\n"
           "  --vary LIST     the inputs to vary, as the data file labels them, with\n"
           "                  optional bounds: Velocity,Dispersion_X=0.01:10,HalfLife\n"
           "  --log LIST      of those, the ones to vary on a log scale; with --fit the\n"
           "                  output file is written only where --output says\n"
           "  --plot FILE     with --fit, write the fit's plot file for Trazel: the\n"
           "                  fitted curve at each observed place, the observations\n"
           "                  and their residuals\n";
}

int fitBatchModel(const BatchFitOptions& fit, DataSet& data, UserInterface& ui, std::FILE* report,
                  std::string& plotText) {
    const ObservationReading reading = readObservations(fit.observations, observationDimension(data));
    if (!reading.set) {
        ui.message(MessageIcon::Exclamation, MessageButtons::Ok, kFitTitle, reading.problem.text);
        return kExitInputRefused;
    }
    FitRequest request;
    request.inputs = fit.inputs;
    const FitReport result = fitModel(data, *reading.set, request, ui);
    if (result.ending == FitEnding::Refused) {
        ui.message(MessageIcon::Exclamation, MessageButtons::Ok, kFitTitle, result.problem);
        return kExitInputRefused;
    }
    const std::string text = fitReportText(result, data);
    std::fwrite(text.data(), 1, text.size(), report);
    std::fflush(report);
    if (!result.fitted()) {
        ui.message(MessageIcon::Critical, MessageButtons::Ok, kFitTitle, result.problem);
        return kExitRuntimeError;
    }
    if (!fit.plotPath.empty()) {
        const std::optional<FitPlot> plot = fitPlotOf(data, result, ui);
        if (!plot) return kExitRuntimeError;
        plotText = fitPlotText(*plot);
    }
    applyEstimates(data, result);
    return kExitDone;
}

}  // namespace bm
