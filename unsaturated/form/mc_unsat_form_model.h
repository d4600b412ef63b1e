#pragma once
// MCUnsatForm without its widgets: the unsaturated screen of a decay chain.
// It is unsatForm's screen with these differences: the half-life and the
// superposition index are gone (each chemical has its rate, and the inputs
// table has a row per chemical), row 14 holds the number of chemicals, the
// chemicals' tables stand where the terms' grid is, the results are shown per
// chemical in the points table, and the commands that show or write one
// chemical's results ask for the chemical first (SelectChemicalForm).

#include "species/form/chain_screen.h"
#include "species/form/chemical_tables.h"
#include "unsaturated/form/unsat_form_model.h"

namespace bm {

class MCUnsatFormModel : public ChainScreen<UnsatFormModel> {
public:
    MCUnsatFormModel(DataSet& data, AppState& state, UserInterface& ui);

    ChemicalTables& tables() { return tables_; }
    const ChemicalTables& tables() const { return tables_; }
    // The points table (grd1DResults): each chemical's concentration at the selected point.
    PointResultsTable pointsTable() const;

    // The number of chemicals losing the focus resizes the tables; a value
    // that is no whole number of at least 1 is refused and the row takes its
    // earlier text back.
    bool rowLeft(int index) override;
    bool chemicalBeforeEdit(int row, int column);
    void chemicalEdited(int row, int column, const std::string& text);
    // Input1TG is the inputs table.
    TermGrid& grid() override { return tables_.sources; }
    const TermGrid& grid() const override { return tables_.sources; }
    bool gridBeforeEdit(int row, int column) override;
    void gridEdited(int row, int column, const std::string& text) override;
    std::string cellStyle(int row, int column) const override;

    void requestFocus(const FocusRequest& focus) override;

protected:
    void showTables() override;
    void holdTables() override;
    bool tablesHoldMarker() const override { return tables_.holdMarker(); }
    UnsatChecks checks() override;
    void unitsChanged() override;

private:
    ChemicalTables tables_;
    std::string acceptedCount_ = "1";  // the count row's text when it last passed
};

}  // namespace bm
