#pragma once
// A host of a model screen's model that answers like a user and records what
// the screen asked for: focus moves, the note pad, the new-model dialog, the
// printed report, help, the Monte Carlo screen of the screen registry, the
// other screen and the close.

#include <functional>
#include <string>
#include <vector>

#include "model/data_set.h"
#include "shell/screen/notes_pad.h"
#include "shell/screen/screen_host.h"

namespace bm::testkit {

// A host that answers like a user and records the requests.
class RecordingHost : public ScreenHost {
public:
    int changes = 0;
    std::vector<FocusRequest> focus;
    std::vector<std::string> notesCaptions;
    // The note pad: nullptr-like "cancel" unless a text is queued.
    bool notesOk = false;
    std::string notesTyped;
    bool newModelOk = false;
    std::function<void(DataSet&)> newModelChoice;
    DataSet* data = nullptr;
    std::vector<std::string> printedLines;
    std::vector<int> printedColumns;
    int printerSetups = 0, helps = 0, otherScreens = 0, closes = 0, monteCarloScreens = 0;
    bool monteCarloAvailable = false;
    // What the user does on the Monte Carlo screen while it is open.
    std::function<void()> onMonteCarloScreen;

    void formChanged() override { ++changes; }
    void moveFocus(const FocusRequest& f) override { focus.push_back(f); }
    void showNotes(NotesPad& pad) override {
        notesCaptions.push_back(pad.caption());
        if (notesOk) {
            pad.text = notesTyped;
            pad.ok();
        } else {
            pad.cancel();
        }
    }
    bool showNewModelDialog() override {
        if (newModelOk && newModelChoice && data) newModelChoice(*data);
        return newModelOk;
    }
    bool printReport(const std::vector<std::string>& lines, const std::vector<int>& columns) override {
        printedLines = lines;
        printedColumns = columns;
        return true;
    }
    // The chemical picker: OK on the chemical queued (from 1), or a way out when it is 0.
    int chemicalPicked = 0, chemicalPickers = 0;
    void showChemicalPicker(DataSet& d) override {
        ++chemicalPickers;
        if (chemicalPicked > 0) d.selectedChemical = static_cast<std::int16_t>(chemicalPicked);
    }
    void printerSetup() override { ++printerSetups; }
    void showHelp() override { ++helps; }
    bool screenAvailable(ModelScreen screen) override {
        return screen == ModelScreen::MonteCarloForm && monteCarloAvailable;
    }
    void openScreen(ModelScreen screen) override {
        if (screen != ModelScreen::MonteCarloForm) return;
        ++monteCarloScreens;
        if (onMonteCarloScreen) onMonteCarloScreen();
    }
    void openScreenForModel() override { ++otherScreens; }
    void closeScreen() override { ++closes; }
};

}  // namespace bm::testkit
