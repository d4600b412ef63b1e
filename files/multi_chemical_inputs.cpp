// Inputs of the multi-chemical blocks: the single-chemical rows without
// "HalfLife: ", then the chemical table. "Suposition" is the file's spelling.

#include <algorithm>

#include "files/block_parts.h"
#include "files/data_file_blocks.h"
#include "model/number_text.h"

namespace bm {

using namespace blockparts;

namespace {

template <class T>
T elementOr(const List<T>& list, int i, T fallback = T{}) {
    return i >= 0 && i <= list.ub() ? list(i) : fallback;
}

void writeList(PrintOutput& out, const char* heading, const List<std::string>& list, int count) {
    out.printLine(heading);
    for (int i = 1; i <= count; ++i) out.printLine(elementOr(list, i));
}

// Lines without a label are taken whole, blanks included, so that the marker of
// a value under Monte Carlo control keeps its leading blanks.
void readList(FieldInput& in, List<std::string>& list, int count) {
    in.lineInput();  // heading
    for (int i = 1; i <= count; ++i) list(i) = in.lineInput();
}

}  // namespace

void writeMultiChemicalInputs(DataSet& d, PrintOutput& out, BlockLayout layout) {
    writeCoordinates(d, out, layout);
    writeProperties(d, out, layout, false);
    const int m = d.numChemicals;
    out.printLine("Chemical Number:" + plainInteger(m));
    writeList(out, "Chemical Name:", d.chemicalName, m);
    writeList(out, "Decay Rates:", d.decayRate, m);
    writeList(out, "Yield Factors:", d.yieldFactor, m);
    out.printLine("Superposition Index: " + plainInteger(elementOr<std::int16_t>(d.chemicalSuperpositionIndex, 1)));
    writeList(out, "Suposition Time:", d.suppositionTime, m);
    writeList(out, "Suposition Concentration:", d.suppositionConcentration, m);
    writeList(out, "Results in Point:", d.resultsInPoint, m);
    out.printLine("[End Input Data]");
}

void readMultiChemicalInputs(DataSet& d, FieldInput& in, BlockLayout layout) {
    readCoordinates(d, in, layout);
    readProperties(d, in, layout, false);
    if (const std::string line = in.lineInput(); contains(toLower(line), "chemical number:"))
        d.numChemicals = countFrom(textAfter(line, ":"));
    const int m = d.numChemicals;
    const int bound = std::max(m, 1);  // one empty element for no chemicals, as after clearing
    for (List<std::string>* list : {&d.chemicalName, &d.decayRate, &d.yieldFactor, &d.suppositionTime,
                                    &d.suppositionConcentration, &d.resultsInPoint})
        list->redim(bound);
    d.chemicalSuperpositionIndex.redimPreserve(bound);
    readList(in, d.chemicalName, m);
    readList(in, d.decayRate, m);
    readList(in, d.yieldFactor, m);
    if (const std::string line = in.lineInput(); contains(toLower(line), "superposition index:")) {
        // Every chemical has the model's index; the file holds the first.
        const std::int16_t index = countFrom(textAfter(line, ":"));
        for (int i = 1; i <= bound; ++i) d.chemicalSuperpositionIndex(i) = index;
    }
    readList(in, d.suppositionTime, m);
    readList(in, d.suppositionConcentration, m);
    readList(in, d.resultsInPoint, m);
    in.lineInput();  // "[End Input Data]"
}

}  // namespace bm
