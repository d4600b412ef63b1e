#pragma once
// inputForm without its widgets: the screen of the saturated single-chemical
// model as data. It holds the three row lists (Text1, Text2, Text3) with their
// captions, unit labels and enabled state, the three inflow grids (Input1TG,
// Input2TG, Input3TG), the header captions, the note entries, the status line,
// the Monte Carlo panel, the result label and the menu state, and it carries
// every event handler of the screen. The widgets show this model and forward
// the user's actions to it; a test drives it directly.
//
// Whatever the screen must show or do outside itself (a modal dialog, the
// printer, the help viewer, moving the focus) goes to an InputFormHost.

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "model/app_state.h"
#include "model/data_set.h"
#include "model/units.h"
#include "saturated/input_form_rows.h"
#include "shell/user_interface.h"

namespace bm {

class InputFormModel;

// One row of a row list.
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
    int tab = kBoundaryTab;  // the grid's tag
    // The text of a cell (column 0 time, 1 concentration); empty beyond the rows.
    const std::string& cell(int row, int column) const;
};

// Where the user is to be taken: a tab brought forward and the focus on a row,
// on a grid cell (in edit mode), or on the next control ("{TAB}").
struct FocusRequest {
    int dimension = 0;
    int tab = -1;
    int row = -1;
    bool grid = false;
    int gridRow = -1;     // from 0
    int gridColumn = 0;
    bool editMode = false;
    bool next = false;    // move on to the next control
    bool stop = false;    // the Stop button
    bool operator==(const FocusRequest&) const = default;
};

// The places of the status-line hints.
enum class HintPlace {
    mainElastic, TabElastic, AquiferE, ContaminantE, ModelE, authorE, CommentsE, Grid, SuperpositionRow, RangeRow,
    MonteCarloElastic
};

enum class NoteField { Title, Author, Comments };

// The note pad (Notes): edits the title, author or comments in a multi-line cell.
class NotesPad {
public:
    explicit NotesPad(AppState& state);
    const std::string& caption() const { return state_.notesField; }
    std::string text;      // the cell NotesText
    bool changed = false;  // the pad's changed flag
    bool closed = false;
    void ok();             // okCB, and Enter in the cell
    void cancel();         // cancelCB

private:
    AppState& state_;
};

// One item of a menu, by its index.
struct MenuItem {
    int index = 0;
    std::string caption;
    bool enabled = true;
    bool checked = false;
    bool separatorBefore = false;
};

// Top menus of mnuFile and the items of menuFile, menuResults and menuMonteCarlo.
namespace topMenu {
inline constexpr int File = 10, Calculate = 20, Results = 30, Units = 35, MonteCarlo = 40, Help = 50;
}
namespace fileItem {
inline constexpr int New = 10, Open = 20, Save = 30, SaveAs = 40, Close = 45, Print = 50, PrinterSetup = 60, Exit = 70;
}
namespace resultsItem {
inline constexpr int Graph = 10, View = 20;
}
namespace monteCarloItem {
inline constexpr int Generate = 10, Graph = 20, View = 30;
}

// What the screen asks of its surroundings. Every function has a harmless default.
class InputFormHost {
public:
    virtual ~InputFormHost() = default;
    // The model changed: show it again.
    virtual void formChanged() {}
    virtual void moveFocus(const FocusRequest&) {}
    // The note pad, modally.
    virtual void showNotes(NotesPad& pad) { pad.cancel(); }
    // The new-model dialog, modally; its OK writes the choice into the DataSet. True on OK.
    virtual bool showNewModelDialog() { return false; }
    // The printed report: lines whose "\t" moves to the next of the column stops
    // (character columns from 1). False when nothing was printed.
    virtual bool printReport(const std::vector<std::string>& lines, const std::vector<int>& tabColumns) { return false; }
    virtual void printerSetup() {}
    virtual void showHelp() {}
    // The Monte Carlo set-up screen: whether there is one, and showing it modally.
    virtual bool monteCarloScreenAvailable() { return false; }
    virtual void showMonteCarloScreen() {}
    // The model now open needs another screen (a multi-chemical file read, another kind chosen).
    virtual void openScreenForModel() {}
    // Leave the screen (its close path has run).
    virtual void closeScreen() {}
};

