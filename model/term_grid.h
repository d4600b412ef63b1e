#pragma once
// The grid of a model's inflow terms as a screen shows it (Input1TG, ...):
// time and concentration as typed, a cell cursor and the headings, and the
// copies between the grid and the DataSet's terms. Every model screen with
// boundary terms has one.

#include <string>
#include <vector>

#include "model/data_set.h"

namespace bm {

// One inflow grid: row r (from 0) is term r + 1.
struct TermGrid {
    std::string name;                  // "Input1TG"
    std::string styleName;             // "MonteCarloStyle1"
    std::string timeHeading;           // "Time (day)"
    std::string concentrationHeading;  // "Contaminant Conc. at Inflow Boundary (mg/l)"
    std::vector<Term> cells;
    int currentRow = 0;
    int currentColumn = 0;
    bool editMode = false;
    int tab = 1;  // the grid's tag: the tab of the boundary conditions
    // The text of a cell (column 0 time, 1 concentration); empty beyond the rows.
    const std::string& cell(int row, int column) const;
};

// The terms into the grid (SendGWDataToTGData), at least one row; and back
// (SendTGDataToGWData), the terms redimensioned to the superposition index.
void termsToGrid(const DataSet& data, TermGrid& grid);
void gridToTerms(const TermGrid& grid, DataSet& data);

}  // namespace bm
