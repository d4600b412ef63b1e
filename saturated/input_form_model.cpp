#include "saturated/input_form_model.h"

#include <algorithm>

#include "model/number_text.h"
#include "model/ranges.h"
#include "montecarlo/monte_marker.h"
#include "saturated/calculation_run.h"
#include "saturated/source_captions.h"
#include "shell/checked_math.h"
#include "shell/error_handler.h"
#include "shell/runtime_error.h"

namespace bm {

namespace {

const std::string kEmpty;

std::string stripWord(const std::string& caption, const std::string& word) {
    if (caption.rfind(word, 0) == 0) return caption.substr(word.size());
    return caption;
}

bool isFinitePatch(const std::string& contaminant) {
    return contaminant == "Finite Patch" || contaminant == "Finite / Patch";
}

}  // namespace

// ---------------------------------------------------------------- TermGrid, NotesPad

const std::string& TermGrid::cell(int row, int column) const {
    if (row < 0 || row >= static_cast<int>(cells.size())) return kEmpty;
    return column == 0 ? cells[static_cast<std::size_t>(row)].time : cells[static_cast<std::size_t>(row)].concentration;
}

NotesPad::NotesPad(AppState& state) : text(state.notesText), state_(state) {}

void NotesPad::ok() {
    if (text != state_.notesText) {
        state_.notesText = text;
        changed = true;
    }
    text.clear();
    closed = true;
}

void NotesPad::cancel() {
    state_.notesText.clear();
    closed = true;
}

// ---------------------------------------------------------------- construction

InputFormModel::InputFormModel(DataSet& data, AppState& state, UserInterface& ui)
    : data_(data), state_(state), ui_(ui) {
    for (int d = 1; d <= 3; ++d) {
        buildRows(d);
        grids_[static_cast<std::size_t>(d)].name = "Input" + std::to_string(d) + "TG";
        grids_[static_cast<std::size_t>(d)].styleName = "MonteCarloStyle" + std::to_string(d);
        grids_[static_cast<std::size_t>(d)].cells.resize(1);
    }
    lengthUnit = defaultUnitWord(UnitMenu::Length);
    timeUnit = defaultUnitWord(UnitMenu::Time);
    concentrationUnit = defaultUnitWord(UnitMenu::Concentration);
}

void InputFormModel::buildRows(int dimension) {
    auto& list = rows_[static_cast<std::size_t>(dimension)];
    list.clear();
    for (const RowSpec& spec : rowSpecs(dimension)) {
        FormRow r;
        r.field = spec.field;
        r.kind = spec.kind;
        r.unit = spec.unit;
        r.caption = spec.caption ? spec.caption : "";
        r.tab = spec.tab;
        r.enabled = spec.kind != RowKind::ConcentrationCaption;
        list.push_back(r);
    }
}

std::vector<FormRow>& InputFormModel::rows(int dimension) {
    if (dimension < 1 || dimension > 3) raiseError(err::SubscriptOutOfRange);
    return rows_[static_cast<std::size_t>(dimension)];
}

const std::vector<FormRow>& InputFormModel::rows(int dimension) const {
    if (dimension < 1 || dimension > 3) raiseError(err::SubscriptOutOfRange);
    return rows_[static_cast<std::size_t>(dimension)];
}

FormRow& InputFormModel::row(int dimension, int index) {
    auto& list = rows(dimension);
    if (index < 0 || index >= static_cast<int>(list.size()))
        throw RuntimeError(340, "Control array element '" + std::to_string(index) + "' doesn't exist");
    return list[static_cast<std::size_t>(index)];
}

const FormRow& InputFormModel::row(int dimension, int index) const {
    const auto& list = rows(dimension);
    if (index < 0 || index >= static_cast<int>(list.size()))
        throw RuntimeError(340, "Control array element '" + std::to_string(index) + "' doesn't exist");
    return list[static_cast<std::size_t>(index)];
}

TermGrid& InputFormModel::grid(int dimension) {
    if (dimension < 1 || dimension > 3) raiseError(err::SubscriptOutOfRange);
    return grids_[static_cast<std::size_t>(dimension)];
}

const TermGrid& InputFormModel::grid() const {
    return grids_[static_cast<std::size_t>(std::clamp(dimension_, 0, 3))];
}

std::string rowCaption(const InputFormModel& form, int index) { return form.row(index).caption; }

std::string InputFormModel::windowTitle() const { return kWindowTitlePrefix + data_.currentFileName; }

const char* InputFormModel::resultLabelName(int dimension) {
    switch (dimension) {
    case 2: return "LabelResult2D";
    case 3: return "LabelResult3D";
    default: return "LabelResult1D";
    }
}

const char* InputFormModel::tabSetName(int dimension) {
    switch (dimension) {
    case 2: return "TwoDimTab";
    case 3: return "ThreeDimTab";
    default: return "OneDimTab";
    }
}

void InputFormModel::changed() {
    if (host_) host_->formChanged();
}

void InputFormModel::requestFocus(const FocusRequest& focus) {
    lastFocus = focus;
    if (focus.dimension >= 1 && focus.dimension <= 3 && focus.tab >= 0)
        currentTab[static_cast<std::size_t>(focus.dimension)] = focus.tab;
    if (focus.grid && focus.dimension >= 1 && focus.dimension <= 3) {
        TermGrid& g = grid(focus.dimension);
        g.currentRow = focus.gridRow;
        g.currentColumn = focus.gridColumn;
        g.editMode = focus.editMode;
    }
    if (host_) host_->moveFocus(focus);
}

// ---------------------------------------------------------------- fields

std::string InputFormModel::fieldText(const FormRow& r) const {
    const DataSet& d = data_;
    switch (r.field) {
    case RowField::xRange: return d.xRange;
    case RowField::yRange: return d.yRange;
    case RowField::zRange: return d.zRange;
    case RowField::timeRange: return d.timeRange;
    case RowField::velocity: return d.velocity;
    case RowField::dispersionX: return d.dispersionX;
    case RowField::dispersionY: return d.dispersionY;
    case RowField::dispersionZ: return d.dispersionZ;
    case RowField::halfLife: return d.halfLife;
    case RowField::porosity: return d.porosity;
    case RowField::retardation: return d.retardation;
    case RowField::netRecharge: return d.netRecharge;
    case RowField::aquiferThickness: return d.aquiferThickness;
    case RowField::sourceXc: return d.sourceXc;
    case RowField::sourceYc: return d.sourceYc;
    case RowField::sourceZc: return d.sourceZc;
    case RowField::mcAtX: return d.mcAtX;
    case RowField::mcAtY: return d.mcAtY;
    case RowField::mcAtZ: return d.mcAtZ;
    case RowField::mcAtT: return d.mcAtT;
    case RowField::superpositionIndex: return std::to_string(d.superpositionIndex);
    case RowField::concentrationCaption: return {};
    case RowField::twoDimSource:
        switch (twoDimSourceValueOf(r.caption)) {
        case TwoDimSourceValue::Width: return d.sourceWidth;
        case TwoDimSourceValue::StandardDeviation: return d.sourceStdDev;
        default: return d.injectionRate;
        }
    case RowField::threeDimSourceA: return contains(d.contaminantType, "Finite") ? d.sourceWidth : d.sourceXc;
    case RowField::threeDimSourceB: return contains(d.contaminantType, "Finite") ? d.sourceHeight : d.injectionRate;
    }
    return {};
}

void InputFormModel::storeField(const FormRow& r, int dimension) {
    DataSet& d = data_;
    const std::string& t = r.text;
    switch (r.field) {
    case RowField::xRange: d.xRange = t; break;
    case RowField::yRange: d.yRange = t; break;
    case RowField::zRange: d.zRange = t; break;
    case RowField::timeRange: d.timeRange = t; break;
    case RowField::velocity: d.velocity = t; break;
    case RowField::dispersionX: d.dispersionX = t; break;
    case RowField::dispersionY: d.dispersionY = t; break;
    case RowField::dispersionZ: d.dispersionZ = t; break;
    case RowField::halfLife: d.halfLife = t; break;
    case RowField::porosity: d.porosity = t; break;
    case RowField::retardation: d.retardation = t; break;
    case RowField::netRecharge: d.netRecharge = t; break;
    case RowField::aquiferThickness: d.aquiferThickness = t; break;
    case RowField::sourceXc: d.sourceXc = t; break;
    case RowField::sourceYc: d.sourceYc = t; break;
    case RowField::sourceZc: d.sourceZc = t; break;
    case RowField::mcAtX: d.mcAtX = t; break;
    case RowField::mcAtY: d.mcAtY = t; break;
    case RowField::mcAtZ: d.mcAtZ = t; break;
    case RowField::mcAtT: d.mcAtT = t; break;
    case RowField::superpositionIndex: {
        // A count below one stands for one term.
        const std::int16_t n = toInt16(textValue(t));
        d.superpositionIndex = n < 1 ? std::int16_t{1} : n;
        break;
    }
    case RowField::concentrationCaption: break;
    case RowField::twoDimSource:
        // The row holds what its caption says.
        switch (twoDimSourceValueOf(r.caption)) {
        case TwoDimSourceValue::Width: d.sourceWidth = t; break;
        case TwoDimSourceValue::StandardDeviation: d.sourceStdDev = t; break;
        default: d.injectionRate = t; break;
        }
        break;
    case RowField::threeDimSourceA:
        (contains(d.contaminantType, "Finite") ? d.sourceWidth : d.sourceXc) = t;
        break;
    case RowField::threeDimSourceB:
        (contains(d.contaminantType, "Finite") ? d.sourceHeight : d.injectionRate) = t;
        break;
    }
    (void)dimension;
}

// ---------------------------------------------------------------- display

bool InputFormModel::applySourceCaptions(int dimension) {
    auto& list = rows(dimension);
    if (dimension == 2) {
        const std::string caption = twoDimSourceCaption(data_.aquiferType, data_.contaminantType);
        if (caption.empty()) return false;
        list[2].caption = caption;
        list[2].unit = twoDimSourceValueOf(caption) == TwoDimSourceValue::InjectionRate ? UnitKind::Diffusivity
                                                                                         : UnitKind::Length;
        // Only a continuous point in an infinite aquifer is placed by its x centre.
        const bool pointInInfinite =
            toLower(trim(data_.aquiferType)) != "finite" && isContinuousPointSource(data_.contaminantType);
        list[10].enabled = pointInInfinite;
    } else if (dimension == 3) {
        if (isFinitePatch(data_.contaminantType)) {
            list[4].caption = kWidthCaption;
            list[7].caption = kHeightCaption;
            list[4].unit = UnitKind::Length;
            list[7].unit = UnitKind::Length;
        } else if (isContinuousPointSource(data_.contaminantType)) {
            list[4].caption = kSourceXcCaption;
            list[7].caption = kInjectionRateCaption;
            list[4].unit = UnitKind::Length;
            list[7].unit = UnitKind::VolumeRate;
        } else {
            return false;
        }
    }
    return true;
}

bool InputFormModel::setDisplay() {
    try {
        const int d = dimensionOfModelType(data_.modelType);
        buildRows(d == 0 ? 1 : d);
        if (d == 0 || !applySourceCaptions(d)) {
            ui_.message(MessageIcon::None, MessageButtons::Ok, "brenmoor", "Error in setDisplay()");
            changed();
            return false;
        }
        dimension_ = d;
        modelCaption = "Model: " + data_.modelType;
        aquiferCaption = "Aquifer: " + data_.aquiferType;
        contaminantCaption = "Contaminant: " + data_.contaminantType;
        titleText = data_.title;
        authorText = data_.author;
        commentsText = data_.comments;

        lengthUnit = data_.lengthUnit.empty() ? defaultUnitWord(UnitMenu::Length) : data_.lengthUnit;
        timeUnit = data_.timeUnit.empty() ? defaultUnitWord(UnitMenu::Time) : data_.timeUnit;
        concentrationUnit =
            data_.concentrationUnit.empty() ? defaultUnitWord(UnitMenu::Concentration) : data_.concentrationUnit;

        settleSuperpositionIndex(data_);
        for (FormRow& r : rows(d)) {
            r.text = fieldText(r);
            r.unitCaption = unitLabel(r.unit, lengthUnit, timeUnit);
        }
        SendGWDataToTGData();
        ChangeTDBGridUnits();
        setMonteCarloCaption();
        refreshResultLabel();
        dirty_.assign(rows(d).size(), false);
        data_.needsDisplayRefresh = false;
        changed();
        return true;
    } catch (const RuntimeError& e) {
        handleError(e, "Error in setDisplay()", "", ui_);
        changed();
        return false;
    }
}

void InputFormModel::load(bool saveEnabledByOpener) {
    saveEnabled = saveEnabledByOpener;
    currentTab.fill(kCoordinatesTab);
    setDisplay();
    helpPanel = hintFor(HintPlace::mainElastic);
    updateResultsMenuState();
    changed();
}

void InputFormModel::SendGWDataToTGData() {
    if (dimension_ < 1) return;
    TermGrid& g = grid(dimension_);
    const int n = std::max<int>(1, data_.superpositionIndex);
    g.cells.assign(static_cast<std::size_t>(n), Term{});
    for (int i = 1; i <= n && i <= data_.terms.ub(); ++i) g.cells[static_cast<std::size_t>(i - 1)] = data_.terms(i);
}

void InputFormModel::SendTGDataToGWData() {
    if (dimension_ < 1) return;
    const TermGrid& g = grid(dimension_);
    const int n = std::max<int>(1, data_.superpositionIndex);
    data_.terms.redimPreserve(n);
    for (int i = 1; i <= n; ++i) {
        data_.terms(i).time = g.cell(i - 1, 0);
        data_.terms(i).concentration = g.cell(i - 1, 1);
    }
}

bool InputFormModel::holdDataSet() {
    try {
        data_.modelType = stripWord(modelCaption, "Model: ");
        data_.aquiferType = stripWord(aquiferCaption, "Aquifer: ");
        data_.contaminantType = stripWord(contaminantCaption, "Contaminant: ");
        data_.title = titleText;
        data_.author = authorText;
        data_.comments = commentsText;
        data_.lengthUnit = lengthUnit;
        data_.timeUnit = timeUnit;
        data_.concentrationUnit = concentrationUnit;
        const int d = dimensionOfModelType(data_.modelType);
        if (d >= 1) {
            for (const FormRow& r : rows(d)) storeField(r, d);
            SendTGDataToGWData();
            parseCoordinates(data_);
        }
        data_.currentConcentration = 0.0;
        return true;
    } catch (const RuntimeError& e) {
        handleError(e, "Error in holddataset()", "", ui_);
        return false;
    }
}

// ---------------------------------------------------------------- Monte Carlo panel and the point rows

bool InputFormModel::monteCarloInUse() const {
    if (contains(data_.calculationMode, "Monte Carlo") || data_.monteCarloModeOn) return true;
    if (dimension_ < 1) return false;
    for (const FormRow& r : rows(dimension_))
        if (holdsMonteMarker(r.text)) return true;
    for (const Term& t : grid().cells)
        if (holdsMonteMarker(t.concentration)) return true;
    return false;
}

void InputFormModel::setMonteCarloCaption() {
    bool varies = data_.monteCarloModeOn;
    for (const FormRow& r : rows(dimension_))
        if (holdsMonteMarker(r.text)) varies = true;
    monteCarloCaption = varies ? "Monte Carlo" : "";
    enablePointRows();
}

void InputFormModel::enablePointRows() {
    const bool on = !monteCarloCaption.empty();
    for (FormRow& r : rows(dimension_))
        if (r.kind == RowKind::Point) r.enabled = on;
}

void InputFormModel::refreshResultLabel() {
    resultLabel = resultLabelFromMode(data_.calculationMode);
    resultCaption = contains(data_.calculationMode, "Monte Carlo") ? "Monte Carlo Computed at" : "Computed at";
}

void InputFormModel::refreshSelectedPoint() {
    if (dimension_ < 1) return;
    const DimensionRows& n = dimensionRows(dimension_);
    row(n.mcX).text = formatNumber(data_.xConstant);
    if (n.mcY >= 0) row(n.mcY).text = formatNumber(data_.yConstant);
    if (n.mcZ >= 0) row(n.mcZ).text = formatNumber(data_.zConstant);
    row(n.mcT).text = formatNumber(data_.tConstant);
    refreshResultLabel();
}

// ---------------------------------------------------------------- editing

bool InputFormModel::rowLocked(int index) const {
    if (dimension_ < 1 || index < 0 || index >= static_cast<int>(rows(dimension_).size())) return false;
    return holdsMonteMarker(row(index).text);
}

void InputFormModel::readOnlyMessage(int index) {
    ui_.message(MessageIcon::Exclamation, MessageButtons::Ok, kReadOnlyTitle,
                "Monte Carlo selected values for " + row(index).caption +
                    " are read only.\r\rTo unselect a monte carlo option please use Generate from the Monte Carlo "
                    "menu.");
}

bool InputFormModel::rowKeyPress(int index) {
    if (!rowLocked(index)) return true;
    readOnlyMessage(index);
    FocusRequest f;
    f.dimension = dimension_;
    f.row = index;
    f.next = true;  // typing in a locked row sends a Tab
    requestFocus(f);
    return false;
}

bool InputFormModel::rowClicked(int index) {
    if (!rowLocked(index)) return true;
    readOnlyMessage(index);
    return false;
}

void InputFormModel::markChanged() {
    data_.dataState = kParametersChanged;
    setMcPointChanged(data_, data_.modelType, true);
    saveEnabled = true;
}

void InputFormModel::rowEdited(int index, const std::string& text) {
    FormRow& r = row(index);
    if (r.text == text) return;
    r.text = text;
    if (static_cast<std::size_t>(index) < dirty_.size()) dirty_[static_cast<std::size_t>(index)] = true;
    markChanged();
}

void InputFormModel::rowEntered(int index) {
    const FormRow& r = row(index);
    if (r.kind == RowKind::Range)
        helpPanel = hintFor(HintPlace::RangeRow);
    else if (r.kind == RowKind::SuperpositionIndex)
        helpPanel = hintFor(HintPlace::SuperpositionRow);
    changed();
}

void InputFormModel::rewritePointRows() {
    const DimensionRows& n = dimensionRows(dimension_);
    const auto rewrite = [&](int rangeRow, int pointRow) {
        if (rangeRow < 0 || pointRow < 0) return;
        const std::string& spec = row(rangeRow).text;
        if (!rangeFormatIsValid(spec)) return;
        row(pointRow).text = formatNumber(rangeConstant(spec));
    };
    rewrite(n.x, n.mcX);
    rewrite(n.y, n.mcY);
    rewrite(n.z, n.mcZ);
    rewrite(n.t, n.mcT);
}

void InputFormModel::resizeGrid(int count) {
    // The grid's present cells go to the terms, the terms are resized keeping
    // what they hold, and the grid is rebuilt from them.
    SendTGDataToGWData();
    data_.superpositionIndex = static_cast<std::int16_t>(count);
    data_.terms.redimPreserve(count);
    SendGWDataToTGData();
}

bool InputFormModel::rowLeft(int index) {
    FormRow& r = row(index);
    const std::size_t at = static_cast<std::size_t>(index);
    const bool wasTyped = at < dirty_.size() && dirty_[at];
    FocusRequest back;
    back.dimension = dimension_;
    back.tab = r.tab;
    back.row = index;
    try {
        if (r.kind == RowKind::Range) {
            if (!checkRangeFormat(r.text, r.caption, ui_)) {
                requestFocus(back);
                changed();
                return false;
            }
            if (wasTyped) rewritePointRows();
        } else if (r.kind == RowKind::SuperpositionIndex && wasTyped) {
            if (!isNumeric(r.text) || textValue(r.text) < 1) {
                ui_.message(MessageIcon::Exclamation, MessageButtons::Ok, "Improper input value",
                            "'" + r.text +
                                "' is not a valid input value.\r\rThe value of Superposition Index must be greater "
                                "than or equal to 1.");
                requestFocus(back);
                changed();
                return false;
            }
            resizeGrid(toInt16(textValue(r.text)));
        }
    } catch (const RuntimeError& e) {
        handleError(e, "inputForm", "", ui_);
        requestFocus(back);
        changed();
        return false;
    }
    if (wasTyped) dirty_[at] = false;
    changed();
    return true;
}

bool InputFormModel::gridBeforeEdit(int row, int column) {
    if (!holdsMonteMarker(grid().cell(row, column))) return true;
    ui_.message(MessageIcon::Exclamation, MessageButtons::Ok, kReadOnlyTitle, kGridReadOnlyText);
    return false;
}

void InputFormModel::gridEdited(int row, int column, const std::string& text) {
    TermGrid& g = grid();
    if (row < 0 || row >= static_cast<int>(g.cells.size())) return;
    std::string& cell = column == 0 ? g.cells[static_cast<std::size_t>(row)].time
                                    : g.cells[static_cast<std::size_t>(row)].concentration;
    if (cell == text) return;
    if (holdsMonteMarker(cell)) return;  // a marker cell is never overwritten by an edit
    cell = text;
    markChanged();
}

void InputFormModel::gridEntered() {
    helpPanel = hintFor(HintPlace::Grid);
    changed();
}

std::string InputFormModel::cellStyle(int row, int column) const {
    return holdsMonteMarker(grid().cell(row, column)) ? grid().styleName : std::string();
}

// ---------------------------------------------------------------- title, author, comments

std::string& InputFormModel::noteText(NoteField field) {
    switch (field) {
    case NoteField::Title: return titleText;
    case NoteField::Author: return authorText;
    default: return commentsText;
    }
}

void InputFormModel::noteEdited(NoteField field, const std::string& text) {
    std::string& entry = noteText(field);
    if (entry == text) return;
    entry = text;
    // A note changes nothing to calculate: it only asks for a save.
    if (data_.dataState == kDataUnchanged) data_.dataState = kNeedsSaving;
    saveEnabled = true;
}

void InputFormModel::noteLabelClicked(NoteField field) {
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

std::string InputFormModel::hintFor(HintPlace place) const {
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

void InputFormModel::hover(HintPlace place) {
    if (running) return;  // the status line shows the computation status
    helpPanel = hintFor(place);
    changed();
}

// ---------------------------------------------------------------- menus

std::vector<MenuItem> InputFormModel::topMenus() const {
    return {
        {topMenu::File, "&File", menusEnabled, false, false},
        {topMenu::Calculate, "&Calculate!", menusEnabled, false, false},
        {topMenu::Results, "&Results", menusEnabled && resultsMenuEnabled, false, false},
        {topMenu::Units, "&Units", menusEnabled, false, false},
        {topMenu::MonteCarlo, "&Monte Carlo", menusEnabled, false, false},
        {topMenu::Help, "&Help", true, false, false},
    };
}

std::vector<MenuItem> InputFormModel::fileMenu() const {
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

std::vector<MenuItem> InputFormModel::resultsMenu() const {
    return {{resultsItem::Graph, "&Graph", true, false, false}, {resultsItem::View, "&View", true, false, false}};
}

std::vector<MenuItem> InputFormModel::unitMenu(UnitMenu menu) const {
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

std::vector<MenuItem> InputFormModel::monteCarloMenu() const {
    return {{monteCarloItem::Generate, "&Generate...", true, false, false},
            {monteCarloItem::Graph, "&Graph", true, false, true},
            {monteCarloItem::View, "&View", true, false, false}};
}

void InputFormModel::updateResultsMenuState() { resultsMenuEnabled = data_.dataState != kParametersChanged; }

void InputFormModel::mnuFileClick(int index) {
    if (index == topMenu::Calculate) {
        calculate();
    } else if (index == topMenu::Help) {
        if (host_) host_->showHelp();
    }
}

// ---------------------------------------------------------------- units

std::string& InputFormModel::unitWord(UnitMenu menu) {
    switch (menu) {
    case UnitMenu::Length: return lengthUnit;
    case UnitMenu::Time: return timeUnit;
    default: return concentrationUnit;
    }
}

std::vector<std::string*> InputFormModel::unitLabels() {
    std::vector<std::string*> labels;
    if (dimension_ < 1) return labels;
    for (FormRow& r : rows(dimension_))
        if (!r.unitCaption.empty()) labels.push_back(&r.unitCaption);
    return labels;
}

void InputFormModel::SetTGConcentrationUnit() {
    if (dimension_ < 1) return;
    grid().concentrationHeading = concentrationColumnHeading(stripWord(modelCaption, "Model: "),
                                                             stripWord(aquiferCaption, "Aquifer: "),
                                                             stripWord(contaminantCaption, "Contaminant: "),
                                                             concentrationUnit);
}

void InputFormModel::ChangeTDBGridUnits() {
    if (dimension_ < 1) return;
    grid().timeHeading = timeColumnHeading(timeUnit);
    SetTGConcentrationUnit();
}

void InputFormModel::menuUnitsClick(UnitMenu menu, int index) {
    std::string& current = unitWord(menu);
    const UnitChoice choice = chooseUnit(menu, index, current, data_);
    if (choice.changed) {
        relabelUnits(choice.oldWord, choice.newWord, unitLabels());
        current = choice.newWord;
        ChangeTDBGridUnits();
        if (data_.dataState != kDataUnchanged) saveEnabled = true;
    }
    changed();
}

}  // namespace bm
