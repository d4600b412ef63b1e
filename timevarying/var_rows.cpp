#include "timevarying/var_rows.h"

#include <array>
#include <limits>

#include "model/number_text.h"
#include "model/ranges.h"
#include "model/units.h"
#include "montecarlo/monte_marker.h"
#include "shell/base/common_services.h"
#include "timevarying/var_record.h"

namespace bm {

namespace {

struct RowSpec {
    const char* caption;
    UnitKind unit;
};

// Captions and unit kinds by row; the mass and result rows take theirs from the source.
const std::array<RowSpec, varrow::Count> kRows = {{
    {"X Coordinates (x)", UnitKind::Length},
    {"Time Range (t)", UnitKind::Time},
    {"Steady-state Darcy Velocity in X-Direction (u)", UnitKind::Velocity},
    {"Y Coordinates (y)", UnitKind::Length},
    {"Steady-state Darcy Velocity in Y-Direction (v)", UnitKind::Velocity},
    {"Molecular Diffusion (Dm)", UnitKind::Diffusivity},
    {"Retardation Coefficient (R)", UnitKind::None},
    {"Dispersion Ratio Coefficient (a)", UnitKind::None},
    {"Maximum Diffusion Coefficient (Do)", UnitKind::Length},  // a dispersivity: it multiplies the speed
    {"First-Order Decay Coefficient (mu)", UnitKind::None},    // "(1/time)", written below
    {"Mean Travel Time (k)", UnitKind::Time},
    {"", UnitKind::None},
    {"X Coordinate", UnitKind::Length},
    {"Y Coordinate", UnitKind::Length},
    {"Time Value", UnitKind::Time},
    {"Concentration (C)", UnitKind::None},
    {"Aquifer Porosity (n)", UnitKind::None},
}};

// The field a row shows (nullptr for the result row), const or not as the DataSet is.
template <class Data>
auto fieldOf(Data& d, int row) -> decltype(&d.xRange) {
    switch (row) {
    case varrow::X: return &d.xRange;
    case varrow::Time: return &d.timeRange;
    case varrow::VelocityX: return &d.velocityX;
    case varrow::Y: return &d.yRange;
    case varrow::VelocityY: return &d.velocityY;
    case varrow::MolecularDiffusion: return &d.saturation;
    case varrow::Retardation: return &d.retardation;
    case varrow::DispersionRatio: return &d.dispersionRatio;
    case varrow::MaximumDiffusion: return &d.bulkDensity;
    case varrow::Decay: return &d.sourceDecayRate;
    case varrow::MeanTravelTime: return &d.distributionCoefficient;
    case varrow::Mass: return &d.sourceMagnitude;
    case varrow::PointX: return &d.mcAtX;
    case varrow::PointY: return &d.mcAtY;
    case varrow::PointT: return &d.mcAtT;
    case varrow::Porosity: return &d.porosity;
    default: return nullptr;
    }
}

bool isLine(std::string_view contaminantType) { return isLineSourceCode(varSourceCode(contaminantType)); }

// A bound of a range: its field's value, where "Inf" (with its sign) stands for an unbounded end.
double boundOf(const std::string& rangeText, int field) {
    std::size_t from = 0;
    for (int k = 0; k < field; ++k) {
        from = rangeText.find(':', from);
        if (from == std::string::npos) return 0.0;
        ++from;
    }
    const std::size_t to = rangeText.find(':', from);
    const std::string text = toLower(trim(rangeText.substr(from, to == std::string::npos ? std::string::npos : to - from)));
    if (text == "inf" || text == "+inf") return std::numeric_limits<double>::infinity();
    if (text == "-inf") return -std::numeric_limits<double>::infinity();
    return textValue(text);
}

void warn(UserInterface& ui, const char* title, const std::string& text) {
    ui.message(MessageIcon::Exclamation, MessageButtons::Ok, title, text);
}

const char* const kProperValue = "\rPlease give a proper input value.";

}  // namespace

std::string massCaption(std::string_view c) {
    if (c == "Point (continuous)") return " Mass Injection Rate at x=0, y=0 (M)";
    if (c == "Point (initial)" || c == "Point (with initial distribution)") return " Initial Mass at x=0, y=0 (M)";
    if (c == "Line (instantaneous)") return " Mass Injected at x=0 and at time t=0 (M)";
    if (c == "Line (continuous)") return " Mass Injection Rate at x=0 (M)";
    if (c == "Line (initial)" || c == "Line (with initial distribution)") return " Initial Mass at x=0 (M)";
    return " Mass Injected at x=0, y=0 and at time t=0 (M)";
}

std::string massUnit(std::string_view c, std::string_view lengthWord, std::string_view timeWord) {
    std::string unit = "mg/" + std::string(lengthWord);
    if (c == "Point (continuous)" || c == "Line (continuous)") unit += "/" + std::string(timeWord);
    return unit;
}

std::string concentrationUnit(std::string_view c, std::string_view lengthWord) {
    return "mg/" + std::string(lengthWord) + (isLine(c) ? "\u00b2" : "\u00b3");
}

std::vector<VarRow> varRowsOf(const DataSet& data, std::string_view lengthWord, std::string_view timeWord) {
    const bool line = isLine(data.contaminantType);
    std::vector<VarRow> rows(varrow::Count);
    for (int i = 0; i < varrow::Count; ++i) {
        VarRow& r = rows[static_cast<std::size_t>(i)];
        r.caption = kRows[static_cast<std::size_t>(i)].caption;
        r.unitCaption = unitLabel(kRows[static_cast<std::size_t>(i)].unit, lengthWord, timeWord);
        if (const std::string* field = fieldOf(data, i)) r.text = *field;
    }
    rows[varrow::Decay].unitCaption = "(1/" + std::string(timeWord) + ")";
    rows[varrow::Mass].caption = massCaption(data.contaminantType);
    rows[varrow::Mass].unitCaption = massUnit(data.contaminantType, lengthWord, timeWord);
    VarRow& result = rows[varrow::Concentration];
    result.unitCaption = concentrationUnit(data.contaminantType, lengthWord);
    result.text.clear();
    result.enabled = false;
    result.result = true;
    for (int y : {varrow::Y, varrow::PointY}) {
        VarRow& r = rows[static_cast<std::size_t>(y)];
        if (line) {
            r.text = kNotUsed;
            r.enabled = false;
        } else if (trim(r.text) == kNotUsed) {
            r.text.clear();  // a point source needs its y
        }
    }
    if (line) rows[varrow::VelocityY].enabled = false;
    if (toLower(trim(data.aquiferType)) == "constant") rows[varrow::MeanTravelTime].enabled = false;
    return rows;
}

void storeVarRows(const std::vector<VarRow>& rows, DataSet& data) {
    for (int i = 0; i < varrow::Count && i < static_cast<int>(rows.size()); ++i)
        if (std::string* field = fieldOf(data, i)) *field = rows[static_cast<std::size_t>(i)].text;
}

std::string relabelCompoundUnit(std::string_view oldWord, std::string_view newWord, std::string_view label) {
    const std::size_t mass = label.find("mg");
    const std::size_t from = mass == std::string_view::npos ? 0 : mass + 2;
    return std::string(label.substr(0, from)) + replaceFirst(oldWord, newWord, label.substr(from));
}

bool validateVarRows(const std::vector<VarRow>& rows, UserInterface& ui, int& failedRow) {
    failedRow = -1;
    const auto row = [&rows](int i) -> const VarRow& { return rows.at(static_cast<std::size_t>(i)); };
    const auto fail = [&](int i, const char* title, const std::string& text) {
        warn(ui, title, text);
        failedRow = i;
        return false;
    };

    // 1. Every row in use has a value.
    for (int i = 0; i < varrow::Count; ++i) {
        const VarRow& r = row(i);
        if (r.enabled && !r.result && trim(r.text).empty())
            return fail(i, kVarNoInputTitle,
                        "No input value has been given for " + r.caption + "." + kProperValue);
    }

    // 2, 3. The ranges' form; y may be left out.
    const auto formatMessage = [&](int i, const char* example) {
        return "The input data give for " + row(i).caption + " = " + row(i).text +
               " is not in the proper format.\rPlease use the two format: \r" + example;
    };
    for (int i : {varrow::X, varrow::Time})
        if (!isRangeForm(row(i).text))
            return fail(i, kVarFormatTitle,
                        formatMessage(i, "     Minimum:Maximum:Interval, Minimum:Maximum:Interval:Constant (e.g. 0:100:1)."));
    const bool yUsed = trim(row(varrow::Y).text) != kNotUsed;
    if (yUsed && !isRangeForm(row(varrow::Y).text))
        return fail(varrow::Y, kVarFormatTitle,
                    formatMessage(varrow::Y, "     Minimum:Maximum:Interval, Minimum:Maximum:Interval (e.g. 0:100:1)."));

    // 4, 5. Coordinates from beyond the source, and ranges that do not run backwards.
    std::vector<int> coordinates{varrow::X};
    if (yUsed) coordinates.push_back(varrow::Y);
    for (int i : coordinates)
        if (!(boundOf(row(i).text, 0) > 0.0))
            return fail(i, kVarImproperTitle,
                        "The minimum value of " + row(i).caption + " must be greater than zero." + kProperValue);
    for (int i : coordinates)
        if (boundOf(row(i).text, 1) < boundOf(row(i).text, 0))
            return fail(i, kVarImproperTitle,
                        "The maximum value of " + row(i).caption + " must be greater than its minimum value." +
                            kProperValue);

    // 6-9. The constants' bounds; a value under Monte Carlo control is the samples' business.
    const auto below = [&](int i, double least, const char* words) {
        const VarRow& r = row(i);
        if (!r.enabled || holdsMonteMarker(r.text) || !(textValue(r.text) < least)) return true;
        return fail(i, kVarImproperTitle, r.caption + words);
    };
    for (int i : {varrow::VelocityX, varrow::VelocityY, varrow::MolecularDiffusion, varrow::DispersionRatio,
                  varrow::MaximumDiffusion, varrow::Decay})
        if (!below(i, 0.0, " must be greater than or equal to 0.")) return false;
    if (!below(varrow::Retardation, 1.0, " must be greater than or equal to 1.")) return false;
    if (!below(varrow::MeanTravelTime, 0.0, " must be greater than or equal to 0.")) return false;
    const VarRow& porosity = row(varrow::Porosity);
    if (!holdsMonteMarker(porosity.text)) {
        const double n = textValue(porosity.text);
        if (!(n > 0.0 && n <= 1.0))
            return fail(varrow::Porosity, kVarImproperTitle,
                        porosity.caption + " must be greater than 0 and less than or equal to 1.");
    }
    return true;
}

bool validateTimeVaryingInputs(DataSet& data, UserInterface& ui) {
    int failedRow = -1;
    return validateVarRows(varRowsOf(data, unitWordOf(data, UnitMenu::Length), unitWordOf(data, UnitMenu::Time)), ui,
                           failedRow);
}

}  // namespace bm
