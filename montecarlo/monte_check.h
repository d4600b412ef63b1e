#pragma once
// The check of the variant table before samples are generated: the rules of
// each row in use, the pairing of soil porosity and soil water content, the
// wind vector angle, and the notice when nothing is selected.

#include <cstdint>
#include <string>
#include <vector>

#include "model/data_set.h"

namespace bm {

class UserInterface;

// The screen's two hidden lists, matched by position: the parameters that may
// vary (variantLB1) and each one's present value in the model (meanLB).
struct MonteVariantList {
    std::vector<std::string> variantLB1;
    std::vector<std::string> meanLB;
};

// The seven names a distribution cell may hold, lower-cased, with their codes
// 1 to 7 by position ("normal" 1 ... "loguniform" 7).
extern const char* const kDistributionNames[7];
// The code of a distribution text (lower-cased and trimmed first); 0 for none.
std::int16_t distributionCode(const std::string& text);

// "Nil", "Zero" or "Negative" + " input value." ... (title "Improper Input Data").
std::string improperValueText(const std::string& kind, const std::string& field, const std::string& name);

// Checks the rows 1..monteRowCount of InputTGData(row, chemical) that are in
// use, then the cross-variable rules. The first failure shows its message and
// gives false; the tables are not touched. With no variant selected at all the
// notice "No variable selected for Monte Carlo Analysis!" is shown and the
// result is still true.
bool checkBeforeGeneration(const DataSet& data, const MonteVariantList& variants, std::int16_t chemical,
                           UserInterface& ui);

// The rows of the table (1..monteRowCount, within its bounds) for a chemical index.
int monteRowsInTable(const DataSet& data, std::int16_t chemical);

}  // namespace bm
