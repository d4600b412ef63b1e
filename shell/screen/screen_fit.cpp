// The fit to observations from a model screen.

#include "montecarlo/pass/kind_calculation.h"
#include "shell/screen/screen_model.h"

namespace bm {

MenuItem ScreenModel::fitMenuItem() const {
    const bool calculable = !data_.multiChemical && kindCalculationOf(data_) != nullptr;
    return {kFitMenuIndex, "Fit to &Observations...", menusEnabled && !running && calculable, false, false};
}

void ScreenModel::fitToObservations() {
    if (running || !fitMenuItem().enabled || host_ == nullptr) return;
    if (!validate() || !holdDataSet()) return;
    if (!host_->showFitDialog(data_)) return;
    markChanged();
    setDisplay();
    updateResultsMenuState();
    changed();
}

}  // namespace bm
