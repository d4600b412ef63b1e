#include "shell/help_context.h"

#include "model/data_set.h"
#include "model/model_kinds.h"
#include "model/number_text.h"

namespace bm {

int helpContextFor(const std::string& modelType, const std::string& aquiferType, const std::string& contaminantType) {
    const ModelKindInfo* kind = modelKindInfo(modelType, false);
    if (!kind) return help::OneDimensional;
    // The two- and three-dimensional saturated topics go by aquifer and source.
    const std::string aquifer = toLower(trim(aquiferType));
    const std::string contaminant = toLower(trim(contaminantType));
    const bool continuousPoint = contaminant == "continuous / point" || contaminant == "continuous point";
    switch (kind->saturatedDimension()) {
    case 2:
        if (aquifer == "finite") return help::TwoDimFinite;
        if (continuousPoint) return help::TwoDimPoint;
        if (contaminant == "gaussian") return help::TwoDimGaussian;
        return help::TwoDimFinite;
    case 3:
        if (aquifer == "finite") return help::ThreeDimFinite;
        if (continuousPoint) return help::ThreeDimPoint;
        return help::ThreeDimPatch;
    default: return kind->helpContext;
    }
}

int refreshMenuLabels(const DataSet& data) {
    return helpContextFor(data.modelType, data.aquiferType, data.contaminantType);
}

}  // namespace bm
