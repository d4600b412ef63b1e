#pragma once
// Pieces that every output and plot file of the models shares: lines ended by
// CR LF, unit words without a menu's "&", a value under simulation shown by
// the number its marker keeps, the data file line, the selected chemical.

#include <string>

#include "model/data_set.h"

namespace bm {

inline constexpr const char* kCrlf = "\r\n";

inline std::string outputLine(const std::string& text) { return text + kCrlf; }

// A unit word as the output files print it: every "&" of a menu caption
// dropped (the printed report drops only the first).
std::string unitText(const std::string& unit);

// A value line: a MonteMarker shows the number it keeps (between "|" and ":").
std::string shownValue(const std::string& value);

// "Data File Name: " and the trimmed file name, or "Input Data Not Saved".
std::string dataFileNameLine(const DataSet& data);

// The chemical that displays and writers use (selectedChemical, at least 1).
int selectedChemicalOf(const DataSet& data);
// The selected chemical's entry of a chemical list; empty when it has none.
std::string selectedChemicalField(const List<std::string>& list, const DataSet& data);

// The first boundary term's concentration text; empty when there are no terms.
std::string firstTermConcentration(const DataSet& data);

}  // namespace bm
