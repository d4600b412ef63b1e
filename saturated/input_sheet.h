#pragma once
// The inputs of a saturated model as its screen lays them out, without the
// screen: the rows of a layout (one, two or three dimensions) with their
// captions, unit labels, texts and enabled state, and the inflow grid with its
// headings. The screen (inputForm) keeps one sheet per layout; the batch
// calculator builds one from the DataSet to put it through the screen's rules.

#include <string>
#include <vector>

#include "model/data_set.h"
#include "model/term_grid.h"
#include "model/units.h"
#include "saturated/input_form_rows.h"

namespace bm {

// One row of a layout.
struct FormRow {
    RowField field = RowField::velocity;
    RowKind kind = RowKind::Value;
    UnitKind unit = UnitKind::None;
    std::string caption;      // TextNPanel
    std::string unitCaption;  // TextNUnits; empty when the row has no unit
    std::string text;         // TextN
    bool enabled = true;
    int tab = kCoordinatesTab;  // the row's tag
};

// Where an input stands: a row of the layout, or a cell of the inflow grid
// (its row from 0; column 0 time, 1 concentration), and the tab that holds it.
struct InputPlace {
    int tab = -1;
    int row = -1;
    bool grid = false;
    int gridRow = -1;
    int gridColumn = 0;
    bool editMode = false;
};

struct InputSheet {
    int dimension = 0;      // the layout (1, 2, 3); 0 before one is known
    std::string modelType;  // the model word the rules go by
    std::string lengthWord, timeWord, concentrationWord;  // the unit words of the labels and headings
    std::vector<FormRow> rows;
    TermGrid grid;

    // A row; run-time error 9 before a layout is known, 340 for a row the layout does not have.
    FormRow& row(int index);
    const FormRow& row(int index) const;
};

// The rows of a layout with the captions of the row table (the source rows
// get theirs from applySourceCaptions); the caption row is disabled.
std::vector<FormRow> layoutRows(int dimension);
// A row of a list; run-time error 340 ("Control array element ...") for one it does not have.
FormRow& rowOf(std::vector<FormRow>& rows, int index);
const FormRow& rowOf(const std::vector<FormRow>& rows, int index);
// An empty grid of one term for a layout: "Input1TG", "MonteCarloStyle1".
TermGrid layoutGrid(int dimension);

// The captions and units of the source rows for the model's aquifer and
// source, and the rows that a source enables; false for a source the layout
// does not know.
bool applySourceCaptions(std::vector<FormRow>& rows, int dimension, const DataSet& data);
// The DataSet text a row shows, and the row's text stored back (a source row
// holds what its caption says; a superposition index below one is one).
std::string fieldText(const FormRow& row, const DataSet& data);
// The DataSet text behind a row; nullptr for the superposition index, the
// caption row and the number of chemicals (which the chain's screen keeps).
std::string* rowField(const FormRow& row, DataSet& data);
void storeField(const FormRow& row, DataSet& data);

// Whether a value varies under Monte Carlo (the inflow concentration, or a
// marker in a row); the rows of the selected point are enabled only then.
bool enablePointRows(std::vector<FormRow>& rows, bool monteCarloModeOn);

// The headings of the grid for the unit words.
void setGridHeadings(TermGrid& grid, const std::string& modelType, const std::string& aquiferType,
                     const std::string& contaminantType, const std::string& timeWord,
                     const std::string& concentrationWord);
// The sheet of the model in the DataSet as the screen shows it: the layout of
// modelType, captions for its source, the texts of the fields, the point rows
// enabled under Monte Carlo, unit labels and headings for the DataSet's unit
// words (or the defaults), the terms in the grid. Settles superpositionIndex in the DataSet. False, with nothing
// laid out, for a model the layouts do not know.
bool sheetOfDataSet(DataSet& data, InputSheet& sheet);

}  // namespace bm
