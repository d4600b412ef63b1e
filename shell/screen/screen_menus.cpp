// The menus every model screen shares: their items, and the File, Monte Carlo
// and Help commands with the close path.

#include "files/file_workflow.h"
#include "model/number_text.h"
#include "montecarlo/pass/monte_setup.h"
#include "shell/screen/screen_model.h"

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

}  // namespace

// ---------------------------------------------------------------- the items

std::vector<MenuItem> ScreenModel::topMenus() const {
    return {
        {topMenu::File, "&File", menusEnabled, false, false},
        {topMenu::Calculate, "&Calculate!", menusEnabled, false, false},
        {topMenu::Results, "&Results", menusEnabled && resultsMenuEnabled, false, false},
        {topMenu::Units, "&Units", menusEnabled, false, false},
        {topMenu::MonteCarlo, "&Monte Carlo", menusEnabled, false, false},
        {topMenu::Help, "&Help", true, false, false},
    };
}

std::vector<MenuItem> ScreenModel::fileMenu() const {
    return {
        {fileItem::New, "&New", true, false, false},
        {fileItem::Open, "&Open...", true, false, false},
        {fileItem::Save, "&Save", saveEnabled, false, false},
        {fileItem::SaveAs, "Save &As...", saveEnabled, false, false},
        {fileItem::Close, "&Close", true, false, false},
        {fileItem::Print, "&Print", true, false, true},
        {fileItem::PrinterSetup, "P&rinter Setup...", true, false, false},
        {fileItem::Exit, "E&xit", true, false, true},
    };
}

std::vector<MenuItem> ScreenModel::resultsMenu() const {
    return {{resultsItem::Graph, "&Graph", true, false, false}, {resultsItem::View, "&View", true, false, false}};
}

std::vector<MenuItem> ScreenModel::unitMenu(UnitMenu menu) const {
    const auto& captions = unitMenuCaptions(menu);
    const auto& words = unitWords(menu);
    const std::string& current = menu == UnitMenu::Length ? lengthUnit
                                 : menu == UnitMenu::Time ? timeUnit
                                                          : concentrationUnit;
    std::vector<MenuItem> items;
    for (int i = 0; i < 4; ++i)
        items.push_back({(i + 1) * 10, captions[static_cast<std::size_t>(i)], true,
                         current == words[static_cast<std::size_t>(i)], i == 2});
    return items;
}

std::vector<MenuItem> ScreenModel::monteCarloMenu() const {
    return {{monteCarloItem::Generate, "&Generate...", true, false, false},
            {monteCarloItem::Graph, "&Graph", true, false, true},
            {monteCarloItem::View, "&View", true, false, false}};
}

void ScreenModel::updateResultsMenuState() { resultsMenuEnabled = data_.dataState != kParametersChanged; }

void ScreenModel::mnuFileClick(int index) {
    if (index == topMenu::Calculate) {
        calculate();
    } else if (index == topMenu::Help) {
        if (host_) host_->showHelp();
    }
}

// ---------------------------------------------------------------- File

bool ScreenModel::fileNew() {
    if (!savePrompt(data_, ui_)) return false;
    if (!host_ || !host_->showNewModelDialog()) return false;
    // The dialog sets the model's kind; every other input stays, so that a
    // model can be tried as another kind without typing it again.
    data_.needsDisplayRefresh = true;
    if (!shownHere()) {
        host_->openScreenForModel();
        return true;
    }
    setDisplay();
    saveEnabled = false;
    updateResultsMenuState();
    return true;
}

bool ScreenModel::fileOpen() {
    if (!savePrompt(data_, ui_)) return false;
    const bool read = openFile(data_, ui_);
    if (!read) return false;
    if (!shownHere()) {
        if (host_) host_->openScreenForModel();
        return true;
    }
    setDisplay();
    saveEnabled = true;
    updateResultsMenuState();
    return true;
}

bool ScreenModel::fileSave(const std::string& kind) {
    if (!holdDataSet()) return false;
    const bool written = saveFile(data_, ui_, kind);
    if (written) data_.dataState = kDataUnchanged;
    return written;
}

bool ScreenModel::fileClose() {
    if (!savePrompt(data_, ui_)) return false;
    closeModel(data_, "Partial");
    setDisplay();
    saveEnabled = false;
    updateResultsMenuState();
    return true;
}

void ScreenModel::menuFileClick(int index) {
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

bool ScreenModel::exitScreen() {
    if (!savePrompt(data_, ui_)) return false;
    closeModel(data_, "Complete");
    return true;
}

// ---------------------------------------------------------------- Monte Carlo

void ScreenModel::menuMonteCarloClick(int index) {
    if (index == monteCarloItem::Generate) {
        // The set-up screen comes from the screen registry, over this screen.
        if (!host_ || !host_->screenAvailable(ModelScreen::MonteCarloForm)) {
            ui_.message(MessageIcon::Information, MessageButtons::Ok, "Monte Carlo",
                        "The Monte Carlo simulation screen is not part of this build.");
            return;
        }
        ui_.setBusy(true);
        if (holdDataSet()) {
            // The screen lists a varying field with the constant it stands for;
            // on its return the model's block decides again what each field holds.
            host_->openScreen(ModelScreen::MonteCarloForm);
            applyMonteCarloSelections(data_);
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
