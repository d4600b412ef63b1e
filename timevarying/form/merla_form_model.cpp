#include "timevarying/form/merla_form_model.h"

#include "files/text_file.h"
#include "model/number_text.h"
#include "model/ranges.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/calculation_pass.h"
#include "shell/base/error_handler.h"
#include "shell/base/runtime_error.h"
#include "shell/screen/viewers.h"
#include "timevarying/form/merla_report.h"
#include "timevarying/var_record.h"

namespace bm {

namespace {

bool isRangeRow(int index) { return index == varrow::X || index == varrow::Time || index == varrow::Y; }

}  // namespace

MerlaFormModel::MerlaFormModel(DataSet& data, AppState& state, UserInterface& ui)
    : ScreenModel(data, state, ui, ModelScreen::merlaform) {
    aquiferLabel = "Dispersion Coefficient: ";
    rows_ = varRowsOf(DataSet{}, lengthUnit, timeUnit);
    dirty_.assign(rows_.size(), false);
    shownLength_ = lengthUnit;
    shownTime_ = timeUnit;
}

VarRow& MerlaFormModel::row(int index) {
    if (index < 0 || index >= static_cast<int>(rows_.size()))
        throw RuntimeError(340, "Control array element '" + std::to_string(index) + "' doesn't exist");
    return rows_[static_cast<std::size_t>(index)];
}

const VarRow& MerlaFormModel::row(int index) const { return const_cast<MerlaFormModel*>(this)->row(index); }

bool MerlaFormModel::lineSource() const { return isLineSourceCode(varSourceCode(contaminantWord())); }

std::string MerlaFormModel::windowTitlePrefix() const {
    return data_.currentFileName.empty() ? kMerlaTitle : kMerlaFileTitlePrefix;
}

// ---------------------------------------------------------------- display

bool MerlaFormModel::setDisplay() {
    return displayed([this] {
        rows_ = varRowsOf(data_, lengthUnit, timeUnit);
        shownLength_ = lengthUnit;
        shownTime_ = timeUnit;
        dirty_.assign(rows_.size(), false);
        setMonteCarloCaption();
        refreshResultLabel();
    });
}

bool MerlaFormModel::holdDataSet() {
    try {
        holdModelWords();
        if (varSourceCode(data_.contaminantType) == 0) {
            ui_.message(MessageIcon::Exclamation, MessageButtons::Ok, "brenmoor",
                        "There is an error due to " + modelWords() + ".(Inside holdDataSet)");
            return false;
        }
        storeVarRows(rows_, data_);
        data_.currentConcentration = 0.0;
        return true;
    } catch (const RuntimeError& e) {
        handleError(e, "Error in holddataset()", "", ui_);
        return false;
    }
}

void MerlaFormModel::setMonteCarloCaption() { monteCarloCaption = monteCarloInUse() ? "Monte Carlo" : ""; }

// ---------------------------------------------------------------- Monte Carlo markers

bool MerlaFormModel::inputsHoldMarker() const {
    for (const VarRow& r : rows_)
        if (holdsMonteMarker(r.text)) return true;
    return false;
}

bool MerlaFormModel::rowLocked(int index) const {
    if (index < 0 || index >= static_cast<int>(rows_.size())) return false;
    return holdsMonteMarker(row(index).text);
}

// ---------------------------------------------------------------- editing

void MerlaFormModel::rowEdited(int index, const std::string& text) {
    VarRow& r = row(index);
    if (r.text == text || r.result || holdsMonteMarker(r.text)) return;
    r.text = text;
    dirty_[static_cast<std::size_t>(index)] = true;
    markChanged();
}

void MerlaFormModel::rowEntered(int index) {
    if (isRangeRow(index)) {
        helpPanel = hintFor(HintPlace::RangeRow);
        changed();
    }
}

void MerlaFormModel::rewritePointRows() {
    const auto rewrite = [&](int rangeRow, int pointRow) {
        const std::string& rangeText = row(rangeRow).text;
        if (!row(pointRow).enabled || !isRangeForm(rangeText) || !rangeFormatIsValid(rangeText)) return;
        if (holdsMonteMarker(row(pointRow).text)) return;
        row(pointRow).text = formatNumber(rangeConstant(rangeText));
    };
    rewrite(varrow::X, varrow::PointX);
    rewrite(varrow::Y, varrow::PointY);
    rewrite(varrow::Time, varrow::PointT);
}

bool MerlaFormModel::rowLeft(int index) {
    const std::size_t at = static_cast<std::size_t>(index);
    if (!isRangeRow(index) || at >= dirty_.size() || !dirty_[at]) return true;
    const VarRow& r = row(index);
    try {
        if (trim(r.text) != kNotUsed && !checkRangeFormat(r.text, r.caption, ui_)) {
            FocusRequest back;
            back.row = index;
            requestFocus(back);
            changed();
            return false;
        }
        rewritePointRows();
    } catch (const RuntimeError& e) {
        handleError(e, "merlaform", "", ui_);
        return false;
    }
    dirty_[at] = false;
    changed();
    return true;
}

// ---------------------------------------------------------------- units

std::vector<std::string*> MerlaFormModel::unitLabels() {
    std::vector<std::string*> labels;
    for (int i = 0; i < static_cast<int>(rows_.size()); ++i)
        if (i != varrow::Mass && i != varrow::Concentration && !rows_[static_cast<std::size_t>(i)].unitCaption.empty())
            labels.push_back(&rows_[static_cast<std::size_t>(i)].unitCaption);
    return labels;
}

void MerlaFormModel::unitsChanged() {
    for (int i : {varrow::Mass, varrow::Concentration}) {
        std::string& label = row(i).unitCaption;
        if (shownLength_ != lengthUnit) label = relabelCompoundUnit(shownLength_, lengthUnit, label);
        if (shownTime_ != timeUnit) label = relabelCompoundUnit(shownTime_, timeUnit, label);
    }
    shownLength_ = lengthUnit;
    shownTime_ = timeUnit;
}

// ---------------------------------------------------------------- calculation

bool MerlaFormModel::validate() {
    bool valid = false;
    try {
        int failedRow = -1;
        valid = validateVarRows(rows_, ui_, failedRow);
        if (!valid && failedRow >= 0) {
            FocusRequest focus;
            focus.row = failedRow;
            requestFocus(focus);
        }
    } catch (const RuntimeError& e) {
        ui_.setBusy(false);
        handleError(e, "merlaform_validate", "", ui_);
        valid = false;
    }
    ui_.setBusy(false);
    changed();
    return valid;
}

void MerlaFormModel::refreshSelectedPoint() {
    if (data_.calculationMode == "Regular" && !data_.varResultText.empty()) {
        const auto show = [&](int index, std::string& field, double value) {
            if (!row(index).enabled) return;
            field = formatNumber(value);
            row(index).text = field;
        };
        show(varrow::PointX, data_.mcAtX, data_.xConstant);
        show(varrow::PointY, data_.mcAtY, data_.yConstant);
        show(varrow::PointT, data_.mcAtT, data_.tConstant);
    }
    setMonteCarloCaption();
    refreshResultLabel();
}

void MerlaFormModel::refreshResultLabel() {
    const bool monteCarlo = contains(data_.calculationMode, "Monte Carlo");
    resultCaption = monteCarlo ? "Monte Carlo Computed at" : "Computed at";
    if (!data_.varResultText.empty()) {
        resultLabel = data_.varResultText;
    } else if (monteCarlo) {
        // A simulation read from a file: its results stand when they have every iteration.
        const int iterations = data_.monteStore(ModelKind::TimeVarying).monteIterations;
        resultLabel = data_.mcResultVar.ub() == iterations - 1 && iterations > 1 ? "Monte Carlo" : "";
    } else {
        resultLabel = resultLabelFromMode(data_.calculationMode);
    }
    row(varrow::Concentration).text = resultLabel;
}

// ---------------------------------------------------------------- results

std::vector<std::string> MerlaFormModel::rangeTexts() const {
    if (modelKindOf(data_.modelType, false) != ModelKind::TimeVarying) return {};
    return {row(varrow::X).text, row(varrow::Y).text, row(varrow::Time).text};
}

std::vector<int> MerlaFormModel::rangeCounts(const std::vector<std::string>& ranges) const {
    std::vector<int> counts;
    for (const std::string& r : ranges) counts.push_back(varRangeCount(r));
    return counts;
}

std::vector<MenuItem> MerlaFormModel::resultsMenu() const {
    std::vector<MenuItem> items = ScreenModel::resultsMenu();
    items.push_back({kReportItem, "&Report", true, false, true});
    return items;
}

void MerlaFormModel::menuResultsClick(int index) {
    if (index == kReportItem) {
        viewReport();
        return;
    }
    if (index != resultsItem::Graph && index != resultsItem::View) return;
    updateResultsMenuState();
    changed();
    if (!resultsQuestionAnswered(kMerlaStaleResultsText)) return;
    // A simulation's results are the Monte Carlo menu's.
    if (contains(data_.calculationMode, "Monte Carlo")) {
        outputNotCorrect(kMerlaNotCorrectText);
        return;
    }
    if (index == resultsItem::Graph) {
        if (singlePointGrid())
            ui_.message(MessageIcon::Information, MessageButtons::Ok, "Error Information", kSinglePointText);
        else if (resultsAreValid())
            viewResults("Trazelh");
        else
            outputNotCorrect(kMerlaNotCorrectText);
    } else if (singlePointGrid() || resultsAreValid()) {
        viewResults("Numbers");
    } else {
        outputNotCorrect(kMerlaNotCorrectText);
    }
}

// ---------------------------------------------------------------- report

std::string MerlaFormModel::reportFileName() const {
    std::string path = plotFileName(state_);
    const std::size_t dot = path.rfind('.');
    if (dot != std::string::npos) path.erase(dot);
    return path + ".rpt";
}

void MerlaFormModel::printReport() {
    if (!holdDataSet()) return;
    ui_.setBusy(true);
    try {
        printLines(merlaReportLines(data_));
    } catch (const RuntimeError& e) {
        ui_.setBusy(false);
        handleError(e, "printReport", "", ui_);
    }
    ui_.setBusy(false);
}

void MerlaFormModel::viewReport() {
    if (!holdDataSet()) return;
    const std::string path = reportFileName();
    try {
        writeTextFile(path, merlaReportText(data_));
        viewText(path, state_, ui_);
    } catch (const RuntimeError& e) {
        handleError(e, "viewReport", path, ui_);
    }
}

}  // namespace bm
