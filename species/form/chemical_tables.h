#pragma once
// The tables of a decay chain's screen, without widgets. Two tables of one
// row per chemical, always as long as the number of chemicals: the chemicals'
// table (ChemicalInput1TG ...: name, decay rate, yield factor) and the inputs
// table (Input1TG ...: the time and concentration of each chemical's source);
// and the points table of the results (grd1DResults ...: each chemical's name
// and its concentration at the selected point).
//
// What a chain's screen does with them is here: the rule of the
// number-of-chemicals row (the tables grow and shrink with it, keeping what
// their rows hold), the copies between the tables and the DataSet's chemical
// lists, the cells a Monte Carlo marker locks with their named style, and the
// checks of both tables before a run. The tables know no dimension: a screen
// with several layouts shows the same tables in each (names by layout).

#include <string>
#include <vector>

#include "model/data_set.h"
#include "model/term_grid.h"
#include "shell/base/user_interface.h"
#include "species/chain/chain_validation.h"

namespace bm {

// The columns of the chemicals' table, from 0.
enum class ChemicalColumn { Name = 0, Rate = 1, Yield = 2 };
inline constexpr int kChemicalColumns = 3;

struct ChemicalRow {
    std::string name, rate, yield;
};

// The points table: a row per chemical.
struct PointResultsTable {
    std::string name;  // "grd1DResults"
    std::string chemicalHeading = "Chemical";
    std::string concentrationHeading;  // "Conc. (mg/l)"
    std::vector<std::pair<std::string, std::string>> rows;  // name, concentration as shown
};

class ChemicalTables {
public:
    ChemicalTables();

    // ---- The tables
    std::vector<ChemicalRow> chemicals;  // row r is chemical r + 1
    TermGrid sources;                    // row r: time and concentration of chemical r + 1
    std::string nameHeading = "Chemical Name";
    std::string rateHeading;   // "Decay Rate (1/day)"
    std::string yieldHeading = "Yield Factor (M/M)";
    int currentRow = 0, currentColumn = 0;  // the chemicals' table's cursor
    bool editMode = false;

    int count() const { return static_cast<int>(chemicals.size()); }
    // Both tables to n rows (at least 1): new rows empty, rows past n dropped.
    void resize(int n);
    // The text of a cell of the chemicals' table; empty beyond it.
    const std::string& chemicalCell(int row, int column) const;

    // ---- Names by layout (1, 2, 3; a screen with one layout uses 1)
    static std::string chemicalTableName(int layout);  // "ChemicalInput1TG"
    static std::string chemicalStyleName(int layout);  // "MonteCarloStyle4"
    static std::string sourcesTableName(int layout);   // "Input1TG"
    static std::string sourcesStyleName(int layout);   // "MonteCarloStyle1"
    static std::string resultsTableName(int layout);   // "grd1DResults"
    // The sources' table's name and style for the layout shown.
    void setLayout(int layout);

    // ---- Headings for the unit words (the sources' headings are the screen's)
    void setUnitHeadings(const std::string& timeWord);

    // ---- DataSet and tables
    // SendGWDataToTGData: the chemical lists into the tables, numChemicals rows (at least 1).
    void fromDataSet(const DataSet& data);
    // SendTGDataToGWData: the tables into the chemical lists, sized to
    // numChemicals (rows the tables lack give empty texts).
    void toDataSet(DataSet& data) const;

    // ---- The number-of-chemicals row losing its focus with `text`: a whole
    // number of at least 1 sets numChemicals and resizes the tables (true);
    // anything else shows the refusal and changes nothing (false: the row
    // takes its earlier text back).
    bool countLeft(DataSet& data, const std::string& text, UserInterface& ui);

    // ---- Editing
    // A cell is about to be edited: false, after the "Read Only" message, when it holds a marker.
    bool chemicalBeforeEdit(int row, int column, UserInterface& ui) const;
    bool sourceBeforeEdit(int row, int column, UserInterface& ui) const;
    // A cell typed into: true when its text changed (a marker cell never changes by an edit).
    bool chemicalEdited(int row, int column, const std::string& text);
    bool sourceEdited(int row, int column, const std::string& text);
    // The named style of a cell: the table's style for a marker, else empty.
    std::string chemicalStyle(int row, int column) const;
    std::string sourceStyle(int row, int column) const;
    // Some cell of either table holds a marker.
    bool holdMarker() const;

    // ---- Checks before a run, in their order, on the tables as typed; the
    // failing cell becomes current (in edit mode) in its table.
    bool accepted(const std::string& timeRange, UserInterface& ui, ChainFailure& failure);
    std::vector<ChainEntry> entries() const;

private:
    std::string chemicalStyle_ = chemicalStyleName(1);
};

// The points table of a model: each chemical's name and its resultsInPoint,
// shown as it stands when it holds an "R" or an "M" ("Regular", "Monte
// Carlo"), else through the common number format.
PointResultsTable pointResults(const DataSet& data, int layout, const std::string& concentrationWord);

}  // namespace bm
