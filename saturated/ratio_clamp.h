#pragma once
// The clamp of a single kernel value of the saturated solutions: a ratio C/Co
// below 0 or above 1 is thrown away (0).

namespace bm {

inline double clampRatio(double ratio) { return ratio < 0.0 || ratio > 1.0 ? 0.0 : ratio; }

}  // namespace bm
