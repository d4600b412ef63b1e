#include "apps/brenmoor-calc/batch_chemical.h"

#include <string>

namespace bm {

bool chooseBatchChemical(DataSet& data, int chemical, UserInterface& ui) {
    if (chemical <= 0) return true;
    if (data.multiChemical && chemical > data.numChemicals) {
        ui.message(MessageIcon::Critical, MessageButtons::Ok, kChemicalChoiceTitle,
                   "--chemical " + std::to_string(chemical) + " is outside the chain: the model holds " +
                       std::to_string(data.numChemicals) + (data.numChemicals == 1 ? " chemical." : " chemicals."));
        return false;
    }
    data.selectedChemical = static_cast<std::int16_t>(chemical);
    return true;
}

}  // namespace bm
