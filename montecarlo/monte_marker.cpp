#include "montecarlo/monte_marker.h"

#include "model/data_set.h"
#include "model/number_text.h"
#include "shell/base/checked_math.h"

namespace bm {

bool holdsMonteMarker(std::string_view text) { return contains(text, kMonteWord); }

std::string monteMarker(int leadBlanks, int gapBlanks, std::string_view constant, int row) {
    std::string text(static_cast<std::size_t>(leadBlanks < 0 ? 0 : leadBlanks), ' ');
    text += kMonteCarloWord;
    text.append(static_cast<std::size_t>(gapBlanks < 0 ? 0 : gapBlanks), ' ');
    text += '|';
    text += trim(constant);
    text += ':';
    text += signedText(static_cast<long long>(row));
    return text;
}

std::string formFieldMarker(std::string_view constant, int row) {
    return monteMarker(0, kFormFieldMarkerGap, constant, row);
}

std::string boundaryCellMarker(std::string_view constant, int row, int padding) {
    return monteMarker(padding, padding, constant, row);
}

std::string boundaryCellMarkerFor(std::string_view modelType, std::string_view constant, int row) {
    return boundaryCellMarker(constant, row, boundaryMarkerPadding(modelType));
}

std::string chemicalCellMarker(std::string_view constant, int row) {
    return monteMarker(kChemicalMarkerLead, kChemicalMarkerGap, constant, row);
}

std::int16_t markerRow(std::string_view text) { return toInt16(textValue(textAfter(text, ":"))); }

double markerConstant(std::string_view text) { return textValue(valueOfCell(text)); }

double monteSample(const DataSet& data, int row, int iteration, int chemical) {
    return data.MonteSamples(row, iteration, chemical);
}

double fieldValue(const DataSet& data, std::string_view text, bool monteCarlo, int iteration, int chemical) {
    if (monteCarlo && holdsMonteMarker(text)) return monteSample(data, markerRow(text), iteration, chemical);
    return textValue(text);
}

}  // namespace bm
