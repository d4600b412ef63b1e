// Calculate! on the saturated model screen: validation, holdDataSet, the run
// with its progress picture and Stop button, and the refresh afterwards.

#include <cmath>

#include "model/number_text.h"
#include "saturated/calculation_run.h"
#include "saturated/input_form_model.h"
#include "saturated/input_validation.h"

namespace bm {

double progressFraction(double total, double done) {
    if (!(total > 0) || !(done > 0)) return 0.0;
    return done >= total ? 1.0 : done / total;
}

std::string progressPercentText(double total, double done) {
    float percent = total > 0 ? static_cast<float>(done * 100.0 / total) : 0.0f;
    if (!(percent >= 0.0f)) percent = 0.0f;
    if (percent > 100.0f) percent = 100.0f;
    return std::to_string(static_cast<int>(std::lround(percent))) + "%";
}

bool InputFormModel::runOnScreen() {
    // Steps 1 to 3: the status line, the progress picture and Stop, everything else disabled.
    const std::string savedHelp = helpPanel;
    helpPanel = kComputationStatus;
    progressVisible = true;
    stopVisible = true;
    running = true;
    mainEnabled = false;
    menusEnabled = false;
    tabEnabled = false;
    FocusRequest stop;
    stop.dimension = dimension_;
    stop.stop = true;
    requestFocus(stop);
    changed();

    // Steps 4 to 6: calculateRoutine lets the events through once, runs the
    // pass of modelType (which reports each point to the progress picture) and
    // clears the stale flag of the dimension.
    const CalculationOutcome outcome = calculateRoutine(data_, ui_);
    if (outcome.finished) resultLabel = outcome.resultLabel;

    // Step 7: undo steps 1 to 3.
    progressVisible = false;
    stopVisible = false;
    running = false;
    data_.stopRequested = false;
    mainEnabled = true;
    menusEnabled = true;
    tabEnabled = true;
    helpPanel = savedHelp;
    changed();
    return outcome.finished;
}

bool InputFormModel::calculate() {
    if (running) return false;
    ui_.setBusy(true);
    const bool valid = inputForm_validate(*this);
    if (valid) {
        ui_.setBusy(true);  // validation gave the normal pointer back
        mainEnabled = false;
        changed();
        if (data_.monteCarloModeOn)
            ui_.message(MessageIcon::Information, MessageButtons::Ok, kInitialConcentrationTitle,
                        kInitialConcentrationText);
        if (holdDataSet()) {
            runOnScreen();
            refreshSelectedPoint();
            if (data_.dataState == kParametersChanged) data_.dataState = kNeedsSaving;
            saveEnabled = true;
            updateResultsMenuState();
            refreshResultLabel();
        }
    }
    mainEnabled = true;
    ui_.setBusy(false);
    changed();
    return valid;
}

void InputFormModel::stopClicked() {
    stopButtonClicked(data_, ui_);
    changed();
}

}  // namespace bm
