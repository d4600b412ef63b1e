#pragma once
// One input through the batch calculator's whole path, for the fuzzer and for
// the replay of its corpus in the ordinary suite: read the bytes as a data file
// (the name's extension, one of the nine, chosen by the input's length), the
// kind's checks, the calculation of a grid capped at a few hundred points and
// Monte Carlo runs capped at a few dozen iterations, and every output made in
// memory.

#include <string>

namespace bm {

// What the run broke of the calculator's promises, or empty: an exception that
// escaped, a failure without a line on standard error, a success after an
// error's line, a success without its outputs or with a negative count saved.
std::string batchFuzzViolation(const std::string& bytes);

// Registers the kinds and points the two- and three-dimensional solutions at
// the Gauss-Legendre points file; once per process.
void prepareBatchFuzzing(const std::string& pointsFile);

}  // namespace bm
