#pragma once
// MCInputForm: the screen of the saturated models with a decay chain, in its
// three layouts, bound to MCInputFormModel. It is inputForm's screen with the
// half-life and superposition rows hidden, the number of chemicals on the
// boundary tab beside the inputs table (Input1TG ..., a row per chemical) and
// the chemicals' table (ChemicalInput1TG ...), and the points table of the
// results (grd1DResults ...) under the result title on the coordinates tab.

#include <array>

#include "saturated/widgets/input_form.h"
#include "species/form/mc_input_form_model.h"

namespace bm {

class ChemicalTableView;
class PointResultsView;

class MCInputForm : public InputForm {
    Q_OBJECT
public:
    MCInputForm(DataSet& dataSet, AppState& state, UserInterface& ui, QWidget* parent = nullptr);

    MCInputFormModel& chainModel() { return *chain_; }
    ChemicalTableView* chemicalTable(int dimension) const;
    PointResultsView* resultsTable(int dimension) const;

    void moveFocus(const FocusRequest& focus) override;

protected:
    void refreshInputs() override;

private:
    void addTables(int dimension);

    MCInputFormModel* chain_ = nullptr;
    std::array<ChemicalTableView*, 4> chemicalViews_{};
    std::array<PointResultsView*, 4> resultViews_{};
};

// Registers MCInputForm with the shell's screen registry (the multi-chemical
// one-, two- and three-dimensional saturated models).
void registerMCInputForm();

}  // namespace bm
