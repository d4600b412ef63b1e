#pragma once
// MonteCarloForm without its widgets: the simulation screen as data. The input
// grid InputTG (variant, mean, minimum, maximum, variance, terms,
// distribution) with its edit rules, the result grid ResultTG (the summary of
// each variant in the screen's column order) with its double-click selection,
// the hints, Generate (F7) with " Please Wait..." on the panel, the printed
// report and the file for viewing, and Exit, which copies the grids to the
// working tables and the tables into the model's block.
//
// Rows are numbered from 1 as in the tables; columns from 0.

#include <array>
#include <string>
#include <vector>

#include "model/data_set.h"
#include "montecarlo/monte_generate.h"
#include "montecarlo/monte_variants.h"
#include "shell/base/user_interface.h"

namespace bm {

inline constexpr int kMonteGridColumns = 7;

// Hints of InputTG's columns, in column order.
inline constexpr std::array<const char*, kMonteGridColumns> kInputColumnHints = {
    "Select a parameter",           "Input/modify the mean",          "Input/modify the minimum value",
    "Input/modify the maximum value", "Input/modify the variance",    "Input/modify the number of terms",
    "Select a distribution"};
// Captions of InputTG's columns.
inline constexpr std::array<const char*, kMonteGridColumns> kInputColumnCaptions = {
    "Variant", "Mean", "Minimum", "Maximum", "Variance", "Number of Terms", "Distribution"};
// distributionCombo, in the order the screen lists them.
inline constexpr std::array<const char*, 7> kDistributionChoices = {"Normal",  "Lognormal", "Exponential", "Uniform",
                                                                    "Gumbel",  "Triangle",  "Loguniform"};
// The hints of the help panel.
inline constexpr std::array<const char*, 5> kMonteFormHints = {
    "To update results click on the Generate menu or press F7.",
    "To select a variant or distribution click in the appropriate column.",
    "Select REMOVE to remove a variable from simulation.",
    "Select Exit from File menu to use the selected values in the model.",
    "Double click on the variant name to select all the terms generated."};
inline constexpr const char* kPleaseWait = " Please Wait...";

// The column of a variant's name and of its distribution in InputTG.
inline constexpr int kVariantColumn = 0;
inline constexpr int kTermsColumn = 5;
inline constexpr int kDistributionColumn = 6;

// What the screen asks of its surroundings (the widgets or a test).
class MonteCarloFormHost {
public:
    virtual ~MonteCarloFormHost() = default;
    virtual void formChanged() {}
    // The printed report: lines whose "\t" moves to the next column stop. False when nothing was printed.
    virtual bool printReport(const std::vector<std::string>& lines, const std::vector<int>& tabColumns) { return false; }
    // The file for viewing, to the plotting utility ("Trazelh") or the text viewer ("Numbers").
    virtual void showFile(const std::string& path, const std::string& kind) {}
    virtual void closeForm() {}
};

class MonteCarloFormModel {
public:
    using GridRow = std::array<std::string, kMonteGridColumns>;

    MonteCarloFormModel(DataSet& data, UserInterface& ui, MonteCarloSetup setup);
    void setHost(MonteCarloFormHost* host) { host_ = host; }
    const MonteCarloSetup& setup() const { return setup_; }
    // Where the file for viewing goes (the temporary data folder's plot file).
    void setViewPath(std::string path) { setup_.viewPath = std::move(path); }
    DataSet& data() { return data_; }

    // The load (the chemical column, monteFreshFlag cleared) and the
    // activation (tables made anew when marked so, the grids filled).
    void load();

    // ---- Shown
    std::string title;         // the window's caption
    std::string panelCaption;  // the panel above the grids
    std::string helpPanel;     // the status line: the hint of the place under the pointer
    std::vector<GridRow> inputGrid;   // InputTG, row r at r - 1
    std::vector<GridRow> resultGrid;  // ResultTG in the screen's column order
    int rowCount() const { return static_cast<int>(inputGrid.size()); }
    // variantLB: the names the variant column offers (the hidden list's names, "--REMOVE--" last).
    const std::vector<std::string>& variantChoices() const { return setup_.list.variantLB1; }
    // The column of ResultTG whose statistic a row's selection names; -1 for "Nothing".
    int selectedColumn(int row) const;
    bool generating = false;

    // ---- Events
    // A cell of InputTG after it changed (the grid already holds `text`).
    void inputCellEdited(int row, int column, const std::string& text);
    void inputColumnHovered(int column);
    void resultColumnHovered(int column);
    // A double click on ResultTG: false when the row is not in use.
    bool resultDoubleClicked(int row, int column);
    // Generate (F7).
    GenerationOutcome generate();
    // File > Print: the report of each variant in use.
    bool print();
    // The file for viewing: "Trazelh" for the plotting utility, "Numbers" for the text viewer.
    bool view(const std::string& kind);
    // File > Exit (and closing the window): the grids to the tables, the tables to the model's block.
    void exit();

    // SendInputTDBDataToInputTGData, SendResultTDBDataToResultTGData and SendResultTGDataToResultTDBData.
    void SendInputTDBDataToInputTGData();
    void SendResultTDBDataToResultTGData();
    void SendResultTGDataToResultTDBData();
    // Blanks a row in both tables and both grids.
    void ClearTGData(int row);

private:
    void changed();
    void blankRowFrom(int row, int column);
    // The number of terms the table has in common: the first non-empty terms cell.
    std::string commonTerms() const;
    bool validRow(int row) const { return row >= 1 && row <= rowCount(); }

    DataSet& data_;
    UserInterface& ui_;
    MonteCarloFormHost* host_ = nullptr;
    MonteCarloSetup setup_;
    std::int16_t chemical_ = 1;
};

// The printed report's lines for the printer: "\t" + field + "\t" + value, stops at columns 10 and 40.
std::vector<std::string> simulationReportPrintLines(const DataSet& data, std::int16_t chemical);

}  // namespace bm
