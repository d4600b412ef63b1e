#pragma once
// Captions of the source rows of the saturated screens. The two-dimensional
// source row means what its caption says: "WIDTH" is the source width,
// "STAND" the standard deviation, anything else the injection rate.

#include <string>
#include <string_view>

namespace bm {

inline constexpr const char* kWidthCaption = " Width of Contaminant Source (Ws)";
inline constexpr const char* kHeightCaption = " Height of Contaminant Source (Hs)";
inline constexpr const char* kStdDevCaption = " Standard Deviation of Gaussian Distribution";
inline constexpr const char* kInjectionPerThicknessCaption = " Fluid Injection Rate Per Unit Aquifer Thickness (Q')";
inline constexpr const char* kInjectionRateCaption = " Contaminant Injection Rate (Q)";

// "Continuous / Point" or "Continuous Point".
bool isContinuousPointSource(std::string_view contaminantType);

// The caption of row 2 of the two-dimensional layout for the aquifer and source;
// empty for a combination the screen does not know.
std::string twoDimSourceCaption(std::string_view aquiferType, std::string_view contaminantType);

enum class TwoDimSourceValue { Width, StandardDeviation, InjectionRate };
// What a caption of that row stands for.
TwoDimSourceValue twoDimSourceValueOf(std::string_view caption);

}  // namespace bm
