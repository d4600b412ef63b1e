#include "montecarlo/monte_selection.h"

#include "model/number_text.h"

namespace bm {

std::string toggledSelection(std::string_view selection, std::string_view columnCaption) {
    const bool deviationColumn = contains(columnCaption, "Deviation");
    const bool selectedAlready = deviationColumn ? contains(selection, "Deviation") : selection == columnCaption;
    return selectedAlready ? std::string(kNothingSelected) : std::string(columnCaption);
}

bool toggleResultSelection(DataSet& data, int row, std::int16_t chemical, std::string_view columnCaption) {
    const auto& table = data.ResultTGData;
    if (row < 1 || row > table.ub(0) || chemical < 0 || chemical > table.ub(1)) return false;
    MonteResultRow& result = data.ResultTGData(row, chemical);
    if (!result.inUse) return false;
    result.selection = toggledSelection(result.selection, columnCaption);
    data.dataState = kParametersChanged;
    return true;
}

}  // namespace bm
