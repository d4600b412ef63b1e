#include "unsaturated/form/mc_unsat_form_model.h"

#include "model/number_text.h"
#include "montecarlo/pass/calculation_pass.h"
#include "species/chain/chain_solution.h"

namespace bm {

MCUnsatFormModel::MCUnsatFormModel(DataSet& data, AppState& state, UserInterface& ui)
    : ChainScreen<UnsatFormModel>(data, state, ui, ModelScreen::MCUnsatForm) {}

void MCUnsatFormModel::showTables() {
    // The tables always have a chemical.
    if (data_.numChemicals < 1) data_.numChemicals = 1;
    tables_.fromDataSet(data_);
    tables_.setLayout(1);
    unitsChanged();
    row(unsatrow::Chemicals).text = std::to_string(data_.numChemicals);
    acceptedCount_ = row(unsatrow::Chemicals).text;
}

void MCUnsatFormModel::holdTables() {
    tables_.toDataSet(data_);
    // The lists sized and each chemical's superposition index set; the
    // decomposition belongs to the run, which knows whether the chain varies.
    prepareChemicals(data_, chainTransform(), true, ui_);
}

void MCUnsatFormModel::unitsChanged() {
    UnsatFormModel::unitsChanged();
    tables_.setUnitHeadings(timeUnit);
}

PointResultsTable MCUnsatFormModel::pointsTable() const { return pointResults(data_, 1, concentrationUnit); }

bool MCUnsatFormModel::rowLeft(int index) {
    if (index != unsatrow::Chemicals) return UnsatFormModel::rowLeft(index);
    UnsatRow& r = row(index);
    if (r.text == acceptedCount_) return true;
    if (!tables_.countLeft(data_, r.text, ui_)) {
        r.text = acceptedCount_;
        FocusRequest back;
        back.row = index;
        requestFocus(back);
        changed();
        return false;
    }
    acceptedCount_ = r.text;
    markChanged();
    changed();
    return true;
}

bool MCUnsatFormModel::chemicalBeforeEdit(int row, int column) { return tables_.chemicalBeforeEdit(row, column, ui_); }

void MCUnsatFormModel::chemicalEdited(int row, int column, const std::string& text) {
    if (tables_.chemicalEdited(row, column, text)) markChanged();
}

bool MCUnsatFormModel::gridBeforeEdit(int row, int column) { return tables_.sourceBeforeEdit(row, column, ui_); }

void MCUnsatFormModel::gridEdited(int row, int column, const std::string& text) {
    if (tables_.sourceEdited(row, column, text)) markChanged();
}

std::string MCUnsatFormModel::cellStyle(int row, int column) const { return tables_.sourceStyle(row, column); }

UnsatChecks MCUnsatFormModel::checks() {
    UnsatChecks c;
    c.contaminantType = contaminantWord();
    c.multiChemical = true;
    c.tablesAccepted = [this](UserInterface& ui) {
        ChainFailure failure;
        if (tables_.accepted(row(unsatrow::Time).text, ui, failure)) return true;
        FocusRequest focus;
        focus.grid = true;
        focus.chemicalTable = failure.inChemicalsTable();
        focus.gridRow = failure.chemical - 1;
        focus.gridColumn = focus.chemicalTable ? tables_.currentColumn : tables_.sources.currentColumn;
        focus.editMode = true;
        requestFocus(focus);
        return false;
    };
    for (const ChemicalRow& chemical : tables_.chemicals) c.decayRates.push_back(chemical.rate);
    return c;
}

void MCUnsatFormModel::requestFocus(const FocusRequest& focus) {
    if (focus.chemicalTable) {
        tables_.currentRow = focus.gridRow;
        tables_.currentColumn = focus.gridColumn;
        tables_.editMode = focus.editMode;
    } else if (focus.grid) {
        tables_.sources.currentRow = focus.gridRow;
        tables_.sources.currentColumn = focus.gridColumn;
        tables_.sources.editMode = focus.editMode;
    }
    ScreenModel::requestFocus(focus);
}

}  // namespace bm
