#include "saturated/source_captions.h"

#include "model/number_text.h"

namespace bm {

bool isContinuousPointSource(std::string_view contaminantType) {
    return contaminantType == "Continuous / Point" || contaminantType == "Continuous Point";
}

std::string twoDimSourceCaption(std::string_view aquiferType, std::string_view contaminantType) {
    const std::string aquifer = toLower(trim(aquiferType));
    if (aquifer == "finite") return kWidthCaption;
    if (contaminantType == "Finite Line" || contaminantType == "Finite / Line") return kWidthCaption;
    if (contaminantType == "Gaussian") return kStdDevCaption;
    if (isContinuousPointSource(contaminantType)) return kInjectionPerThicknessCaption;
    return {};
}

TwoDimSourceValue twoDimSourceValueOf(std::string_view caption) {
    const std::string upper = toUpper(caption);
    if (contains(upper, "WIDTH")) return TwoDimSourceValue::Width;
    if (contains(upper, "STAND")) return TwoDimSourceValue::StandardDeviation;
    return TwoDimSourceValue::InjectionRate;
}

}  // namespace bm
