// The shared screen model: construction, load, the caption, the notes, the
// status line and the units.

#include "shell/screen/screen_model.h"

#include "model/number_text.h"
#include "model/ranges.h"
#include "montecarlo/pass/kind_calculation.h"
#include "shell/base/error_handler.h"
#include "shell/base/runtime_error.h"

namespace bm {

ScreenModel::ScreenModel(DataSet& data, AppState& state, UserInterface& ui, ModelScreen screen)
    : data_(data), state_(state), ui_(ui), screen_(screen) {
    lengthUnit = defaultUnitWord(UnitMenu::Length);
    timeUnit = defaultUnitWord(UnitMenu::Time);
    concentrationUnit = defaultUnitWord(UnitMenu::Concentration);
}

void ScreenModel::load(bool saveEnabledByOpener) {
    saveEnabled = saveEnabledByOpener;
    resetTabs();
    setDisplay();
    helpPanel = hintFor(HintPlace::mainElastic);
    updateResultsMenuState();
    changed();
}

std::string ScreenModel::windowTitle() const { return windowTitlePrefix() + data_.currentFileName; }

void ScreenModel::changed() {
    if (host_) host_->formChanged();
}

void ScreenModel::requestFocus(const FocusRequest& focus) {
    lastFocus = focus;
    if (host_) host_->moveFocus(focus);
}

const KindCalculation* ScreenModel::kindCalculation() const { return kindCalculationOf(data_); }

bool ScreenModel::shownHere() const { return modelScreenFor(data_.modelType, data_.multiChemical) == screen_; }

namespace {

std::string stripWord(const std::string& caption, const std::string& word) {
    if (caption.rfind(word, 0) == 0) return caption.substr(word.size());
    return caption;
}

}  // namespace

std::string ScreenModel::modelWord() const { return stripWord(modelCaption, "Model: "); }
std::string ScreenModel::aquiferWord() const { return stripWord(aquiferCaption, aquiferLabel); }
std::string ScreenModel::contaminantWord() const { return stripWord(contaminantCaption, "Contaminant: "); }

void ScreenModel::showModelWords() {
    modelCaption = "Model: " + data_.modelType;
    aquiferCaption = aquiferLabel + data_.aquiferType;
    contaminantCaption = "Contaminant: " + data_.contaminantType;
    titleText = data_.title;
    authorText = data_.author;
    commentsText = data_.comments;
    lengthUnit = unitWordOf(data_, UnitMenu::Length);
    timeUnit = unitWordOf(data_, UnitMenu::Time);
    concentrationUnit = unitWordOf(data_, UnitMenu::Concentration);
}

void ScreenModel::holdModelWords() {
    data_.modelType = modelWord();
    data_.aquiferType = aquiferWord();
    data_.contaminantType = contaminantWord();
    data_.title = titleText;
    data_.author = authorText;
    data_.comments = commentsText;
    data_.lengthUnit = lengthUnit;
    data_.timeUnit = timeUnit;
    data_.concentrationUnit = concentrationUnit;
}

void ScreenModel::markChanged() {
    data_.dataState = kParametersChanged;
    setMcPointChanged(data_, data_.modelType, true);
    saveEnabled = true;
}

// ---------------------------------------------------------------- title, author, comments

std::string& ScreenModel::noteText(NoteField field) {
    switch (field) {
    case NoteField::Title: return titleText;
    case NoteField::Author: return authorText;
    default: return commentsText;
    }
}

void ScreenModel::noteEdited(NoteField field, const std::string& text) {
    std::string& entry = noteText(field);
    if (entry == text) return;
    entry = text;
    // A note changes nothing to calculate: it only asks for a save.
    if (data_.dataState == kDataUnchanged) data_.dataState = kNeedsSaving;
    saveEnabled = true;
}

void ScreenModel::noteLabelClicked(NoteField field) {
    static constexpr const char* kFields[] = {"TITLE", "AUTHOR", "COMMENTS"};
    state_.notesText = noteText(field);
    state_.notesField = kFields[static_cast<int>(field)];
    NotesPad pad(state_);
    if (host_) host_->showNotes(pad);
    else pad.cancel();
    if (!state_.notesText.empty()) noteEdited(field, state_.notesText);
    changed();
}

// ---------------------------------------------------------------- status line

bool ScreenModel::monteCarloInUse() const {
    if (contains(data_.calculationMode, "Monte Carlo") || data_.monteCarloModeOn) return true;
    return inputsHoldMarker();
}

std::string ScreenModel::hintFor(HintPlace place) const {
    switch (place) {
    case HintPlace::mainElastic:
    case HintPlace::TabElastic: return " Please press Calculate before viewing the Results.";
    case HintPlace::AquiferE: return " Type of the Aquifer.";
    case HintPlace::ContaminantE: return " Contaminant Source type.";
    case HintPlace::ModelE: return " This can be changed by selecting New from the File Menu.";
    case HintPlace::authorE: return " Click to see the author details.";
    case HintPlace::CommentsE: return " Click to see complete comment.";
    case HintPlace::Grid:
    case HintPlace::SuperpositionRow:
        return " Choosing superposition index > 1 allows superposing new concentration at given instances.";
    case HintPlace::RangeRow: return kRangePrompt;
    case HintPlace::MonteCarloElastic:
        return monteCarloInUse() ? " Atleast one of the variables is using values from the Monte Carlo simulation."
                                 : " No variable is using values from the Monte Carlo simulation. Click to run Monte "
                                   "Carlo simulation.";
    }
    return {};
}

void ScreenModel::hover(HintPlace place) {
    if (running) return;  // the status line shows the computation status
    helpPanel = hintFor(place);
    changed();
}

// ---------------------------------------------------------------- rows under Monte Carlo control

bool ScreenModel::rowClicked(int index) {
    if (!rowLocked(index)) return true;
    ui_.message(MessageIcon::Exclamation, MessageButtons::Ok, kReadOnlyTitle, readOnlyText(index));
    return false;
}

bool ScreenModel::displayed(const std::function<void()>& show) {
    try {
        showModelWords();
        show();
        data_.needsDisplayRefresh = false;
        changed();
        return true;
    } catch (const RuntimeError& e) {
        handleError(e, "Error in setDisplay()", "", ui_);
        changed();
        return false;
    }
}

std::string ScreenModel::readOnlyText(int index) const {
    return "Monte Carlo selected values for " + rowCaptionText(index) +
           " are read only.\r\rTo unselect a monte carlo option please use Generate from the Monte Carlo menu.";
}

bool ScreenModel::superpositionTextAccepted(const std::string& text) {
    if (isNumeric(text) && textValue(text) >= 1) return true;
    ui_.message(MessageIcon::Exclamation, MessageButtons::Ok, "Improper input value",
                "'" + text +
                    "' is not a valid input value.\r\rThe value of Superposition Index must be greater than or equal "
                    "to 1.");
    return false;
}

bool ScreenModel::rowKeyPress(int index) {
    if (rowClicked(index)) return true;
    FocusRequest f;
    f.dimension = layoutShown();
    f.row = index;
    f.next = true;  // typing in a locked row sends a Tab
    requestFocus(f);
    return false;
}

// ---------------------------------------------------------------- units

std::string& ScreenModel::unitWord(UnitMenu menu) {
    switch (menu) {
    case UnitMenu::Length: return lengthUnit;
    case UnitMenu::Time: return timeUnit;
    default: return concentrationUnit;
    }
}

void ScreenModel::menuUnitsClick(UnitMenu menu, int index) {
    std::string& current = unitWord(menu);
    const UnitChoice choice = chooseUnit(menu, index, current, data_);
    if (choice.changed) {
        relabelUnits(choice.oldWord, choice.newWord, unitLabels());
        current = choice.newWord;
        unitsChanged();
        if (data_.dataState != kDataUnchanged) saveEnabled = true;
    }
    changed();
}

}  // namespace bm
