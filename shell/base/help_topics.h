#pragma once
// The topic numbers of the help file: its contents, the general topics and
// the topic of each model kind.

namespace bm {

namespace help {
inline constexpr int Contents = 3000;
inline constexpr int RangeSyntax = 3010;
inline constexpr int Units = 3020;
inline constexpr int NewModel = 3040;
inline constexpr int Preferences = 3050;
inline constexpr int StartUp = 3060;
inline constexpr int OneDimensional = 3100;
inline constexpr int TwoDimensional = 3120;
inline constexpr int TwoDimFinite = 3122;
inline constexpr int TwoDimGaussian = 3124;
inline constexpr int TwoDimPoint = 3126;
inline constexpr int ThreeDimensional = 3130;
inline constexpr int ThreeDimPoint = 3132;
inline constexpr int ThreeDimFinite = 3134;
inline constexpr int ThreeDimPatch = 3136;
inline constexpr int TimeVarying = 3200;
inline constexpr int Unsaturated = 3300;
inline constexpr int DataFiles = 3400;
inline constexpr int MonteCarlo = 3500;
inline constexpr int MultipleSpecies = 3600;
inline constexpr int Results = 3700;
inline constexpr int References = 3900;
}  // namespace help

}  // namespace bm