inline constexpr const char* kWindowTitlePrefix = "Ground Water Model (Saturated) -- FileName: ";
inline constexpr const char* kReadOnlyTitle = "Read Only";
inline constexpr const char* kGridReadOnlyText =
    "Monte Carlo selected values for Contaminant Conc. at Inflow Boundary are read only.\r\rTo unselect a monte "
    "carlo option please use Generate from the Monte Carlo menu.";
inline constexpr const char* kComputationStatus = " Computation Status:";

class InputFormModel {
public:
    InputFormModel(DataSet& data, AppState& state, UserInterface& ui);
    InputFormModel(const InputFormModel&) = delete;
    InputFormModel& operator=(const InputFormModel&) = delete;

    void setHost(InputFormHost* host) { host_ = host; }
    DataSet& data() { return data_; }
    const DataSet& data() const { return data_; }
    AppState& appState() { return state_; }
    UserInterface& ui() { return ui_; }

    // ---- Load and display
    // The screen's load: title, Save and Save As..., the layout of modelType,
    // setDisplay, the grid columns, the labels, the selected point.
    void load(bool saveEnabled);
    // DataSet -> screen. False (after "Error in setDisplay()") for a model the
    // screen does not know.
    bool setDisplay();
    // Screen -> DataSet. False when a run-time error was reported.
    bool holdDataSet();
    void SendGWDataToTGData();  // terms -> grid of the layout
    void SendTGDataToGWData();  // grid of the layout -> terms

    // The dimension of the layout shown (0 before setDisplay found one).
    int dimension() const { return dimension_; }
    std::vector<FormRow>& rows(int dimension);
    const std::vector<FormRow>& rows(int dimension) const;
    // A row of a list; run-time error 340 for a row the list does not have.
    FormRow& row(int dimension, int index);
    const FormRow& row(int dimension, int index) const;
    FormRow& row(int index) { return row(dimension_, index); }
    const FormRow& row(int index) const { return row(dimension_, index); }
    TermGrid& grid(int dimension);
    TermGrid& grid() { return grid(dimension_); }
    const TermGrid& grid() const;

    // ---- Captions and state shown
    std::string modelCaption;        // ModelE: "Model: " + modelType
    std::string aquiferCaption;      // AquiferE
    std::string contaminantCaption;  // ContaminantE
    std::string titleText, authorText, commentsText;  // TitleTB, AuthorTB, CommentsTB
    std::string helpPanel;           // HelpPanel
    std::string monteCarloCaption;   // MonteCarloElastic: "Monte Carlo" or empty
    std::string resultCaption = "Computed at";  // Label5
    std::string resultLabel;         // LabelResult1D / 2D / 3D
    std::string lengthUnit, timeUnit, concentrationUnit;  // the unit menus' words
    std::array<int, 4> currentTab{};  // the tab brought forward, by dimension
    bool mainEnabled = true;          // mainElastic
    bool menusEnabled = true;         // the top menus 10, 20, 30, 35, 40
    bool tabEnabled = true;           // the tab set of the layout
    bool running = false;
    bool stopVisible = false;         // stopCB
    bool progressVisible = false;     // pictureDest
    bool saveEnabled = false;         // menuFile 30 and 40
    bool resultsMenuEnabled = true;   // mnuFile 30
    FocusRequest lastFocus;           // the last place the user was sent to

    std::string windowTitle() const;
    // The result label's control name by dimension.
    static const char* resultLabelName(int dimension);
    static const char* tabSetName(int dimension);

