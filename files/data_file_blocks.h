#pragma once
// The parts of a data file behind the skeleton (author, title, comments, model
// words and units): the model block of each model kind, its output section and
// the Monte Carlo block. The readers are positional: they count lines and take
// each field as the trimmed text behind the first ":" of its line; labels are
// only looked at where files of earlier versions differ (porosity, retardation,
// net recharge, chemical number, superposition index).

#include "files/field_input.h"
#include "files/print_output.h"
#include "model/data_set.h"
#include "model/model_kinds.h"

namespace bm {

// The layout of a model word's block is the model kinds' (blockLayoutOf in
// model/model_kinds.h), and so is the padding that the reader restores in
// front of a Monte Carlo marker in the first boundary term's cell.

// The whole model block, "Coor Data" to the empty line after "[End Output
// Data]", for data.modelType and `multiChemical`; nothing for BlockLayout::None.
void writeModelBlock(DataSet& data, PrintOutput& out);
void readModelBlock(DataSet& data, FieldInput& in, bool multiChemical);

// Input part of a block, "Coor Data" to "[End Input Data]".
// Single chemical: one, two, three dimensions and unsaturated.
void writeSingleChemicalInputs(DataSet& data, PrintOutput& out, BlockLayout layout);
void readSingleChemicalInputs(DataSet& data, FieldInput& in, BlockLayout layout);
// Several chemicals: one, two, three dimensions and unsaturated.
void writeMultiChemicalInputs(DataSet& data, PrintOutput& out, BlockLayout layout);
void readMultiChemicalInputs(DataSet& data, FieldInput& in, BlockLayout layout);
// Time-varying dispersion.
void writeTimeVaryingInputs(DataSet& data, PrintOutput& out);
void readTimeVaryingInputs(DataSet& data, FieldInput& in);

// Output section: the empty line, "[Begin Output Data]", calculationMode, then
// the Regular or Monte Carlo part, which ends with "[End Output Data]" and an
// empty line. "Monte Carlo" (exactly) takes the Monte Carlo part.
void writeOutputSection(const DataSet& data, PrintOutput& out, BlockLayout layout, bool multiChemical);
void readOutputSection(DataSet& data, FieldInput& in, BlockLayout layout, bool multiChemical);
// The two parts on their own, from the first count line on.
void writeRegularOutput(const DataSet& data, PrintOutput& out, BlockLayout layout, bool multiChemical);
void readRegularOutput(DataSet& data, FieldInput& in, BlockLayout layout, bool multiChemical);
void writeMonteCarloOutput(const DataSet& data, PrintOutput& out, BlockLayout layout, bool multiChemical);
void readMonteCarloOutput(DataSet& data, FieldInput& in, BlockLayout layout, bool multiChemical);

// The Monte Carlo block, "[Begin Monte Carlo Data]" to "[End MonteCarlo Data]".
// The writer first copies the model's store into the working set and sets
// monteIterations 0 to 1 (kept); the reader fills the working set only, and the
// caller copies it into the store of the model.
void writeMonteCarloBlock(DataSet& data, PrintOutput& out);
void readMonteCarloBlock(DataSet& data, FieldInput& in);

// The old format (a first line without "version"): model words, description,
// title, units, coordinates and the first properties; no results.
void readOldFormat(DataSet& data, FieldInput& in);

}  // namespace bm
