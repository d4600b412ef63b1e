#pragma once
// What every model screen shares, without its widgets: the model's captions
// and notes (title, author, comments, the note pad), the status line and its
// hints, the File, Units, Results and Monte Carlo menus with their commands,
// Calculate! with its progress picture and Stop button, the result label, the
// stale-results question, the result files and viewers, and the close path.
// It knows no kind: the calculation, the result lists and the writers come
// from the model-kind table and the kinds registered with the calculation
// pass. A model screen derives from it and adds its own inputs and rules
// (setDisplay, holdDataSet, validation, the edit checks); inputForm's model
// (saturated/form/input_form_model.h) is one.
//
// Whatever a screen must show or do outside itself goes to its ScreenHost.

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "model/app_state.h"
#include "model/data_set.h"
#include "model/model_kinds.h"
#include "model/units.h"
#include "shell/base/user_interface.h"
#include "shell/screen/notes_pad.h"
#include "shell/screen/printed_lines.h"
#include "shell/screen/screen_host.h"

namespace bm {

struct KindCalculation;

// The places of the status-line hints.
enum class HintPlace {
    mainElastic, TabElastic, AquiferE, ContaminantE, ModelE, authorE, CommentsE, Grid, SuperpositionRow, RangeRow,
    MonteCarloElastic
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
// The fit's entry beside Calculate! (not one of the top menus).
inline constexpr int kFitMenuIndex = 25;
namespace monteCarloItem {
inline constexpr int Generate = 10, Graph = 20, View = 30;
}

inline constexpr const char* kReadOnlyTitle = "Read Only";
// An edit of a table cell that holds a marker (the inflow grids, the chemicals' tables).
inline constexpr const char* kGridReadOnlyText =
    "Monte Carlo selected values for Contaminant Conc. at Inflow Boundary are read only.\r\rTo unselect a monte "
    "carlo option please use Generate from the Monte Carlo menu.";
inline constexpr const char* kComputationStatus = " Computation Status:";
inline constexpr const char* kStaleResultsText =
    "Input data has been changed. The results shown would be from a previous computation.\rIn order to update the "
    "results please press calculate from the menu.\r\rDo you want to continue ?";
inline constexpr const char* kNotCorrectText =
    "Output Data are not correct! \r\r  Please select calculate before choosing this option.";

class ScreenModel {
public:
    ScreenModel(DataSet& data, AppState& state, UserInterface& ui, ModelScreen screen);
    virtual ~ScreenModel() = default;
    ScreenModel(const ScreenModel&) = delete;
    ScreenModel& operator=(const ScreenModel&) = delete;

    void setHost(ScreenHost* host) { host_ = host; }
    DataSet& data() { return data_; }
    const DataSet& data() const { return data_; }
    AppState& appState() { return state_; }
    UserInterface& ui() { return ui_; }
    ModelScreen screen() const { return screen_; }

    // ---- Load and display
    // The screen's load: Save and Save As..., setDisplay, the status line, the Results menu.
    void load(bool saveEnabled);
    // DataSet -> screen. False (after its message) for a model the screen does not know.
    virtual bool setDisplay() = 0;
    // Screen -> DataSet. False when a run-time error was reported.
    virtual bool holdDataSet() = 0;

    // ---- Captions and state shown
    std::string modelCaption;        // ModelE: "Model: " + modelType
    std::string aquiferCaption;      // AquiferE: aquiferLabel + aquiferType
    std::string contaminantCaption;  // ContaminantE
    std::string titleText, authorText, commentsText;  // TitleTB, AuthorTB, CommentsTB
    std::string helpPanel;           // HelpPanel
    std::string monteCarloCaption;   // MonteCarloElastic: "Monte Carlo" or empty
    std::string resultCaption = "Computed at";  // Label5
    std::string resultLabel;         // the result label of the layout shown
    std::string lengthUnit, timeUnit, concentrationUnit;  // the unit menus' words
    bool mainEnabled = true;          // mainElastic
    bool menusEnabled = true;         // the top menus 10, 20, 30, 35, 40
    bool tabEnabled = true;           // the tab set of the layout
    bool running = false;
    bool stopVisible = false;         // stopCB
    bool progressVisible = false;     // pictureDest
    bool saveEnabled = false;         // menuFile 30 and 40
    bool resultsMenuEnabled = true;   // mnuFile 30
    FocusRequest lastFocus;           // the last place the user was sent to

    // The window's caption: the screen's own words and the file name.
    std::string windowTitle() const;

    // ---- Notes: title, author and comments
    void noteEdited(NoteField field, const std::string& text);
    void noteLabelClicked(NoteField field);
    std::string& noteText(NoteField field);

    // ---- The status line
    void hover(HintPlace place);
    std::string hintFor(HintPlace place) const;
    // Whether the model is under Monte Carlo: the mode, the varying inflow, or a marker in an input.
    bool monteCarloInUse() const;

    // ---- Menus
    std::vector<MenuItem> topMenus() const;
    std::vector<MenuItem> fileMenu() const;
    virtual std::vector<MenuItem> resultsMenu() const;
    std::vector<MenuItem> unitMenu(UnitMenu menu) const;
    std::vector<MenuItem> monteCarloMenu() const;
    void mnuFileClick(int index);  // Calculate! (20), Help (50)
    void menuFileClick(int index);
    virtual void menuResultsClick(int index);
    void menuUnitsClick(UnitMenu menu, int index);
    virtual void menuMonteCarloClick(int index);
    // "Fit to Observations..." beside Calculate!: enabled with the other menus
    // for a single-chemical model the pass calculates.
    MenuItem fitMenuItem() const;
    // The screen's checks, its rows into the DataSet, the fit dialog; after
    // Apply the rows show the estimates and the results are stale.
    void fitToObservations();
    // Closing the screen by Exit or by the window: the save offer, then
    // closeModel("Complete"). False when the user stays.
    bool exitScreen();

