// The model block of each model kind, and the inputs of the single-chemical
// blocks: one, two, three dimensions and the unsaturated model.

#include "files/block_parts.h"
#include "files/data_file_blocks.h"

namespace bm {

using namespace blockparts;

void writeSingleChemicalInputs(DataSet& d, PrintOutput& out, BlockLayout layout) {
    writeCoordinates(d, out, layout);
    writeProperties(d, out, layout, true);
    writeTerms(d, out);
    out.printLine("[End Input Data]");
}

void readSingleChemicalInputs(DataSet& d, FieldInput& in, BlockLayout layout) {
    readCoordinates(d, in, layout);
    readProperties(d, in, layout, true);
    readTerms(d, in);
    in.lineInput();  // "[End Input Data]"
}

void writeModelBlock(DataSet& d, PrintOutput& out) {
    const BlockLayout layout = blockLayoutOf(d.modelType);
    if (layout == BlockLayout::None) return;
    const bool multi = d.multiChemical && layout != BlockLayout::TimeVarying;
    if (layout == BlockLayout::TimeVarying) writeTimeVaryingInputs(d, out);
    else if (multi) writeMultiChemicalInputs(d, out, layout);
    else writeSingleChemicalInputs(d, out, layout);
    writeOutputSection(d, out, layout, multi);
}

void readModelBlock(DataSet& d, FieldInput& in, bool multiChemical) {
    const BlockLayout layout = blockLayoutOf(d.modelType);
    if (layout == BlockLayout::None) return;
    const bool multi = multiChemical && layout != BlockLayout::TimeVarying;
    if (layout == BlockLayout::TimeVarying) readTimeVaryingInputs(d, in);
    else if (multi) readMultiChemicalInputs(d, in, layout);
    else readSingleChemicalInputs(d, in, layout);
    readOutputSection(d, in, layout, multi);
}

}  // namespace bm
