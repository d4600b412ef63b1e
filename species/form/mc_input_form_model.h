#pragma once
// MCInputForm without its widgets: the screen of the saturated models with a
// decay chain, in one, two and three dimensions. It is inputForm's screen
// with these differences: the half-life and superposition rows are gone (each
// chemical has its rate, and the inputs table has a row per chemical), a row
// holds the number of chemicals (row 11 of Text1, 19 of Text2, 23 of Text3),
// the chemicals' tables take the place of the inflow grid, the results are
// shown per chemical in the points table, and the commands that show or write
// one chemical's results ask for the chemical first (SelectChemicalForm).

#include "saturated/form/input_form_model.h"
#include "species/form/chain_screen.h"
#include "species/form/chemical_tables.h"

namespace bm {

class MCInputFormModel : public ChainScreen<InputFormModel> {
public:
    MCInputFormModel(DataSet& data, AppState& state, UserInterface& ui);

    // The one in-memory pair of tables the three layouts show.
    ChemicalTables& tables() { return tables_; }
    const ChemicalTables& tables() const { return tables_; }
    // The points table of the layout shown (grd1DResults ...).
    PointResultsTable pointsTable() const;
    // The row of the number of chemicals in a layout.
    static int chemicalCountRow(int dimension);

    bool setDisplay() override;
    // Screen -> DataSet: the rows, the tables into the chemical lists (in one
    // dimension the number of chemicals read again from its row; in two and
    // three it stays as the row's last accepted value).
    bool holdDataSet() override;
    void SendGWDataToTGData() override;  // chemical lists -> tables
    void SendTGDataToGWData() override;  // tables -> chemical lists

    // The inputs table stands where inputForm has its grid.
    TermGrid& grid(int dimension) override;
    const TermGrid& grid() const override;
    bool rowLeft(int index) override;
    bool gridBeforeEdit(int row, int column) override;
    void gridEdited(int row, int column, const std::string& text) override;
    std::string cellStyle(int row, int column) const override;
    // The chemicals' table.
    bool chemicalBeforeEdit(int row, int column);
    void chemicalEdited(int row, int column, const std::string& text);
    std::string chemicalStyle(int row, int column) const;

    // The layout's rules on the coordinates and the field constants, then the
    // inputs table and the chemicals' table.
    bool validate() override;
    void requestFocus(const FocusRequest& focus) override;

protected:
    void shapeRows(int dimension, std::vector<FormRow>& rows) const override;
    bool inputsHoldMarker() const override;
    void unitsChanged() override;

private:
    ChemicalTables tables_;
    std::string acceptedCount_ = "1";  // the count row's text when it last passed
};

inline constexpr const char* kChemicalCountCaption = " Number of Chemicals";

}  // namespace bm
