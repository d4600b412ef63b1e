#include "shell/help_context.h"

#include "model/data_set.h"
#include "model/number_text.h"

namespace bm {

int helpContextFor(const std::string& modelType, const std::string& aquiferType, const std::string& contaminantType) {
    const std::string aquifer = toLower(trim(aquiferType));
    const std::string contaminant = toLower(trim(contaminantType));
    const bool continuousPoint = contaminant == "continuous / point" || contaminant == "continuous point";
    if (modelType == "One Dimensional") return help::OneDimensional;
    if (modelType == "Two Dimensional") {
        if (aquifer == "finite") return help::TwoDimFinite;
        if (continuousPoint) return help::TwoDimPoint;
        if (contaminant == "gaussian") return help::TwoDimGaussian;
        return help::TwoDimFinite;
    }
    if (modelType == "Three Dimensional") {
        if (aquifer == "finite") return help::ThreeDimFinite;
        if (continuousPoint) return help::ThreeDimPoint;
        return help::ThreeDimPatch;
    }
    if (modelType == "Time Varying") return help::TimeVarying;
    if (modelType == "Unsaturated One Dimensional") return help::Unsaturated;
    return help::OneDimensional;
}

int refreshMenuLabels(const DataSet& data) {
    return helpContextFor(data.modelType, data.aquiferType, data.contaminantType);
}

}  // namespace bm
