#include "saturated/form/input_form_model.h"

#include <algorithm>

#include "model/number_text.h"
#include "model/ranges.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/calculation_pass.h"
#include "saturated/input_validation.h"
#include "shell/base/checked_math.h"
#include "shell/base/error_handler.h"
#include "shell/base/runtime_error.h"

namespace bm {

// ---------------------------------------------------------------- construction

InputFormModel::InputFormModel(DataSet& data, AppState& state, UserInterface& ui)
    : InputFormModel(data, state, ui, ModelScreen::inputForm) {}

InputFormModel::InputFormModel(DataSet& data, AppState& state, UserInterface& ui, ModelScreen screen)
    : ScreenModel(data, state, ui, screen) {
    for (int d = 1; d <= 3; ++d) {
        layouts_[static_cast<std::size_t>(d)].dimension = d;
        buildRows(d);
        layouts_[static_cast<std::size_t>(d)].grid = layoutGrid(d);
    }
}

void InputFormModel::buildRows(int dimension) { rows(dimension) = layoutRows(dimension); }

std::vector<FormRow>& InputFormModel::rows(int dimension) {
    if (dimension < 1 || dimension > 3) raiseError(err::SubscriptOutOfRange);
    return layouts_[static_cast<std::size_t>(dimension)].rows;
}

const std::vector<FormRow>& InputFormModel::rows(int dimension) const {
    if (dimension < 1 || dimension > 3) raiseError(err::SubscriptOutOfRange);
    return layouts_[static_cast<std::size_t>(dimension)].rows;
}

FormRow& InputFormModel::row(int dimension, int index) { return rowOf(rows(dimension), index); }

const FormRow& InputFormModel::row(int dimension, int index) const { return rowOf(rows(dimension), index); }

TermGrid& InputFormModel::grid(int dimension) {
    if (dimension < 1 || dimension > 3) raiseError(err::SubscriptOutOfRange);
    return layouts_[static_cast<std::size_t>(dimension)].grid;
}

const TermGrid& InputFormModel::grid() const {
    return layouts_[static_cast<std::size_t>(std::clamp(dimension_, 0, 3))].grid;
}

std::string rowCaption(const InputFormModel& form, int index) { return form.row(index).caption; }

const char* InputFormModel::resultLabelName(int dimension) {
    switch (dimension) {
    case 2: return "LabelResult2D";
    case 3: return "LabelResult3D";
    default: return "LabelResult1D";
    }
}

const char* InputFormModel::tabSetName(int dimension) {
    switch (dimension) {
    case 2: return "TwoDimTab";
    case 3: return "ThreeDimTab";
    default: return "OneDimTab";
    }
}

void InputFormModel::requestFocus(const FocusRequest& focus) {
    if (focus.dimension >= 1 && focus.dimension <= 3 && focus.tab >= 0)
        currentTab[static_cast<std::size_t>(focus.dimension)] = focus.tab;
    if (focus.grid && focus.dimension >= 1 && focus.dimension <= 3) {
        TermGrid& g = grid(focus.dimension);
        g.currentRow = focus.gridRow;
        g.currentColumn = focus.gridColumn;
        g.editMode = focus.editMode;
    }
    ScreenModel::requestFocus(focus);
}

// ---------------------------------------------------------------- display

bool InputFormModel::setDisplay() {
    try {
        InputSheet sheet;
        if (!sheetOfDataSet(data_, sheet)) {
            const int d = saturatedDimension(data_.modelType);
            buildRows(d == 0 ? 1 : d);
            ui_.message(MessageIcon::None, MessageButtons::Ok, "brenmoor", "Error in setDisplay()");
            changed();
            return false;
        }
        const int d = sheet.dimension;
        dimension_ = d;
        shapeRows(d, sheet.rows);
        InputSheet& layout = layouts_[static_cast<std::size_t>(d)];
        layout.modelType = sheet.modelType;
        layout.rows = std::move(sheet.rows);
        showModelWords();

        SendGWDataToTGData();
        ChangeTDBGridUnits();
        setMonteCarloCaption();
        refreshResultLabel();
        dirty_.assign(rows(d).size(), false);
        data_.needsDisplayRefresh = false;
        changed();
        return true;
    } catch (const RuntimeError& e) {
        handleError(e, "Error in setDisplay()", "", ui_);
        changed();
        return false;
    }
}

void InputFormModel::SendGWDataToTGData() {
    if (dimension_ < 1) return;
    termsToGrid(data_, grid(dimension_));
}

void InputFormModel::SendTGDataToGWData() {
    if (dimension_ < 1) return;
    gridToTerms(grid(dimension_), data_);
}

bool InputFormModel::holdDataSet() {
    try {
        holdModelWords();
        const int d = saturatedDimension(data_.modelType);
        if (d >= 1) {
            for (const FormRow& r : rows(d)) storeField(r, data_);
            SendTGDataToGWData();
            parseCoordinates(data_, d);
        }
        data_.currentConcentration = 0.0;
        return true;
    } catch (const RuntimeError& e) {
        // The handler tells the cause; the box after it says where it struck.
        handleError(e, holdErrorText, "", ui_);
        ui_.message(MessageIcon::None, MessageButtons::Ok, "brenmoor", holdErrorText);
        return false;
    }
}

// ---------------------------------------------------------------- validation and results

void InputFormModel::focusOn(const InputPlace& place) {
    FocusRequest focus;
    focus.dimension = dimension_;
    focus.tab = place.tab;
    focus.row = place.row;
    focus.grid = place.grid;
    focus.gridRow = place.gridRow;
    focus.gridColumn = place.gridColumn;
    focus.editMode = place.editMode;
    requestFocus(focus);
}

bool InputFormModel::validateSheet(InputSheet& sheet) {
    // The rules go by the model of ModelE.
    sheet.modelType = modelWord();
    InputPlace failure;
    const bool result = validateInputSheet(sheet, data_, ui_, failure);
    if (!result && (failure.row >= 0 || failure.grid)) focusOn(failure);
    return result;
}

bool InputFormModel::validate() {
    bool result = false;
    try {
        // The rules on the rows of the layout shown.
        result = validateSheet(layouts_[static_cast<std::size_t>(std::clamp(dimension_, 0, 3))]);
    } catch (const RuntimeError& e) {
        ui_.setBusy(false);
        handleError(e, "inputForm_validate", "", ui_);
        result = false;
    }
    ui_.setBusy(false);
    changed();
    return result;
}

std::vector<std::string> InputFormModel::rangeTexts() const {
    const int d = saturatedDimension(data_.modelType);
    if (d != dimension_ || d < 1) return {};
    const DimensionRows& n = dimensionRows(d);
    std::vector<std::string> texts{row(n.x).text};
    if (n.y >= 0) texts.push_back(row(n.y).text);
    if (n.z >= 0) texts.push_back(row(n.z).text);
    texts.push_back(row(n.t).text);
    return texts;
}

// ---------------------------------------------------------------- Monte Carlo panel and the point rows

bool InputFormModel::inputsHoldMarker() const {
    if (dimension_ < 1) return false;
    for (const FormRow& r : rows(dimension_))
        if (holdsMonteMarker(r.text)) return true;
    for (const Term& t : grid().cells)
        if (holdsMonteMarker(t.concentration)) return true;
    return false;
}

void InputFormModel::setMonteCarloCaption() {
    monteCarloCaption = enablePointRows(rows(dimension_), data_.monteCarloModeOn) ? "Monte Carlo" : "";
}

void InputFormModel::refreshSelectedPoint() {
    if (dimension_ < 1) return;
    const DimensionRows& n = dimensionRows(dimension_);
    row(n.mcX).text = formatNumber(data_.xConstant);
    if (n.mcY >= 0) row(n.mcY).text = formatNumber(data_.yConstant);
    if (n.mcZ >= 0) row(n.mcZ).text = formatNumber(data_.zConstant);
    row(n.mcT).text = formatNumber(data_.tConstant);
    refreshResultLabel();
}

// ---------------------------------------------------------------- editing

bool InputFormModel::rowLocked(int index) const {
    if (dimension_ < 1 || index < 0 || index >= static_cast<int>(rows(dimension_).size())) return false;
    return holdsMonteMarker(row(index).text);
}

void InputFormModel::rowEdited(int index, const std::string& text) {
    FormRow& r = row(index);
    if (r.text == text) return;
    r.text = text;
    if (static_cast<std::size_t>(index) < dirty_.size()) dirty_[static_cast<std::size_t>(index)] = true;
    markChanged();
}

void InputFormModel::rowEntered(int index) {
    const FormRow& r = row(index);
    if (r.kind == RowKind::Range)
        helpPanel = hintFor(HintPlace::RangeRow);
    else if (r.kind == RowKind::SuperpositionIndex)
        helpPanel = hintFor(HintPlace::SuperpositionRow);
    changed();
}

void InputFormModel::rewritePointRows() {
    const DimensionRows& n = dimensionRows(dimension_);
    const auto rewrite = [&](int rangeRow, int pointRow) {
        if (rangeRow < 0 || pointRow < 0) return;
        const std::string& rangeText = row(rangeRow).text;
        if (!rangeFormatIsValid(rangeText)) return;
        row(pointRow).text = formatNumber(rangeConstant(rangeText));
    };
    rewrite(n.x, n.mcX);
    rewrite(n.y, n.mcY);
    rewrite(n.z, n.mcZ);
    rewrite(n.t, n.mcT);
}

void InputFormModel::resizeGrid(int count) {
    // The grid's present cells go to the terms, the terms are resized keeping
    // what they hold, and the grid is rebuilt from them.
    SendTGDataToGWData();
    data_.superpositionIndex = static_cast<std::int16_t>(count);
    data_.terms.redimPreserve(count);
    SendGWDataToTGData();
}

bool InputFormModel::rowLeft(int index) {
    FormRow& r = row(index);
    const std::size_t at = static_cast<std::size_t>(index);
    const bool wasTyped = at < dirty_.size() && dirty_[at];
    FocusRequest back;
    back.dimension = dimension_;
    back.tab = r.tab;
    back.row = index;
    try {
        if (r.kind == RowKind::Range) {
            if (!checkRangeFormat(r.text, r.caption, ui_)) {
                requestFocus(back);
                changed();
                return false;
            }
            if (wasTyped) rewritePointRows();
        } else if (r.kind == RowKind::SuperpositionIndex && wasTyped) {
            if (!superpositionTextAccepted(r.text)) {
                requestFocus(back);
                changed();
                return false;
            }
            resizeGrid(toInt16(textValue(r.text)));
        }
    } catch (const RuntimeError& e) {
        handleError(e, "inputForm", "", ui_);
        requestFocus(back);
        changed();
        return false;
    }
    if (wasTyped) dirty_[at] = false;
    changed();
    return true;
}

bool InputFormModel::gridBeforeEdit(int row, int column) {
    if (!holdsMonteMarker(grid().cell(row, column))) return true;
    ui_.message(MessageIcon::Exclamation, MessageButtons::Ok, kReadOnlyTitle, kGridReadOnlyText);
    return false;
}

void InputFormModel::gridEdited(int row, int column, const std::string& text) {
    TermGrid& g = grid();
    if (row < 0 || row >= static_cast<int>(g.cells.size())) return;
    std::string& cell = column == 0 ? g.cells[static_cast<std::size_t>(row)].time
                                    : g.cells[static_cast<std::size_t>(row)].concentration;
    if (cell == text) return;
    if (holdsMonteMarker(cell)) return;  // a marker cell is never overwritten by an edit
    cell = text;
    markChanged();
}

void InputFormModel::gridEntered() {
    helpPanel = hintFor(HintPlace::Grid);
    changed();
}

std::string InputFormModel::cellStyle(int row, int column) const {
    return holdsMonteMarker(grid().cell(row, column)) ? grid().styleName : std::string();
}

// ---------------------------------------------------------------- units

std::vector<std::string*> InputFormModel::unitLabels() {
    std::vector<std::string*> labels;
    if (dimension_ < 1) return labels;
    for (FormRow& r : rows(dimension_))
        if (!r.unitCaption.empty()) labels.push_back(&r.unitCaption);
    return labels;
}

void InputFormModel::SetTGConcentrationUnit() {
    if (dimension_ < 1) return;
    grid().concentrationHeading =
        concentrationColumnHeading(modelWord(), aquiferWord(), contaminantWord(), concentrationUnit);
}

void InputFormModel::ChangeTDBGridUnits() {
    if (dimension_ < 1) return;
    grid().timeHeading = timeColumnHeading(timeUnit);
    SetTGConcentrationUnit();
}

}  // namespace bm
