#include "model/output_text.h"

#include "model/number_text.h"
#include "shell/common_services.h"

namespace bm {

std::string unitText(const std::string& unit) { return replaceFirst("&", "", unit); }

std::string shownValue(const std::string& value) { return contains(value, "Monte") ? valueOfCell(value) : value; }

std::string dataFileNameLine(const DataSet& d) {
    const std::string name = trim(d.currentFileName);
    return outputLine("Data File Name: " + (name.empty() ? std::string("Input Data Not Saved") : name));
}

std::string runStatusLine(const DataSet& d) {
    if (!d.runStopped) return {};
    return outputLine("Computation Status: Stopped before the end; values not computed are 0");
}

int selectedChemicalOf(const DataSet& d) { return d.selectedChemical < 1 ? 1 : d.selectedChemical; }

std::string selectedChemicalField(const List<std::string>& list, const DataSet& d) {
    const int c = selectedChemicalOf(d);
    return c <= list.ub() ? list(c) : std::string();
}

std::string firstTermConcentration(const DataSet& d) { return d.terms.ub() >= 1 ? d.terms(1).concentration : std::string(); }

}  // namespace bm
