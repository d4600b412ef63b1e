#include "species/form/chemical_tables.h"

#include <algorithm>

#include "montecarlo/monte_marker.h"
#include "montecarlo/pass/calculation_pass.h"
#include "shell/screen/screen_model.h"
#include "species/chain/chemical_choice.h"

namespace bm {

namespace {

const std::string kEmpty;

const std::string& listText(const List<std::string>& list, int i) { return i <= list.ub() ? list(i) : kEmpty; }

std::string* cellOf(ChemicalRow& row, int column) {
    switch (column) {
    case 0: return &row.name;
    case 1: return &row.rate;
    case 2: return &row.yield;
    default: return nullptr;
    }
}

bool readOnly(const std::string& cell, UserInterface& ui) {
    if (!holdsMonteMarker(cell)) return false;
    ui.message(MessageIcon::Exclamation, MessageButtons::Ok, kReadOnlyTitle, kGridReadOnlyText);
    return true;
}

}  // namespace

ChemicalTables::ChemicalTables() {
    setLayout(1);
    resize(1);
    setUnitHeadings("day");
}

void ChemicalTables::resize(int n) {
    const std::size_t rows = static_cast<std::size_t>(std::max(1, n));
    chemicals.resize(rows);
    sources.cells.resize(rows);
    currentRow = std::min(currentRow, static_cast<int>(rows) - 1);
    sources.currentRow = std::min(sources.currentRow, static_cast<int>(rows) - 1);
}

const std::string& ChemicalTables::chemicalCell(int row, int column) const {
    if (row < 0 || row >= count()) return kEmpty;
    const ChemicalRow& r = chemicals[static_cast<std::size_t>(row)];
    switch (column) {
    case 0: return r.name;
    case 1: return r.rate;
    case 2: return r.yield;
    default: return kEmpty;
    }
}

std::string ChemicalTables::chemicalTableName(int layout) { return "ChemicalInput" + std::to_string(layout) + "TG"; }
std::string ChemicalTables::chemicalStyleName(int layout) { return "MonteCarloStyle" + std::to_string(layout + 3); }
std::string ChemicalTables::sourcesTableName(int layout) { return "Input" + std::to_string(layout) + "TG"; }
std::string ChemicalTables::sourcesStyleName(int layout) { return "MonteCarloStyle" + std::to_string(layout); }
std::string ChemicalTables::resultsTableName(int layout) { return "grd" + std::to_string(layout) + "DResults"; }

void ChemicalTables::setLayout(int layout) {
    sources.name = sourcesTableName(layout);
    sources.styleName = sourcesStyleName(layout);
    chemicalStyle_ = chemicalStyleName(layout);
}

void ChemicalTables::setUnitHeadings(const std::string& timeWord) { rateHeading = "Decay Rate (1/" + timeWord + ")"; }

void ChemicalTables::fromDataSet(const DataSet& d) {
    const int n = std::max<int>(1, d.numChemicals);
    chemicals.assign(static_cast<std::size_t>(n), ChemicalRow{});
    sources.cells.assign(static_cast<std::size_t>(n), Term{});
    for (int i = 1; i <= n; ++i) {
        const std::size_t r = static_cast<std::size_t>(i - 1);
        chemicals[r] = {listText(d.chemicalName, i), listText(d.decayRate, i), listText(d.yieldFactor, i)};
        sources.cells[r] = {listText(d.suppositionTime, i), listText(d.suppositionConcentration, i)};
    }
    resize(n);
}

void ChemicalTables::toDataSet(DataSet& d) const {
    const int n = d.numChemicals;
    for (List<std::string>* list :
         {&d.chemicalName, &d.decayRate, &d.yieldFactor, &d.suppositionTime, &d.suppositionConcentration})
        list->redim(n);
    for (int i = 1; i <= n; ++i) {
        d.chemicalName(i) = chemicalCell(i - 1, 0);
        d.decayRate(i) = chemicalCell(i - 1, 1);
        d.yieldFactor(i) = chemicalCell(i - 1, 2);
        d.suppositionTime(i) = sources.cell(i - 1, 0);
        d.suppositionConcentration(i) = sources.cell(i - 1, 1);
    }
}

bool ChemicalTables::countLeft(DataSet& data, const std::string& text, UserInterface& ui) {
    if (!acceptChemicalCount(data, text, ui)) return false;
    resize(data.numChemicals);
    return true;
}

bool ChemicalTables::chemicalBeforeEdit(int row, int column, UserInterface& ui) const {
    return !readOnly(chemicalCell(row, column), ui);
}

bool ChemicalTables::sourceBeforeEdit(int row, int column, UserInterface& ui) const {
    return !readOnly(sources.cell(row, column), ui);
}

bool ChemicalTables::chemicalEdited(int row, int column, const std::string& text) {
    if (row < 0 || row >= count()) return false;
    std::string* cell = cellOf(chemicals[static_cast<std::size_t>(row)], column);
    if (!cell || *cell == text || holdsMonteMarker(*cell)) return false;
    *cell = text;
    return true;
}

bool ChemicalTables::sourceEdited(int row, int column, const std::string& text) {
    if (row < 0 || row >= static_cast<int>(sources.cells.size()) || column < 0 || column > 1) return false;
    Term& term = sources.cells[static_cast<std::size_t>(row)];
    std::string& cell = column == 0 ? term.time : term.concentration;
    if (cell == text || holdsMonteMarker(cell)) return false;
    cell = text;
    return true;
}

std::string ChemicalTables::chemicalStyle(int row, int column) const {
    return holdsMonteMarker(chemicalCell(row, column)) ? chemicalStyle_ : std::string();
}

std::string ChemicalTables::sourceStyle(int row, int column) const {
    return holdsMonteMarker(sources.cell(row, column)) ? sources.styleName : std::string();
}

bool ChemicalTables::holdMarker() const {
    for (const ChemicalRow& r : chemicals)
        if (holdsMonteMarker(r.name) || holdsMonteMarker(r.rate) || holdsMonteMarker(r.yield)) return true;
    for (const Term& t : sources.cells)
        if (holdsMonteMarker(t.time) || holdsMonteMarker(t.concentration)) return true;
    return false;
}

std::vector<ChainEntry> ChemicalTables::entries() const {
    std::vector<ChainEntry> chain;
    for (int r = 0; r < count(); ++r)
        chain.push_back({chemicalCell(r, 0), chemicalCell(r, 1), chemicalCell(r, 2), sources.cell(r, 0),
                         sources.cell(r, 1)});
    return chain;
}

bool ChemicalTables::accepted(const std::string& timeRange, UserInterface& ui, ChainFailure& failure) {
    if (chainTablesAccepted(entries(), timeRange, ui, &failure)) return true;
    const int row = failure.chemical - 1;
    switch (failure.value) {
    case ChainValue::Time:
    case ChainValue::Concentration:
        sources.currentRow = row;
        sources.currentColumn = failure.value == ChainValue::Time ? 0 : 1;
        sources.editMode = true;
        break;
    default:
        currentRow = row;
        currentColumn = static_cast<int>(failure.value);  // Name, Rate, Yield are the columns 0, 1, 2
        editMode = true;
        break;
    }
    return false;
}

PointResultsTable pointResults(const DataSet& data, int layout, const std::string& concentrationWord) {
    PointResultsTable table;
    table.name = ChemicalTables::resultsTableName(layout);
    table.concentrationHeading = "Conc. (" + concentrationWord + ")";
    for (int i = 1; i <= data.numChemicals; ++i) {
        const std::string& value = listText(data.resultsInPoint, i);
        table.rows.emplace_back(listText(data.chemicalName, i), value.empty() ? value : resultLabelFromMode(value));
    }
    return table;
}

}  // namespace bm
