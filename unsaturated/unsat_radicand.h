#pragma once
// The test that keeps the square root of the unsaturated solution real. A
// source that decays faster than the contaminant degrades makes the radicand
// (lambda - R gamma) 4 Dv + V^2 shrink, and it may turn negative.

#include <string>
#include <vector>

#include "shell/base/user_interface.h"

namespace bm {

// Works on the inputs as typed (R is not divided out): R = rho Kdv / (theta Sw) + 1,
// V = q / (theta Sw), lambda = ln 2 / halfLife. When the radicand is negative
// the pointer goes back to normal, the "Improper input data" box is shown and
// the answer is true; otherwise false. Zero divisors are run-time errors.
bool unsatRadicandNegative(double percolationRate, double dispersion, double halfLife, double bulkDensity,
                           double distributionCoefficient, double porosity, double saturation, double sourceDecayRate,
                           UserInterface& ui = bm::ui());

// The same test for each chemical of a chain, whose first-order rate k is
// given as it stands (no half-life): radicand = (k - R gamma) 4 Dv + V^2. The
// first negative one shows the message and gives true; a rate under Monte
// Carlo control is left to the simulation.
bool chemicalRadicandNegative(double percolationRate, double dispersion, double bulkDensity,
                              double distributionCoefficient, double porosity, double saturation,
                              double sourceDecayRate, const std::vector<std::string>& decayRates,
                              UserInterface& ui = bm::ui());

inline constexpr const char* kUnsatRadicandTitle = "Improper input data";
// Four parts, two carriage returns between each; the exponent is the
// superscript two (UTF-8).
inline constexpr const char* kUnsatRadicandText =
    "During computation of analytical solution the value of expression: \r\r"
    "[ Vv \xC2\xB2 + 4 * Dv * ( First Order Degration Rate - Source Decay Rate * R ) ]   is less than zero.\r\r"
    " The input values must be modified in order to compute the solution.";

}  // namespace bm
