#pragma once
// The checks of an inflow terms grid before a run, shared by the screens that
// have one: for each term of the superposition index, in order, its time
// (given, not before the first term's time, inside the time range), its
// concentration (above zero, given, numeric; a value under Monte Carlo control
// passes the value tests), and the first term's time at the start of the time
// range. The first failure shows its message and ends the checks.

#include "model/term_grid.h"
#include "shell/base/user_interface.h"

namespace bm {

// Which concentrations must be above zero: every term's (the saturated
// screen), or the first term's alone, the later ones only given and numeric.
enum class ConcentrationRule { EveryTermPositive, FirstTermPositive };

// Where the check failed: the grid row (from 0) and column (0 time, 1 concentration).
struct TermFailure {
    int row = -1;
    int column = 0;
};

// False after the message of the first failing term. The count is the
// superposition index; the headings of the grid name its columns.
// The messages carry `icon`.
bool termsAccepted(const TermGrid& grid, int count, double tMin, double tMax, ConcentrationRule rule,
                   MessageIcon icon, UserInterface& ui, TermFailure& failure);

}  // namespace bm
