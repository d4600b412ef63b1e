#pragma once
// Choosing a chemical of a chain: the picker that the commands showing or
// writing one chemical open (its list, OK and the other ways out), and the
// rule of the number-of-chemicals row.

#include <functional>
#include <string>
#include <vector>

#include "model/data_set.h"
#include "shell/base/user_interface.h"

namespace bm {

inline constexpr const char* kSelectChemicalCaption = "Select Chemical";

// The picker: at load the chemicals' names (1 .. numChemicals) with the first
// selected; OK sets selectedChemical to the list position plus 1, any other
// way out leaves it as the command set it (0).
class ChemicalChoice {
public:
    explicit ChemicalChoice(DataSet& data);
    const std::vector<std::string>& names() const { return names_; }
    int current = 0;  // list position, from 0
    void ok();

private:
    DataSet& data_;
    std::vector<std::string> names_;
};

// A command on one chemical: selectedChemical = 0, the picker shown modally by
// `showPicker`; true when a chemical was chosen.
bool pickChemical(DataSet& data, const std::function<void()>& showPicker);

// The number-of-chemicals row losing its focus with `text`: a whole number of
// at least 1 sets numChemicals (true); anything else shows the refusal and
// leaves numChemicals as it was (the row takes its earlier text back).
bool acceptChemicalCount(DataSet& data, const std::string& text, UserInterface& ui);

inline constexpr const char* kChemicalCountTitle = "Improper input value";

}  // namespace bm
