#pragma once
// What a model screen asks of its surroundings (the widgets, or a test):
// showing itself again, moving the focus, the modal dialogs, the printer, the
// help viewer, the other screens of the screen registry, and leaving. Every
// function has a harmless default.

#include <string>
#include <vector>

#include "model/model_kinds.h"

namespace bm {

struct DataSet;
class NotesPad;

// Where the user is to be taken: a tab brought forward and the focus on a row,
// on a grid cell (in edit mode), or on the next control ("{TAB}").
struct FocusRequest {
    int dimension = 0;  // the layout of a screen that has several (inputForm: 1, 2, 3)
    int tab = -1;
    int row = -1;
    bool grid = false;
    bool chemicalTable = false;  // the cell is one of the chemicals' table, not of the grid
    int gridRow = -1;     // from 0
    int gridColumn = 0;
    bool editMode = false;
    bool next = false;    // move on to the next control
    bool stop = false;    // the Stop button
    bool operator==(const FocusRequest&) const = default;
};

class ScreenHost {
public:
    virtual ~ScreenHost() = default;
    // The model changed: show it again.
    virtual void formChanged() {}
    virtual void moveFocus(const FocusRequest&) {}
    // The note pad, modally.
    virtual void showNotes(NotesPad& pad);
    // The fit to observations, modally, over a copy of the model; true when
    // its Apply wrote estimates into `model`.
    virtual bool showFitDialog(DataSet& model) { return false; }
    // The new-model dialog, modally; its OK writes the choice into the DataSet. True on OK.
    virtual bool showNewModelDialog() { return false; }
    // The chemical picker of a decay chain (SelectChemicalForm), modally: its
    // OK sets selectedChemical, any other way out leaves it as it is.
    virtual void showChemicalPicker(DataSet&) {}
    // The printed report: lines whose "\t" moves to the next of the column stops
    // (character columns from 1). False when nothing was printed.
    virtual bool printReport(const std::vector<std::string>& lines, const std::vector<int>& tabColumns) { return false; }
    virtual void printerSetup() {}
    virtual void showHelp() {}
    // Another screen of the screen registry (the Monte Carlo set-up screen):
    // whether this build has it, and showing it modally over this one.
    virtual bool screenAvailable(ModelScreen) { return false; }
    virtual void openScreen(ModelScreen) {}
    // The model now open needs another screen (a multi-chemical file read, another kind chosen).
    virtual void openScreenForModel() {}
    // Leave the screen (its close path has run).
    virtual void closeScreen() {}
};

}  // namespace bm