    // ---- Editing
    // A key in a row (before it goes in): false when the row is read only; the
    // "Read Only" message is shown and the focus moves on.
    bool rowKeyPress(int index);
    // A click on a row's entry, caption or unit: false (and the message) when read only.
    bool rowClicked(int index);
    // The row's text as typed (the change event).
    void rowEdited(int index, const std::string& text);
    // Focus in: the row's hint.
    void rowEntered(int index);
    // Focus out: the edit checks. False when the focus is to stay on the row.
    bool rowLeft(int index);
    bool rowLocked(int index) const;
    // A grid cell is about to be edited: false (and the message) when it holds a marker.
    bool gridBeforeEdit(int row, int column);
    void gridEdited(int row, int column, const std::string& text);
    void gridEntered();
    // The named style of a cell: the grid's style for a marker, else empty.
    std::string cellStyle(int row, int column) const;

    // Title, author and comments.
    void noteEdited(NoteField field, const std::string& text);
    void noteLabelClicked(NoteField field);
    std::string& noteText(NoteField field);

    // The status line.
    void hover(HintPlace place);
    std::string hintFor(HintPlace place) const;
    bool monteCarloInUse() const;

    // ---- Menus
    std::vector<MenuItem> topMenus() const;
    std::vector<MenuItem> fileMenu() const;
    std::vector<MenuItem> resultsMenu() const;
    std::vector<MenuItem> unitMenu(UnitMenu menu) const;
    std::vector<MenuItem> monteCarloMenu() const;
    void mnuFileClick(int index);  // Calculate! (20), Help (50)
    void menuFileClick(int index);
    void menuResultsClick(int index);
    void menuUnitsClick(UnitMenu menu, int index);
    void menuMonteCarloClick(int index);
    // Closing the screen by Exit or by the window: the save offer, then
    // closeModel("Complete"). False when the user stays.
    bool exitScreen();

    // ---- Units
    void ChangeTDBGridUnits();
    void SetTGConcentrationUnit();
    std::string& unitWord(UnitMenu menu);
    // Every unit label of the layout at hand, for relabelUnits.
    std::vector<std::string*> unitLabels();

    // ---- Calculation
    // Calculate!: validation, holdDataSet, the run on screen, the refresh. True
    // when the inputs were valid and the run was started.
    bool calculate();
    // The Stop button.
    void stopClicked();
    // The selected point and the result label from the DataSet.
    void refreshSelectedPoint();
    void refreshResultLabel();
    void updateResultsMenuState();

    // ---- Results
    bool resultsAreValid();
    bool singlePointGrid() const;
    void viewResults(const std::string& kind);
    void viewSimulation(const std::string& kind);
    void printReport();

    // Sends the user to a place (validation, edit checks).
    void requestFocus(const FocusRequest& focus);
    void changed();

private:
    void buildRows(int dimension);
    bool applySourceCaptions(int dimension);
    void rewritePointRows();
    void markChanged();
    void readOnlyMessage(int index);
    void setMonteCarloCaption();
    void enablePointRows();
    void resizeGrid(int count);
    bool runOnScreen();
    bool fileNew();
    bool fileOpen();
    bool fileSave(const std::string& kind);
    bool fileClose();
    std::string fieldText(const FormRow& r) const;
    void storeField(const FormRow& r, int dimension);

    DataSet& data_;
    AppState& state_;
    UserInterface& ui_;
    InputFormHost* host_ = nullptr;
    int dimension_ = 0;
    std::array<std::vector<FormRow>, 4> rows_;
    std::array<TermGrid, 4> grids_;
    std::vector<bool> dirty_;  // rows of the layout typed into since they were last checked
};

// The text of a row for the messages: the row's caption as it stands.
std::string rowCaption(const InputFormModel& form, int index);

// The percentage the progress picture shows: done * 100 / total as a
// single-precision value, at most 100, as a whole number with "%" behind it.
std::string progressPercentText(double total, double done);
// The filled share of the bar, 0 to 1.
double progressFraction(double total, double done);

}  // namespace bm
