#include "fitting/fit_parameters.h"

#include <cctype>
#include <cmath>
#include <cstdio>

#include "model/model_kinds.h"
#include "model/number_text.h"

namespace bm {

namespace {

using F = std::string DataSet::*;

FitParameterInfo p(std::string name, F field, bool positive = true, std::string alias = {}) {
    return FitParameterInfo{std::move(name), std::move(alias), field, positive};
}

FitParameterInfo sourceConcentration() { return p("Concentration", nullptr, true, "Source Concentration"); }

std::string squeezed(std::string_view text) {
    std::string out;
    for (const char c : text)
        if (std::isalnum(static_cast<unsigned char>(c))) out += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return out;
}

// The two- and three-dimensional source inputs the model's source has.
void addSourceInputs(const DataSet& d, BlockLayout layout, std::vector<FitParameterInfo>& out) {
    const std::string aquifer = toLower(trim(d.aquiferType));
    const std::string contaminant = toUpper(d.contaminantType);
    if (layout == BlockLayout::TwoDimensional) {
        out.push_back(p("Xc", &DataSet::sourceXc, false));
        out.push_back(p("Yc", &DataSet::sourceYc, false));
        if (aquifer == "finite" || contains(contaminant, "LINE")) out.push_back(p("Width", &DataSet::sourceWidth));
        else if (contains(contaminant, "GAUSS")) out.push_back(p("Standard Deviation", &DataSet::sourceStdDev));
        else out.push_back(p("Injection Rate", &DataSet::injectionRate));
        return;
    }
    const bool patch = contains(d.contaminantType, "Finite");
    if (!patch) out.push_back(p("Xc", &DataSet::sourceXc, false));
    out.push_back(p("Yc", &DataSet::sourceYc, false));
    out.push_back(p("Zc", &DataSet::sourceZc, false));
    if (patch) {
        out.push_back(p("Width", &DataSet::sourceWidth));
        out.push_back(p("Height", &DataSet::sourceHeight));
    } else {
        out.push_back(p("Injection Rate", &DataSet::injectionRate));
    }
}

}  // namespace

std::vector<FitParameterInfo> fitParametersOf(const DataSet& d) {
    const ModelKindInfo* row = modelKindInfo(d);
    if (row == nullptr || d.multiChemical) return {};
    std::vector<FitParameterInfo> out;
    switch (row->blockLayout) {
    case BlockLayout::OneDimensional:
    case BlockLayout::TwoDimensional:
    case BlockLayout::ThreeDimensional:
        out.push_back(p("Velocity", &DataSet::velocity));
        out.push_back(p("Dispersion_X", &DataSet::dispersionX));
        if (row->blockLayout != BlockLayout::OneDimensional) out.push_back(p("Dispersion_y", &DataSet::dispersionY));
        if (row->blockLayout == BlockLayout::ThreeDimensional) out.push_back(p("Dispersion_z", &DataSet::dispersionZ));
        out.push_back(p("HalfLife", &DataSet::halfLife));
        out.push_back(p("Retardation Coefficient (R)", &DataSet::retardation, true, "Retardation"));
        out.push_back(p("Aquifer Porosity", &DataSet::porosity, true, "Porosity"));
        out.push_back(sourceConcentration());
        if (row->blockLayout != BlockLayout::OneDimensional) addSourceInputs(d, row->blockLayout, out);
        break;
    case BlockLayout::Unsaturated:
        out.push_back(p("Steady-State Percolation Rate", &DataSet::velocity, true, "Velocity"));
        out.push_back(p("Dispersion_X", &DataSet::dispersionX));
        out.push_back(p("HalfLife", &DataSet::halfLife));
        out.push_back(p("Bulk Density", &DataSet::bulkDensity));
        out.push_back(p("Contaminant Distribution Coefficient", &DataSet::distributionCoefficient, false, "Kd"));
        out.push_back(p("Aquifer Porosity", &DataSet::porosity, true, "Porosity"));
        out.push_back(p("Saturation", &DataSet::saturation));
        if (d.contaminantType != "Dirichlet")
            out.push_back(p("Source Concentration Decay Rate", &DataSet::sourceDecayRate, false));
        out.push_back(sourceConcentration());
        break;
    case BlockLayout::TimeVarying:
        out.push_back(p("Magnitude of Source", &DataSet::sourceMagnitude, true, "Magnitude"));
        out.push_back(p("Retardation Coefficient", &DataSet::retardation, true, "Retardation"));
        out.push_back(p("Steady State Velocity in X direction", &DataSet::velocityX, false, "Velocity_X"));
        out.push_back(p("Steady State Velocity in Y direction", &DataSet::velocityY, false, "Velocity_Y"));
        out.push_back(p("First Order Decay Coefficient", &DataSet::sourceDecayRate, false, "Decay"));
        out.push_back(p("Dispersion Ratio Coefficient", &DataSet::dispersionRatio, true, "Dispersion Ratio"));
        out.push_back(p("Maximum Dispersivity", &DataSet::bulkDensity));
        out.push_back(p("Molecular Diffusion", &DataSet::saturation, false));
        out.push_back(p("Mean Travel Time", &DataSet::distributionCoefficient));
        out.push_back(p("Aquifer Porosity", &DataSet::porosity, true, "Porosity"));
        break;
    case BlockLayout::None:
        break;
    }
    return out;
}

const FitParameterInfo* findFitParameter(const std::vector<FitParameterInfo>& parameters, std::string_view name) {
    const std::string wanted = squeezed(name);
    if (wanted.empty()) return nullptr;
    for (const FitParameterInfo& parameter : parameters)
        if (squeezed(parameter.name) == wanted || (!parameter.alias.empty() && squeezed(parameter.alias) == wanted))
            return &parameter;
    return nullptr;
}

std::string& fitParameterText(DataSet& data, const FitParameterInfo& parameter) {
    if (parameter.field != nullptr) return data.*parameter.field;
    if (data.terms.ub() < 1) {
        data.terms.redimPreserve(1);
        if (data.superpositionIndex < 1) data.superpositionIndex = 1;
    }
    return data.terms(1).concentration;
}

const std::string& fitParameterText(const DataSet& data, const FitParameterInfo& parameter) {
    static const std::string none;
    if (parameter.field != nullptr) return data.*parameter.field;
    return data.terms.ub() >= 1 ? data.terms(1).concentration : none;
}

std::string significantText(double value, int digits) {
    char buffer[48];
    std::snprintf(buffer, sizeof buffer, "%.*g", digits, value);
    return buffer;
}

std::string fittedValueText(double value) {
    if (value == 0.0 || !std::isfinite(value)) return generalText(value);
    const double magnitude = std::floor(std::log10(std::fabs(value)));
    const double scale = std::pow(10.0, 6.0 - magnitude);
    return generalText(std::round(value * scale) / scale);
}

}  // namespace bm
