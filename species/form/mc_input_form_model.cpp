#include "species/form/mc_input_form_model.h"

#include <algorithm>

#include "model/number_text.h"
#include "montecarlo/pass/calculation_pass.h"
#include "shell/base/checked_math.h"
#include "shell/base/error_handler.h"
#include "shell/base/runtime_error.h"
#include "species/chain/chain_solution.h"
#include "species/chain/chemical_choice.h"

namespace bm {

MCInputFormModel::MCInputFormModel(DataSet& data, AppState& state, UserInterface& ui)
    : ChainScreen<InputFormModel>(data, state, ui, ModelScreen::MCInputForm) {
    holdErrorText = "Error in HoldDataset()";
    for (int d = 1; d <= 3; ++d) shapeRows(d, rows(d));
}

int MCInputFormModel::chemicalCountRow(int dimension) { return dimensionRows(dimension).last + 1; }

void MCInputFormModel::shapeRows(int dimension, std::vector<FormRow>& list) const {
    // A chain has a rate per chemical in place of the half-life, and a source per
    // chemical in place of the superposition of terms.
    for (FormRow& r : list)
        if (r.field == RowField::halfLife || r.field == RowField::superpositionIndex) r.enabled = false;
    if (static_cast<int>(list.size()) > chemicalCountRow(dimension)) return;
    FormRow count;
    count.field = RowField::chemicalCount;
    count.kind = RowKind::ChemicalCount;
    count.caption = kChemicalCountCaption;
    count.tab = kBoundaryTab;
    count.text = fieldText(count, data_);
    list.push_back(count);
}

// ---------------------------------------------------------------- display and hold

bool MCInputFormModel::setDisplay() {
    // The tables always have a chemical.
    if (data_.numChemicals < 1) data_.numChemicals = 1;
    const bool shown = InputFormModel::setDisplay();
    const int d = dimension();
    if (d < 1) return shown;
    tables_.setLayout(d);
    tables_.setUnitHeadings(timeUnit);
    acceptedCount_ = row(chemicalCountRow(d)).text;
    // A value of the tables under Monte Carlo control enables the point rows too.
    monteCarloCaption = enablePointRows(rows(d), data_.monteCarloModeOn || tables_.holdMarker()) ? "Monte Carlo" : "";
    changed();
    return shown;
}

void MCInputFormModel::SendGWDataToTGData() { tables_.fromDataSet(data_); }

void MCInputFormModel::SendTGDataToGWData() { tables_.toDataSet(data_); }

bool MCInputFormModel::holdDataSet() {
    const int d = dimension();
    if (d == 1) {
        // One dimension reads the count from its row again; the others keep
        // the value the row had when it last lost the focus.
        const std::string& count = row(chemicalCountRow(d)).text;
        if (isNumeric(count) && numericValue(count) >= 1) data_.numChemicals = toInt16(numericValue(count));
    }
    if (!InputFormModel::holdDataSet()) return false;
    // The lists sized and each chemical's superposition index set; the
    // decomposition belongs to the run, which knows whether the chain varies.
    prepareChemicals(data_, chainTransform(), true, ui_);
    return true;
}

// ---------------------------------------------------------------- the tables

TermGrid& MCInputFormModel::grid(int dimension) {
    if (dimension < 1 || dimension > 3) raiseError(err::SubscriptOutOfRange);
    return tables_.sources;
}

const TermGrid& MCInputFormModel::grid() const { return tables_.sources; }

bool MCInputFormModel::gridBeforeEdit(int row, int column) { return tables_.sourceBeforeEdit(row, column, ui_); }

void MCInputFormModel::gridEdited(int row, int column, const std::string& text) {
    if (tables_.sourceEdited(row, column, text)) markChanged();
}

std::string MCInputFormModel::cellStyle(int row, int column) const { return tables_.sourceStyle(row, column); }

bool MCInputFormModel::chemicalBeforeEdit(int row, int column) { return tables_.chemicalBeforeEdit(row, column, ui_); }

void MCInputFormModel::chemicalEdited(int row, int column, const std::string& text) {
    if (tables_.chemicalEdited(row, column, text)) markChanged();
}

std::string MCInputFormModel::chemicalStyle(int row, int column) const { return tables_.chemicalStyle(row, column); }

bool MCInputFormModel::inputsHoldMarker() const { return InputFormModel::inputsHoldMarker() || tables_.holdMarker(); }

void MCInputFormModel::unitsChanged() {
    InputFormModel::unitsChanged();
    tables_.setUnitHeadings(timeUnit);
}

PointResultsTable MCInputFormModel::pointsTable() const {
    return pointResults(data_, std::max(1, dimension()), concentrationUnit);
}

bool MCInputFormModel::rowLeft(int index) {
    const int d = dimension();
    if (d < 1 || index != chemicalCountRow(d)) return InputFormModel::rowLeft(index);
    FormRow& r = row(index);
    if (r.text == acceptedCount_) return true;
    if (!tables_.countLeft(data_, r.text, ui_)) {
        r.text = acceptedCount_;
        FocusRequest back;
        back.dimension = d;
        back.tab = r.tab;
        back.row = index;
        requestFocus(back);
        changed();
        return false;
    }
    acceptedCount_ = r.text;
    markChanged();
    return true;
}

// ---------------------------------------------------------------- validation

bool MCInputFormModel::validate() {
    bool result = false;
    const int d = dimension();
    try {
        if (d >= 1) {
            const DimensionRows& n = dimensionRows(d);
            // The layout's rules without its terms: the inputs table has rules of its own.
            InputSheet sheet;
            sheet.dimension = d;
            sheet.rows = rows(d);
            sheet.grid = layoutGrid(d);
            sheet.row(n.superposition).text = "0";
            result = validateSheet(sheet);
            // The rules rewrote the rows of the selected point from their ranges.
            for (int point : {n.mcX, n.mcY, n.mcZ, n.mcT})
                if (point >= 0) row(point).text = sheet.row(point).text;
            if (result) {
                ChainFailure failure;
                result = tables_.accepted(row(n.t).text, ui_, failure);
                if (!result) {
                    FocusRequest focus;
                    focus.dimension = d;
                    focus.tab = kBoundaryTab;
                    focus.grid = true;
                    focus.chemicalTable = failure.inChemicalsTable();
                    focus.gridRow = failure.chemical - 1;
                    focus.gridColumn = focus.chemicalTable ? tables_.currentColumn : tables_.sources.currentColumn;
                    focus.editMode = true;
                    requestFocus(focus);
                }
            }
        }
    } catch (const RuntimeError& e) {
        ui_.setBusy(false);
        handleError(e, "MCInputForm_validate", "", ui_);
        result = false;
    }
    ui_.setBusy(false);
    changed();
    return result;
}

void MCInputFormModel::requestFocus(const FocusRequest& focus) {
    if (!focus.chemicalTable) {
        InputFormModel::requestFocus(focus);
        return;
    }
    if (focus.dimension >= 1 && focus.dimension <= 3 && focus.tab >= 0)
        currentTab[static_cast<std::size_t>(focus.dimension)] = focus.tab;
    tables_.currentRow = focus.gridRow;
    tables_.currentColumn = focus.gridColumn;
    tables_.editMode = focus.editMode;
    ScreenModel::requestFocus(focus);
}

}  // namespace bm
