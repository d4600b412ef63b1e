#pragma once
// Pieces shared by the model block readers and writers of files/: the
// coordinate and property rows, the boundary terms, and small input helpers.

#include <cstdint>
#include <string>
#include <string_view>

#include "files/data_file_blocks.h"

namespace bm::blockparts {

// The trimmed text behind the first ":" of the next line.
std::string labelField(FieldInput& in);
// A 16-bit count from a text by the lenient conversion; error 6 when it does not fit.
std::int16_t countFrom(std::string_view text);
// A count for the writer: an upper bound, 0 for an array never dimensioned;
// error 6 past 16 bits.
std::int16_t countOfBound(int upperBound);
// Error 7 when an array of this many elements cannot be held (a damaged count).
void requireMemoryFor(long double elements);

// "Coor Data" through the Monte Carlo point and the empty line.
void writeCoordinates(const DataSet& data, PrintOutput& out, BlockLayout layout);
void readCoordinates(DataSet& data, FieldInput& in, BlockLayout layout);

// "Properties:" through the empty line behind the last property. The
// multi-chemical blocks have no "HalfLife: " row. An empty retardation is
// written as "1" and stored back.
void writeProperties(DataSet& data, PrintOutput& out, BlockLayout layout, bool withHalfLife);
// With the tolerances for files of earlier versions; the retardation step
// consumes the separator.
void readProperties(DataSet& data, FieldInput& in, BlockLayout layout, bool withHalfLife);

// "Superposition Index: " n, the empty line, and the n terms.
void writeTerms(DataSet& data, PrintOutput& out);
void readTerms(DataSet& data, FieldInput& in);

}  // namespace bm::blockparts
