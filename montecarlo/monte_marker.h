#pragma once
// The MonteMarker: the text that stands in an input field or table cell whose
// value varies from one Monte Carlo iteration to the next. The visible part is
// "Monte Carlo"; far behind it, out of sight of the cell, follow "|", the
// constant the field stands for, ":" and the row of the samples table. Every
// reader of a field tests it for "Monte" before converting it to a number.

#include <cstdint>
#include <string>
#include <string_view>

#include "model/model_kinds.h"

namespace bm {

struct DataSet;

// The visible word of a marker, and the part every reader looks for.
inline constexpr std::string_view kMonteCarloWord = "Monte Carlo";
inline constexpr std::string_view kMonteWord = "Monte";

// Blanks of the marker forms.
inline constexpr int kFormFieldMarkerGap = 500;      // behind the word in a field of a model form
// The boundary cells' paddings (kWideCellMarkerPadding, kNarrowCellMarkerPadding)
// are the model kinds' (model/model_kinds.h).
inline constexpr int kChemicalMarkerLead = 15;       // a cell of a chemical table: blanks in front ...
inline constexpr int kChemicalMarkerGap = 50;        // ... and behind the word

// True when the text holds "Monte" (case as written).
bool holdsMonteMarker(std::string_view text);

// "Monte Carlo" + 500 blanks + "|" + trimmed constant + ":" + row with a blank for its sign.
std::string formFieldMarker(std::string_view constant, int row);
// padding blanks + "Monte Carlo" + padding blanks + "|" + trimmed constant + ":" + row.
std::string boundaryCellMarker(std::string_view constant, int row, int padding);
// The boundary cell marker with the padding of the model type.
std::string boundaryCellMarkerFor(std::string_view modelType, std::string_view constant, int row);
// 15 blanks + "Monte Carlo" + 50 blanks + "|" + trimmed constant + ":" + row.
std::string chemicalCellMarker(std::string_view constant, int row);
// The general form: lead blanks, the word, gap blanks, "|", constant, ":", row.
std::string monteMarker(int leadBlanks, int gapBlanks, std::string_view constant, int row);

// The row of the samples table a marker selects: the value of the text behind
// its first ":" (rounded half to even; error 6 beyond 16 bits).
std::int16_t markerRow(std::string_view text);
// The constant between "|" and ":" (the text itself when it is no marker), as a number.
double markerConstant(std::string_view text);

// MonteSamples(row, iteration, chemical) of the working set (error 9 outside its bounds).
double monteSample(const DataSet& data, int row, int iteration, int chemical = 1);

// The value of a field in one iteration. In a simulation a text holding "Monte"
// takes the sample of its row for this iteration; every other text (and every
// text outside a simulation) is read by textValue.
double fieldValue(const DataSet& data, std::string_view text, bool monteCarlo, int iteration, int chemical = 1);

}  // namespace bm
