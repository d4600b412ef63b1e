// The Results menu of the saturated model screen: whether the result grid fits
// the inputs, the stale-results question, the graph and the text view through
// the output file, and the same for a Monte Carlo run.

#include "model/number_text.h"
#include "model/ranges.h"
#include "saturated/input_form_model.h"
#include "files/text_file.h"
#include "saturated/output_file.h"
#include "shell/error_handler.h"
#include "shell/runtime_error.h"
#include "shell/viewers.h"

namespace bm {

namespace {

List<double>& mcResultOf(DataSet& data, int dimension) {
    switch (dimension) {
    case 2: return data.mcResult2D;
    case 3: return data.mcResult3D;
    default: return data.mcResult1D;
    }
}

ModelKind kindOf(int dimension) {
    switch (dimension) {
    case 2: return ModelKind::TwoDimensional;
    case 3: return ModelKind::ThreeDimensional;
    default: return ModelKind::OneDimensional;
    }
}

}  // namespace

bool InputFormModel::resultsAreValid() {
    if (data_.dataState == kParametersChanged) return false;
    const int d = dimensionOfModelType(data_.modelType);
    if (d == 0) {
        ui_.message(MessageIcon::Exclamation, MessageButtons::Ok, "brenmoor",
                    std::string("There is an error due to ") + "Saturated Model" + ".(Inside holdDataSet)");
        return false;
    }
    if (contains(data_.calculationMode, "Monte Carlo") &&
        mcResultOf(data_, d).ub() == data_.monteStore(kindOf(d)).monteIterations - 1)
        return true;
    try {
        const DimensionRows& n = dimensionRows(d);
        if (d != dimension_) return false;
        const int nx = parseRange(row(n.x).text).terms;
        const int nt = parseRange(row(n.t).text).terms;
        switch (d) {
        case 1: return data_.result1D.ub(0) == nx && data_.result1D.ub(1) == nt;
        case 2: {
            const int ny = parseRange(row(n.y).text).terms;
            return data_.result2D.ub(0) == nx && data_.result2D.ub(1) == ny && data_.result2D.ub(2) == nt;
        }
        default: {
            const int ny = parseRange(row(n.y).text).terms;
            const int nz = parseRange(row(n.z).text).terms;
            return data_.result3D.ub(0) == nx && data_.result3D.ub(1) == ny && data_.result3D.ub(2) == nz &&
                   data_.result3D.ub(3) == nt;
        }
        }
    } catch (const RuntimeError& e) {
        handleError(e, "resultsAreValid", "", ui_);
        return false;
    }
}

bool InputFormModel::singlePointGrid() const {
    const int d = dimensionOfModelType(data_.modelType);
    if (data_.numXTerms != 1 || data_.numTTerms != 1) return false;
    if (d >= 2 && data_.numYTerms != 1) return false;
    if (d >= 3 && data_.numZTerms != 1) return false;
    return true;
}

void InputFormModel::menuResultsClick(int index) {
    if (index != resultsItem::Graph && index != resultsItem::View) return;
    updateResultsMenuState();
    changed();
    if (mcPointChangedOf(data_, data_.modelType)) {
        const MessageAnswer answer = ui_.message(
            MessageIcon::Question, MessageButtons::YesNo, "Results Not Updated",
            "Input data has been changed. The results shown would be from a previous computation.\rIn order to "
            "update the results please press calculate from the menu.\r\rDo you want to continue ?",
            1);
        if (answer != MessageAnswer::Yes) return;
    }
    const bool monteCarlo = data_.calculationMode == "Monte Carlo";
    const auto notCorrect = [this] {
        ui_.message(MessageIcon::Exclamation, MessageButtons::Ok, "Error Information",
                    "Output Data are not correct! \r\r  Please select calculate before choosing this option.");
    };
    if (index == resultsItem::Graph) {
        if (resultsAreValid()) {
            if (monteCarlo)
                menuMonteCarloClick(monteCarloItem::Graph);
            else
                viewResults("Trazelh");
        } else if (singlePointGrid()) {
            ui_.message(MessageIcon::Information, MessageButtons::Ok, "Error Information",
                        "Only single value at x = " + formatNumber(data_.xConstant) + " and t = " +
                            formatNumber(data_.tConstant) + " is computed! ");
        } else {
            notCorrect();
        }
    } else {
        if (singlePointGrid() || resultsAreValid()) {
            if (monteCarlo)
                menuMonteCarloClick(monteCarloItem::View);
            else
                viewResults("Numbers");
        } else {
            notCorrect();
        }
    }
}

void InputFormModel::viewResults(const std::string& kind) {
    if (data_.calculationMode.empty()) {
        ui_.message(MessageIcon::Exclamation, MessageButtons::Ok, "No output data",
                    "Output data has not been generated.\r\rPlease click on the Calculate! menu label to generate output "
                    "data.");
        return;
    }
    const std::string saved = helpPanel;
    helpPanel = " " + windowTitle();  // the writers take a while
    changed();
    const std::string path = plotFileName(state_);
    try {
        // A large grid takes a while to write: the pointer says so.
        ui_.setBusy(true);
        switch (dimensionOfModelType(data_.modelType)) {
        case 1: writeOutput1D(data_, path); break;
        case 2: writeOutput2D(data_, path); break;
        case 3: writeOutput3D(data_, path); break;
        default: break;
        }
        ui_.setBusy(false);
        if (kind == "Trazelh")
            viewGraph(path, state_, ui_);
        else
            viewText(path, state_, ui_);
    } catch (const RuntimeError& e) {
        ui_.setBusy(false);
        handleError(e, "viewResults", path, ui_);
    }
    helpPanel = saved;
    changed();
}

void InputFormModel::viewSimulation(const std::string& kind) {
    const std::string path = plotFileName(state_);
    try {
        ui_.setBusy(true);
        writeTextFile(path, monteCarloOutputText(data_, dimensionOfModelType(data_.modelType)));
        ui_.setBusy(false);
        if (kind == "Trazelh")
            viewGraph(path, state_, ui_);
        else
            viewText(path, state_, ui_);
    } catch (const RuntimeError& e) {
        ui_.setBusy(false);
        handleError(e, "viewSimulation", path, ui_);
    }
}

}  // namespace bm
