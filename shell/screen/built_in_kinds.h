#pragma once
// The model kinds this program calculates, registered with the calculation
// pass: the saturated kinds of one, two and three dimensions, the unsaturated
// kind and the time-varying kind. The programs call this once at start; the
// tests call it before they run a model. Calling it again is harmless.

namespace bm {

void registerBuiltInKinds();

}  // namespace bm
