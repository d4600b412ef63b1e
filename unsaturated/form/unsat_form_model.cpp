#include "unsaturated/form/unsat_form_model.h"

#include <tuple>

#include "model/number_text.h"
#include "model/ranges.h"
#include "model/units.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/calculation_pass.h"
#include "shell/base/checked_math.h"
#include "shell/base/error_handler.h"
#include "shell/base/runtime_error.h"
#include "unsaturated/form/unsat_report.h"

namespace bm {

namespace {

bool isRangeRow(int index) { return index == unsatrow::X || index == unsatrow::Time; }

constexpr const char* kGridReadOnly =
    "Monte Carlo selected values for Contaminant Conc. at Inflow Boundary are read only.\r\rTo unselect a monte "
    "carlo option please use Generate from the Monte Carlo menu.";

}  // namespace

UnsatFormModel::UnsatFormModel(DataSet& data, AppState& state, UserInterface& ui, ModelScreen screen)
    : ScreenModel(data, state, ui, screen) {
    rows_ = unsatRowsOf(DataSet{}, multiChemical(), lengthUnit, timeUnit);
    dirty_.assign(rows_.size(), false);
    grid_.name = "Input1TG";
    grid_.styleName = "MonteCarloStyle1";
}

UnsatRow& UnsatFormModel::row(int index) {
    if (index < 0 || index >= static_cast<int>(rows_.size()))
        throw RuntimeError(340, "Control array element '" + std::to_string(index) + "' doesn't exist");
    return rows_[static_cast<std::size_t>(index)];
}

const UnsatRow& UnsatFormModel::row(int index) const { return const_cast<UnsatFormModel*>(this)->row(index); }

std::string UnsatFormModel::calculationErrorContext() const {
    return multiChemical() ? "Error in calculateRoutine, MCunsatForm" : "Error in calculateRoutine, unsatForm";
}

std::string UnsatFormModel::windowTitlePrefix() const {
    return data_.currentFileName.empty() ? kUnsatTitle : kUnsatFileTitlePrefix;
}

// ---------------------------------------------------------------- display

bool UnsatFormModel::setDisplay() {
    return displayed([this] {
        rows_ = unsatRowsOf(data_, multiChemical(), lengthUnit, timeUnit);
        dirty_.assign(rows_.size(), false);
        SendGWDataToTGData();
        unitsChanged();
        showTables();
        setMonteCarloCaption();
        refreshResultLabel();
    });
}

bool UnsatFormModel::holdDataSet() {
    try {
        holdModelWords();
        storeUnsatRows(rows_, data_);
        if (!multiChemical()) SendTGDataToGWData();
        holdTables();
        parseCoordinates(data_);
        data_.currentConcentration = 0.0;
        return true;
    } catch (const RuntimeError& e) {
        handleError(e, "Error in holddataset()", "", ui_);
        return false;
    }
}

void UnsatFormModel::SendGWDataToTGData() {
    if (!multiChemical()) termsToGrid(data_, grid_);
}

void UnsatFormModel::SendTGDataToGWData() {
    if (!multiChemical()) gridToTerms(grid_, data_);
}

void UnsatFormModel::setMonteCarloCaption() { monteCarloCaption = monteCarloInUse() ? "Monte Carlo" : ""; }

// ---------------------------------------------------------------- Monte Carlo markers and the read-only row

bool UnsatFormModel::inputsHoldMarker() const {
    for (const UnsatRow& r : rows_)
        if (r.inUse && holdsMonteMarker(r.text)) return true;
    if (!multiChemical())
        for (const Term& t : grid_.cells)
            if (holdsMonteMarker(t.concentration)) return true;
    return tablesHoldMarker();
}

bool UnsatFormModel::rowLocked(int index) const {
    if (index < 0 || index >= static_cast<int>(rows_.size())) return false;
    return row(index).readOnly || holdsMonteMarker(row(index).text);
}

std::string UnsatFormModel::readOnlyText(int index) const {
    if (index >= 0 && index < static_cast<int>(rows_.size()) && row(index).readOnly) return kSuperpositionReadOnlyText;
    return ScreenModel::readOnlyText(index);
}

// ---------------------------------------------------------------- editing

void UnsatFormModel::rowEdited(int index, const std::string& text) {
    UnsatRow& r = row(index);
    if (r.text == text || rowLocked(index)) return;
    r.text = text;
    dirty_[static_cast<std::size_t>(index)] = true;
    markChanged();
}

void UnsatFormModel::rowEntered(int index) {
    if (row(index).readOnly) {
        // The focus does not stay on a row that cannot be typed into.
        rowKeyPress(index);
        return;
    }
    if (isRangeRow(index))
        helpPanel = hintFor(HintPlace::RangeRow);
    else if (index == unsatrow::Superposition)
        helpPanel = hintFor(HintPlace::SuperpositionRow);
    changed();
}

void UnsatFormModel::rewritePointRows() {
    const auto rewrite = [&](int rangeRow, int pointRow) {
        const std::string& rangeText = row(rangeRow).text;
        if (!rangeFormatIsValid(rangeText) || holdsMonteMarker(row(pointRow).text)) return;
        if (!isRangeForm(rangeText) && !isScalarRange(rangeText)) return;
        row(pointRow).text = formatNumber(rangeConstant(rangeText));
    };
    rewrite(unsatrow::X, unsatrow::PointX);
    rewrite(unsatrow::Time, unsatrow::PointT);
}

void UnsatFormModel::resizeGrid(int count) {
    // The grid's cells go to the terms, which keep what they hold when resized.
    SendTGDataToGWData();
    data_.superpositionIndex = static_cast<std::int16_t>(count);
    data_.terms.redimPreserve(count);
    SendGWDataToTGData();
}

bool UnsatFormModel::rowLeft(int index) {
    const std::size_t at = static_cast<std::size_t>(index);
    if (at >= dirty_.size() || !dirty_[at]) return true;
    UnsatRow& r = row(index);
    FocusRequest back;
    back.row = index;
    try {
        if (isRangeRow(index)) {
            if (!checkRangeFormat(r.text, r.caption, ui_)) {
                requestFocus(back);
                changed();
                return false;
            }
            rewritePointRows();
        } else if (index == unsatrow::Superposition) {
            if (!superpositionTextAccepted(r.text)) {
                requestFocus(back);
                changed();
                return false;
            }
            resizeGrid(toInt16(textValue(r.text)));
        }
    } catch (const RuntimeError& e) {
        handleError(e, multiChemical() ? "MCunsatForm" : "unsatForm", "", ui_);
        requestFocus(back);
        changed();
        return false;
    }
    dirty_[at] = false;
    changed();
    return true;
}

bool UnsatFormModel::gridBeforeEdit(int row, int column) {
    if (!holdsMonteMarker(grid_.cell(row, column))) return true;
    ui_.message(MessageIcon::Exclamation, MessageButtons::Ok, kReadOnlyTitle, kGridReadOnly);
    return false;
}

void UnsatFormModel::gridEdited(int row, int column, const std::string& text) {
    if (row < 0 || row >= static_cast<int>(grid_.cells.size())) return;
    Term& term = grid_.cells[static_cast<std::size_t>(row)];
    std::string& cell = column == 0 ? term.time : term.concentration;
    if (cell == text || holdsMonteMarker(cell)) return;
    cell = text;
    markChanged();
}

void UnsatFormModel::gridEntered() {
    helpPanel = hintFor(HintPlace::Grid);
    changed();
}

std::string UnsatFormModel::cellStyle(int row, int column) const {
    return holdsMonteMarker(grid_.cell(row, column)) ? grid_.styleName : std::string();
}

// ---------------------------------------------------------------- units

std::vector<std::string*> UnsatFormModel::unitLabels() {
    // Bulk density and the distribution coefficient keep their mass units.
    std::vector<std::string*> labels;
    for (int i = 0; i < static_cast<int>(rows_.size()); ++i)
        if (i != unsatrow::BulkDensity && i != unsatrow::Distribution && !row(i).unitCaption.empty())
            labels.push_back(&row(i).unitCaption);
    return labels;
}

void UnsatFormModel::unitsChanged() {
    grid().timeHeading = timeColumnHeading(timeUnit);
    grid().concentrationHeading =
        concentrationColumnHeading(modelWord(), aquiferWord(), contaminantWord(), concentrationUnit);
}

// ---------------------------------------------------------------- calculation

UnsatChecks UnsatFormModel::checks() {
    UnsatChecks c;
    c.contaminantType = contaminantWord();
    c.terms = &grid_;
    return c;
}

bool UnsatFormModel::validate() {
    bool valid = false;
    try {
        UnsatFailure failure;
        valid = validateUnsatRows(rows_, checks(), ui_, failure);
        if (!valid && (failure.row >= 0 || failure.grid)) {
            FocusRequest focus;
            focus.row = failure.row;
            focus.grid = failure.grid;
            focus.gridRow = failure.gridRow;
            focus.gridColumn = failure.gridColumn;
            focus.editMode = failure.grid;
            if (failure.grid) {
                grid_.currentRow = failure.gridRow;
                grid_.currentColumn = failure.gridColumn;
                grid_.editMode = true;
            }
            requestFocus(focus);
        }
    } catch (const RuntimeError& e) {
        ui_.setBusy(false);
        handleError(e, calculationErrorContext(), "", ui_);
        valid = false;
    }
    ui_.setBusy(false);
    changed();
    return valid;
}

void UnsatFormModel::refreshSelectedPoint() {
    // A regular run computed the selected point at the Constants of the ranges.
    if (!contains(data_.calculationMode, "Monte Carlo")) {
        for (auto [index, field, value] : {std::tuple{unsatrow::PointX, &data_.mcAtX, data_.xConstant},
                                           std::tuple{unsatrow::PointT, &data_.mcAtT, data_.tConstant}}) {
            if (holdsMonteMarker(row(index).text)) continue;
            *field = formatNumber(value);
            row(index).text = *field;
        }
    }
    setMonteCarloCaption();
    refreshResultLabel();
}

std::vector<std::string> UnsatFormModel::rangeTexts() const {
    if (!isUnsaturatedType(data_.modelType)) return {};
    return {row(unsatrow::X).text, row(unsatrow::Time).text};
}

// ---------------------------------------------------------------- report

void UnsatFormModel::printReport() {
    if (!holdDataSet()) return;
    ui_.setBusy(true);
    try {
        printLines(unsatReportLines(data_, rows_));
    } catch (const RuntimeError& e) {
        ui_.setBusy(false);
        handleError(e, "printReport", "", ui_);
    }
    ui_.setBusy(false);
}

}  // namespace bm