    // ---- Units
    std::string& unitWord(UnitMenu menu);
    // Whether the screen offers a unit menu (every screen has Length and Time).
    virtual bool offersUnitMenu(UnitMenu) const { return true; }

    // The unit labels of the inputs shown, for relabelling.
    virtual std::vector<std::string*> unitLabels() { return {}; }

    // ---- Calculation
    // The checks before Calculate!, with their messages; true when the run may start.
    virtual bool validate() = 0;
    // The selected point's rows from the DataSet after a run, and the result label.
    virtual void refreshSelectedPoint() { refreshResultLabel(); }
    // Calculate!: validation, holdDataSet, the run on screen, the refresh. True
    // when the inputs were valid and the run was started.
    bool calculate();
    // The Stop button.
    virtual void stopClicked();
    // The result label and its caption from calculationMode.
    virtual void refreshResultLabel();
    void updateResultsMenuState();

    // ---- Results
    // Whether the result lists fit the inputs: a simulation's list has its
    // iterations, a grid the counts of the screen's ranges.
    bool resultsAreValid();
    // The computed grid is one point.
    bool singlePointGrid() const;
    void viewResults(const std::string& kind);
    void viewSimulation(const std::string& kind);
    virtual void printReport() {}

    // ---- Rows under Monte Carlo control
    // Whether an input row holds a Monte Carlo marker (it cannot be edited then).
    virtual bool rowLocked(int) const { return false; }
    // A key in a row (before it goes in): false when the row is read only; the
    // "Read Only" message is shown and the focus moves on (typing sends a Tab).
    bool rowKeyPress(int index);
    // A click on a row's entry, caption or unit: false (and the message) when read only.
    bool rowClicked(int index);

    // Sends the user to a place (validation, edit checks).
    virtual void requestFocus(const FocusRequest& focus);
    void changed();

protected:
    // ---- What a screen adds
    // The screen's words in front of the file name in its caption.
    virtual std::string windowTitlePrefix() const = 0;
    // The model kinds' family in the message of a model the screen cannot show.
    virtual std::string modelWords() const = 0;
    // The texts of the screen's range rows in axis order (x, y and z as the
    // dimension has them, then t); empty when the screen shows another model.
    virtual std::vector<std::string> rangeTexts() const = 0;
    // Whether an input of the screen holds a Monte Carlo marker.
    virtual bool inputsHoldMarker() const = 0;
    // The grid's headings after a unit changed.
    virtual void unitsChanged() {}
    // The tab set brought forward before a load.
    virtual void resetTabs() {}
    // The caption of an input row, for the messages about it.
    virtual std::string rowCaptionText(int) const { return {}; }
    // The "Read Only" message of a locked row: its values are under Monte Carlo control.
    virtual std::string readOnlyText(int index) const;
    // The edit check of a superposition index as typed: a number of at least
    // one, or false after the "Improper input value" message.
    bool superpositionTextAccepted(const std::string& text);
    // Where the error report of a run says the error struck.
    virtual std::string calculationErrorContext() const { return "Calculate"; }
    // The layout shown, for the focus requests (a screen with one layout: 0).
    virtual int layoutShown() const { return 0; }
    // The counts of the range texts (rangeTexts' order) as the kind's grid counts them.
    virtual std::vector<int> rangeCounts(const std::vector<std::string>& ranges) const;
    // The stale-results question of the Results menu ("Results Not Updated"):
    // true when the user goes on.
    bool resultsQuestionAnswered(const std::string& text = kStaleResultsText);
    // "Output Data are not correct!", titled "Error Information".
    void outputNotCorrect(const std::string& text = kNotCorrectText);
    // A report to the host's printer, its Tab columns as the printer's column stops.
    void printLines(const std::vector<PrintedLine>& lines);

    // setDisplay's frame: `show` fills the screen from the DataSet (its own
    // inputs); the model's words, the refresh flag and the host's refresh are
    // done here, and a run-time error goes to the handler ("Error in setDisplay()").
    bool displayed(const std::function<void()>& show);

    // What every screen shows of the DataSet: the captions of the model words,
    // the notes and the unit words (the defaults where the model has none).
    void showModelWords();
    // And holds back: the model words from the captions, the notes, the units.
    void holdModelWords();
    // The captions without their labels ("Model: ").
    std::string modelWord() const;
    std::string aquiferWord() const;
    std::string contaminantWord() const;

    // The words in front of aquiferType in AquiferE (a time-varying model names its dispersion function there).
    std::string aquiferLabel = "Aquifer: ";

    // The kind of the open model as registered with the pass, or nullptr.
    const KindCalculation* kindCalculation() const;
    void markChanged();

    DataSet& data_;
    AppState& state_;
    UserInterface& ui_;
    ScreenHost* host_ = nullptr;
    ModelScreen screen_;

private:
    using KindWriter = std::function<std::string(const DataSet&)> KindCalculation::*;
    // Writes the output of the kind's writer to the plot file and shows it
    // ("Trazelh": the plotting utility; else the text viewer).
    void writeAndShow(KindWriter writer, const std::string& kind, const char* routine);
    bool runOnScreen();
    bool fileNew();
    bool fileOpen();
    bool fileSave(const std::string& kind);
    bool fileClose();
    bool shownHere() const;
};

// The percentage the progress picture shows: done * 100 / total as a
// single-precision value, at most 100, as a whole number with "%" behind it.
std::string progressPercentText(double total, double done);
// The filled share of the bar, 0 to 1.
double progressFraction(double total, double done);

}  // namespace bm
