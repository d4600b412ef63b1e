#pragma once
// The record of the time-varying library filled from the DataSet (copyToDLLStructure):
// the source and dispersion codes, the coordinate and time ranges with their
// counts, and the physical fields, each read through its MonteMarker in a
// simulation. Also the mode scan of the time-varying screen's rows.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "kernels/kernvar.h"
#include "model/data_set.h"
#include "shell/base/user_interface.h"

namespace bm {

// The value that stands for a coordinate or time of 0 held at one point, so that
// no solution is evaluated at the source or at the moment of release.
inline constexpr float kSmallestCoordinate = 0.00001f;

// Source code of a contaminantType text (exact), 0 when unknown.
std::int16_t varSourceCode(std::string_view contaminantType);
// Dispersion function code of an aquiferType text (exact), 0 when unknown.
std::int16_t varFunctionCode(std::string_view aquiferType);
// True for the codes of the three line sources.
bool isLineSourceCode(std::int16_t code);

// Count of a list: 1 for an interval of 0, else the whole part of
// (maximum - minimum) / interval, plus 1 (a quotient a few float steps below a
// whole number counts as that number, so 0:0.3:0.1 has 4 terms); error 6 past 16 bits.
std::int16_t varTermCount(float minimum, float maximum, float interval);

// The count of a range text as the record counts it ("Not Used": 1).
std::int16_t varRangeCount(const std::string& rangeText);

// Fills the record for one iteration. Unknown source or dispersion texts show
// their message (the code stays as it was). In a simulation (monteCarlo) every
// count is 1 and the minima are mcAtX, mcAtY and mcAtT; the selected point
// (xConstant, yConstant, tConstant) is then the simulation's point, otherwise
// the Constant of each range. The counts go to numXTerms, numYTerms, numTTerms.
// A field holding "Monte" takes MonteSamples(row, iteration, 1).
void copyToDLLStructure(DataSet& data, kernvarRecord& record, bool monteCarlo, int iteration, UserInterface& ui);

// The texts of the screen's input rows 0..16 (without 15), in row order.
std::vector<std::string> timeVaryingInputRows(const DataSet& data);
// The mode scan: "Regular", or "Monte Carlo" when a row holds "Monte" or
// monteCarloModeOn is set; stores calculationMode and returns true for a simulation.
bool scanTimeVaryingMode(DataSet& data);

}  // namespace bm
