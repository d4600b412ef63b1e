#include "species/chain/chemical_choice.h"

#include <cmath>

#include "model/number_text.h"

namespace bm {

ChemicalChoice::ChemicalChoice(DataSet& data) : data_(data) {
    for (int i = 1; i <= data.numChemicals && i <= data.chemicalName.ub(); ++i) names_.push_back(data.chemicalName(i));
}

void ChemicalChoice::ok() {
    if (current >= 0 && current < static_cast<int>(names_.size()))
        data_.selectedChemical = static_cast<std::int16_t>(current + 1);
}

bool pickChemical(DataSet& data, const std::function<void()>& showPicker) {
    data.selectedChemical = 0;
    showPicker();
    return data.selectedChemical != 0;
}

bool acceptChemicalCount(DataSet& data, const std::string& text, UserInterface& ui) {
    // A count past the eigen routines' order (181) cannot be decomposed.
    const double count = isNumeric(text) ? numericValue(text) : 0.0;
    if (count >= 1 && count <= 181) {
        data.numChemicals = static_cast<std::int16_t>(std::lround(count));
        return true;
    }
    ui.message(MessageIcon::Exclamation, MessageButtons::Ok, kChemicalCountTitle,
               "'" + text + "' is not a valid input value.\r\rThe number of chemicals must be greater than or equal to 1.");
    return false;
}

}  // namespace bm
