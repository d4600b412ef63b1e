#pragma once
// Complete saturated models of each dimension as a data file would give them,
// and a screen host that records what the screen asked for.

#include <string>
#include <vector>

#include "model/app_state.h"
#include "model/data_set.h"
#include "saturated/input_form_model.h"
#include "testing/scripted_user_interface.h"

namespace bm::testkit {

inline void oneTerm(DataSet& d, const std::string& time, const std::string& concentration) {
    d.superpositionIndex = 1;
    d.terms.redim(1);
    d.terms(1).time = time;
    d.terms(1).concentration = concentration;
}

// x 0:10:1, t 0:5:1, one inflow term (0, 1).
inline DataSet oneDimScreenModel(const std::string& aquifer = "Semi-Infinite", const std::string& contaminant = "Dirichlet") {
    DataSet d;
    d.modelType = "One Dimensional";
    d.aquiferType = aquifer;
    d.contaminantType = contaminant;
    d.lengthUnit = "m";
    d.timeUnit = "day";
    d.concentrationUnit = "mg/l";
    d.velocity = "0.3";
    d.dispersionX = "0.5";
    d.halfLife = "10";
    d.xRange = "0:10:1";
    d.timeRange = "0:5:1";
    d.mcAtX = "10";
    d.mcAtT = "5";
    d.porosity = "0.3";
    d.retardation = "1";
    oneTerm(d, "0", "1");
    return d;
}

// x 0:100:10, y -50:50:10, t 0:10:1; a finite line source 20 wide at y 0.
inline DataSet twoDimScreenModel(const std::string& aquifer = "Infinite", const std::string& contaminant = "Finite / Line") {
    DataSet d;
    d.modelType = "Two Dimensional";
    d.aquiferType = aquifer;
    d.contaminantType = contaminant;
    d.lengthUnit = "m";
    d.timeUnit = "day";
    d.concentrationUnit = "mg/l";
    d.xRange = "0:100:10";
    d.yRange = "-50:50:10";
    d.timeRange = "0:10:1";
    d.sourceWidth = "20";
    d.sourceStdDev = "5";
    d.injectionRate = "2";
    d.velocity = "0.3";
    d.dispersionX = "1";
    d.dispersionY = "0.1";
    d.halfLife = "100";
    d.porosity = "0.3";
    d.sourceXc = "0";
    d.sourceYc = "0";
    d.mcAtX = "100";
    d.mcAtY = "50";
    d.mcAtT = "10";
    d.netRecharge = "0";
    d.aquiferThickness = "10";
    d.retardation = "1";
    oneTerm(d, "0", "1");
    return d;
}

// x 0:100:10, y -20:20:10, z 0:10:5, t 0:10:1; a patch 10 wide and 4 high.
inline DataSet threeDimScreenModel(const std::string& aquifer = "Infinite", const std::string& contaminant = "Finite / Patch") {
    DataSet d;
    d.modelType = "Three Dimensional";
    d.aquiferType = aquifer;
    d.contaminantType = contaminant;
    d.lengthUnit = "m";
    d.timeUnit = "day";
    d.concentrationUnit = "mg/l";
    d.xRange = "0:100:10";
    d.yRange = "-20:20:10";
    d.zRange = "0:10:5";
    d.timeRange = "0:10:1";
    d.sourceWidth = "10";
    d.sourceHeight = "4";
    d.sourceXc = "0";
    d.injectionRate = "3";
    d.sourceYc = "0";
    d.sourceZc = "5";
    d.velocity = "0.3";
    d.dispersionX = "1";
    d.dispersionY = "0.1";
    d.dispersionZ = "0.01";
    d.halfLife = "100";
    d.porosity = "0.3";
    d.mcAtX = "100";
    d.mcAtY = "20";
    d.mcAtZ = "10";
    d.mcAtT = "10";
    d.netRecharge = "0";
    d.aquiferThickness = "10";
    d.retardation = "1";
    oneTerm(d, "0", "1");
    return d;
}

// A host that answers like a user and records the requests.
class RecordingHost : public InputFormHost {
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
    void printerSetup() override { ++printerSetups; }
    void showHelp() override { ++helps; }
    bool monteCarloScreenAvailable() override { return monteCarloAvailable; }
    void showMonteCarloScreen() override { ++monteCarloScreens; }
    void openScreenForModel() override { ++otherScreens; }
    void closeScreen() override { ++closes; }
};

// A screen on a model, shown (setDisplay) with a scripted interface and a recording host.
struct Screen {
    DataSet data;
    AppState state;
    ScriptedUserInterface ui;
    RecordingHost host;
    InputFormModel form{data, state, ui};

    explicit Screen(DataSet model) : data(std::move(model)) {
        host.data = &data;
        form.setHost(&host);
        form.load(true);
    }
};

}  // namespace bm::testkit
