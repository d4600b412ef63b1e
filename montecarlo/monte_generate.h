#pragma once
// Sample generation (F7 on the simulation screen): each variant in use of
// InputTGData gets count = terms + 1 samples from kernmc, its summary in
// ResultTGData (as text in the common number format) and its samples in
// MonteSamples(row, sample, chemical), each kept as the data file gives it
// back (the float's 15-digit stream form), so that a reopened model reruns
// with exactly the samples it was run with.

#include <cstdint>
#include <string>
#include <string_view>

#include "model/data_set.h"
#include "montecarlo/monte_check.h"

namespace bm {

class UserInterface;

enum class GenerationOutcome {
    Refused,       // the check before generation failed; nothing was touched
    NothingInUse,  // no variant in use; the tables stay as they were
    Generated,     // every row in use was generated
    Failed,        // an error went to the error handler; rows already done stay done
};

// The terms text that sets the number of samples: the first row (in row order)
// whose terms cell is not empty; empty text when there is none.
std::string firstTermsText(const DataSet& data, std::int16_t chemical);

// count = that terms text as an integer + 1. An empty or non-numeric text is a
// type mismatch (13), a value or sum outside 32-bit integers an overflow (6).
std::int32_t sampleCount(const std::string& termsText);

// Shapes MonteSamples for `count` samples of rows 0..capacity and chemicals
// 0..1: the contents are kept only when it had exactly this capacity, count - 1
// samples and a chemical bound of 1 (the count grew by one); otherwise it is
// created empty.
void shapeMonteSamples(DataSet& data, int capacity, std::int32_t count);

// The whole run, as the F7 menu of the simulation screen calls it, for the
// table column of `chemical` (1 on every screen but a chemical's own view).
// The busy pointer is on while it runs. The screen copies ResultTGData to its
// result grid afterwards, whatever the outcome.
GenerationOutcome generateSimulation(DataSet& data, const MonteVariantList& variants, std::int16_t chemical,
                                     UserInterface& ui);
// The same without the check (for a table already checked): counts, draws,
// summarises and stores. A distribution name outside the seven shows "Error in
// generate Simulation" and the row is drawn with the code of the row before
// (none for the first row: it is skipped). A variant whose bounds hold almost
// none of its distribution ends the run with a message naming it; a
// distribution that cannot take its parameters (a lognormal mean below 0, a
// loguniform minimum below 0) is the illegal-function-call error.
GenerationOutcome generateSamples(DataSet& data, std::int16_t chemical, UserInterface& ui);

// After the F7 menu has run: a model form whose Monte Carlo panel caption reads
// "monte carlo" (lower-cased, trimmed) now has data that needs saving.
void markGenerated(DataSet& data, std::string_view monteCarloElasticCaption);

// The message shown when a variant's bounds hold almost none of its distribution.
std::string emptyWindowText(const std::string& variant, const std::string& distribution);

}  // namespace bm
