#pragma once
// The kinds of model. Each has one row (or one per chemical flag and word) in
// the model-kind table (model/model_kinds.h), which says everything that tells
// them apart.

namespace bm {

// The model kinds that own a Monte Carlo store, then the two reserved
// unsaturated kinds that only have an mcPointChanged flag.
enum class ModelKind : int {
    OneDimensional = 0,
    TwoDimensional,
    ThreeDimensional,
    TimeVarying,
    Unsaturated,
    MultiOneDimensional,
    MultiTwoDimensional,
    MultiThreeDimensional,
    MultiUnsaturated,
    UnsaturatedTwoDimensional,
    UnsaturatedThreeDimensional,
};
inline constexpr int kMonteStoreCount = 9;
inline constexpr int kModelKindCount = 11;

}  // namespace bm
