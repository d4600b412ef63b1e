// The File and Monte Carlo menus of the saturated model screen.

#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "saturated/input_form_model.h"
#include "files/file_workflow.h"
#include "shell/main_form.h"

namespace bm {

namespace {

bool savePrompt(DataSet& data, UserInterface& ui) {
    std::string tag;
    return saveDataFilePrompt(data, ui, tag);
}

bool saveFile(DataSet& data, UserInterface& ui, const std::string& kind) {
    std::string tag;
    return saveDataFile(data, ui, kind, data.modelType, tag);
}

bool openFile(DataSet& data, UserInterface& ui) {
    std::string tag;
    return openModelFile(data, ui, "Open Data File", 1, data.modelType, tag);
}

bool shownHere(const DataSet& data) { return modelScreenFor(data.modelType, data.multiChemical) == ModelScreen::inputForm; }

}  // namespace

bool InputFormModel::fileNew() {
    if (!savePrompt(data_, ui_)) return false;
    if (!host_ || !host_->showNewModelDialog()) return false;
    // A new model keeps only what the dialog chose.
    const std::string model = data_.modelType, aquifer = data_.aquiferType, contaminant = data_.contaminantType;
    const bool multi = data_.multiChemical;
    closeModel(data_, "Partial");
    data_.modelType = model;
    data_.aquiferType = aquifer;
    data_.contaminantType = contaminant;
    data_.multiChemical = multi;
    data_.needsDisplayRefresh = true;
    data_.dataState = kDataUnchanged;
    if (!shownHere(data_)) {
        host_->openScreenForModel();
        return true;
    }
    setDisplay();
    saveEnabled = false;
    updateResultsMenuState();
    return true;
}

bool InputFormModel::fileOpen() {
    if (!savePrompt(data_, ui_)) return false;
    const bool read = openFile(data_, ui_);
    if (!read) return false;
    if (!shownHere(data_)) {
        if (host_) host_->openScreenForModel();
        return true;
    }
    setDisplay();
    saveEnabled = true;
    updateResultsMenuState();
    return true;
}

bool InputFormModel::fileSave(const std::string& kind) {
    if (!holdDataSet()) return false;
    const bool written = saveFile(data_, ui_, kind);
    if (written) data_.dataState = kDataUnchanged;
    return written;
}

bool InputFormModel::fileClose() {
    if (!savePrompt(data_, ui_)) return false;
    closeModel(data_, "Partial");
    setDisplay();
    saveEnabled = false;
    updateResultsMenuState();
    return true;
}

void InputFormModel::menuFileClick(int index) {
    switch (index) {
    case fileItem::New: fileNew(); break;
    case fileItem::Open: fileOpen(); break;
    case fileItem::Save: fileSave("Save"); break;
    case fileItem::SaveAs: fileSave("Save As"); break;
    case fileItem::Close: fileClose(); break;
    case fileItem::Print: printReport(); break;
    case fileItem::PrinterSetup:
        if (host_) host_->printerSetup();
        break;
    case fileItem::Exit:
        if (exitScreen() && host_) host_->closeScreen();
        break;
    default: break;
    }
    changed();
}

bool InputFormModel::exitScreen() {
    if (!savePrompt(data_, ui_)) return false;
    closeModel(data_, "Complete");
    return true;
}

void InputFormModel::menuMonteCarloClick(int index) {
    if (index == monteCarloItem::Generate) {
        if (!host_ || !host_->monteCarloScreenAvailable()) {
            ui_.message(MessageIcon::Information, MessageButtons::Ok, "Monte Carlo",
                        "The Monte Carlo simulation screen is not part of this build.");
            return;
        }
        ui_.setBusy(true);
        // The set-up starts from numbers: each marker goes back to the value it stands for.
        for (FormRow& r : rows(dimension_))
            if (holdsMonteMarker(r.text)) r.text = trim(valueOfCell(r.text));
        if (holdDataSet()) {
            host_->showMonteCarloScreen();
            setDisplay();
            if (data_.dataState == kParametersChanged) saveEnabled = true;
            resultCaption = monteCarloCaption == "Monte Carlo" ? "Monte Carlo Computed at" : "Computed at";
        }
        ui_.setBusy(false);
        changed();
        return;
    }
    if (index != monteCarloItem::Graph && index != monteCarloItem::View) return;
    if (data_.calculationMode != "Monte Carlo") {
        ui_.message(MessageIcon::Exclamation, MessageButtons::Ok, "No Monte Carlo Simulation",
                    "No Monte Carlo Output Data! \r  Analytical computations have not been performed using the Monte "
                    "Carlo simulations. Please select Calculate from the menu before choosing this option.");
        return;
    }
    if (!holdDataSet()) return;
    viewSimulation(index == monteCarloItem::Graph ? "Trazelh" : "Numbers");
}

}  // namespace bm
