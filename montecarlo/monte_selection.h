#pragma once
// What the model takes from a variant's summary: a double click on a cell of
// the result grid selects that column's statistic (or all samples, "Variants")
// and a second double click on the same cell returns to "Nothing".

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "model/data_set.h"

namespace bm {

// Captions of the result grid ResultTG, in column order. The misspelled
// "Arithematic Mean" is also the key that the model form recognises.
inline constexpr std::array<const char*, 7> kResultColumnCaptions = {
    "Variants", "Arithematic Mean", "Geometric Mean", "Median", "Minimum", "Maximum", "Standard Deviation"};

// Hints of the result grid's columns (the last column has none).
inline constexpr std::array<const char*, 6> kResultColumnHints = {
    "Select/unselect the Variant by double clicking mouse.",
    "Select/unselect the Arithimetic mean by double clicking mouse.",
    "Select/unselect the Geometric mean by double clicking mouse.",
    "Select/unselect the Median by double clicking mouse.",
    "Select/unselect the Minimum by double clicking mouse.",
    "Select/unselect the Maximum by double clicking mouse."};

inline constexpr const char* kNothingSelected = "Nothing";

// The selection after a double click on the column with this caption: "Nothing"
// when that column was the one selected, else the caption. The standard
// deviation column is known by its caption holding "Deviation".
std::string toggledSelection(std::string_view selection, std::string_view columnCaption);

// The double click on ResultTG at (row, chemical): acts only on a row in use,
// then marks the data as changed (dataState 1). False when nothing was done.
bool toggleResultSelection(DataSet& data, int row, std::int16_t chemical, std::string_view columnCaption);

}  // namespace bm
