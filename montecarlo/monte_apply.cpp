#include "montecarlo/monte_apply.h"

#include <algorithm>

#include "model/number_text.h"
#include "montecarlo/monte_marker.h"

namespace bm {

namespace {

std::string markerFor(const DataSet& data, MarkerPlace place, const std::string& mean, int row) {
    switch (place) {
    case MarkerPlace::BoundaryCell: return boundaryCellMarkerFor(data.modelType, mean, row);
    case MarkerPlace::ChemicalCell: return chemicalCellMarker(mean, row);
    default: return formFieldMarker(mean, row);
    }
}

std::string key(const std::string& name) { return toLower(trim(name)); }

}  // namespace

std::string selectedText(const DataSet& data, const MonteInputRow& input, const MonteResultRow& result, int row,
                         MarkerPlace place) {
    const std::string selection = key(result.selection);
    const std::pair<const char*, const std::string*> statistics[] = {
        {"minimum", &result.minimum},           {"maximum", &result.maximum},
        {"standard deviation", &result.standardDeviation}, {"arithematic mean", &result.arithmeticMean},
        {"geometric mean", &result.geometricMean}, {"median", &result.median}};
    for (const auto& [word, value] : statistics)
        if (selection == word) return formatNumber(trim(*value));
    if (selection == "nothing") return formatNumber(trim(input.mean));
    if (selection == "variants" || selection == "variant") return markerFor(data, place, input.mean, row);
    return {};
}

SelectionOutcome applySelections(DataSet& data, const MonteBlock& block, const std::vector<MonteVariant>& variants) {
    SelectionOutcome outcome;
    for (const MonteVariant& v : variants) {
        std::string* field = v.field ? v.field(data) : nullptr;
        if (field && holdsMonteMarker(*field)) *field = trim(valueOfCell(*field));
    }
    const int chemical = 1;
    const int rows = std::min<int>(block.monteResultRowCount, block.ResultTGData.ub(0));
    if (block.ResultTGData.ub(1) < chemical) return outcome;
    for (int r = 1; r <= rows; ++r) {
        const MonteResultRow& result = block.ResultTGData(r, chemical);
        if (!result.inUse) continue;
        const MonteInputRow input =
            r <= block.InputTGData.ub(0) && chemical <= block.InputTGData.ub(1) ? block.InputTGData(r, chemical)
                                                                                : MonteInputRow{};
        const std::string name = key(result.variant.empty() ? input.variant : result.variant);
        for (const MonteVariant& v : variants) {
            if (key(v.name) != name) continue;
            std::string* field = v.field ? v.field(data) : nullptr;
            if (!field) continue;
            const std::string text = selectedText(data, input, result, r, v.place);
            if (text.empty()) continue;
            *field = text;
            if (!holdsMonteMarker(text)) continue;
            if (v.place == MarkerPlace::BoundaryCell) outcome.inflowVaries = true;
            else if (v.place == MarkerPlace::ChemicalCell) outcome.chemicalVaries = true;
            else outcome.fieldVaries = true;
        }
    }
    data.monteCarloModeOn = outcome.inflowVaries || outcome.chemicalVaries;
    return outcome;
}

}  // namespace bm
