// The Results menu of a model screen: whether the results fit the inputs, the
// stale-results question, the graph and the text view through the output
// file, and the same for a Monte Carlo run.

#include "files/stopped_run_note.h"
#include "files/text_file.h"
#include "model/number_text.h"
#include "model/ranges.h"
#include "montecarlo/pass/kind_calculation.h"
#include "shell/base/error_handler.h"
#include "shell/base/runtime_error.h"
#include "shell/screen/screen_model.h"
#include "shell/screen/viewers.h"

namespace bm {

bool ScreenModel::resultsAreValid() {
    if (data_.dataState == kParametersChanged) return false;
    const KindCalculation* kind = kindCalculation();
    if (!kind || !shownHere()) {
        ui_.message(MessageIcon::Exclamation, MessageButtons::Ok, "brenmoor",
                    "There is an error due to " + modelWords() + ".(Inside holdDataSet)");
        return false;
    }
    if (contains(data_.calculationMode, "Monte Carlo") &&
        kindResults(*kind, data_).upper() == data_.monteStore(kind->kind).monteIterations - 1)
        return true;
    try {
        // Each range of the screen counts the points of its axis of the grid.
        const std::vector<std::string> ranges = rangeTexts();
        if (ranges.empty() || !kind->resultGridBounds) return false;
        return kind->resultGridBounds(data_) == rangeCounts(ranges);
    } catch (const RuntimeError& e) {
        handleError(e, "resultsAreValid", "", ui_);
        return false;
    }
}

std::vector<int> ScreenModel::rangeCounts(const std::vector<std::string>& ranges) const {
    // x and t are read first, then the axes between them.
    const std::size_t last = ranges.size() - 1;
    std::vector<int> counts(ranges.size());
    counts[0] = parseRange(ranges[0]).terms;
    counts[last] = parseRange(ranges[last]).terms;
    for (std::size_t axis = 1; axis < last; ++axis) counts[axis] = parseRange(ranges[axis]).terms;
    return counts;
}

void ScreenModel::outputNotCorrect(const std::string& text) {
    ui_.message(MessageIcon::Exclamation, MessageButtons::Ok, "Error Information", text);
}

void ScreenModel::printLines(const std::vector<PrintedLine>& lines) {
    const std::vector<int> columns = printedTabColumns(lines);
    if (host_) host_->printReport(tabbedReportLines(lines, columns), columns);
}

bool ScreenModel::singlePointGrid() const {
    const ModelKindInfo* kind = modelKindInfo(data_);
    const int d = kind ? kind->dimension : 1;
    if (data_.numXTerms != 1 || data_.numTTerms != 1) return false;
    if (d >= 2 && data_.numYTerms != 1) return false;
    if (d >= 3 && data_.numZTerms != 1) return false;
    return true;
}

bool ScreenModel::resultsQuestionAnswered(const std::string& text) {
    if (!mcPointChangedOf(data_, data_.modelType)) return true;
    return ui_.message(MessageIcon::Question, MessageButtons::YesNo, "Results Not Updated", text, 1) ==
           MessageAnswer::Yes;
}

void ScreenModel::menuResultsClick(int index) {
    if (index != resultsItem::Graph && index != resultsItem::View) return;
    updateResultsMenuState();
    changed();
    if (!resultsQuestionAnswered()) return;
    const bool monteCarlo = data_.calculationMode == "Monte Carlo";
    const auto notCorrect = [this] { outputNotCorrect(); };
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

void ScreenModel::viewResults(const std::string& kind) {
    if (data_.calculationMode.empty()) {
        ui_.message(MessageIcon::Exclamation, MessageButtons::Ok, "No output data",
                    "Output data has not been generated.\r\rPlease click on the Calculate! menu label to generate output "
                    "data.");
        return;
    }
    const std::string saved = helpPanel;
    helpPanel = " " + windowTitle();  // the writers take a while
    changed();
    writeAndShow(&KindCalculation::regularOutput, kind, "viewResults");
    helpPanel = saved;
    changed();
}

void ScreenModel::viewSimulation(const std::string& kind) {
    writeAndShow(&KindCalculation::simulationOutput, kind, "viewSimulation");
}

void ScreenModel::writeAndShow(KindWriter writer, const std::string& kind, const char* routine) {
    const std::string path = plotFileName(state_);
    try {
        const KindCalculation* calculation = kindCalculation();
        if (calculation && calculation->*writer) {
            // A large grid takes a while to write: the pointer says so.
            ui_.setBusy(true);
            writeTextFile(path, (calculation->*writer)(data_));
            ui_.setBusy(false);
        }
        markStoppedRun(path, data_.runStopped);
        if (kind == "Trazelh")
            viewGraph(path, state_, ui_);
        else
            viewText(path, state_, ui_);
    } catch (const RuntimeError& e) {
        ui_.setBusy(false);
        handleError(e, routine, path, ui_);
    }
}

}  // namespace bm
