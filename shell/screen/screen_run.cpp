// Calculate! on a model screen: validation, holdDataSet, the run with its
// progress picture and Stop button, and the refresh afterwards.

#include <cmath>

#include "model/number_text.h"
#include "montecarlo/pass/calculation_pass.h"
#include "shell/screen/screen_model.h"

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

bool ScreenModel::runOnScreen() {
    // The status line, the progress picture and Stop; everything else disabled.
    const std::string savedHelp = helpPanel;
    helpPanel = kComputationStatus;
    progressVisible = true;
    stopVisible = true;
    running = true;
    mainEnabled = false;
    menusEnabled = false;
    tabEnabled = false;
    FocusRequest stop;
    stop.dimension = layoutShown();
    stop.stop = true;
    requestFocus(stop);
    changed();

    // calculateRoutine lets the events through once, runs the pass of the
    // model's kind (which reports each point to the progress picture) and
    // clears the kind's stale flag.
    const CalculationOutcome outcome = calculateRoutine(data_, ui_, calculationErrorContext());
    if (outcome.finished) resultLabel = outcome.resultLabel;

    // Everything back as it was.
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

bool ScreenModel::calculate() {
    if (running) return false;
    ui_.setBusy(true);
    const bool valid = validate();
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

void ScreenModel::stopClicked() {
    stopButtonClicked(data_, ui_);
    changed();
}

void ScreenModel::refreshResultLabel() {
    resultLabel = resultLabelFromMode(data_.calculationMode);
    resultCaption = contains(data_.calculationMode, "Monte Carlo") ? "Monte Carlo Computed at" : "Computed at";
}

}  // namespace bm
