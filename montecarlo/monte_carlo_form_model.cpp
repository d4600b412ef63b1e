#include "montecarlo/monte_carlo_form_model.h"

#include <algorithm>

#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "montecarlo/monte_report.h"
#include "montecarlo/monte_selection.h"

namespace bm {

namespace {

MonteCarloFormModel::GridRow inputCells(const MonteInputRow& r) {
    return {r.variant, r.mean, r.minimum, r.maximum, r.variance, r.terms, r.distribution};
}

MonteCarloFormModel::GridRow resultCells(const MonteResultRow& r) {
    return {r.variant, r.arithmeticMean, r.geometricMean, r.median, r.minimum, r.maximum, r.standardDeviation};
}

}  // namespace

std::vector<std::string> simulationReportPrintLines(const DataSet& data, std::int16_t chemical) {
    std::vector<std::string> lines;
    for (const ReportLine& line : simulationReportLines(data, chemical))
        lines.push_back(line.field.empty() && line.value.empty() ? std::string()
                        : line.value.empty()                     ? "\t" + line.field
                                                                 : "\t" + line.field + "\t" + line.value);
    return lines;
}

MonteCarloFormModel::MonteCarloFormModel(DataSet& data, UserInterface& ui, MonteCarloSetup setup)
    : data_(data), ui_(ui), setup_(std::move(setup)) {
    title = setup_.title;
    panelCaption = setup_.panelCaption;
}

void MonteCarloFormModel::changed() {
    if (host_) host_->formChanged();
}

// ---------------------------------------------------------------- load and the grids

void MonteCarloFormModel::load() {
    chemical_ = 1;  // the tables' column of a model's own values
    data_.monteFreshFlag = false;
    if (setup_.tablesNew) {
        makeNewMonteTables(data_, static_cast<int>(setup_.list.variantLB1.size()));
        setup_.tablesNew = false;
    }
    const int rows = std::min<int>(data_.monteRowCount, data_.InputTGData.ub(0));
    inputGrid.assign(static_cast<std::size_t>(std::max(rows, 0)), GridRow{});
    resultGrid.assign(inputGrid.size(), GridRow{});
    for (int r = 1; r <= rows; ++r) {
        const MonteInputRow& in = data_.InputTGData(r, chemical_);
        if (in.inUse) inputGrid[static_cast<std::size_t>(r - 1)] = inputCells(in);
    }
    SendResultTGDataToResultTDBData();
    helpPanel.clear();
    changed();
}

void MonteCarloFormModel::SendInputTDBDataToInputTGData() {
    for (int r = 1; r <= rowCount() && r <= data_.InputTGData.ub(0); ++r) {
        const GridRow& cells = inputGrid[static_cast<std::size_t>(r - 1)];
        MonteInputRow& row = data_.InputTGData(r, chemical_);
        row.variant = cells[0];
        row.mean = cells[1];
        row.minimum = cells[2];
        row.maximum = cells[3];
        row.variance = cells[4];
        row.terms = cells[5];
        row.distribution = trim(cells[6]);
        row.inUse = !row.variant.empty();
    }
}

void MonteCarloFormModel::SendResultTDBDataToResultTGData() {
    for (int r = 1; r <= rowCount() && r <= data_.ResultTGData.ub(0); ++r) {
        const GridRow& cells = resultGrid[static_cast<std::size_t>(r - 1)];
        MonteResultRow& row = data_.ResultTGData(r, chemical_);
        if (!row.inUse) continue;  // a blanked row shows nothing to take back
        row.variant = cells[0];
        row.arithmeticMean = cells[1];
        row.geometricMean = cells[2];
        row.median = cells[3];
        row.minimum = cells[4];
        row.maximum = cells[5];
        row.standardDeviation = cells[6];
    }
}

void MonteCarloFormModel::SendResultTGDataToResultTDBData() {
    for (int r = 1; r <= static_cast<int>(resultGrid.size()); ++r) {
        const bool held = r <= data_.ResultTGData.ub(0) && chemical_ <= data_.ResultTGData.ub(1);
        const bool shown = held && data_.ResultTGData(r, chemical_).inUse;
        resultGrid[static_cast<std::size_t>(r - 1)] = shown ? resultCells(data_.ResultTGData(r, chemical_)) : GridRow{};
    }
}

void MonteCarloFormModel::ClearTGData(int row) {
    if (!validRow(row)) return;
    if (row <= data_.InputTGData.ub(0)) data_.InputTGData(row, chemical_) = MonteInputRow{};
    if (row <= data_.ResultTGData.ub(0)) {
        data_.ResultTGData(row, chemical_) = MonteResultRow{};
        data_.ResultTGData(row, chemical_).selection = kNothingSelected;  // as a row made anew
    }
    inputGrid[static_cast<std::size_t>(row - 1)] = GridRow{};
    resultGrid[static_cast<std::size_t>(row - 1)] = GridRow{};
}

int MonteCarloFormModel::selectedColumn(int row) const {
    if (row < 1 || row > data_.ResultTGData.ub(0) || chemical_ > data_.ResultTGData.ub(1)) return -1;
    const MonteResultRow& r = data_.ResultTGData(row, chemical_);
    if (!r.inUse) return -1;
    for (int c = 0; c < kMonteGridColumns; ++c)
        if (toggledSelection(r.selection, kResultColumnCaptions[static_cast<std::size_t>(c)]) == kNothingSelected)
            return c;
    return -1;
}

// ---------------------------------------------------------------- editing InputTG

void MonteCarloFormModel::blankRowFrom(int row, int column) {
    GridRow& cells = inputGrid[static_cast<std::size_t>(row - 1)];
    for (int c = column; c < kMonteGridColumns; ++c) cells[static_cast<std::size_t>(c)].clear();
}

std::string MonteCarloFormModel::commonTerms() const {
    for (const GridRow& cells : inputGrid)
        if (!trim(cells[kTermsColumn]).empty()) return cells[kTermsColumn];
    return {};
}

void MonteCarloFormModel::inputCellEdited(int row, int column, const std::string& text) {
    if (!validRow(row) || column < 0 || column >= kMonteGridColumns) return;
    GridRow& cells = inputGrid[static_cast<std::size_t>(row - 1)];
    cells[static_cast<std::size_t>(column)] = text;
    // The table changes what the file keeps, not what was calculated.
    if (data_.dataState == kDataUnchanged) data_.dataState = kNeedsSaving;

    const std::string variant = cells[kVariantColumn];
    if (contains(toUpper(variant), "REMOVE")) {
        ClearTGData(row);
        changed();
        return;
    }
    if (variant.empty() && column != kVariantColumn) {
        ui_.message(MessageIcon::Information, MessageButtons::Ok, "Information",
                    "Please select a parameter from variant list first!");
        blankRowFrom(row, 0);
        changed();
        return;
    }
    if (column == kVariantColumn && !variant.empty()) {
        const auto& names = setup_.list.variantLB1;
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (trim(names[i]) != trim(variant)) continue;
            cells[1] = i < setup_.list.meanLB.size() ? setup_.list.meanLB[i] : std::string();
            cells[kTermsColumn] = commonTerms();
            break;
        }
        for (int other = 1; other <= rowCount(); ++other) {
            if (other == row || trim(inputGrid[static_cast<std::size_t>(other - 1)][0]) != trim(variant)) continue;
            ui_.message(MessageIcon::Information, MessageButtons::Ok, "Information",
                        "You have selected " + trim(variant) + ", please select other parameter!");
            blankRowFrom(row, column);
            changed();
            return;
        }
    }
    if (column >= 1 && column <= kTermsColumn) {
        std::string& cell = cells[static_cast<std::size_t>(column)];
        if (!cell.empty() && !isNumeric(cell)) {
            ui_.message(MessageIcon::Critical, MessageButtons::Ok, "Invalid Input Data",
                        cell + " is not a proper input value.\r\rPlease give a numeric input.");
            cell.clear();
            if (column == kTermsColumn) cell = commonTerms();
        } else if (column == kTermsColumn && !cell.empty()) {
            // One number of terms for the whole table, though each row stores it.
            for (GridRow& r : inputGrid)
                if (!r[kVariantColumn].empty()) r[kTermsColumn] = cell;
        }
    }
    changed();
}

