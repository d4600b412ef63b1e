#include "saturated/input_sheet.h"

#include <algorithm>
#include <type_traits>

#include "model/model_kinds.h"
#include "model/number_text.h"
#include "montecarlo/monte_marker.h"
#include "saturated/source_captions.h"
#include "shell/base/checked_math.h"
#include "shell/base/runtime_error.h"

namespace bm {

namespace {

bool isFinitePatch(const std::string& contaminant) {
    return contaminant == "Finite Patch" || contaminant == "Finite / Patch";
}

[[noreturn]] void noSuchRow(int index) {
    throw RuntimeError(340, "Control array element '" + std::to_string(index) + "' doesn't exist");
}


}  // namespace

FormRow& rowOf(std::vector<FormRow>& rows, int index) {
    if (index < 0 || index >= static_cast<int>(rows.size())) noSuchRow(index);
    return rows[static_cast<std::size_t>(index)];
}

const FormRow& rowOf(const std::vector<FormRow>& rows, int index) {
    if (index < 0 || index >= static_cast<int>(rows.size())) noSuchRow(index);
    return rows[static_cast<std::size_t>(index)];
}

FormRow& InputSheet::row(int index) {
    if (dimension < 1 || dimension > 3) raiseError(err::SubscriptOutOfRange);
    return rowOf(rows, index);
}

const FormRow& InputSheet::row(int index) const {
    if (dimension < 1 || dimension > 3) raiseError(err::SubscriptOutOfRange);
    return rowOf(rows, index);
}

std::vector<FormRow> layoutRows(int dimension) {
    std::vector<FormRow> list;
    for (const RowDefinition& definition : rowDefinitions(dimension)) {
        FormRow r;
        r.field = definition.field;
        r.kind = definition.kind;
        r.unit = definition.unit;
        r.caption = definition.caption ? definition.caption : "";
        r.tab = definition.tab;
        r.enabled = definition.kind != RowKind::ConcentrationCaption;
        list.push_back(r);
    }
    return list;
}

TermGrid layoutGrid(int dimension) {
    TermGrid grid;
    grid.name = "Input" + std::to_string(dimension) + "TG";
    grid.styleName = "MonteCarloStyle" + std::to_string(dimension);
    grid.cells.resize(1);
    return grid;
}

bool applySourceCaptions(std::vector<FormRow>& list, int dimension, const DataSet& data) {
    if (dimension == 2) {
        const std::string caption = twoDimSourceCaption(data.aquiferType, data.contaminantType);
        if (caption.empty()) return false;
        list[2].caption = caption;
        list[2].unit = twoDimSourceValueOf(caption) == TwoDimSourceValue::InjectionRate ? UnitKind::Diffusivity
                                                                                         : UnitKind::Length;
        // Only a continuous point in an infinite aquifer is placed by its x centre.
        const bool pointInInfinite =
            toLower(trim(data.aquiferType)) != "finite" && isContinuousPointSource(data.contaminantType);
        list[10].enabled = pointInInfinite;
    } else if (dimension == 3) {
        if (isFinitePatch(data.contaminantType)) {
            list[4].caption = kWidthCaption;
            list[7].caption = kHeightCaption;
            list[4].unit = UnitKind::Length;
            list[7].unit = UnitKind::Length;
        } else if (isContinuousPointSource(data.contaminantType)) {
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

namespace {

// The text field of the DataSet behind a row (const or not as the DataSet is);
// nullptr for the superposition index and the caption row.
template <class Data>
auto* textFieldOf(const FormRow& r, Data& d) {
    using Text = std::conditional_t<std::is_const_v<Data>, const std::string, std::string>;
    Text* none = nullptr;
    switch (r.field) {
    case RowField::xRange: return &d.xRange;
    case RowField::yRange: return &d.yRange;
    case RowField::zRange: return &d.zRange;
    case RowField::timeRange: return &d.timeRange;
    case RowField::velocity: return &d.velocity;
    case RowField::dispersionX: return &d.dispersionX;
    case RowField::dispersionY: return &d.dispersionY;
    case RowField::dispersionZ: return &d.dispersionZ;
    case RowField::halfLife: return &d.halfLife;
    case RowField::porosity: return &d.porosity;
    case RowField::retardation: return &d.retardation;
    case RowField::netRecharge: return &d.netRecharge;
    case RowField::aquiferThickness: return &d.aquiferThickness;
    case RowField::sourceXc: return &d.sourceXc;
    case RowField::sourceYc: return &d.sourceYc;
    case RowField::sourceZc: return &d.sourceZc;
    case RowField::mcAtX: return &d.mcAtX;
    case RowField::mcAtY: return &d.mcAtY;
    case RowField::mcAtZ: return &d.mcAtZ;
    case RowField::mcAtT: return &d.mcAtT;
    case RowField::superpositionIndex:
    case RowField::concentrationCaption:
    case RowField::chemicalCount: return none;
    case RowField::twoDimSource:
        // The row holds what its caption says.
        switch (twoDimSourceValueOf(r.caption)) {
        case TwoDimSourceValue::Width: return &d.sourceWidth;
        case TwoDimSourceValue::StandardDeviation: return &d.sourceStdDev;
        default: return &d.injectionRate;
        }
    case RowField::threeDimSourceA: return contains(d.contaminantType, "Finite") ? &d.sourceWidth : &d.sourceXc;
    case RowField::threeDimSourceB: return contains(d.contaminantType, "Finite") ? &d.sourceHeight : &d.injectionRate;
    }
    return none;
}

}  // namespace

std::string* rowField(const FormRow& r, DataSet& d) { return textFieldOf(r, d); }

std::string fieldText(const FormRow& r, const DataSet& d) {
    if (const std::string* text = textFieldOf(r, d)) return *text;
    if (r.field == RowField::superpositionIndex) return std::to_string(d.superpositionIndex);
    if (r.field == RowField::chemicalCount) return std::to_string(d.numChemicals);
    return {};
}

void storeField(const FormRow& r, DataSet& d) {
    if (std::string* text = textFieldOf(r, d)) {
        *text = r.text;
    } else if (r.field == RowField::superpositionIndex) {
        // A count below one stands for one term.
        const std::int16_t n = toInt16(textValue(r.text));
        d.superpositionIndex = n < 1 ? std::int16_t{1} : n;
    }
}

bool enablePointRows(std::vector<FormRow>& rows, bool monteCarloModeOn) {
    bool varies = monteCarloModeOn;
    for (const FormRow& r : rows)
        if (holdsMonteMarker(r.text)) varies = true;
    for (FormRow& r : rows)
        if (r.kind == RowKind::Point) r.enabled = varies;
    return varies;
}

void setGridHeadings(TermGrid& grid, const std::string& modelType, const std::string& aquiferType,
                     const std::string& contaminantType, const std::string& timeWord,
                     const std::string& concentrationWord) {
    grid.timeHeading = timeColumnHeading(timeWord);
    grid.concentrationHeading = concentrationColumnHeading(modelType, aquiferType, contaminantType, concentrationWord);
}

bool sheetOfDataSet(DataSet& data, InputSheet& sheet) {
    const int d = saturatedDimension(data.modelType);
    if (d == 0) return false;
    std::vector<FormRow> rows = layoutRows(d);
    if (!applySourceCaptions(rows, d, data)) return false;
    sheet.lengthWord = unitWordOf(data, UnitMenu::Length);
    sheet.timeWord = unitWordOf(data, UnitMenu::Time);
    sheet.concentrationWord = unitWordOf(data, UnitMenu::Concentration);
    settleSuperpositionIndex(data);
    for (FormRow& r : rows) {
        r.text = fieldText(r, data);
        r.unitCaption = unitLabel(r.unit, sheet.lengthWord, sheet.timeWord);
    }
    enablePointRows(rows, data.monteCarloModeOn);
    sheet.dimension = d;
    sheet.modelType = data.modelType;
    sheet.rows = std::move(rows);
    sheet.grid = layoutGrid(d);
    termsToGrid(data, sheet.grid);
    setGridHeadings(sheet.grid, data.modelType, data.aquiferType, data.contaminantType, sheet.timeWord,
                    sheet.concentrationWord);
    return true;
}

}  // namespace bm
