#pragma once
// What every screen of a decay chain adds to its single-chemical screen's
// commands, whatever the model kind: the result label names the kind of the
// last run (each chemical's value is in the points table), Graph and View ask
// for the chemical first (SelectChemicalForm) and do nothing without one, and
// Stop ends the run after the chemical at hand (stopRequestedMulti).

#include <string>

#include "model/number_text.h"
#include "montecarlo/pass/calculation_pass.h"
#include "shell/screen/screen_model.h"
#include "species/chain/chemical_choice.h"

namespace bm {

template <class Screen>
class ChainScreen : public Screen {
public:
    using Screen::Screen;

    void refreshResultLabel() override {
        Screen::refreshResultLabel();
        const std::string& mode = this->data_.calculationMode;
        if (contains(mode, "Monte Carlo"))
            this->resultLabel = "Monte Carlo";
        else
            this->resultLabel = mode.empty() ? "" : "Regular";
    }

    void menuResultsClick(int index) override {
        if (index != resultsItem::Graph && index != resultsItem::View) return;
        if (!chemicalChosen()) return;
        chemicalPicked_ = true;
        Screen::menuResultsClick(index);
        chemicalPicked_ = false;
    }

    void menuMonteCarloClick(int index) override {
        const bool showsResults = index == monteCarloItem::Graph || index == monteCarloItem::View;
        if (showsResults && !chemicalPicked_ && this->data_.calculationMode == "Monte Carlo" && !chemicalChosen())
            return;
        Screen::menuMonteCarloClick(index);
    }

    void stopClicked() override {
        // The chain's loop sees the answer between chemicals.
        stopButtonClicked(this->data_, this->ui_);
        this->data_.stopRequestedMulti = this->data_.stopRequested;
        this->data_.stopRequested = false;
        this->changed();
    }

protected:
    bool chemicalChosen() {
        return pickChemical(this->data_, [this] {
            if (this->host_) this->host_->showChemicalPicker(this->data_);
        });
    }

private:
    bool chemicalPicked_ = false;  // a Results command has asked for the chemical already
};

}  // namespace bm