void MonteCarloFormModel::inputColumnHovered(int column) {
    if (column < 0 || column >= kMonteGridColumns) return;
    helpPanel = kInputColumnHints[static_cast<std::size_t>(column)];
    changed();
}

void MonteCarloFormModel::resultColumnHovered(int column) {
    if (column < 0 || column >= kMonteGridColumns) return;
    helpPanel = column < static_cast<int>(kResultColumnHints.size()) ? kResultColumnHints[static_cast<std::size_t>(column)]
                                                                      : "";
    changed();
}

// ---------------------------------------------------------------- ResultTG, Generate, the reports

bool MonteCarloFormModel::resultDoubleClicked(int row, int column) {
    if (!validRow(row) || column < 0 || column >= kMonteGridColumns) return false;
    const bool done =
        toggleResultSelection(data_, row, chemical_, kResultColumnCaptions[static_cast<std::size_t>(column)]);
    SendResultTGDataToResultTDBData();
    changed();
    return done;
}

GenerationOutcome MonteCarloFormModel::generate() {
    if (generating) return GenerationOutcome::Refused;
    generating = true;
    const std::string caption = panelCaption;
    panelCaption = kPleaseWait;
    changed();
    ui_.processEvents();
    SendInputTDBDataToInputTGData();
    const GenerationOutcome outcome = generateSimulation(data_, setup_.list, chemical_, ui_);
    SendResultTGDataToResultTDBData();
    panelCaption = caption;
    // New samples for a model under simulation change what its file holds.
    markGenerated(data_, setup_.modelUnderSimulation ? kMonteCarloWord : std::string_view());
    data_.needsDisplayRefresh = false;
    generating = false;
    changed();
    return outcome;
}

bool MonteCarloFormModel::print() {
    SendInputTDBDataToInputTGData();
    const std::vector<std::string> lines = simulationReportPrintLines(data_, chemical_);
    return host_ && host_->printReport(lines, {kReportFieldColumn, kReportValueColumn});
}

bool MonteCarloFormModel::view(const std::string& kind) {
    SendInputTDBDataToInputTGData();
    if (!writeSimulationViewFile(data_, chemical_, setup_.viewPath, ui_)) return false;
    if (host_) host_->showFile(setup_.viewPath, kind);
    return true;
}

void MonteCarloFormModel::exit() {
    SendInputTDBDataToInputTGData();
    SendResultTDBDataToResultTGData();
    copyMonteCarloStore(data_, setup_.kind, false);
    if (host_) host_->closeForm();
}

}  // namespace bm
