// The Monte Carlo block: the variant table, the result table and the samples of
// the model's store, always written, also for a Regular model. The strings are
// not quoted and the reader splits fields at commas, so a comma inside a string
// shifts everything behind it and the read fails further on.

#include "files/block_parts.h"
#include "files/data_file_blocks.h"
#include "shell/base/checked_math.h"
#include "shell/base/runtime_error.h"

namespace bm {

using namespace blockparts;

namespace {

const std::string kBeginChemical = "[Begin Chemical " + signedFieldInteger(1) + " ]";
const std::string kEndChemical = "[End Chemical " + signedFieldInteger(1) + " ]";

void expectMarker(FieldInput& in, const std::string& marker) {
    if (in.textField() != marker) raiseError(err::InputPastEndOfFile, "Improper Monte Carlo block");
}

std::string flagText(bool inUse) { return printFormInteger(inUse ? -1 : 0); }

bool flagFrom(FieldInput& in) { return toInt16(in.numberField()) != 0; }

}  // namespace

void writeMonteCarloBlock(DataSet& d, PrintOutput& out) {
    copyMonteCarloStore(d, true);
    if (d.monteIterations == 0) d.monteIterations = 1;
    out.printLine("[Begin Monte Carlo Data]");
    out.printLine(printFormInteger(d.monteRowCount));
    out.printLine(printFormInteger(d.monteResultRowCount));
    out.printLine(printFormInteger(d.monteIterations));
    out.printLine(kBeginChemical);  // chemical 1 only, also in the multi-chemical models
    const int chemical = 1;
    for (int r = 1; r <= d.monteRowCount; ++r) {
        const bool held = r <= d.InputTGData.ub(0) && chemical <= d.InputTGData.ub(1);
        const MonteInputRow row = held ? d.InputTGData(r, chemical) : MonteInputRow{};
        for (const std::string* s : {&row.variant, &row.mean, &row.minimum, &row.maximum, &row.variance, &row.terms,
                                     &row.distribution})
            out.printLine(*s);
        out.printLine(flagText(row.inUse));
    }
    for (int r = 1; r <= d.monteResultRowCount; ++r) {
        const bool held = r <= d.ResultTGData.ub(0) && chemical <= d.ResultTGData.ub(1);
        const MonteResultRow row = held ? d.ResultTGData(r, chemical) : MonteResultRow{};
        for (const std::string* s : {&row.variant, &row.median, &row.minimum, &row.maximum, &row.arithmeticMean,
                                     &row.geometricMean, &row.standardDeviation})
            out.printLine(*s);
        out.printLine(flagText(row.inUse));
        out.printLine(row.selection);
        const bool rowHeld = r <= d.MonteSamples.ub(0) && chemical <= d.MonteSamples.ub(2);
        for (int i = 1; i <= d.monteIterations - 1; ++i) {
            const double v = rowHeld && i <= d.MonteSamples.ub(1) ? d.MonteSamples(r, i, chemical) : 0.0;
            out.printLine(streamReal(v));
        }
    }
    out.printLine(kEndChemical);
    out.printLine("[End MonteCarlo Data]");
}

void readMonteCarloBlock(DataSet& d, FieldInput& in) {
    expectMarker(in, "[Begin Monte Carlo Data]");
    const std::int16_t rows = toInt16(in.numberField());
    const std::int16_t results = toInt16(in.numberField());
    const std::int32_t iterations = toInt32(in.numberField());
    d.monteRowCount = rows;
    d.monteResultRowCount = results;
    d.monteIterations = iterations;
    expectMarker(in, kBeginChemical);
    const long double resultRows = results < 0 ? 0 : results;
    const long double samples = iterations > 1 ? iterations - 1 : 0;
    in.requireRoomFor(static_cast<long long>(resultRows * samples > 1e15L ? 1e15L : resultRows * samples));
    requireMemoryFor((resultRows + 1) * (samples + 1) * 2);
    // Both tables take the count of input rows: a file with more result rows
    // than input rows fails on the bounds (error 9).
    d.InputTGData.redim({rows, 1});
    d.ResultTGData.redim({rows, 1});
    d.MonteSamples.redim({results, iterations > 0 ? iterations - 1 : -1, 1});
    const int chemical = 1;
    for (int r = 1; r <= rows; ++r) {
        MonteInputRow& row = d.InputTGData(r, chemical);
        for (std::string* s : {&row.variant, &row.mean, &row.minimum, &row.maximum, &row.variance, &row.terms,
                               &row.distribution})
            *s = in.textField();
        row.inUse = flagFrom(in);
    }
    for (int r = 1; r <= results; ++r) {
        MonteResultRow& row = d.ResultTGData(r, chemical);
        for (std::string* s : {&row.variant, &row.median, &row.minimum, &row.maximum, &row.arithmeticMean,
                               &row.geometricMean, &row.standardDeviation})
            *s = in.textField();
        row.inUse = flagFrom(in);
        row.selection = in.textField();
        for (int i = 1; i <= iterations - 1; ++i) d.MonteSamples(r, i, chemical) = in.numberField();
    }
    expectMarker(in, kEndChemical);
    expectMarker(in, "[End MonteCarlo Data]");
}

}  // namespace bm
