#include "model/output_text.h"

#include <algorithm>

#include "model/number_text.h"
#include "shell/base/common_services.h"

namespace bm {

std::string unitText(const std::string& unit) {
    std::string text = unit;
    text.erase(std::remove(text.begin(), text.end(), '&'), text.end());
    return text;
}

std::string shownValue(const std::string& value) { return contains(value, "Monte") ? valueOfCell(value) : value; }

std::string dataFileNameLine(const DataSet& d) {
    const std::string name = trim(d.currentFileName);
    return outputLine("Data File Name: " + (name.empty() ? std::string("Input Data Not Saved") : name));
}

int selectedChemicalOf(const DataSet& d) { return d.selectedChemical < 1 ? 1 : d.selectedChemical; }

std::string selectedChemicalField(const List<std::string>& list, const DataSet& d) {
    const int c = selectedChemicalOf(d);
    return c <= list.ub() ? list(c) : std::string();
}

std::string firstTermConcentration(const DataSet& d) { return d.terms.ub() >= 1 ? d.terms(1).concentration : std::string(); }

}  // namespace bm
