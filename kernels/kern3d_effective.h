#pragma once
// The numbers every kern3d kernel reads from the record, with the faults of the
// program's own formulas: lambda = ln 2 / half-life (a zero half-life is a
// division by zero) and the recharge loss q / (n B), formed only when q != 0.

#include "kernels/kern3d.h"
#include "shell/base/checked_math.h"

namespace bm::k3 {

inline constexpr double kLn2 = 0.69314718055994530942;

inline double effectiveDecay(const ThreeDimParameters& p) {
    double decay = fp::div(kLn2, p.effectiveHalfLife);
    if (p.netRecharge != 0.0) decay += fp::div(p.netRecharge, fp::mul(p.porosity, p.aquiferThickness));
    return decay;
}

// 1 / (2 sqrt(D)): the scale of every transverse share; a zero dispersion is
// a division by zero, a negative one the root of a negative number.
inline double halfInverseRoot(double dispersion) { return fp::div(0.5, fp::sqrt(dispersion)); }

}  // namespace bm::k3
